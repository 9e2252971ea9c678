#pragma once
// The `formwerk` command: shows one dialog of the library in a window with the
// default desktop host and prints the answer as JSON.

#include "host/DialogContext.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTextStream>

namespace fw::cli {

/// Runs the command on the arguments after the program name. A dialog needs
/// a QApplication to exist; --help, --list and bad command lines do not.
/// Returns the exit code.
int Run(const QStringList& args, QTextStream& out, QTextStream& err);

/// The whole program: checks for a display, makes the QApplication, runs.
int Main(int argc, char** argv);

/// Why a dialog cannot be shown with this environment, or an empty string.
/// With a screenshot the offscreen platform stands in for a missing display;
/// without one, a window nobody sees needs scripted keys to end.
QString DisplayProblem(bool screenshot, bool scripted);

/// The request object that a --request file's bytes hold; an empty string,
/// or what is wrong with them. Apart from the file read so that it can be
/// tried on any bytes.
QString ParseRequest(const QByteArray& bytes, QJsonObject& request);

/// The answer of a dialog: Result and the result members that form writes.
QJsonObject Answer(const QString& dialog, const DialogContext& context);

/// A result code as a process exit code: negative codes as their low byte.
int ExitCodeOf(int result);

} // namespace fw::cli
