// The desktop host's number reading: a comma or a point as the decimal
// separator, whatever the user's locale.
#include "desktop/DesktopHost.h"
#include "host/CoreDev.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

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

} // namespace
