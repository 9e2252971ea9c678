#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace {

using fw::testing::TestHost;

TEST(CoreDev, InstalledHostServesUntilTheScopeEnds)
{
    auto outer = std::make_shared<TestHost>();
    outer->language = 9;
    fw::ScopedCoreDev outerScope(outer);
    {
        auto inner = std::make_shared<TestHost>();
        inner->language = 7;
        fw::ScopedCoreDev innerScope(inner);
        EXPECT_EQ(&fw::CoreDev::Instance(), inner.get());
        EXPECT_EQ(fw::GetCoreDevLanguage().GetLanguage(), 7);
    }
    EXPECT_EQ(&fw::CoreDev::Instance(), outer.get());
    EXPECT_EQ(fw::GetCoreDevLanguage().GetLanguage(), 9);
    EXPECT_EQ(outer->calls, std::vector<std::string>{"GetLanguage()"});
}

TEST(CoreDev, EachThreadHasItsOwnHost)
{
    fw::testing::ScopedTestHost host;
    const fw::CoreDev* seenByOtherThread = nullptr;
    std::thread other([&] {
        fw::testing::ScopedTestHost own;
        seenByOtherThread = &fw::CoreDev::Instance();
    });
    other.join();
    EXPECT_NE(seenByOtherThread, nullptr);
    EXPECT_NE(seenByOtherThread, host.ptr().get());
    EXPECT_EQ(&fw::CoreDev::Instance(), host.ptr().get());
}

TEST(CoreDev, AccessorOfAMissingServiceThrowsNamingIt)
{
    fw::testing::ScopedTestHost host;
    host->CoreDevMessages.reset();
    try {
        fw::GetCoreDevMessages();
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "host has no CoreDevMessages");
    }
    host->CoreDevClock.reset();
    EXPECT_THROW(fw::GetCoreDevClock(), std::runtime_error);
    EXPECT_NO_THROW(fw::GetCoreDevLanguage());
}

} // namespace
