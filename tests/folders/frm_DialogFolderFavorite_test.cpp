// The favourite editor, filled in by typing and clicking as a user would.
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "folders/frm_DialogFolderFavorite.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <QTest>
#include <QVariantMap>
#include <QWidget>
#include <gtest/gtest.h>

#include <functional>

using namespace fw;
using namespace fw::testing;

namespace {

void typeInto(frm_DialogFolderFavorite& form, TextBox& box, const QString& text)
{
    Focus(box);
    PressKey(form, Qt::Key_A, Qt::ControlModifier);
    Type(form, text);
}

struct EditCase {
    const char* name;
    std::string appKey;
    bool forUserBefore;
    std::function<void(frm_DialogFolderFavorite&, TestHost&)> act;
    bool appOffered, userChosenAtStart, accepted;
    FavoriteItem after;
    bool forUserAfter;
    std::string message; ///< the last ShowInfo or ShowHelp, "" for none
};

TEST(FolderFavoriteEditor, WhatTheUserEntersComesBackOnOkOnly)
{
    const FavoriteItem start{"", "", "", "C:\\Daten\\"};
    const auto press = [](const char* key) {
        return [key](frm_DialogFolderFavorite& form, TestHost&) {
            form.ctl_CmdBar1->Press(QString::fromLatin1(key));
        };
    };
    const auto fillIn = [&](frm_DialogFolderFavorite& form, TestHost& host) {
        // The form opens in the name with the proposal selected.
        Type(form, QStringLiteral("Daten"));
        typeInto(form, *form.txt_URL, QStringLiteral("C:\\Daten\\Neu\\"));
        typeInto(form, *form.txt_Description, QStringLiteral("Alles"));
        host.queueIconChoice("Ico\\16\\Own\\Star.ico");
        Click(*form.pic_Icon);
        Click(*form.opt_FavUser);
        PressKey(form, Qt::Key_Return);
    };
    const auto emptyName = [&](frm_DialogFolderFavorite& form, TestHost&) {
        typeInto(form, *form.txt_Text, QString());
        PressKey(form, Qt::Key_Delete);
        form.ctl_CmdBar1->Press(QStringLiteral("OK"));
        EXPECT_FALSE(form.IsUnloaded());
        form.ctl_CmdBar1->Press(QStringLiteral("ABORT"));
    };
    const auto help = [&](frm_DialogFolderFavorite& form, TestHost&) {
        form.ctl_CmdBar1->Press(QStringLiteral("HELP"));
        EXPECT_FALSE(form.IsUnloaded());
        PressKey(form, Qt::Key_Escape);
    };
    const auto iconCancelled = [&](frm_DialogFolderFavorite& form, TestHost& host) {
        host.queueIconChoice("");
        QWidget* link = form.lab_Change->widget();
        QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(10, link->height() / 2));
        form.ctl_CmdBar1->Press(QStringLiteral("OK"));
    };
    const std::string defaultIcon = "Ico\\16\\Computer\\folders\\Favorite.ico";
    const std::string appKey = "Software\\Valdrenix\\TestApp\\";
    const FavoriteItem proposal{"Neuer Favorit", "", defaultIcon, "C:\\Daten\\"};
    // clang-format off
    const EditCase cases[] = {
        {"proposal taken as it is", appKey, false, press("OK"), true, false, true, proposal, false, ""},
        {"everything typed, for the user", appKey, false, fillIn, true, false, true,
         {"Daten", "Alles", "Ico\\16\\Own\\Star.ico", "C:\\Daten\\Neu\\"}, true, ""},
        {"abandoned", appKey, true, press("ABORT"), true, true, false, start, true, ""},
        {"an empty name is refused", appKey, false, emptyName, true, false, false, start, false,
         "ShowInfo(Sie müssen einen Namen für den Favoriten eingeben!|)"},
        {"help leaves it open", appKey, false, help, true, false, false, start, false,
         "ShowHelp(In diesem Dialog können Sie die Eigenschaften des neuen Ordner-Favoriten festlegen.|Ordner-Favorit erstellen)"},
        {"no application key: the user's list only", "", false, press("OK"), false, true, true, proposal, true, ""},
        {"icon choice cancelled keeps the icon", appKey, false, iconCancelled, true, false, true, proposal, false, ""},
    };
    // clang-format on
    for (const EditCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScopedTestHost host;
        host->appRegistryKey = c.appKey;
        ModalDriver driver;
        frm_DialogFolderFavorite form;
        form.Favorite = start;
        form.ForUser = c.forUserBefore;
        driver.OnNextModal([&](Form&) {
            EXPECT_EQ(form.opt_FavApp->Visible(), c.appOffered);
            EXPECT_EQ(form.opt_FavUser->Value(), c.userChosenAtStart);
            EXPECT_EQ(form.opt_FavApp->Value(), c.appOffered && !c.userChosenAtStart);
            EXPECT_EQ(form.txt_URL->Text(), QStringLiteral("C:\\Daten\\"));
            c.act(form, *host);
        });

        form.Show(true);
        ASSERT_TRUE(form.IsUnloaded());
        EXPECT_EQ(form.Accepted, c.accepted);
        EXPECT_EQ(form.ForUser, c.forUserAfter);
        const QVariantMap favourite = form.GetPublic(QStringLiteral("Favorite")).toMap();
        EXPECT_EQ(favourite.value("Name").toString().toStdString(), c.after.Name);
        EXPECT_EQ(favourite.value("Description").toString().toStdString(), c.after.Description);
        EXPECT_EQ(favourite.value("Icon").toString().toStdString(), c.after.Icon);
        EXPECT_EQ(favourite.value("Path").toString().toStdString(), c.after.Path);
        const auto info = host->callsTo("ShowInfo");
        const auto helpCalls = host->callsTo("ShowHelp");
        const std::string message = !info.empty()        ? info.back()
                                    : !helpCalls.empty() ? helpCalls.back()
                                                         : std::string();
        EXPECT_EQ(message, c.message);
        for (const std::string& call : host->callsTo("ChooseIcon"))
            EXPECT_EQ(call, "ChooseIcon(" + defaultIcon + "|Symbol wählen|16)");
    }
}

