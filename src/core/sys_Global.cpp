#include "core/sys_Global.h"

namespace fw {

namespace {
std::shared_ptr<cls_Formwerk>& slot()
{
    // One per thread: the library is made for the user interface thread.
    thread_local std::shared_ptr<cls_Formwerk> factory;
    return factory;
}
} // namespace

cls_Formwerk& sys_Global::CDIALOG()
{
    if (!slot())
        slot() = std::make_shared<cls_Formwerk>();
    return *slot();
}

void sys_Global::SetCDIALOG(std::shared_ptr<cls_Formwerk> factory)
{
    slot() = std::move(factory);
}

} // namespace fw
