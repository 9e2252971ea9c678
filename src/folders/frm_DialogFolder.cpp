#include "folders/frm_DialogFolder.h"

#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Executor.h"
#include "controls/ctl_Frame.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_ReEvent.h"
#include "controls/ctl_Steps.h"
#include "filechooser/ChooserSidebar.h"
#include "filechooser/FileDialogLayout.h"
#include "filechooser/FolderLister.h"
#include "forms/ImageCombo.h"
#include "forms/ListView.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"
#include "resources/SharedImages.h"

#include <QPalette>
#include <QWidget>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kClientWidth = 700;
constexpr int kClientHeight = 480;
constexpr int kStripWidth = 140;
constexpr int kRowHeight = 24;
constexpr int kLabelWidth = 110;
constexpr int kToolButton = 36; // room for a 20 pixel icon in the button face
constexpr int kGap = 5;

const char* const kTitle = "Ordner wählen";
const char* const kFormIcon = "Ico\\16\\Computer\\Folders\\Open.ico";
} // namespace

frm_DialogFolder::frm_DialogFolder() : Form(QStringLiteral("frm_DialogFolder"))
{
    buildControls();
    wireEvents();
}

frm_DialogFolder::~frm_DialogFolder() = default;

ListView& frm_DialogFolder::Rows()
{
    return *lst_Files;
}

void frm_DialogFolder::buildControls()
{
    window()->resize(kClientWidth, kClientHeight);
    SetCaption(QString::fromUtf8(kTitle));

    bar_Buttons = Add<ctl_CmdBar>(QStringLiteral("bar_Buttons"));
    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");
    bar_Buttons->AddButton(QStringLiteral("HELP"), QStringLiteral("&Hilfe"),
                           signs + QStringLiteral("Help.ico"), QStringLiteral("DIALOG.HELP();"));
    bar_Buttons->AddButton(QStringLiteral("OK"), QStringLiteral("&OK"),
                           signs + QStringLiteral("OK.ico"), QStringLiteral("DIALOG.OK();"));
    bar_Buttons->AddButton(QStringLiteral("ABORT"), QStringLiteral("&Abbruch"),
                           signs + QStringLiteral("Abort.ico"), QStringLiteral("DIALOG.ABORT();"));

    cat_Folder = Add<ctl_Steps>(QStringLiteral("cat_Folder"));
    cat_Folder->SetWidth(ToTwips(kStripWidth));
    buildFolderFrame();

    exe_Commands = Add<ctl_Executor>(QStringLiteral("ctl_Executor"));
    evt_Deferred = Add<ctl_ReEvent>(QStringLiteral("ctl_ReEvent"));

    m_lister = std::make_unique<FolderLister>(
        m_places, m_favourites,
        FolderLister::Controls{*this, *lst_Files, *lst_Folder, nullptr, nullptr, nullptr});
    m_lister->FoldersOnly = true;
    m_lister->GermanOnly = true;
}

void frm_DialogFolder::buildFolderFrame()
{
    frm_Folder = Add<ctl_Frame>(QStringLiteral("frm_Folder"));
    frm_Folder->SetCaption(QStringLiteral("Verfügbare Ordner"));
    frm_Folder->SetIconPath(QStringLiteral("Ico\\20\\Computer\\Folders\\Open.ico"));
    frm_Folder->Move(ToTwips(kStripWidth + kGap), ToTwips(kGap));
    QWidget* inside = frm_Folder->container();
    const int row = frm_Folder->InsideTop();

    Label1 = Add<Label>(QStringLiteral("Label1"), inside);
    Label1->SetCaption(QStringLiteral("Gewählter Ordner:"));
    Label1->Move(ToTwips(2 * kGap), row + ToTwips(4), ToTwips(kLabelWidth),
                 ToTwips(kRowHeight - 4));
    lst_Folder = Add<ImageCombo>(QStringLiteral("lst_Folder"), inside);
    lst_Folder->Move(ToTwips(3 * kGap + kLabelWidth), row, ToTwips(240), ToTwips(kRowHeight));

    struct ToolButton {
        ctl_Button** slot;
        const char* name;
        const char* icon;
        const char* tip;
    };
    const ToolButton buttons[] = {
        {&but_Previous, "but_Previous", "Ico\\16\\Computer\\Signs\\Previous.ico", "Zurück"},
        {&but_NavNext, "but_NavNext", "Ico\\16\\Computer\\Signs\\Next.ico", ""},
        {&but_FolderUp, "but_FolderUp",
         "Ico\\16\\Computer\\Folders\\Generic.ico#ico\\20\\abstract\\arrows\\black compact up.ico",
         "Eine Ebene höher"},
        {&but_FavoriteAdd, "but_FavoriteAdd",
         "Ico\\16\\Computer\\Signs\\Favorite.ico#ico\\16\\overlay\\new.ico",
         "Diesen Ordner als Favoriten hinzufügen"},
        {&but_Tool, "but_Tool", "Ico\\20\\Tools\\Generic.ico", "Werkzeuge (Neuer Ordner...)"},
        {&but_View, "but_View", "Ico\\16\\Computer\\Windows\\Program Group.ico", "Ansicht ändern"},
    };
    // The holder has 5 pixels to spare, which Form_Load takes off.
    frm_Buttons = Add<ctl_Pannel>(QStringLiteral("frm_Buttons"), inside);
    frm_Buttons->Move(0, row, ToTwips(int(std::size(buttons)) * kToolButton + 5),
                      ToTwips(kRowHeight + 2));
    int left = 0;
    for (const ToolButton& b : buttons) {
        *b.slot = Add<ctl_Button>(QString::fromLatin1(b.name), frm_Buttons->container());
        (*b.slot)->SetIconPath(QString::fromLatin1(b.icon));
        (*b.slot)->SetToolTipText(QString::fromUtf8(b.tip));
        (*b.slot)->Move(left, 0, ToTwips(kToolButton - 2), ToTwips(kRowHeight + 2));
        left += ToTwips(kToolButton);
    }

    lst_Files = Add<ListView>(QStringLiteral("lst_Files"), inside);
    lst_Files->Move(ToTwips(2 * kGap), row + ToTwips(kRowHeight + 2 * kGap), ToTwips(400),
                    ToTwips(300));
}

