// The desktop host's save question: the library's own file chooser in save
// mode, made by name through the factory, so that the host needs none of the
// chooser's code to build.
#include "core/HasContext.h"
#include "core/cls_Formwerk.h"
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopMessages.h"
#include "forms/Form.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QFile>
#include <QStandardPaths>
#include <QString>
#include <algorithm>

namespace fw::desktop {

namespace {

constexpr auto kChooser = "frm_DialogFile";

// The folder of the last save is kept beside the recent-file list's key, as a
// Linux path, so that it stays valid whatever letters the volumes get.
std::string lastFolderKey(const std::string& recentListKey)
{
    return recentListKey + "\\LastFolder";
}

std::string readLastFolder(const std::string& recentListKey)
{
    if (recentListKey.empty())
        return {};
    try {
        return GetCoreDevRegistry().Strings().ReadString(HiveCurrentUser,
                                                         lastFolderKey(recentListKey), "", 1000);
    } catch (...) {
        return {};
    }
}

void writeLastFolder(const std::string& recentListKey, const std::string& folder)
{
    if (recentListKey.empty() || folder.empty())
        return;
    try {
        GetCoreDevRegistry().Writer().WriteString(HiveCurrentUser, lastFolderKey(recentListKey),
                                                  folder);
    } catch (...) {
    }
}

DesktopFiles* desktopFiles()
{
    return dynamic_cast<DesktopFiles*>(&GetCoreDevFiles());
}

std::string locationOf(const std::string& posix)
{
    DesktopFiles* files = desktopFiles();
    return files ? files->LocationOf(posix) : PosixToLocation(posix);
}

std::string posixOf(const std::string& location)
{
    DesktopFiles* files = desktopFiles();
    return (files ? files->SystemPath(location) : LocationToPosix(location)).value_or("");
}

// The folder to start in: the last one saved to while it exists, else the
// documents folder, else home (a fresh account may have no documents folder);
// as a location with its trailing "\".
std::string startFolder(const std::string& recentListKey)
{
    std::string folder = readLastFolder(recentListKey);
    for (const auto place : {QStandardPaths::DocumentsLocation, QStandardPaths::HomeLocation})
        if (folder.empty() || !GetCoreDevFiles().FolderExists(folder))
            folder = QFile::encodeName(QStandardPaths::writableLocation(place)).toStdString();
    if (folder.empty() || folder.back() != '/')
        folder += '/';
    return locationOf(folder);
}

// "label|pattern|label|pattern..." as the chooser's list of pairs; a label
// without its pattern is dropped.
StringList filterPairs(const std::string& filter)
{
    StringList pairs;
    std::vector<std::string> parts;
    std::size_t from = 0;
    while (from <= filter.size() && !filter.empty()) {
        const std::size_t bar = std::min(filter.find('|', from), filter.size());
        parts.push_back(filter.substr(from, bar - from));
        from = bar + 1;
    }
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        pairs.Add(parts[i]);
        pairs.Add(parts[i + 1]);
    }
    return pairs;
}

std::string folderOfLocation(const std::string& location)
{
    const std::size_t slash = location.rfind('\\');
    return slash == std::string::npos ? std::string() : location.substr(0, slash + 1);
}

} // namespace

std::string DesktopMessages::AskSaveFile(const std::string& defaultPattern,
                                         const std::string& title, const std::string& filter,
                                         int filterIndex, const std::string& defaultExtension,
                                         int flag, const std::string& recentListKey)
{
    const std::vector<std::string> known = cls_Formwerk::Names();
    if (std::find(known.begin(), known.end(), kChooser) == known.end())
        return {}; // the factory would put up its "not found" message instead
    std::unique_ptr<Form> chooser = cls_Formwerk().Create(kChooser);
    auto* withContext = dynamic_cast<HasContext*>(chooser.get());
    if (!withContext)
        return {};
    auto context = std::make_shared<DialogContext>();
    context->Request.Mode = 2;
    context->Request.Title = title;
    context->Request.FilterList = filterPairs(filter);
    context->Request.FilterIndex = filterIndex;
    context->Request.OverwritePrompt = flag != 0;
    context->Items.DefaultExtension = defaultExtension;
    // A pattern as the proposed name gives way to the folder behind it.
    context->Items.ItemList.Add(defaultPattern);
    context->Items.ItemList.Add(startFolder(recentListKey));
    withContext->Context = context;
    chooser->Show(true);

    if (context->Request.Result != ResultOk || context->Items.ItemList.Count() == 0)
        return {};
    const std::string chosen = context->Items.ItemList.Item(1);
    std::string folder = posixOf(folderOfLocation(chosen));
    if (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    writeLastFolder(recentListKey, folder);
    return chosen;
}

} // namespace fw::desktop
