#include "cli/ChooserPaths.h"
#include "cli/DialogRuns.h"
#include "cli/EscapedBytes.h"

namespace fw::cli {

namespace {

// Entries 1 and 2 of ItemList come in as command-line paths and go to the
// dialog as locations. Entry 2 names a folder, which the dialog knows by its
// trailing separator (else it would start in its parent).
void itemsToLocations(StringList& items)
{
    for (int i = 1; i <= items.Count(); ++i)
        items.SetItem(i, ArgumentToLocation(items.Item(i), i == 2));
}

void setItem(StringList& items, int index, const std::string& value)
{
    while (items.Count() < index)
        items.Add({});
    items.SetItem(index, value);
}

// "LABEL|PATTERN" as the label and pattern pair of the filter list; a lone
// pattern labels itself.
void addFilter(StringList& filters, const QString& given)
{
    const qsizetype bar = given.indexOf(u'|');
    const QString label = bar < 0 ? given : given.left(bar);
    const QString pattern = bar < 0 ? given : given.mid(bar + 1);
    filters.Add(EncodeEscaped(label).toStdString());
    filters.Add(EncodeEscaped(pattern).toStdString());
}

Outcome setUp(Form&, const Invocation& inv, DialogContext& context)
{
    // The dialog saves for any mode but 1; from a shell, choosing a file to
    // open is what a chooser without a mode is expected to do.
    if (context.Request.Mode == 0)
        context.Request.Mode = 1;
    StringList& items = context.Items.ItemList;
    if (const QStringList file = inv.extra(QStringLiteral("file")); !file.isEmpty())
        setItem(items, 1, EncodeEscaped(file.last()).toStdString());
    if (const QStringList folder = inv.extra(QStringLiteral("folder")); !folder.isEmpty())
        setItem(items, 2, EncodeEscaped(folder.last()).toStdString());
    itemsToLocations(items);

    if (const QStringList filters = inv.extra(QStringLiteral("filter")); !filters.isEmpty()) {
        context.Request.FilterList.Clear();
        for (const QString& filter : filters)
            addFilter(context.Request.FilterList, filter);
    }
    if (inv.hasExtra(QStringLiteral("no-search")))
        context.Options.Add("SEARCH", "false");
    return {};
}

// The chosen file as a Linux path (its bytes exactly as on disk) or an
// smb:// URL; only an accepted choice names one.
void answerFile(Form&, const DialogContext& context, QJsonObject& answer)
{
    const StringList& items = context.Items.ItemList;
    if (context.Request.Result != ResultOk || items.Count() == 0 || items.Item(1).empty())
        return;
    AnswerLocation(items.Item(1), QStringLiteral("File"), answer);
}

} // namespace

DialogRun FileChooserRun()
{
    return {{QStringLiteral("file"), QStringLiteral("folder"), QStringLiteral("filter"),
             QStringLiteral("no-search")},
            setUp,
            nullptr,
            answerFile};
}

} // namespace fw::cli