void frm_DialogFolder::wireEvents()
{
    bar_Buttons->Script = [this](const QString& script) { exe_Commands->Execute(script); };
    exe_Commands->Script = [this](const QString& script) { runScript(script); };
    evt_Deferred->Event = [this](const QString& name) { raiseDeferred(name); };
    m_lister->NotReady = [this] { hGotoFolder("WORKSTATION:\\", false); };

    cat_Folder->StepClick = [this](int index) {
        if (index > 0)
            hGotoFolder(us(cat_Folder->Tag(index)), true);
    };
    lst_Folder->Click = [this] {
        if (ComboItem* item = lst_Folder->SelectedItem())
            hGotoFolder(PlaceOfComboKey(item->Key(), m_places.CurrentPath), false);
    };
    const auto upOnBackspace = [this](int& keyCode, int) {
        if (keyCode == 8)
            goUp();
    };
    lst_Folder->KeyDown = upOnBackspace;
    lst_Files->KeyDown = upOnBackspace;
    lst_Files->GotFocus = [this] { m_listHasFocus = true; };
    lst_Files->LostFocus = [this] { m_listHasFocus = false; };
    lst_Files->DblClick = [this] { OpenSelected(); };
    lst_Files->DisplayText = [](const QString& text) {
        try {
            return QString::fromStdString(GetCoreDevText().Paths().DisplayName(text.toStdString()));
        } catch (const std::exception&) {
            return text;
        }
    };
    lst_Files->MouseDown = [this](int button, int, float x, float y) {
        ChooserRowMouse::Down(*lst_Files, m_commands, button, x, y);
    };
    lst_Files->MouseMove = [this](int, int, float x, float y) {
        m_rowMouse.Move(*lst_Files, x, y);
    };

    but_Previous->Click = [this] { hGotoFolder("PREVIOUS:\\", false); };
    but_NavNext->Click = [this] { hGotoFolder("NEXT:\\", false); };
    but_FolderUp->Click = [this] { goUp(); };
    but_FavoriteAdd->Click = [this] { m_commands.AddFavorite(); };
    but_View->Click = [this] { ChooseChooserView(*lst_Files, true); };
    but_Tool->Click = [this] { m_commands.ToolsMenu(false); };
}

bool frm_DialogFolder::hasPreview() const
{
    return Context && Context->EventLink.PreviewSink != nullptr;
}

void frm_DialogFolder::Form_Load()
{
    DialogContext& ctx = context();
    Resume([&] { m_favourites.Load(); });
    frm_Buttons->SetWidth(frm_Buttons->Width() - ToTwips(5));
    Resume([&] {
        lst_Files->SetMouseIcon(ToImage(GetCoreDevPictures().LoadPicture("Cur\\Hand Up.ico")));
    });
    // Unchecked on purpose: the list shows values beyond 3 as the list view.
    lst_Files->SetView(SavedChooserView());

    // The form opens taller than the least height Form_Resize allows.
    if (Width() < MinimumFileDialogWidth(hasPreview()))
        SetWidth(MinimumFileDialogWidth(hasPreview()));
    if (Height() < OpeningFileDialogHeight())
        SetHeight(OpeningFileDialogHeight());
    m_loading = true;
    if (ctx.FormSetup)
        Resume([&] { ctx.FormSetup->Apply(*this, -1); });
    m_loading = false;
    if (!ctx.EventLink.EventSink)
        bar_Buttons->SetHelpVisible(false);

    SetCaption(qs(ctx.Request.Title.empty() ? std::string(kTitle) : ctx.Request.Title));
    SetChooserIcon(*this, ctx.Request, kFormIcon);
    ctx.Request.Result = ResultAbort;

    chooseStartFolder();
    BuildSidebar();
    Resume([&] {
        const QColor back = lst_Files->widget()->palette().color(QPalette::Base);
        FillSharedImages(std::uint32_t(back.blue()) << 16 | std::uint32_t(back.green()) << 8 |
                         std::uint32_t(back.red()));
    });
    m_places.CurrentPath = DesktopAsPlace(m_places.CurrentPath);
    hGotoFolder(m_places.CurrentPath, false);
    StringList& items = ctx.Items.ItemList;
    if (items.Count() >= 2 && items.Item(1).find_first_of("?*") != std::string::npos)
        items.Remove(1);
    Form_Resize();
}

