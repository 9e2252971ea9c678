// The image combo, filled from code and chosen from by mouse and keys.
#include "forms/ControlError.h"
#include "forms/Form.h"
#include "forms/ImageCombo.h"
#include "forms/ImageList.h"
#include "forms/ListView.h"
#include "forms/Screen.h"
#include "forms/testing/UserInput.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QTest>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

// Readable QStrings in test failures.
inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace {

const QRgb kDrive = qRgb(0, 0, 200);
const QRgb kFolder = qRgb(220, 160, 0);
const QRgb kOpen = qRgb(0, 160, 0);

QImage filled(QRgb colour, int size)
{
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

// The first column from the left that shows colour within a rectangle, -1 if none.
int firstColumnOf(const QImage& image, const QRect& area, QRgb colour)
{
    for (int x = area.left(); x <= area.right(); ++x)
        for (int y = area.top(); y <= area.bottom(); ++y)
            if (image.pixel(x, y) == colour)
                return x;
    return -1;
}

class ComboForm : public Form {
  public:
    ComboForm() : Form(QStringLiteral("frm_Combo"))
    {
        window()->resize(400, 300);
        img16 = Add<ImageList>(QStringLiteral("img_Icon16"));
        img16->Add(QStringLiteral("DRIVE"), filled(kDrive, 16));
        img16->Add(QStringLiteral("CLOSED"), filled(kFolder, 16));
        img16->Add(QStringLiteral("OPEN"), filled(kOpen, 16));
        cbo = Add<ImageCombo>(QStringLiteral("lst_Folder"));
        cbo->Move(ToTwips(10), ToTwips(10), ToTwips(300), ToTwips(26));
        lst = Add<ListView>(QStringLiteral("lst_Files"));
        lst->Move(ToTwips(10), ToTwips(50), ToTwips(300), ToTwips(200));
    }
    ImageList* img16;
    ImageCombo* cbo;
    ListView* lst;
};

class ImageComboTest : public ::testing::Test {
  public:
    ComboForm form;
    ComboItems& items = form.cbo->ComboItems();
    QComboBox& box = *form.cbo->comboBox();
    std::vector<QString> clicks;

    void SetUp() override
    {
        form.cbo->Click = [this] {
            clicks.push_back(form.cbo->SelectedItem() ? form.cbo->SelectedItem()->Key() : "-");
        };
        form.Show();
        ProcessEvents();
    }
    void TearDown() override { form.Unload(); }

    void fillPlaces()
    {
        form.cbo->SetImageList(nullptr); // as a fill may run unbound
        items.Add(0, "C:\\", "System (C:)", "DRIVE", {}, 0);
        items.Add(0, "C:\\HOME\\", "home", "CLOSED", "OPEN", 1);
        items.Add(0, "C:\\HOME\\ANNA\\", "anna", "CLOSED", "OPEN", 2);
        items.Add(0, "D:\\", "Daten (D:)", "DRIVE", {}, 0);
        form.cbo->SetImageList(form.img16);
    }
    // Opens the list from the keyboard and clicks the row of item index.
    void pick(int index)
    {
        Focus(*form.cbo);
        PressKey(form, Qt::Key_F4);
        QAbstractItemView* view = box.view();
        ASSERT_TRUE(view->isVisible());
        const QRect row = view->visualRect(view->model()->index(index - 1, 0));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, row.center());
        ProcessEvents();
    }
};

TEST_F(ImageComboTest, OnlyTheUsersChoiceRaisesClickNeverAFillOrCode)
{
    using T = ImageComboTest;
    struct Step {
        const char* name;
        std::function<void(T&)> act;
        const char* chosen; // "" for none
        std::vector<QString> clicks;
    };
    const auto choose = [](const char* key) {
        return [key](T& t) { t.form.cbo->SetSelectedItem(&t.items.Item(key)); };
    };
    const std::vector<Step> steps{
        {"a fill chooses nothing", [](T& t) { t.fillPlaces(); }, "", {}},
        {"code chooses", choose("C:\\HOME\\ANNA\\"), "C:\\HOME\\ANNA\\", {}},
        {"adding in front keeps the choice",
         [](T& t) { t.items.Add(1, "DESKTOP", "Desktop", "CLOSED"); },
         "C:\\HOME\\ANNA\\",
         {}},
        {"mouse", [](T& t) { t.pick(5); }, "D:\\", {"D:\\"}},
        {"arrow up",
         [](T& t) { PressKey(t.form, Qt::Key_Up); },
         "C:\\HOME\\ANNA\\",
         {"C:\\HOME\\ANNA\\"}},
        {"type-ahead", [](T& t) { Type(t.form, "d"); }, "D:\\", {"D:\\"}},
        {"removing the chosen", [](T& t) { t.items.Remove("D:\\"); }, "", {}},
        {"refill",
         [](T& t) {
             t.items.Clear();
             t.fillPlaces();
         },
         "",
         {}},
        {"mouse on the first", [](T& t) { t.pick(1); }, "C:\\", {"C:\\"}},
    };
    for (const Step& step : steps) {
        clicks.clear();
        step.act(*this);
        const ComboItem* chosen = form.cbo->SelectedItem();
        EXPECT_EQ(chosen ? chosen->Key() : "", step.chosen) << step.name;
        EXPECT_EQ(box.currentText(), chosen ? chosen->Text() : "") << step.name;
        EXPECT_EQ(clicks, step.clicks) << step.name;
    }
}

TEST_F(ImageComboTest, KeysAreUniqueAndLookupsFollowTheClassicCollection)
{
    fillPlaces();
    const struct {
        const char* name;
        std::function<void()> act;
        int error;
    } cases[] = {
        {"taken key", [&] { items.Add(0, "D:\\", "again"); }, ControlError::KeyNotUnique},
        {"numeric key", [&] { items.Add(0, "12", "number"); }, ControlError::InvalidKey},
        {"signed, spaced", [&] { items.Add(0, " -1.5 ", "number"); }, ControlError::InvalidKey},
        {"exponent", [&] { items.Add(0, ".5e3", "number"); }, ControlError::InvalidKey},
        {"index beyond", [&] { items.Add(9, "E:\\", "far"); }, ControlError::IndexOutOfBounds},
        {"missing key", [&] { items.Item("X:\\"); }, ControlError::ElementNotFound},
        {"index 0", [&] { items.Item(0); }, ControlError::IndexOutOfBounds},
        {"remove beyond", [&] { items.Remove(5); }, ControlError::IndexOutOfBounds},
    };
    for (const auto& c : cases) {
        try {
            c.act();
            ADD_FAILURE() << c.name << " raised nothing";
        } catch (const ControlError& error) {
            EXPECT_EQ(error.Number(), c.error) << c.name;
        }
    }
    EXPECT_EQ(items.Find("X:\\"), nullptr);
    items.Add(0, {}, "no key"); // keys may be left out, more than once
    EXPECT_EQ(items.Add(0, {}, "no key either").Index(), 6);
}

TEST_F(ImageComboTest, OpenListIndentsEachLevelAndTheBoxShowsTheChosenPicture)
{
    fillPlaces();
    form.cbo->SetSelectedItem(&items.Item(4)); // lit rows show a tinted picture
    Focus(*form.cbo);
    PressKey(form, Qt::Key_F4);
    QAbstractItemView* view = box.view();
    ASSERT_TRUE(view->isVisible());
    const QImage shown = view->viewport()->grab().toImage();
    const auto iconLeft = [&](int index, QRgb colour) {
        const QRect row = view->visualRect(view->model()->index(index - 1, 0));
        return firstColumnOf(shown, row.intersected(shown.rect()), colour);
    };
    const int drive = iconLeft(1, kDrive);
    ASSERT_GE(drive, 0);
    EXPECT_NEAR(iconLeft(2, kFolder) - drive, 10, 2);
    EXPECT_NEAR(iconLeft(3, kFolder) - drive, 20, 2);
    QTest::keyClick(view, Qt::Key_Escape); // the open list has the keyboard
    EXPECT_FALSE(view->isVisible());
    form.cbo->SetSelectedItem(&items.Item(2));
    const QImage closed = form.cbo->widget()->grab().toImage();
    EXPECT_GE(firstColumnOf(closed, closed.rect(), kOpen), 0) << "the picture of the chosen";
    EXPECT_TRUE(clicks.empty());
}

TEST_F(ImageComboTest, SixteenAndThirtyTwoPixelListsServeTheComboAndAListAtOnce)
{
    auto* img32 = form.Add<ImageList>(QStringLiteral("img_Icon32"));
    img32->SetImageSize(32, 32);
    img32->Add("CLOSED", filled(kOpen, 32));
    fillPlaces();
    form.lst->SetIcons(img32);
    form.lst->SetSmallIcons(form.img16);
    form.lst->ListItems().Add("C:\\A.TXT", "a.txt", "CLOSED", "CLOSED");
    // A picture replaced in the shared list shows in the combo after a refresh.
    form.img16->Clear();
    form.img16->Add("DRIVE", filled(kOpen, 16));
    form.img16->Add("CLOSED", filled(kDrive, 16));
    form.cbo->Refresh();
    form.cbo->SetSelectedItem(&items.Item(1));
    ProcessEvents();
    const QImage shownBox = form.cbo->widget()->grab().toImage();
    EXPECT_GE(firstColumnOf(shownBox, shownBox.rect(), kOpen), 0);
    for (const auto& [view, size, colour] :
         {std::tuple{lvwIcon, 32, kOpen}, std::tuple{lvwReport, 16, kDrive}}) {
        form.lst->SetView(view);
        auto* list = static_cast<QAbstractItemView*>(form.lst->viewport()->parentWidget());
        const QIcon shown = list->model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>();
        const QImage icon = shown.pixmap(size).toImage();
        EXPECT_EQ(icon.width(), size) << view;
        EXPECT_EQ(icon.pixel(size / 2, size / 2), colour) << view;
    }
}

} // namespace
