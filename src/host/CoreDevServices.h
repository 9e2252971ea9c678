#pragma once
// The services of the host's root object CoreDev, one small interface each.
// Every operation a dialog needs of its host is here; hosts implement them,
// the desktop host is the default.

#include "host/HostObjects.h"
#include "host/Picture.h"
#include "host/StringList.h"
#include "host/SyncJob.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace fw {

class Form;
class Control;

/// Registry hives as the dialogs name them.
inline constexpr std::uint32_t HiveClassesRoot = 0x80000000u;
inline constexpr std::uint32_t HiveCurrentUser = 0x80000001u;

class CoreDevSettings {
  public:
    virtual ~CoreDevSettings() = default;
    virtual bool GetBool(const std::string& name) = 0;
};

class ApplicationFolders {
  public:
    virtual ~ApplicationFolders() = default;
    virtual std::string UserFolder() = 0;
    virtual std::string SamplesFolder() = 0;
    virtual std::string SharedFolder() = 0;
};

class CoreDevApp {
  public:
    virtual ~CoreDevApp() = default;
    virtual ApplicationFolders& Folders() = 0;
    /// The running application's own registry key, ending in "\\" (as
    /// "Software\\Valdrenix\\Formwerk\\"); empty when it has none.
    virtual std::string RegistryKey() = 0;
};

class CoreDevClock {
  public:
    virtual ~CoreDevClock() = default;
    virtual std::string logStamp() = 0;
};

/// One row of a popup menu: "caption|key|-1|-1|0|icon", or "-" for a separator,
/// with an optional submenu.
class PopupMenu;
struct MenuEntry {
    std::string Row;
    std::shared_ptr<PopupMenu> Submenu;
};

class PopupMenu {
  public:
    virtual ~PopupMenu() = default;
    virtual void AddItem(const std::string& icon, const std::string& caption,
                         const std::string& key) = 0;
    virtual void AddRows(const std::vector<MenuEntry>& rows) = 0;
    /// Shows the menu at the mouse pointer (or at x, y in screen pixels);
    /// returns the chosen key, empty if nothing was chosen.
    virtual std::string Popup(int x = -1, int y = -1) = 0;
};

class CoreDevMenus {
  public:
    virtual ~CoreDevMenus() = default;
    virtual std::shared_ptr<PopupMenu> NewPopupMenu() = 0;
};

class WordHelper {
  public:
    virtual ~WordHelper() = default;
    virtual std::string TextBefore(const std::string& text, const std::string& sep, bool flag) = 0;
    virtual std::string TextBeforeLast(const std::string& text, const std::string& sep,
                                       bool flag) = 0;
    virtual std::string TextAfter(const std::string& text, const std::string& sep, bool flag) = 0;
    /// Wildcard match without case: "*" any run of characters, "?" one.
    virtual bool Like(const std::string& text, const std::string& pattern) = 0;
};

/// Packs two strings into one and back; Unpack(Pack(a, b)) gives a and b for any text.
class PairHelper {
  public:
    virtual ~PairHelper() = default;
    virtual std::string Pack(const std::string& first, const std::string& second) = 0;
    virtual bool Unpack(const std::string& packed, std::string& first, std::string& second) = 0;
};

class PathHelper {
  public:
    virtual ~PathHelper() = default;
    virtual std::string AddBackslash(const std::string& path) = 0;
    virtual std::string DrivePart(const std::string& path) = 0;
    virtual std::string FolderPart(const std::string& path) = 0;
    virtual std::string ParentText(const std::string& path) = 0;
    virtual std::string FolderName(const std::string& path) = 0;
    virtual std::string Extension(const std::string& path) = 0;
    virtual std::string FileName(const std::string& path) = 0;
    virtual std::string Combine(const std::string& folder, const std::string& name) = 0;
    virtual std::string ParentPath(const std::string& path) = 0;
    /// What a user typed into a name box, as a location: a host whose own
    /// paths look different (a Linux "/etc/hosts", "~/x.txt") turns them into
    /// location strings; anything else comes back unchanged.
    virtual std::string TypedPath(const std::string& typed) = 0;
    /// A name as one line of a list shows it: characters that would break the
    /// line or reorder it made visible, names the host escaped shown as the
    /// user knows them. For showing only; it need not map back.
    virtual std::string DisplayName(const std::string& name) = 0;
};

