#include "cli/Cli.h"

#include "cli/Arguments.h"
#include "cli/BoundedInput.h"
#include "cli/DialogProfiles.h"
#include "cli/DialogRuns.h"
#include "cli/DisplayReach.h"
#include "cli/EscapedBytes.h"
#include "cli/ExtractRun.h"
#include "cli/Members.h"
#include "cli/Options.h"
#include "cli/RunDeadline.h"
#include "cli/ScriptKeys.h"
#include "core/HasContext.h"
#include "core/cls_Formwerk.h"
#include "desktop/DesktopHost.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPixmap>
#include <QWidget>
#include <cstdio>
#include <exception>
#include <optional>

namespace fw::cli {

namespace {

// The result members each dialog writes besides Result; a dialog that answers
// with more than a code adds its row ("Texts.InputText"...).
const QHash<QString, QStringList>& resultMembers()
{
    static const QHash<QString, QStringList> table{
        {QStringLiteral("frm_DialogMessage"), {}},
        {QStringLiteral("frm_DialogText"), {}},
        {QStringLiteral("frm_DialogProcess"), {}},
        {QStringLiteral("frm_DialogInput"), {QStringLiteral("Texts.InputText")}},
        {QStringLiteral("frm_DialogInputMulti"), {QStringLiteral("Texts.InputText")}},
        {QStringLiteral("frm_DialogInputDbl"), {QStringLiteral("Texts.InputText")}},
        {QStringLiteral("frm_DialogPassword"), {QStringLiteral("Texts.InputText")}},
    };
    return table;
}

// The two-field input keeps its pairs packed in single texts; its user sees
// them as two: prompts from --text and --text2, answers as an array of two.
bool TakesPairs(const QString& dialog)
{
    const DialogProfile* profile = FindProfile(dialog);
    return profile && profile->takesPairs;
}

// A public variable the form does not have would otherwise fail only once
// the window is made; the table knows it before.
Outcome refuseUntakenPublics(const QString& dialog, const QVariantMap& publics)
{
    const DialogProfile* profile = FindProfile(dialog);
    for (auto it = publics.cbegin(); it != publics.cend(); ++it)
        if (profile && !profile->takes(QStringLiteral("Public.") + it.key()))
            return {ExitUsage, QStringLiteral("%1 does not take Public.%2 (formwerk %1 --help "
                                              "lists what it takes)")
                                   .arg(dialog, it.key())};
    return {};
}

void packPrompts(DialogContext& context)
{
    DialogTexts& texts = context.Texts;
    if (texts.Description2.empty())
        return;
    texts.Description = GetCoreDevText().Pairs().Pack(texts.Description, texts.Description2);
    texts.Description2.clear();
}

QJsonValue unpacked(const std::string& packed)
{
    std::string first = packed;
    std::string second;
    GetCoreDevText().Pairs().Unpack(packed, first, second);
    return QJsonArray{QString::fromStdString(first), QString::fromStdString(second)};
}

Outcome readRequest(const QString& path, QJsonObject& request)
{
    QFile file(path);
    const bool opened = path == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                   : file.open(QIODevice::ReadOnly);
    if (!opened)
        return {ExitNoInput,
                QStringLiteral("cannot read request file '%1': %2").arg(path, file.errorString())};
    QByteArray bytes;
    if (Outcome tooLarge = ReadBounded(file, QStringLiteral("request file '%1'").arg(path), bytes))
        return tooLarge;
    if (QString error = ParseRequest(bytes, request); !error.isEmpty())
        return {ExitData, error};
    return {};
}

Outcome readTextFile(const QString& path, std::string& text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {ExitNoInput,
                QStringLiteral("cannot read text file '%1': %2").arg(path, file.errorString())};
    QByteArray bytes;
    if (Outcome tooLarge = ReadBounded(file, QStringLiteral("text file '%1'").arg(path), bytes))
        return tooLarge;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3); // a byte-order mark is no part of the text
    text = QString::fromUtf8(bytes).toStdString();
    return {};
}

// The request file first, then the command line's members over it.
Outcome fillRecords(const Invocation& inv, DialogContext& context, QVariantMap& publics)
{
    if (!inv.requestFile.isEmpty()) {
        QJsonObject request;
        if (Outcome failure = readRequest(inv.requestFile, request))
            return failure;
        if (QString error = ApplyRequest(request, context, publics, TakesPairs(inv.dialog));
            !error.isEmpty())
            return {ExitData, QStringLiteral("request: ") + error};
        if (Outcome refused = refuseUntakenPublics(inv.dialog, publics))
            return refused;
    }
    for (const auto& [path, value] : inv.members) {
        const Member* member = FindMember(path);
        if (member->isPublic())
            publics.insert(member->shortName(), ToVariant(value, member->kind));
        else
            member->set(context, value);
    }
    if (!inv.textFile.isEmpty())
        return readTextFile(inv.textFile, context.Texts.Description);
    return {};
}

// The process-wide language choice lasts for one run only, so that a host
// (or a test) that runs the command in-process gets its own language back.
// Touch mode for one run: the desktop host's settings honour FORMWERK_TOUCHMODE.
class TouchScope {
  public:
    explicit TouchScope(bool on) : m_set(on && !qEnvironmentVariableIsSet("FORMWERK_TOUCHMODE"))
    {
        if (m_set)
            qputenv("FORMWERK_TOUCHMODE", "1");
    }
    ~TouchScope()
    {
        if (m_set)
            qunsetenv("FORMWERK_TOUCHMODE");
    }
    TouchScope(const TouchScope&) = delete;
    TouchScope& operator=(const TouchScope&) = delete;

