#include "desktop/DesktopHost.h"
#include "desktop/DesktopLanguage.h"

#include <QCursor>
#include <QLocale>

namespace fw::desktop {

namespace {

class DesktopRoot final : public CoreDev {
  public:
    int mouseX() override { return QCursor::pos().x(); }
    int mouseY() override { return QCursor::pos().y(); }

    // The C locale first, so that "1.5" means the same everywhere; then the
    // user's own locale for "1,5" on a German desktop.
    double parseNumber(const std::string& text, bool& ok) override
    {
        const QString trimmed = QString::fromStdString(text).trimmed();
        double value = QLocale::c().toDouble(trimmed, &ok);
        if (!ok)
            value = QLocale::system().toDouble(trimmed, &ok);
        return ok ? value : 0.0;
    }
};

} // namespace

std::shared_ptr<CoreDev> MakeDesktopCoreDev(const DesktopOptions& options)
{
    (void)options;
    auto root = std::make_shared<DesktopRoot>();
    root->CoreDevLanguage = std::make_shared<DesktopLanguage>();
    return root;
}

} // namespace fw::desktop

namespace fw {

std::shared_ptr<CoreDev> MakeDefaultCoreDev()
{
    return desktop::MakeDesktopCoreDev();
}

} // namespace fw
