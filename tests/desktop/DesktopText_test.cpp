// Text tools and colours: pairs that round-trip anything, words, paths on
// both separators, numbers with a comma or a point, and colour shades.
#include "desktop/DesktopColours.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopText.h"
#include "desktop/LocationPaths.h"
#include "host/CoreDev.h"

#include <QTemporaryDir>
#include <array>
#include <gtest/gtest.h>

using fw::desktop::DesktopColours;
using fw::desktop::DesktopText;

namespace {

TEST(DesktopText, PairsRoundTripAnyTwoTexts)
{
    DesktopText text;
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},          {"Name", "Wert"},          {"a|b", "c|d"},
        {"12:34", ":"},    {"line\nbreak\r\n", "\n"}, {std::string("nul\0byte", 8), "x"},
        {"Grüße", "ÄÖÜ€"}, {"3:abc", "1:"},           {std::string(10000, ':'), ""},
    };
    for (const auto& [first, second] : cases) {
        std::string a = "old", b = "old";
        ASSERT_TRUE(text.Pairs().Unpack(text.Pairs().Pack(first, second), a, b)) << first;
        EXPECT_EQ(a, first);
        EXPECT_EQ(b, second);
    }
}

TEST(DesktopText, UnpackOfAForeignTextGivesItAsTheFirstValue)
{
    DesktopText text;
    for (const std::string foreign : {"plain", "", "99:short", "x:y", ":abc", "-1:a"}) {
        std::string a, b = "old";
        EXPECT_FALSE(text.Pairs().Unpack(foreign, a, b)) << foreign;
        EXPECT_EQ(a, foreign);
        EXPECT_EQ(b, "");
    }
}

TEST(DesktopText, WordsSplitAtTheSeparator)
{
    DesktopText text;
    auto& words = text.Words();
    EXPECT_EQ(words.TextBefore("a|b|c", "|", false), "a");
    EXPECT_EQ(words.TextBeforeLast("a|b|c", "|", false), "a|b");
    EXPECT_EQ(words.TextAfter("a|b|c", "|", false), "b|c");
    EXPECT_EQ(words.TextBefore("abc", "|", false), "abc");
    EXPECT_EQ(words.TextAfter("abc", "|", false), "");
    EXPECT_EQ(words.TextAfter("xANDy", "and", false), "");
    EXPECT_EQ(words.TextAfter("xANDy", "and", true), "y");
    EXPECT_EQ(words.TextBefore("xANDy", "and", true), "x");
}

