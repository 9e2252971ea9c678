// formwerk frm_DialogXMLInspector --xml FILE: the file is checked before any
// window; a good one is shown and answered with OK.
#include "CliRun.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"

#include <QImage>

namespace {

using namespace fw::testing;

class XmlInspectorCli : public CliFilesTest {
  protected:
    ModalDriver driver;
};

TEST_F(XmlInspectorCli, ReturnAnswersOkAndAScreenshotShowsTheTree)
{
    const QString xml = writeFile("a.xml", "<liste><eintrag n='1'/></liste>");
    driver.OnNextModal([](fw::Form& form) { PressKey(form, Qt::Key_Return); });
    Ran ran = runInProcess({"frm_DialogXMLInspector", "--xml", xml});
    EXPECT_EQ(ran.code, 1) << ran.err.toStdString();
    EXPECT_EQ(ran.out, "{\"Result\":1}\n");

    const QString png = dir.filePath("x.png");
    ran = runInProcess({"frm_DialogXMLInspector", "--xml", xml, "--screenshot", png});
    EXPECT_EQ(ran.code, 0) << ran.err.toStdString();
    EXPECT_GT(QImage(png).width(), 300);
    EXPECT_EQ(driver.Seen().size(), 1u) << "a screenshot runs no dialog";
}

TEST_F(XmlInspectorCli, BadFilesEndTheRunBeforeAnyWindow)
{
    const QString broken = writeFile("kaputt.xml", "<a>\n  <b>\n</a>\n");
    const QString missing = dir.filePath("fehlt.xml");
    struct Case {
        QStringList args;
        int code;
        QString errStart;
    };
    const std::vector<Case> cases{
        {{"--xml", broken}, 65, "formwerk: " + broken + ":3:3: mismatched tag\n"},
        {{"--xml", missing}, 66, "formwerk: cannot read XML file '" + missing + "'"},
        {{}, 64, "formwerk: frm_DialogXMLInspector needs --xml FILE"},
    };
    for (const Case& c : cases) {
        const Ran ran = runInProcess(QStringList{"frm_DialogXMLInspector"} + c.args);
        EXPECT_EQ(ran.code, c.code) << ran.err.toStdString();
        EXPECT_TRUE(ran.err.startsWith(c.errStart)) << ran.err.toStdString();
        EXPECT_EQ(ran.err.count('\n'), 1);
        EXPECT_EQ(ran.out, "");
    }
    EXPECT_TRUE(driver.Seen().empty());

    // With no display at all the broken file is still what the user is told of.
    const Ran headless =
        startProgram({"frm_DialogXMLInspector", "--xml", broken}, quietEnvironment());
    EXPECT_EQ(headless.code, 65) << headless.err.toStdString();
    EXPECT_TRUE(headless.err.startsWith("formwerk: " + broken + ":3:3:"));
}

} // namespace
