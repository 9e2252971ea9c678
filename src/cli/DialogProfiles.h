#pragma once
// Which record members and public variables each dialog reads, and which keys
// answer it. One table serves the refusal of options and request members a
// dialog would silently ignore, `formwerk NAME --help`, and the README's table.

#include "cli/Options.h"

#include <QString>
#include <QStringList>

namespace fw::cli {

struct DialogProfile {
    QString dialog;
    /// Member paths the dialog reads ("Request.Title", "Public.DialogMode").
    QStringList members;
    /// The keys that close it and what they answer, as one sentence.
    QString keys;
    /// Whether its texts come in pairs (two prompts, two defaults).
    bool takesPairs = false;
    /// The answer member that --plain prints, only when the dialog was
    /// answered with OK; empty: the result code, whatever it is.
    QString plainMember = {};

    bool takes(const QString& path) const { return members.contains(path); }
};

/// The profile of a known dialog, or null.
const DialogProfile* FindProfile(const QString& dialog);

/// Whether the option is one the dialog reads. Options that do not fill a
/// member of the records (--language, --request...) apply to every dialog.
bool OptionApplies(const Option& option, const QString& dialog);

/// The text of `formwerk NAME --help`.
QString DialogHelpText(const QString& dialog);

} // namespace fw::cli
