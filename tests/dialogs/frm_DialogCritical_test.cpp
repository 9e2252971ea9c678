// The critical choice behind its fading notice, chosen by clicks and keys.
#include "controls/ctl_Button.h"
#include "controls/ctl_Option.h"
#include "controls/ctl_Title.h"
#include "core/cls_Formwerk.h"
#include "dialogs/frm_DialogCritical.h"
#include "dialogs/frm_DialogFlash.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

class CriticalChoiceTest : public ::testing::Test {
  protected:
    std::shared_ptr<TestHost> host = std::make_shared<TestHost>();
    ScopedCoreDev scope{host};
    ModalDriver driver;
    frm_DialogCritical form;

    /// Shows the choice modally and runs action in it; closes it if it stays open.
    void run(const std::function<void()>& action)
    {
        driver.OnNextModal([&](Form&) {
            action();
            if (!form.IsUnloaded())
                CloseWindow(form);
        });
        form.Show(true);
    }

    int shownOptions() const
    {
        int shown = 0;
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(form.opt_Choice[i].Visible(), form.lab_Choice[i].Visible());
            shown += form.opt_Choice[i].Visible();
        }
        return shown;
    }
};

TEST_F(CriticalChoiceTest, WithNothingSetItAsksYesOrNoAndClosingLeavesItUnconfirmed)
{
    form.Publics.Confirmed = true;
    run([&] {
        EXPECT_EQ(form.Caption(), "Sicherheitsabfrage - ACHTUNG!");
        EXPECT_EQ(form.ctl_Title1->Caption(), "ACHTUNG!");
        EXPECT_EQ(form.lab_Text->Caption(),
                  "Wollen Sie den ausgewählten Vorgang wirklich durchführen?");
        EXPECT_EQ(shownOptions(), 2);
        EXPECT_EQ(form.lab_Choice[0].Caption(), "Ja");
        EXPECT_EQ(form.lab_Choice[1].Caption(), "Nein");
        // Every option shows the first icon, the second one never appears.
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(form.opt_Choice[i].IconPath(), "Ico\\20\\Computer\\Signs\\OK.ico");
        EXPECT_FALSE(form.but_OK->Visible());
        EXPECT_FALSE(form.Publics.Confirmed);
        PressKey(form, Qt::Key_Return); // nothing chosen: Return does not go on
        EXPECT_TRUE(form.IsLoaded());
    });
    EXPECT_FALSE(form.Publics.Confirmed);
    EXPECT_EQ(form.Publics.ChoiceIndex, 0);
    EXPECT_EQ(form.Publics.Choices, (StringList{"Ja", "Nein"}));
}

TEST_F(CriticalChoiceTest, UpToThreeOfTheHostsChoicesAreShown)
{
    const std::vector<std::pair<StringList, int>> cases = {{{"Nur dies"}, 1},
                                                           {{"A", "B", "C", "D", "E"}, 3}};
    for (const auto& [choices, shown] : cases) {
        frm_DialogCritical dialog;
        dialog.Publics.Choices = choices;
        dialog.Publics.Text = "Alles löschen?";
        dialog.Publics.Title = "Löschen";
        driver.OnNextModal([&](Form&) {
            for (int i = 0; i < 3; ++i)
                EXPECT_EQ(dialog.opt_Choice[i].Visible(), i < shown) << i;
            EXPECT_EQ(dialog.lab_Choice[shown - 1].Caption(),
                      QString::fromStdString(choices.Item(shown)));
            EXPECT_EQ(dialog.ctl_Title1->Caption(), "Löschen");
            EXPECT_EQ(dialog.lab_Text->Caption(), "Alles löschen?");
            dialog.Unload();
        });
        dialog.Show(true);
    }
}

