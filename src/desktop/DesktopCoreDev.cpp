#include "desktop/DesktopApp.h"
#include "desktop/DesktopColours.h"
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopLanguage.h"
#include "desktop/DesktopMenus.h"
#include "desktop/DesktopMessages.h"
#include "desktop/DesktopPictures.h"
#include "desktop/DesktopRegistry.h"
#include "desktop/DesktopSystem.h"
#include "desktop/DesktopText.h"
#include "desktop/SettingsStore.h"

#include <QCursor>
#include <QLocale>

namespace fw::desktop {

namespace {

class DesktopRoot final : public CoreDev {
  public:
    int mouseX() override { return QCursor::pos().x(); }
    int mouseY() override { return QCursor::pos().y(); }

    // "1.5" and "1,5" are both one and a half, whatever the user's locale:
    // the comma is the decimal separator of the desktops this library is made
    // for. So neither reads a group separator ("1,234" is not 1234); the
    // user's own locale comes last.
    double parseNumber(const std::string& text, bool& ok) override
    {
        const QString trimmed = QString::fromStdString(text).trimmed();
        QLocale point = QLocale::c();
        QLocale comma(QLocale::German);
        point.setNumberOptions(QLocale::RejectGroupSeparator);
        comma.setNumberOptions(QLocale::RejectGroupSeparator);
        double value = point.toDouble(trimmed, &ok);
        if (!ok)
            value = comma.toDouble(trimmed, &ok);
        if (!ok)
            value = QLocale::system().toDouble(trimmed, &ok);
        return ok ? value : 0.0;
    }
};

} // namespace

std::shared_ptr<CoreDev> MakeDesktopCoreDev(const DesktopOptions& options)
{
    auto root = std::make_shared<DesktopRoot>();
    // Registry and settings share one store, so that a setting written through
    // the registry is the one GetBool reads.
    auto store = std::make_shared<SettingsStore>(
        options.storeFolder.isEmpty() ? SettingsStore::DefaultFolder() : options.storeFolder);
    // Packages are also found in a folder that the settings store names.
    auto pictures = std::make_shared<DesktopPictures>(options.picturesFolder,
                                                      std::make_shared<PackageFolders>(store));
    root->CoreDevSettings = std::make_shared<DesktopSettings>(store);
    root->CoreDevApp = std::make_shared<DesktopApp>();
    root->CoreDevClock = std::make_shared<DesktopClock>();
    root->CoreDevMenus = std::make_shared<DesktopMenus>(pictures);
    root->CoreDevText = std::make_shared<DesktopText>();
    root->CoreDevControls = std::make_shared<DesktopControls>();
    root->CoreDevSystem = std::make_shared<DesktopSystem>();
    root->CoreDevLanguage = std::make_shared<DesktopLanguage>();
    root->CoreDevMessages = std::make_shared<DesktopMessages>();
    auto registry = std::make_shared<DesktopRegistry>(store);
    root->CoreDevRegistry = registry;
    root->CoreDevPictures = pictures;
    // The registry keeps drive letters across runs.
    root->CoreDevFiles = std::make_shared<DesktopFiles>(registry);
    root->CoreDevColors = std::make_shared<DesktopColours>();
    return root;
}

} // namespace fw::desktop

namespace fw {

std::shared_ptr<CoreDev> MakeDefaultCoreDev()
{
    return desktop::MakeDesktopCoreDev();
}

} // namespace fw
