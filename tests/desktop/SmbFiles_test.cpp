// Network files through the desktop host, against a real Samba server on
// loopback: UNC locations behave as local folders do, credentials are tried
// in order, and a host that is not there costs no more than the time-out.
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopRegistry.h"
#include "desktop/SmbClient.h"
#include "support/FtpServer.h"
#include "support/SambaSuite.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <thread>

using fw::desktop::DesktopFiles;
using fw::testing::SambaServer;
using fw::testing::SambaSuite;

namespace {

void writeFile(const QString& path, const QByteArray& bytes = "Inhalt")
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
}

std::string namesOf(const std::vector<fw::FileEntry>& entries)
{
    std::string names;
    for (const fw::FileEntry& entry : entries)
        names += (names.empty() ? "" : "|") + entry.Name + (entry.IsFolder ? "\\" : "");
    return names;
}

class SmbFilesTest : public SambaSuite {
  protected:
    void SetUp() override
    {
        SambaSuite::SetUp();
        if (IsSkipped())
            return;
        QDir daten(server->ShareFolder(SambaServer::Daten));
        daten.removeRecursively();
        daten.mkpath(QStringLiteral("."));
    }

    // A desktop host whose network calls give up after timeoutSeconds and
    // that reaches hosts written without a port at port.
    std::unique_ptr<DesktopFiles> files(int timeoutSeconds = 10, int port = 0)
    {
        auto registry = std::make_shared<fw::desktop::DesktopRegistry>(
            std::make_shared<fw::desktop::SettingsStore>(settings.path()));
        const std::string key = std::string(DesktopFiles::NetworkSettingsKey) + '\\';
        registry->Writer().WriteNumber(fw::HiveCurrentUser, key + "TimeoutSeconds", timeoutSeconds);
        if (port != 0)
            registry->Writer().WriteString(fw::HiveCurrentUser, key + "Port", std::to_string(port));
        return std::make_unique<DesktopFiles>(registry);
    }
    static std::string host() { return "\\\\127.0.0.1:" + std::to_string(server->Port()) + "\\"; }
    static std::string daten() { return host() + "Daten\\"; }
    static QString onDisk(const QString& name)
    {
        return server->ShareFolder(SambaServer::Daten) + u'/' + name;
    }

    QTemporaryDir settings;
};

