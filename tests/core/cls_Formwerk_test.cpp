// The factory: exact names, and the platform's own box for unknown ones.
#include "core/cls_Formwerk.h"
#include "core/sys_Global.h"
#include "testing/TestHost.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>
#include <map>

using namespace fw;

namespace {

struct SeenBox {
    bool shown = false;
    QString title, text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    int buttons = 0;
};

/// Runs create while watching for the platform's message box, which it closes.
template <class F> SeenBox watchForBox(F&& create)
{
    SeenBox seen;
    QTimer watcher;
    QObject::connect(&watcher, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        seen = {true, box->windowTitle(), box->text(), box->icon(), int(box->buttons().size())};
        box->button(QMessageBox::Ok)->click();
    });
    watcher.start(5);
    create();
    return seen;
}

TEST(Factory, UnknownNamesShowThePlatformBoxAndGiveNothing)
{
    fw::testing::ScopedTestHost host;
    host->forbidden = {"ShowError", "ShowInfo", "AskQuestion"}; // not the host's messages
    cls_Formwerk factory;
    // Other case, internal forms and forms not yet part of the library are unknown alike.
    for (const std::string name : {"frm_dialogmessage", "frm_DialogKeyboard", "", "frm_Nonsense"}) {
        std::unique_ptr<Form> form;
        const SeenBox box = watchForBox([&] { form = factory.Create(name); });
        EXPECT_EQ(form, nullptr) << name;
        ASSERT_TRUE(box.shown) << name;
        EXPECT_EQ(box.title, QStringLiteral("KRITISCHER FEHLER"));
        EXPECT_EQ(box.text, QStringLiteral("DIALOG '") + QString::fromStdString(name) +
                                QStringLiteral("' WURDE NICHT GEFUNDEN!"));
        EXPECT_EQ(box.icon, QMessageBox::Critical);
        EXPECT_EQ(box.buttons, 1);
    }
}

TEST(Factory, EveryListedNameMakesItsFormUnloadedWithoutABox)
{
    fw::testing::ScopedTestHost host;
    const std::vector<std::string> names = cls_Formwerk::Names();
    EXPECT_NE(std::find(names.begin(), names.end(), "frm_DialogMessage"), names.end());
    for (const std::string& name : names) {
        std::unique_ptr<Form> form;
        const SeenBox box = watchForBox([&] { form = cls_Formwerk().Create(name); });
        EXPECT_FALSE(box.shown) << name;
        ASSERT_NE(form, nullptr) << name;
        // Two names open a form of another name: a folder alias, and the
        // fading notice in front of the critical choice.
        const std::map<std::string, std::string> others{{"frm_DialogPath", "frm_DialogFolder"},
                                                        {"frm_DialogCritical", "frm_DialogFlash"}};
        const auto other = others.find(name);
        EXPECT_EQ(form->Name().toStdString(), other == others.end() ? name : other->second);
        EXPECT_FALSE(form->IsLoaded()) << name << ": creation does not load the form";
    }
    EXPECT_TRUE(cls_Formwerk::Used());
}

TEST(Factory, TheGlobalObjectIsMadeOnFirstTouchAndCanBeReplaced)
{
    cls_Formwerk& first = sys_Global::CDIALOG();
    EXPECT_EQ(&first, &sys_Global::CDIALOG());
    auto own = std::make_shared<cls_Formwerk>();
    sys_Global::SetCDIALOG(own);
    EXPECT_EQ(&sys_Global::CDIALOG(), own.get());
    sys_Global::SetCDIALOG(nullptr);
    EXPECT_NE(&sys_Global::CDIALOG(), own.get());
}

} // namespace
