#pragma once
// The category strip of the choosers: desktop, removable drives, favourites,
// the request's own categories (or "Vorgabe"), the application's folders,
// workstation and network; each category's tag is the location it leads to.

#include "host/DialogContext.h"

#include <vector>

namespace fw {

class ChooserFavorites;
class LocationModel;
class ctl_Steps;

/// The folder chooser's strip begins with the favourites, has no removable
/// drives and speaks German only.
enum class SidebarKind { FileChooser, FolderChooser };

void BuildSidebar(ctl_Steps& strip, const LocationModel& places, const ChooserFavorites& favourites,
                  const std::vector<CategoryRow>& ownCategories,
                  SidebarKind kind = SidebarKind::FileChooser);

} // namespace fw