  private:
    bool m_set;
};

class LanguageScope {
  public:
    explicit LanguageScope(int id) : m_set(id != 0)
    {
        if (m_set)
            desktop::SetLanguageOverride(id);
    }
    ~LanguageScope()
    {
        if (m_set)
            desktop::SetLanguageOverride(0);
    }
    LanguageScope(const LanguageScope&) = delete;
    LanguageScope& operator=(const LanguageScope&) = delete;

  private:
    bool m_set;
};

Outcome screenshot(Form& form, const QString& path)
{
    form.Show(false);
    QElapsedTimer clock;
    clock.start();
    while (form.IsLoaded() && !form.HasPainted() && clock.elapsed() < 5000)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    if (form.IsLoaded() && !form.HasPainted())
        form.window()->repaint(); // a platform that never exposes the window
    if (!form.IsLoaded() || !form.HasPainted())
        return {ExitSoftware, QStringLiteral("the dialog closed before it was painted")};
    // The first paint may move and resize controls; let that settle.
    QApplication::processEvents();
    const QImage image = form.window()->grab().toImage();
    form.Unload();
    if (image.isNull() || !image.save(path, "PNG"))
        return {ExitCantCreate, QStringLiteral("cannot write screenshot '%1'").arg(path)};
    return {};
}

// The bytes --plain prints of one answer value: texts exactly as the file
// system or the user gave them, a pair as two lines, the rest as JSON has it.
QByteArray plainBytes(const QJsonValue& value)
{
    if (value.isString())
        return EncodeEscaped(value.toString());
    if (value.isArray()) {
        QByteArrayList lines;
        for (const QJsonValue& part : value.toArray())
            lines << plainBytes(part);
        return lines.join('\n');
    }
    if (value.isObject())
        return QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
    if (value.isBool())
        return value.toBool() ? "true" : "false";
    return QByteArray::number(value.toInteger());
}

// Raw bytes go past the text stream's encoding when it writes to a device;
// a stream on a string (a host running the command in-process) gets text.
void writePlain(const QString& dialog, const QJsonObject& answer, QTextStream& out)
{
    const DialogProfile* profile = FindProfile(dialog);
    const QString member = profile ? profile->plainMember : QString();
    const QJsonValue result = answer.value(QStringLiteral("Result"));
    if (!member.isEmpty() && (result.toInt() != ResultOk || !answer.contains(member)))
        return; // a cancelled choice prints nothing, as shell scripts expect
    const QByteArray bytes = plainBytes(member.isEmpty() ? result : answer.value(member)) + '\n';
    out.flush();
    if (QIODevice* device = out.device())
        device->write(bytes);
    else
        out << DecodeEscaped(bytes);
}

Outcome runDialog(const Invocation& inv, QTextStream& out)
{
    auto context = std::make_shared<DialogContext>();
    QVariantMap publics;
    if (Outcome failure = fillRecords(inv, *context, publics))
        return failure;
    if (TakesPairs(inv.dialog))
        packPrompts(*context);
    const KeyScript script = ParseKeyScript(qEnvironmentVariable("FORMWERK_SCRIPT_KEYS"));
    if (!script.error.isEmpty())
        return {ExitUsage, script.error};
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return {ExitSoftware, QStringLiteral("a dialog needs a QApplication")};

    const DialogRun* run = FindDialogRun(inv.dialog);
    for (const auto& [option, value] : inv.extras)
        if (!run || !run->extras.contains(option))
            return {ExitUsage, QStringLiteral("--%1 does not apply to %2").arg(option, inv.dialog)};

    LanguageScope language(inv.language);
    TouchScope touch(inv.touch);
    std::unique_ptr<Form> form = MakeLibraryForm(inv.dialog);
    if (!form)
        form = cls_Formwerk().Create(inv.dialog.toStdString());
    if (!form)
        return {ExitSoftware, QStringLiteral("dialog '%1' could not be made").arg(inv.dialog)};
    if (auto* host = dynamic_cast<HasContext*>(form.get()))
        host->Context = context;
    for (auto it = publics.cbegin(); it != publics.cend(); ++it)
        if (!form->SetPublic(it.key(), it.value()))
            return {ExitUsage,
                    QStringLiteral("%1 has no public variable %2").arg(inv.dialog, it.key())};

    std::optional<RunDeadline> deadline; // not for a screenshot, which has its own bound
    Outcome shown;
    try {
        if (run && run->prepare)
            if (Outcome failure = run->prepare(*form, inv, *context))
                return failure;
        if (!inv.screenshot.isEmpty()) {
            const std::unique_ptr<Form> stand_in =
                run && run->pictured ? run->pictured(*form) : nullptr;
            return screenshot(stand_in ? *stand_in : *form, inv.screenshot);
        }
        deadline.emplace(
            TimeLimitOf(inv.timeoutMs, !script.keys.empty(), QGuiApplication::platformName()));
        KeyTyper typer(script.keys, run ? run->keysFor : QString());
        if (run && run->show) {
            typer.TypeInto(*form);
            shown = run->show(*form);
        } else {
            form->Show(true);
        }
    } catch (const std::exception& e) {
        return {ExitSoftware, QStringLiteral("dialog '%1' failed: %2")
                                  .arg(inv.dialog, QString::fromLocal8Bit(e.what()))};
    }
    QJsonObject answer = Answer(inv.dialog, *context);
    if (run && run->answer)
        run->answer(*form, *context, answer); // also where a run lets go of its helpers
    const bool timedOut = deadline && deadline->Expired();
    if (shown && !timedOut)
        return shown;
    if (timedOut)
        answer = TimedOutAnswer();
    if (!inv.plain)
        out << QJsonDocument(answer).toJson(QJsonDocument::Compact) << '\n';
    else if (!timedOut) // a dialog nobody answered has no value
        writePlain(inv.dialog, answer, out);
    out.flush();
    if (timedOut)
        return {ExitTimedOut, deadline->Notice()};
    if (run && run->exitCode)
        return {run->exitCode(answer), {}};
    return {ExitCodeOf(answer.value(QStringLiteral("Result")).toInt()), {}};
}

// The offscreen platform says on stderr what it cannot do (raise a window,
// pass on size hints); that is not news for someone reading the command's errors.
// Nor is where Qt puts its runtime folder when XDG_RUNTIME_DIR is unset (as
// for root): the command keeps nothing there.
QtMessageHandler g_nextHandler = nullptr;

void quietOffscreenNotices(QtMsgType type, const QMessageLogContext& where, const QString& text)
{
    if (type == QtWarningMsg && (text.startsWith(QLatin1String("This plugin does not support")) ||
                                 text.startsWith(QLatin1String("QStandardPaths: "))))
        return;
    g_nextHandler(type, where, text);
}

} // namespace

