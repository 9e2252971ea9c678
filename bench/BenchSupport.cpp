#include "BenchSupport.h"

#include "core/HasContext.h"
#include "core/cls_Formwerk.h"
#include "forms/Form.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QStackedWidget>
#include <QString>
#include <QtGlobal>
#include <optional>

namespace {
QtMessageHandler g_nextHandler = nullptr;
} // namespace

void fw::bench::QuietOffscreenNotices()
{
    g_nextHandler = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& where, const QString& text) {
            if (type == QtWarningMsg &&
                (text.startsWith(QLatin1String("This plugin does not support")) ||
                 text.contains(QLatin1String("XDG_"))))
                return;
            g_nextHandler(type, where, text);
        });
}

bool fw::bench::WaitFor(const std::function<bool()>& done, int limitMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > limitMs)
            return false;
        QApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

QAbstractItemView* fw::bench::ChooserList(Form& form)
{
    auto* views = form.window()->findChild<QStackedWidget*>(QStringLiteral("lst_Files"));
    return views ? qobject_cast<QAbstractItemView*>(views->currentWidget()) : nullptr;
}

double
fw::bench::ChooserToPaintedList(const std::string& location, int count, int limitMs,
                                const std::function<void(Form&, QAbstractItemView&)>& afterPainted)
{
    // By name, as a host asks for it.
    std::unique_ptr<Form> form = cls_Formwerk().Create("frm_DialogFile");
    if (!form)
        return -1;
    auto context = std::make_shared<DialogContext>();
    context->Request.Mode = 1;
    context->Items.ItemList.Add(location);
    if (auto* withContext = dynamic_cast<HasContext*>(form.get()))
        withContext->Context = context;
    QElapsedTimer clock;
    clock.start();
    form->Show(false);
    QAbstractItemView* list = nullptr;
    std::optional<PaintCounter> watch;
    const bool painted = WaitFor(
        [&] {
            if (!list && (list = ChooserList(*form)))
                watch.emplace(list->viewport());
            return list && list->model()->rowCount() >= count && watch->paints > 0;
        },
        limitMs);
    const double ms = painted ? clock.nsecsElapsed() / 1e6 : -1;
    if (painted && afterPainted)
        afterPainted(*form, *list);
    form->Unload();
    return ms;
}

QTextStream& fw::bench::Out()
{
    static QTextStream stream(stdout);
    return stream;
}

QString fw::bench::Figure(double value, const char* unit)
{
    return value < 0 ? QStringLiteral("-") : QString::number(value, 'f', 1) + QLatin1String(unit);
}

void fw::bench::ReadSizesAndLimit(const QStringList& args, QList<int>& sizes, int& limitMs)
{
    for (qsizetype i = 0; i + 1 < args.size(); i += 2) {
        if (args[i] == QLatin1String("--sizes")) {
            sizes.clear();
            for (const QString& size : args[i + 1].split(u','))
                sizes << size.toInt();
        } else if (args[i] == QLatin1String("--limit")) {
            limitMs = int(args[i + 1].toDouble() * 1000);
        }
    }
}

QString fw::bench::Ratio(double a, double b, int decimals)
{
    return a < 0 || b <= 0 ? QStringLiteral("-") : QString::number(a / b, 'f', decimals) + u'x';
}
