#include "filechooser/frm_DialogFile.h"

#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Executor.h"
#include "controls/ctl_Frame.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_ReEvent.h"
#include "controls/ctl_Steps.h"
#include "controls/ctl_Title.h"
#include "core/FormTranslation.h"
#include "core/TouchInput.h"
#include "core/hLangText.h"
#include "filechooser/ChooserForms.h"
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
constexpr int kClientWidth = 820;
constexpr int kClientHeight = 560;
constexpr int kStripWidth = 140;
constexpr int kRowHeight = 24;
constexpr int kLabelWidth = 90;
constexpr int kToolButton = 36; // room for a 20 pixel icon in the button face
constexpr int kSearchLabelWidth = 64;
constexpr int kCountHeight = 18;
constexpr int kGap = 5;

// How the host's option records write false.
bool isFalse(const std::string& value)
{
    const QString v = qs(value).trimmed();
    return v.compare(u"false", Qt::CaseInsensitive) == 0 || v == u"0" || v.isEmpty();
}

bool hHasWildcards(const std::string& text)
{
    return text.find_first_of("?*") != std::string::npos;
}

// The frames' inner rows start below their caption.
int rowTop(const ctl_Frame& frame, int row)
{
    return frame.InsideTop() + ToTwips(row * (kRowHeight + 4));
}
} // namespace

frm_DialogFile::frm_DialogFile() : Form(QStringLiteral("frm_DialogFile"))
{
    buildControls();
    wireEvents();
}

frm_DialogFile::~frm_DialogFile() = default;

ListView& frm_DialogFile::Rows()
{
    return *lst_Files;
}

std::string frm_DialogFile::Filter() const
{
    return m_lister->Filter;
}

void frm_DialogFile::buildControls()
{
    window()->resize(kClientWidth, kClientHeight);
    SetCaption(QStringLiteral("Datei öffnen|Open file"));

    bar_Header = Add<ctl_Title>(QStringLiteral("bar_Header"));
    bar_Buttons = Add<ctl_CmdBar>(QStringLiteral("bar_Buttons"));
    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");
    bar_Buttons->AddButton(QStringLiteral("HELP"), QStringLiteral("&Hilfe|&Help"),
                           signs + QStringLiteral("Help.ico"), QStringLiteral("DIALOG.HELP();"));
    bar_Buttons->AddButton(QStringLiteral("OK"), QStringLiteral("&OK|&OK"),
                           signs + QStringLiteral("OK.ico"), QStringLiteral("DIALOG.OK();"));
    bar_Buttons->AddButton(QStringLiteral("ABORT"), QStringLiteral("&Abbruch|&Cancel"),
                           signs + QStringLiteral("Abort.ico"), QStringLiteral("DIALOG.ABORT();"));

    cat_Folder = Add<ctl_Steps>(QStringLiteral("cat_Folder"));
    cat_Folder->SetWidth(ToTwips(kStripWidth));
    buildFolderFrame();
    buildFileFrame();

    frm_Preview = Add<ctl_Frame>(QStringLiteral("frm_Preview"));
    frm_Preview->SetCaption(QStringLiteral("Vorschau|Preview"));
    pic_Preview = Add<PictureBox>(QStringLiteral("pic_Preview"), frm_Preview->container());
    pic_Preview->Move(ToTwips(2 * kGap), frm_Preview->InsideTop());

    tmr_IconLoad = Add<Timer>(QStringLiteral("tmr_IconLoad"));
    tmr_IconLoad->SetInterval(20);
    tmr_Unload = Add<Timer>(QStringLiteral("tmr_Unload"));
    tmr_Unload->SetInterval(100);
    exe_Commands = Add<ctl_Executor>(QStringLiteral("ctl_Executor"));
    evt_Deferred = Add<ctl_ReEvent>(QStringLiteral("ctl_ReEvent"));

    m_lister = std::make_unique<FolderLister>(m_places, m_favourites,
                                              FolderLister::Controls{*this, *lst_Files, *lst_Folder,
                                                                     lab_FileCount, lab_FileInfo,
                                                                     tmr_IconLoad});
}

