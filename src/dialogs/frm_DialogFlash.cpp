#include "dialogs/frm_DialogFlash.h"

#include "dialogs/frm_DialogCritical.h"
#include "forms/StdControls.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QColor>

namespace fw {

namespace {
constexpr int kFirstAlpha = 255;
constexpr int kLastAlpha = 51; // below this the choice opens
constexpr int kStep = 10;
constexpr std::uint32_t kColourKey = 0xFF00FF;
constexpr int kFadeWholeWindow = 2;
} // namespace

frm_DialogFlash::frm_DialogFlash() : Form(QStringLiteral("frm_DialogFlash"))
{
    // A dark veil: faded, it dims whatever lies behind the choice.
    SetBackColor(Qt::black);
    SetBorderStyle(0);
    tmr_Animation = Add<Timer>(QStringLiteral("tmr_Animation"));
    tmr_Animation->SetInterval(10);
    tmr_Animation->Tick = [this] { tmr_Animation_Tick(); };
}

frm_DialogFlash::~frm_DialogFlash() = default;

void frm_DialogFlash::Form_Load()
{
    m_alpha = kFirstAlpha;
    applyAlpha();
    SetWindowState(2);
    tmr_Animation->SetEnabled(true);
}

void frm_DialogFlash::applyAlpha()
{
    GetCoreDevSystem().Windows().setWindowColorKey(*this, m_alpha, kFadeWholeWindow, kColourKey);
}

std::unique_ptr<frm_DialogCritical> frm_DialogFlash::MakeChoice() const
{
    auto choice = std::make_unique<frm_DialogCritical>();
    Publics.HandOn(choice->Publics);
    return choice;
}

void frm_DialogFlash::tmr_Animation_Tick()
{
    if (m_alpha >= kLastAlpha) {
        m_alpha -= kStep;
        applyAlpha();
        return;
    }
    tmr_Animation->SetEnabled(false);
    {
        std::unique_ptr<frm_DialogCritical> choice = MakeChoice();
        choice->Show(true);
        Publics.TakeAnswer(choice->Publics);
    }
    Unload();
}

QVariant frm_DialogFlash::GetPublic(const QString& name) const
{
    const QVariant value = Publics.Get(name);
    return value.isValid() ? value : Form::GetPublic(name);
}

bool frm_DialogFlash::SetPublic(const QString& name, const QVariant& value)
{
    return Publics.Set(name, value) || Form::SetPublic(name, value);
}

} // namespace fw
