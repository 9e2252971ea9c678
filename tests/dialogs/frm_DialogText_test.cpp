// The text viewer, driven through its command bar and header as a user would.
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Title.h"
#include "dialogs/frm_DialogText.h"
#include "forms/Clipboard.h"
#include "forms/RichTextBox.h"
#include "forms/StdControls.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/UserInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <QAbstractButton>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

const std::string kGreeting = "Grüße aus Köln – Ärger über Öl 😀 שלום עולם";

QAbstractButton* barButton(ctl_CmdBar& bar, const QString& key)
{
    return bar.container()->findChild<QAbstractButton*>(QStringLiteral("cmd_") + key);
}

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

class TextViewer : public ::testing::Test {
  protected:
    std::shared_ptr<TestHost> host = std::make_shared<TestHost>();
    ScopedCoreDev scope{host};
    ModalDriver driver;
    std::shared_ptr<DialogContext> context = std::make_shared<DialogContext>();
    QTemporaryDir dir;

    TextViewer()
    {
        context->Request.Title = "Protokoll";
        context->Request.Subtitle = "Letzter Lauf";
        context->Texts.Description = "Zeile eins\nZeile zwei";
        context->Request.Result = 99; // the host's preset
    }

    /// Shows a viewer on ctx modally and runs action in it; closes it with OK if
    /// the action left it open.
    void show(const std::shared_ptr<DialogContext>& ctx,
              const std::function<void(frm_DialogText&)>& action)
    {
        frm_DialogText viewer;
        viewer.Context = ctx;
        driver.OnNextModal([&](Form&) {
            action(viewer);
            if (!viewer.IsUnloaded())
                QTest::mouseClick(barButton(*viewer.bar_Sidebar, "OK"), Qt::LeftButton);
        });
        viewer.Show(true);
    }

    static void press(frm_DialogText& viewer, const char* key)
    {
        ASSERT_TRUE(viewer.bar_Sidebar->Press(QString::fromLatin1(key))) << key;
    }
};

TEST_F(TextViewer, OpensWithTheHostsTextsAndSignsOnAndOffTheMessageService)
{
    context->Request.Icon = std::string("Ico\\32\\Computer\\Signs\\Info.ico");
    context->Request.IconPath = "Ico\\32\\Computer\\Signs\\Critical.ico"; // not this viewer's
    const void* shown = nullptr;
    show(context, [&](frm_DialogText& form) {
        shown = &form;
        EXPECT_EQ(form.Caption(), "Protokoll");
        EXPECT_EQ(form.bar_Header->Caption(), "Protokoll");
        EXPECT_EQ(form.bar_Header->SubCaption(), "Letzter Lauf");
        EXPECT_EQ(form.bar_Header->IconPath(), "Ico\\32\\Computer\\Signs\\Info.ico");
        EXPECT_EQ(form.txt_Plain->Text(), "Zeile eins\nZeile zwei");
        EXPECT_TRUE(form.txt_Plain->Visible());
        EXPECT_FALSE(form.txt_RTF->Visible());
        EXPECT_FALSE(form.txt_HTML->Visible());
        ASSERT_EQ(host->callsTo("RegisterForm"), std::vector<std::string>{"RegisterForm()"});
        EXPECT_FALSE(host->wasCalled("UnregisterForm"));
    });
    ASSERT_EQ(host->callsTo("UnregisterForm"), std::vector<std::string>{"UnregisterForm()"});
    for (std::size_t i = 0; i < host->calls.size(); ++i)
        if (host->calls[i].find("RegisterForm(") != std::string::npos) { // and UnregisterForm
            EXPECT_EQ(host->callTargets[i], shown) << host->calls[i];
        }
}

TEST_F(TextViewer, EachWayOutWritesItsResult)
{
    struct Way {
        const char* name;
        std::function<void(frm_DialogText&)> act;
        std::int32_t result;
    };
    const Way ways[] = {
        {"OK button clicked",
         [](frm_DialogText& f) {
             QTest::mouseClick(barButton(*f.bar_Sidebar, "OK"), Qt::LeftButton);
         },
         ResultOk},
        {"header's close button",
         [](frm_DialogText& f) {
             QTest::mouseClick(f.bar_Header->widget()->findChild<QAbstractButton*>("cmd_Close"),
                               Qt::LeftButton);
         },
         ResultAbort},
        // Nothing sees the window manager's close: the host's preset stands.
        {"window closed", [](frm_DialogText& f) { CloseWindow(f); }, 99},
    };
    for (const Way& way : ways) {
        SCOPED_TRACE(way.name);
        auto ctx = std::make_shared<DialogContext>();
        ctx->Request.Result = 99;
        show(ctx, [&](frm_DialogText& f) {
            way.act(f);
            EXPECT_TRUE(f.IsUnloaded()) << "the viewer stayed open";
        });
        EXPECT_EQ(ctx->Request.Result, way.result);
    }
}

