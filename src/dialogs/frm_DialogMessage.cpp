#include "dialogs/frm_DialogMessage.h"

#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Seperator.h"
#include "controls/ctl_Title.h"
#include "core/hLangText.h"
#include "forms/KeyCodes.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"

#include <QFont>
#include <QWidget>
#include <cmath>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kClientWidth = 440;
constexpr int kClientHeight = 240;
constexpr int kHolderMargin = 8;
constexpr int kLabelInset = 12;
constexpr int kButtonTop = 10;
constexpr int kButtonWidth = 112;
constexpr int kButtonHeight = 28;
constexpr int kMinTextHeight = 48; ///< a few lines, however small the screen
// Room for a window manager's title bar and borders, which are not known
// before the window first shows.
constexpr int kFrameReserve = 64;

int px(int pixels)
{
    return ToTwips(pixels);
}

QString lang(const char* german, const char* english)
{
    return qs(hLangText(german, english));
}
} // namespace

frm_DialogMessage::frm_DialogMessage() : Form(QStringLiteral("frm_DialogMessage"))
{
    buildControls();
}

frm_DialogMessage::~frm_DialogMessage() = default;

void frm_DialogMessage::buildControls()
{
    SetKeyPreview(true);
    window()->resize(kClientWidth, kClientHeight);
    SetCaption(QStringLiteral("Hinweis"));

    bar_Header = Add<ctl_Title>(QStringLiteral("bar_Header"));
    bar_Header->CloseRequest = [this](const QString&) { bar_Header_CloseRequest(); };

    ctl_Sidebar = Add<ctl_CmdBar>(QStringLiteral("ctl_Sidebar"));
    ctl_Sidebar->SetHelpVisible(false);

    const int holderTop = ToPixels(bar_Header->Height()) + kHolderMargin;
    pan_Holder = ControlArray<ctl_Pannel>(QStringLiteral("pan_Holder"), [this, holderTop](int) {
        auto* holder = Add<ctl_Pannel>(QStringLiteral("pan_Holder"));
        holder->Move(px(kHolderMargin), px(holderTop), px(kClientWidth - 2 * kHolderMargin),
                     px(96));
        return holder;
    });
    lab_Description = ControlArray<ctl_Label>(QStringLiteral("lab_Description"), [this](int i) {
        auto* label = Add<ctl_Label>(QStringLiteral("lab_Description"), pan_Holder[i].container());
        label->Move(px(kLabelInset), px(kLabelInset),
                    px(kClientWidth - 2 * kHolderMargin - 2 * kLabelInset));
        label->SetCaption(QStringLiteral("Hier kommt der <b>Text</b> hin"));
        return label;
    });
    txt_Input = ControlArray<TextBox>(QStringLiteral("txt_Input"), [this](int i) {
        auto* input = Add<TextBox>(QStringLiteral("txt_Input"), false, pan_Holder[i].container());
        input->Move(px(kLabelInset), px(56), px(kClientWidth - 2 * kHolderMargin - 2 * kLabelInset),
                    px(24));
        return input;
    });
    ctl_Seperator = ControlArray<fw::ctl_Seperator>(QStringLiteral("ctl_Seperator"), [this](int i) {
        auto* rule =
            Add<fw::ctl_Seperator>(QStringLiteral("ctl_Seperator"), pan_Holder[i].container());
        rule->Move(0, px(88), px(kClientWidth - 2 * kHolderMargin), px(1));
        return rule;
    });
    but_Sel = ControlArray<ctl_Button>(
        QStringLiteral("but_Sel"),
        [this](int i) {
            auto* button = Add<ctl_Button>(QStringLiteral("but_Sel"), ctl_Sidebar->container());
            button->Move(px(kHolderMargin + i * (kButtonWidth + 8)), px(kButtonTop),
                         px(kButtonWidth), px(kButtonHeight));
            button->SetText(QStringLiteral("&OK"));
            return button;
        },
        [this](ctl_Button& button) {
            button.Click = [this, &button] { but_Sel_Click(button.Index()); };
        });

    for (int i = 0; i <= 1; ++i) {
        pan_Holder.Load(i);
        lab_Description.Load(i);
        txt_Input.Load(i);
        ctl_Seperator.Load(i);
    }
    for (int i = 0; i <= 2; ++i)
        but_Sel.Load(i);
}