void frm_DialogFile::buildFolderFrame()
{
    frm_Folder = Add<ctl_Frame>(QStringLiteral("frm_Folder"));
    frm_Folder->SetCaption(QStringLiteral("Ordnerinhalt|Folder contents"));
    QWidget* inside = frm_Folder->container();
    const int row = rowTop(*frm_Folder, 0);

    lst_Folder = Add<ImageCombo>(QStringLiteral("lst_Folder"), inside);
    lst_Folder->Move(ToTwips(2 * kGap), row, ToTwips(240), ToTwips(kRowHeight));
    lab_SearchFor = Add<Label>(QStringLiteral("lab_SearchFor"), inside);
    lab_SearchFor->SetCaption(QStringLiteral("Suchen:|Search:"));
    lab_SearchFor->SetAlignment(1);
    lab_SearchFor->Move(0, row + ToTwips(4), ToTwips(kSearchLabelWidth), ToTwips(kRowHeight - 4));
    txt_SearchFor = Add<TextBox>(QStringLiteral("txt_SearchFor"), false, inside);
    txt_SearchFor->Move(0, row, ToTwips(160), ToTwips(kRowHeight));

    frm_Buttons = Add<ctl_Pannel>(QStringLiteral("frm_Buttons"), inside);
    frm_Buttons->Move(0, row, ToTwips(4 * kToolButton + 5), ToTwips(kRowHeight + 2));
    const QString icons = QStringLiteral("Ico\\20\\Computer\\");
    struct ToolButton {
        ctl_Button** slot;
        const char* name;
        const char* icon;
        const char* tip;
    };
    const ToolButton buttons[] = {
        {&but_FolderUp, "but_FolderUp", "Signs\\Previous.ico", "Eine Ebene höher|One level up"},
        {&but_FavoriteAdd, "but_FavoriteAdd", "Signs\\Favorite.ico#Ico\\20\\Overlay\\New.ico",
         "Zu den Favoriten hinzufügen|Add to favorites"},
        {&but_View, "but_View", "Papers\\Sheet.ico", "Ansicht|View"},
        {&but_Tool, "but_Tool", "Tools\\Generic.ico", "Extras|Tools"},
    };
    int left = 0;
    for (const ToolButton& b : buttons) {
        *b.slot = Add<ctl_Button>(QString::fromLatin1(b.name), frm_Buttons->container());
        (*b.slot)->SetIconPath(icons + QString::fromLatin1(b.icon));
        (*b.slot)->SetToolTipText(QString::fromUtf8(b.tip));
        (*b.slot)->Move(left, 0, ToTwips(kToolButton - 2), ToTwips(kRowHeight + 2));
        left += ToTwips(kToolButton);
    }

    lst_Files = Add<ListView>(QStringLiteral("lst_Files"), inside);
    lst_Files->Move(ToTwips(2 * kGap), row + ToTwips(kRowHeight + 2 * kGap), ToTwips(400),
                    ToTwips(300));
    // The count line stands on the form over the frame's foot, so it is made
    // after the frame and lies above it.
    lab_FileCount = Add<ctl_Label>(QStringLiteral("lab_FileCount"));
    lab_FileCount->Move(0, 0, ToTwips(400), ToTwips(kCountHeight));
}

void frm_DialogFile::buildFileFrame()
{
    frm_File = Add<ctl_Frame>(QStringLiteral("frm_File"));
    frm_File->SetCaption(QStringLiteral("Gewählte Datei|Selected file"));
    QWidget* inside = frm_File->container();
    const int nameLeft = ToTwips(2 * kGap + kLabelWidth + kGap);
    const auto addLabel = [&](const char* name, const char* caption, int row) {
        Label* label = Add<Label>(QString::fromLatin1(name), inside);
        label->SetCaption(QString::fromUtf8(caption));
        label->Move(ToTwips(2 * kGap), rowTop(*frm_File, row) + ToTwips(4), ToTwips(kLabelWidth),
                    ToTwips(kRowHeight - 4));
        return label;
    };
    lab_Filename = addLabel("lab_Filename", "Dateiname:|Filename:", 0);
    txt_Filename = Add<TextBox>(QStringLiteral("txt_Filename"), false, inside);
    txt_Filename->Move(nameLeft, rowTop(*frm_File, 0), ToTwips(300), ToTwips(kRowHeight));
    lab_Filter = addLabel("lab_Filter", "Dateityp:|Filetype:", 1);
    lst_Filter = Add<ComboBox>(QStringLiteral("lst_Filter"), 2, inside);
    lst_Filter->Move(nameLeft, rowTop(*frm_File, 1), ToTwips(300), ToTwips(kRowHeight));
    lab_Info = addLabel("lab_Info", "Kurzinfos:|Quick info:", 2);
    lab_FileInfo = Add<ctl_Label>(QStringLiteral("lab_FileInfo"), inside);
    lab_FileInfo->Move(nameLeft, rowTop(*frm_File, 2) + ToTwips(4), ToTwips(300),
                       ToTwips(kRowHeight - 4));
    frm_File->SetHeight(rowTop(*frm_File, 3));
}

