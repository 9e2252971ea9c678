#include "resources/frm_DialogFileResource.h"

#include "controls/Theme.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Executor.h"
#include "controls/ctl_Frame.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_TitleBar.h"
#include "forms/ImageList.h"
#include "forms/ListView.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/Text.h"
#include "forms/TreeView.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QWidget>

namespace fw {

namespace {

// Design metrics, in pixels.
constexpr int kClientWidth = 640;
constexpr int kToolTop = 8;
constexpr int kToolHeight = 30;
constexpr int kBodyTop = kToolTop + kToolHeight + 6;
constexpr int kBodyHeight = 340;
constexpr int kTreeWidth = 210;
constexpr int kInnerPad = 6;

const char* const kTitle = "Ressource auswählen";
const char* const kDefaultFolder = "Ico\\20\\Computer\\Signs\\";
const char* const kFolderIcon = "Ico\\16\\Computer\\Folders\\Generic.ico";
const char* const kTypeIconFolder = "Ico\\32\\Computer\\Files\\";
const QString kTreeImage = QStringLiteral("FOLDER");
const QString kDummyImage = QStringLiteral("@DUMMY@");
const QString kUnknownImage = QStringLiteral("@UKN@");

struct FilterRow {
    const char* caption; ///< "-" for a separator
    const char* key;
    const char* icon;
    const char* pattern; ///< empty: asked from the user
};

const FilterRow kFilters[] = {
    {"Alle", "FILTER.ALL", "Ico\\32\\Computer\\Files\\New.ico", "*.*"},
    {"-", "", "", ""},
    {"Audio", "FILTER.WAV", "Ico\\32\\Computer\\Files\\wav.ico", "*.wav"},
    {"Bilder", "FILTER.PIC", "Ico\\32\\Computer\\Files\\bmp.ico", "*.bmp;*.ico;*.gif;*.jpg"},
    {"Binärdaten", "FILTER.BIN", "Ico\\32\\Computer\\Files\\bin.ico", "*.bin;*.exe;*.com"},
    {"Einstellungen", "FILTER.INI", "Ico\\32\\Computer\\Files\\ini.ico", "*.ini"},
    {"Filme", "FILTER.AVI", "Ico\\32\\Computer\\Files\\avi.ico", "*.avi"},
    {"Hypertext", "FILTER.KHT", "Ico\\32\\Computer\\Files\\kht.ico", "*.kht"},
    {"Icons", "FILTER.ICO", "Ico\\32\\Computer\\Files\\bmp.ico", "*.ico"},
    {"Informationen", "FILTER.INF", "Ico\\32\\Computer\\Files\\inf.ico", "*.inf"},
    {"Pakete", "FILTER.PAK", "Ico\\32\\Computer\\Files\\pak.ico", "*.pak;*.kvt-arc"},
    {"Quellcode", "FILTER.C", "Ico\\32\\Computer\\Files\\c.ico", "*.c;*.cpp;*.h;*.hpp"},
    {"Texte", "FILTER.TXT", "Ico\\32\\Computer\\Files\\txt.ico", "*.txt;*.rtf;*.doc"},
    {"-", "", "", ""},
    {"Andere", "FILTER.OWN", "Ico\\32\\Computer\\Signs\\About.ico", ""},
};

struct ViewRow {
    const char* key;
    int view;
};
const ViewRow kViews[] = {{"VIEW.LARGE", lvwIcon},
                          {"VIEW.SMALL", lvwSmallIcon},
                          {"VIEW.LIST", lvwList},
                          {"VIEW.DETAILS", lvwReport}};

std::string menuRow(const std::string& caption, const std::string& key, const std::string& icon)
{
    return caption + "|" + key + "|-1|-1|0|" + icon;
}

QString capitalised(const QString& text)
{
    if (text.size() > 1)
        return text.left(1).toUpper() + text.mid(1).toLower();
    return text.toUpper();
}

// Folders come from the picture service with or without the closing
// backslash; the tree's keys and the places carry it.
QString withBackslash(const QString& path)
{
    return path.isEmpty() || path.endsWith(u'\\') ? path : path + u'\\';
}

QString lastComponent(const QString& path)
{
    QString trimmed = path;
    while (trimmed.endsWith(u'\\'))
        trimmed.chop(1);
    return trimmed.mid(trimmed.lastIndexOf(u'\\') + 1);
}

QImage picture(const QString& path)
{
    return ToImage(GetCoreDevPictures().LoadPicture(us(path), 0, -1, -1));
}

QString fileName(const QString& entry)
{
    return qs(GetCoreDevText().Paths().FileName(us(entry)));
}

QString extension(const QString& entry)
{
    return qs(GetCoreDevText().Paths().Extension(us(entry)));
}

bool startsWithNoCase(const QString& text, const char* prefix)
{
    return text.startsWith(QLatin1String(prefix), Qt::CaseInsensitive);
}

} // namespace

frm_DialogFileResource::frm_DialogFileResource() : Form(QStringLiteral("frm_DialogFileResource"))
{
    buildControls();
    buildLists();
    wireEvents();
}

frm_DialogFileResource::~frm_DialogFileResource() = default;

void frm_DialogFileResource::buildControls()
{
    SetCaption(QString::fromUtf8(kTitle));
    const int bodyWidth = kClientWidth - 2 * theme::Gap;

    ctl_Pannel3 = Add<ctl_Pannel>(QStringLiteral("ctl_Pannel3"));
    ctl_Pannel3->Move(ToTwips(theme::Gap), ToTwips(kToolTop), ToTwips(bodyWidth),
                      ToTwips(kToolHeight));
    struct ToolButton {
        ctl_Button** slot;
        const char* name;
        const char* caption;
        const char* icon;
        int width;
    };
    const ToolButton buttons[] = {
        {&but_Favorit, "but_Favorit", "&Favoriten", "Ico\\16\\Computer\\Signs\\Name.ico", 120},
        {&but_Filter, "but_Filter", "Filter", "Ico\\16\\Computer\\Signs\\Filter.ico", 100},
        {&but_View, "but_View", "Ansicht", "Ico\\16\\Computer\\Signs\\Search.ico", 100},
    };
    int left = 0;
    for (const ToolButton& b : buttons) {
        *b.slot = Add<ctl_Button>(QString::fromLatin1(b.name), ctl_Pannel3->container());
        (*b.slot)->SetText(QString::fromUtf8(b.caption) + QStringLiteral(" \u25BE"));
        (*b.slot)->SetIconPath(QString::fromLatin1(b.icon));
        (*b.slot)->Move(ToTwips(left), 0, ToTwips(b.width), ToTwips(theme::ButtonHeight));
        left += b.width + kInnerPad;
    }

    ctl_Pannel4 = Add<ctl_Pannel>(QStringLiteral("ctl_Pannel4"));
    ctl_Pannel4->Move(ToTwips(theme::Gap), ToTwips(kBodyTop), ToTwips(bodyWidth),
                      ToTwips(kBodyHeight));
    // One frame per side, each a title strip over its control.
    const auto frame = [this](const char* name, int x, int width, const char* barName,
                              const char* caption, const char* icon, ctl_TitleBar*& bar) {
        auto* box = Add<ctl_Frame>(QString::fromLatin1(name), ctl_Pannel4->container());
        box->Move(ToTwips(x), 0, ToTwips(width), ToTwips(kBodyHeight));
        bar = Add<ctl_TitleBar>(QString::fromLatin1(barName), box->container());
        bar->SetCaption(QString::fromUtf8(caption));
        bar->SetIconPath(QString::fromLatin1(icon));
        bar->Move(ToTwips(kInnerPad), box->InsideTop(), ToTwips(width - 2 * kInnerPad),
                  ToTwips(ctl_TitleBar::PreferredHeight));
        return box;
    };
    ctl_Frame1 = frame("ctl_Frame1", 0, kTreeWidth, "ctl_TitleBar1", "Ordner",
                       "Ico\\16\\Computer\\Files\\New.ico", ctl_TitleBar1);
    ctl_Frame2 = frame("ctl_Frame2", kTreeWidth + kInnerPad, bodyWidth - kTreeWidth - kInnerPad,
                       "ctl_TitleBar2", "Dateien", kFolderIcon, ctl_TitleBar2);
    const auto placeBelow = [](Control& control, const ctl_TitleBar& bar, const ctl_Frame& box) {
        const int top = bar.Top() + bar.Height();
        control.Move(bar.Left(), top, bar.Width(), box.Height() - top - ToTwips(kInnerPad));
    };
    lst_Tree = Add<TreeView>(QStringLiteral("lst_Tree"), ctl_Frame1->container());
    placeBelow(*lst_Tree, *ctl_TitleBar1, *ctl_Frame1);
    lst_Files = Add<ListView>(QStringLiteral("lst_Files"), ctl_Frame2->container());
    placeBelow(*lst_Files, *ctl_TitleBar2, *ctl_Frame2);
    lst_Files->ColumnHeaders().Add(QStringLiteral("Name"));
    lst_Files->SetView(lvwIcon);

    ctl_Sidebar = Add<ctl_CmdBar>(QStringLiteral("ctl_Sidebar"));
    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");
    ctl_Sidebar->AddButton(QStringLiteral("OK"), QStringLiteral("&OK"),
                           signs + QStringLiteral("OK.ico"), QStringLiteral("DIALOG.OK();"));
    ctl_Sidebar->AddButton(QStringLiteral("ABORT"), QStringLiteral("&Abbruch"),
                           signs + QStringLiteral("Abort.ico"), QStringLiteral("DIALOG.ABORT();"));
    ctl_Sidebar->SetHelpVisible(false);
    exe_Commands = Add<ctl_Executor>(QStringLiteral("ctl_Executor"));

    window()->resize(kClientWidth, kBodyTop + kBodyHeight + theme::Gap + theme::CmdBarHeight);
}

void frm_DialogFileResource::buildLists()
{
    img_Tree = Add<ImageList>(QStringLiteral("img_Tree"));
    img_Files16 = Add<ImageList>(QStringLiteral("img_Files16"));
    img_Files32 = Add<ImageList>(QStringLiteral("img_Files32"));
    img_Files16->SetImageSize(16, 16);
    img_Files32->SetImageSize(32, 32);
}

void frm_DialogFileResource::wireEvents()
{
    lst_Tree->Expand = [this](TreeNode& node) {
        while (TreeNode* child = node.Child())
            lst_Tree->Nodes().Remove(*child);
        hBuildTree(node.Tag(), &node, 0);
    };
    lst_Tree->NodeClick = [this](TreeNode& node) {
        hShowFolder(node.Tag());
        node.SetExpanded(!node.Expanded());
    };
    lst_Files->DblClick = [this] {
        if (lst_Files->SelectedItem())
            sidebarKey(QStringLiteral("OK"));
    };
    but_Favorit->Click = [this] { dropDown(*but_Favorit, m_placesMenu); };
    but_Filter->Click = [this] { dropDown(*but_Filter, m_filterMenu); };
    but_View->Click = [this] { dropDown(*but_View, m_viewMenu); };
    exe_Commands->Script = [this](const QString& key) { runCommand(key); };
    ctl_Sidebar->Key = [this](const QString& key) { sidebarKey(key); };
}

QVariant frm_DialogFileResource::GetPublic(const QString& name) const
{
    const std::pair<const char*, const QString*> publics[] = {{"RootFolder", &RootFolder},
                                                              {"StartFolder", &StartFolder},
                                                              {"StartItem", &StartItem},
                                                              {"FilterText", &FilterText}};
    for (const auto& [publicName, value] : publics)
        if (name.compare(QLatin1String(publicName), Qt::CaseInsensitive) == 0)
            return *value;
    return Form::GetPublic(name);
}

bool frm_DialogFileResource::SetPublic(const QString& name, const QVariant& value)
{
    const std::pair<const char*, QString*> publics[] = {{"RootFolder", &RootFolder},
                                                        {"StartFolder", &StartFolder},
                                                        {"StartItem", &StartItem},
                                                        {"FilterText", &FilterText}};
    for (const auto& [publicName, slot] : publics) {
        if (name.compare(QLatin1String(publicName), Qt::CaseInsensitive) == 0) {
            *slot = value.toString();
            return true;
        }
    }
    return Form::SetPublic(name, value);
}

void frm_DialogFileResource::Form_Load()
{
    DialogContext& ctx = context();
    if (StartFolder.isEmpty())
        StartFolder = QString::fromLatin1(kDefaultFolder);
    if (FilterText.isEmpty())
        FilterText = QStringLiteral("*.*");
    // Anything that is not a list's text form reads as no places at all.
    Resume([&] {
        m_userFolders = StringList::FromText(
            GetCoreDevRegistry().Strings().ReadString(HiveCurrentUser, UserFoldersKey, "", 1000));
    });
    ctx.Request.Result = ResultNone;

    Resume([&] { img_Tree->Add(kTreeImage, picture(QString::fromLatin1(kFolderIcon))); });
    lst_Tree->SetImageList(img_Tree);
    const auto fitColumn = [this] {
        Resume([&] {
            lst_Files->ColumnHeaders().Item(1).SetWidth(lst_Files->Width() -
                                                        26 * Screen::TwipsPerPixelX());
        });
    };
    fitColumn();
    if (!ctx.Request.Title.empty())
        SetCaption(qs(ctx.Request.Title));
    hBuildTree(RootFolder, nullptr, 0);
    fitColumn();

    hSplitFilter();
    hGoto(StartFolder);
    hSelectItem(StartItem);
    hBuildPlacesMenu();
    buildFilterMenu();
    buildViewMenu();
    // The list first, so that Return answers OK rather than opening a drop-down.
    lst_Files->SetFocus();
}

void frm_DialogFileResource::Form_Unload(bool&)
{
    Resume([&] {
        GetCoreDevRegistry().Writer().WriteString(HiveCurrentUser, UserFoldersKey,
                                                  m_userFolders.ToText());
    });
}

void frm_DialogFileResource::hBuildTree(const QString& path, TreeNode* parent, int depth)
{
    if (depth >= 2)
        return;
    StringList folders;
    Resume([&] { folders = GetCoreDevPictures().ListResources(us(path), true, false, true); });
    for (const std::string& found : folders.items()) {
        const QString entry = withBackslash(qs(found));
        const QString name = lastComponent(entry);
        if (name.startsWith(u'_')) // folders of the store's own use stay hidden
            continue;
        TreeNode* node = nullptr;
        Resume([&] {
            node = &lst_Tree->Nodes().Add(parent, tvwChild, entry.toUpper(), capitalised(name),
                                          kTreeImage);
            node->SetTag(entry);
        });
        if (node)
            hBuildTree(entry, node, depth + 1);
    }
}

void frm_DialogFileResource::hGoto(const QString& path)
{
    QString remainder = path.toUpper();
    QString accumulated;
    TreeNode* node = nullptr;
    // A component the tree lacks expands nothing; the walk goes on regardless.
    while (!remainder.isEmpty()) {
        const qsizetype slash = remainder.indexOf(u'\\');
        accumulated += (slash < 0 ? remainder : remainder.left(slash)) + u'\\';
        remainder = slash < 0 ? QString() : remainder.mid(slash + 1);
        node = lst_Tree->Nodes().Find(accumulated);
        if (node && !node->Expanded())
            node->SetExpanded(true);
    }
    if (node) {
        lst_Tree->SetSelectedItem(node);
        node->EnsureVisible();
    }
    // The node's own spelling, so that the chosen path reads as the store has it.
    hShowFolder(node ? node->Tag() : accumulated);
}

void frm_DialogFileResource::hShowFolder(const QString& path)
{
    StartFolder = path;
    lst_Files->ListItems().Clear();
    lst_Files->SetIcons(nullptr);
    lst_Files->SetSmallIcons(nullptr);
    img_Files16->Clear();
    img_Files32->Clear();

    // Neither list may be empty when it is bound.
    Resume([&] {
        img_Files16->Add(kDummyImage,
                         picture(QStringLiteral("Ico\\16\\Computer\\Folders\\generic.ico")));
    });
    Resume([&] {
        img_Files32->Add(kDummyImage,
                         picture(QStringLiteral("Ico\\32\\Computer\\Folders\\generic.ico")));
    });
    hFillTypeIcons();
    Resume([&] {
        const QImage unknown = picture(QStringLiteral("Ico\\32\\Computer\\Signs\\Critical.ico"));
        img_Files16->Add(kUnknownImage, unknown);
        img_Files32->Add(kUnknownImage, unknown);
    });

    StringList entries;
    Resume([&] { entries = GetCoreDevPictures().ListResources(us(path), false, false, true); });
    lst_Files->SetIcons(img_Files32);
    lst_Files->SetSmallIcons(img_Files16);
    int number = 0;
    for (const std::string& entry : entries.items()) {
        ++number;
        if (hMatchesFilter(qs(entry)))
            hAddRow(qs(entry), number);
    }
}

// The type icon table: one picture per file type, keyed "." and the type.
void frm_DialogFileResource::hFillTypeIcons()
{
    StringList types;
    Resume(
        [&] { types = GetCoreDevPictures().ListResources(kTypeIconFolder, false, false, true); });
    for (const std::string& found : types.items()) {
        Resume([&] {
            const QString entry = qs(found);
            const QString name = fileName(entry);
            const QString type = extension(entry);
            const QString key =
                u'.' + (type.isEmpty() ? name : name.left(name.size() - type.size() - 1)).toUpper();
            const QImage image = picture(entry);
            img_Files16->Add(key, image);
            img_Files32->Add(key, image);
        });
    }
}

void frm_DialogFileResource::hAddRow(const QString& entry, int number)
{
    ListItem* row = nullptr;
    Resume([&] {
        row = &lst_Files->ListItems().Add(entry.toUpper(), capitalised(fileName(entry)));
        row->SetTag(entry);
    });
    if (!row)
        return;
    QString type;
    Resume([&] { type = extension(entry).toUpper(); });
    const bool pictured = Resume([&] {
        QString key;
        if (type == u"ICO") {
            key = QStringLiteral("k%1").arg(number);
            img_Files16->Add(key, picture(entry));
            img_Files32->Add(key, picture(entry));
        } else {
            key = u'.' + type;
        }
        row->SetIcon(key);
        row->SetSmallIcon(key);
    });
    if (!pictured) {
        Resume([&] {
            row->SetIcon(kUnknownImage);
            row->SetSmallIcon(kUnknownImage);
        });
    }
}

void frm_DialogFileResource::hSplitFilter()
{
    m_patterns.Clear();
    for (const QString& pattern : FilterText.split(u';'))
        m_patterns.Add(us(pattern));
}

void frm_DialogFileResource::hSetFilter(const QString& text)
{
    FilterText = text;
    hSplitFilter();
    hShowFolder(StartFolder);
}

bool frm_DialogFileResource::hMatchesFilter(const QString& entry)
{
    bool matches = false;
    Resume([&] {
        const std::string name = us(fileName(entry));
        for (const std::string& pattern : m_patterns.items()) {
            if (!pattern.empty() && GetCoreDevText().Words().Like(name, pattern)) {
                matches = true;
                return;
            }
        }
    });
    return matches;
}

void frm_DialogFileResource::hSelectItem(const QString& name)
{
    if (name.isEmpty())
        return;
    if (ListItem* row = lst_Files->ListItems().Find(name.toUpper())) {
        lst_Files->SetSelectedItem(row);
        row->EnsureVisible();
    }
}

void frm_DialogFileResource::hBuildPlacesMenu()
{
    Resume([&] {
        auto own = GetCoreDevMenus().NewPopupMenu();
        auto removable = GetCoreDevMenus().NewPopupMenu();
        for (const std::string& folder : m_userFolders.items()) {
            own->AddItem(kFolderIcon, folder, "GOTO." + folder);
            removable->AddItem(kFolderIcon, folder, "EDIT.DELETE." + folder);
        }
        const std::string signs = "Ico\\16\\Computer\\Signs\\";
        auto menu = GetCoreDevMenus().NewPopupMenu();
        menu->AddRows({{menuRow("Ressourcen", "GOTO.ROOT", kFolderIcon), nullptr},
                       {menuRow("Icons", "GOTO.ICONS", kFolderIcon), nullptr},
                       {menuRow("Symbole", "GOTO.SIGNS", kFolderIcon), nullptr},
                       {"-", nullptr},
                       {menuRow("Eigene", "GOTO.OWN", kFolderIcon), own},
                       {"-", nullptr},
                       {menuRow("Hinzufügen", "EDIT.ADD", signs + "New.ico"), nullptr},
                       {menuRow("Löschen", "EDIT.DELETE", signs + "Delete.ico"), removable}});
        m_placesMenu = menu;
    });
}

void frm_DialogFileResource::buildFilterMenu()
{
    Resume([&] {
        std::vector<MenuEntry> rows;
        for (const FilterRow& row : kFilters)
            rows.push_back({std::string(row.caption) == "-"
                                ? std::string("-")
                                : menuRow(row.caption, row.key, row.icon),
                            nullptr});
        auto menu = GetCoreDevMenus().NewPopupMenu();
        menu->AddRows(rows);
        m_filterMenu = menu;
    });
}

void frm_DialogFileResource::buildViewMenu()
{
    Resume([&] {
        auto menu = GetCoreDevMenus().NewPopupMenu();
        menu->AddRows({{"Große Symbole|VIEW.LARGE", nullptr},
                       {"Kleine Symbole|VIEW.SMALL", nullptr},
                       {"Details|VIEW.DETAILS", nullptr},
                       {"Liste|VIEW.LIST", nullptr}});
        m_viewMenu = menu;
    });
}

// The menu opens below its button; the chosen key goes to the executor.
void frm_DialogFileResource::dropDown(ctl_Button& button, const std::shared_ptr<PopupMenu>& menu)
{
    if (!menu)
        return;
    std::string chosen;
    Resume([&] {
        const QPoint below = button.widget()->mapToGlobal(QPoint(0, button.widget()->height()));
        chosen = menu->Popup(below.x(), below.y());
    });
    if (!chosen.empty())
        exe_Commands->Execute(qs(chosen));
}

void frm_DialogFileResource::runCommand(const QString& key)
{
    const QString command = key.toUpper();
    const auto rest = [&](const char* prefix) { return key.mid(int(qstrlen(prefix))); };
    if (command == u"GOTO.ROOT" || command == u"GOTO.ICONS") {
        hGoto(QStringLiteral("Ico\\"));
    } else if (command == u"GOTO.SIGNS") {
        hGoto(QStringLiteral("Ico\\20\\Computer\\Signs\\"));
    } else if (command == u"GOTO.OWN" || command == u"EDIT.DELETE") {
        // the heads of the submenus
    } else if (command == u"EDIT.ADD") {
        if (!m_userFolders.Contains(us(StartFolder)))
            m_userFolders.Add(us(StartFolder));
        hBuildPlacesMenu();
    } else if (command == u"FILTER.OWN") {
        std::string answer;
        Resume([&] {
            answer = GetCoreDevMessages().AskText(
                "Geben Sie den gewünschten Suchfilter ein:", "Suchfilter", us(FilterText));
        });
        if (!answer.empty())
            hSetFilter(qs(answer));
    } else if (command.startsWith(QLatin1String("FILTER."))) {
        for (const FilterRow& row : kFilters)
            if (command == QLatin1String(row.key) && row.pattern[0] != '\0')
                hSetFilter(QString::fromLatin1(row.pattern));
    } else if (command.startsWith(QLatin1String("VIEW."))) {
        for (const ViewRow& row : kViews)
            if (command == QLatin1String(row.key))
                lst_Files->SetView(row.view);
    } else if (startsWithNoCase(command, "EDIT.DELETE.")) {
        m_userFolders.RemoveValue(us(rest("EDIT.DELETE.")));
        hBuildPlacesMenu();
    } else if (startsWithNoCase(command, "GOTO.")) {
        hGoto(rest("GOTO."));
    }
}

void frm_DialogFileResource::sidebarKey(const QString& key)
{
    DialogContext& ctx = context();
    const QString command = key.toUpper();
    if (command == u"OK") {
        const ListItem* row = lst_Files->SelectedItem();
        if (!row) {
            Resume([&] {
                GetCoreDevMessages().ShowInfo("Sie müssen erst eine Ressource auswählen, bevor "
                                              "Sie auf OK klicken können!",
                                              "");
            });
            return;
        }
        ctx.Request.Result = ResultOk;
        ctx.Items.SingleValue = us(row->Tag());
        Unload();
    } else if (command == u"ABORT") {
        ctx.Request.Result = ResultAbort;
        Unload();
    }
}

} // namespace fw
