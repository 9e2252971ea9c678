#include "cli/ChooserPaths.h"
#include "cli/DialogRuns.h"
#include "cli/EscapedBytes.h"

namespace fw::cli {

namespace {

// The start folder as a location in entry 1; without one the dialog opens
// the documents folder.
Outcome setUp(Form&, const Invocation& inv, DialogContext& context)
{
    StringList& items = context.Items.ItemList;
    if (const QStringList folder = inv.extra(QStringLiteral("folder")); !folder.isEmpty()) {
        items.Clear();
        items.Add(EncodeEscaped(folder.last()).toStdString());
    }
    for (int i = 1; i <= items.Count(); ++i)
        items.SetItem(i, ArgumentToLocation(items.Item(i), true));
    return {};
}

void answerFolder(Form&, const DialogContext& context, QJsonObject& answer)
{
    const StringList& items = context.Items.ItemList;
    if (context.Request.Result == ResultOk && items.Count() > 0 && !items.Item(1).empty())
        AnswerLocation(items.Item(1), QStringLiteral("Folder"), answer);
}

} // namespace

DialogRun FolderChooserRun()
{
    return {{QStringLiteral("folder")}, setUp, nullptr, answerFolder};
}

} // namespace fw::cli
