#pragma once
// Asks for one line of text.

#include "dialogs/SingleInputForm.h"

namespace fw {

class frm_DialogInput : public SingleInputForm {
  public:
    frm_DialogInput();
};

} // namespace fw
