#include "folders/frm_DialogNetworkBrowse.h"

#include "controls/Theme.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Title.h"
#include "dialogs/DialogOpening.h"
#include "forms/ImageList.h"
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
constexpr int kClientWidth = 400;
constexpr int kTreeHeight = 300;

// Light grey, the basic colour 7 of the classic sixteen, as a host colour.
constexpr std::uint32_t kHiddenShareColour = 0x00C0C0C0;

const QString kDomainImage = QStringLiteral("DOMAIN");
const QString kHostImage = QStringLiteral("HOST");
const QString kShareImage = QStringLiteral("SHARE");

bool isDomainKey(const QString& key)
{
    return key.endsWith(u':');
}

bool isHostOrShareKey(const QString& key)
{
    return key.startsWith(QLatin1String("\\\\"));
}

// The busy pointer for as long as a node fills, however the filling ends.
class BusyPointer {
  public:
    BusyPointer() { Screen::SetMousePointer(Screen::Busy); }
    ~BusyPointer() { Screen::SetMousePointer(Screen::Default); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

std::shared_ptr<NetworkService> network()
{
    std::shared_ptr<NetworkService> service;
    Resume([&] { service = GetCoreDevFiles().Network(); });
    return service;
}

} // namespace

frm_DialogNetworkBrowse::frm_DialogNetworkBrowse() : Form(QStringLiteral("frm_DialogNetworkBrowse"))
{
    buildControls();
}

frm_DialogNetworkBrowse::~frm_DialogNetworkBrowse() = default;

void frm_DialogNetworkBrowse::buildControls()
{
    SetCaption(QStringLiteral("Netzwerk durchsuchen"));

    ctl_Title2 = Add<ctl_Title>(QStringLiteral("ctl_Title2"));
    ctl_Title2->SetCaption(QStringLiteral("Netwerzk"));
    ctl_Title2->SetIconPath(
        QStringLiteral("Ico\\32\\Computer\\Hardware\\Nethood.ico#ico\\32\\overlay\\search.ico"));
    ctl_Title2->CloseRequest = [this](const QString&) {
        bar_Buttons_Script(QStringLiteral("DIALOG.ABORT();"));
    };

    img_Network = Add<ImageList>(QStringLiteral("img_Network"));
    const int top = ctl_Title2->Height() / Screen::TwipsPerPixel + theme::Gap;
    tvw_Network = Add<TreeView>(QStringLiteral("tvw_Network"));
    tvw_Network->Move(ToTwips(theme::Gap), ToTwips(top), ToTwips(kClientWidth - 2 * theme::Gap),
                      ToTwips(kTreeHeight));
    tvw_Network->Expand = [this](TreeNode& node) { tvw_Network_Expand(node); };
    tvw_Network->NodeClick = [](TreeNode& node) {
        if (node.Children() > 0 && !node.Expanded())
            node.SetExpanded(true);
    };
    tvw_Network->DblClick = [this] { bar_Buttons_Script(QStringLiteral("DIALOG.OK();")); };

    bar_Buttons = Add<ctl_CmdBar>(QStringLiteral("bar_Buttons"));
    AddDialogCommands(*bar_Buttons);
    bar_Buttons->Script = [this](const QString& script) { bar_Buttons_Script(script); };

    window()->resize(kClientWidth, top + kTreeHeight + theme::Gap +
                                       bar_Buttons->Height() / Screen::TwipsPerPixel);
}

QVariant frm_DialogNetworkBrowse::GetPublic(const QString& name) const
{
    if (name.compare(u"SelectedPath", Qt::CaseInsensitive) == 0)
        return SelectedPath;
    if (name.compare(u"Accepted", Qt::CaseInsensitive) == 0)
        return Accepted;
    if (name.compare(u"BrowseMode", Qt::CaseInsensitive) == 0)
        return BrowseMode;
    return Form::GetPublic(name);
}

bool frm_DialogNetworkBrowse::SetPublic(const QString& name, const QVariant& value)
{
    if (name.compare(u"SelectedPath", Qt::CaseInsensitive) == 0)
        SelectedPath = value.toString();
    else if (name.compare(u"Accepted", Qt::CaseInsensitive) == 0)
        Accepted = value.toBool();
    else if (name.compare(u"BrowseMode", Qt::CaseInsensitive) == 0)
        BrowseMode = value.toInt();
    else
        return Form::SetPublic(name, value);
    return true;
}

QString frm_DialogNetworkBrowse::kindText() const
{
    switch (BrowseMode) {
    case ChooseShare:
        return QStringLiteral("eine Netzwerkfreigabe");
    case ChooseHost:
        return QStringLiteral("einen Rechner");
    case ChooseDomain:
        return QStringLiteral("eine Domäne");
    default:
        return {};
    }
}

void frm_DialogNetworkBrowse::Form_Load()
{
    Accepted = false;
    const auto addPicture = [this](const QString& key, const char* path) {
        Resume([&] { img_Network->Add(key, ToImage(GetCoreDevPictures().LoadPicture(path))); });
    };
    addPicture(kDomainImage, "Ico\\16\\Computer\\Hardware\\Nethood.ico");
    addPicture(kHostImage, "Ico\\16\\Computer\\Hardware\\Workstation.ico");
    addPicture(kShareImage, "Ico\\16\\Computer\\Folders\\Nethood.ico");
    tvw_Network->SetImageList(img_Network);
    ctl_Title2->SetSubCaption(QStringLiteral("Wählen Sie ") + kindText() +
                              QStringLiteral(" aus der Netzwerkübersicht aus"));

    StringList domains;
    const std::shared_ptr<NetworkService> service = network();
    Resume([&] {
        if (service)
            domains = service->Domains();
    });
    TreeNodes& nodes = tvw_Network->Nodes();
    for (const std::string& domain : domains.items()) {
        Resume([&] {
            const QString name = qs(domain);
            TreeNode& node = nodes.Add(nullptr, tvwLast, name.toUpper() + u':', name, kDomainImage,
                                       kDomainImage);
            node.SetTag(name);
            nodes.Add(&node, tvwChild, {}, QString::fromLatin1(PlaceholderText));
        });
    }
    if (nodes.Roots().size() == 1) {
        TreeNode& only = *nodes.Roots().front();
        tvw_Network->SetSelectedItem(&only);
        only.SetExpanded(true);
    }
}

void frm_DialogNetworkBrowse::tvw_Network_Expand(TreeNode& node)
{
    BusyPointer busy;
    TreeNode* placeholder = node.Child();
    if (node.Children() != 1 || placeholder->Text() != QLatin1String(PlaceholderText))
        return;
    if (isDomainKey(node.Key()))
        Resume([&] { fillDomain(node); });
    else if (isHostOrShareKey(node.Key()))
        Resume([&] { fillHost(node); });
    Resume([&] { tvw_Network->Nodes().Remove(*placeholder); });
}

void frm_DialogNetworkBrowse::fillDomain(TreeNode& node)
{
    const std::shared_ptr<NetworkService> service = network();
    if (!service)
        return;
    StringList hosts = service->Hosts(us(node.Tag()));
    hosts.Sort();
    TreeNodes& nodes = tvw_Network->Nodes();
    for (const std::string& host : hosts.items()) {
        const QString name = qs(host);
        TreeNode& added = nodes.Add(&node, tvwChild, QStringLiteral("\\\\") + name.toUpper(), name,
                                    kHostImage, kHostImage);
        added.SetTag(QStringLiteral("\\\\") + name);
        nodes.Add(&added, tvwChild, {}, QString::fromLatin1(PlaceholderText));
    }
}

void frm_DialogNetworkBrowse::fillHost(TreeNode& node)
{
    const std::shared_ptr<NetworkService> service = network();
    if (!service)
        return;
    ShareList shares = service->Shares(us(node.Key().mid(2)));
    shares.Sort(true);
    TreeNodes& nodes = tvw_Network->Nodes();
    // Hidden shares ("$" at the end) follow all visible ones.
    for (const bool hiddenPass : {false, true}) {
        for (const ShareInfo& share : shares.items()) {
            const QString name = qs(share.Name);
            if (name.endsWith(u'$') != hiddenPass)
                continue;
            const QString display = share.Remarks.Count() > 0 ? qs(share.Remarks.Item(1)) : name;
            const QString text =
                display != name ? display + QStringLiteral(" (") + name + u')' : display;
            TreeNode& added = nodes.Add(&node, tvwChild, node.Tag() + u'\\' + name + u'\\', text,
                                        kShareImage, kShareImage);
            if (hiddenPass)
                added.SetForeColor(kHiddenShareColour);
        }
    }
}

void frm_DialogNetworkBrowse::bar_Buttons_Script(const QString& script)
{
    const QString command = script.toUpper();
    if (command == u"DIALOG.OK();") {
        acceptSelection();
    } else if (command == u"DIALOG.ABORT();") {
        Accepted = false;
        Unload();
    } else if (command == u"DIALOG.HELP();") {
        Resume([&] {
            GetCoreDevMessages().ShowHelp(
                "In diesem Dialog können Sie die verfügbaren Netzwerke nach Freigaben durchsuchen",
                us(Caption()));
        });
    }
}

void frm_DialogNetworkBrowse::acceptSelection()
{
    const TreeNode* selected = tvw_Network->SelectedItem();
    if (!selected) {
        const std::string text =
            us(QStringLiteral("Wählen Sie erst ") + kindText() + QStringLiteral(" aus!"));
        Resume([&] { GetCoreDevMessages().ShowInfo(text, ""); });
        return;
    }
    const QString key = selected->Key();
    bool accepted = false;
    if (isHostOrShareKey(key))
        accepted = key.endsWith(u'\\') ? BrowseMode == ChooseShare : BrowseMode == ChooseHost;
    else
        accepted = BrowseMode == ChooseDomain;
    if (!accepted) {
        const std::string text = us(
            QStringLiteral("Sie haben nicht den richtigen Eintrag ausgewählt. Bitte wählen Sie ") +
            kindText() + QStringLiteral(" aus der Liste aus!"));
        Resume([&] { GetCoreDevMessages().ShowInfo(text, ""); });
        return;
    }
    SelectedPath = key;
    Accepted = true;
    Unload();
}

} // namespace fw
