// The scripted host is what every dialog test leans on, so its answers and its
// log are checked here through the same accessors the dialogs use.
#include "host/DialogContext.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <stdexcept>

namespace {

using fw::testing::ScopedTestHost;

TEST(TestHost, CallsAreLoggedReadablyAndAnswersComeFromQueues)
{
    ScopedTestHost host;
    host->queueQuestionAnswer(fw::ResultYes);
    host->queueSavePath("/tmp/x.txt");

    auto& messages = fw::GetCoreDevMessages();
    messages.ShowError("Fehler", "Titel");
    EXPECT_EQ(messages.AskQuestion("Ersetzen?", "Speichern", 4, "", ""), fw::ResultYes);
    EXPECT_EQ(messages.AskQuestion("Again?", "Speichern", 4, "", ""), fw::ResultNone);
    EXPECT_EQ(messages.AskSaveFile("*.txt", "T", "Text|*.txt", 1, "txt", 0, "MRU"), "/tmp/x.txt");
    EXPECT_EQ(messages.AskSaveFile("", "", "", 0, "", 0, ""), "");

    EXPECT_EQ(host->callsTo("ShowError"), std::vector<std::string>{"ShowError(Fehler|Titel)"});
    EXPECT_EQ(host->callsTo("AskQuestion").front(), "AskQuestion(Ersetzen?|Speichern|4||)");
    EXPECT_EQ(host->calls.size(), 5u);
    EXPECT_FALSE(host->wasCalled("ShowInfo"));
}

TEST(TestHost, FailingOperationsThrowAfterBeingLogged)
{
    ScopedTestHost host;
    host->failing.insert("ShowInfo");
    EXPECT_THROW(fw::GetCoreDevMessages().ShowInfo("a", "b"), std::runtime_error);
    EXPECT_TRUE(host->wasCalled("ShowInfo"));
}

TEST(TestHost, RegistryRemembersWritesWithoutCaseInKeys)
{
    ScopedTestHost host;
    auto& registry = fw::GetCoreDevRegistry();
    const auto hive = fw::HiveCurrentUser;
    EXPECT_TRUE(registry.Writer().WriteNumber(hive, "Software\\A\\View", 3));
    EXPECT_TRUE(registry.Writer().WriteString(hive, "Software\\A\\Name", "abcdef"));

    EXPECT_EQ(registry.Strings().ReadNumber(hive, "software\\a\\view", -1), 3);
    EXPECT_EQ(registry.Strings().ReadNumber(fw::HiveClassesRoot, "Software\\A\\View", -1), -1);
    EXPECT_EQ(registry.Strings().ReadNumber(hive, "Software\\A\\Name", -1), -1);
    EXPECT_EQ(registry.Strings().ReadString(hive, "Software\\A\\Name", "", 1000), "abcdef");
    EXPECT_EQ(registry.Strings().ReadString(hive, "Software\\A\\Name", "", 3), "abc");
    EXPECT_EQ(registry.Strings().ReadString(hive, "Software\\A\\None", "dflt", 1000), "dflt");
    EXPECT_EQ(host->callsTo("WriteNumber").front(), "WriteNumber(0x80000001|Software\\A\\View|3)");
}

} // namespace