void frm_DialogFile::wireEvents()
{
    const auto execute = [this](const QString& script) { exe_Commands->Execute(script); };
    bar_Buttons->Script = execute;
    bar_Header->CloseRequest = [execute](const QString&) {
        execute(QStringLiteral("DIALOG.ABORT();"));
    };
    lab_FileCount->LinkClick = execute;
    exe_Commands->Script = [this](const QString& script) { runScript(script); };
    evt_Deferred->Event = [this](const QString& name) { raiseDeferred(name); };
    tmr_IconLoad->Tick = [this] { m_lister->IconTick(); };
    tmr_Unload->Tick = [this] {
        tmr_Unload->SetEnabled(false);
        Unload();
    };
    m_lister->NotReady = [this] { hGotoFolder("WORKSTATION:\\", false, {}); };

    cat_Folder->StepClick = [this](int index) {
        if (index > 0)
            hGotoFolder(us(cat_Folder->Tag(index)), true, {});
    };
    lst_Folder->Click = [this] {
        if (ComboItem* item = lst_Folder->SelectedItem())
            hGotoFolder(PlaceOfComboKey(item->Key(), m_places.CurrentPath), false, {});
    };
    const auto upOnBackspace = [this](int& keyCode, int) {
        if (keyCode == 8)
            goUp();
    };
    lst_Folder->KeyDown = upOnBackspace;
    lst_Files->KeyDown = upOnBackspace;
    lst_Files->GotFocus = [this] { m_listHasFocus = true; };
    lst_Files->LostFocus = [this] { m_listHasFocus = false; };
    lst_Files->ItemClick = [this](ListItem& item) { lst_Files_ItemClick(item); };
    // A name with a line break or with bytes the host escaped still shows on
    // one line, as the user knows it; the row keeps the name it hands back.
    lst_Files->DisplayText = [](const QString& text) {
        try {
            return QString::fromStdString(GetCoreDevText().Paths().DisplayName(text.toStdString()));
        } catch (const std::exception&) {
            return text;
        }
    };
    lst_Files->DblClick = [this] { lst_Files_DblClick(); };
    lst_Files->MouseDown = [this](int button, int, float x, float y) {
        ChooserRowMouse::Down(*lst_Files, m_commands, button, x, y);
    };
    lst_Files->MouseMove = [this](int, int, float x, float y) {
        m_rowMouse.Move(*lst_Files, x, y);
    };

    but_FolderUp->Click = [this] { goUp(); };
    but_FavoriteAdd->Click = [this] { m_commands.AddFavorite(); };
    but_View->Click = [this] { ChooseChooserView(*lst_Files, false); };
    but_Tool->Click = [this] { m_commands.ToolsMenu(false); };

    lst_Filter->Click = [this] { lst_Filter_Click(); };
    txt_SearchFor->Change = [this] { txt_SearchFor_Change(); };
    txt_SearchFor->KeyDown = [this](int& keyCode, int) { txt_SearchFor_KeyDown(keyCode); };
    txt_Filename->Click = [this] {
        if (hTouchInput(*txt_Filename, lab_Filename->Caption()))
            exe_Commands->Execute(QStringLiteral("DIALOG.OK();"));
    };
}

QVariant frm_DialogFile::GetPublic(const QString& name) const
{
    return Form::GetPublic(name);
}

bool frm_DialogFile::SetPublic(const QString& name, const QVariant& value)
{
    return Form::SetPublic(name, value);
}

bool frm_DialogFile::hasPreview() const
{
    return Context && Context->EventLink.PreviewSink != nullptr;
}

