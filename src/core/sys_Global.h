#pragma once
// The global object of the library: CDIALOG.Create(...) with no instance of
// the host's own.

#include "core/cls_Formwerk.h"

#include <memory>

namespace fw {

class sys_Global {
  public:
    /// The global factory of this thread, made on first touch.
    static cls_Formwerk& CDIALOG();
    static void SetCDIALOG(std::shared_ptr<cls_Formwerk> factory);
};

} // namespace fw
