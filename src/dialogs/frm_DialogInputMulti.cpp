#include "dialogs/frm_DialogInputMulti.h"

namespace fw {

frm_DialogInputMulti::frm_DialogInputMulti()
    : SingleInputForm(QStringLiteral("frm_DialogInputMulti"), true, false)
{
}

} // namespace fw
