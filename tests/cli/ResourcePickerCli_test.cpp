// The resource picker through the `formwerk` command: in this process
// against the scripted host's resources, and as the built program over a
// picture store folder.
#include "CliRun.h"
#include "forms/ListView.h"
#include "forms/testing/ListInput.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "resources/frm_DialogFileResource.h"
#include "testing/TestHost.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

namespace {

using fw::Form;
using namespace fw::testing;

struct CliCase {
    const char* name;
    QStringList args;
    std::function<void(Form&)> act; ///< null: no window opens
    int code;
    QString out, err;
};

TEST(ResourcePickerCli, TheChosenResourceComesBackAsJsonOrPlain)
{
    const auto pressReturn = [](Form& f) { PressKey(f, Qt::Key_Return); };
    const auto doubleClickFirst = [](Form& f) {
        fw::ListView& list = *dynamic_cast<fw::frm_DialogFileResource&>(f).lst_Files;
        DoubleClickItem(list, list.ListItems().Item(1));
    };
    // clang-format off
    const CliCase cases[] = {
        {"the start item", {"frm_DialogFileResource", "--start-item", "ico\\20\\computer\\signs\\ok.ico"},
         pressReturn, 1, "{\"Resource\":\"Ico\\\\20\\\\Computer\\\\Signs\\\\OK.ico\",\"Result\":1}\n", ""},
        {"plain, from another folder and root, filtered",
         {"frm_DialogFileResource", "--root", "Ico\\20\\", "--start-folder", "Ico\\20\\Computer\\Hardware\\",
          "--filter", "*.png;*.ico", "--title", "Symbol", "--plain"},
         [](Form& f) {
             EXPECT_EQ(f.Caption(), QStringLiteral("Symbol"));
             EXPECT_EQ(dynamic_cast<fw::frm_DialogFileResource&>(f).lst_Files->ListItems().Count(), 1);
             DoubleClickItem(*dynamic_cast<fw::frm_DialogFileResource&>(f).lst_Files,
                             dynamic_cast<fw::frm_DialogFileResource&>(f).lst_Files->ListItems().Item(1));
         },
         1, "Ico\\20\\Computer\\Hardware\\Drive.png\n", ""},
        {"a double click", {"frm_DialogFileResource"}, doubleClickFirst, 1,
         "{\"Resource\":\"Ico\\\\20\\\\Computer\\\\Signs\\\\OK.ico\",\"Result\":1}\n", ""},
        {"cancelled", {"frm_DialogFileResource"}, [](Form& f) { PressKey(f, Qt::Key_Escape); }, 2,
         "{\"Result\":2}\n", ""},
        {"cancelled, plain", {"frm_DialogFileResource", "--plain"}, [](Form& f) { PressKey(f, Qt::Key_Escape); },
         2, "", ""},
        {"another dialog takes no start item", {"frm_DialogColor", "--start-item", "x"}, nullptr, 64, "",
         "formwerk: --start-item does not apply to frm_DialogColor (formwerk frm_DialogColor --help "
         "lists what it takes)\n"},
    };
    // clang-format on
    for (const CliCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScopedTestHost host;
        host->resources = {"Ico\\20\\Computer\\Signs\\OK.ico", "Ico\\20\\Computer\\Signs\\Ding.wav",
                           "Ico\\20\\Computer\\Hardware\\Drive.png",
                           "Ico\\20\\Computer\\Hardware\\Notes.txt"};
        ModalDriver driver;
        if (c.act)
            driver.OnNextModal([&](Form& form) { c.act(form); });
        const Ran ran = runInProcess(c.args);
        EXPECT_EQ(ran.code, c.code);
        EXPECT_EQ(ran.out, c.out);
        EXPECT_EQ(ran.err, c.err);
        EXPECT_EQ(driver.Pending(), 0);
    }
}

TEST(ResourcePickerCli, TheBuiltProgramPicksFromThePictureStore)
{
    QTemporaryDir store;
    ASSERT_TRUE(QDir(store.path()).mkpath(QStringLiteral("Ico/20/Computer/Signs")));
    for (const char* name : {"OK.ico", "Abort.ico"}) {
        QFile file(store.path() + QStringLiteral("/Ico/20/Computer/Signs/") + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QProcessEnvironment env = quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("FORMWERK_PICTURES", store.path());
    env.insert("FORMWERK_SCRIPT_KEYS", "Return");
    const Ran ran = startProgram(
        {"frm_DialogFileResource", "--start-item", "Ico\\20\\Computer\\Signs\\OK.ico", "--plain"},
        env);
    EXPECT_EQ(ran.code, 1) << ran.err.toStdString();
    EXPECT_EQ(ran.out, QStringLiteral("Ico\\20\\Computer\\Signs\\OK.ico\n"));
}

} // namespace
