// Files: atomic text writes that fail honestly, listings, sizes and dates.
#include "desktop/DesktopApp.h"
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopPictures.h"
#include "desktop/DesktopRegistry.h"
#include "desktop/LocationPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using fw::desktop::DesktopFiles;

namespace {

std::string pathIn(const QTemporaryDir& dir, const char* name)
{
    return dir.filePath(name).toStdString();
}

QByteArray contentOf(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(DesktopFiles, WriteTextFileReplacesTheWholeFileOrFailsHonestlyKeepingTheOld)
{
    QTemporaryDir dir;
    DesktopFiles files;
    const std::string path = pathIn(dir, "notes.txt");
    ASSERT_TRUE(files.WriteTextFile(path, "erste Fassung, länger als die zweite", "", -1));
    ASSERT_TRUE(files.WriteTextFile(path, "Grüße\n", "", -1));
    EXPECT_EQ(contentOf(path), QByteArray("Grüße\n"));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"notes.txt"});
    // A regular file where a folder should be stops any user, root included.
    EXPECT_FALSE(files.WriteTextFile(path + "/inside.txt", "x", "", -1));
    EXPECT_FALSE(files.WriteTextFile("", "x", "", -1));
    EXPECT_EQ(contentOf(path), QByteArray("Grüße\n"));
}

TEST(DesktopFiles, WriteTextFileWritesTheNamedEncodingOrNothing)
{
    QTemporaryDir dir;
    DesktopFiles files;
    const std::string path = pathIn(dir, "text.txt");
    const std::string notUtf8 = "caf\xe9 \xff\xfe";
    struct Row {
        const char* encoding;
        std::string text;
        std::optional<QByteArray> bytes; ///< none: refused, the old content stays
    };
    const Row rows[] = {
        {"", "Grüße",
         QByteArray("Gr\xc3\xbc\xc3\x9f"
                    "e")},
        {"UTF-8", notUtf8, QByteArray::fromStdString(notUtf8)},
        {"utf8", "a\r\nb", QByteArray("a\r\nb")},
        {"ISO-8859-1", "Grüße",
         QByteArray("Gr\xfc\xdf"
                    "e")},
        {"Latin1", "\xc3\xa9", QByteArray("\xe9")},
        {"ISO-8859-1", "€", std::nullopt},
        {"ISO-8859-1", notUtf8, std::nullopt},
        {"UTF-16LE", "aä",
         QByteArray("\xff\xfe"
                    "a\0\xe4\0",
                    6)},
        {"UTF-16BE", "a", QByteArray("\xfe\xff\0a", 4)},
        {"no-such-encoding", "x", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.encoding);
        ASSERT_TRUE(files.WriteTextFile(path, "alt", "", -1));
        EXPECT_EQ(files.WriteTextFile(path, row.text, row.encoding, -1), row.bytes.has_value());
        EXPECT_EQ(contentOf(path), row.bytes.value_or("alt"));
    }
}

TEST(DesktopFiles, WriteTextFileIntoAReadOnlyFolderFails)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root writes into read-only folders";
    QTemporaryDir dir;
    DesktopFiles files;
    const std::string path = pathIn(dir, "kept.txt");
    ASSERT_TRUE(files.WriteTextFile(path, "old", "", -1));
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_FALSE(files.WriteTextFile(path, "new", "", -1));
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(contentOf(path), QByteArray("old"));
}

