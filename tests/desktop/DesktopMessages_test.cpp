// The desktop host's messages open the library's own message dialog.
#include "controls/ctl_Label.h"
#include "controls/ctl_Title.h"
#include "desktop/DesktopMessages.h"
#include "dialogs/frm_DialogMessage.h"
#include "forms/ListView.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "resources/frm_DialogFileResource.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

using namespace fw;

namespace {

TEST(DesktopMessages, ErrorsQuestionsTextsAndIconsAreAskedThroughTheLibrarysDialogs)
{
    fw::testing::ScopedTestHost host; // pictures and language for the dialog itself
    desktop::DesktopMessages messages;
    fw::testing::ModalDriver driver;

    driver.OnNextModal([](Form& form) {
        auto& dialog = dynamic_cast<frm_DialogMessage&>(form);
        EXPECT_EQ(dialog.bar_Header->Caption(), QStringLiteral("Speichern"));
        EXPECT_EQ(dialog.lab_Description[0].Caption(), QStringLiteral("Platte voll"));
        EXPECT_EQ(dialog.bar_Header->Scheme(), 6) << "the critical sign picks the error scheme";
        fw::testing::PressKey(form, Qt::Key_Return);
    });
    messages.ShowError("Platte voll", "Speichern");

    driver.OnNextModal([](Form& form) {
        auto& dialog = dynamic_cast<frm_DialogMessage&>(form);
        EXPECT_EQ(dialog.bar_Header->Scheme(), 7);
        fw::testing::PressKey(form, Qt::Key_Escape);
    });
    EXPECT_EQ(messages.AskQuestion("Wirklich?", "Löschen", 4, "", ""), ResultNo);

    // Texts are asked through the input dialog; cancelling gives nothing.
    driver.OnNextModal([](Form& form) {
        EXPECT_EQ(form.Name(), QStringLiteral("frm_DialogInput"));
        fw::testing::Type(form, QStringLiteral("Herbst"));
        fw::testing::PressKey(form, Qt::Key_Return);
    });
    EXPECT_EQ(messages.AskText("Name der Palette:", "Palette speichern", "Neu"), "Herbst");

    driver.OnNextModal([](Form& form) { fw::testing::PressKey(form, Qt::Key_Escape); });
    EXPECT_EQ(messages.AskText("Name der Palette:", "Palette speichern", "Neu"), "");

    // Icons through the resource picker, opened at the current icon, which
    // Return takes; icons only, an overlay ignored.
    host->resources = {"Ico\\16\\Signs\\OK.ico", "Ico\\16\\Signs\\Ding.wav",
                       "Ico\\16\\Signs\\Logo.png", "Ico\\16\\Signs\\Stop.ico"};
    driver.OnNextModal([](Form& form) {
        auto& picker = dynamic_cast<frm_DialogFileResource&>(form);
        EXPECT_EQ(picker.Caption(), QStringLiteral("Symbol wählen"));
        EXPECT_EQ(picker.lst_Files->ListItems().Count(), 3);
        fw::testing::PressKey(form, Qt::Key_Return);
    });
    EXPECT_EQ(messages.ChooseIcon("Ico\\16\\Signs\\stop.ico#ico\\16\\overlay\\new.ico",
                                  "Symbol wählen", 16),
              "Ico\\16\\Signs\\Stop.ico");
    // Without one it opens at the size's signs, which this store lacks.
    driver.OnNextModal([](Form& form) { fw::testing::PressKey(form, Qt::Key_Escape); });
    EXPECT_EQ(messages.ChooseIcon("", "Symbol wählen", 16), "");
    EXPECT_EQ(host->callsTo("ListResources").back(),
              "ListResources(ICO\\16\\COMPUTER\\SIGNS\\|0|0|1)");
    EXPECT_EQ(driver.Pending(), 0);
}

} // namespace
