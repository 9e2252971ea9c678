#include "touch/frm_DialogNumericTouch.h"

#include "controls/ctl_Button.h"
#include "forms/Resume.h"
#include "forms/StdControls.h"
#include "host/mdl_CoreDevWrapper.h"
#include "touch/NumberText.h"

#include <QLineEdit>

namespace fw {

namespace {

constexpr QSize kClient(3795, 5190); // twips
constexpr QSize kBodySize(245, 340); // the pad's drawn body, pixels
const QRectF kInputPanel(8, 8, 228, 104);

double parsed(const QString& text)
{
    bool ok = false;
    return CoreDev::Instance().parseNumber(text.toStdString(), ok);
}

} // namespace

frm_DialogNumericTouch::frm_DialogNumericTouch()
    : TouchPadForm(QStringLiteral("frm_DialogNumericTouch"), kClient, kBodySize, kInputPanel)
{
    lab_Description->Move(180, 480, 3735, 400);
    txt_Input->Move(180, 960, 2235, 615);
    if (auto* line = qobject_cast<QLineEdit*>(txt_Input->widget()))
        line->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    but_Quit->Move(2460, 960, 720, 615);
    but_Enter->Click = [this] { confirm(); };
    for (const KeyDesign& design : NumericPadTable())
        loadKey(design);
}

frm_DialogNumericTouch::~frm_DialogNumericTouch() = default;

// The keys keep their design scale (twips), unlike the keyboard's, and a
// failing step here ends the load.
void frm_DialogNumericTouch::Form_Load()
{
    hideEnterButton();
    placeOnLoad(false);
    firstKey = true;
    const double value = parsed(readTarget());
    QString text = DecimalText(value);
    if (text.size() >= 11)
        text = DecimalText(RoundTo(value, 4));
    txt_Input->SetText(text);
    caretToEnd();
}

void frm_DialogNumericTouch::onKeyClick(int index, bool)
{
    if (wasDragged)
        return;
    Resume([&] { hPressKey(index); });
}

void frm_DialogNumericTouch::hPressKey(int index)
{
    const KeyLabel& label = lab_Key[index];
    const QString k = (label.Tag().isEmpty() ? label.Caption() : label.Tag()).toUpper();
    QString text = txt_Input->Text();
    if (k.isEmpty()) {
    } else if (k == QLatin1String("CLEAR")) {
        txt_Input->SetText(QString());
    } else if (k == QLatin1String("BACKSPACE")) {
        if (!text.isEmpty()) {
            text.chop(1);
            if (text.endsWith(u'-') || text.endsWith(u','))
                text.chop(1); // no sign or comma left without its digits
            txt_Input->SetText(text);
        }
        caretToEnd();
    } else if (k == QLatin1String("SWAP")) {
        if (text == QLatin1String("0") || text.isEmpty())
            txt_Input->SetText(QStringLiteral("-"));
        else if (text == QLatin1String("-"))
            txt_Input->SetText(QString());
        else
            txt_Input->SetText(DecimalText(-parsed(text)));
    } else if (k == QLatin1String("OK")) {
        confirm();
    } else {
        if (firstKey)
            txt_Input->SetText(QString());
        txt_Input->SetText(txt_Input->Text() + k);
        caretToEnd();
    }
    firstKey = false;
}

void frm_DialogNumericTouch::confirm()
{
    Resume([&] { writeTarget(DecimalText(parsed(txt_Input->Text())), false); });
    finish(true);
}

void frm_DialogNumericTouch::caretToEnd()
{
    txt_Input->SetSelStart(static_cast<int>(txt_Input->Text().size()));
}

} // namespace fw
