#pragma once
// The host's root object: its thirteen services and a few direct operations.
// Created on first touch (the default desktop host) unless a host installs its own.

#include "host/CoreDevServices.h"

#include <memory>
#include <string>

namespace fw {

class CoreDev {
public:
    virtual ~CoreDev() = default;

    std::shared_ptr<fw::CoreDevSettings> CoreDevSettings;
    std::shared_ptr<fw::CoreDevApp> CoreDevApp;
    std::shared_ptr<fw::CoreDevClock> CoreDevClock;
    std::shared_ptr<fw::CoreDevMenus> CoreDevMenus;
    std::shared_ptr<fw::CoreDevText> CoreDevText;
    std::shared_ptr<fw::CoreDevControls> CoreDevControls;
    std::shared_ptr<fw::CoreDevSystem> CoreDevSystem;
    std::shared_ptr<fw::CoreDevLanguage> CoreDevLanguage;
    std::shared_ptr<fw::CoreDevMessages> CoreDevMessages;
    std::shared_ptr<fw::CoreDevRegistry> CoreDevRegistry;
    std::shared_ptr<fw::CoreDevPictures> CoreDevPictures;
    std::shared_ptr<fw::CoreDevFiles> CoreDevFiles;
    std::shared_ptr<fw::CoreDevColors> CoreDevColors;

    /// Cursor position in screen pixels.
    virtual int mouseX() = 0;
    virtual int mouseY() = 0;
    /// Text to number by the host's rules; ok tells whether the text was a number.
    virtual double parseNumber(const std::string& text, bool& ok) = 0;

    /// The root object of this thread: the installed one, else the default host,
    /// made on first touch.
    static CoreDev& Instance();
    /// Installs a host's root object for this thread; null goes back to the default.
    /// Returns the one that was installed before.
    static std::shared_ptr<CoreDev> Install(std::shared_ptr<CoreDev> root);
};

/// Made by whoever supplies the default host (the desktop host in this library).
std::shared_ptr<CoreDev> MakeDefaultCoreDev();

} // namespace fw
