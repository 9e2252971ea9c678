#include "host/CoreDev.h"
#include "host/mdl_CoreDevWrapper.h"

#include <stdexcept>

namespace fw {

namespace {

// One root object per thread: dialogs run on the user interface thread, and a
// test or a worker that installs a host of its own must not disturb the others.
thread_local std::shared_ptr<CoreDev> t_installed;
thread_local std::shared_ptr<CoreDev> t_default;

template <class Service>
Service& required(const std::shared_ptr<Service>& service, const char* name)
{
    if (!service)
        throw std::runtime_error(std::string("host has no ") + name);
    return *service;
}

} // namespace

CoreDev& CoreDev::Instance()
{
    if (t_installed)
        return *t_installed;
    // The default host is made on first touch and kept for the thread's life,
    // also while another host is installed, so that going back is cheap.
    if (!t_default)
        t_default = MakeDefaultCoreDev();
    if (!t_default)
        throw std::runtime_error("no default host");
    return *t_default;
}

std::shared_ptr<CoreDev> CoreDev::Install(std::shared_ptr<CoreDev> root)
{
    std::swap(t_installed, root);
    return root;
}

CoreDevApp& GetCoreDevApp()
{
    return required(CoreDev::Instance().CoreDevApp, "CoreDevApp");
}
CoreDevMenus& GetCoreDevMenus()
{
    return required(CoreDev::Instance().CoreDevMenus, "CoreDevMenus");
}
CoreDevText& GetCoreDevText()
{
    return required(CoreDev::Instance().CoreDevText, "CoreDevText");
}
CoreDevControls& GetCoreDevControls()
{
    return required(CoreDev::Instance().CoreDevControls, "CoreDevControls");
}
CoreDevSystem& GetCoreDevSystem()
{
    return required(CoreDev::Instance().CoreDevSystem, "CoreDevSystem");
}
CoreDevLanguage& GetCoreDevLanguage()
{
    return required(CoreDev::Instance().CoreDevLanguage, "CoreDevLanguage");
}
CoreDevMessages& GetCoreDevMessages()
{
    return required(CoreDev::Instance().CoreDevMessages, "CoreDevMessages");
}
CoreDevRegistry& GetCoreDevRegistry()
{
    return required(CoreDev::Instance().CoreDevRegistry, "CoreDevRegistry");
}
CoreDevPictures& GetCoreDevPictures()
{
    return required(CoreDev::Instance().CoreDevPictures, "CoreDevPictures");
}
CoreDevFiles& GetCoreDevFiles()
{
    return required(CoreDev::Instance().CoreDevFiles, "CoreDevFiles");
}
CoreDevColors& GetCoreDevColors()
{
    return required(CoreDev::Instance().CoreDevColors, "CoreDevColors");
}
CoreDevClock& GetCoreDevClock()
{
    return required(CoreDev::Instance().CoreDevClock, "CoreDevClock");
}

} // namespace fw
