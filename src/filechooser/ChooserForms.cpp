#include "filechooser/ChooserForms.h"

#include "filechooser/ChooserCommands.h"
#include "filechooser/ChooserLanguage.h"
#include "filechooser/LocationModel.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/Text.h"
#include "host/DialogContext.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QStringList>

namespace fw {

namespace {
const char* const kViewKey = "Software\\Valdrenix\\Core\\Settings\\FolderView";
} // namespace

int SavedChooserView()
{
    int view = 2;
    Resume([&] { view = GetCoreDevRegistry().Strings().ReadNumber(HiveCurrentUser, kViewKey, 2); });
    return view;
}

void ChooseChooserView(ListView& rows, bool germanOnly)
{
    struct ViewRow {
        const char* german;
        const char* english;
        const char* key;
    };
    static const ViewRow views[] = {{"Große Symbole", "Large symbols", "VIEW.LARGE"},
                                    {"Kleine Symbole", "Small symbols", "VIEW.SMALL"},
                                    {"Liste", "List view", "VIEW.LIST"},
                                    {"Details", "Details", "VIEW.DETAILS"}};
    std::string chosen;
    Resume([&] {
        auto menu = GetCoreDevMenus().NewPopupMenu();
        std::vector<MenuEntry> entries;
        for (const ViewRow& row : views)
            entries.push_back(
                {ChooserText(germanOnly, row.german, row.english) + "|" + row.key + "|-1|-1|0|",
                 nullptr});
        menu->AddRows(entries);
        chosen = menu->Popup();
    });
    for (int view = 0; view < 4; ++view)
        if (chosen == views[view].key)
            rows.SetView(view);
    Resume(
        [&] { GetCoreDevRegistry().Writer().WriteNumber(HiveCurrentUser, kViewKey, rows.View()); });
    FitChooserColumns(rows);
}

void FitChooserColumns(ListView& rows)
{
    if (rows.View() != lvwReport)
        return;
    Resume([&] { GetCoreDevControls().ListViews().SetColumnWidths(rows, "40,20,20,20,0"); });
}

// Each item of the combo's folder part is an ancestor of the current folder,
// whose own spelling a case-sensitive file system needs.
std::string PlaceOfComboKey(const QString& key, const std::string& currentPath)
{
    const QString current = qs(currentPath);
    const QStringList keyParts = key.split(u'\\');
    const QStringList currentParts = current.split(u'\\');
    if (keyParts.size() > currentParts.size())
        return us(key);
    for (int i = 0; i < keyParts.size(); ++i)
        if (!keyParts[i].isEmpty() &&
            keyParts[i].compare(currentParts[i].toUpper(), Qt::CaseSensitive) != 0)
            return us(key);
    return us(QStringList(currentParts.mid(0, keyParts.size() - 1)).join(u'\\') + u'\\');
}

std::string UpperTrimmed(const std::string& text)
{
    return us(qs(text).trimmed().toUpper());
}

std::string DesktopAsPlace(const std::string& path)
{
    std::string place = path;
    Resume([&] {
        const std::string desktop = GetCoreDevSystem().Folders().DesktopFolder();
        if (UpperTrimmed(path) == UpperTrimmed(desktop) ||
            UpperTrimmed(path) == UpperTrimmed(desktop + "\\"))
            place = "DESKTOP:\\";
    });
    return place;
}

void SetChooserIcon(Form& form, const DialogRequest& request, const std::string& defaultPath)
{
    Resume([&] {
        const PicturePtr picture = request.IconFor ? request.IconFor(defaultPath)
                                                   : GetCoreDevPictures().LoadPicture(defaultPath);
        if (picture)
            form.SetIcon(ToImage(picture));
    });
}

void TakeApplicationFolders(LocationModel& places)
{
    Resume([&] { places.CurrentDrive = GetCoreDevText().Paths().DrivePart(places.CurrentPath); });
    places.DefaultPath = places.CurrentPath;
    Resume([&] {
        ApplicationFolders& app = GetCoreDevApp().Folders();
        places.SharedPath = app.SharedFolder();
        places.UserPath = app.UserFolder();
        places.SamplesPath = app.SamplesFolder();
    });
    if (places.UserPath.empty())
        Resume([&] { places.UserPath = GetCoreDevSystem().Folders().DocumentsFolder(); });
}

void ChooserRowMouse::Move(ListView& rows, float x, float y)
{
    const int wanted = rows.HitTest(x, y) ? Screen::Custom : Screen::Default;
    if (wanted == m_pointer)
        return;
    m_pointer = wanted;
    rows.SetMousePointer(wanted);
}

void ChooserRowMouse::Down(ListView& rows, ChooserCommands& commands, int button, float x, float y)
{
    if (button != 2)
        return;
    ListItem* row = rows.HitTest(x, y);
    rows.SetSelectedItem(row);
    commands.ToolsMenu(row != nullptr);
}

} // namespace fw