TEST_F(TextViewer, HelpAndPrintLeaveTheViewerOpen)
{
    show(context, [&](frm_DialogText& form) {
        QTest::mouseClick(barButton(*form.bar_Sidebar, "PRINT"), Qt::LeftButton);
        EXPECT_FALSE(form.IsUnloaded());
        QTest::mouseClick(barButton(*form.bar_Sidebar, "HELP"), Qt::LeftButton);
        EXPECT_FALSE(form.IsUnloaded());
    });
    const auto help = host->callsTo("ShowHelp");
    ASSERT_EQ(help.size(), 1u);
    EXPECT_EQ(help[0], "ShowHelp(In diesem Dialog wird ein längerer Hinweistext angezeigt. Sie "
                       "können den Text auf Wunsch drucken, in die Zwischenablage kopieren oder "
                       "auch speichern|Protokoll)");
    EXPECT_EQ(context->Request.Result, ResultOk);
}

TEST_F(TextViewer, CopyTakesTheFirstShownViewer)
{
    struct Row {
        const char* shown; ///< viewers made visible besides the plain one
        QString clipboard;
    };
    const Row rows[] = {
        {"", "Zeile eins\nZeile zwei"},
        {"RTF", "Fett und normal\nzweiter Absatz"},
        {"HTML", "<p>Hallo <b>Welt</b></p>"},
        {"RTF HTML", "<p>Hallo <b>Welt</b></p>"},
        {"none", ""}, // the clipboard is still cleared
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.shown);
        show(context, [&](frm_DialogText& viewer) {
            Clipboard::SetText("alt");
            viewer.txt_RTF->SetTextRTF("{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0{\\b Fett} und "
                                       "normal\\par zweiter Absatz}");
            viewer.txt_HTML->SetText("<p>Hallo <b>Welt</b></p>");
            const QString shown = QString::fromLatin1(row.shown);
            viewer.txt_RTF->SetVisible(shown.contains("RTF"));
            viewer.txt_HTML->SetVisible(shown.contains("HTML"));
            viewer.txt_Plain->SetVisible(shown != "none");
            QTest::mouseClick(barButton(*viewer.bar_Sidebar, "COPY"), Qt::LeftButton);
            EXPECT_EQ(Clipboard::GetText(), row.clipboard);
        });
    }
}

TEST_F(TextViewer, SaveAsksByTheShownViewerAndWritesTheHtmlViewersText)
{
    struct Row {
        const char* shown;
        const char* ask;
    };
    const Row rows[] = {
        {"", "AskSaveFile(*.txt|Datei speichern|Text-Dokument|*.txt|1|.txt|-1|"
             "Software\\Valdrenix\\Shared\\MRU\\TXT)"},
        {"RTF", "AskSaveFile(*.rtf|Datei speichern|RTF-Dokument|*.rtf|1|.rtf|-1|"
                "Software\\Valdrenix\\Shared\\MRU\\RTF)"},
        {"HTML", "AskSaveFile(*.htm|Datei speichern|HTML-Dokument|*.htm;*.html|1|.htm|-1|"
                 "Software\\Valdrenix\\Shared\\MRU\\HTM)"},
    };
    int n = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.shown);
        host->clearCalls();
        const QString path = dir.filePath(QStringLiteral("out%1.txt").arg(n++));
        host->queueSavePath(path.toStdString());
        show(context, [&](frm_DialogText& viewer) {
            // Whatever is shown, the content comes from the HTML viewer.
            viewer.txt_HTML->SetText(QString::fromStdString(kGreeting));
            const QString shown = QString::fromLatin1(row.shown);
            viewer.txt_RTF->SetVisible(shown.contains("RTF"));
            viewer.txt_HTML->SetVisible(shown.contains("HTML"));
            QTest::mouseClick(barButton(*viewer.bar_Sidebar, "SAVE"), Qt::LeftButton);
            EXPECT_FALSE(viewer.IsUnloaded());
        });
        EXPECT_EQ(host->callsTo("AskSaveFile"), std::vector<std::string>{row.ask});
        EXPECT_EQ(host->callsTo("WriteTextFile"),
                  std::vector<std::string>{"WriteTextFile(" + path.toStdString() + "||-1)"});
        EXPECT_EQ(fileBytes(path), QByteArray::fromStdString(kGreeting));
        EXPECT_EQ(host->callsTo("ShowInfo"),
                  std::vector<std::string>{"ShowInfo(Inhalt wurde unter '" + path.toStdString() +
                                           "' gespeichert|Protokoll)"});
        EXPECT_FALSE(host->wasCalled("ShowError"));
    }
}