TEST(FolderFavoriteEditor, LateBoundCallersSetAndReadTheRecord)
{
    ScopedTestHost host;
    frm_DialogFolderFavorite form;
    EXPECT_TRUE(
        form.SetPublic(QStringLiteral("Favorite"), QVariantMap{{"Name", "Musik"},
                                                               {"Description", "Platten"},
                                                               {"Icon", "Ico\\16\\Own\\Note.ico"},
                                                               {"Path", "C:\\Musik\\"}}));
    EXPECT_TRUE(form.SetPublic(QStringLiteral("forUser"), true));
    ModalDriver driver;
    driver.OnNextModal([&](Form&) {
        EXPECT_EQ(form.txt_Text->Text(), QStringLiteral("Musik"));
        EXPECT_EQ(form.txt_Description->Text(), QStringLiteral("Platten"));
        EXPECT_EQ(form.IconPath(), QStringLiteral("Ico\\16\\Own\\Note.ico"));
        EXPECT_TRUE(form.opt_FavUser->Value());
        form.ctl_CmdBar1->Press(QStringLiteral("OK"));
    });
    form.Show(true);
    EXPECT_TRUE(form.GetPublic(QStringLiteral("Accepted")).toBool());
    EXPECT_TRUE(form.GetPublic(QStringLiteral("ForUser")).toBool());
    EXPECT_EQ(form.GetPublic(QStringLiteral("Favorite")).toMap().value("Icon").toString(),
              QStringLiteral("Ico\\16\\Own\\Note.ico"));
}

} // namespace
