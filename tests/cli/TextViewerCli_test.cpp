// The command's options for the text viewer: its header's second line and a
// long text from a file.
#include "cli/Cli.h"
#include "controls/ctl_CmdBar.h"
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

int run(const QStringList& args, QString& out, QString& err)
{
    QTextStream outStream(&out);
    QTextStream errStream(&err);
    return fw::cli::Run(args, outStream, errStream);
}

TEST(TextViewerCli, SubtitleAndTextFileReachTheViewer)
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
    driver.OnNextModal([&](fw::Form& form) {
        seen = dynamic_cast<fw::HasContext&>(form).context();
        dynamic_cast<fw::frm_DialogText&>(form).bar_Sidebar->Press("OK");
    });
    QString out, err;
    const int code = run({"frm_DialogText", "--title", "Protokoll", "--subtitle", "Letzter Lauf",
                          "--text-file", path},
                         out, err);
    EXPECT_EQ(code, 1) << err.toStdString();
    EXPECT_EQ(out, "{\"Result\":1}\n");
    EXPECT_EQ(seen.Request.Subtitle, "Letzter Lauf");
    EXPECT_EQ(seen.Texts.Description, "Grüße 😀\nשלום\n");
}

TEST(TextViewerCli, UnreadableTextFileEndsWithOneLineAndNoWindow)
{
    QTemporaryDir dir;
    fw::testing::ModalDriver driver;
    for (const QString& path : {dir.filePath("missing.txt"), dir.path()}) {
        QString out, err;
        const int code = run({"frm_DialogText", "--text-file", path}, out, err);
        EXPECT_EQ(code, 66);
        EXPECT_EQ(out, "");
        EXPECT_TRUE(err.startsWith("formwerk: cannot read text file '" + path + "'"))
            << err.toStdString();
        EXPECT_EQ(err.count('\n'), 1);
    }
    EXPECT_TRUE(driver.Seen().empty());
}

} // namespace