QString ParseRequest(const QByteArray& bytes, QJsonObject& request)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        return QStringLiteral("request: not valid JSON: %1 at offset %2")
            .arg(error.errorString())
            .arg(error.offset);
    if (!document.isObject())
        return QStringLiteral("request: the top level must be a JSON object");
    request = document.object();
    return {};
}

QJsonObject Answer(const QString& dialog, const DialogContext& context)
{
    QJsonObject answer{{QStringLiteral("Result"), static_cast<int>(context.Request.Result)}};
    for (const QString& path : resultMembers().value(dialog))
        if (const Member* member = FindMember(path))
            answer.insert(member->shortName(),
                          TakesPairs(dialog)
                              ? unpacked(member->get(context).toString().toStdString())
                              : member->get(context));
    return answer;
}

int ExitCodeOf(int result)
{
    return result & 0xff;
}

int Run(const QStringList& args, QTextStream& out, QTextStream& err)
{
    const ParseResult parsed = Parse(args);
    const Invocation& inv = parsed.invocation;
    Outcome outcome;
    if (!parsed.error.isEmpty()) {
        outcome = {ExitUsage, parsed.error};
    } else if (inv.version) {
        out << "formwerk " << FORMWERK_VERSION << '\n';
    } else if (inv.help) {
        out << (inv.dialog.isEmpty() ? HelpText() : DialogHelpText(inv.dialog));
    } else if (!inv.extract.isEmpty()) {
        outcome = RunExtract(inv);
    } else if (inv.list) {
        for (const std::string& name : cls_Formwerk::Names())
            out << QString::fromStdString(name) << '\n';
        for (const QString& name : LibraryForms())
            out << name << '\n';
    } else {
        outcome = runDialog(inv, out);
    }
    out.flush();
    if (!outcome.message.isEmpty()) {
        err << "formwerk: " << outcome.message << '\n';
        err.flush();
    }
    return outcome.code;
}

