#include "cli/ProcessDriver.h"

#include "cli/BoundedInput.h"
#include "dialogs/frm_DialogProcess.h"

#include <QEventLoop>
#include <QSocketNotifier>
#include <QStringList>
#include <QTimer>
#include <charconv>
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

// Most lines are a bare number: read without building strings, since a fast
// producer sends millions of them.
std::optional<std::int32_t> bareNumber(QByteArrayView line)
{
    std::int32_t value = 0;
    const char* first = line.data();
    const char* last = first + line.size();
    if (first != last && *first == '+')
        ++first; // from_chars takes a minus only
    const auto [end, error] = std::from_chars(first, last, value);
    if (first == last || error != std::errc() || end != last)
        return std::nullopt;
    return value;
}

// One pass over what standard input holds: one read, so that the window gets
// its turn between passes however fast the input comes.
constexpr qsizetype kReadPiece = 256 * 1024;
} // namespace

bool ReadProgressLine(QByteArrayView line, ProgressUpdate& update)
{
    line = line.trimmed();
    if (line.isEmpty())
        return true;
    if (const auto value = bareNumber(line)) {
        update.value = *value;
        return true;
    }
    if (line.startsWith('#')) {
        update.text = QString::fromUtf8(line.sliced(1)).trimmed();
        return true;
    }
    const QStringList words = QString::fromUtf8(line).simplified().split(u' ');
    if (words.size() != 3 || words[0].compare(u"range", Qt::CaseInsensitive) != 0)
        return false;
    bool okLow = false;
    bool okHigh = false;
    const int low = words[1].toInt(&okLow);
    const int high = words[2].toInt(&okHigh);
    if (okLow && okHigh)
        update.range = {low, high};
    return okLow && okHigh;
}

void ApplyProgress(frm_DialogProcess& form, const ProgressUpdate& update)
{
    // Range and value are kept apart by the bar, so their order does not matter.
    if (update.range)
        form.PROCESS_SET_RANGE(update.range->first, update.range->second);
    if (update.text)
        form.SetDescription(*update.text);
    if (update.value)
        form.PROCESS_SET_CUR(*update.value);
}

Outcome DriveProgress(frm_DialogProcess& form, const std::function<void(const QString&)>& warn,
                      int inputFd)
{
    QEventLoop loop;
    QSocketNotifier input(inputFd, QSocketNotifier::Read);
    QByteArray pending;
    Outcome outcome;
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
    ProgressUpdate update;
    const auto take = [&](QByteArrayView raw) {
        if (!ReadProgressLine(raw, update))
            warn(QStringLiteral("ignored input line '%1': neither a number, 'range LOW HIGH' "
                                "nor '# TEXT'")
                     .arg(QString::fromUtf8(raw.trimmed())));
    };
    QByteArray buffer(kReadPiece, Qt::Uninitialized);
    QObject::connect(&input, &QSocketNotifier::activated, &loop, [&] {
        const ssize_t got = ::read(inputFd, buffer.data(), buffer.size());
        if (got <= 0) {
            input.setEnabled(false); // the end of input stays readable for ever
            if (!pending.isEmpty())
                take(pending); // a last line without its newline
            ApplyProgress(form, std::exchange(update, {}));
            finish();
            return;
        }
        // What is pending holds no newline: only the new bytes need a look,
        // or a long line would be searched again on every pass.
        qsizetype searchFrom = pending.size();
        pending.append(buffer.constData(), got);
        qsizetype start = 0;
        for (qsizetype end; (end = pending.indexOf('\n', searchFrom)) >= 0;
             start = searchFrom = end + 1)
            take(QByteArrayView(pending).sliced(start, end - start));
        pending.remove(0, start);
        if (pending.size() > kInputLimit) {
            outcome = {ExitData, TooLargeMessage(QStringLiteral("a line of standard input"))};
            finish();
            return;
        }
        // Applying pumps events; no read may cut in before this pass is shown,
        // or its lines would come out of order.
        input.setEnabled(false);
        ApplyProgress(form, std::exchange(update, {}));
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
    return outcome;
}

} // namespace fw::cli
