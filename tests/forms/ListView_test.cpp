// The list control, driven by clicks, keys and typed letters on its rows.
#include "forms/ControlError.h"
#include "forms/Form.h"
#include "forms/ImageList.h"
#include "forms/ListView.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/testing/ListInput.h"
#include "forms/testing/UserInput.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

QImage filled(QRgb colour, int size)
{
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

class ListForm : public Form {
  public:
    ListForm() : Form(QStringLiteral("frm_List"))
    {
        window()->resize(400, 300);
        img16 = Add<ImageList>(QStringLiteral("img_Icon16"));
        img32 = Add<ImageList>(QStringLiteral("img_Icon32"));
        img32->SetImageSize(32, 32);
        for (ImageList* img : {img16, img32}) {
            img->Add(QStringLiteral("FILE"), filled(qRgb(0, 0, 200), img->ImageWidth()));
            img->Add(QStringLiteral("CLOSED"), filled(qRgb(200, 200, 0), img->ImageWidth()));
        }
        lst = Add<ListView>(QStringLiteral("lst_Files"));
        lst->Move(0, 0, ToTwips(400), ToTwips(300));
        lst->SetIcons(img32);
        lst->SetSmallIcons(img16);
        lst->ColumnHeaders().Add("Dateiname", ToTwips(150));
        lst->ColumnHeaders().Add("Typ", ToTwips(100));
    }
    ImageList* img16;
    ImageList* img32;
    ListView* lst;
};

class ListViewTest : public ::testing::Test {
  public:
    ListForm form;
    ListItems& items = form.lst->ListItems();
    std::vector<std::string> events;

    void SetUp() override
    {
        for (const char* name : {"Anna", "Berta", "Bernd", "Carla", "Dora", "Emil"})
            items.Add(QString("C:\\%1").arg(name).toUpper(), name, "FILE", "FILE")
                .SetSubItem(1, "Datei");
        const auto log = [this](const char* what) {
            return [this, what](ListItem& item) {
                events.push_back(what + item.Text().toStdString());
            };
        };
        form.lst->ItemClick = log("click:");
        form.lst->ItemCheck = log("check:");
        form.lst->DblClick = [this] { events.push_back("dblclick"); };
        form.lst->ColumnClick = [this](ColumnHeader& c) {
            events.push_back("column:" + c.Text().toStdString());
        };
        form.Show();
        ProcessEvents();
    }
    void TearDown() override { form.Unload(); }

    ListItem& row(const char* text)
    {
        for (int i = 1; i <= items.Count(); ++i)
            if (items.Item(i).Text() == text)
                return items.Item(i);
        throw std::runtime_error(text);
    }
    std::string selected()
    {
        std::string out;
        for (int i = 1; i <= items.Count(); ++i)
            if (items.Item(i).Selected())
                out += (out.empty() ? "" : ",") + items.Item(i).Text().toStdString();
        return out;
    }
    // The texts as the view shows them, top to bottom, and whether each
    // row's Index() is its place.
    const QAbstractItemModel* shownModel()
    {
        return static_cast<QAbstractItemView*>(form.lst->viewport()->parentWidget())->model();
    }
    QStringList shownInOrder()
    {
        ProcessEvents();
        QStringList texts;
        const QAbstractItemModel* model = shownModel();
        for (int r = 0; r < model->rowCount(); ++r) {
            texts << model->index(r, 0).data().toString();
            EXPECT_EQ(items.Item(r + 1).Index(), r + 1);
            EXPECT_EQ(items.Item(r + 1).Text(), texts.back());
        }
        EXPECT_EQ(model->rowCount(), items.Count());
        return texts;
    }
};

TEST_F(ListViewTest, ClicksAndKeysSelectRowsAndReportEachMove)
{
    struct Step {
        const char* name;
        std::function<void(ListViewTest&)> act;
        const char* selected;
        std::vector<std::string> events;
    };
    const auto click = [](const char* text, Qt::KeyboardModifiers mods = Qt::NoModifier) {
        return [text, mods](ListViewTest& t) { ClickItem(*t.form.lst, t.row(text), mods); };
    };
    const auto key = [](Qt::Key k, Qt::KeyboardModifiers mods = Qt::NoModifier) {
        return [k, mods](ListViewTest& t) { PressKey(t.form, k, mods); };
    };
    form.lst->SetMultiSelect(true);
    form.lst->SetView(lvwReport);
    const std::vector<Step> steps{
        {"click", click("Berta"), "Berta", {"click:Berta"}},
        {"ctrl click adds", click("Dora", Qt::ControlModifier), "Berta,Dora", {"click:Dora"}},
        {"shift click extends",
         click("Emil", Qt::ShiftModifier),
         "Berta,Dora,Emil",
         {"click:Emil"}},
        {"ctrl click removes", click("Dora", Qt::ControlModifier), "Berta,Emil", {"click:Dora"}},
        {"arrow up", key(Qt::Key_Up), "Carla", {"click:Carla"}},
        {"shift arrow up", key(Qt::Key_Up, Qt::ShiftModifier), "Bernd,Carla", {"click:Bernd"}},
        {"type-ahead", [](ListViewTest& t) { Type(t.form, "em"); }, "Emil", {"click:Emil"}},
        {"type-ahead two letters",
         [](ListViewTest& t) {
             QTest::qWait(QApplication::keyboardInputInterval() + 50);
             Type(t.form, "bern");
         },
         "Bernd",
         {"click:Berta", "click:Bernd"}},
        {"double click",
         [](ListViewTest& t) { DoubleClickItem(*t.form.lst, t.row("Anna")); },
         "Anna",
         {"click:Anna", "dblclick"}},
    };
    for (const Step& step : steps) {
        events.clear();
        step.act(*this);
        EXPECT_EQ(selected(), step.selected) << step.name;
        EXPECT_EQ(events, step.events) << step.name;
    }
    EXPECT_EQ(form.lst->SelectedItem(), &row("Anna"));
    events.clear();
    row("Carla").SetSelected(true); // code selects without a report
    form.lst->SetSelectedItem(&row("Dora"));
    EXPECT_EQ(selected(), "Dora");
    EXPECT_TRUE(events.empty());
}

TEST_F(ListViewTest, SpaceAndClicksOnTheCheckBoxTickRowsAndReportThem)
{
    form.lst->SetCheckboxes(true);
    form.lst->SetView(lvwReport);
    ClickItem(*form.lst, row("Carla"));
    events.clear();
    PressKey(form, Qt::Key_Space);
    ClickCheckBox(*form.lst, row("Emil"));
    ClickCheckBox(*form.lst, row("Emil"));
    ClickCheckBox(*form.lst, row("Anna"));
    EXPECT_TRUE(row("Carla").Checked());
    EXPECT_FALSE(row("Emil").Checked());
    EXPECT_TRUE(row("Anna").Checked());
    const auto checks = std::count_if(events.begin(), events.end(), [](const std::string& e) {
        return e.rfind("check:", 0) == 0;
    });
    EXPECT_EQ(checks, 4);
    events.clear();
    row("Dora").SetChecked(true); // from code: no report
    EXPECT_TRUE(events.empty());
}

TEST_F(ListViewTest, EveryViewKeepsTheSelectionAndShowsItsOwnPictures)
{
    form.lst->SetMultiSelect(true);
    row("Bernd").SetSelected(true);
    row("Emil").SetSelected(true);
    for (int view : {lvwIcon, lvwSmallIcon, lvwList, lvwReport, lvwIcon}) {
        form.lst->SetView(view);
        ProcessEvents();
        EXPECT_EQ(selected(), "Bernd,Emil") << view;
        const QRect rect = form.lst->ItemRect(row("Dora"));
        ASSERT_FALSE(rect.isEmpty()) << view;
        const QIcon icon = shownModel()->index(0, 0).data(Qt::DecorationRole).value<QIcon>();
        EXPECT_EQ(icon.availableSizes().value(0).width(), view == lvwIcon ? 32 : 16) << view;
        EXPECT_EQ(form.lst->HitTest(ToTwips(rect.center().x()) + ToTwips(form.lst->viewport()->x()),
                                    ToTwips(rect.center().y() + form.lst->viewport()->y())),
                  &row("Dora"))
            << view;
        ClickItem(*form.lst, row("Dora"), Qt::ControlModifier);
        EXPECT_EQ(selected(), "Bernd,Dora,Emil") << view;
        ClickItem(*form.lst, row("Dora"), Qt::ControlModifier);
    }
    // Unbound pictures leave the rows and their keys; bound again, they show.
    form.lst->SetIcons(nullptr);
    EXPECT_EQ(row("Anna").Icon(), "FILE");
    EXPECT_THROW(row("Anna").SetIcon("CLOSED"), ControlError);
    form.lst->SetIcons(form.img32);
    row("Anna").SetIcon("CLOSED");
    EXPECT_EQ(row("Anna").Icon(), "CLOSED");
    // A key asked a moment ago is refused once its list has been emptied.
    form.img16->Clear();
    EXPECT_THROW(items.Add("C:\\NEU", "neu", {}, "FILE"), ControlError);
}

TEST_F(ListViewTest, LongAndOddNamesShowWholeOnOneLineInTheListViews)
{
    const QString longName = QStringLiteral("Ein recht langer Dateiname.txt");
    items.Add("C:\\LONG", longName, "FILE", "FILE");
    items.Add("C:\\ODD", "zwei\nzeilen.txt", "FILE", "FILE");
    form.lst->DisplayText = [](const QString& text) {
        return QString(text).replace(u'\n', QChar(0x2424));
    };
    for (int view : {lvwSmallIcon, lvwList}) {
        form.lst->SetView(view);
        ProcessEvents();
        const QFontMetrics metrics = form.lst->viewport()->fontMetrics();
        EXPECT_GE(form.lst->ItemRect(row("Ein recht langer Dateiname.txt")).width(),
                  metrics.horizontalAdvance(longName))
            << view;
        EXPECT_EQ(form.lst->ItemRect(row("zwei\nzeilen.txt")).height(),
                  form.lst->ItemRect(row("Anna")).height())
            << view;
    }
    const QModelIndex odd = shownModel()->index(items.Count() - 1, 0);
    EXPECT_EQ(odd.data().toString(), QString("zwei") + QChar(0x2424) + "zeilen.txt");
    EXPECT_EQ(items.Item(items.Count()).Text(), "zwei\nzeilen.txt");

    // In the details the name column is too narrow for the long name, which
    // shows shortened: pointing at it shows the whole name, at a short one nothing.
    form.lst->SetView(lvwReport);
    form.window()->show();
    ProcessEvents();
    const auto tipAt = [&](const char* name) {
        const QPoint at = form.lst->ItemRect(row(name)).topLeft() + QPoint(5, 3);
        QHelpEvent help(QEvent::ToolTip, at, form.lst->viewport()->mapToGlobal(at));
        QApplication::sendEvent(form.lst->viewport(), &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    EXPECT_EQ(tipAt("Anna"), QString());
    EXPECT_EQ(tipAt("Ein recht langer Dateiname.txt"), longName);
}

TEST_F(ListViewTest, KeysMayRepeatAndNothingIsDropped)
{
    items.Add("C:\\EMIL", "emil", "FILE", "FILE"); // differs from "Emil" only in case
    shownInOrder();
    EXPECT_EQ(items.Count(), 7);
    ASSERT_NE(items.Find("C:\\EMIL"), nullptr);
    EXPECT_EQ(items.Find("C:\\EMIL")->Text().toUpper(), "EMIL");
    items.Remove("C:\\EMIL");
    EXPECT_EQ(items.Count(), 6);
    ASSERT_TRUE(items.Exists("C:\\EMIL")); // the other one answers now
    items.Remove("C:\\EMIL");
    EXPECT_FALSE(items.Exists("C:\\EMIL"));
    EXPECT_EQ(shownInOrder(), QStringList({"Anna", "Berta", "Bernd", "Carla", "Dora"}));
    EXPECT_THROW(items.Add("42", "Zahl"), ControlError);
    EXPECT_THROW(items.Item(9), ControlError);
}

TEST_F(ListViewTest, RemovingRunsKeepsOrderIndicesAndTheSelectionOfTheRest)
{
    struct Case {
        const char* name;
        QStringList rejected;
        QStringList left;
    };
    const std::vector<Case> cases{
        {"none", {}, {"Anna", "Berta", "Bernd", "Carla", "Dora", "Emil"}},
        {"every second", {"Berta", "Carla", "Emil"}, {"Anna", "Bernd", "Dora"}},
        {"runs at both ends", {"Anna", "Berta", "Dora", "Emil"}, {"Bernd", "Carla"}},
        {"all", {"Anna", "Berta", "Bernd", "Carla", "Dora", "Emil"}, {}},
    };
    for (const Case& c : cases) {
        items.Clear();
        SetUp();
        form.lst->SetMultiSelect(true);
        row("Bernd").SetSelected(true);
        row("Carla").SetSelected(true);
        const int removed =
            items.RemoveIf([&](const ListItem& item) { return c.rejected.contains(item.Text()); });
        EXPECT_EQ(removed, c.rejected.size()) << c.name;
        EXPECT_EQ(shownInOrder(), c.left) << c.name;
        for (const char* kept : {"Bernd", "Carla"}) {
            if (c.left.contains(kept)) {
                EXPECT_TRUE(row(kept).Selected()) << c.name << kept;
            }
        }
        EXPECT_FALSE(items.Exists("C:\\BERTA") && c.rejected.contains("Berta")) << c.name;
    }
    items.Clear();
    SetUp();
    items.RemoveRange(2, 3);
    items.Add(2, "C:\\NEU", "Neu");
    EXPECT_EQ(shownInOrder(), QStringList({"Anna", "Neu", "Dora", "Emil"}));
    EXPECT_THROW(items.RemoveRange(4, 2), ControlError);
}

TEST_F(ListViewTest, ABurstOfAddsReachesTheViewInOneStepInTheOrderOfAdding)
{
    int announcements = 0;
    QObject::connect(shownModel(), &QAbstractItemModel::rowsInserted, [&] { ++announcements; });
    for (int i = 0; i < 1000; ++i)
        items.Add(QString("C:\\X%1").arg(i), QString("x%1").arg(i));
    items.Add(1, "C:\\ERST", "Erst"); // amid the burst: announced in place
    ProcessEvents();
    EXPECT_EQ(announcements, 2);
    const QStringList shown = shownInOrder();
    EXPECT_EQ(shown.first(), "Erst");
    EXPECT_EQ(shown.last(), "x999");
    EXPECT_EQ(items.Item(8).Text(), "x0");

    // A search that drops thousands of runs: the rest stay in order and selected.
    for (int i = 1000; i < 6000; ++i)
        items.Add(QString("C:\\X%1").arg(i), QString("x%1").arg(i));
    row("x4001").SetSelected(true);
    items.RemoveIf([](const ListItem& item) {
        return item.Text().endsWith(u'0') || item.Text().endsWith(u'2');
    });
    const QStringList rest = shownInOrder();
    EXPECT_EQ(rest.size(), 6007 - 1200);
    EXPECT_EQ(rest.mid(7, 3), QStringList({"x1", "x3", "x4"}));
    EXPECT_TRUE(row("x4001").Selected());
    EXPECT_EQ(form.lst->SelectedItem(), &row("x4001"));
}

TEST_F(ListViewTest, HeadersReportClicksAndTakeTranslatedTextsAndSorting)
{
    form.lst->SetView(lvwReport);
    ProcessEvents();
    ClickColumn(*form.lst, form.lst->ColumnHeaders().Item(2));
    EXPECT_EQ(events, std::vector<std::string>{"column:Typ"});
    form.lst->SetRowProperty("COLUMNHEADERS", 1, "TEXT", "Filename");
    form.lst->RowsChanged("COLUMNHEADERS");
    EXPECT_EQ(form.lst->RowProperty("ColumnHeaders", 1, "Text").toString(), "Filename");
    EXPECT_EQ(form.lst->ColumnHeaders().Item(1).Width(), ToTwips(150));

    row("Carla").SetSelected(true);
    form.lst->SetSortOrder(1);
    form.lst->SetSorted(true);
    EXPECT_EQ(shownInOrder(), QStringList({"Emil", "Dora", "Carla", "Berta", "Bernd", "Anna"}));
    EXPECT_EQ(selected(), "Carla");

    // Far columns keep their texts as the near ones do, and sort as well.
    row("Anna").SetSubItem(6, "b");
    row("Emil").SetSubItem(6, "a");
    row("Emil").SetSubItem(4, "vier");
    EXPECT_EQ(row("Anna").SubItem(5), "");
    EXPECT_EQ(row("Anna").SubItem(7), "");
    EXPECT_EQ(row("Emil").SubItem(4) + row("Emil").SubItem(6), "viera");
    form.lst->SetSortOrder(0);
    form.lst->SetSortKey(6);
    EXPECT_EQ(shownInOrder(), QStringList({"Bernd", "Berta", "Carla", "Dora", "Emil", "Anna"}));
}

TEST_F(ListViewTest, AFileListHearsTheMouseKeysAndFocusItActsOn)
{
    auto* name = form.Add<TextBox>(QStringLiteral("txt_Filename"));
    name->Move(0, ToTwips(310), ToTwips(100), ToTwips(24));
    form.lst->SetView(lvwReport);
    ProcessEvents();
    // As a file chooser does: the row under a pressed pointer, found from twips.
    form.lst->MouseDown = [this](int button, int shift, float x, float y) {
        const ListItem* hit = form.lst->HitTest(x, y);
        events.push_back("down" + std::to_string(button) + std::to_string(shift) + ":" +
                         (hit ? hit->Text().toStdString() : "-"));
    };
    form.lst->MouseMove = [this](int button, int, float x, float y) {
        const ListItem* hit = form.lst->HitTest(x, y);
        if (button)
            events.push_back("move" + std::to_string(button) + ":" +
                             (hit ? hit->Text().toStdString() : "-"));
    };
    form.lst->KeyDown = [this](int& code, int) { events.push_back("key" + std::to_string(code)); };
    form.lst->GotFocus = [this] { events.push_back("gotfocus"); };
    form.lst->LostFocus = [this] { events.push_back("lostfocus"); };
    const auto at = [this](const char* text) { return form.lst->ItemRect(row(text)).center(); };
    struct Step {
        const char* name;
        std::function<void()> act;
        std::vector<std::string> events;
    };
    const std::vector<Step> steps{
        {"focus leaves", [&] { Focus(*name); }, {"lostfocus"}},
        {"focus arrives", [&] { Focus(*form.lst); }, {"gotfocus"}},
        {"right button on a row",
         [&] {
             QTest::mousePress(form.lst->viewport(), Qt::RightButton, Qt::ShiftModifier,
                               at("Dora"));
             QTest::mouseRelease(form.lst->viewport(), Qt::RightButton, {}, at("Dora"));
         },
         {"down21:Dora"}},
        {"drag over rows",
         [&] {
             QTest::mousePress(form.lst->viewport(), Qt::LeftButton, {}, at("Berta"));
             QMouseEvent move(QEvent::MouseMove, at("Carla"),
                              form.lst->viewport()->mapToGlobal(at("Carla")), Qt::NoButton,
                              Qt::LeftButton, Qt::NoModifier);
             QApplication::sendEvent(form.lst->viewport(), &move);
             QTest::mouseRelease(form.lst->viewport(), Qt::LeftButton, {}, at("Carla"));
         },
         {"down10:Berta", "move1:Carla", "click:Carla"}},
        {"double click on empty space",
         [&] {
             const QPoint empty(5, form.lst->viewport()->height() - 5);
             QTest::mouseDClick(form.lst->viewport(), Qt::LeftButton, {}, empty);
         },
         {}},
        {"backspace", [&] { PressKey(form, Qt::Key_Backspace); }, {"key8"}},
        {"arrow down", [&] { PressKey(form, Qt::Key_Down); }, {"key40", "click:Dora"}},
        {"type-ahead", [&] { Type(form, "e"); }, {"key69", "click:Emil"}},
    };
    for (const Step& step : steps) {
        events.clear();
        step.act();
        EXPECT_EQ(events, step.events) << step.name;
    }
}

TEST_F(ListViewTest, MousePointerShowsTheHourglassOrTheOwnPicture)
{
    QImage own(32, 32, QImage::Format_ARGB32);
    own.fill(qRgb(200, 0, 0));
    form.lst->SetMouseIcon(own);
    const std::pair<int, Qt::CursorShape> cases[] = {
        {11, Qt::WaitCursor}, {99, Qt::BitmapCursor}, {0, Qt::ArrowCursor}, {42, Qt::ArrowCursor}};
    for (const auto& [pointer, shape] : cases) {
        form.lst->SetMousePointer(pointer);
        EXPECT_EQ(form.lst->widget()->cursor().shape(), shape) << pointer;
    }
    form.lst->SetMousePointer(99);
    EXPECT_EQ(form.lst->widget()->cursor().pixmap().toImage().pixel(5, 5), qRgb(200, 0, 0));
}

} // namespace
