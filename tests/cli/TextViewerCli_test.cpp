// The command's options for the text viewer: its header's second line and a
// long text from a file.
#include "CliRun.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Title.h"
#include "core/HasContext.h"
#include "dialogs/frm_DialogText.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

using fw::testing::Ran;
using fw::testing::runInProcess;

TEST(TextViewerCli, SubtitleIconAndTextFileReachTheViewer)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("text.txt");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("\xEF\xBB\xBF"
               "Grüße 😀\nשלום\n");
    file.close();

    fw::testing::ModalDriver driver;
    fw::DialogContext seen;
    QString headerIcon;
    driver.OnNextModal([&](fw::Form& form) {
        seen = dynamic_cast<fw::HasContext&>(form).context();
        auto& viewer = dynamic_cast<fw::frm_DialogText&>(form);
        headerIcon = viewer.bar_Header->IconPath();
        viewer.bar_Sidebar->Press("OK");
    });
    const Ran ran =
        runInProcess({"frm_DialogText", "--title", "Protokoll", "--subtitle", "Letzter Lauf",
                      "--icon", "Ico\\32\\Computer\\Signs\\Info.ico", "--text-file", path});
    EXPECT_EQ(ran.code, 1) << ran.err.toStdString();
    EXPECT_EQ(ran.out, "{\"Result\":1}\n");
    EXPECT_EQ(seen.Request.Subtitle, "Letzter Lauf");
    EXPECT_EQ(seen.Texts.Description, "Grüße 😀\nשלום\n");
    EXPECT_EQ(headerIcon, "Ico\\32\\Computer\\Signs\\Info.ico");
}

TEST(TextViewerCli, UnreadableTextFileEndsWithOneLineAndNoWindow)
{
    QTemporaryDir dir;
    fw::testing::ModalDriver driver;
    for (const QString& path : {dir.filePath("missing.txt"), dir.path()}) {
        const Ran ran = runInProcess({"frm_DialogText", "--text-file", path});
        EXPECT_EQ(ran.code, 66);
        EXPECT_EQ(ran.out, "");
        EXPECT_TRUE(ran.err.startsWith("formwerk: cannot read text file '" + path + "'"))
            << ran.err.toStdString();
        EXPECT_EQ(ran.err.count('\n'), 1);
    }
    EXPECT_TRUE(driver.Seen().empty());
}

} // namespace
