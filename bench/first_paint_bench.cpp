// How long a dialog takes from the request to its first paint, on the
// offscreen platform: the message dialog, a bare QMessageBox with the same
// texts as the yardstick, and the whole `formwerk` process with --screenshot.
#include "core/HasContext.h"
#include "core/cls_Formwerk.h"

#include <QApplication>
#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

const char* const kTitle = "Speichern: Dokument geändert";
const char* const kText = "Sollen die Änderungen an \"Bericht.txt\" gespeichert werden?";

template <class Done> void pumpUntil(Done done)
{
    while (!done())
        QApplication::processEvents(QEventLoop::AllEvents, 5);
}

void MessageDialogToFirstPaint(benchmark::State& state)
{
    for (auto _ : state) {
        std::unique_ptr<fw::Form> form = fw::cls_Formwerk().Create("frm_DialogMessage");
        auto context = std::make_shared<fw::DialogContext>();
        context->Request.Title = kTitle;
        context->Request.Flags = 3;
        context->Texts.Description = kText;
        dynamic_cast<fw::HasContext&>(*form).Context = context;
        form->Show(false);
        pumpUntil([&] { return form->HasPainted(); });
        form->Unload();
    }
}
BENCHMARK(MessageDialogToFirstPaint)->Unit(benchmark::kMillisecond)->UseRealTime();

// Long texts: one word of 100 KB, one of 1 MB, 1 MB of words and 1 MB of
// table lines (kept as written); the dialog must stay within the screen and
// open in well under a second.
void MessageDialogLongTextToFirstPaint(benchmark::State& state)
{
    const auto repeated = [](const char* piece, int times) {
        return QString::fromUtf8(piece).repeated(times).toStdString();
    };
    const std::string texts[] = {
        std::string(100'000, 'x'),
        std::string(1'000'000, 'x'),
        repeated("Wort ", 200'000),
        "--------\n" + repeated("Bericht.pdf   4096  2024-02-03\n", 33'000),
    };
    const std::string& text = texts[state.range(0)];
    for (auto _ : state) {
        std::unique_ptr<fw::Form> form = fw::cls_Formwerk().Create("frm_DialogMessage");
        auto context = std::make_shared<fw::DialogContext>();
        context->Request.Title = kTitle;
        context->Texts.Description = text;
        dynamic_cast<fw::HasContext&>(*form).Context = context;
        form->Show(false);
        pumpUntil([&] { return form->HasPainted(); });
        form->Unload();
    }
    const char* const labels[] = {"100 KB word", "1 MB word", "1 MB of words", "1 MB table"};
    state.SetLabel(labels[state.range(0)]);
}
BENCHMARK(MessageDialogLongTextToFirstPaint)
    ->DenseRange(0, 3)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);

// Notes the first paint of a widget, as HasPainted does for a form.
class PaintSpy : public QObject {
  public:
    bool painted = false;

  protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

void QMessageBoxToFirstPaint(benchmark::State& state)
{
    for (auto _ : state) {
        QMessageBox box(QMessageBox::Question, QString::fromUtf8(kTitle), QString::fromUtf8(kText),
                        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        PaintSpy spy;
        box.installEventFilter(&spy);
        box.show();
        pumpUntil([&] { return spy.painted; });
        box.close();
    }
}
BENCHMARK(QMessageBoxToFirstPaint)->Unit(benchmark::kMillisecond)->UseRealTime();

// Start of the process to its end; the end follows the first paint by one
// grab and one PNG write, so this is a little more than start to first paint.
void CliProcessToScreenshot(benchmark::State& state)
{
    QTemporaryDir dir;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    const QStringList args{
        "frm_DialogMessage",     "--flags", "3", "--title", kTitle, "--text", kText, "--screenshot",
        dir.filePath("shot.png")};
    for (auto _ : state) {
        QProcess process;
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(FORMWERK_CLI_PATH), args);
        if (!process.waitForFinished(30000) || process.exitCode() != 0) {
            state.SkipWithError("formwerk --screenshot failed");
            break;
        }
    }
}
BENCHMARK(CliProcessToScreenshot)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);

} // namespace
