#pragma once
// What the commands of a chooser (tools menu, new folder, delete, favourites)
// need of the chooser that runs them. The file chooser and the folder chooser
// each implement it, so that the commands are written once.

#include <string>

namespace fw {

class ChooserFavorites;
class Form;
class ListView;
class LocationModel;

class ChooserSite {
  public:
    virtual ~ChooserSite() = default;

    virtual Form& ChooserForm() = 0;
    virtual LocationModel& Places() = 0;
    virtual ChooserFavorites& Favorites() = 0;
    /// The list of the current location's rows.
    virtual ListView& Rows() = 0;
    /// The one way to move (history, aliases, listing).
    virtual void GotoFolder(const std::string& location) = 0;
    /// Refills the list of the current location.
    virtual void UpdateFolder() = 0;
    /// Refills the category strip (a favourite came or went).
    virtual void BuildSidebar() = 0;
    /// What a double click on the selected row does.
    virtual void OpenSelected() = 0;
    /// Whether the commands speak German whatever the host's language.
    virtual bool GermanOnly() const { return false; }
};

} // namespace fw
