// The protocol's text: every name comes back byte for byte, and a damaged or
// cut text is refused rather than half read.
#include "desktop/sync/SyncProtocol.h"

#include <gtest/gtest.h>

using namespace fw::desktop::sync;

namespace {

TEST(SyncProtocol, StateComesBackAndDamageIsRefused)
{
    SyncState state;
    for (const std::string path : {"a", "a/b\nc", "a/b\nd", "caf\xe9", "x\\y:z", "z/deep/er"})
        state[path] = {{path, false, 12, 1700000000}, {path, path == "a", 0, -5}};
    const std::string text = EncodeSyncState(state);
    EXPECT_EQ(DecodeSyncState(text), state);
    EXPECT_EQ(DecodeSyncState(EncodeSyncState({})), SyncState{});
    for (std::size_t cut : {std::size_t(0), text.size() / 2, text.size() - 1})
        EXPECT_FALSE(DecodeSyncState(text.substr(0, cut))) << cut;
    std::string otherVersion = text;
    otherVersion[otherVersion.find('1')] = '9';
    EXPECT_FALSE(DecodeSyncState(otherVersion));
}

} // namespace
