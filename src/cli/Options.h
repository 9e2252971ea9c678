#pragma once
// The command line of `formwerk`: a table of options and the parse of an
// argument list into an Invocation. Parsing touches no window and no file, so
// it can run before the application object exists.

#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <span>
#include <utility>
#include <vector>

namespace fw::cli {

/// Exit codes of the tool besides a dialog's answer (the BSD sysexits values).
enum Exit : int {
    ExitOk = 0,
    ExitUsage = 64,       ///< bad command line
    ExitData = 65,        ///< malformed request
    ExitNoInput = 66,     ///< request file unreadable
    ExitUnavailable = 69, ///< no display to show a dialog on
    ExitSoftware = 70,    ///< the dialog could not be made or painted
    ExitCantCreate = 73,  ///< screenshot could not be written
};

/// What an option does besides filling a record member.
/// Mode is read once the dialog is known: the message dialog's DialogMode
/// number, or the file chooser's open or save.
/// PairSecond fills the second text of a TextOrPair member; the member's own
/// option fills the first. Icon fills the icon path and the icon as text,
/// since forms differ in which of the two they read. Extra keeps the value
/// for the dialog's own run (a file to load, a server to reach); a repeated
/// Extra keeps every value.
enum class Setting {
    Touch,
    Mode,
    Plain,
    Member,
    Extra,
    PairSecond,
    Icon,
    Language,
    Request,
    TextFile,
    Screenshot,
    Timeout,
    List,
    Help,
    Version,
    Extract
};

struct Option {
    const char* name;  ///< long name without the leading "--"
    const char* value; ///< placeholder of its argument; null for a switch
    Setting setting;
    const char* member; ///< record member or public variable filled (Setting::Member)
    const char* help;
};

/// Every option, in the order --help lists them.
std::span<const Option> Options();

/// A parsed command line.
struct Invocation {
    QString dialog;
    /// Members named on the command line, in order; they win over --request.
    std::vector<std::pair<QString, QJsonValue>> members;
    int language = 0;    ///< 0: the environment's, else 7 German or 9 English
    bool touch = false;  ///< touch mode ("Touchmode") on for this run
    bool plain = false;  ///< print the answer's main value alone, as raw bytes
    QString requestFile; ///< "-" for standard input
    QString textFile;    ///< UTF-8 file whose content becomes Texts.Description
    QString screenshot;
    int timeoutMs = -1; ///< --timeout in milliseconds; -1 not given, 0 no limit
    bool list = false;
    bool help = false;
    bool version = false;
    /// --extract RESOURCE DEST: the resource and where it goes.
    QString extract;
    QString extractTo;
    /// Values of Setting::Extra options by option name, in command-line order.
    std::vector<std::pair<QString, QString>> extras;

    /// Every value given for an Extra option, in order.
    QStringList extra(const QString& name) const;
    bool hasExtra(const QString& name) const { return !extra(name).isEmpty(); }

    /// Whether this run opens a window (and so needs a display or --screenshot).
    bool needsWindow() const { return !help && !list && !version && extract.isEmpty(); }
};

struct ParseResult {
    Invocation invocation;
    QString error; ///< empty on success; one line without the "formwerk: " prefix
};

/// Whether arg is the value of an option that names a file by its bytes
/// (--file PATH, --folder=PATH), given the argument before it.
bool TakesBytes(const QString& previous, const QString& arg);

/// Parses the arguments after the program name.
ParseResult Parse(const QStringList& args);

/// The text of --help.
QString HelpText();

/// One option's line of a help text, its description wrapped at 79 columns.
QString OptionHelpLine(const Option& option);

/// Words on lines up to width columns, the later lines indented by indent.
QString WrapWords(const QString& text, int indent, int width);

} // namespace fw::cli