void frm_DialogFile::Form_Load()
{
    DialogContext& ctx = context();
    tmr_Unload->SetEnabled(false);
    hTranslateForm(*this, m_translations);

    Resume([&] { m_favourites.Load(); });
    // The holder's design width has 5 pixels to spare, taken off here.
    frm_Buttons->SetWidth(frm_Buttons->Width() - ToTwips(5));
    Resume([&] {
        lst_Files->SetMouseIcon(ToImage(GetCoreDevPictures().LoadPicture("Cur\\Hand Up.ico")));
    });
    // Unchecked on purpose: the list shows values beyond 3 as the list view.
    lst_Files->SetView(SavedChooserView());

    m_loading = true;
    const int minWidth = MinimumFileDialogWidth(hasPreview());
    if (Width() < minWidth)
        SetWidth(minWidth);
    if (Height() < OpeningFileDialogHeight())
        SetHeight(OpeningFileDialogHeight());
    if (ctx.FormSetup)
        Resume([&] { ctx.FormSetup->Apply(*this, -1); });
    m_loading = false;

    if (ctx.Options.Exists("SEARCH") && isFalse(ctx.Options.Item("SEARCH"))) {
        lab_SearchFor->SetVisible(false);
        txt_SearchFor->SetVisible(false);
    }
    if (!ctx.EventLink.EventSink)
        bar_Buttons->SetHelpVisible(false);
    frm_Preview->SetVisible(hasPreview());
    applyMode();
    ctx.Request.Result = ResultAbort;
    fillFilters();
    chooseStartFolder();
    BuildSidebar();
    Resume([&] {
        const QColor back = lst_Files->widget()->palette().color(QPalette::Base);
        FillSharedImages(std::uint32_t(back.blue()) << 16 | std::uint32_t(back.green()) << 8 |
                         std::uint32_t(back.red()));
    });
    m_places.CurrentPath = DesktopAsPlace(m_places.CurrentPath);
    hGotoFolder(m_places.CurrentPath, false, {});
    StringList& items = ctx.Items.ItemList;
    if (items.Count() >= 2 && hHasWildcards(items.Item(1)))
        items.Remove(1);
    proposeName();
    Form_Resize();
}

void frm_DialogFile::applyMode()
{
    const DialogRequest& request = context().Request;
    const bool open = request.Mode == 1;
    const std::string caption =
        open ? hLangText("Datei öffnen", "Open file") : hLangText("Datei speichern", "Save file");
    const std::string sign = open ? "Load.ico" : "Save.ico";
    SetCaption(qs(caption));
    SetChooserIcon(*this, request, "Ico\\16\\Computer\\Signs\\" + sign);
    bar_Header->SetIconPath(qs("Ico\\32\\Computer\\Signs\\" + sign));
    bar_Header->SetCaption(qs(request.Title.empty() ? caption : request.Title));
}

void frm_DialogFile::fillFilters()
{
    const DialogRequest& request = context().Request;
    const StringList& pairs = request.FilterList;
    lst_Filter->Clear();
    for (int i = 1; i <= pairs.Count(); i += 2)
        lst_Filter->AddItem(qs(pairs.Item(i)));
    m_lister->Filter = "*.*";
    const int rows = lst_Filter->ListCount();
    const int index = request.FilterIndex;
    // An odd list's last label has no pattern: the filter then stays "*.*".
    const auto patternOf = [&](int pair) {
        if (2 * pair <= pairs.Count())
            m_lister->Filter = pairs.Item(2 * pair);
    };
    if (index >= 1 && index <= rows) {
        lst_Filter->SetListIndex(index - 1);
        patternOf(index);
    } else if (rows > 0) {
        lst_Filter->SetListIndex(0);
        patternOf(1);
    }
}

void frm_DialogFile::chooseStartFolder()
{
    const StringList& items = context().Items.ItemList;
    PathHelper* paths = nullptr;
    Resume([&] { paths = &GetCoreDevText().Paths(); });
    Resume([&] { m_places.CurrentPath = GetCoreDevSystem().Folders().DocumentsFolder(); });
    for (int i = 1; i <= 2 && i <= items.Count() && paths; ++i) {
        std::string folder;
        Resume([&] { folder = paths->FolderPart(paths->TypedPath(items.Item(i))); });
        bool exists = false;
        Resume([&] { exists = !folder.empty() && GetCoreDevFiles().FolderExists(folder); });
        if (exists) {
            m_places.CurrentPath = folder;
            break;
        }
    }
    TakeApplicationFolders(m_places);
}

void frm_DialogFile::proposeName()
{
    const DialogContext& ctx = context();
    if (ctx.Items.ItemList.Count() < 1)
        return;
    const std::string proposed = ctx.Items.ItemList.Item(1);
    Resume([&] {
        PathHelper& paths = GetCoreDevText().Paths();
        const std::string file = paths.TypedPath(proposed);
        if (ctx.Request.Mode == 1 && !GetCoreDevFiles().FileExists(file))
            return;
        txt_Filename->SetText(qs(paths.FileName(file)));
    });
}

void frm_DialogFile::BuildSidebar()
{
    Resume([&] {
        fw::BuildSidebar(*cat_Folder, m_places, m_favourites, context().Items.CategoryList);
    });
}

