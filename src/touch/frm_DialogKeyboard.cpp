#include "touch/frm_DialogKeyboard.h"

#include "controls/ctl_Button.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/SendKeys.h"
#include "forms/StdControls.h"

#include <QWidget>

namespace fw {

namespace {

constexpr QSize kClient(11490, 5190); // twips
constexpr QSize kBodySize(750, 340);  // the keyboard's drawn body, pixels
const QRectF kInputPanel(8, 8, 733, 52);
// Classic colour 7, the light grey (8 would be the dark one): a greyed key
// stays readable, as it still works.
const QColor kGrey(0xC0, 0xC0, 0xC0);

} // namespace

frm_DialogKeyboard::frm_DialogKeyboard()
    : TouchPadForm(QStringLiteral("frm_DialogKeyboard"), kClient, kBodySize, kInputPanel)
{
    txt_Input->Move(3480, 300, 6675, 615);
    but_Quit->Move(10260, 300, 720, 615);
    but_Enter->Click = [this] { confirm(); };
    for (const KeyDesign& design : KeyboardTable()) {
        loadKey(design, design.tag == QLatin1String("ENTER") ? ToPixels(10260 - design.left) : 0);
        if (!design.faces.isEmpty())
            faceStrings[design.index] = design.faces;
    }
    // The UP key lies over the corner of the ENTER cap.
    pic_Key[54].widget()->raise();
}

frm_DialogKeyboard::~frm_DialogKeyboard() = default;

ModifierStates frm_DialogKeyboard::States() const
{
    auto at = [this](int index) {
        return index >= 0 ? keyState[static_cast<std::size_t>(index)] : 0;
    };
    return {at(shiftIndex), at(ctrlIndex), at(altIndex), at(symIndex)};
}

QString frm_DialogKeyboard::hKeyName(int index) const
{
    const KeyLabel& label = lab_Key[index];
    if (!label.Tag().isEmpty())
        return label.Tag().toUpper();
    return label.Caption();
}

void frm_DialogKeyboard::Form_Load()
{
    hideEnterButton();
    for (const auto& [i, pic] : pic_Key) {
        Resume([&, i = i, pic = pic] {
            pic->SetAutoRedraw(true);
            pic->SetScaleMode(3);
            keyName[static_cast<std::size_t>(i)] = hKeyName(i);
            const QString& name = keyName[static_cast<std::size_t>(i)];
            if (name == QLatin1String("SHIFT"))
                shiftIndex = i;
            else if (name == QLatin1String("CTRL"))
                ctrlIndex = i;
            else if (name == QLatin1String("SYM"))
                symIndex = i;
            else if (name == QLatin1String("ALT"))
                altIndex = i;
        });
    }
    placeOnLoad(true);
    Resume([&] {
        txt_Input->SetText(readTarget());
        txt_Input->SetSelStart(static_cast<int>(txt_Input->Text().size()));
    });
}

void frm_DialogKeyboard::hUpdateKeys()
{
    const ModifierStates states = States();
    for (const auto& [i, label] : lab_Key) {
        const QString& name = keyName[static_cast<std::size_t>(i)];
        QString face = QStringLiteral("_NOT_");
        if (name == QLatin1String("ESC"))
            face = states.sym != 0 ? QStringLiteral("Menü") : QStringLiteral("ESC");
        else if (name == QLatin1String("UP"))
            face = QChar(states.shift != 0 ? 0xE9 : 0xE1);
        else if (name == QLatin1String("LEFT"))
            face = QChar(states.shift != 0 ? 0xE7 : 0xDF);
        else if (name == QLatin1String("DOWN"))
            face = QChar(states.shift != 0 ? 0xEA : 0xE2);
        else if (name == QLatin1String("RIGHT"))
            face = QChar(states.shift != 0 ? 0xE8 : 0xE0);
        else if (name == QLatin1String("www."))
            face = states.shift != 0 ? QStringLiteral("http://") : QStringLiteral("www.");
        else if (auto it = faceStrings.find(i); it != faceStrings.end() && it->second.size() > 1)
            face = hKeys(it->second, states);
        if (face == QLatin1String("_NOT_"))
            continue;
        if (!face.isEmpty()) {
            label->SetCaption(face);
            label->SetForeColor(Qt::black);
        } else {
            label->SetForeColor(kGrey);
            label->SetCaption(name);
        }
    }
}

void frm_DialogKeyboard::onKeyDown(int index)
{
    const QString name = hKeyName(index);
    int modifier = -1;
    if (name == QLatin1String("SHIFT"))
        modifier = shiftIndex;
    else if (name == QLatin1String("SYM"))
        modifier = symIndex;
    else if (name == QLatin1String("CTRL"))
        modifier = ctrlIndex;
    else if (name == QLatin1String("ALT"))
        modifier = altIndex;
    if (modifier >= 0) {
        state(modifier) = hNextState(state(modifier));
        hUpdateKeys();
    }
}

void frm_DialogKeyboard::onKeyClick(int index, bool onLabel)
{
    // The rim around the label presses even after a drag, so that a drag
    // that ends off the label still types the key.
    if (onLabel && wasDragged)
        return;
    hPressKey(index);
}

void frm_DialogKeyboard::hPressKey(int index)
{
    const QString name = hKeyName(index);
    const ModifierStates states = States();
    if (name == QLatin1String("CTRL") || name == QLatin1String("SYM") ||
        name == QLatin1String("SHIFT") || name == QLatin1String("ALT"))
        return;
    static const std::map<QString, QString> quoted = {
        {QStringLiteral("+"), QStringLiteral("{+}")},
        {QStringLiteral("*"), QStringLiteral("{*}")},
        {QStringLiteral("^"), QStringLiteral("{^}")},
        {QStringLiteral("%"), QStringLiteral("{%}")},
        {QStringLiteral("{"), QStringLiteral("{{}")},
        {QStringLiteral("}"), QStringLiteral("{}}")},
        {QStringLiteral("("), QStringLiteral("{(}")},
        {QStringLiteral(")"), QStringLiteral("{)}")},
        {QStringLiteral("TAB"), QStringLiteral("{tab}")},
        {QStringLiteral("BACKSPACE"), QStringLiteral("{bs}")}};
    const bool shifted = states.shift != 0;
    static const std::map<QString, std::pair<QString, QString>> arrows = {
        {QStringLiteral("UP"), {QStringLiteral("{up}"), QStringLiteral("{pgup}")}},
        {QStringLiteral("LEFT"), {QStringLiteral("{left}"), QStringLiteral("{home}")}},
        {QStringLiteral("DOWN"), {QStringLiteral("{down}"), QStringLiteral("{pgdn}")}},
        {QStringLiteral("RIGHT"), {QStringLiteral("{right}"), QStringLiteral("{end}")}}};
    QString s;
    bool prefix = true;
    if (auto q = quoted.find(name); q != quoted.end()) {
        s = q->second;
    } else if (name == QLatin1String("CLEAR")) {
        Resume([&] { txt_Input->SetText(QString()); });
    } else if (name == QLatin1String("OK") || name == QLatin1String("ENTER")) {
        confirm();
    } else if (auto a = arrows.find(name); a != arrows.end()) {
        s = shifted ? a->second.second : a->second.first;
        prefix = false;
    } else if (name == QLatin1String("ESC")) {
        if (states.sym != 0) { // the key reads "Menü": away at once, unconfirmed
            setConfirmed(false);
            Unload();
            return;
        }
        s = QStringLiteral("{esc}");
        prefix = false;
    } else if (name.size() == 1) {
        s = keyName[static_cast<std::size_t>(index)];
    } else {
        s = name;
    }
    if (prefix) {
        if (states.shift > 0)
            s.prepend(u'+');
        if (states.ctrl > 0)
            s.prepend(u'^');
        if (states.alt > 0)
            s.prepend(u'%');
        if (states.sym > 0)
            s.prepend(QStringLiteral("^%"));
    }
    Resume([&] {
        txt_Input->SetFocus();
        SendKeys(s, txt_Input->widget());
    });
    for (int modifier : {ctrlIndex, symIndex, shiftIndex, altIndex}) {
        if (modifier >= 0 && state(modifier) == 1) {
            state(modifier) = 0;
            hPaintKey(modifier, 0);
            hUpdateKeys();
        }
    }
}

void frm_DialogKeyboard::confirm()
{
    Resume([&] { writeTarget(txt_Input->Text(), true); });
    finish(true);
}

} // namespace fw
