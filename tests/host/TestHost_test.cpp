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
    EXPECT_EQ(messages.AskQuestion("Ersetzen?", "Speichern", 4), fw::ResultYes);
    EXPECT_EQ(messages.AskQuestion("Again?", "Speichern", 4), fw::ResultNone);
    EXPECT_EQ(messages.AskSaveFile("*.txt", "T", "Text|*.txt", 1, "txt", 0, "MRU"), "/tmp/x.txt");
    EXPECT_EQ(messages.AskSaveFile("", "", "", 0, "", 0, ""), "");

    EXPECT_EQ(host->callsTo("ShowError"), std::vector<std::string>{"ShowError(Fehler|Titel)"});
    EXPECT_EQ(host->callsTo("AskQuestion").front(), "AskQuestion(Ersetzen?|Speichern|4)");
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

TEST(TestHost, PicturesTakeTheSizeTheirPathNames)
{
    ScopedTestHost host;
    auto& pictures = fw::GetCoreDevPictures();
    const struct {
        const char* path;
        int size;
    } cases[] = {
        {"Ico\\20\\Computer\\Signs\\OK.ico", 20},
        {"ico\\32\\Computer\\Hardware\\Nethood.ico#ico\\20\\overlay\\new.ico", 32},
        {"Ico\\x\\a.ico", 16},
        {"Ico\\48", 16},
        {"", 16},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        const auto picture = pictures.LoadPicture(c.path, 0, -1, -1);
        ASSERT_TRUE(picture);
        EXPECT_FALSE(picture->IsNull());
        EXPECT_EQ(picture->Width(), c.size);
        EXPECT_EQ(picture->Height(), c.size);
        EXPECT_EQ(picture->Pixels().size(), static_cast<std::size_t>(c.size * c.size));
    }
    EXPECT_EQ(host->callsTo("LoadPicture").front(),
              "LoadPicture(Ico\\20\\Computer\\Signs\\OK.ico)");
}

TEST(TestHost, ResourcesAreListedOneLevelDown)
{
    ScopedTestHost host;
    host->resources = {"Ico\\20\\Computer\\Signs\\OK.ico", "Ico\\20\\Computer\\Signs\\No.ico",
                       "Ico\\20\\Computer\\Hardware\\Disk.ico", "Ico\\20\\Top.ico"};
    auto& pictures = fw::GetCoreDevPictures();
    EXPECT_EQ(pictures.ListResources("Ico\\20\\Computer", true, false, false),
              (fw::StringList{"Ico\\20\\Computer\\Signs", "Ico\\20\\Computer\\Hardware"}));
    EXPECT_EQ(pictures.ListResources("ico\\20\\", false, false, false),
              fw::StringList{"Ico\\20\\Top.ico"});
}

TEST(TestHost, PairsUnpackWhatTheyPacked)
{
    ScopedTestHost host;
    auto& pairs = fw::GetCoreDevText().Pairs();
    for (const auto& [a, b] : std::vector<std::pair<std::string, std::string>>{
             {"", ""}, {"1:2", "3"}, {"x", ""}, {"", "y:z"}}) {
        std::string first, second;
        ASSERT_TRUE(pairs.Unpack(pairs.Pack(a, b), first, second));
        EXPECT_EQ(first, a);
        EXPECT_EQ(second, b);
    }
    std::string first, second;
    EXPECT_FALSE(pairs.Unpack("9:short", first, second));
    EXPECT_FALSE(pairs.Unpack("no pair", first, second));
}

TEST(TestHost, PathsSplitOnEitherSeparator)
{
    ScopedTestHost host;
    auto& paths = fw::GetCoreDevText().Paths();
    EXPECT_EQ(paths.ParentPath("/home/u/file.txt"), "/home/u");
    EXPECT_EQ(paths.ParentPath("/home"), "/");
    EXPECT_EQ(paths.ParentPath("C:\\a\\"), "C:\\");
    EXPECT_EQ(paths.ParentPath("\\\\srv\\share\\x"), "\\\\srv\\share");
    EXPECT_EQ(paths.DrivePart("\\\\srv\\share\\x"), "\\\\srv\\share");
    EXPECT_EQ(paths.DrivePart("DESKTOP:\\"), "DESKTOP:");
    EXPECT_EQ(paths.FileName("/a/b.tar.gz"), "b.tar.gz");
    EXPECT_EQ(paths.Extension("/a.b/c"), "");
    EXPECT_EQ(paths.Extension("c.TXT"), "TXT");
    EXPECT_EQ(paths.FolderName("C:\\a\\b\\"), "b");
    EXPECT_EQ(paths.Combine("/tmp", "x"), "/tmp/x");
    EXPECT_EQ(paths.Combine("USER:\\", "x"), "USER:\\x");
    EXPECT_EQ(paths.AddBackslash("DESKTOP:"), "DESKTOP:\\");
}

TEST(TestHost, FilesAreTheRealFileSystem)
{
    ScopedTestHost host;
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const std::string root = dir.path().toStdString();
    auto& files = fw::GetCoreDevFiles();

    EXPECT_TRUE(files.CreateFolder(root + "/sub"));
    EXPECT_TRUE(files.WriteTextFile(root + "/a.txt", "hello", "", -1));
    EXPECT_TRUE(files.WriteTextFile(root + "/b.log", "", "", -1));
    EXPECT_FALSE(files.WriteTextFile(root + "/missing/c.txt", "x", "", -1));

    EXPECT_TRUE(files.FileExists(root + "/a.txt"));
    EXPECT_FALSE(files.FileExists(root + "/sub"));
    EXPECT_TRUE(files.FolderExists(root + "/sub"));
    EXPECT_EQ(files.FileSize(root + "/a.txt"), 5);

    const auto listed = files.ListFiles(root, "*.TXT");
    ASSERT_EQ(listed.size(), 2u);
    EXPECT_EQ(listed[0].Name, "a.txt");
    EXPECT_FALSE(listed[0].IsFolder);
    EXPECT_EQ(listed[1].Name, "sub");
    EXPECT_TRUE(listed[1].IsFolder);
    EXPECT_EQ(files.ListFiles(root, "*.txt;*.log").size(), 3u);

    EXPECT_TRUE(files.DeleteFile(root + "/a.txt"));
    EXPECT_FALSE(files.FileExists(root + "/a.txt"));
    EXPECT_TRUE(files.DeleteFolder(root + "/sub"));
    EXPECT_FALSE(files.FolderExists(root + "/sub"));
}

TEST(TestHost, NetworkConnectsOnlyWhenToldTo)
{
    ScopedTestHost host;
    auto network = fw::GetCoreDevFiles().Network();
    host->queueConnectResult(false, "Zugriff verweigert");
    host->queueConnectResult(true);

    bool ok = true;
    EXPECT_EQ(network->Connect("\\\\srv\\a", "Z:", "", "", false, ok), "Zugriff verweigert");
    EXPECT_FALSE(ok);
    network->Connect("\\\\srv\\a", "Z:", "", "", true, ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(network->UncOfDrive("Z:"), "\\\\srv\\a");
    EXPECT_TRUE(network->Disconnect("Z:"));
    EXPECT_EQ(network->MappedDrives().Count(), 0);
}

} // namespace
