#include "cli/DialogProfiles.h"

#include "cli/DialogRuns.h"

#include <QHash>

namespace fw::cli {

namespace {

// The members follow what each form reads when it opens; the keys are those a
// user without a mouse has (FORMWERK_SCRIPT_KEYS types the same names).
const QHash<QString, DialogProfile>& profiles()
{
    static const QHash<QString, DialogProfile> table = [] {
        const QStringList prompt{"Request.Title", "Request.IconPath", "Texts.Description"};
        const QStringList input = prompt + QStringList{"Texts.DefaultText", "Public.PasswordEntry"};
        const QString okCancel = QStringLiteral("Return answers OK (1), Escape Cancel (2).");
        const QString folderKeys = QStringLiteral(
            "The list has the focus first: Return there opens the selected folder, Tab goes on "
            "to the buttons, where Return on OK answers with the folder shown (1); Escape "
            "answers Cancel (2). It prints the folder as \"Folder\" (a share as smb://), and "
            "a place that is no plain folder also as \"Location\".");
        const QString syncKeys = QStringLiteral(
            "Escape asks whether to cancel the run; the window closes by itself when the run "
            "ends. It prints Result (1 ran to its end, 2 cancelled, 0 could not start) and the "
            "counts Done, Skipped, Errors and Conflicts; it exits 0 when all went well, 1 with "
            "errors, 2 when cancelled.");
        const QString confirmKeys = QStringLiteral(
            "Space ticks or clears the selected row (Down moves); Return asks whether to "
            "begin, where F12 (Yes) confirms (1) and Escape (No) goes back to the list; "
            "Escape there leaves the plan as it was (2). It prints the eight lists that "
            "remain.");
        const DialogProfile rows[] = {
            {"frm_DialogMessage",
             prompt + QStringList{"Texts.Description2", "Request.Flags", "Public.DialogMode"},
             "A button's underlined letter answers that button; F12 gives the default answer, "
             "Shift+F12 the second one and Escape the escape answer (Flags 4: No, 7)."},
            {"frm_DialogInput", input, okCancel, false, "InputText"},
            {"frm_DialogInputMulti", input,
             "Ctrl+Return answers OK (1), Return breaks the line, Escape answers Cancel (2).",
             false, "InputText"},
            {"frm_DialogInputDbl", prompt + QStringList{"Texts.Description2", "Texts.DefaultText"},
             "Return in the first box goes on to the second, Return there answers OK (1); "
             "Escape answers Cancel (2).",
             true, "InputText"},
            {"frm_DialogPassword", prompt + QStringList{"Texts.OldValue"},
             "Tab goes from box to box; " + okCancel, false, "InputText"},
            {"frm_DialogText", prompt + QStringList{"Request.Subtitle", "Request.Flags"},
             "Shift+Tab reaches OK and Return answers it (1); Escape does not close it."},
            {"frm_DialogProcess", prompt + QStringList{"Request.Subtitle"},
             "Escape aborts (2); the end of standard input closes it (0)."},
            {"frm_DialogCritical",
             {"Request.Title", "Texts.Description"},
             "1 to 3 choose an option and Return goes on (1); Escape leaves (2).",
             false,
             "ChoiceIndex"},
            {"frm_DialogColor", {}, okCancel, false, "ColorHex"},
            {"frm_DialogMonitor",
             {},
             "A click on a monitor picks it (1); Escape leaves (2).",
             false,
             "Monitor"},
            {"frm_DialogNumericTouch",
             {"Texts.Description", "Texts.DefaultText"},
             "Return confirms (1); the X closes it with the box unchanged (2).",
             false,
             "Value"},
            {"frm_DialogFile",
             {"Request.Title", "Request.Mode", "Request.FilterList", "Request.FilterIndex",
              "Request.OverwritePrompt", "Items.ItemList", "Items.DefaultExtension"},
             "The list has the focus first: Return there opens the selected row, Tab goes on "
             "to the name box, where Return answers OK with the typed name (or goes into the "
             "folder named) (1); Escape answers Cancel (2). It prints the chosen file as "
             "\"File\".",
             false,
             "File"},
            {"frm_DialogFolder", {"Request.Title", "Items.ItemList"}, folderKeys, false, "Folder"},
            {"frm_DialogPath", {"Request.Title", "Items.ItemList"}, folderKeys, false, "Folder"},
            {"frm_DialogNetworkBrowse",
             {},
             "Arrow keys move through the network tree and Right opens a node; Return answers "
             "OK on an entry of the kind asked for (1), Escape answers Cancel (2). It prints "
             "the entry as \"SelectedPath\": \"\\\\HOST\\share\\\" for a share, "
             "\"\\\\HOST\" for a host, \"DOMAIN:\" for a domain.",
             false,
             "SelectedPath"},
            {"frm_DialogNetworkAdd",
             {},
             "Typed text is the path (Shift+Tab reaches the letter); Return connects the letter to "
             "the path and answers OK (1), Escape answers Cancel (2). It prints \"DriveRoot\" "
             "(\"X:\\\") "
             "and \"NetworkPath\".",
             false,
             "DriveRoot"},
            {"frm_DialogFileResource",
             {"Request.Title"},
             "The list of resources has the focus first: Return answers OK with the selected "
             "resource (1), a double click too; Escape answers Cancel (2). It prints the "
             "resource path as \"Resource\".",
             false,
             "Resource"},
            {"frm_DialogXMLInspector", {}, "Return answers OK (1); Escape does not close it."},
            {"frm_DialogFileSync", {}, syncKeys},
            {"frm_InternetFTPSync", {}, syncKeys},
            {"frm_DialogFileSyncConfirm", {}, confirmKeys},
            {"frm_InternetFTPConfirm", {}, confirmKeys},
            {"frm_InternetFTPConsole",
             {},
             "No key closes it: Return sends the typed line; closing the window answers 0."},
        };
        QHash<QString, DialogProfile> byName;
        for (const DialogProfile& row : rows)
            byName.insert(row.dialog, row);
        return byName;
    }();
    return table;
}

} // namespace

const DialogProfile* FindProfile(const QString& dialog)
{
    const auto it = profiles().constFind(dialog);
    return it == profiles().cend() ? nullptr : &*it;
}

bool OptionApplies(const Option& option, const QString& dialog)
{
    const DialogProfile* profile = FindProfile(dialog);
    switch (option.setting) {
    case Setting::Member:
    case Setting::Icon: // fills Request.Icon beside IconPath; the profiles name IconPath
        return profile && profile->takes(QLatin1String(option.member));
    case Setting::Mode:
        return profile && (profile->takes(QStringLiteral("Public.DialogMode")) ||
                           profile->takes(QStringLiteral("Request.Mode")));
    case Setting::PairSecond:
        return profile && profile->takesPairs && profile->takes(QLatin1String(option.member));
    case Setting::TextFile:
        return profile && profile->takes(QStringLiteral("Texts.Description"));
    case Setting::Extra: {
        const DialogRun* run = FindDialogRun(dialog);
        return run && run->extras.contains(QLatin1String(option.name));
    }
    default:
        return true;
    }
}

QString DialogHelpText(const QString& dialog)
{
    QString text = QStringLiteral("Usage: formwerk %1 [options]\n\nOptions:\n").arg(dialog);
    for (const Option& option : Options())
        if (option.setting != Setting::List && OptionApplies(option, dialog))
            text += OptionHelpLine(option);
    if (const DialogProfile* profile = FindProfile(dialog))
        text += QStringLiteral("\nKeys: ") + WrapWords(profile->keys, 6, 79) + u'\n';
    return text;
}

} // namespace fw::cli
