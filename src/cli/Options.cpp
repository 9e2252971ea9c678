#include "cli/Options.h"

#include "cli/BoundedInput.h"
#include "cli/DialogProfiles.h"
#include "cli/DialogRuns.h"
#include "cli/Members.h"
#include "cli/RunDeadline.h"
#include "core/cls_Formwerk.h"

#include <QJsonArray>
#include <array>
#include <cmath>

namespace fw::cli {

namespace {

// A later dialog adds its options here, one row each; the member's kind in the
// member table decides how the argument is read.
constexpr std::array kOptions{
    Option{"title", "TEXT", Setting::Member, "Request.Title",
           "title; \"Head: second line\" gives a two-line header"},
    Option{"text", "TEXT", Setting::Member, "Texts.Description", "the message text"},
    Option{"text-file", "FILE", Setting::TextFile, nullptr,
           "the message text from a UTF-8 file (the text viewer's long text)"},
    Option{"text2", "TEXT", Setting::Member, "Texts.Description2", "a second text"},
    Option{"subtitle", "TEXT", Setting::Member, "Request.Subtitle",
           "second line of the text viewer's header"},
    Option{"flags", "N", Setting::Member, "Request.Flags",
           "button set: 0 OK, 1 OK/Cancel, 2 Abort/Retry/Ignore, 3 Yes/No/Cancel, 4 Yes/No, "
           "5 Retry/Cancel"},
    Option{"icon", "PATH", Setting::Icon, "Request.IconPath",
           "icon resource path, such as Ico\\32\\Computer\\Signs\\Question.ico"},
    Option{"mode", "N", Setting::Mode, nullptr,
           "the message dialog's DialogMode; open or save (1 or 2) for frm_DialogFile"},
    Option{"default", "TEXT", Setting::Member, "Texts.DefaultText",
           "text the input box starts with (the first box of frm_DialogInputDbl)"},
    Option{"default2", "TEXT", Setting::PairSecond, "Texts.DefaultText",
           "the second box's text of frm_DialogInputDbl"},
    Option{"password", nullptr, Setting::Member, "Public.PasswordEntry",
           "mask the input box of frm_DialogInput and frm_DialogInputMulti"},
    Option{"old", "TEXT", Setting::Member, "Texts.OldValue",
           "the current password that frm_DialogPassword checks against"},
    Option{"choice", "TEXT", Setting::Extra, nullptr,
           "an option of frm_DialogCritical; repeat for more (up to three are shown)"},
    Option{"choice-icon", "PATH", Setting::Extra, nullptr,
           "icon of frm_DialogCritical's options (repeatable; the first serves all)"},
    Option{"color", "COLOR", Setting::Extra, nullptr,
           "start colour of frm_DialogColor: #RRGGBB or the 32-bit value red + 256 green + "
           "65536 blue"},
    Option{"monitor", "N", Setting::Extra, nullptr,
           "the current monitor of frm_DialogMonitor, by its index"},
    Option{"xml", "FILE", Setting::Extra, nullptr, "the XML file frm_DialogXMLInspector shows"},
    Option{"ftp", "HOST[:PORT]", Setting::Extra, nullptr,
           "the FTP server frm_InternetFTPConsole talks to (port 21 unless given)"},
    Option{"file", "PATH", Setting::Extra, nullptr,
           "the file frm_DialogFile proposes (a path or smb://host[:port]/share/path); a "
           "folder path ending in \"/\" starts there"},
    Option{"folder", "PATH", Setting::Extra, nullptr,
           "the folder frm_DialogFolder starts in, or frm_DialogFile when --file names none "
           "(a path or smb://host[:port]/share/path)"},
    Option{"filter", "LABEL|GLOB", Setting::Extra, nullptr,
           "a row of frm_DialogFile's file type list, such as \"Texte|*.txt;*.md\" "
           "(repeatable, in order); for frm_DialogFileResource the patterns alone, such as "
           "\"*.ico;*.png\""},
    Option{"root", "PATH", Setting::Extra, nullptr,
           "the resource folder frm_DialogFileResource's tree starts from, such as Ico\\20\\ "
           "(default: the store's top level)"},
    Option{"start-folder", "PATH", Setting::Extra, nullptr,
           "the resource folder frm_DialogFileResource shows first (default "
           "Ico\\20\\Computer\\Signs\\)"},
    Option{"start-item", "PATH", Setting::Extra, nullptr,
           "the resource frm_DialogFileResource selects first, by its full path"},
    Option{"filter-index", "N", Setting::Member, "Request.FilterIndex",
           "the --filter row to start with, from 1"},
    Option{"default-ext", "EXT", Setting::Member, "Items.DefaultExtension",
           "extension a saved name without one gets"},
    Option{"overwrite-prompt", nullptr, Setting::Member, "Request.OverwritePrompt",
           "ask before a save replaces an existing file"},
    Option{"browse-mode", "N", Setting::Extra, nullptr,
           "what frm_DialogNetworkBrowse lets the user pick: 0 a share (default), 1 a host, "
           "2 a domain"},
    Option{"no-search", nullptr, Setting::Extra, nullptr, "hide frm_DialogFile's search box"},
    Option{"source", "DIR", Setting::Extra, nullptr,
           "the first folder frm_DialogFileSync synchronises (a path or a location)"},
    Option{"target", "DIR", Setting::Extra, nullptr,
           "the second folder frm_DialogFileSync synchronises (a path or a location)"},
    Option{"local", "DIR", Setting::Extra, nullptr,
           "the local folder frm_InternetFTPSync synchronises with the server"},
    Option{"remote", "URL", Setting::Extra, nullptr,
           "the server folder of frm_InternetFTPSync: ftp://[user@]host[:port][/path]"},
    Option{"password-file", "FILE", Setting::Extra, nullptr,
           "the file whose first line is the FTP password (else FORMWERK_FTP_PASSWORD; none "
           "needed for anonymous)"},
    Option{"dry-run", nullptr, Setting::Extra, nullptr,
           "plan and show the confirmation, but change nothing"},
    Option{"yes", nullptr, Setting::Extra, nullptr,
           "carry out the whole plan without the confirmation window"},
    Option{"delete-for-good", nullptr, Setting::Extra, nullptr,
           "a synchronisation deletes local files for good instead of moving them into the "
           "desktop's trash"},
    Option{"keep-both", nullptr, Setting::Extra, nullptr,
           "a file changed on both sides since the last synchronisation also gets the other "
           "side's copy beside it, named \"Name (Konflikt DATE TIME).ext\", on both sides"},
    Option{"actions", "FILE", Setting::Extra, nullptr,
           "the plan frm_DialogFileSyncConfirm and frm_InternetFTPConfirm show: a JSON object "
           "of the lists DL, DR, DTL, DTR, MKL, MMR, UP and DOWN"},
    Option{"touch", nullptr, Setting::Touch, nullptr,
           "touch mode for this run: a click in a text box brings up the on-screen keyboard"},
    Option{"language", "de|en", Setting::Language, nullptr,
           "language of the dialog's own texts (default: from the locale)"},
    Option{"request", "FILE", Setting::Request, nullptr,
           "JSON host records, \"-\" for standard input; other options override its members"},
    Option{"screenshot", "FILE", Setting::Screenshot, nullptr,
           "save a PNG of the dialog after its first paint and close it unanswered"},
    Option{"timeout", "SECONDS", Setting::Timeout, nullptr,
           "end the dialog unanswered after SECONDS (fractions allowed, 0 for no limit): it "
           "prints {\"Result\":0,\"TimedOut\":true} and exits 124"},
    Option{"plain", nullptr, Setting::Plain, nullptr,
           "print only the answer's main value (a path as raw bytes, a text, a colour, a "
           "choice) and a newline; nothing when the dialog is cancelled"},
    Option{"list", nullptr, Setting::List, nullptr, "print the dialog names and exit"},
    Option{"help", nullptr, Setting::Help, nullptr,
           "print this help and exit; after a dialog's name, what that dialog takes"},
    Option{"version", nullptr, Setting::Version, nullptr, "print the version and exit"},
    Option{"extract", "RESOURCE", Setting::Extract, nullptr,
           "followed by DEST: write one resource of the picture store (a folder or a package), "
           "such as Ico\\32\\Computer\\Files\\txt.ico, to the file or folder DEST and exit"},
};

const Option* findOption(const QString& name)
{
    for (const Option& option : kOptions)
        if (name == QLatin1String(option.name))
            return &option;
    return nullptr;
}

// One text of a pair member: the other text stays as an earlier option left it.
void setPairPart(Invocation& inv, const QString& path, int part, const QString& value)
{
    for (auto it = inv.members.rbegin(); it != inv.members.rend(); ++it) {
        if (it->first != path)
            continue;
        QJsonArray pair = it->second.isArray() ? it->second.toArray()
                                               : QJsonArray{it->second.toString(), QString()};
        pair[part] = value;
        it->second = pair;
        return;
    }
    inv.members.emplace_back(path, part == 0 ? QJsonValue(value)
                                             : QJsonValue(QJsonArray{QString(), value}));
}

// Seconds as `timeout` takes them, kept in whole milliseconds for a timer.
QString parseTimeout(const QString& value, int& timeoutMs)
{
    constexpr int kLongestSeconds = 24 * 24 * 3600; // what a timer's int milliseconds hold
    bool ok = false;
    const double seconds = value.toDouble(&ok);
    if (!ok || !(seconds >= 0 && seconds <= kLongestSeconds))
        return QStringLiteral("--timeout needs a number of seconds from 0 to %1, not '%2'")
            .arg(kLongestSeconds)
            .arg(value);
    timeoutMs = static_cast<int>(std::ceil(seconds * 1000));
    return {};
}

QString applyOption(const Option& option, const QString& value, Invocation& inv, QString& mode)
{
    const QString dashed = QStringLiteral("--") + QLatin1String(option.name);
    switch (option.setting) {
    case Setting::Member: {
        const Member* member = FindMember(QLatin1String(option.member));
        if (member->kind == Kind::TextOrPair) {
            setPairPart(inv, QLatin1String(option.member), 0, value);
            return {};
        }
        // A switch sets its Boolean member.
        const QJsonValue parsed =
            option.value ? ParseArgument(value, member->kind) : QJsonValue(true);
        if (parsed.isUndefined())
            return QStringLiteral("%1 needs %2, not '%3'")
                .arg(dashed, KindName(member->kind), value);
        inv.members.emplace_back(QLatin1String(option.member), parsed);
        return {};
    }
    case Setting::Touch:
        inv.touch = true;
        return {};
    case Setting::Mode:
        mode = value.isNull() ? QStringLiteral("") : value;
        return {};
    case Setting::Plain:
        inv.plain = true;
        return {};
    case Setting::Extra:
        inv.extras.emplace_back(QLatin1String(option.name), value);
        return {};
    case Setting::PairSecond:
        setPairPart(inv, QLatin1String(option.member), 1, value);
        return {};
    case Setting::Icon:
        inv.members.emplace_back(QLatin1String(option.member), value);
        inv.members.emplace_back(QStringLiteral("Request.Icon"), value);
        return {};
    case Setting::Language:
        if (value == QLatin1String("de"))
            inv.language = 7;
        else if (value == QLatin1String("en"))
            inv.language = 9;
        else
            return QStringLiteral("--language takes de or en, not '%1'").arg(value);
        return {};
    case Setting::Request:
        inv.requestFile = value;
        return {};
    case Setting::TextFile:
        inv.textFile = value;
        return {};
    case Setting::Screenshot:
        inv.screenshot = value;
        return {};
    case Setting::Timeout:
        return parseTimeout(value, inv.timeoutMs);
    case Setting::List:
        inv.list = true;
        return {};
    case Setting::Help:
        inv.help = true;
        return {};
    case Setting::Version:
        inv.version = true;
        return {};
    case Setting::Extract:
        if (value.isEmpty())
            return QStringLiteral("--extract needs a resource path");
        inv.extract = value;
        return {};
    }
    return {};
}

// The file chooser is asked for open or save in words; every other dialog
// with a mode takes the number of its DialogMode.
QString applyMode(const QString& value, Invocation& inv)
{
    if (inv.dialog != QLatin1String("frm_DialogFile")) {
        const QJsonValue number = ParseArgument(value, Kind::Integer);
        if (number.isUndefined())
            return QStringLiteral("--mode needs an integer, not '%1'").arg(value);
        inv.members.emplace_back(QStringLiteral("Public.DialogMode"), number);
        return {};
    }
    static const QStringList words{QStringLiteral("open"), QStringLiteral("save")};
    int mode = int(words.indexOf(value.toLower())) + 1;
    if (mode == 0 && (value == QLatin1String("1") || value == QLatin1String("2")))
        mode = value.toInt();
    if (mode == 0)
        return QStringLiteral("--mode of %1 takes open or save (1 or 2), not '%2'")
            .arg(inv.dialog, value);
    inv.members.emplace_back(QStringLiteral("Request.Mode"), mode);
    return {};
}

// A member the dialog never reads would be dropped without a word; say so instead.
QString inapplicableOption(const std::vector<const Option*>& given, const QString& dialog)
{
    for (const Option* option : given)
        if (!OptionApplies(*option, dialog))
            return QStringLiteral(
                       "--%1 does not apply to %2 (formwerk %2 --help lists what it takes)")
                .arg(QLatin1String(option->name), dialog);
    return {};
}

} // namespace

bool TakesBytes(const QString& previous, const QString& arg)
{
    for (const char* name : {"file", "folder", "source", "target", "local"}) {
        const QString dashed = QStringLiteral("--") + QLatin1String(name);
        if (previous == dashed || arg.startsWith(dashed + u'='))
            return true;
    }
    return false;
}

QStringList Invocation::extra(const QString& name) const
{
    QStringList values;
    for (const auto& [option, value] : extras)
        if (option == name)
            values << value;
    return values;
}

QString WrapWords(const QString& help, int indent, int width)
{
    QString wrapped;
    int column = indent;
    for (const QString& word : help.split(u' ', Qt::SkipEmptyParts)) {
        if (column > indent && column + 1 + word.size() > width) {
            wrapped += u'\n' + QString(indent, u' ');
            column = indent;
        } else if (column > indent) {
            wrapped += u' ';
            ++column;
        }
        wrapped += word;
        column += word.size();
    }
    return wrapped;
}

QString OptionHelpLine(const Option& option)
{
    QString head = QStringLiteral("  --") + QLatin1String(option.name);
    if (option.value)
        head += u' ' + QLatin1String(option.value);
    return head.leftJustified(22) + u' ' + WrapWords(QLatin1String(option.help), 23, 79) + u'\n';
}

std::span<const Option> Options()
{
    return kOptions;
}

ParseResult Parse(const QStringList& args)
{
    ParseResult result;
    Invocation& inv = result.invocation;
    QStringList positional;
    std::vector<const Option*> given;
    QString mode;
    bool optionsEnded = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (optionsEnded || !arg.startsWith(u'-') || arg == QLatin1String("-")) {
            positional << arg;
            continue;
        }
        if (arg == QLatin1String("--")) {
            optionsEnded = true;
            continue;
        }
        if (arg == QLatin1String("-h")) {
            inv.help = true;
            continue;
        }
        // Both "--name value" and "--name=value".
        const qsizetype eq = arg.indexOf(u'=');
        const QString name = arg.mid(2, eq < 0 ? -1 : eq - 2);
        const Option* option = arg.startsWith(QLatin1String("--")) ? findOption(name) : nullptr;
        if (!option) {
            result.error = QStringLiteral("unknown option '%1' (see formwerk --help)").arg(arg);
            return result;
        }
        QString value;
        if (option->value && eq >= 0) {
            value = arg.mid(eq + 1);
        } else if (option->value) {
            if (i + 1 >= args.size()) {
                result.error =
                    QStringLiteral("--%1 needs a value").arg(QLatin1String(option->name));
                return result;
            }
            value = args[++i];
        } else if (eq >= 0) {
            result.error = QStringLiteral("--%1 takes no value").arg(QLatin1String(option->name));
            return result;
        }
        if (QString error = applyOption(*option, value, inv, mode); !error.isEmpty()) {
            result.error = error;
            return result;
        }
        given.push_back(option);
    }
    if (!inv.extract.isEmpty() && !inv.help) {
        if (positional.size() != 1)
            result.error = QStringLiteral("--extract RESOURCE DEST: one destination, please");
        else
            inv.extractTo = positional.front();
        return result;
    }
    // "formwerk NAME --help" is about that dialog; other runs without a window need no name.
    if (!inv.needsWindow() && !(inv.help && !positional.isEmpty()))
        return result;
    if (positional.isEmpty()) {
        result.error = QStringLiteral("which dialog? (formwerk --list names them)");
        return result;
    }
    if (positional.size() > 1) {
        result.error = QStringLiteral("one dialog at a time: unexpected '%1'").arg(positional[1]);
        return result;
    }
    inv.dialog = positional.front();
    // Checked here and not left to the factory, which would put up a message box.
    bool known = LibraryForms().contains(inv.dialog);
    for (const std::string& name : cls_Formwerk::Names())
        known = known || inv.dialog == QString::fromStdString(name);
    if (!known)
        result.error =
            QStringLiteral("unknown dialog '%1' (formwerk --list names them)").arg(inv.dialog);
    else if (!inv.help)
        result.error = inapplicableOption(given, inv.dialog);
    if (result.error.isEmpty() && !mode.isNull())
        result.error = applyMode(mode, inv);
    return result;
}