TEST_F(CriticalChoiceTest, AClickChoosesDrawsTheChoiceInItsSchemeAndWeiterAnswers)
{
    form.Publics.Choices = StringList{"Abbrechen", "Überschreiben", "Umbenennen"};
    host->schemeColours = {{13, 0x00AA0000}, {15, 0x00111111}, {8, 0x00000088}, {17, 0x00777777}};
    run([&] {
        Click(form.lab_Choice[1]); // the caption chooses as the option does
        EXPECT_EQ(form.CurrentChoice(), 2);
        EXPECT_TRUE(form.but_OK->Visible());
        const ctl_Option& chosen = form.opt_Choice[1];
        EXPECT_TRUE(chosen.Value());
        EXPECT_EQ(chosen.ColorA(), 0x00AA0000u);
        EXPECT_EQ(chosen.ShadeA(), 100);
        EXPECT_EQ(chosen.ShadeB(), -100);
        const ctl_Option& other = form.opt_Choice[2];
        EXPECT_FALSE(other.Value());
        EXPECT_EQ(other.ColorB(), 0x00111111u);
        EXPECT_EQ(other.ShadeA(), 0);
        EXPECT_EQ(other.ShadeB(), -50);
        EXPECT_EQ(form.lab_Choice[1].ForeColor(), QColor(0x88, 0, 0));

        Click(form.opt_Choice[2]);
        EXPECT_EQ(form.CurrentChoice(), 3);
        EXPECT_FALSE(form.opt_Choice[1].Value());
        Click(*form.but_OK);
    });
    EXPECT_TRUE(form.Publics.Confirmed);
    EXPECT_EQ(form.Publics.ChoiceIndex, 3);
}

TEST_F(CriticalChoiceTest, KeysChooseByNumberGoOnWithReturnAndLeaveWithEscape)
{
    run([&] {
        PressKey(form, Qt::Key_3); // no third option with the default two
        EXPECT_EQ(form.CurrentChoice(), 0);
        PressKey(form, Qt::Key_2);
        EXPECT_EQ(form.CurrentChoice(), 2);
        PressKey(form, Qt::Key_Return);
    });
    EXPECT_TRUE(form.Publics.Confirmed);
    EXPECT_EQ(form.Publics.ChoiceIndex, 2);

    frm_DialogCritical left;
    driver.OnNextModal([&](Form&) {
        PressKey(left, Qt::Key_1);
        PressKey(left, Qt::Key_Escape);
    });
    left.Show(true);
    EXPECT_FALSE(left.Publics.Confirmed);
}

TEST_F(CriticalChoiceTest, TheHostsNameGivesTheNoticeThatFadesAndThenAsks)
{
    std::unique_ptr<Form> made = cls_Formwerk().Create("frm_DialogCritical");
    auto* flash = dynamic_cast<frm_DialogFlash*>(made.get());
    ASSERT_NE(flash, nullptr);
    ASSERT_TRUE(flash->SetPublic("Choices", QStringList{"Sichern", "Verwerfen"}));
    ASSERT_TRUE(flash->SetPublic("Title", "Ungespeichert"));
    ASSERT_TRUE(flash->SetPublic("OwnerValue", 42));

    int stateWhileFading = -1;
    driver.OnNextModal([&](Form&) { stateWhileFading = flash->WindowState(); });
    driver.OnNextModal([&](Form& shown) {
        auto& choice = dynamic_cast<frm_DialogCritical&>(shown);
        EXPECT_EQ(choice.Publics.OwnerValue, 42);
        EXPECT_EQ(choice.ctl_Title1->Caption(), "Ungespeichert");
        EXPECT_EQ(flash->Alpha(), 45);
        Click(choice.lab_Choice[1]);
        Click(*choice.but_OK);
    });
    flash->Show(true);

    EXPECT_EQ(stateWhileFading, 2);
    EXPECT_TRUE(flash->IsUnloaded());
    EXPECT_TRUE(flash->GetPublic("Confirmed").toBool());
    EXPECT_EQ(flash->GetPublic("ChoiceIndex").toInt(), 2);
    // 255 at load, then 21 steps of 10 down to 45, each applied to the whole window.
    const std::vector<std::string> fades = host->callsTo("setWindowColorKey");
    ASSERT_EQ(fades.size(), 22u);
    EXPECT_EQ(fades.front(), "setWindowColorKey(255|2|16711935)");
    EXPECT_EQ(fades[1], "setWindowColorKey(245|2|16711935)");
    EXPECT_EQ(fades.back(), "setWindowColorKey(45|2|16711935)");
}

} // namespace