QVariant frm_DialogMessage::GetPublic(const QString& name) const
{
    if (name.compare(u"DialogMode", Qt::CaseInsensitive) == 0)
        return DialogMode;
    return Form::GetPublic(name);
}

bool frm_DialogMessage::SetPublic(const QString& name, const QVariant& value)
{
    if (name.compare(u"DialogMode", Qt::CaseInsensitive) != 0)
        return Form::SetPublic(name, value);
    DialogMode = value.toInt();
    return true;
}

void frm_DialogMessage::Form_Load()
{
    splitTitle();
    std::array<Slot, 3> rows;
    chooseButtonSet(rows);
    setUpBody(rows);
}

void frm_DialogMessage::splitTitle()
{
    const QString title = qs(context().Request.Title);
    QString line = title;
    QString second;
    for (const QString& separator : {QStringLiteral(":"), QStringLiteral(" - ")}) {
        const int at = int(title.indexOf(separator, 0, Qt::CaseInsensitive));
        if (at < 0)
            continue;
        line = title.left(at).trimmed();
        second = title.mid(at + separator.size()).trimmed();
        break;
    }
    Resume([&] { bar_Header->SetCaption(line); });
    Resume([&] { bar_Header->SetSubCaption(second); });
}

// The low bits of Flags pick the buttons by five tests that are not exclusive:
// each test that holds writes its rows over what stands, and the last wins.
void frm_DialogMessage::chooseButtonSet(std::array<Slot, 3>& rows)
{
    const std::int32_t flags = context().Request.Flags;
    const QString cancel = lang("&Abbruch", "&Cancel");
    const auto sign = [](const char* name) {
        return QStringLiteral("Ico\\20\\Computer\\Signs\\") + QLatin1String(name);
    };
    int scheme = -1; // as designed
    const auto set = [&](const char* caption, std::int32_t primary, std::int32_t secondary,
                         std::int32_t escape, int newScheme) {
        SetCaption(QString::fromUtf8(caption));
        PrimaryResult = primary;
        SecondaryResult = secondary;
        EscapeResult = escape;
        if (newScheme >= 0)
            scheme = newScheme;
    };

    rows[0] = {sign("ok.ico"), ResultOk, QStringLiteral("OK")};
    set("Hinweis", 1, 1, 1, -1);
    if ((flags & 1) > 0) {
        // The icons of this row are crossed on purpose: Cancel bears the OK picture.
        rows[0] = {sign("Ok.ico"), ResultAbort, cancel};
        rows[1] = {sign("Abort.ico"), ResultOk, QStringLiteral("&OK")};
        set("Forsetzen?", 1, 2, 2, -1);
    }
    if ((flags & 2) >= 2) {
        // "Retry" and "Ignore" carry no accelerator in English: their second
        // letters, E and G, answer instead.
        rows[0] = {sign("abort.ico"), ResultAbort, cancel};
        rows[1] = {sign("retry.ico"), ResultRetry, lang("&Erneut", "Retry")};
        rows[2] = {sign("ignore.ico"), ResultIgnore, lang("&Weiter", "Ignore")};
        set("Fehler", 4, 5, 2, 6);
    }
    if ((flags & 3) >= 3) {
        rows[0] = {sign("no.ico"), ResultNo, lang("&Nein", "&No")};
        rows[1] = {sign("abort.ico"), ResultAbort, cancel};
        rows[2] = {sign("ok.ico"), ResultYes, lang("&Ja", "&Yes")};
        set("Sind Sie sicher?", 6, 7, 2, 7);
    }
    if ((flags & 4) >= 4) {
        rows[0] = {sign("no.ico"), ResultNo, lang("&Nein", "&No")};
        rows[1] = {sign("ok.ico"), ResultYes, lang("&Ja", "&Yes")};
        set("Sind Sie sicher?", 6, 7, 7, 7);
    }
    if ((flags & 5) >= 5) {
        // F12 answers 1 here though no button has that value.
        rows[0] = {sign("abort.ico"), ResultAbort, cancel};
        rows[1] = {sign("retry.ico"), ResultRetry, lang("&Erneut", "&Retry")};
        set("Fehler", 1, 2, 2, 6);
    }
    if (scheme >= 0)
        Resume([&] { bar_Header->SetScheme(scheme); });
}