TEST_F(SmbFilesTest, AShareFolderListsAsALocalFolderDoes)
{
    QDir(onDisk({})).mkpath(QStringLiteral("Ordner mit Leerzeichen"));
    writeFile(onDisk(QStringLiteral("Übersicht.txt")));
    writeFile(onDisk(QStringLiteral("Bericht 2024.txt")), "12345");
    writeFile(onDisk(QStringLiteral("Kosten$.csv")));
    writeFile(onDisk(QStringLiteral(".versteckt")));
    const auto desktop = files();
    const struct {
        std::string folder, pattern, expected;
    } cases[] = {
        {daten(), "", "Ordner mit Leerzeichen\\|Bericht 2024.txt|Kosten$.csv|Übersicht.txt"},
        {daten(), "*.TXT", "Ordner mit Leerzeichen\\|Bericht 2024.txt|Übersicht.txt"},
        {daten(), "*.md;kosten*", "Ordner mit Leerzeichen\\|Kosten$.csv"},
        {daten() + "Ordner mit Leerzeichen", "", ""},
        // A typed "\\server\" shows the server's disk shares, hidden ones left out.
        {host(), "*.txt", "Daten\\|Geschlossen\\|Öffentlich\\"},
        {daten() + "fehlt\\", "", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(namesOf(desktop->ListFiles(c.folder, c.pattern)), c.expected)
            << c.folder << " " << c.pattern;
    const auto entries = desktop->ListFiles(daten(), "Bericht*");
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[1].Size, 5);
}

TEST_F(SmbFilesTest, FilesAndFoldersAreMadeReadAndRemovedOnTheShare)
{
    writeFile(onDisk(QStringLiteral("Bericht.txt")), "12345");
    const auto desktop = files();
    const std::string report = daten() + "Bericht.txt";
    EXPECT_TRUE(desktop->FileExists(report));
    EXPECT_TRUE(desktop->IsRealFile(report));
    EXPECT_FALSE(desktop->FolderExists(report));
    EXPECT_EQ(desktop->FileSize(report), 5);
    EXPECT_EQ(desktop->FileDate(report),
              QFileInfo(onDisk(QStringLiteral("Bericht.txt"))).lastModified().toSecsSinceEpoch());
    EXPECT_EQ(desktop->FileSize(daten() + "fehlt.txt"), -1);
    EXPECT_TRUE(desktop->FolderExists(daten()));
    EXPECT_TRUE(desktop->FolderExists(host()));
    EXPECT_FALSE(desktop->IsRealFile(daten()));

    ASSERT_TRUE(desktop->CreateFolder(daten() + "Neu\\Tiefer Ü\\"));
    EXPECT_TRUE(QFileInfo(onDisk(QStringLiteral("Neu/Tiefer Ü"))).isDir());
    EXPECT_TRUE(desktop->CreateFolder(daten() + "Neu")) << "an existing folder is no failure";
    EXPECT_FALSE(desktop->CreateFolder(report + "\\Unter")) << "a file stands in the way";
    writeFile(onDisk(QStringLiteral("Neu/Tiefer Ü/a.txt")));
    EXPECT_EQ(namesOf(desktop->ListFiles(daten(), "")), "Neu\\|Bericht.txt");

    EXPECT_TRUE(desktop->DeleteFile(report));
    EXPECT_FALSE(QFile::exists(onDisk(QStringLiteral("Bericht.txt"))));
    EXPECT_FALSE(desktop->DeleteFile(report));
    EXPECT_TRUE(desktop->DeleteFolder(daten() + "Neu"));
    EXPECT_FALSE(QFile::exists(onDisk(QStringLiteral("Neu"))));
    EXPECT_EQ(desktop->FolderError(daten()), "");
    EXPECT_NE(desktop->FolderError(daten() + "Neu\\"), "");

    writeFile(onDisk(QStringLiteral("bleibt.txt")));
    EXPECT_FALSE(desktop->DeleteFolder(daten())) << "a share's root is never emptied";
    EXPECT_TRUE(QFile::exists(onDisk(QStringLiteral("bleibt.txt"))));
}

TEST_F(SmbFilesTest, CredentialsFileThenGuestDecideWhoGetsIn)
{
    QTemporaryDir home;
    const QString file = home.filePath(QStringLiteral("credentials"));
    const QByteArray account = server->Account().toUtf8();
    const QByteArray password = SambaServer::Password().toUtf8();
    const struct {
        const char* name;
        QByteArray credentials; // empty: no file at all
        SambaServer::Share share;
        bool admitted;
    } cases[] = {
        {"guest on a guest share", "", SambaServer::Daten, true},
        {"guest on a hidden share", "", SambaServer::Versteckt, true},
        {"guest refused", "", SambaServer::Geschlossen, false},
        {"account", "username=" + account + "\npassword=" + password + "\r\ndomain=WORKGROUP\n",
         SambaServer::Geschlossen, !account.isEmpty()},
        {"wrong password", "username=" + account + "\npassword=falsch\n", SambaServer::Geschlossen,
         false},
        {"wrong password falls back to guest", "user=niemand\npass=x\n", SambaServer::Oeffentlich,
         true},
    };
    for (const auto& c : cases) {
        QFile::remove(file);
        if (!c.credentials.isEmpty())
            writeFile(file, c.credentials);
        fw::desktop::SmbClient client({5000, file.toStdString(), 0});
        const std::string url = "smb://127.0.0.1:" + std::to_string(server->Port()) + '/' +
                                SambaServer::ShareName(c.share).toStdString() + '/';
        EXPECT_EQ(client.ListFolder(url).has_value(), c.admitted) << c.name;
        EXPECT_EQ(client.LastError().empty(), c.admitted) << c.name << ": " << client.LastError();
    }
}

TEST_F(SmbFilesTest, SharesComeWithTypeAndDisplayTextAndTheDefaultPortReachesThem)
{
    fw::desktop::SmbClient client({5000, {}, server->Port()});
    const auto shares = client.ListShares("smb://127.0.0.1/");
    ASSERT_TRUE(shares.has_value()) << client.LastError();
    std::string listed;
    for (const fw::ShareInfo& share : shares->items())
        listed += share.Name + '=' + std::to_string(share.Type) + ':' + share.Remarks.Item(1) + ';';
    for (const char* expected :
         {"Daten=0:Daten;", "Öffentlich=0:Für alle;", "Versteckt$=0:", "Geschlossen=0:", "IPC$=3:"})
        EXPECT_NE(listed.find(expected), std::string::npos) << expected << " in " << listed;
    EXPECT_EQ(namesOf(files(10, server->Port())->ListFiles("\\\\127.0.0.1\\", "")),
              "Daten\\|Geschlossen\\|Öffentlich\\")
        << "the port of the settings";
}

TEST_F(SmbFilesTest, AHostThatIsNotThereCostsNoMoreThanTheTimeOut)
{
    fw::testing::DeadPort refusing(fw::testing::DeadPort::Refusing);
    fw::testing::DeadPort silent(fw::testing::DeadPort::Silent);
    const auto desktop = files(2);
    const std::string locations[] = {
        "\\\\127.0.0.1:" + std::to_string(refusing.Port()) + "\\Daten\\",
        "\\\\127.0.0.1:" + std::to_string(silent.Port()) + "\\",
        "\\\\formwerk-nirgends.invalid\\Daten\\",
    };
    for (const std::string& location : locations) {
        QElapsedTimer clock;
        clock.start();
        EXPECT_FALSE(desktop->FolderExists(location)) << location;
        EXPECT_NE(desktop->FolderError(location), "") << location;
        EXPECT_TRUE(desktop->ListFiles(location, "").empty()) << location;
        EXPECT_LT(clock.elapsed(), 3 * 2500) << location;
    }
    // A call stuck on the silent host holds the library for a few seconds more.
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop->FolderExists(daten()); }, 8000))
        << "a working host answers again";
}

