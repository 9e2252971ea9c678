#include "cli/ProcessDriver.h"

#include "dialogs/frm_DialogProcess.h"

#include <QEventLoop>
#include <QSocketNotifier>
#include <QStringList>
#include <QTimer>
#include <unistd.h>
#include <utility>

namespace fw::cli {

namespace {
// The window's abort target: ends the reading as soon as the user aborts.
class StopOnAbort : public AbortTarget {
  public:
    explicit StopOnAbort(std::function<void()> stop) : m_stop(std::move(stop)) {}
    void SetCancel(bool cancel) override
    {
        if (cancel)
            m_stop();
    }

  private:
    std::function<void()> m_stop;
};
} // namespace

bool ApplyProgressLine(frm_DialogProcess& form, const QString& line)
{
    const QStringList words = line.simplified().split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty())
        return true;
    bool ok = false;
    if (words.size() == 1) {
        const int value = words[0].toInt(&ok);
        if (ok)
            form.PROCESS_SET_CUR(value);
        return ok;
    }
    if (words.size() == 3 && words[0].compare(u"range", Qt::CaseInsensitive) == 0) {
        bool okHigh = false;
        const int low = words[1].toInt(&ok);
        const int high = words[2].toInt(&okHigh);
        if (ok && okHigh)
            form.PROCESS_SET_RANGE(low, high);
        return ok && okHigh;
    }
    return false;
}

void DriveProgress(frm_DialogProcess& form, const std::function<void(const QString&)>& warn)
{
    QEventLoop loop;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QByteArray pending;
    bool done = false;
    const auto finish = [&] {
        if (done)
            return;
        done = true;
        input.setEnabled(false);
        if (form.IsLoaded())
            form.PROCESS_END();
        loop.quit();
    };
    const auto apply = [&](const QByteArray& raw) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (!ApplyProgressLine(form, line))
            warn(QStringLiteral("ignored input line '%1': neither a number nor 'range LOW HIGH'")
                     .arg(line));
    };
    // The abort button may end everything in the middle of a chunk, so each
    // step checks done first.
    QObject::connect(&input, &QSocketNotifier::activated, &loop, [&] {
        char buffer[4096];
        const ssize_t got = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (got <= 0) {
            input.setEnabled(false); // the end of input stays readable for ever
            const QByteArray last = std::exchange(pending, {});
            if (!last.isEmpty() && !done)
                apply(last); // a last line without its newline
            finish();
            return;
        }
        pending.append(buffer, got);
        // Setting a value pumps events; no read may cut in before the lines
        // already read are done, or they would come out of order.
        input.setEnabled(false);
        qsizetype end;
        while (!done && (end = pending.indexOf('\n')) >= 0) {
            const QByteArray raw = pending.left(end);
            pending.remove(0, end + 1);
            apply(raw);
        }
        if (!done)
            input.setEnabled(true);
    });
    // A window closed by its title bar ends the run as well.
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &loop, [&] {
        if (!form.IsLoaded())
            finish();
    });
    watch.start(100);

    form.Abort = std::make_shared<StopOnAbort>(finish);
    form.Show(false);
    if (!done)
        loop.exec();
    form.Abort.reset();
}

} // namespace fw::cli
