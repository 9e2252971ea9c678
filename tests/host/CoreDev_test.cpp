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

TEST(CoreDev, InstallReturnsThePreviousHost)
{
    auto first = std::make_shared<TestHost>();
    auto second = std::make_shared<TestHost>();
    fw::ScopedCoreDev scope(first);
    EXPECT_EQ(fw::CoreDev::Install(second), first);
    EXPECT_EQ(fw::CoreDev::Install(first), second);
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

TEST(CoreDev, AccessorsReachEveryServiceOfTheHost)
{
    fw::testing::ScopedTestHost host;
    EXPECT_EQ(&fw::GetCoreDevApp(), host->CoreDevApp.get());
    EXPECT_EQ(&fw::GetCoreDevMenus(), host->CoreDevMenus.get());
    EXPECT_EQ(&fw::GetCoreDevText(), host->CoreDevText.get());
    EXPECT_EQ(&fw::GetCoreDevControls(), host->CoreDevControls.get());
    EXPECT_EQ(&fw::GetCoreDevSystem(), host->CoreDevSystem.get());
    EXPECT_EQ(&fw::GetCoreDevLanguage(), host->CoreDevLanguage.get());
    EXPECT_EQ(&fw::GetCoreDevMessages(), host->CoreDevMessages.get());
    EXPECT_EQ(&fw::GetCoreDevRegistry(), host->CoreDevRegistry.get());
    EXPECT_EQ(&fw::GetCoreDevPictures(), host->CoreDevPictures.get());
    EXPECT_EQ(&fw::GetCoreDevFiles(), host->CoreDevFiles.get());
    EXPECT_EQ(&fw::GetCoreDevColors(), host->CoreDevColors.get());
    EXPECT_EQ(&fw::GetCoreDevClock(), host->CoreDevClock.get());
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