TEST(DesktopFiles, FoldersAndFilesAreToldApart)
{
    QTemporaryDir dir;
    DesktopFiles files;
    const std::string folder = pathIn(dir, "a/b/c");
    const std::string file = pathIn(dir, "a/b/c/f.txt");
    EXPECT_TRUE(files.CreateFolder(folder));
    EXPECT_TRUE(files.FolderExists(folder));
    EXPECT_FALSE(files.FileExists(folder));
    EXPECT_FALSE(files.IsRealFile(folder));
    ASSERT_TRUE(files.WriteTextFile(file, "12345", "", -1));
    EXPECT_TRUE(files.FileExists(file));
    EXPECT_TRUE(files.IsRealFile(file));
    EXPECT_FALSE(files.IsRealFile("DESKTOP:\\"));
    EXPECT_EQ(files.FileSize(file), 5);
    EXPECT_NEAR(double(files.FileDate(file)), double(QDateTime::currentSecsSinceEpoch()), 60);
    EXPECT_EQ(files.FileSize(pathIn(dir, "missing")), -1);
    EXPECT_EQ(files.FileDate(pathIn(dir, "missing")), -1);
    EXPECT_FALSE(files.DeleteFile(folder));
    EXPECT_TRUE(files.DeleteFile(file));
    EXPECT_FALSE(files.FileExists(file));
    EXPECT_TRUE(files.DeleteFolder(pathIn(dir, "a")));
    EXPECT_FALSE(files.FolderExists(pathIn(dir, "a")));
    EXPECT_FALSE(files.DeleteFolder("/"));
    EXPECT_FALSE(files.DeleteFolder(QDir::homePath().toStdString()));
}

TEST(DesktopFiles, ListFilesFiltersFilesAndKeepsFolders)
{
    QTemporaryDir dir;
    DesktopFiles files;
    files.CreateFolder(pathIn(dir, "Sub"));
    files.WriteTextFile(pathIn(dir, "b.TXT"), "x", "", -1);
    files.WriteTextFile(pathIn(dir, "a.txt"), "xy", "", -1);
    files.WriteTextFile(pathIn(dir, "c.log"), "z", "", -1);
    const auto entries = files.ListFiles(dir.path().toStdString(), "*.txt");
    std::vector<std::string> names;
    for (const auto& entry : entries)
        names.push_back(entry.Name + (entry.IsFolder ? "/" : ""));
    EXPECT_EQ(names, (std::vector<std::string>{"Sub/", "a.txt", "b.TXT"}));
    EXPECT_EQ(entries[1].Size, -1) << "the listing reads names only";
    EXPECT_EQ(files.ListFiles(dir.path().toStdString(), "*.txt;*.log").size(), 4u);
    EXPECT_EQ(files.ListFiles(dir.path().toStdString(), "").size(), 4u);
    EXPECT_TRUE(files.ListFiles(pathIn(dir, "missing"), "*").empty());
}

std::vector<std::string> listed(DesktopFiles& files, const std::string& folder,
                                const std::string& pattern)
{
    std::vector<std::string> names;
    for (const auto& entry : files.ListFiles(folder, pattern))
        names.push_back(entry.Name + (entry.IsFolder ? "/" : ""));
    return names;
}

void touch(const std::string& posix)
{
    ::close(::open(posix.c_str(), O_CREAT | O_WRONLY, 0644));
}

// Every name a Linux folder can hold is listed, found, sized and deleted
// through its location string, and nothing else goes with it.
TEST(DesktopFiles, OddNamesAreListedChosenAndDeletedByteExact)
{
    QTemporaryDir dir;
    DesktopFiles files;
    const std::string root = QFile::encodeName(dir.path()).toStdString();
    const std::string folder = fw::desktop::PosixToLocation(root + "/");
    ASSERT_EQ(folder.substr(0, 3), "C:\\");
    const std::string names[] = {
        "caf\xe9 not UTF-8",
        "a\\b:c*?\"<>|",
        "line\nbreak",
        "tab\there",
        "\xe2\x80\xae"
        "fdp.exe",
        "-rf --help",
        std::string(255, 'n'),
        "Case.txt",
        "CASE.TXT",
        "\xef\x9c\x81 escape block",
    };
    for (const std::string& name : names)
        touch(root + "/" + name);
    const auto entries = files.ListFiles(folder, "*");
    ASSERT_EQ(entries.size(), std::size(names)) << "two names equal but for case both show";
    for (const std::string& name : names) {
        SCOPED_TRACE(fw::desktop::DisplayName(fw::desktop::NameToLocation(name)));
        const auto entry = std::find_if(entries.begin(), entries.end(), [&](const auto& e) {
            return fw::desktop::NameFromLocation(e.Name) == name;
        });
        ASSERT_NE(entry, entries.end());
        const std::string location = folder + entry->Name;
        EXPECT_EQ(files.SystemPath(location).value_or("?"), root + "/" + name);
        EXPECT_TRUE(files.FileExists(location));
        EXPECT_EQ(files.FileSize(location), 0);
        EXPECT_TRUE(files.WriteTextFile(location, "neu", "", -1));
        EXPECT_TRUE(files.DeleteFile(location));
        EXPECT_EQ(::access((root + "/" + name).c_str(), F_OK), -1);
    }
    EXPECT_TRUE(files.ListFiles(folder, "*").empty());
    EXPECT_TRUE(files.CreateFolder(folder + "neu\\tief\\"));
    EXPECT_TRUE(QFileInfo(dir.filePath("neu/tief")).isDir());
    EXPECT_FALSE(files.FileExists("DESKTOP:\\"));
}

