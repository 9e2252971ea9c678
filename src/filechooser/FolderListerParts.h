#pragma once
// What the units of the folder lister share: the place words, string
// conversions, the picture lookups of the shared image lists and the steps
// of one listing. Internal to src/filechooser.

#include "filechooser/FolderLister.h"
#include "host/CoreDevServices.h"

#include <QString>
#include <cstdint>
#include <string>
#include <vector>

namespace fw {

class ImageList;
class ListItem;
class ListView;
class ctl_Label;

namespace lister {

inline const std::string kDesktop = "DESKTOP:\\";
inline const std::string kWorkstation = "WORKSTATION:\\";
inline const std::string kNethood = "NETHOOD:\\";
inline const std::string kFavorites = "FAVORITES:\\";

inline QString Q(const std::string& text)
{
    return QString::fromStdString(text);
}

inline std::string Upper(const std::string& text)
{
    return Q(text).toUpper().toStdString();
}

inline bool StartsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

inline std::string ReplaceAll(std::string text, const std::string& from, const std::string& to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

/// Text behind the first ":\" with one trailing "\" removed ("NETHOOD:\Firma\pc1\"
/// gives "Firma\pc1").
std::string RestOfPlace(const std::string& path);

/// A favourite's picture key (its icon, put into the shared lists, or
/// "FAVORITE"), for the 16 pixel list.
std::string FavouriteIconKey(const std::string& icon);

/// The listing's mask colour for pictures taken from files.
std::uint32_t SharedMaskColour();

/// A row of a place (drive, domain, share...): both pictures the same.
ListItem& AddPlaceRow(ListView& files, const std::string& key, const std::string& text,
                      const std::string& image);
/// Writes the count line if the chooser has one.
void SetCount(ctl_Label* label, const std::string& text);
inline std::string Count(int n)
{
    return std::to_string(n);
}

/// The parts of one Update, each for one kind of place.
class Listing {
  public:
    Listing(LocationModel& places, ChooserFavorites& favourites,
            const FolderLister::Controls& controls, bool newPlace, const FolderLister& lister)
        : m_places(places), m_favourites(favourites), m_c(controls), m_newPlace(newPlace),
          m_lister(lister)
    {
    }

    void Drives();
    void Network();
    void Favourites();
    void DesktopRoot();
    /// False when the folder cannot be read (the message has been shown).
    bool RealFolder(const std::string& base);
    void UncTree();

  private:
    void Domains(NetworkService* network);
    void Hosts(NetworkService* network, const std::string& domain);
    void Shares(NetworkService* network, const std::string& domain, const std::string& host);
    void AddTreeItem(const std::string& key, const std::string& text, const std::string& image,
                     int indentation);
    /// Selects the combo row of the current place, else the row of fallbackKey.
    void SelectCurrentInTree(const std::string& fallbackKey = {});
    void FolderRows(const std::string& base, const std::vector<FileEntry>& entries);
    void FileRows(const std::string& base, const std::vector<FileEntry>& matched);
    void WriteFolderCount(int files, int folders, int allFiles);

    LocationModel& m_places;
    ChooserFavorites& m_favourites;
    const FolderLister::Controls& m_c;
    bool m_newPlace;
    const FolderLister& m_lister;
};

} // namespace lister
} // namespace fw
