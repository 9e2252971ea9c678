#pragma once
// The listing engine of the choosers: one Update empties and refills the row
// list for the current location (the drive list, the network's domains, hosts
// and shares, the favourites, the desktop root, a real folder), rebuilds the
// place combo when the place changed, works out the way up and writes the
// count line. Rows are cheap at first: sizes, dates and unknown type icons
// are left for IconTick, one row's worth per tick.

#include <functional>
#include <string>

namespace fw {

class ChooserFavorites;
class Form;
class ImageCombo;
class ListView;
class LocationModel;
class Timer;
class ctl_Label;

class FolderLister {
  public:
    struct Controls {
        Form& form;
        ListView& files;      ///< five columns, added by the lister on first use
        ImageCombo& folders;  ///< the place combo
        ctl_Label* fileCount; ///< the count line (with the "SHOWALL" link); may be null
        ctl_Label* fileInfo;  ///< emptied by each listing; may be null
        Timer* iconLoad;      ///< switched on by each listing; may be null
    };

    FolderLister(LocationModel& places, ChooserFavorites& favourites, Controls controls);

    /// The active pattern(s), "*.*" by default; several separated by ";".
    std::string Filter = "*.*";
    /// Only folders are listed, each sorted by its name (the folder chooser).
    bool FoldersOnly = false;
    /// Every text in German, whatever the host's language (the folder chooser).
    bool GermanOnly = false;
    /// A text in the lister's language.
    std::string Text(const std::string& german, const std::string& english) const;

    /// Refills for places.CurrentPath. A folder that cannot be read is told
    /// with the system's reason and then NotReady runs (the chooser goes to
    /// the drive list through its own navigation).
    void Update();
    std::function<void()> NotReady;

    /// One tick of the deferred completion: switches the timer off, gives at
    /// most one unknown type its icon and type text (one classes-root lookup),
    /// and fills size and date of the first row that lacks them.
    void IconTick();

    /// The place combo's fixed part for the current location (favourites,
    /// desktop, folders of the application, drives with the current path's
    /// folders, network) with the current location selected.
    void BuildPlaceTree();

  private:
    LocationModel& m_places;
    ChooserFavorites& m_favourites;
    Controls m_controls;
};

/// Drive classes: the image key and the name a drive shows ("Festplatte",
/// the volume label, the share text...), without the " (C:)".
struct DriveClass {
    std::string imageKey; ///< "DRIVE.HDD" ...; empty for a type that is not shown
    std::string name;
};
/// forTree picks the place combo's spelling of the removable fallback.
DriveClass ClassOfDrive(const std::string& drive, bool forTree, bool germanOnly = false);

} // namespace fw
