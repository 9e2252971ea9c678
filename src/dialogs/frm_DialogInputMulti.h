#pragma once
// Asks for a text of several lines.

#include "dialogs/SingleInputForm.h"

namespace fw {

class frm_DialogInputMulti : public SingleInputForm {
  public:
    frm_DialogInputMulti();
};

} // namespace fw
