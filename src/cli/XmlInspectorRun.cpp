#include "cli/DialogRuns.h"
#include "controls/ctl_CmdBar.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopXml.h"
#include "inspect/frm_DialogXMLInspector.h"

namespace fw::cli {

namespace {

// The form writes no result of its own; the run notes whether OK closed it.
bool g_okPressed = false;

// The file is read and checked before any window, so that a broken file
// ends the run with its line and column and never shows an empty tree.
Outcome readDocument(const Invocation& inv, std::shared_ptr<desktop::DesktopXml>& xml)
{
    const QStringList given = inv.extra(QStringLiteral("xml"));
    if (given.isEmpty())
        return {ExitUsage, QStringLiteral("%1 needs --xml FILE").arg(inv.dialog)};
    const QString path = given.last();
    xml = desktop::MakeDesktopXml();
    switch (xml->Load(path)) {
    case desktop::DesktopXml::Status::Unreadable:
        return {
            ExitNoInput,
            QStringLiteral("cannot read XML file '%1': %2").arg(path, xml->LastProblem().Message)};
    case desktop::DesktopXml::Status::NotWellFormed: {
        const auto& problem = xml->LastProblem();
        return {ExitData, QStringLiteral("%1:%2:%3: %4")
                              .arg(path)
                              .arg(problem.Line)
                              .arg(problem.Column)
                              .arg(problem.Message)};
    }
    case desktop::DesktopXml::Status::Ok:
        break;
    }
    return {};
}

Outcome checkDocument(const Invocation& inv)
{
    std::shared_ptr<desktop::DesktopXml> xml;
    return readDocument(inv, xml);
}

Outcome loadDocument(Form& form, const Invocation& inv, DialogContext&)
{
    auto* inspector = dynamic_cast<frm_DialogXMLInspector*>(&form);
    if (!inspector)
        return {ExitSoftware, QStringLiteral("%1 is not the XML inspector").arg(form.Name())};
    std::shared_ptr<desktop::DesktopXml> xml;
    if (Outcome failure = readDocument(inv, xml))
        return failure;
    inspector->Xml = xml;

    g_okPressed = false;
    ctl_CmdBar& bar = *inspector->bar_Buttons;
    bar.Script = [script = bar.Script](const QString& command) {
        if (command.toUpper() == u"DIALOG.OK();")
            g_okPressed = true;
        if (script)
            script(command);
    };
    return {};
}

void answerOk(Form&, const DialogContext&, QJsonObject& answer)
{
    answer.insert(QStringLiteral("Result"), g_okPressed ? ResultOk : ResultNone);
}

} // namespace

DialogRun XmlInspectorRun()
{
    DialogRun run{{QStringLiteral("xml")}, loadDocument, nullptr, answerOk};
    run.check = checkDocument;
    return run;
}

} // namespace fw::cli