void frm_DialogMessage::setUpBody(const std::array<Slot, 3>& rows)
{
    DialogContext& ctx = context();
    const int pxX = Screen::TwipsPerPixelX();
    const int pxY = Screen::TwipsPerPixelY();

    Resume([&] { pan_Holder[1].SetVisible(false); });
    Resume([&] { txt_Input[1].SetVisible(false); });
    Resume([&] { ctl_Seperator[1].SetVisible(false); });
    Resume([&] { txt_Input[0].SetVisible(false); });
    Resume([&] { ctl_Seperator[0].SetVisible(false); });

    if (DialogMode == 0) {
        SectionVisible[0] = true;
        if (!ctx.Request.IconPath.empty())
            ctx.Request.Icon = ctx.Request.IconPath;
    } else if (DialogMode == 1) {
        SectionVisible[0] = true;
    }

    int height = 0;
    for (int i = 0; i <= 1; ++i) {
        if (!SectionVisible[i]) {
            // A section that is not used shows nothing, not even its design text.
            Resume([&] { pan_Holder[i].SetVisible(false); });
            continue;
        }
        ctl_Label& label = lab_Description[i];
        ctl_Pannel& holder = pan_Holder[i];
        const int left = label.Left();
        const int width = label.Width();
        const QString text = qs(i == 0 ? ctx.Texts.Description : ctx.Texts.Description2);
        const PictureOrText& icon = i == 0 ? ctx.Request.Icon : ctx.Request.Icon2;

        Resume([&] { label.SetAlignment(text.size() <= 250 ? 1 : 3); });
        if (text.contains(QStringLiteral("--------"))) {
            Resume([&] { label.SetAlignment(0); });
            Resume([&] { label.SetFontName(QStringLiteral("Lucida Console")); });
        }
        if (text.size() > 1000)
            Resume([&] { label.SetFontSize(7); });
        if (const auto* path = std::get_if<std::string>(&icon)) {
            Resume([&] { bar_Header->SetIconPath(qs(*path)); });
            const QString upper = qs(*path).toUpper();
            if (upper.contains(u"CRITICAL"))
                Resume([&] { bar_Header->SetScheme(6); });
            if (upper.contains(u"ABORT"))
                Resume([&] { bar_Header->SetScheme(6); });
            if (upper.contains(u"QUESTION"))
                Resume([&] { bar_Header->SetScheme(7); });
        } else if (const auto* picture = std::get_if<PicturePtr>(&icon); picture && *picture) {
            Resume([&] { bar_Header->SetPicture(ToImage(*picture)); });
        }
        Resume([&] { label.SetLeft(left); });
        if (label.Width() > width)
            Resume([&] { SetWidth(Width() - width + label.Width() + 8 * pxX); });
        // The dialog grows with its text only up to the screen's free height;
        // beyond it the text scrolls inside its section.
        const int frame = Height() - ScaleHeight();
        const int fixed = (frame > 0 ? frame : kFrameReserve * pxY) + bar_Header->Height() +
                          ctl_Sidebar->Height() + height + (5 + 16) * pxY + 2 * label.Top();
        Resume([&] {
            label.SetMaxHeight(std::max(kMinTextHeight * pxY, Screen::AvailableHeight() - fixed));
        });
        Resume([&] { label.SetCaption(text); });
        Resume([&] { holder.SetWidth(ScaleWidth() - 2 * holder.Left()); });
        Resume([&] { holder.SetHeight(2 * label.Top() + label.Height()); });
        height += holder.Height() + 5 * pxY;
    }
    height += 16 * pxY;

    for (int i = 0; i <= 2; ++i) {
        ctl_Button& button = but_Sel[i];
        const Slot& slot = rows[size_t(i)];
        if (slot.caption.isEmpty()) {
            Resume([&] { button.SetVisible(false); });
            button.SetTag(QStringLiteral("-3D:OFF"));
            continue;
        }
        Resume([&] { button.SetVisible(true); });
        button.SetTag(QString::number(slot.value));
        Resume([&] { button.SetText(slot.caption); });
        Resume([&] { button.SetIconPath(slot.icon); });
        if (button.Height() + button.Top() + 5 * pxY > height)
            height = button.Height() + button.Top() + 5 * pxY;
        if (slot.value == PrimaryResult)
            Resume([&] { button.SetDefault(true); });
    }

    if (SectionVisible[0] && !SectionVisible[1])
        Resume([&] { pan_Holder[0].SetHeight(height - 16 * pxY); });
    height += ctl_Sidebar->Height() + bar_Header->Height();
    Resume([&] { SetHeight(height + (Height() - ScaleHeight())); });
}

