#include "filechooser/ChooserCommands.h"

#include "filechooser/ChooserFavorites.h"
#include "filechooser/ChooserLanguage.h"
#include "filechooser/ChooserSite.h"
#include "filechooser/LocationModel.h"
#include "folders/frm_DialogFolderFavorite.h"
#include "folders/frm_DialogNetworkAdd.h"
#include "forms/ListView.h"
#include "forms/Resume.h"
#include "forms/Text.h"
#include "host/DialogContext.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QCursor>
#include <QGuiApplication>

#include <algorithm>
#include <cctype>
#include <vector>

namespace fw {

namespace {

const std::string kDeleteIcon = "Ico\\32\\Computer\\Signs\\Delete.ico";
const std::string kFavoritesPlace = "FAVORITES:\\";
constexpr std::int32_t kYesNo = 4;

std::string upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

bool endsWithBackslash(const std::string& text)
{
    return !text.empty() && text.back() == '\\';
}

// "Z:" and "z:\" name the same drive.
std::string driveName(std::string drive)
{
    if (endsWithBackslash(drive))
        drive.pop_back();
    return upper(drive);
}

std::string menuRow(const std::string& caption, const std::string& key, const std::string& icon)
{
    return caption + "|" + key + "|-1|-1|0|" + icon;
}

const MenuEntry kSeparator{"-", nullptr};

std::shared_ptr<PopupMenu> submenu(const std::vector<MenuEntry>& rows)
{
    std::shared_ptr<PopupMenu> menu = GetCoreDevMenus().NewPopupMenu();
    menu->AddRows(rows);
    return menu;
}

// A refusal: the user asked for something that cannot be done here.
void refuse(const std::string& text)
{
    Resume([&] { GetCoreDevMessages().ShowInfo(text, ""); });
}

// A failure: the system would not do what the user asked.
void fail(const std::string& text)
{
    Resume([&] { GetCoreDevMessages().ShowError(text, ""); });
}

std::int32_t ask(const std::string& text, const std::string& title, const std::string& icon = {},
                 const std::string& messageKey = {})
{
    std::int32_t answer = ResultNo;
    Resume(
        [&] { answer = GetCoreDevMessages().AskQuestion(text, title, kYesNo, icon, messageKey); });
    return answer;
}

// The rows under "Favoriten löschen" of one list, keyed by their index.
void addFavoriteRows(std::vector<MenuEntry>& rows, FavoriteList& list, const std::string& prefix)
{
    for (int i = 1; i <= list.Count(); ++i) {
        const FavoriteItem& item = list.Item(i);
        std::string icon = "Ico\\20\\Computer\\Folders\\Favorite.ico";
        if (!item.Icon.empty()) {
            icon = item.Icon;
            if (const auto at = icon.find("16\\"); at != std::string::npos)
                icon.replace(at, 3, "20\\");
        }
        rows.push_back({menuRow(item.Name, prefix + std::to_string(i), icon), nullptr});
    }
}

std::shared_ptr<NetworkService> network()
{
    std::shared_ptr<NetworkService> service;
    Resume([&] { service = GetCoreDevFiles().Network(); });
    return service;
}

bool folderExists(const std::string& path)
{
    bool exists = false;
    Resume([&] { exists = GetCoreDevFiles().FolderExists(path); });
    return exists;
}

// The number behind the last "." of a menu key, 0 if there is none.
int trailingIndex(const std::string& key)
{
    bool ok = false;
    const int index = qs(key.substr(key.rfind('.') + 1)).toInt(&ok);
    return ok ? index : 0;
}

// An hourglass for as long as a long host call runs.
class BusyPointer {
  public:
    BusyPointer() { QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor)); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

} // namespace

std::string ChooserCommands::text(const std::string& german, const std::string& english) const
{
    return ChooserText(m_site.GermanOnly(), german, english);
}

void ChooserCommands::ToolsMenu(bool onRow)
{
    std::vector<MenuEntry> rows;
    if (onRow) {
        rows.push_back({menuRow("Öffnen", "OPEN", "Ico\\20\\Computer\\Signs\\OK.ico"), nullptr});
        rows.push_back(kSeparator);
    }
    rows.push_back({menuRow("Neuen Ordner erstellen", "CREATEFOLDER",
                            "Ico\\20\\Computer\\Folders\\Closed.ico#Ico\\20\\Overlay\\New.ico"),
                    nullptr});
    if (m_site.Rows().SelectedItem())
        rows.push_back(
            {menuRow("Ordner oder Datei löschen", "DELETE", "Ico\\20\\Computer\\Signs\\Delete.ico"),
             nullptr});
    rows.push_back(kSeparator);
    rows.push_back({menuRow("Netzwerklaufwerk verbinden", "ADDCONNECTION",
                            "Ico\\20\\Computer\\Hardware\\Nethood.ico#ico\\20\\overlay\\new.ico"),
                    nullptr});
    Resume([&] { addConnectionRows(rows); });
    Resume([&] { addFavoriteMenu(rows); });

    std::string chosen;
    Resume([&] {
        std::shared_ptr<PopupMenu> menu = GetCoreDevMenus().NewPopupMenu();
        menu->AddRows(rows);
        chosen = menu->Popup();
    });
    if (!chosen.empty())
        Run(chosen);
}

void ChooserCommands::addConnectionRows(std::vector<MenuEntry>& rows)
{
    const std::shared_ptr<NetworkService> service = network();
    if (!service)
        return;
    const StringList drives = service->MappedDrives();
    if (drives.Count() == 0)
        return;
    std::vector<MenuEntry> driveRows;
    for (int i = 1; i <= drives.Count(); ++i) {
        const std::string& drive = drives.Item(i);
        driveRows.push_back(
            {menuRow(drive, "REMOVECONNECTION." + drive, "Ico\\20\\Computer\\Folders\\Nethood.ico"),
             nullptr});
    }
    rows.push_back(
        {menuRow("Netzwerklaufwerk trennen", "REMOVECONNECTION",
                 "Ico\\20\\Computer\\Hardware\\Nethood.ico#ico\\20\\overlay\\remove.ico"),
         submenu(driveRows)});
}

void ChooserCommands::addFavoriteMenu(std::vector<MenuEntry>& rows)
{
    ChooserFavorites& favourites = m_site.Favorites();
    if (favourites.Total() == 0)
        return;
    // The user's own favourites stand first here, unlike in the location combo.
    std::vector<MenuEntry> favouriteRows;
    if (favourites.User)
        addFavoriteRows(favouriteRows, *favourites.User, "REMOVEFAVORITE.USER.");
    if (favourites.User && favourites.App && favourites.User->Count() > 0 &&
        favourites.App->Count() > 0)
        favouriteRows.push_back(kSeparator);
    if (favourites.App)
        addFavoriteRows(favouriteRows, *favourites.App, "REMOVEFAVORITE.APP.");
    rows.push_back(kSeparator);
    rows.push_back({menuRow("Favoriten löschen", "REMOVEFAVORITE",
                            "Ico\\20\\Computer\\Signs\\Favorite.ico#Ico\\20\\Overlay\\Remove.ico"),
                    submenu(favouriteRows)});
}

void ChooserCommands::Run(const std::string& key)
{
    const auto dot = key.find('.');
    const std::string head = upper(key.substr(0, dot));
    const std::string tail = dot == std::string::npos ? std::string() : key.substr(dot + 1);
    if (head == "OPEN") {
        m_site.OpenSelected();
    } else if (head == "CREATEFOLDER") {
        CreateFolder();
    } else if (head == "DELETE") {
        DeleteSelected();
    } else if (head == "ADDCONNECTION") {
        addConnection();
    } else if (head == "REMOVECONNECTION") {
        removeConnection(tail);
    } else if (head == "REMOVEFAVORITE") {
        removeFavorite(tail);
    }
}

void ChooserCommands::addConnection()
{
    frm_DialogNetworkAdd mapper;
    mapper.Show(true);
    if (mapper.Accepted)
        m_site.GotoFolder(us(mapper.DriveRoot));
}

void ChooserCommands::removeConnection(const std::string& drive)
{
    if (drive.empty())
        return;
    const std::shared_ptr<NetworkService> service = network();
    bool disconnected = false;
    Resume([&] { disconnected = service && service->Disconnect(drive); });
    if (!disconnected)
        return;
    // The location's first two characters name its drive ("Z:\docs\" -> "Z:").
    if (upper(m_site.Places().CurrentPath.substr(0, 2)) == driveName(drive))
        m_site.GotoFolder("WORKSTATION:\\");
    else
        m_site.UpdateFolder();
}

void ChooserCommands::removeFavorite(const std::string& which)
{
    ChooserFavorites& favourites = m_site.Favorites();
    const bool user = upper(which.substr(0, 4)) == "USER";
    FavoriteList* list = (user ? favourites.User : favourites.App).get();
    const int index = trailingIndex(which);
    if (!list || index < 1 || index > list->Count())
        return;
    const std::string name = list->Item(index).Name;
    if (ask("Sind Sie sicher, daß Sie den Favoriten '" + name + "' löschen wollen?",
            "Favorit löschen?", kDeleteIcon, "DIALOG.FILE.DELETEFAVORITE") == ResultNo)
        return;
    Resume([&] { list->RemoveAt(index); });
    favourites.Save();
    const bool atFavourites = upper(m_site.Places().CurrentPath) == kFavoritesPlace;
    if (favourites.Total() == 0) {
        m_site.BuildSidebar();
        if (atFavourites)
            m_site.GotoFolder("DESKTOP:\\");
    } else if (atFavourites) {
        m_site.UpdateFolder();
    }
}

void ChooserCommands::CreateFolder()
{
    const LocationModel& places = m_site.Places();
    const std::string place = upper(places.CurrentPath);
    const bool onDesktop = place == "DESKTOP:\\";
    const bool inUserFolder = place == "USER:\\";
    if (!onDesktop && !inUserFolder && !folderExists(places.CurrentPath)) {
        refuse(
            text("Hier können Sie keine Ordner anlegen!", "You can not create a new folder here!"));
        return;
    }
    std::string name;
    Resume([&] {
        name = GetCoreDevMessages().AskText(text("Geben Sie den Namen für den neuen Ordner ein:",
                                                 "Enter the name for the new folder"),
                                            text("Ordner anlegen:", "Create folder"),
                                            text("Neuer Ordner", "New folder"));
    });
    if (name.empty())
        return;

    std::string base = places.CurrentPath;
    if (onDesktop)
        Resume([&] { base = GetCoreDevSystem().Folders().DesktopFolder(); });
    else if (inUserFolder)
        base = places.UserPath;
    Resume([&] { base = GetCoreDevText().Paths().AddBackslash(base); });
    const std::string target = base + name + "\\";

    // A host may make folders as "mkdir -p" does, which takes an existing one
    // for success; the user must hear that the name is taken.
    bool created = false;
    if (!folderExists(target))
        Resume([&] { created = GetCoreDevFiles().CreateFolder(target); });
    if (!created) {
        fail(text("Der Ordner konnte nicht angelegt werden. Entweder besteht schon ein Ordner "
                  "mit dem gleichen Namen oder Sie haben keine Schreibberichtigung in diesem "
                  "Ordner.",
                  "The folder could not be created. Either there is already a folder with "
                  "this name or you do not have the privileges to create folders here."));
        return;
    }
    m_site.GotoFolder(target);
}

void ChooserCommands::DeleteSelected()
{
    const ListItem* row = m_site.Rows().SelectedItem();
    if (!row) {
        refuse(text(
            "Wählen Sie aus der Liste erst die Datei oder den Ordner aus, den Sie löschen wollen!",
            "Select the folder or file you want to delete first!"));
        return;
    }
    std::string key = us(row->Key());
    const std::string name = us(row->Text());

    if (upper(m_site.Places().UpPath) == kFavoritesPlace) {
        removeFavoriteRow(key, name);
        return;
    }
    if (upper(key) == "USER:\\")
        key = m_site.Places().UserPath;
    if (endsWithBackslash(key))
        deleteFolder(key, name);
    else
        deleteFile(key, name);
}

void ChooserCommands::removeFavoriteRow(const std::string& target, const std::string& name)
{
    if (ask("Wollen Sie den Favoriten '" + name + "' wirklich entfernen?", "") == ResultNo)
        return;
    // A target held in both lists leaves both.
    ChooserFavorites& favourites = m_site.Favorites();
    for (FavoriteList* list : {favourites.App.get(), favourites.User.get()})
        if (list)
            Resume([&] { list->RemoveKey(target); });
    favourites.Save();
    m_site.UpdateFolder();
}

void ChooserCommands::deleteFolder(const std::string& folder, const std::string& name)
{
    if (!folderExists(folder)) {
        refuse("Sie können nur normale Ordner löschen!");
        return;
    }
    if (ask("Sind Sie sicher, daß Sie den Ordner '" + name + "' endgültig löschen wollen?",
            "Ordner Löschen", kDeleteIcon) != ResultYes)
        return;
    bool deleted = false;
    {
        const BusyPointer busy;
        // Without its trailing separator a link to a folder names the link, so
        // that no host resolves it and empties the folder it points to.
        const std::string entry = folder.size() > 3 ? folder.substr(0, folder.size() - 1) : folder;
        Resume([&] { deleted = GetCoreDevFiles().DeleteFolder(entry); });
    }
    if (!deleted) {
        fail("Der Ordner '" + name +
             "' konnte nicht gelöscht werden. Möglicherweise greift noch ein Programm darauf zu "
             "oder Sie verfügen nicht über die benötigten Zugriffsrechte.");
        return;
    }
    m_site.UpdateFolder();
}

void ChooserCommands::deleteFile(const std::string& file, const std::string& name)
{
    bool real = false;
    Resume([&] { real = GetCoreDevFiles().IsRealFile(file); });
    if (!real) {
        refuse("Sie können nur echte Dateie löschen!");
        return;
    }
    if (ask("Sind sie sicher, daß Sie die Datei '" + name + "' endgültig löschen wollen?",
            "Datei löschen?") != ResultYes)
        return;
    bool deleted = false;
    Resume([&] { deleted = GetCoreDevFiles().DeleteFile(file); });
    if (!deleted) {
        fail("Die Datei '" + name +
             "' konnte nicht gelöscht werden. Möglicherweise greift noch ein anderes Programm auf "
             "diese Datei zu oder Sie verfügen nicht über die notwendigen Zugriffsrechte");
        return;
    }
    // The list would go on showing a file that is gone.
    m_site.UpdateFolder();
}

void ChooserCommands::AddFavorite()
{
    const std::string current = m_site.Places().CurrentPath;
    if (!folderExists(current)) {
        refuse("Sie können nur 'echte' Ordner zu Ihren Favoriten hinzufügen!");
        return;
    }
    ChooserFavorites& favourites = m_site.Favorites();
    if (favourites.Contains(current)) {
        refuse("Dieser Ordner gehört bereits zu Ihren Favoriten!");
        return;
    }

    frm_DialogFolderFavorite editor;
    editor.Favorite.Path = current;
    editor.Show(true);
    if (!editor.Accepted)
        return;
    // Only the user's list takes the whole record; an application favourite
    // keeps just its name and target.
    const FavoriteItem& entered = editor.Favorite;
    if (editor.ForUser && favourites.User)
        Resume([&] { favourites.User->Add(entered); });
    else if (!editor.ForUser && favourites.App)
        Resume([&] { favourites.App->AddNew(entered.Name, entered.Path); });
    if (favourites.Total() == 1)
        m_site.BuildSidebar();
    favourites.Save();
}

} // namespace fw
