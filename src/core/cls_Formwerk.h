#pragma once
// The library's one door: a host asks for a dialog by its form name and gets
// the form object, not yet loaded. Everything else travels in DialogContext.

#include "forms/Form.h"

#include <memory>
#include <string>
#include <vector>

namespace fw {

class cls_Formwerk {
  public:
    /// The form of that name (exact, case-sensitive), not yet loaded. For an
    /// unknown name the platform's own message box says so and the result is null.
    std::unique_ptr<Form> Create(const std::string& pDlg);

    /// The names Create answers with a form, in the order of its table.
    static std::vector<std::string> Names();
    /// True once any Create has run in this process.
    static bool Used() { return s_used; }

  private:
    static inline bool s_used = false;
};

} // namespace fw
