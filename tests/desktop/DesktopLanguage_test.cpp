// The language id follows the locale environment the way gettext reads it.
#include "desktop/DesktopHost.h"
#include "desktop/DesktopLanguage.h"

#include <QByteArray>
#include <gtest/gtest.h>
#include <map>

namespace {

const char* const kVariables[] = {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};

// Sets the locale variables of one case and puts the old ones back afterwards.
class LocaleEnvironment {
  public:
    explicit LocaleEnvironment(const std::map<std::string, QByteArray>& values)
    {
        for (const char* name : kVariables) {
            m_saved[name] = {qEnvironmentVariableIsSet(name), qgetenv(name)};
            qunsetenv(name);
        }
        for (const auto& [name, value] : values)
            qputenv(name.c_str(), value);
    }
    ~LocaleEnvironment()
    {
        for (const auto& [name, saved] : m_saved) {
            if (saved.first)
                qputenv(name.c_str(), saved.second);
            else
                qunsetenv(name.c_str());
        }
    }

  private:
    std::map<std::string, std::pair<bool, QByteArray>> m_saved;
};

TEST(DesktopLanguage, EnvironmentPicksGermanOrEnglish)
{
    struct Case {
        const char* name;
        std::map<std::string, QByteArray> env;
        int expected;
    };
    const Case cases[] = {
        {"nothing set", {}, 9},
        {"LANG German", {{"LANG", "de_DE.UTF-8"}}, 7},
        {"LANG English", {{"LANG", "en_US.UTF-8"}}, 9},
        {"LANG C", {{"LANG", "C"}}, 9},
        {"LANG POSIX", {{"LANG", "POSIX"}}, 9},
        {"LANG Austrian", {{"LANG", "de_AT"}}, 7},
        {"LC_MESSAGES beats LANG", {{"LANG", "de_DE"}, {"LC_MESSAGES", "en_GB"}}, 9},
        {"LC_ALL beats LC_MESSAGES", {{"LC_MESSAGES", "en_GB"}, {"LC_ALL", "de_CH"}}, 7},
        {"LANGUAGE beats LC_ALL", {{"LC_ALL", "de_DE"}, {"LANGUAGE", "fr_FR"}}, 9},
        {"first LANGUAGE entry counts", {{"LANGUAGE", "de_DE:en_US"}}, 7},
        {"later LANGUAGE entry ignored", {{"LANGUAGE", "en_US:de_DE"}, {"LANG", "de_DE"}}, 9},
        {"empty LANGUAGE falls through", {{"LANGUAGE", ""}, {"LANG", "de_DE"}}, 7},
        {"empty LC_ALL falls through", {{"LC_ALL", ""}, {"LANG", "de_DE"}}, 7},
    };
    for (const Case& c : cases) {
        LocaleEnvironment env(c.env);
        fw::desktop::DesktopLanguage language;
        EXPECT_EQ(language.GetLanguage(), c.expected) << c.name;
        EXPECT_EQ(fw::desktop::LanguageFromEnvironment(), c.expected) << c.name;
    }
}

TEST(DesktopLanguage, TheDefaultHostFollowsTheEnvironmentAndOverridesWinUntilCleared)
{
    LocaleEnvironment env(std::map<std::string, QByteArray>{{"LANG", "de_DE.UTF-8"}});
    auto root = fw::MakeDefaultCoreDev();
    ASSERT_TRUE(root && root->CoreDevLanguage);
    EXPECT_EQ(root->CoreDevLanguage->GetLanguage(), 7) << "the default host reads the same";
    fw::desktop::DesktopLanguage language;
    fw::desktop::SetLanguageOverride(9);
    EXPECT_EQ(language.GetLanguage(), 9);
    language.SetOverride(7);
    EXPECT_EQ(language.GetLanguage(), 7) << "the service's own override comes first";
    language.SetOverride(0);
    fw::desktop::SetLanguageOverride(0);
    EXPECT_EQ(language.GetLanguage(), 7);
}

} // namespace