TEST_F(SmbFilesTest, TenThousandFilesListAndAServerKilledMidwayFailsCleanly)
{
    SambaServer own;
    ASSERT_NE(own.Port(), 0) << own.SkipReason().toStdString();
    const QString folder = own.ShareFolder(SambaServer::Daten) + QStringLiteral("/viele");
    QDir().mkpath(folder);
    for (int i = 0; i < 10000; ++i)
        writeFile(folder + QStringLiteral("/Datei %1.txt").arg(i), "x");
    const std::string location = "\\\\127.0.0.1:" + std::to_string(own.Port()) + "\\Daten\\viele";
    const auto desktop = files(3);
    const auto entries = desktop->ListFiles(location, "*.txt");
    ASSERT_EQ(entries.size(), 10000u);
    EXPECT_EQ(entries.front().Name, "Datei 0.txt");
    EXPECT_EQ(entries.back().Size, 1);

    fw::desktop::SmbClient& client = desktop->Smb().Client();
    const auto url = desktop->SmbUrlOf(location).value();
    QElapsedTimer clock;
    clock.start();
    std::optional<std::vector<fw::desktop::SmbEntry>> during;
    std::thread lister([&] { during = client.ListFolder(url); });
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    own.Kill();
    lister.join();
    EXPECT_TRUE(!during || during->size() == 10000u) << "no half listing";
    EXPECT_FALSE(client.ListFolder(url).has_value());
    EXPECT_NE(client.LastError(), "");
    EXPECT_LT(clock.elapsed(), 2 * 3500);
}

} // namespace
