// The desktop host's save question: the library's file chooser in save mode,
// answered by typing a name as a user would.
#include "desktop/DesktopHost.h"
#include "desktop/LocationPaths.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using fw::Form;

const std::string kKey = "Software\\Valdrenix\\Shared\\MRU\\TXT";

struct Seen {
    QString name;        ///< what the name box held
    QStringList filters; ///< the file type list's rows
    int filter = -1;     ///< its selected row
};

Seen seenIn(Form& chooser)
{
    Seen seen;
    if (auto* box = dynamic_cast<fw::TextBox*>(chooser.FindControl("txt_Filename")))
        seen.name = box->Text();
    if (auto* types = dynamic_cast<fw::ComboBox*>(chooser.FindControl("lst_Filter"))) {
        for (int i = 0; i < types->ListCount(); ++i)
            seen.filters << types->List(i);
        seen.filter = types->ListIndex();
    }
    return seen;
}

class DesktopSaveFile : public ::testing::Test {
  protected:
    QTemporaryDir store;
    QTemporaryDir target;
    fw::ScopedCoreDev scope{fw::desktop::MakeDesktopCoreDev({store.path(), {}})};
    fw::testing::ModalDriver driver;

    std::string ask(int index, int flag = 0)
    {
        return fw::GetCoreDevMessages().AskSaveFile(
            "*.txt", "Bericht sichern", "Text-Dokument|*.txt|HTML-Dokument|*.htm;*.html", index,
            ".txt", flag, kKey);
    }
    std::string lastFolder()
    {
        return fw::GetCoreDevRegistry().Strings().ReadString(fw::HiveCurrentUser,
                                                             kKey + "\\LastFolder", "-", 1000);
    }
    std::string location(const QString& name)
    {
        return fw::desktop::PosixToLocation(QDir(target.path()).filePath(name).toStdString());
    }
};

TEST_F(DesktopSaveFile, TheChooserAsksInTheLastFolderAndAnswersTheTypedLocation)
{
    fw::GetCoreDevRegistry().Writer().WriteString(fw::HiveCurrentUser, kKey + "\\LastFolder",
                                                  target.path().toStdString());
    QFile(QDir(target.path()).filePath("alt.txt")).open(QIODevice::WriteOnly);
    const struct Row {
        const char* name;
        int index;
        int flag;
        const char* typed;
        bool declineOverwrite;
        const char* answer; ///< in the target folder; empty: cancelled
        int selected;
    } rows[] = {
        {"the default extension is added", 1, 0, "bericht", false, "bericht.txt", 0},
        {"an own extension stays; index 2 picks the second pair", 2, 0, "seite.html", false,
         "seite.html", 1},
        {"index beyond the list picks the first", 7, 0, "x.txt", false, "x.txt", 0},
        {"without the flag an existing file is taken at once", 1, 0, "alt.txt", false, "alt.txt",
         0},
        {"with it, No keeps the chooser open and Escape then cancels", 1, -1, "alt.txt", true, "",
         0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Seen seen;
        driver.OnNextModal([&](Form& chooser) {
            seen = seenIn(chooser);
            if (fw::Control* box = chooser.FindControl("txt_Filename"))
                fw::testing::Focus(*box);
            fw::testing::Type(chooser, QString::fromUtf8(row.typed));
            fw::testing::PressKey(chooser, Qt::Key_Return);
            if (row.declineOverwrite)
                fw::testing::PressKey(chooser, Qt::Key_Escape);
        });
        if (row.declineOverwrite)
            driver.OnNextModal([](Form& question) { fw::testing::PressKey(question, Qt::Key_N); });
        const std::string answer = ask(row.index, row.flag);
        EXPECT_EQ(answer, *row.answer ? location(row.answer) : "");
        EXPECT_EQ(seen.filters, QStringList({"Text-Dokument", "HTML-Dokument"}));
        EXPECT_EQ(seen.filter, row.selected);
        EXPECT_EQ(seen.name, "") << "the pattern gives way to the folder";
        EXPECT_EQ(driver.Pending(), 0);
    }
    EXPECT_EQ(lastFolder(), QDir(target.path()).absolutePath().toStdString());
}

TEST_F(DesktopSaveFile, CancelGivesNothingAndRemembersNothing)
{
    driver.OnNextModal([](Form& chooser) { fw::testing::PressKey(chooser, Qt::Key_Escape); });
    EXPECT_EQ(ask(1), "");
    EXPECT_EQ(lastFolder(), "-");
}

} // namespace