QString HelpText()
{
    QString text =
        QStringLiteral("Usage: formwerk NAME [options]\n"
                       "       formwerk --list\n"
                       "       formwerk --extract RESOURCE DEST\n"
                       "Shows the dialog NAME in a window, prints the answer as one JSON object\n"
                       "such as {\"Result\":6} and exits with the result code (negative codes as\n"
                       "their low byte: -3 exits 253).\n\nOptions:\n");
    for (const Option& option : kOptions)
        text += OptionHelpLine(option);
    text += QStringLiteral(
        "\nA request file holds the host records by their member names, for example\n"
        "  {\"Request\":{\"Title\":\"Save?\",\"Flags\":4},\"Texts\":{\"Description\":\"...\"},\n"
        "   \"Public\":{\"DialogMode\":0}}\n"
        "It is read first; options on the command line then replace single members.\n"
        "\nfrm_DialogInputDbl asks for two texts: give its prompts as --text and --text2\n"
        "(or \"Description\":[\"A\",\"B\"]) and its defaults as --default and --default2\n"
        "(or \"DefaultText\":[\"A\",\"B\"]); it prints \"InputText\" as an array of two.\n"
        "\nEnvironment:\n"
        "  FORMWERK_SCRIPT_KEYS  keys typed into the dialog after its first paint,\n"
        "                        separated by spaces, e.g. \"Escape\", \"k\", \"Shift+F12\"\n");
    text += QStringLiteral("\nA request, a text file and each line of the progress window's input\n"
                           "may hold up to %1 MB; a larger one exits 65. A dialog still open at\n"
                           "its --timeout exits 124; with FORMWERK_SCRIPT_KEYS on the offscreen\n"
                           "platform the limit is %2 seconds unless --timeout gives another.\n")
                .arg(kInputLimit / (1024 * 1024))
                .arg(kScriptedLimitSeconds);
    text += QStringLiteral(
        "\nExit codes: the result code; 64 bad usage, 65 bad request data, 66 request\n"
        "or text file unreadable, 69 no display, 70 dialog failed, 73 screenshot not\n"
        "written.\n");
    return text;
}

} // namespace fw::cli
