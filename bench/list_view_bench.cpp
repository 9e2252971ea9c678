// The list control on folder-sized row counts: filling 100k and 1M rows as
// the file chooser does (key, text, two pictures, type and sort texts) to the
// first paint of the filled list, and thinning 100k rows to every second one
// as a search keystroke does, to the next paint. Removing the same rows one
// call at a time stands beside it for comparison.
#include "forms/Form.h"
#include "forms/ImageList.h"
#include "forms/ListView.h"
#include "forms/Screen.h"

#include "BenchSupport.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

class ListForm : public fw::Form {
  public:
    explicit ListForm(int view) : Form(QStringLiteral("frm_Bench"))
    {
        window()->resize(800, 600);
        img16 = Add<fw::ImageList>(QStringLiteral("img_Icon16"));
        img32 = Add<fw::ImageList>(QStringLiteral("img_Icon32"));
        img32->SetImageSize(32, 32);
        for (fw::ImageList* img : {img16, img32}) {
            QImage picture(img->ImageWidth(), img->ImageHeight(), QImage::Format_ARGB32);
            picture.fill(qRgb(30, 90, 200));
            img->Add(QStringLiteral("FILE"), picture);
        }
        lst = Add<fw::ListView>(QStringLiteral("lst_Files"));
        lst->Move(0, 0, fw::ToTwips(800), fw::ToTwips(600));
        lst->SetIcons(img32);
        lst->SetSmallIcons(img16);
        for (const char* column : {"Dateiname", "Größe", "Typ", "Geändert am", "Sortierung"})
            lst->ColumnHeaders().Add(QString::fromUtf8(column));
        lst->SetView(view);
    }
    void fill(int rows)
    {
        const QString folder = QStringLiteral("C:\\HOME\\ANNA\\GROSSER ORDNER\\");
        const QString type = QStringLiteral("Textdatei");
        fw::ListItems& items = lst->ListItems();
        for (int i = 0; i < rows; ++i) {
            const QString name = QStringLiteral("datei%1.txt").arg(i, 7, 10, QLatin1Char('0'));
            const QString path = folder + name.toUpper();
            fw::ListItem& item =
                items.Add(path, name, QStringLiteral("FILE"), QStringLiteral("FILE"));
            item.SetSubItem(2, type);
            item.SetSubItem(4, QStringLiteral("B:") + path);
        }
    }
    void waitForPaint(fw::bench::PaintCounter& counter)
    {
        const int before = counter.paints;
        while (counter.paints == before)
            QApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    fw::ImageList* img16;
    fw::ImageList* img32;
    fw::ListView* lst;
};

// A list form filled with rows, shown and painted once; unloaded when it goes.
struct ShownList {
    ShownList(int rows, int view)
        : form(std::make_unique<ListForm>(view)), counter(form->lst->viewport())
    {
        form->fill(rows);
        form->Show();
        form->waitForPaint(counter);
    }
    ~ShownList() { form->Unload(); }
    std::unique_ptr<ListForm> form;
    fw::bench::PaintCounter counter;
};

// From the first row added to the first paint of the shown, filled list.
void FillToFirstPaint(benchmark::State& state)
{
    const int rows = int(state.range(0));
    for (auto _ : state) {
        auto shown = std::make_unique<ShownList>(rows, int(state.range(1)));
        state.PauseTiming();
        shown.reset();
        state.ResumeTiming();
    }
    state.counters["rows"] = rows;
}
BENCHMARK(FillToFirstPaint)
    ->ArgsProduct({{100000, 1000000}, {fw::lvwList, fw::lvwReport}})
    ->ArgNames({"rows", "view"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(2);

// A search keystroke's work: every second row of a shown list goes, then the
// list paints again. Argument 1 removes them one call at a time instead.
void RemoveEverySecondRowToPaint(benchmark::State& state)
{
    const int rows = int(state.range(0));
    const bool oneByOne = state.range(1) != 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto shown = std::make_unique<ShownList>(rows, fw::lvwReport);
        state.ResumeTiming();
        fw::ListItems& items = shown->form->lst->ListItems();
        if (oneByOne) {
            for (int index = 2; index <= items.Count(); ++index)
                items.Remove(index);
        } else {
            items.RemoveIf([](const fw::ListItem& item) { return item.Index() % 2 == 0; });
        }
        shown->form->lst->viewport()->update();
        shown->form->waitForPaint(shown->counter);
        state.PauseTiming();
        shown.reset();
        state.ResumeTiming();
    }
    state.counters["rows"] = rows;
}
BENCHMARK(RemoveEverySecondRowToPaint)
    ->Args({100000, 0})
    ->Args({20000, 1})
    ->ArgNames({"rows", "oneByOne"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);

} // namespace
