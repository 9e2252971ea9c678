#include "cli/DialogRuns.h"
#include "cli/EscapedBytes.h"
#include "desktop/DesktopFiles.h"
#include "desktop/LocationPaths.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QDir>
#include <QFile>

namespace fw::cli {

namespace {

// The lettered volumes of the desktop host, so that a path on a USB stick
// goes in as "E:\..." and comes back as its mount point; another host has none.
std::vector<desktop::DriveRoot> driveRoots()
{
    if (auto* files = dynamic_cast<desktop::DesktopFiles*>(&GetCoreDevFiles()))
        return files->Drives().Roots();
    return {};
}

// A shell user names files relative to where they stand.
std::string absoluteBytes(const std::string& posix)
{
    if (posix.empty() || posix.front() == '/')
        return posix;
    std::string current = QFile::encodeName(QDir::currentPath()).toStdString();
    if (current.back() != '/')
        current += '/';
    return current + posix;
}

// Entries 1 and 2 of ItemList come in as Linux paths and go to the dialog as
// locations; an empty entry stays empty. Entry 2 names a folder, which the
// dialog knows by its trailing separator (else it would start in its parent).
void itemsToLocations(StringList& items, const std::vector<desktop::DriveRoot>& drives)
{
    for (int i = 1; i <= items.Count(); ++i) {
        std::string posix = items.Item(i);
        if (posix.empty())
            continue;
        if (i == 2 && posix.back() != '/')
            posix += '/';
        items.SetItem(i, desktop::PosixToLocation(absoluteBytes(posix), drives));
    }
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
    StringList& items = context.Items.ItemList;
    if (const QStringList file = inv.extra(QStringLiteral("file")); !file.isEmpty())
        setItem(items, 1, EncodeEscaped(file.last()).toStdString());
    if (const QStringList folder = inv.extra(QStringLiteral("folder")); !folder.isEmpty())
        setItem(items, 2, EncodeEscaped(folder.last()).toStdString());
    itemsToLocations(items, driveRoots());

    if (const QStringList filters = inv.extra(QStringLiteral("filter")); !filters.isEmpty()) {
        context.Request.FilterList.Clear();
        for (const QString& filter : filters)
            addFilter(context.Request.FilterList, filter);
    }
    if (inv.hasExtra(QStringLiteral("no-search")))
        context.Options.Add("SEARCH", "false");
    return {};
}

// The chosen file as a Linux path, its bytes exactly as on disk; only an
// accepted choice names one.
void answerFile(Form&, const DialogContext& context, QJsonObject& answer)
{
    const StringList& items = context.Items.ItemList;
    if (context.Request.Result != ResultOk || items.Count() == 0 || items.Item(1).empty())
        return;
    const std::string& location = items.Item(1);
    const std::string posix = desktop::LocationToPosix(location, driveRoots()).value_or(location);
    answer.insert(QStringLiteral("File"),
                  DecodeEscaped(QByteArrayView(posix.data(), qsizetype(posix.size()))));
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
