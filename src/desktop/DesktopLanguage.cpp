#include "desktop/DesktopLanguage.h"
#include "desktop/DesktopHost.h"

#include <QByteArray>
#include <QByteArrayList>
#include <atomic>
#include <cstring>

namespace fw::desktop {

namespace {
std::atomic<int> g_processOverride{0};
} // namespace

int DesktopLanguage::LanguageOfLocale(const QByteArray& value)
{
    return value.startsWith("de") ? German : English;
}

int LanguageFromEnvironment()
{
    // The order gettext uses: LANGUAGE wins over LC_ALL over LC_MESSAGES over LANG.
    // LANGUAGE is a colon list of preferences; its first entry counts.
    for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        QByteArray value = qgetenv(name);
        if (std::strcmp(name, "LANGUAGE") == 0)
            value = value.split(':').value(0);
        if (!value.isEmpty())
            return DesktopLanguage::LanguageOfLocale(value);
    }
    return DesktopLanguage::English;
}

void SetLanguageOverride(int id)
{
    g_processOverride = id;
}

std::int32_t DesktopLanguage::GetLanguage()
{
    if (m_override != 0)
        return m_override;
    if (const int id = g_processOverride; id != 0)
        return id;
    return LanguageFromEnvironment();
}

} // namespace fw::desktop