void frm_DialogMessage::Form_Paint()
{
    const int pxX = Screen::TwipsPerPixelX();
    Resume([&] {
        for (int i = 0; i <= 1; ++i) {
            if (!SectionVisible[i])
                continue;
            ctl_Label& label = lab_Description[i];
            ctl_Pannel& holder = pan_Holder[i];
            if (label.Left() + label.Width() <= holder.Width() - 5 * pxX)
                continue;
            const int oldLeft = Left();
            const int oldWidth = Width();
            holder.SetWidth(label.Width() + label.Left() + 5 * pxX);
            SetWidth(Width() - ScaleWidth() + 2 * holder.Left() + holder.Width());
            bar_Header->SetWidth(ScaleWidth());
            SetLeft(oldLeft - (Width() - oldWidth) / 2);
        }
    });

    Resume([&] {
        int sum = 0;
        for (int i = but_Sel.UBound(); i >= but_Sel.LBound(); --i) {
            if (!but_Sel[i].Visible())
                continue;
            if (sum > 0)
                sum += 8 * pxX;
            sum += but_Sel[i].Width();
        }
        int start = int(std::lround((ScaleWidth() - sum) / 2.0));
        for (int i = but_Sel.LBound(); i <= but_Sel.UBound(); ++i) {
            if (!but_Sel[i].Visible())
                continue;
            but_Sel[i].SetLeft(start);
            start += but_Sel[i].Width() + 8 * pxX;
        }
    });

    if (!m_painted) {
        m_painted = true;
        // The leftmost button, Cancel or No where there are several; not the default.
        Resume([&] { but_Sel[0].SetFocus(); });
    }
}

void frm_DialogMessage::answer(std::int32_t result)
{
    context().Request.Result = result;
    Unload();
}

void frm_DialogMessage::but_Sel_Click(int index)
{
    answer(LeadingNumber(but_Sel[index].Tag()));
}

void frm_DialogMessage::bar_Header_CloseRequest()
{
    if (EscapeResult != 0)
        answer(EscapeResult);
    else if (SecondaryResult != 0)
        answer(SecondaryResult);
}

void frm_DialogMessage::Form_KeyDown(int& keyCode, int shift)
{
    if (keyCode == KeyEscape && EscapeResult != 0) {
        answer(EscapeResult);
    } else if (keyCode == KeyF12) {
        if (shift == 0 && PrimaryResult != 0)
            answer(PrimaryResult);
        else if (shift != 0 && SecondaryResult != 0)
            answer(SecondaryResult);
    }
}

// The accelerator walk reads only the second character of each caption, the
// letter behind a leading "&", and ignores visibility on purpose: a hidden
// button keeps its design text "&OK" and answers O with its Tag "-3D:OFF".
void frm_DialogMessage::Form_KeyPress(int& keyAscii)
{
    const QString pressed = QString(QChar(char16_t(keyAscii))).toUpper();
    for (int i = but_Sel.LBound(); i <= but_Sel.UBound(); ++i) {
        const QString text = but_Sel[i].Text();
        if (text.size() >= 2 && text.mid(1, 1).toUpper() == pressed) {
            but_Sel_Click(i);
            return;
        }
    }
}

} // namespace fw
