// Location strings and Linux paths: every name survives the trip byte for
// byte, and what a list shows of it stays on one line.
#include "desktop/LocationPaths.h"

#include <gtest/gtest.h>
#include <random>

using namespace fw::desktop;

namespace {

TEST(LocationPaths, EveryByteNameComesBackUnchanged)
{
    std::mt19937 random(20240611);
    std::uniform_int_distribution<int> length(1, 40);
    // Bytes weighted towards the hard cases: high bytes, separators, escapes.
    const std::string tricky = "\\:*?|\"<>\n\t\x7f\xef\x9c\x80\xc3\xa4\xed\xa0\x80";
    std::uniform_int_distribution<int> anyByte(1, 255);
    std::uniform_int_distribution<int> pick(0, 2);
    for (int round = 0; round < 20000; ++round) {
        std::string name;
        for (int i = length(random); i > 0; --i) {
            char byte = pick(random) == 0 ? tricky[std::size_t(anyByte(random)) % tricky.size()]
                                          : char(anyByte(random));
            name += byte == '/' ? 'x' : byte;
        }
        const std::string location = NameToLocation(name);
        ASSERT_EQ(NameFromLocation(location), name);
        ASSERT_EQ(location.find_first_of("\\:"), std::string::npos) << location;
        const auto path = LocationToPosix(PosixToLocation("/tmp/" + name));
        ASSERT_TRUE(path.has_value());
        ASSERT_EQ(*path, "/tmp/" + name);
    }
}

TEST(LocationPaths, TrickyNamesMapAsTold)
{
    struct Row {
        const char* what;
        std::string bytes;
        std::string location;
        std::string shown;
    };
    const Row rows[] = {
        {"plain", "Bericht.txt", "Bericht.txt", "Bericht.txt"},
        {"umlaut", "Grüße.txt", "Grüße.txt", "Grüße.txt"},
        {"backslash", "a\\b", "a\uF75Cb", "a\\b"},
        {"colon", "C:x", "C\uF73Ax", "C:x"},
        {"wildcards", "*?.txt", "\uF72A\uF73F.txt", "*?.txt"},
        {"latin-1 byte", "caf\xe9", "caf\uF7E9", "caf\uFFFD"},
        {"lone surrogate", "\xed\xa0\x80", "\uF7ED\uF7A0\uF780", "\uFFFD\uFFFD\uFFFD"},
        {"escape block itself", "\uF700", "\uF7EF\uF79C\uF780", "\uFFFD\uFFFD\uFFFD"},
        {"newline and tab", "a\nb\tc", "a\nb\tc", "a\u2424b\u2409c"},
        {"bidi override", "gpj.\u202Eexe", "gpj.\u202Eexe", "gpj.[U+202E]exe"},
        {"leading dash", "-rf", "-rf", "-rf"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(NameToLocation(row.bytes), row.location) << row.what;
        EXPECT_EQ(NameFromLocation(row.location), row.bytes) << row.what;
        EXPECT_EQ(DisplayName(row.location), row.shown) << row.what;
    }
    const std::string longName(255, 'n');
    EXPECT_EQ(NameFromLocation(NameToLocation(longName)), longName);
}

TEST(LocationPaths, PathsMapBetweenDrivesAndMountPoints)
{
    const std::vector<DriveRoot> drives = {{'D', "/media/anna/STICK"}, {'E', "/mnt/net"}};
    struct Row {
        std::string posix;
        std::string location;
    };
    const Row rows[] = {
        {"/", "C:\\"},
        {"/home/anna/Bericht.txt", "C:\\home\\anna\\Bericht.txt"},
        {"/home/anna/", "C:\\home\\anna\\"},
        {"/media/anna/STICK", "D:\\"},
        {"/media/anna/STICK/Fotos/a.jpg", "D:\\Fotos\\a.jpg"},
        {"/media/anna/STICKER/a", "C:\\media\\anna\\STICKER\\a"},
        {"/mnt/net/x:y", "E:\\x\uF73Ay"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PosixToLocation(row.posix, drives), row.location) << row.posix;
        const std::string back = row.posix == "/media/anna/STICK" ? row.posix + "/" : row.posix;
        EXPECT_EQ(LocationToPosix(row.location, drives).value_or("?"), back) << row.location;
    }
    EXPECT_EQ(LocationToPosix("c:\\etc\\hosts").value_or("?"), "/etc/hosts");
    EXPECT_EQ(LocationToPosix("/etc/hosts").value_or("?"), "/etc/hosts");
    for (const char* nowhere : {"DESKTOP:\\", "\\\\host\\share\\", "F:\\x", "Bericht.txt", ""})
        EXPECT_FALSE(LocationToPosix(nowhere, drives).has_value()) << nowhere;
}

TEST(LocationPaths, TypedLinuxPathsAreUnderstoodAndNamesAreLeftAlone)
{
    EXPECT_EQ(TypedPathToLocation("/etc/hosts", "/home/anna").value_or("?"), "C:\\etc\\hosts");
    EXPECT_EQ(TypedPathToLocation("~/x.txt", "/home/anna").value_or("?"), "C:\\home\\anna\\x.txt");
    EXPECT_EQ(TypedPathToLocation("~", "/home/anna/").value_or("?"), "C:\\home\\anna\\");
    for (const char* name : {"x.txt", "~anna", "C:\\x", "", "*.txt"})
        EXPECT_FALSE(TypedPathToLocation(name, "/home/anna").has_value()) << name;
}

} // namespace