class CoreDevText {
  public:
    virtual ~CoreDevText() = default;
    virtual WordHelper& Words() = 0;
    virtual PairHelper& Pairs() = 0;
    virtual PathHelper& Paths() = 0;
};

class ListViewHelper {
  public:
    virtual ~ListViewHelper() = default;
    /// Column widths as percent strings such as "40,60".
    virtual void SetColumnWidths(Control& listView, const std::string& percents) = 0;
};

class TextBoxHelper {
  public:
    virtual ~TextBoxHelper() = default;
    virtual void SelectAll(Control& textBox) = 0;
};

class CoreDevControls {
  public:
    virtual ~CoreDevControls() = default;
    virtual ListViewHelper& ListViews() = 0;
    virtual TextBoxHelper& TextBoxes() = 0;
};

/// Window effects and screen edges, in pixels.
class WindowHelper {
  public:
    virtual ~WindowHelper() = default;
    /// mode 2 fades the whole window to level (0-255), mode 1 makes colour transparent.
    virtual void setWindowColorKey(Form& form, int level, int mode, std::uint32_t colour) = 0;
    virtual int windowTop(const Control& control) = 0;
    virtual int windowLeft(const Control& control) = 0;
    virtual int windowBottom(const Control& control) = 0;
    virtual int windowRight(const Control& control) = 0;
};

class SystemFolders {
  public:
    virtual ~SystemFolders() = default;
    virtual std::string DesktopFolder() = 0;
    virtual std::string DocumentsFolder() = 0;
};

class CoreDevSystem {
  public:
    virtual ~CoreDevSystem() = default;
    virtual WindowHelper& Windows() = 0;
    virtual SystemFolders& Folders() = 0;
    virtual std::shared_ptr<MonitorList> Monitors() = 0;
};

class CoreDevLanguage {
  public:
    virtual ~CoreDevLanguage() = default;
    /// 7 is German; every other id means English.
    virtual std::int32_t GetLanguage() = 0;
};

class CoreDevMessages {
  public:
    virtual ~CoreDevMessages() = default;
    virtual void ShowError(const std::string& text, const std::string& title) = 0;
    /// Returns the chosen path, empty on cancel.
    virtual std::string AskSaveFile(const std::string& defaultPattern, const std::string& title,
                                    const std::string& filter, int filterIndex,
                                    const std::string& defaultExtension, int flag,
                                    const std::string& recentListKey) = 0;
    /// Returns the entered text, empty on cancel.
    virtual std::string AskText(const std::string& prompt, const std::string& title,
                                const std::string& defaultText) = 0;
    virtual void ShowInfo(const std::string& text, const std::string& title) = 0;
    virtual void ShowHelp(const std::string& text, const std::string& title) = 0;
    /// style is a message style number (0-5); icon a resource path (empty
    /// for the question sign); messageKey names the question for hosts that
    /// let a user answer it once for all (may be empty). Returns a result code.
    virtual std::int32_t AskQuestion(const std::string& text, const std::string& title,
                                     std::int32_t style, const std::string& icon,
                                     const std::string& messageKey) = 0;
    virtual void RegisterForm(Form& form, const std::string& text) = 0;
    virtual void UnregisterForm(Form& form, const std::string& text) = 0;
    /// Returns the chosen icon path, empty on cancel.
    virtual std::string ChooseIcon(const std::string& current, const std::string& title,
                                   int size) = 0;
};

class RegistryStrings {
  public:
    virtual ~RegistryStrings() = default;
    /// key is "path\value"; limit caps the length of the text read.
    virtual std::string ReadString(std::uint32_t hive, const std::string& key,
                                   const std::string& defaultValue, int limit) = 0;
    virtual std::int32_t ReadNumber(std::uint32_t hive, const std::string& key,
                                    std::int32_t defaultValue) = 0;
};

class RegistryWriter {
  public:
    virtual ~RegistryWriter() = default;
    virtual bool WriteNumber(std::uint32_t hive, const std::string& key, std::int32_t value) = 0;
    virtual bool WriteString(std::uint32_t hive, const std::string& key,
                             const std::string& value) = 0;
};

