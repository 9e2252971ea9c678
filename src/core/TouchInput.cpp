#include "core/TouchInput.h"

#include "forms/Control.h"
#include "forms/Resume.h"
#include "host/mdl_CoreDevWrapper.h"
#include "touch/frm_DialogKeyboard.h"

#include <stdexcept>

namespace fw {

bool hTouchEnabled()
{
    bool enabled = false;
    Resume([&] {
        auto& settings = CoreDev::Instance().CoreDevSettings;
        if (!settings)
            throw std::runtime_error("host without settings");
        enabled = settings->GetBool("Touchmode");
    });
    return enabled;
}

bool hTouchInput(Control& control, const QString& title)
{
    if (hTouchEnabled()) {
        bool confirmed = false;
        Resume([&] {
            auto keyboard = std::make_unique<frm_DialogKeyboard>();
            keyboard->SetTarget(&control);
            keyboard->SetDescription(title);
            keyboard->Show(true);
            confirmed = keyboard->Confirmed();
        });
        return confirmed;
    }
    if (control.TypeName() == QLatin1String("TextBox"))
        Resume([&] { GetCoreDevControls().TextBoxes().SelectAll(control); });
    return false;
}

} // namespace fw
