#pragma once
// The public variable that every dialog form with host records has: Context.
// Hosts assign it before Show; a form left alone makes an empty one on first
// touch, so it shows its defaults and the answer is lost with the form.

#include "host/DialogContext.h"

namespace fw {

class HasContext {
  public:
    virtual ~HasContext() = default;

    DialogContextPtr Context;

    DialogContext& context()
    {
        if (!Context)
            Context = std::make_shared<DialogContext>();
        return *Context;
    }
};

} // namespace fw
