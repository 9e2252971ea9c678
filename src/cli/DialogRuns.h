#pragma once
// What a dialog's command-line run needs beyond its records and public
// variables: host objects made from the dialog's own options (an XML file, an
// FTP server), a way of showing it other than modally, and answer members of
// its own. One row per such dialog; every other dialog is shown modally and
// answers with its result members.

#include "cli/Options.h"
#include "host/DialogContext.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <memory>

namespace fw {
class Form;
}

namespace fw::cli {

/// How a step ends: a non-zero code ends the run, with a message for stderr
/// unless it is a dialog's answer.
struct Outcome {
    int code = ExitOk;
    QString message;
    explicit operator bool() const { return code != ExitOk; }
};

struct DialogRun {
    /// The Extra options this dialog reads; any other is a usage error.
    QStringList extras;
    /// Before the window: turns the options into host objects or public
    /// variables. A failure ends the run without a window.
    Outcome (*prepare)(Form& form, const Invocation& inv, DialogContext& context) = nullptr;
    /// Shows the form and returns once it is gone; null shows it modally. A
    /// failure (input the run cannot take) replaces the answer.
    Outcome (*show)(Form& form) = nullptr;
    /// After the window: adds the dialog's own members to the printed answer.
    void (*answer)(Form& form, const DialogContext& context, QJsonObject& answer) = nullptr;
    /// Where the form shown first only leads to the dialog (a veil that opens
    /// it): the name of the form that scripted keys go to, and the form a
    /// screenshot pictures instead.
    QString keysFor = {};
    std::unique_ptr<Form> (*pictured)(Form& form) = nullptr;
    /// Checks the options' files without a window or an application, so that
    /// a bad file is told before a missing display; null: nothing to check.
    Outcome (*check)(const Invocation& inv) = nullptr;
    /// Whether these options leave nothing for a person to answer (a run
    /// that confirms by itself), so that no visible window is needed.
    bool (*unattended)(const Invocation& inv) = nullptr;
    /// The exit code of a printed answer; null: the answer's Result.
    int (*exitCode)(const QJsonObject& answer) = nullptr;
};

/// The row of a dialog, or null for one that needs nothing beyond the records.
const DialogRun* FindDialogRun(const QString& dialog);

/// Forms that hosts cannot ask the factory for (the library opens them from
/// its own forms), which the command makes itself.
const QStringList& LibraryForms();
/// One of those forms, or null for any other name.
std::unique_ptr<Form> MakeLibraryForm(const QString& dialog);

// The rows, each in its own file.
DialogRun ProgressRun();
DialogRun MonitorRun();
DialogRun CriticalRun();
DialogRun ColorRun();
DialogRun NumericTouchRun();
DialogRun XmlInspectorRun();
DialogRun FtpConsoleRun();
DialogRun FileChooserRun();
DialogRun FolderChooserRun();
DialogRun NetworkBrowseRun();
DialogRun NetworkAddRun();
DialogRun ResourcePickerRun();
DialogRun FolderSyncRun();
DialogRun FtpSyncRun();
DialogRun SyncConfirmRun();

} // namespace fw::cli