void frm_DialogFile::Form_Resize()
{
    if (m_loading)
        return;
    const bool preview = hasPreview();
    if (Width() < MinimumFileDialogWidth(preview) || Height() < MinimumFileDialogHeight()) {
        // The change of size brings the next resize, which lays out.
        if (Width() < MinimumFileDialogWidth(preview))
            SetWidth(MinimumFileDialogWidth(preview));
        if (Height() < MinimumFileDialogHeight())
            SetHeight(MinimumFileDialogHeight());
        return;
    }
    Resume([&] {
        FileDialogSizes sizes;
        sizes.scaleWidth = ScaleWidth();
        sizes.scaleHeight = ScaleHeight();
        sizes.headerHeight = bar_Header->Height();
        sizes.buttonsHeight = bar_Buttons->Height();
        sizes.stripWidth = cat_Folder->Width();
        sizes.pixelX = Screen::TwipsPerPixelX();
        sizes.pixelY = Screen::TwipsPerPixelY();
        sizes.preview = preview;
        sizes.searchVisible = lab_SearchFor->Visible();
        sizes.fileFrameHeight = frm_File->Height();
        sizes.folderFrameTop = ToTwips(kGap);
        sizes.previewFrameTop = ToTwips(kGap);
        sizes.previewPictureLeft = pic_Preview->Left();
        sizes.previewPictureTop = pic_Preview->Top();
        sizes.nameBoxLeft = txt_Filename->Left();
        sizes.buttonsWidth = frm_Buttons->Width();
        sizes.searchLabelWidth = lab_SearchFor->Width();
        sizes.placeComboLeft = lst_Folder->Left();
        sizes.listTop = lst_Files->Top();
        sizes.countHeight = lab_FileCount->Height();
        const FileDialogPlacement p = PlaceFileDialog(sizes);
        const auto place = [](Control& c, const Box& b) {
            c.Move(b.left, b.top, b.width, b.height);
        };
        place(*cat_Folder, p.strip);
        if (preview) {
            place(*frm_Preview, p.previewFrame);
            place(*pic_Preview, p.previewPicture);
        }
        place(*frm_File, p.fileFrame);
        txt_Filename->SetWidth(p.nameBoxWidth);
        lst_Filter->SetWidth(p.nameBoxWidth);
        lab_FileInfo->SetWidth(p.nameBoxWidth);
        place(*frm_Folder, p.folderFrame);
        frm_Buttons->SetLeft(p.buttonsLeft);
        if (sizes.searchVisible) {
            txt_SearchFor->Move(p.searchBoxLeft, txt_SearchFor->Top(), p.searchBoxWidth);
            lab_SearchFor->SetLeft(p.searchLabelLeft);
        }
        lst_Folder->SetWidth(p.placeComboWidth);
        place(*lst_Files, p.list);
        place(*lab_FileCount, p.countLine);
        FitChooserColumns(*lst_Files);
    });
}

void frm_DialogFile::Form_QueryUnload(bool&, int)
{
    tmr_IconLoad->SetEnabled(false);
}

void frm_DialogFile::hResetPreview()
{
    if (!frm_Preview->Visible())
        return;
    Resume([&] {
        pic_Preview->SetBackColor(BackColor());
        pic_Preview->SetForeColor(window()->palette().color(QPalette::WindowText));
        pic_Preview->Cls();
    });
}

// --- Navigation ---------------------------------------------------------------

void frm_DialogFile::hGotoFolder(const std::string& path, bool fromCategory,
                                 const std::string& fileName)
{
    hResetPreview();
    if (!fileName.empty())
        txt_Filename->SetText(qs(fileName));
    if (!m_places.Enter(path))
        return;
    // A category stays lit only while it was the way here.
    if (!fromCategory)
        Resume([&] { cat_Folder->ClearSelection(); });
    hUpdateFolder(false);
    txt_Filename->SetFocus();
    lst_Files->SetFocus();
}

void frm_DialogFile::hUpdateFolder(bool keepSearch)
{
    if (m_places.CurrentPath.empty())
        return;
    if (!keepSearch) {
        m_searchGuard = true;
        txt_SearchFor->SetText({});
        m_searchGuard = false;
    }
    Resume([&] { m_lister->Update(); });
}

void frm_DialogFile::goUp()
{
    if (!m_places.UpPath.empty())
        hGotoFolder(m_places.UpPath, false, {});
}

} // namespace fw
