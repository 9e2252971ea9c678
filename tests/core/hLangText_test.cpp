#include "core/hLangText.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

namespace {

using fw::hLangText;

TEST(hLangText, LanguageSevenPicksGermanEveryOtherIdEnglishBothFilled)
{
    fw::testing::ScopedTestHost host;
    const std::pair<int, const char*> cases[] = {
        {7, "Ja: a"}, {9, "Yes: a"}, {0, "Yes: a"}, {-7, "Yes: a"}, {1031, "Yes: a"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.first);
        host->language = c.first;
        EXPECT_EQ(hLangText("Ja: {0}", "Yes: {0}", {"a"}), c.second);
    }
}

TEST(hLangText, HostThatCannotTellItsLanguageGetsEnglish)
{
    fw::testing::ScopedTestHost host;
    host->failing.insert("GetLanguage");
    EXPECT_EQ(hLangText("Datei {0}", "File {0}", {"a"}), "File a");

    host->CoreDevLanguage.reset();
    EXPECT_EQ(hLangText("Datei", "File"), "File");
}

TEST(hLangText, PlaceholdersAreFilled)
{
    fw::testing::ScopedTestHost host;
    host->language = 9;
    const struct {
        const char* name;
        std::string text;
        std::vector<std::string> values;
        int lowerBound;
        std::string expected;
    } cases[] = {
        {"empty array leaves braces alone", "{0} of {1}", {}, 0, "{0} of {1}"},
        {"lower bound 0 fills {0}", "File {0}", {"a.txt"}, 0, "File a.txt"},
        {"lower bound 1 starts at {1}", "{0}{1}{2}", {"x", "y"}, 1, "{0}xy"},
        {"placeholder without value stays", "{0} and {3}", {"one"}, 0, "one and {3}"},
        {"every occurrence replaced", "{0}-{0}-{0}", {"z"}, 0, "z-z-z"},
        {"value holding a later placeholder is filled by the later step",
         "{0}",
         {"<{2}>", "unused", "two"},
         0,
         "<two>"},
        {"value holding an earlier placeholder stays", "{1}", {"zero", "{0}"}, 0, "{0}"},
        {"value holding its own placeholder is not filled again", "{0}", {"{0}{0}"}, 0, "{0}{0}"},
        {"empty value removes the placeholder", "a{0}b", {""}, 0, "ab"},
        {"multi-digit index", "{10}|{1}", std::vector<std::string>(11, "v"), 0, "v|v"},
        {"unbalanced braces untouched", "{0 {}0}", {"x"}, 0, "{0 {}0}"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(hLangText("de", c.text, c.values, c.lowerBound), c.expected);
    }
}

} // namespace
