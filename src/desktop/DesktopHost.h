#pragma once
// The default host of a Linux desktop: real files, an XDG settings store, the
// installed icon theme, Qt's screens and menus. The command-line tool runs
// every dialog with it; embedding hosts may install their own CoreDev instead.

#include "host/CoreDev.h"

#include <QString>
#include <memory>

namespace fw::desktop {

class DesktopFtp;

/// Where the desktop host keeps and finds things. Empty members take the
/// defaults, so tests point them at temporary folders.
struct DesktopOptions {
    /// Folder of the settings store; default the XDG config folder + "/formwerk".
    QString storeFolder;
    /// Folder of the picture store; default $FORMWERK_PICTURES, else none.
    QString picturesFolder;
};

/// An FTP control connection to host:port for the FTP console; not yet
/// connecting (see DesktopFtp::Open).
std::shared_ptr<DesktopFtp> MakeDesktopFtp(const QString& host, quint16 port,
                                           int connectTimeoutMs = 15000);

class DesktopXml;
/// An empty XML object that reads files (see DesktopXml.h).
std::shared_ptr<DesktopXml> MakeDesktopXml();

/// A desktop root object with all thirteen services.
std::shared_ptr<CoreDev> MakeDesktopCoreDev(const DesktopOptions& options = {});

/// Forces the language id of every desktop language service of the process
/// (the CLI's --language); 0 goes back to the environment.
void SetLanguageOverride(int id);

/// The language id that the environment asks for: 7 for German, else 9.
int LanguageFromEnvironment();

} // namespace fw::desktop