// Paths up to the system's limit of 4096 bytes work; longer ones fail
// cleanly, and a tree that deep deletes.
TEST(DesktopFiles, PathsAsLongAsTheSystemAllowsWorkAndLongerOnesFail)
{
    QTemporaryDir dir;
    DesktopFiles files;
    const std::string root = QFile::encodeName(dir.path()).toStdString();
    std::string deep = root;
    const std::size_t length = 4093; // with "/f" 4095 bytes, and the final NUL 4096
    while (length - deep.size() > 256)
        deep.append(1, '/').append(250, 'd');
    const std::size_t last = length - deep.size() - 1;
    deep.append(1, '/').append(last, 'e');
    const std::string folder = fw::desktop::PosixToLocation(deep);
    ASSERT_TRUE(files.CreateFolder(folder));
    const std::string file = folder + "\\f";
    EXPECT_EQ(deep.size() + 2, 4095u);
    EXPECT_TRUE(files.WriteTextFile(file, "x", "", -1));
    EXPECT_TRUE(files.FileExists(file));
    EXPECT_EQ(files.ListFiles(folder, "*").size(), 1u);
    EXPECT_FALSE(files.CreateFolder(folder + "\\toolong"));
    EXPECT_FALSE(files.FileExists(file + "xx"));
    EXPECT_EQ(files.FolderError(folder + "\\toolong"), std::strerror(ENAMETOOLONG));
    EXPECT_TRUE(
        files.DeleteFolder(fw::desktop::PosixToLocation(root + "/" + std::string(250, 'd'))));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size(), 0);
}