QString DisplayProblem(bool screenshot, bool scripted)
{
    if (screenshot)
        return {};
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.startsWith("offscreen") || platform.startsWith("minimal")) {
        if (scripted)
            return {};
        return QStringLiteral("the %1 platform shows no window, so nobody could answer the "
                              "dialog (use --screenshot or FORMWERK_SCRIPT_KEYS)")
            .arg(QString::fromLocal8Bit(platform));
    }
    // Only the default (X11) and Wayland platforms need a display server.
    const bool needsServer =
        platform.isEmpty() || platform.startsWith("xcb") || platform.startsWith("wayland");
    if (!needsServer || !qEnvironmentVariableIsEmpty("DISPLAY") ||
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return needsServer ? UnreachableDisplay() : QString();
    return QStringLiteral("no display to show the dialog on (set DISPLAY, or use --screenshot)");
}

int Main(int argc, char** argv)
{
    const QStringList args = DecodeArguments(argc, argv, [](const QString& line) {
        std::fputs(qPrintable(QStringLiteral("formwerk: ") + line + u'\n'), stderr);
    });
    QTextStream out(stdout);
    QTextStream err(stderr);

    const ParseResult parsed = Parse(args);
    if (!parsed.error.isEmpty() || !parsed.invocation.needsWindow())
        return Run(args, out, err);
    const bool screenshot = !parsed.invocation.screenshot.isEmpty();
    // The progress window is driven by standard input, not by a person.
    const DialogRun* run = FindDialogRun(parsed.invocation.dialog);
    const bool scripted = !qEnvironmentVariableIsEmpty("FORMWERK_SCRIPT_KEYS") ||
                          parsed.invocation.dialog == QLatin1String("frm_DialogProcess") ||
                          (run && run->unattended && run->unattended(parsed.invocation));
    if (const QString problem = DisplayProblem(screenshot, scripted); !problem.isEmpty()) {
        // A file the dialog could never show is the news, not the display.
        if (run && run->check)
            if (const Outcome failure = run->check(parsed.invocation)) {
                err << "formwerk: " << failure.message << '\n';
                return failure.code;
            }
        err << "formwerk: " << problem << '\n';
        return ExitUnavailable;
    }
    // A screenshot never flashes a window on the user's screen, and looks the
    // same with or without a display.
    if (screenshot && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    g_nextHandler = qInstallMessageHandler(quietOffscreenNotices);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("formwerk"));
    return Run(args, out, err);
}

} // namespace fw::cli
