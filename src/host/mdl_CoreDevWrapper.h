#pragma once
// The dialogs' road to the host's services: one accessor per service of CoreDev.
// Each throws std::runtime_error if the installed host lacks that service, so
// that a handler running with errors resumed skips the step.

#include "host/CoreDev.h"

namespace fw {

CoreDevApp& GetCoreDevApp();
CoreDevMenus& GetCoreDevMenus();
CoreDevText& GetCoreDevText();
CoreDevControls& GetCoreDevControls();
CoreDevSystem& GetCoreDevSystem();
CoreDevLanguage& GetCoreDevLanguage();
CoreDevMessages& GetCoreDevMessages();
CoreDevRegistry& GetCoreDevRegistry();
CoreDevPictures& GetCoreDevPictures();
CoreDevFiles& GetCoreDevFiles();
CoreDevColors& GetCoreDevColors();
CoreDevClock& GetCoreDevClock();

/// Scoped installation of a host root object, for tests and embedding hosts:
/// installs on construction, restores the previous one on destruction.
class ScopedCoreDev {
public:
    explicit ScopedCoreDev(std::shared_ptr<CoreDev> root) : m_previous(CoreDev::Install(std::move(root))) {}
    ~ScopedCoreDev() { CoreDev::Install(std::move(m_previous)); }
    ScopedCoreDev(const ScopedCoreDev&) = delete;
    ScopedCoreDev& operator=(const ScopedCoreDev&) = delete;

private:
    std::shared_ptr<CoreDev> m_previous;
};

} // namespace fw