// What a listing reports when a folder cannot be shown: the system's reason.
TEST(DesktopFiles, FolderErrorGivesTheSystemsReason)
{
    QTemporaryDir dir;
    DesktopFiles files;
    QDir base(dir.path());
    for (const char* folder : {"fine", "shown", "locked"})
        base.mkdir(folder);
    QFile(dir.filePath("file.txt")).open(QIODevice::WriteOnly);
    QFile::link(dir.filePath("loop"), dir.filePath("loop"));
    QFile::link(dir.filePath("fine"), dir.filePath("toFine"));
    QFile::setPermissions(dir.filePath("locked"), {});
    const auto at = [&](const char* name) { return dir.filePath(name).toStdString() + "/"; };
    // Listed, then removed while shown: the next look must not answer from memory.
    ASSERT_TRUE(files.FolderError(at("shown")).empty());
    files.ListFiles(at("shown"), "*");
    base.rmdir("shown");

    struct Row {
        const char* name;
        int error; ///< 0: readable
    };
    const Row rows[] = {
        {"fine", 0},
        {"toFine", 0},
        {"shown", ENOENT},
        {"missing", ENOENT},
        {"file.txt", ENOTDIR},
        {"loop", ELOOP},
        {"locked", geteuid() == 0 ? 0 : EACCES}, // root reads every folder
    };
    for (const Row& row : rows) {
        EXPECT_EQ(files.FolderError(at(row.name)), row.error ? std::strerror(row.error) : "")
            << row.name;
        if (row.error) {
            EXPECT_TRUE(files.ListFiles(at(row.name), "*").empty()) << row.name;
        }
    }
    EXPECT_EQ(files.FolderError("DESKTOP:\\"), std::strerror(ENOENT));
    QFile::setPermissions(dir.filePath("locked"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    // Root reads every folder, so the locked row runs again as nobody.
    const QString setpriv = QStandardPaths::findExecutable("setpriv");
    if (geteuid() != 0 || setpriv.isEmpty())
        return;
    QProcess child;
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(setpriv, {"--reuid=65534", "--regid=65534", "--clear-groups",
                          QCoreApplication::applicationFilePath(),
                          "--gtest_filter=DesktopFiles.FolderErrorGivesTheSystemsReason"});
    ASSERT_TRUE(child.waitForFinished(60000));
    const QByteArray output = child.readAll();
    if (!output.contains("[==========]")) // nobody may not reach a build below /root
        GTEST_SKIP() << "cannot run the tests as nobody: " << output.toStdString();
    EXPECT_EQ(child.exitCode(), 0) << output.toStdString();
    EXPECT_TRUE(output.contains("[  PASSED  ] 1 test")) << output.toStdString();
}

TEST(DesktopFiles, PatternsAndLinksListAsTheUserExpects)
{
    QTemporaryDir dir;
    DesktopFiles files;
    QDir(dir.path()).mkdir("Sub");
    for (const char* name :
         {"a.txt", "B.TXT", "c.log", "README", ".hidden", "x.tar.gz", "repo", "Report-2024-b.dat",
          "reportage.dat", "report-2024-A.dat", "case.dat", "CASE.dat"})
        QFile(dir.filePath(name)).open(QIODevice::WriteOnly);
    QFile::link(dir.filePath("Sub"), dir.filePath("toSub"));
    QFile::link(dir.filePath("missing"), dir.filePath("dangling"));
    QFile::link(dir.filePath("loop"), dir.filePath("loop"));
    const std::string folder = dir.path().toStdString() + "/";
    struct Row {
        const char* pattern;
        std::vector<std::string> names;
    };
    const Row rows[] = {
        {"*.txt", {"Sub/", "toSub/", "a.txt", "B.TXT"}},
        {"*.TXT; *.log", {"Sub/", "toSub/", "a.txt", "B.TXT", "c.log"}},
        {"?.txt", {"Sub/", "toSub/", "a.txt", "B.TXT"}},
        {"*.gz", {"Sub/", "toSub/", "x.tar.gz"}},
        {"*.*",
         {"Sub/", "toSub/", "a.txt", "B.TXT", "c.log", "CASE.dat", "case.dat", "dangling", "loop",
          "README", "repo", "report-2024-A.dat", "Report-2024-b.dat", "reportage.dat", "x.tar.gz"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(listed(files, folder, row.pattern), row.names) << row.pattern;
    EXPECT_TRUE(files.ListFiles(folder + "missing/", "*").empty());
}

TEST(DesktopFiles, DeletingNeverFollowsALinkOutOfTheTree)
{
    QTemporaryDir dir;
    DesktopFiles files;
    QDir base(dir.path());
    base.mkpath("outside/keep");
    QFile(dir.filePath("outside/keep/precious.txt")).open(QIODevice::WriteOnly);
    base.mkpath("tree/deep/er");
    QFile(dir.filePath("tree/deep/er/f.txt")).open(QIODevice::WriteOnly);
    QFile::link(dir.filePath("outside"), dir.filePath("tree/deep/toOutside"));
    QFile::link(dir.filePath("outside"), dir.filePath("linkToFolder"));
    QFile::link(dir.filePath("outside/keep/precious.txt"), dir.filePath("linkToFile"));
    QFile::link(dir.filePath("outside"), dir.filePath("linkAsFolder"));

    EXPECT_TRUE(files.DeleteFile(dir.filePath("linkToFile").toStdString()));
    EXPECT_TRUE(files.DeleteFolder(dir.filePath("linkToFolder").toStdString()));
    // A chooser names folders with a trailing separator; the link still goes alone.
    EXPECT_TRUE(files.DeleteFolder(
        fw::desktop::PosixToLocation(dir.filePath("linkAsFolder").toStdString()) + "\\"));
    EXPECT_FALSE(QFileInfo(dir.filePath("linkAsFolder")).isSymLink());
    EXPECT_TRUE(files.DeleteFolder(dir.filePath("tree").toStdString()));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath("tree")));
    EXPECT_FALSE(QFileInfo(dir.filePath("linkToFolder")).isSymLink());
    EXPECT_TRUE(QFileInfo::exists(dir.filePath("outside/keep/precious.txt")));
    EXPECT_FALSE(files.DeleteFolder("C:\\"));
    EXPECT_FALSE(files.DeleteFolder(fw::desktop::PosixToLocation(QDir::homePath().toStdString())));
}

TEST(DesktopFiles, TheClassesRootAnswersFromTheMimeDatabase)
{
    if (!QMimeDatabase().mimeTypeForName("text/plain").isValid())
        GTEST_SKIP() << "no MIME database installed";
    QTemporaryDir dir;
    fw::desktop::DesktopRegistry registry(std::make_shared<fw::desktop::SettingsStore>(dir.path()));
    auto& strings = registry.Strings();
    const auto read = [&](const std::string& key) {
        return strings.ReadString(fw::HiveClassesRoot, key, "-", 1000);
    };
    EXPECT_EQ(read(".TXT\\"), "text/plain");
    EXPECT_EQ(read(".txt\\"), "text/plain");
    // The icon name is one the theme can draw, or absent when it has none
    // (no theme installed): the chooser then keeps its question mark.
    const std::string icon = read("text/plain\\DefaultIcon\\");
    fw::desktop::DesktopPictures pictures{QString()};
    EXPECT_EQ(pictures.ExtractIcon(icon, 0, 16, 0) != nullptr, icon != "-") << icon;
    EXPECT_EQ(pictures.ExtractIcon("text-plain", 0, 16, 0) != nullptr, icon != "-");
    EXPECT_NE(read("text/plain\\"), "-");
    EXPECT_EQ(read(".nosuchextension42\\"), "-");
    EXPECT_EQ(read("no/such\\DefaultIcon\\"), "-");
    EXPECT_FALSE(registry.Writer().WriteString(fw::HiveClassesRoot, ".txt\\", "x"));
}

TEST(DesktopFiles, SizeTextUsesBinaryUnitsAndADecimalComma)
{
    DesktopFiles files;
    EXPECT_EQ(files.SizeText(0), "0 Bytes");
    EXPECT_EQ(files.SizeText(1023), "1023 Bytes");
    EXPECT_EQ(files.SizeText(1536), "1,5 KB");
    EXPECT_EQ(files.SizeText(3 * 1024 * 1024 + 200 * 1024), "3,2 MB");
    EXPECT_EQ(files.SizeText(5LL * 1024 * 1024 * 1024), "5,0 GB");
}

TEST(DesktopApp, FoldersAreLocationsThatExistAndStampsAreLocalTime)
{
    QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    fw::desktop::DesktopApp app;
    fw::desktop::DesktopSystemFolders system;
    EXPECT_EQ(app.SamplesFolder(), "") << "no such folder: no row for it";
    QDir(data.path()).mkpath("formwerk/samples");
    QDir(data.path()).mkpath("formwerk/shared");
    for (const std::string& folder : {app.UserFolder(), app.SamplesFolder(), app.SharedFolder(),
                                      system.DesktopFolder(), system.DocumentsFolder()}) {
        ASSERT_TRUE(folder.size() > 3 && folder[1] == ':' && folder[2] == '\\') << folder;
        EXPECT_EQ(folder.back(), '\\') << folder;
        EXPECT_TRUE(DesktopFiles().FolderExists(folder)) << folder;
    }
    EXPECT_NE(app.SamplesFolder(), app.SharedFolder());
    qunsetenv("XDG_DATA_HOME");
    const QString stamp = QString::fromStdString(fw::desktop::DesktopClock().logStamp());
    EXPECT_TRUE(
        QRegularExpression("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d$").match(stamp).hasMatch())
        << stamp.toStdString();
}

} // namespace
