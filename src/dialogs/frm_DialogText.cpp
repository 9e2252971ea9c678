#include "dialogs/frm_DialogText.h"

#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Title.h"
#include "core/hLangText.h"
#include "forms/Clipboard.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "forms/RichTextBox.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QWidget>

namespace fw {

namespace {
// Design size of the client area, in pixels.
constexpr int kClientWidth = 640;
constexpr int kClientHeight = 480;
constexpr int kMargin = 5;

const char* const kSaveTitle = "Datei speichern";

struct SaveKind {
    const char* pattern;
    const char* filter;
    const char* extension;
    const char* recentKey;
};

constexpr SaveKind kSaveHtml{"*.htm", "HTML-Dokument|*.htm;*.html", ".htm",
                             "Software\\Valdrenix\\Shared\\MRU\\HTM"};
constexpr SaveKind kSaveRtf{"*.rtf", "RTF-Dokument|*.rtf", ".rtf",
                            "Software\\Valdrenix\\Shared\\MRU\\RTF"};
constexpr SaveKind kSavePlain{"*.txt", "Text-Dokument|*.txt", ".txt",
                              "Software\\Valdrenix\\Shared\\MRU\\TXT"};
} // namespace

frm_DialogText::frm_DialogText() : Form(QStringLiteral("frm_DialogText"))
{
    buildControls();
}

frm_DialogText::~frm_DialogText() = default;

void frm_DialogText::buildControls()
{
    window()->resize(kClientWidth, kClientHeight);
    window()->setMinimumSize(320, 240);
    SetCaption(QStringLiteral("Hinweis"));

    bar_Header = Add<ctl_Title>(QStringLiteral("bar_Header"));
    // The header's close button and Esc on it close the viewer as ABORT does.
    bar_Header->CloseRequest = [this](const QString&) { bar_Sidebar_Key(QStringLiteral("ABORT")); };

    bar_Sidebar = Add<ctl_CmdBar>(QStringLiteral("bar_Sidebar"));
    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");
    bar_Sidebar->AddButton(QStringLiteral("HELP"), qs(hLangText("Hilfe", "Help")),
                           signs + QStringLiteral("Help.ico"), QStringLiteral("DIALOG.HELP();"));
    bar_Sidebar->AddButton(QStringLiteral("PRINT"), QStringLiteral("Drucken"),
                           signs + QStringLiteral("Print.ico"), QStringLiteral("DIALOG.PRINT();"));
    bar_Sidebar->AddButton(QStringLiteral("SAVE"), QStringLiteral("&Speichern"),
                           signs + QStringLiteral("Save.ico"), QStringLiteral("DIALOG.SAVE();"));
    bar_Sidebar->AddButton(QStringLiteral("COPY"), QStringLiteral("&Kopieren"),
                           signs + QStringLiteral("Copy.ico"), QStringLiteral("DIALOG.COPY();"));
    bar_Sidebar->AddButton(QStringLiteral("OK"), QStringLiteral("&OK"),
                           signs + QStringLiteral("OK.ico"), QStringLiteral("DIALOG.OK();"));
    bar_Sidebar->Key = [this](const QString& key) { bar_Sidebar_Key(key); };

    txt_Plain = Add<TextBox>(QStringLiteral("txt_Plain"), true);
    txt_Plain->SetLocked(true);
    txt_RTF = Add<RichTextBox>(QStringLiteral("txt_RTF"));
    txt_HTML = Add<HtmlViewer>(QStringLiteral("txt_HTML"));
    Form_Resize();
}

void frm_DialogText::Form_Load()
{
    DialogContext& ctx = context();
    const QString title = qs(ctx.Request.Title);
    Resume([&] { SetCaption(title); });
    Resume([&] { txt_Plain->SetText(qs(ctx.Texts.Description)); });
    Resume([&] { txt_HTML->SetVisible(false); });
    Resume([&] { txt_RTF->SetVisible(false); });

    // With Flags set the bar keeps the message loop turning while a caller
    // works; the bar shows the change once told.
    Resume([&] { bar_Sidebar->SetProperty(QStringLiteral("DoEvents"), ctx.Request.Flags != 0); });
    Resume([&] { bar_Sidebar->Refresh(); });

    Resume([&] { bar_Header->SetCaption(title); });
    Resume([&] { bar_Header->SetSubCaption(qs(ctx.Request.Subtitle)); });
    // Unlike the dialogs that open alike, the header reads Icon only: IconPath
    // plays no part here.
    if (const auto* path = std::get_if<std::string>(&ctx.Request.Icon))
        Resume([&] { bar_Header->SetIconPath(qs(*path)); });
    else if (const auto* picture = std::get_if<PicturePtr>(&ctx.Request.Icon); picture && *picture)
        Resume([&] { bar_Header->SetPicture(ToImage(*picture)); });

    Resume([&] { GetCoreDevMessages().RegisterForm(*this, ""); });
}

void frm_DialogText::Form_Resize()
{
    const int marginX = kMargin * Screen::TwipsPerPixelX();
    const int marginY = kMargin * Screen::TwipsPerPixelY();
    Resume([&] {
        const int top = bar_Header->Height() + marginY;
        const int width = ScaleWidth() - 2 * marginX;
        const int height =
            ScaleHeight() - bar_Sidebar->Height() - bar_Header->Height() - 2 * marginY;
        for (Control* viewer : {static_cast<Control*>(txt_Plain), static_cast<Control*>(txt_RTF),
                                static_cast<Control*>(txt_HTML)})
            viewer->Move(marginX, top, std::max(0, width), std::max(0, height));
    });
}

void frm_DialogText::Form_Unload(bool&)
{
    Resume([&] { GetCoreDevMessages().UnregisterForm(*this, ""); });
}

void frm_DialogText::answer(std::int32_t result)
{
    context().Request.Result = result;
    Unload();
}

void frm_DialogText::bar_Sidebar_Key(const QString& key)
{
    const QString command = key.toUpper();
    if (command == u"OK") {
        answer(ResultOk);
    } else if (command == u"ABORT") {
        answer(ResultAbort);
    } else if (command == u"COPY") {
        copyText();
    } else if (command == u"SAVE") {
        saveText();
    } else if (command == u"HELP") {
        Resume([&] {
            GetCoreDevMessages().ShowHelp(
                "In diesem Dialog wird ein längerer Hinweistext angezeigt. Sie können den Text "
                "auf Wunsch drucken, in die Zwischenablage kopieren oder auch speichern",
                us(Caption()));
        });
    }
    // "PRINT" has its button and does nothing.
}

Control* frm_DialogText::shownViewer() const
{
    for (Control* viewer : {static_cast<Control*>(txt_HTML), static_cast<Control*>(txt_RTF),
                            static_cast<Control*>(txt_Plain)})
        if (viewer->Visible())
            return viewer;
    return nullptr;
}

void frm_DialogText::copyText()
{
    Resume([] { Clipboard::Clear(); });
    if (Control* viewer = shownViewer())
        Resume([&] { Clipboard::SetText(viewer->GetProperty(QStringLiteral("Text")).toString()); });
}

void frm_DialogText::saveText()
{
    Control* viewer = shownViewer();
    bool saved = false;
    std::string path;
    if (viewer) {
        const SaveKind& kind = viewer == txt_HTML  ? kSaveHtml
                               : viewer == txt_RTF ? kSaveRtf
                                                   : kSavePlain;
        Resume([&] {
            path = GetCoreDevMessages().AskSaveFile(kind.pattern, kSaveTitle, kind.filter, 1,
                                                    kind.extension, -1, kind.recentKey);
        });
        if (path.empty())
            return;
        // The content always comes from the HTML viewer, whichever viewer is
        // shown: saving from the plain viewer writes the hidden viewer's text,
        // on purpose.
        Resume(
            [&] { saved = GetCoreDevFiles().WriteTextFile(path, us(txt_HTML->Text()), "", -1); });
    }
    if (saved)
        Resume([&] {
            GetCoreDevMessages().ShowInfo("Inhalt wurde unter '" + path + "' gespeichert",
                                          us(Caption()));
        });
    else
        Resume([&] {
            GetCoreDevMessages().ShowError("Fehler beim Speichern der Datei!", us(Caption()));
        });
}

} // namespace fw
