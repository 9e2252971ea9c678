#include "touch/frm_DialogKeyboard.h"

namespace fw {

frm_DialogKeyboard::frm_DialogKeyboard() : Form(QStringLiteral("frm_DialogKeyboard")) {}

frm_DialogKeyboard::~frm_DialogKeyboard() = default;

} // namespace fw
