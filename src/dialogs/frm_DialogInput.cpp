#include "dialogs/frm_DialogInput.h"

namespace fw {

frm_DialogInput::frm_DialogInput() : SingleInputForm(QStringLiteral("frm_DialogInput"), false, true)
{
}

} // namespace fw
