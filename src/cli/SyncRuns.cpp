#include "cli/BoundedInput.h"
#include "cli/ChooserPaths.h"
#include "cli/DialogRuns.h"
#include "cli/EscapedBytes.h"
#include "desktop/DesktopFtpSync.h"
#include "host/DialogContext.h"
#include "sync/SyncConfirmForm.h"
#include "sync/SyncProgressForm.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

namespace fw::cli {

namespace {

// The plan that --actions hands a confirmation form: it must outlive the
// form's run, which holds only a pointer to it.
SyncActions& confirmedPlan()
{
    static SyncActions plan;
    return plan;
}

// A location ("C:\Daten", "\\host\share") goes to the engine as it is; any
// other text is a Linux path, relative to the working folder.
std::string placeOf(const QString& argument)
{
    static const QRegularExpression location(QStringLiteral("^([A-Za-z]:|\\\\\\\\)"));
    if (location.match(argument).hasMatch())
        return argument.toStdString();
    return ArgumentToLocation(EncodeEscaped(argument).toStdString(), true);
}

Outcome needOne(const Invocation& inv, const QString& option, QString& value)
{
    const QStringList given = inv.extra(option);
    if (given.isEmpty() || given.last().isEmpty())
        return {ExitUsage, QStringLiteral("%1 needs --%2").arg(inv.dialog, option)};
    value = given.last();
    return {};
}

// The options both runs read beside their places.
const QStringList& jobOptions()
{
    static const QStringList options{QStringLiteral("dry-run"), QStringLiteral("yes"),
                                     QStringLiteral("delete-for-good"),
                                     QStringLiteral("keep-both")};
    return options;
}

void takeJobOptions(const Invocation& inv, SyncProgressForm& form)
{
    form.Job.DryRun = inv.hasExtra(QStringLiteral("dry-run"));
    form.Job.ConfirmAll = inv.hasExtra(QStringLiteral("yes"));
    form.Job.DeleteForGood = inv.hasExtra(QStringLiteral("delete-for-good"));
    form.Job.KeepBothOnConflict = inv.hasExtra(QStringLiteral("keep-both"));
    // A picture is taken at the end of a run that nobody answers: it plans
    // and lists, but neither asks nor changes anything.
    if (!inv.screenshot.isEmpty()) {
        form.Job.DryRun = true;
        form.Job.ConfirmAll = true;
    }
}

Outcome prepareFolders(Form& form, const Invocation& inv, DialogContext&)
{
    auto& sync = dynamic_cast<frm_DialogFileSync&>(form);
    QString source, target;
    if (Outcome missing = needOne(inv, QStringLiteral("source"), source))
        return missing;
    if (Outcome missing = needOne(inv, QStringLiteral("target"), target))
        return missing;
    sync.Path1 = placeOf(source);
    sync.Path2 = placeOf(target);
    takeJobOptions(inv, sync);
    return {};
}

// The password never stands on the command line, where every user of the
// machine could read it: it comes from a file or from the environment.
Outcome readPassword(const Invocation& inv, desktop::FtpAccount& account)
{
    const QStringList file = inv.extra(QStringLiteral("password-file"));
    if (!file.isEmpty()) {
        QFile input(file.last());
        if (!input.open(QIODevice::ReadOnly))
            return {ExitNoInput, QStringLiteral("cannot read password file '%1': %2")
                                     .arg(file.last(), input.errorString())};
        QByteArray bytes;
        if (Outcome tooLarge =
                ReadBounded(input, QStringLiteral("password file '%1'").arg(file.last()), bytes))
            return tooLarge;
        const qsizetype lineEnd = bytes.indexOf('\n');
        if (lineEnd >= 0)
            bytes.truncate(lineEnd);
        if (bytes.endsWith('\r'))
            bytes.chop(1);
        account.password = bytes.toStdString();
    } else if (qEnvironmentVariableIsSet("FORMWERK_FTP_PASSWORD")) {
        account.password = qgetenv("FORMWERK_FTP_PASSWORD").toStdString();
    }
    if (account.password.empty() && account.user != "anonymous")
        return {ExitUsage, QStringLiteral("%1 needs the password of '%2' in --password-file FILE "
                                          "or FORMWERK_FTP_PASSWORD")
                               .arg(inv.dialog, QString::fromStdString(account.user))};
    return {};
}

Outcome prepareFtp(Form& form, const Invocation& inv, DialogContext&)
{
    auto& sync = dynamic_cast<frm_InternetFTPSync&>(form);
    QString local, remote;
    if (Outcome missing = needOne(inv, QStringLiteral("local"), local))
        return missing;
    if (Outcome missing = needOne(inv, QStringLiteral("remote"), remote))
        return missing;
    std::string error;
    std::optional<desktop::FtpAccount> account = desktop::ParseFtpUrl(remote.toStdString(), error);
    if (!account)
        return {ExitUsage, QStringLiteral("--remote takes ftp://[user@]host[:port][/path]: %1")
                               .arg(QString::fromStdString(error))};
    if (Outcome noPassword = readPassword(inv, *account))
        return noPassword;
    sync.Path1 = placeOf(local);
    sync.Path2.clear(); // the account's own folder
    sync.Ftp = desktop::MakeFtpSync(std::move(*account));
    takeJobOptions(inv, sync);
    return {};
}

void answerCounts(Form& form, const DialogContext&, QJsonObject& answer)
{
    const auto& sync = dynamic_cast<const SyncProgressForm&>(form);
    answer.insert(QStringLiteral("Result"), int(sync.Result));
    answer.insert(QStringLiteral("Done"), sync.Job.Done);
    answer.insert(QStringLiteral("Skipped"), sync.Job.Skipped);
    answer.insert(QStringLiteral("Errors"), sync.Job.Errors);
    answer.insert(QStringLiteral("Conflicts"), sync.Job.Conflicts);
}

bool confirmsItself(const Invocation& inv)
{
    return inv.hasExtra(QStringLiteral("yes"));
}

// 0 all went well, 1 a run with errors or one that could not start, 2 cancelled.
int exitOfCounts(const QJsonObject& answer)
{
    const int result = answer.value(QStringLiteral("Result")).toInt();
    if (result == SyncCancelled)
        return 2;
    return result == SyncFinished && answer.value(QStringLiteral("Errors")).toInt() == 0 ? 0 : 1;
}

// {"DL":[...],...,"DOWN":[...]}: missing keys are empty lists.
Outcome readPlan(const Invocation& inv, SyncActions& plan)
{
    QString path;
    if (Outcome missing = needOne(inv, QStringLiteral("actions"), path))
        return missing;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {ExitNoInput,
                QStringLiteral("cannot read actions file '%1': %2").arg(path, file.errorString())};
    QByteArray bytes;
    if (Outcome tooLarge = ReadBounded(file, QStringLiteral("actions file '%1'").arg(path), bytes))
        return tooLarge;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    const auto bad = [&](const QString& what) {
        return Outcome{ExitUsage, QStringLiteral("actions file '%1': %2").arg(path, what)};
    };
    if (document.isNull())
        return bad(error.errorString() + QStringLiteral(" at byte %1").arg(error.offset));
    if (!document.isObject())
        return bad(QStringLiteral("not a JSON object of the eight lists"));
    plan = {};
    const QJsonObject lists = document.object();
    for (auto it = lists.begin(); it != lists.end(); ++it) {
        StringList* list = plan.ByKey(it.key().toStdString());
        if (!list)
            return bad(QStringLiteral("'%1' is none of DL, DR, DTL, DTR, MKL, MMR, UP, DOWN")
                           .arg(it.key()));
        if (!it.value().isArray())
            return bad(QStringLiteral("'%1' is not a list").arg(it.key()));
        for (const QJsonValue& entry : it.value().toArray()) {
            if (!entry.isString() || entry.toString().isEmpty())
                return bad(QStringLiteral("'%1' holds an entry that is no path").arg(it.key()));
            list->Add(entry.toString().toStdString());
        }
    }
    return {};
}

Outcome checkPlan(const Invocation& inv)
{
    SyncActions plan;
    return readPlan(inv, plan);
}

Outcome preparePlan(Form& form, const Invocation& inv, DialogContext&)
{
    if (Outcome failure = readPlan(inv, confirmedPlan()))
        return failure;
    dynamic_cast<SyncConfirmForm&>(form).Actions = &confirmedPlan();
    return {};
}

void answerPlan(Form& form, const DialogContext&, QJsonObject& answer)
{
    const bool confirmed = dynamic_cast<const SyncConfirmForm&>(form).Confirmed;
    answer.insert(QStringLiteral("Result"), confirmed ? ResultOk : ResultAbort);
    for (std::string_view key : SyncActionKeys) {
        QJsonArray entries;
        for (const std::string& entry : confirmedPlan().ByKey(key)->items())
            entries.append(QString::fromStdString(entry));
        answer.insert(QString::fromLatin1(key.data(), qsizetype(key.size())), entries);
    }
}

// Keys answer the plan's confirmation; the progress window takes none.
DialogRun syncRun(QStringList places, Outcome (*prepare)(Form&, const Invocation&, DialogContext&),
                  const QString& confirmation)
{
    DialogRun run{places + jobOptions(), prepare, nullptr, answerCounts};
    run.exitCode = exitOfCounts;
    run.unattended = confirmsItself;
    run.keysFor = confirmation;
    return run;
}

} // namespace

DialogRun FolderSyncRun()
{
    return syncRun({QStringLiteral("source"), QStringLiteral("target")}, prepareFolders,
                   QStringLiteral("frm_DialogFileSyncConfirm"));
}

DialogRun FtpSyncRun()
{
    return syncRun(
        {QStringLiteral("local"), QStringLiteral("remote"), QStringLiteral("password-file")},
        prepareFtp, QStringLiteral("frm_InternetFTPConfirm"));
}

DialogRun SyncConfirmRun()
{
    DialogRun run{{QStringLiteral("actions")}, preparePlan, nullptr, answerPlan};
    run.check = checkPlan;
    return run;
}

} // namespace fw::cli