void frm_DialogFolder::chooseStartFolder()
{
    const StringList& items = context().Items.ItemList;
    m_places.CurrentPath = items.Count() > 0 ? items.Item(1) : std::string();
    bool exists = false;
    Resume([&] {
        exists =
            !m_places.CurrentPath.empty() && GetCoreDevFiles().FolderExists(m_places.CurrentPath);
    });
    if (!exists)
        Resume([&] { m_places.CurrentPath = GetCoreDevSystem().Folders().DocumentsFolder(); });
    TakeApplicationFolders(m_places);
}

void frm_DialogFolder::BuildSidebar()
{
    Resume([&] {
        fw::BuildSidebar(*cat_Folder, m_places, m_favourites, context().Items.CategoryList,
                         SidebarKind::FolderChooser);
    });
}

void frm_DialogFolder::Form_Resize()
{
    if (m_loading)
        return;
    // Each correction brings the next resize, which lays out. The height
    // allowed here is below the one the form opens at, on purpose.
    if (Width() < MinimumFileDialogWidth(hasPreview())) {
        SetWidth(MinimumFileDialogWidth(hasPreview()));
        return;
    }
    if (Height() < MinimumFileDialogHeight()) {
        SetHeight(MinimumFileDialogHeight());
        return;
    }
    Resume([&] {
        const int padX = 5 * Screen::TwipsPerPixelX();
        const int padY = 5 * Screen::TwipsPerPixelY();
        const int body = ScaleHeight() - bar_Buttons->Height();
        cat_Folder->Move(0, 0, cat_Folder->Width(), body);
        frm_Folder->Move(cat_Folder->Width() + padX, frm_Folder->Top(),
                         ScaleWidth() - cat_Folder->Width() - 2 * padX,
                         body - frm_Folder->Top() - padY);
        frm_Buttons->SetLeft(frm_Folder->Width() - frm_Buttons->Width() - 2 * padX);
        lst_Folder->SetWidth(frm_Buttons->Left() - lst_Folder->Left() - padX);
        lst_Files->Move(2 * padX, lst_Files->Top(), frm_Folder->Width() - 4 * padX,
                        frm_Folder->Height() - lst_Files->Top() - 3 * padY);
        FitChooserColumns(*lst_Files);
    });
}

void frm_DialogFolder::hGotoFolder(const std::string& path, bool fromCategory)
{
    if (!m_places.Enter(path))
        return;
    // A category stays lit only while it was the way here.
    if (!fromCategory)
        Resume([&] { cat_Folder->ClearSelection(); });
    UpdateFolder();
    lst_Files->SetFocus();
}

void frm_DialogFolder::UpdateFolder()
{
    if (!m_places.CurrentPath.empty())
        Resume([&] { m_lister->Update(); });
}

void frm_DialogFolder::goUp()
{
    if (!m_places.UpPath.empty())
        hGotoFolder(m_places.UpPath, false);
}

// A place row has no tag and leads to its key.
void frm_DialogFolder::OpenSelected()
{
    if (ListItem* row = lst_Files->SelectedItem())
        hGotoFolder(us(row->Tag().isEmpty() ? row->Key() : row->Tag()), false);
}

void frm_DialogFolder::runScript(const QString& script)
{
    DialogContext& ctx = context();
    const QString command = script.toUpper();
    if (command == u"DIALOG.OK();") {
        // Return in the list opens the row, as the double click does.
        if (m_listHasFocus) {
            OpenSelected();
            return;
        }
        ctx.Items.ItemList.Clear();
        ctx.Items.ItemList.Add(m_places.CurrentPath);
        ctx.Request.Result = ResultOk;
        Unload();
    } else if (command == u"DIALOG.ABORT();") {
        ctx.Request.Result = ResultAbort;
        Unload();
    } else if (command == u"DIALOG.HELP();") {
        if (ctx.EventLink.EventSink)
            evt_Deferred->Raise(QStringLiteral("HELP"));
    }
}

void frm_DialogFolder::raiseDeferred(const QString& name)
{
    const DialogEventLink& link = context().EventLink;
    if (name == u"HELP" && link.EventSink)
        Resume([&] { link.EventSink->Notify(*this, "FILE.HELP"); });
}

} // namespace fw
