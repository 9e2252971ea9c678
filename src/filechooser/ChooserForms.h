#pragma once
// What the file chooser and the folder chooser forms do alike with controls
// of their own: the list's view menu and saved view, the detail columns, the
// hand over rows and the right click, the place combo's keys, the start
// place and the folders of the application.

#include <QString>
#include <string>

namespace fw {

struct DialogRequest;
class ChooserCommands;
class Form;
class ListView;
class LocationModel;

/// The list view last chosen in any chooser (2, the list, at first).
int SavedChooserView();
/// The view button's menu: the four views; the choice (or the view as it
/// stands) is saved at once and the detail columns are fitted.
void ChooseChooserView(ListView& rows, bool germanOnly);
/// In the details view, the columns' share of the width; the sort key's
/// column stays hidden.
void FitChooserColumns(ListView& rows);

/// The place a combo item leads to: its key, or, for an ancestor of the
/// current folder, that folder's own spelling (the keys are in capitals).
std::string PlaceOfComboKey(const QString& key, const std::string& currentPath);
/// Location texts compared as the choosers compare places: trimmed, in capitals.
std::string UpperTrimmed(const std::string& text);
/// "DESKTOP:\" for the desktop folder, with or without its trailing "\";
/// any other start place as it is.
std::string DesktopAsPlace(const std::string& path);
/// The form's icon: the request's own for the default path, else the picture
/// of that path.
void SetChooserIcon(Form& form, const DialogRequest& request, const std::string& defaultPath);
/// After the start place is set: its drive, the "Vorgabe" place and the
/// application's folders (the documents folder standing in for the user's).
void TakeApplicationFolders(LocationModel& places);

/// The mouse over a chooser's rows: the hand over a row, and the tools menu
/// (on the row or for the place) from the right button.
class ChooserRowMouse {
  public:
    void Move(ListView& rows, float x, float y);
    static void Down(ListView& rows, ChooserCommands& commands, int button, float x, float y);

  private:
    int m_pointer = 0;
};

} // namespace fw
