#pragma once
// Host objects that single dialog families use: favourites, network, monitors,
// resource packages, XML and FTP.

#include "host/LateBound.h"
#include "host/SyncJob.h"
#include "host/Picture.h"
#include "host/StringList.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace fw {

class Control;
class TreeNode;

/// A favourite folder.
struct FavoriteItem {
    std::string Name;
    std::string Description;
    std::string Icon;
    std::string Path;
};

/// A host list of favourite folders, loaded from and saved to a registry key.
class FavoriteList {
  public:
    virtual ~FavoriteList() = default;
    virtual int Count() const = 0;
    /// 1-based.
    virtual FavoriteItem& Item(int index) = 0;
    virtual bool Contains(const std::string& path) const = 0;
    virtual void RemoveAt(int index) = 0;
    virtual void Add(const FavoriteItem& item) = 0;
    /// Adds a favourite from a name and a path alone (no description, no icon).
    virtual FavoriteItem& AddNew(const std::string& name, const std::string& path) = 0;
    virtual bool Load(std::uint32_t hive, const std::string& key) = 0;
    virtual bool Save(std::uint32_t hive, const std::string& key) = 0;
    /// Removes the favourite of a path.
    virtual bool RemoveKey(const std::string& path) = 0;
};

/// One share of a network host.
struct ShareInfo {
    enum Kind { Disk = 0, Printer = 1, Device = 2, Ipc = 3 };
    std::string Name; ///< hidden shares end in "$"
    int Type = Disk;
    StringList Remarks; ///< entry 1 is the share's display text
};

/// The shares of one host, 1-based like the other host lists.
class ShareList {
  public:
    int Count() const { return static_cast<int>(m_items.size()); }
    /// Throws std::out_of_range outside 1..Count.
    const ShareInfo& Item(int index) const
    {
        return m_items.at(static_cast<std::size_t>(index - 1));
    }
    void Add(ShareInfo share) { m_items.push_back(std::move(share)); }
    /// By name, case-blind as share names are; stable for names that differ
    /// in case only.
    void Sort(bool ascending);
    const std::vector<ShareInfo>& items() const { return m_items; }

  private:
    std::vector<ShareInfo> m_items;
};

/// Network enumeration and drive mapping.
class NetworkService {
  public:
    virtual ~NetworkService() = default;
    virtual StringList Domains() = 0;
    /// The domain that a UNC path opened directly is shown under. A host may
    /// know it without browsing the network (which can take a second).
    virtual std::string HomeDomain()
    {
        const StringList domains = Domains();
        return domains.Count() > 0 ? domains.Item(1) : std::string();
    }
    virtual StringList Hosts(const std::string& domain) = 0;
    virtual ShareList Shares(const std::string& host) = 0;
    /// Connects remote to local; ok tells success. Returns the host's message, if any.
    virtual std::string Connect(const std::string& remote, const std::string& local,
                                const std::string& user, const std::string& password, bool persist,
                                bool& ok) = 0;
    virtual bool Disconnect(const std::string& drive) = 0;
    virtual StringList MappedDrives() = 0;
    virtual std::string UncOfDrive(const std::string& drive) = 0;
};

struct MonitorInfo {
    int Index = 0;
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};

/// The desktop's monitors, in pixels.
class MonitorList {
  public:
    virtual ~MonitorList() = default;
    virtual int VirtualLeft() const = 0;
    virtual int VirtualTop() const = 0;
    virtual int VirtualWidth() const = 0;
    virtual int VirtualHeight() const = 0;
    virtual int Count() const = 0;
    /// 1-based.
    virtual MonitorInfo Item(int index) const = 0;
    virtual MonitorInfo Primary() const = 0;
    /// By the monitor's own Index.
    virtual MonitorInfo ByIndex(int index) const = 0;
};

/// One open resource package. Items are resource paths such as
/// "Ico\20\Computer\Signs\OK.ico", case-blind as the store's names are.
class ResourcePackage {
  public:
    virtual ~ResourcePackage() = default;
    /// Opens the package of that name from the host's package folders.
    virtual bool Load(const std::string& name) = 0;
    virtual bool Exists(const std::string& item) = 0;
    /// Writes the item to the destination file; false and nothing written on failure.
    virtual bool Extract(const std::string& item, const std::string& destination) = 0;
    /// The entries below path; the three option words pass through from the
    /// caller and mean what the host documents.
    virtual StringList Content(const std::string& path, std::uint32_t optionA,
                               std::uint32_t optionB, std::uint32_t optionC) = 0;
};

/// The host's XML document object.
class XmlObject {
  public:
    virtual ~XmlObject() = default;
    /// Fills a tree control below the given parent node (null: from the root).
    virtual void fillTree(Control& tree, TreeNode* parent) = 0;
};

/// The host's FTP object behind the sync and console forms. The console
/// reaches it by name only: SENDCOMMAND through Invoke.
class FtpObject : public LateBound {
  public:
    virtual ~FtpObject() = default;
    virtual bool Cancel() const = 0;
    virtual void SetCancel(bool cancel) = 0;
    /// Synchronises the local folder with the server folder, reporting to the
    /// window; the cancel flag above is the window's. Returns a SyncOutcome.
    virtual std::int32_t synchronise(const std::string& local, const std::string& remote,
                                     SyncProgress& window, SyncJob& job) = 0;
    /// Late-bound command of the FTP console; returns the host's answer.
    virtual std::string SENDCOMMAND(const std::string& command) = 0;
    std::string Invoke(const std::string& method, const std::vector<std::string>& args) override;
};

} // namespace fw