TEST_F(TextViewer, FailedSaveSaysSoAndLosesNothing)
{
    // Below a regular file nothing can be written, whoever runs the test.
    QFile blocker(dir.filePath("datei"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    host->queueSavePath(dir.filePath("datei/text.txt").toStdString());
    host->queueSavePath(dir.filePath("zweiter.txt").toStdString());
    show(context, [&](frm_DialogText& form) {
        form.txt_HTML->SetText("Inhalt");
        press(form, "SAVE");
        EXPECT_FALSE(form.IsUnloaded());
        EXPECT_EQ(form.txt_Plain->Text(), "Zeile eins\nZeile zwei");
        // The user tries again elsewhere, and that works.
        press(form, "SAVE");
    });
    EXPECT_EQ(host->callsTo("ShowError"),
              std::vector<std::string>{"ShowError(Fehler beim Speichern der Datei!|Protokoll)"});
    EXPECT_EQ(fileBytes(dir.filePath("zweiter.txt")), QByteArray("Inhalt"));
    EXPECT_EQ(host->callsTo("ShowInfo").size(), 1u);
    EXPECT_EQ(context->Request.Result, ResultOk);
}

TEST_F(TextViewer, ASaveThatCannotGoOnWritesNothingAndKeepsTheViewerOpen)
{
    const struct {
        const char* name;
        bool plainShown;
        bool asked;
        bool error;
    } rows[] = {
        {"cancelled in the file dialog", true, true, false},
        {"no viewer shown", false, false, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        host->clearCalls();
        host->queueSavePath("");
        show(context, [&](frm_DialogText& viewer) {
            viewer.txt_Plain->SetVisible(row.plainShown);
            press(viewer, "SAVE");
            EXPECT_FALSE(viewer.IsUnloaded());
        });
        EXPECT_EQ(host->wasCalled("AskSaveFile"), row.asked);
        EXPECT_FALSE(host->wasCalled("WriteTextFile"));
        EXPECT_FALSE(host->wasCalled("ShowInfo"));
        EXPECT_EQ(host->callsTo("ShowError"),
                  row.error ? std::vector<std::string>{"ShowError(Fehler beim Speichern der "
                                                       "Datei!|Protokoll)"}
                            : std::vector<std::string>{});
    }
}

TEST_F(TextViewer, ViewersFollowTheWindowWithFivePixelMargins)
{
    show(context, [&](frm_DialogText& form) {
        for (const QSize size : {QSize(900, 700), QSize(400, 300)}) {
            form.window()->resize(size);
            ProcessEvents();
            const QWidget* area = form.txt_Plain->widget()->parentWidget();
            const QRect header = form.bar_Header->widget()->geometry();
            const QRect bar = form.bar_Sidebar->widget()->geometry();
            const QRect expected(5, header.height() + 5, area->width() - 10,
                                 area->height() - bar.height() - header.height() - 10);
            for (const Control* viewer : {static_cast<const Control*>(form.txt_Plain),
                                          static_cast<const Control*>(form.txt_RTF),
                                          static_cast<const Control*>(form.txt_HTML)})
                EXPECT_EQ(viewer->widget()->geometry(), expected) << viewer->Name().toStdString();
            EXPECT_EQ(form.txt_Plain->widget()->geometry().bottom() + 5, bar.top() - 1);
        }
    });
}

TEST_F(TextViewer, AnyTextSurvivesShowingCopyingAndSavingUnchanged)
{
    std::string big;
    while (big.size() < 1024 * 1024)
        big += "Zeile mit Umlauten äöü und etwas Text, damit sie lang genug wird.\n";
    struct Row {
        const char* name;
        std::string text;
    };
    const Row rows[] = {
        {"empty", ""},
        {"non-ASCII", kGreeting + "\nمرحبا بالعالم\n\t«Tab»"},
        {"one megabyte", big},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QString path = dir.filePath(QString::fromLatin1(row.name) + ".txt");
        host->queueSavePath(path.toStdString());
        auto ctx = std::make_shared<DialogContext>();
        ctx->Texts.Description = row.text;
        show(ctx, [&](frm_DialogText& viewer) {
            EXPECT_EQ(viewer.txt_Plain->Text().toStdString(), row.text);
            press(viewer, "COPY");
            EXPECT_EQ(Clipboard::GetText().toStdString(), row.text);
            viewer.txt_HTML->SetText(QString::fromStdString(row.text));
            press(viewer, "SAVE");
        });
        EXPECT_EQ(fileBytes(path).toStdString(), row.text);
    }
}

} // namespace
