// The settings store behind registry and settings: persistence, atomic and
// concurrent writes, and broken files.
#include "desktop/DesktopRegistry.h"
#include "desktop/SettingsStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <unistd.h>

using fw::HiveClassesRoot;
using fw::HiveCurrentUser;
using fw::desktop::DesktopRegistry;
using fw::desktop::DesktopSettings;
using fw::desktop::SettingsStore;

namespace {

constexpr auto kFolderView = "Software\\Valdrenix\\Core\\Settings\\FolderView";
constexpr int kWritesPerWriter = 40;

DesktopRegistry registryIn(const QString& folder)
{
    return DesktopRegistry(std::make_shared<SettingsStore>(folder));
}

TEST(SettingsStore, ValuesPersistAcrossInstances)
{
    QTemporaryDir dir;
    {
        DesktopRegistry registry = registryIn(dir.path());
        EXPECT_TRUE(registry.Writer().WriteNumber(HiveCurrentUser, kFolderView, 3));
        EXPECT_TRUE(registry.Writer().WriteString(
            HiveCurrentUser, "Software\\Valdrenix\\Shared\\MRU\\TXT", "/tmp/a.txt|line\nbreak"));
    }
    DesktopRegistry again = registryIn(dir.path());
    EXPECT_EQ(again.Strings().ReadNumber(HiveCurrentUser, kFolderView, -1), 3);
    EXPECT_EQ(again.Strings().ReadString(HiveCurrentUser, "Software\\Valdrenix\\Shared\\MRU\\TXT",
                                         "", 1000),
              "/tmp/a.txt|line\nbreak");
}

TEST(SettingsStore, KeysCompareCaseInsensitivelyAndKeepTheirFirstSpelling)
{
    QTemporaryDir dir;
    DesktopRegistry registry = registryIn(dir.path());
    registry.Writer().WriteNumber(HiveCurrentUser, kFolderView, 1);
    registry.Writer().WriteNumber(HiveCurrentUser,
                                  "SOFTWARE\\valdrenix\\CORE\\settings\\folderview", 2);
    const char* const otherCase = "software\\VALDRENIX\\core\\Settings\\FOLDERVIEW";
    EXPECT_EQ(registry.Strings().ReadNumber(HiveCurrentUser, otherCase, -1), 2);
    QFile file(SettingsStore(dir.path()).FilePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.contains("Software\\\\Valdrenix\\\\Core\\\\Settings"));
    EXPECT_TRUE(text.contains("\"FolderView\": 2"));
}

TEST(SettingsStore, MissingValuesGiveDefaultsAndValuesReadAcrossTypes)
{
    QTemporaryDir dir;
    DesktopRegistry registry = registryIn(dir.path());
    EXPECT_EQ(registry.Strings().ReadNumber(HiveCurrentUser, kFolderView, 42), 42);
    EXPECT_EQ(registry.Strings().ReadString(HiveCurrentUser, kFolderView, "none", 1000), "none");
    EXPECT_FALSE(registry.Writer().WriteNumber(HiveClassesRoot, ".txt\\DefaultIcon", 1));
    EXPECT_EQ(registry.Strings().ReadString(HiveClassesRoot, ".txt\\DefaultIcon", "d", 1000), "d");
    EXPECT_FALSE(registry.Writer().WriteString(HiveCurrentUser, "", "x"));
    registry.Writer().WriteNumber(HiveCurrentUser, "K\\Number", -17);
    registry.Writer().WriteString(HiveCurrentUser, "K\\Digits", " 12 ");
    registry.Writer().WriteString(HiveCurrentUser, "K\\Word", "abcdef");
    EXPECT_EQ(registry.Strings().ReadString(HiveCurrentUser, "K\\Number", "", 1000), "-17");
    EXPECT_EQ(registry.Strings().ReadNumber(HiveCurrentUser, "K\\Digits", 0), 12);
    EXPECT_EQ(registry.Strings().ReadNumber(HiveCurrentUser, "K\\Word", 5), 5);
    EXPECT_EQ(registry.Strings().ReadString(HiveCurrentUser, "K\\Word", "", 3), "abc");
}

TEST(SettingsStore, WriteLeavesOnlyACompleteFileBehind)
{
    QTemporaryDir dir;
    DesktopRegistry registry = registryIn(dir.path());
    const std::string big(100000, 'x');
    ASSERT_TRUE(registry.Writer().WriteString(HiveCurrentUser, "K\\Big", big));
    const QStringList entries = QDir(dir.path()).entryList(QDir::Files | QDir::Hidden);
    EXPECT_EQ(entries, QStringList{"registry.json"}) << "no temporary or lock file left";
    QFile file(dir.filePath("registry.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(QJsonDocument::fromJson(file.readAll()).isObject());
    EXPECT_EQ(registry.Strings().ReadString(HiveCurrentUser, "K\\Big", "", 0), big);
}

TEST(SettingsStore, GarbageFileIsMovedAsideAndReadsAsDefaults)
{
    QTemporaryDir dir;
    {
        QFile file(dir.filePath("registry.json"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("{ \"HKEY_CURRENT_USER\": { broken");
    }
    DesktopRegistry registry = registryIn(dir.path());
    EXPECT_EQ(registry.Strings().ReadNumber(HiveCurrentUser, kFolderView, 7), 7);
    const QStringList broken = QDir(dir.path()).entryList({"registry.json.broken-*"}, QDir::Files);
    ASSERT_EQ(broken.size(), 1);
    QFile kept(dir.filePath(broken.first()));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_TRUE(kept.readAll().contains("broken")) << "the old content is kept for the user";

    EXPECT_TRUE(registry.Writer().WriteNumber(HiveCurrentUser, kFolderView, 4));
    EXPECT_EQ(registry.Strings().ReadNumber(HiveCurrentUser, kFolderView, 7), 4);
}

QStringList g_warnings;

TEST(SettingsStore, AFileThatCannotBeOpenedIsLeftAloneAndWritesAreRefused)
{
    // Root opens a file whatever its mode, so the permission row runs only for
    // other users; a folder in place of the file cannot be opened by anyone.
    const struct {
        const char* what;
        bool asRootToo;
        QFile::Permissions permissions;
    } cases[] = {
        {"a folder in place of the file", true, {}},
        {"a file nobody may read", false, QFile::Permissions()},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        if (!c.asRootToo && geteuid() == 0)
            continue;
        QTemporaryDir dir;
        const QString file = dir.filePath("registry.json");
        const QByteArray kept =
            R"({"HKEY_CURRENT_USER": {"Software\\Valdrenix\\Core\\Settings": {"FolderView": 3}}})";
        if (c.asRootToo) {
            ASSERT_TRUE(QDir().mkpath(file));
        } else {
            QFile out(file);
            ASSERT_TRUE(out.open(QIODevice::WriteOnly));
            out.write(kept);
            out.close();
            ASSERT_TRUE(out.setPermissions(c.permissions));
        }
        g_warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& m) { g_warnings << m; });
        DesktopRegistry registry = registryIn(dir.path());
        EXPECT_EQ(registry.Strings().ReadNumber(HiveCurrentUser, kFolderView, 7), 7);
        EXPECT_FALSE(registry.Writer().WriteNumber(HiveCurrentUser, kFolderView, 4));
        EXPECT_EQ(registry.Strings().ReadNumber(HiveCurrentUser, kFolderView, 7), 7);
        qInstallMessageHandler(previous);
        ASSERT_EQ(g_warnings.size(), 1) << "said once, on stderr";
        EXPECT_TRUE(g_warnings[0].contains(file)) << g_warnings[0].toStdString();

        EXPECT_EQ(
            QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
            QStringList{"registry.json"})
            << "nothing moved aside, nothing new";
        if (!c.asRootToo) {
            QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
            EXPECT_EQ(registryIn(dir.path()).Strings().ReadNumber(HiveCurrentUser, kFolderView, 7),
                      3)
                << "the settings are still there once the file can be read";
        }
    }
}

// Runs as the second process of the test below; skipped in a normal run.
TEST(SettingsStoreChildProcess, WritesItsValues)
{
    const QString folder = qEnvironmentVariable("FORMWERK_TEST_STORE_CHILD");
    if (folder.isEmpty())
        GTEST_SKIP() << "only run as the child of another test";
    DesktopRegistry registry = registryIn(folder);
    for (int i = 0; i < kWritesPerWriter; ++i)
        ASSERT_TRUE(
            registry.Writer().WriteNumber(HiveCurrentUser, "K\\Child" + std::to_string(i), i));
}

TEST(SettingsStore, AnotherStoreAndAnotherProcessWritingAtOnceLoseNoValue)
{
    QTemporaryDir dir;
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("FORMWERK_TEST_STORE_CHILD", dir.path());
    child.setProcessEnvironment(env);
    child.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=SettingsStoreChildProcess.*"});
    ASSERT_TRUE(child.waitForStarted());
    const auto writer = [&](const std::string& prefix) {
        DesktopRegistry registry = registryIn(dir.path());
        for (int i = 0; i < kWritesPerWriter; ++i)
            EXPECT_TRUE(registry.Writer().WriteNumber(HiveCurrentUser,
                                                      "K\\" + prefix + std::to_string(i), i));
    };
    std::thread thread(writer, "Thread");
    writer("Parent");
    thread.join();
    ASSERT_TRUE(child.waitForFinished(60000));
    ASSERT_EQ(child.exitCode(), 0) << child.readAllStandardOutput().toStdString();
    DesktopRegistry registry = registryIn(dir.path());
    for (int i = 0; i < kWritesPerWriter; ++i)
        for (const char* prefix : {"K\\Parent", "K\\Thread", "K\\Child"})
            EXPECT_EQ(
                registry.Strings().ReadNumber(HiveCurrentUser, prefix + std::to_string(i), -1), i)
                << prefix << i;
}

TEST(DesktopSettings, TouchmodeComesFromTheStoreAndTheEnvironmentWins)
{
    QTemporaryDir dir;
    auto store = std::make_shared<SettingsStore>(dir.path());
    DesktopSettings settings(store);
    DesktopRegistry registry(store);
    qunsetenv("FORMWERK_TOUCHMODE");
    EXPECT_FALSE(settings.GetBool("Touchmode"));
    const char* const key = "Software\\Valdrenix\\Core\\Settings\\Touchmode";
    registry.Writer().WriteNumber(HiveCurrentUser, key, 1);
    EXPECT_TRUE(settings.GetBool("Touchmode"));
    EXPECT_TRUE(settings.GetBool("TOUCHMODE"));
    qputenv("FORMWERK_TOUCHMODE", "0");
    EXPECT_FALSE(settings.GetBool("Touchmode"));
    qputenv("FORMWERK_TOUCHMODE", "1");
    registry.Writer().WriteNumber(HiveCurrentUser, key, 0);
    EXPECT_TRUE(settings.GetBool("Touchmode"));
    qunsetenv("FORMWERK_TOUCHMODE");
    EXPECT_FALSE(settings.GetBool("Touchmode"));
}

} // namespace