class CoreDevRegistry {
  public:
    virtual ~CoreDevRegistry() = default;
    virtual RegistryStrings& Strings() = 0;
    virtual RegistryWriter& Writer() = 0;
    /// A new, empty favourites list; Load fills it from a key.
    virtual std::shared_ptr<FavoriteList> NewFavoriteList() = 0;
};

class CoreDevPictures {
  public:
    virtual ~CoreDevPictures() = default;
    /// A resource path such as "Ico\20\Computer\Signs\OK.ico", optionally with
    /// "#" and an overlay path. Never null: a bad path gives a fallback picture.
    virtual PicturePtr LoadPicture(const std::string& path, int flags = 0, int width = -1,
                                   int height = -1) = 0;
    /// Resource paths below path.
    virtual StringList ListResources(const std::string& path, bool wantFolders, bool flag1,
                                     bool flag2) = 0;
    /// How many icons a program file holds (0 for none or no such file).
    virtual int IconCount(const std::string& file) = 0;
    /// Icon number index of file, size pixels square; file may also be an icon
    /// name of the host's theme (as the classes root gives it). Pixels of
    /// maskColour (0x00BBGGRR) are transparent. Null when there is none.
    virtual PicturePtr ExtractIcon(const std::string& file, int index, int size,
                                   std::uint32_t maskColour) = 0;
    /// A new package object, not yet loaded; null where the host has no packages.
    virtual std::shared_ptr<ResourcePackage> NewResourcePackage() = 0;
};

/// One entry of a folder listing.
struct FileEntry {
    std::string Name;
    bool IsFolder = false;
    std::int64_t Size = 0;
    std::int64_t ModifiedSecs = 0; ///< seconds since the epoch, UTC
};

class CoreDevFiles {
  public:
    virtual ~CoreDevFiles() = default;
    /// Writes text atomically; false on any failure, the old file untouched.
    virtual bool WriteTextFile(const std::string& path, const std::string& text,
                               const std::string& encoding, int flag) = 0;
    virtual bool DeleteFile(const std::string& path) = 0;
    virtual std::vector<FileEntry> ListFiles(const std::string& folder,
                                             const std::string& pattern) = 0;
    virtual bool DeleteFolder(const std::string& path) = 0;
    virtual bool FileExists(const std::string& path) = 0;
    virtual bool FolderExists(const std::string& path) = 0;
    virtual std::int64_t FileSize(const std::string& path) = 0;
    virtual std::int64_t FileDate(const std::string& path) = 0;
    virtual bool CreateFolder(const std::string& path) = 0;
    virtual std::string SizeText(std::int64_t bytes) = 0;
    virtual bool IsRealFile(const std::string& path) = 0;
    /// Synchronises two folders (side 1, side 2), reporting to the window.
    /// Returns a SyncOutcome.
    virtual std::int32_t synchronise(const std::string& path1, const std::string& path2,
                                     SyncProgress& window, SyncJob& job) = 0;
    /// 2 removable, 3 fixed, 4 network, 5 optical, 6 RAM; 0 or 1 for none.
    virtual int DriveType(const std::string& drive) = 0;
    virtual StringList DrivesOfType(int type) = 0;
    /// The volume label of a drive ("C:"), empty if it has none.
    virtual std::string VolumeLabel(const std::string& drive) = 0;
    /// Empty when folder can be listed, else the system's reason ("No such
    /// file or directory"), as a listing reports a drive that is not ready.
    virtual std::string FolderError(const std::string& folder) = 0;
    virtual std::shared_ptr<NetworkService> Network() = 0;
};

/// Colour helper. Colours are 0x00BBGGRR as the host gives them.
class ColourTools {
  public:
    virtual ~ColourTools() = default;
    virtual void splitColour(std::uint32_t colour, int& red, int& green, int& blue) = 0;
    /// The colour of a scheme index (0 the default, 6 errors, 7 questions).
    virtual std::uint32_t GetSchemeColor(int index) = 0;
    /// Towards light by amount (0-255).
    virtual std::uint32_t ColorShadeA(std::uint32_t colour, int flag, int amount) = 0;
    /// Towards dark by amount (0-255).
    virtual std::uint32_t ColorShadeB(std::uint32_t colour, int flag, int amount) = 0;
};

class CoreDevColors {
  public:
    virtual ~CoreDevColors() = default;
    virtual ColourTools& Tools() = 0;
};

} // namespace fw
