#pragma once
// The one application object a fuzz target needs: the readers use Qt's text
// and JSON types, and the desktop host's services expect an application.
// Offscreen, so that a run needs no display.

#include <QGuiApplication>
#include <cstdlib>

namespace fw::fuzz {

inline void StartOffscreenApp()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static QGuiApplication app(argc, argv);
}

} // namespace fw::fuzz
