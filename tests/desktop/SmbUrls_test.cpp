#include "desktop/LocationPaths.h"
#include "desktop/SmbUrls.h"

#include <gtest/gtest.h>

namespace fw::desktop {
namespace {

TEST(SmbUrls, UncAndUrlRoundTrip)
{
    const std::string latin1 = NameToLocation("caf\xe9");
    struct Row {
        std::string unc;
        std::string url;
    } const rows[] = {
        {"\\\\server\\", "smb://server/"},
        {"\\\\server\\Daten", "smb://server/Daten"},
        {"\\\\server\\Daten\\", "smb://server/Daten/"},
        {"\\\\127.0.0.1:4445\\Versteckt$\\a b\\", "smb://127.0.0.1:4445/Versteckt$/a%20b/"},
        {"\\\\server\\Öffentlich\\x@y;z%.txt", "smb://server/%C3%96ffentlich/x%40y%3Bz%25.txt"},
        {"\\\\server\\Daten\\" + latin1, "smb://server/Daten/caf%E9"},
        {"\\\\server\\Daten\\" + NameToLocation("a:b"), "smb://server/Daten/a%3Ab"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(UncToSmbUrl(row.unc), row.url) << row.unc;
        EXPECT_EQ(SmbUrlToUnc(row.url), row.unc) << row.url;
    }
}

TEST(SmbUrls, LenientReadingAndRefusals)
{
    EXPECT_EQ(SmbUrlToUnc("SMB://anna@server/Öffentlich/"), "\\\\server\\Öffentlich\\");
    EXPECT_EQ(SmbUrlToUnc("smb://server//Daten/100%"), "\\\\server\\Daten\\100%");
    EXPECT_EQ(SmbUrlToUnc("smb://server"), "\\\\server\\");
    for (const char* bad : {"ftp://server/x", "smb://", "smb://host:0/x", "smb://host:99999/x",
                            "smb://host:ab/x", "/home/anna"})
        EXPECT_FALSE(SmbUrlToUnc(bad)) << bad;
    for (const char* bad : {"C:\\x", "\\\\", "\\\\\\x", "\\\\host:70000\\x", "USER:\\"})
        EXPECT_FALSE(UncToSmbUrl(bad)) << bad;
    const auto parts = SplitUnc("\\\\host:4445\\Daten\\a\\b\\");
    ASSERT_TRUE(parts);
    EXPECT_EQ(parts->host, "host");
    EXPECT_EQ(parts->port, 4445);
    EXPECT_EQ(parts->share, "Daten");
    EXPECT_EQ(parts->path, "a\\b\\");
}

} // namespace
} // namespace fw::desktop
