// Popup menus: real QMenus picked by keyboard as a user would.
#include "desktop/DesktopMenus.h"
#include "desktop/DesktopPictures.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

using fw::MenuEntry;
using fw::desktop::DesktopMenus;
using fw::desktop::DesktopPictures;

namespace {

// Acts on the next popup that shows (other than notThis); gives up after two
// seconds so that a menu that never opens fails the test instead of hanging it.
void whenPopupShows(std::function<void(QMenu&)> act, const QWidget* notThis = nullptr,
                    int triesLeft = 200)
{
    QTimer::singleShot(10, [act = std::move(act), notThis, triesLeft]() mutable {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu && menu != notThis)
            act(*menu);
        else if (triesLeft > 0)
            whenPopupShows(std::move(act), notThis, triesLeft - 1);
    });
}

// Arrows down to the row with this text, as a user would.
void arrowTo(QMenu& menu, const QString& text)
{
    for (int i = 0; i < 10 && !(menu.activeAction() && menu.activeAction()->text() == text); ++i)
        QTest::keyClick(&menu, Qt::Key_Down);
}

std::shared_ptr<fw::PopupMenu> newMenu()
{
    static DesktopMenus menus(std::make_shared<DesktopPictures>(QString()));
    return menus.NewPopupMenu();
}

TEST(DesktopMenus, PopupGivesTheKeyOfTheRowChosenByKeyboard)
{
    auto menu = newMenu();
    menu->AddRows({{"&Öffnen|OPEN|-1|-1|0|Ico\\16\\Computer\\Signs\\Load.ico", nullptr},
                   {"-", nullptr},
                   {"&Löschen|DELETE|-1|-1|0|Ico\\16\\Computer\\Signs\\Delete.ico", nullptr}});
    QStringList seen;
    whenPopupShows([&](QMenu& shown) {
        for (QAction* action : shown.actions())
            seen << (action->isSeparator() ? "-" : action->text());
        arrowTo(shown, "&Löschen");
        QTest::keyClick(&shown, Qt::Key_Return);
    });
    EXPECT_EQ(menu->Popup(10, 10), "DELETE");
    EXPECT_EQ(seen, (QStringList{"&Öffnen", "-", "&Löschen"}));
}

TEST(DesktopMenus, EscapeOrAnEmptyMenuGivesNothing)
{
    EXPECT_EQ(newMenu()->Popup(), "") << "an empty menu returns at once";
    auto menu = newMenu();
    menu->AddItem("", "Eins", "ONE");
    whenPopupShows([](QMenu& shown) { QTest::keyClick(&shown, Qt::Key_Escape); });
    EXPECT_EQ(menu->Popup(10, 10), "");
}

TEST(DesktopMenus, SubmenuRowOpensItsMenuAndGivesItsKey)
{
    auto sub = newMenu();
    sub->AddRows({{"Alpha|A|-1|-1|0|", nullptr}, {"Beta|B|-1|-1|0|", nullptr}});
    auto menu = newMenu();
    menu->AddRows({{"Neu|NEW|-1|-1|0|", nullptr}, {"Mehr|MORE|-1|-1|0|", sub}});
    whenPopupShows([](QMenu& shown) {
        arrowTo(shown, "Mehr");
        QTest::keyClick(&shown, Qt::Key_Right);
        whenPopupShows(
            [](QMenu& child) {
                arrowTo(child, "Beta");
                QTest::keyClick(&child, Qt::Key_Return);
            },
            &shown);
    });
    EXPECT_EQ(menu->Popup(10, 10), "B");
}

} // namespace