// The search box's match: wildcards, case ignored, in ASCII and beyond.
TEST(DesktopText, LikeMatchesWildcardsWithoutCase)
{
    DesktopText text;
    auto& words = text.Words();
    struct Row {
        const char* text;
        const char* pattern;
        bool matches;
    };
    const Row rows[] = {
        {"Bericht.TXT", "*.txt", true},
        {"bericht.txt", "B?RICHT*", true},
        {"abc", "a*c*", true},
        {"abc", "a*d", false},
        {"abc", "", false},
        {"", "*", true},
        {"x;y", "x;*", true},
        {"Ärger.log", "ä*", true},
        {"ärger", "*GER", true},
        {"ÉTÉ", "été", true},
        {"été", "ETE", false},
        {"n0000001.log", "*t*", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(words.Like(row.text, row.pattern), row.matches)
            << row.text << " / " << row.pattern;
}

// How the chooser splits a typed name into drive, folder and name and
// combines a relative folder with the current location; the same tools serve
// Linux and resource paths.
TEST(DesktopText, PathsSplitAndCombineLocationsLinuxAndResourcePaths)
{
    DesktopText text;
    auto& paths = text.Paths();
    const std::string odd = fw::desktop::NameToLocation("a\\b:c\n.txt"); // escaped characters
    struct Row {
        const char* op;
        std::string path;
        std::string name; ///< Combine's second argument
        std::string expected;
    };
    const Row rows[] = {
        {"AddBackslash", "/home/u", "", "/home/u/"},
        {"AddBackslash", "/home/u/", "", "/home/u/"},
        {"AddBackslash", "Ico\\20", "", "Ico\\20\\"},
        {"AddBackslash", "D:", "", "D:\\"},
        {"AddBackslash", "", "", ""},
        {"DrivePart", "C:\\home\\anna\\x.txt", "", "C:"},
        {"DrivePart", "C:\\", "", "C:"},
        {"DrivePart", "D:", "", "D:"},
        {"DrivePart", "DESKTOP:\\a", "", "DESKTOP:"},
        {"DrivePart", "\\\\server\\share\\dir\\", "", "\\\\server\\share"},
        {"DrivePart", "\\\\server", "", "\\\\server"},
        {"DrivePart", "/home/u", "", "/"},
        {"DrivePart", "sub\\x.txt", "", ""},
        {"DrivePart", "..\\x", "", ""},
        {"DrivePart", "a:b.txt", "", ""},
        {"DrivePart", "C:\\tmp\\" + odd, "", "C:"},
        {"FolderPart", "C:\\home\\anna\\x.txt", "", "C:\\home\\anna\\"},
        {"FolderPart", "C:\\", "", "C:\\"},
        {"FolderPart", "D:", "", ""},
        {"FolderPart", "sub\\x.txt", "", "sub\\"},
        {"FolderPart", "..\\x", "", "..\\"},
        {"FolderPart", "x.txt", "", ""},
        {"FolderPart", "C:\\tmp\\" + odd, "", "C:\\tmp\\"},
        {"FolderPart", "\\\\server\\share\\dir\\", "", "\\\\server\\share\\dir\\"},
        {"FileName", "C:\\home\\anna\\x.txt", "", "x.txt"},
        {"FileName", "C:\\", "", ""},
        {"FileName", "C:\\tmp\\" + odd, "", odd},
        {"FileName", "Ico\\20\\Signs\\OK.ico", "", "OK.ico"},
        {"FileName", "sub\\x.txt", "", "x.txt"},
        {"Extension", "C:\\tmp\\" + odd, "", "txt"},
        {"Extension", "/a/b.tar.gz", "", "gz"},
        {"Extension", "/a/.profile", "", ""},
        {"Extension", "/a.b/c", "", ""},
        {"FolderName", "/a/b/", "", "b"},
        {"FolderName", "Ico\\20\\Signs", "", "Signs"},
        {"FolderName", "/", "", ""},
        {"ParentPath", "C:\\home\\anna\\", "", "C:\\home\\"},
        {"ParentPath", "C:\\home", "", "C:\\"},
        {"ParentPath", "C:\\", "", ""},
        {"ParentPath", "\\\\server\\share\\dir\\", "", "\\\\server\\share\\"},
        {"ParentPath", "/a/b/c", "", "/a/b/"},
        {"ParentPath", "/a", "", "/"},
        {"ParentPath", "/", "", ""},
        {"ParentText", "/a/b/c", "", "b"},
        {"Combine", "C:\\home\\anna\\", "sub\\", "C:\\home\\anna\\sub\\"},
        {"Combine", "C:\\home\\anna", "x.txt", "C:\\home\\anna\\x.txt"},
        {"Combine", "C:\\home\\anna\\", "..\\", "C:\\home\\"},
        {"Combine", "C:\\home\\anna\\", "..\\..\\..\\..\\x", "C:\\x"},
        {"Combine", "C:\\home\\anna\\", ".\\sub\\..\\y.txt", "C:\\home\\anna\\y.txt"},
        {"Combine", "C:\\home\\anna\\", "D:\\", "D:\\"},
        {"Combine", "C:\\home\\anna\\", "C:\\tmp\\", "C:\\tmp\\"},
        {"Combine", "C:\\home\\anna\\", "\\tmp\\", "C:\\tmp\\"},
        {"Combine", "C:\\home\\anna\\", "\\\\server\\share\\", "\\\\server\\share\\"},
        {"Combine", "\\\\server\\share\\dir\\", "..\\..\\", "\\\\server\\share\\"},
        {"Combine", "C:\\tmp\\", odd, "C:\\tmp\\" + odd},
        {"Combine", "C:\\tmp\\", "...", "C:\\tmp\\..."},
        {"Combine", "/a", "b.txt", "/a/b.txt"},
        {"Combine", "/a/", "/b.txt", "/a/b.txt"},
        {"Combine", "/a/b/", "../c", "/a/c"},
        {"Combine", "Ico\\20", "x.ico", "Ico\\20\\x.ico"},
        {"Combine", "sub", "..\\..\\x", "..\\x"},
        {"Combine", "", "b", "b"},
    };
    for (const Row& row : rows) {
        const std::string op = row.op;
        const std::string& p = row.path;
        const std::string actual = op == "AddBackslash" ? paths.AddBackslash(p)
                                   : op == "DrivePart"  ? paths.DrivePart(p)
                                   : op == "FolderPart" ? paths.FolderPart(p)
                                   : op == "FileName"   ? paths.FileName(p)
                                   : op == "Extension"  ? paths.Extension(p)
                                   : op == "FolderName" ? paths.FolderName(p)
                                   : op == "ParentPath" ? paths.ParentPath(p)
                                   : op == "ParentText" ? paths.ParentText(p)
                                                        : paths.Combine(p, row.name);
        EXPECT_EQ(actual, row.expected) << op << "(" << p << ", " << row.name << ")";
    }
}

TEST(DesktopNumbers, CommaAndPointAreDecimalSeparatorsAndMinusLeads)
{
    QTemporaryDir store;
    auto root = fw::desktop::MakeDesktopCoreDev({store.path(), {}});
    struct Row {
        const char* text;
        bool ok;
        double value;
    };
    const Row rows[] = {
        {"3,5", true, 3.5},  {"-12,5", true, -12.5}, {" 7 ", true, 7},
        {"1.5", true, 1.5},  {"1,234", true, 1.234}, {",5", true, 0.5},
        {"-", false, 0},     {"", false, 0},         {"abc", false, 0},
        {"1,2,3", false, 0}, {"12-", false, 0},      {"0,1234567891", true, 0.1234567891},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        bool ok = !row.ok;
        EXPECT_EQ(root->parseNumber(row.text, ok), row.value);
        EXPECT_EQ(ok, row.ok);
    }
}

TEST(DesktopColours, RedIsTheLowByteAndTheSchemeSetsErrorsAndQuestionsApart)
{
    DesktopColours colours;
    auto& tools = colours.Tools();
    int r = 0, g = 0, b = 0;
    tools.splitColour(0x00332211u, r, g, b);
    EXPECT_EQ((std::array{r, g, b}), (std::array{0x11, 0x22, 0x33}));
    const auto base = tools.GetSchemeColor(0);
    tools.splitColour(base, r, g, b);
    EXPECT_GT(b, r) << "the default is a blue";
    tools.splitColour(tools.GetSchemeColor(6), r, g, b);
    EXPECT_GT(r, 2 * g) << "errors are red";
    EXPECT_GT(r, 2 * b);
    EXPECT_NE(tools.GetSchemeColor(7), base);
    EXPECT_NE(tools.GetSchemeColor(7), tools.GetSchemeColor(6));
    EXPECT_EQ(tools.GetSchemeColor(-1), base);
    EXPECT_EQ(tools.GetSchemeColor(1000), base);
}

TEST(DesktopColours, ShadesMoveTowardsWhiteAndBlack)
{
    DesktopColours colours;
    auto& tools = colours.Tools();
    const std::uint32_t colour = DesktopColours::Rgb(100, 150, 200);
    EXPECT_EQ(tools.ColorShadeA(colour, 0, 0), colour);
    EXPECT_EQ(tools.ColorShadeA(colour, 0, 255), DesktopColours::Rgb(255, 255, 255));
    EXPECT_EQ(tools.ColorShadeB(colour, 0, 255), DesktopColours::Rgb(0, 0, 0));
    int r = 0, g = 0, b = 0;
    tools.splitColour(tools.ColorShadeA(colour, 0, 128), r, g, b);
    EXPECT_GT(r, 100);
    EXPECT_LT(r, 255);
    tools.splitColour(tools.ColorShadeB(colour, 0, 128), r, g, b);
    EXPECT_LT(b, 200);
    EXPECT_GT(b, 0);
    EXPECT_EQ(tools.ColorShadeB(colour, 0, 1000), DesktopColours::Rgb(0, 0, 0));
}

} // namespace
