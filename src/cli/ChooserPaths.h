#pragma once
// The command line's side of the choosers' places: what a user names on the
// command line (a Linux path, relative or absolute, or an smb:// URL) as a
// location, and a chosen location back as a Linux path or smb:// URL.

#include <QJsonObject>
#include <QString>
#include <string>

namespace fw::cli {

/// A command-line path (escaped bytes) as a location; folder adds the
/// trailing separator a folder location has. Empty stays empty.
std::string ArgumentToLocation(const std::string& argument, bool folder);

/// A chosen location as the shell knows it: a Linux path, "smb://host/share/.."
/// for a UNC location, the desktop's folder for "DESKTOP:\", "smb://host/" for
/// a host of the network; empty for a place with no folder (the drive list).
QString LocationToArgument(const std::string& location);

/// Adds member (the shell's form, when there is one) and, for anything but a
/// path on a drive, "Location" (as the dialog handed it back) to an answer.
void AnswerLocation(const std::string& location, const QString& member, QJsonObject& answer);

} // namespace fw::cli
