// Folder-to-folder synchronisation on real folders: what both sides hold
// after a run, after a cancelled run and after failures, and what the window
// was told, also at the sizes a user's data reaches (ten thousand files, a
// sparse file of 2 GB, a target disk that fills up). The trash and the
// protocols live in a test data folder.
#include "desktop/DesktopFiles.h"
#include "desktop/LocationPaths.h"
#include "support/RecordingSyncWindow.h"

#include <QDir>
#include <QTemporaryDir>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace fw;

namespace {

using Window = fw::testing::RecordingSyncWindow;

std::string contentOf(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return in ? text.str() : "<none>";
}

bool exists(const std::string& path)
{
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

std::vector<std::string> namesIn(const std::string& folder)
{
    std::vector<std::string> names;
    if (DIR* dir = ::opendir(folder.c_str())) {
        while (const dirent* entry = ::readdir(dir))
            if (entry->d_name[0] != '.' || std::strlen(entry->d_name) > 2)
                names.push_back(entry->d_name);
        ::closedir(dir);
    }
    std::sort(names.begin(), names.end());
    return names;
}

class SyncRun : public ::testing::Test {
  protected:
    void SetUp() override
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_data.path()));
        ASSERT_EQ(::mkdir(one.c_str(), 0755), 0);
        ASSERT_EQ(::mkdir(two.c_str(), 0755), 0);
    }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }

    static void Put(const std::string& path, const std::string& content, time_t mtime = 1700000000)
    {
        std::ofstream(path, std::ios::binary) << content;
        const timespec times[2] = {{mtime, 0}, {mtime, 0}};
        ::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW);
    }
    SyncOutcome Sync(Window& window)
    {
        job = {};
        job.DeleteForGood = deleteForGood;
        job.KeepBothOnConflict = keepBoth;
        return SyncOutcome(m_files.synchronise(one, two, window, job));
    }
    std::string Data(const std::string& part) const
    {
        return QFile::encodeName(m_data.path()).toStdString() + "/" + part;
    }
    std::string Trash(const std::string& part) const { return Data("Trash/" + part); }

    QTemporaryDir m_root, m_data;
    desktop::DesktopFiles m_files;
    const std::string one = QFile::encodeName(m_root.path()).toStdString() + "/eins";
    const std::string two = QFile::encodeName(m_root.path()).toStdString() + "/zwei";
    SyncJob job;
    bool deleteForGood = false, keepBoth = false;
};

TEST_F(SyncRun, FirstRunCopiesBothWaysLaterRunsFollowADeletionIntoTheTrash)
{
    ::mkdir((one + "/Ordner").c_str(), 0755);
    Put(one + "/Ordner/x.txt", "x");
    Put(one + "/a.txt", "a");
    Put(two + "/b.txt", "b", 1600000000);
    Window first;
    EXPECT_EQ(Sync(first), SyncFinished);
    EXPECT_EQ(first.tasks, (std::vector<int>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(first.shown->MMR, StringList{"Ordner"});
    EXPECT_EQ(first.shown->UP, (StringList{"Ordner\\x.txt", "a.txt"}));
    EXPECT_EQ(first.shown->DOWN, StringList{"b.txt"});
    EXPECT_EQ(first.shown->Total(), 4);
    EXPECT_EQ(contentOf(two + "/Ordner/x.txt"), "x");
    struct stat copied {};
    ::stat((one + "/b.txt").c_str(), &copied);
    EXPECT_EQ(copied.st_mtime, 1600000000);
    EXPECT_EQ(job.Done, 4);

    Window nothing;
    EXPECT_EQ(Sync(nothing), SyncFinished);
    EXPECT_FALSE(nothing.shown) << "nothing to do asks nothing";
    EXPECT_TRUE(nothing.Logged("nichts zu tun"));

    ::unlink((two + "/a.txt").c_str());
    Window third;
    EXPECT_EQ(Sync(third), SyncFinished);
    EXPECT_EQ(third.shown->DL, StringList{"a.txt"});
    EXPECT_FALSE(exists(one + "/a.txt"));
    EXPECT_EQ(contentOf(Trash("files/a.txt")), "a");
    EXPECT_NE(contentOf(Trash("info/a.txt.trashinfo")).find("Path=" + one + "/a.txt"),
              std::string::npos);
}

TEST_F(SyncRun, ADamagedProtocolDeletesNothing)
{
    Put(one + "/a.txt", "a");
    Window first, second;
    Sync(first);
    ASSERT_EQ(namesIn(Data("formwerk/sync")).size(), 1u);
    for (const auto& name : namesIn(Data("formwerk/sync")))
        Put(Data("formwerk/sync/") + name, "Unsinn");
    ::unlink((two + "/a.txt").c_str());
    EXPECT_EQ(Sync(second), SyncFinished);
    EXPECT_TRUE(second.Logged("nicht lesbar"));
    EXPECT_EQ(contentOf(two + "/a.txt"), "a") << "copied again, not deleted";
}

TEST_F(SyncRun, ConflictsAreLeftAloneOrKeptBothWhenAsked)
{
    for (const bool both : {false, true}) {
        SCOPED_TRACE(both);
        keepBoth = both;
        Put(one + "/c.txt", "alt"), Put(two + "/c.txt", "alt");
        Window first, second;
        Sync(first);
        Put(one + "/c.txt", "eins", 1700000100), Put(two + "/c.txt", "zwei!", 1700000200);
        EXPECT_EQ(Sync(second), SyncFinished);
        EXPECT_EQ(job.Conflicts, 1);
        ASSERT_EQ(second.errors.size(), 1u);
        EXPECT_EQ(second.errors[0].rfind("Konflikt | c.txt |", 0), 0u);
        EXPECT_EQ(contentOf(one + "/c.txt"), "eins");
        EXPECT_EQ(contentOf(two + "/c.txt"), "zwei!");
        const auto names = namesIn(one);
        EXPECT_EQ(names.size(), both ? 2u : 1u);
        if (both) {
            EXPECT_EQ(names[0].rfind("c (Konflikt ", 0), 0u) << names[0];
            EXPECT_EQ(contentOf(one + "/" + names[0]), "zwei!");
            EXPECT_EQ(contentOf(two + "/" + names[0]), "zwei!");
        }
        QDir(QFile::decodeName(one.c_str())).removeRecursively();
        QDir(QFile::decodeName(two.c_str())).removeRecursively();
        QDir(m_data.path()).removeRecursively();
        ::mkdir(one.c_str(), 0755), ::mkdir(two.c_str(), 0755);
    }
}

TEST_F(SyncRun, UncheckedDeclinedAndDryRunsChangeOnlyWhatWasConfirmed)
{
    Put(one + "/a.txt", "a"), Put(one + "/b.txt", "b");
    Window declined;
    declined.answer = [](SyncActions&) { return false; };
    EXPECT_EQ(Sync(declined), SyncCancelled);
    EXPECT_EQ(job.Skipped, 2);
    EXPECT_EQ(namesIn(two), std::vector<std::string>{});

    Window dry;
    job = {};
    job.DryRun = true;
    EXPECT_EQ(SyncOutcome(m_files.synchronise(one, two, dry, job)), SyncFinished);
    EXPECT_EQ(job.Skipped, 2);
    EXPECT_EQ(namesIn(two), std::vector<std::string>{});
    EXPECT_EQ(namesIn(Data("")), std::vector<std::string>{}) << "no protocol either";

    Window unchecked;
    unchecked.answer = [](SyncActions& actions) { return actions.UP.RemoveValue("b.txt") == 1; };
    EXPECT_EQ(Sync(unchecked), SyncFinished);
    EXPECT_EQ(job.Done, 1);
    EXPECT_EQ(job.Skipped, 1);
    EXPECT_EQ(namesIn(two), std::vector<std::string>{"a.txt"});
    Window later;
    EXPECT_EQ(Sync(later), SyncFinished);
    EXPECT_EQ(later.shown->Total(), 1) << "what was left out is asked again";
    EXPECT_EQ(later.shown->UP, StringList{"b.txt"});

    // Leaving out a folder leaves out what was to go into it, without errors.
    ASSERT_EQ(::mkdir((one + "/Neu").c_str(), 0755), 0);
    ASSERT_EQ(::mkdir((one + "/Neu/Tief").c_str(), 0755), 0);
    Put(one + "/Neu/c.txt", "c"), Put(one + "/Neu/Tief/d.txt", "d");
    Window folderOut;
    folderOut.answer = [](SyncActions& actions) { return actions.MMR.RemoveValue("Neu") == 1; };
    EXPECT_EQ(Sync(folderOut), SyncFinished);
    EXPECT_EQ(job.Errors, 0) << folderOut.errors.front();
    EXPECT_EQ(job.Done, 0);
    EXPECT_EQ(job.Skipped, 4) << "Neu, Neu\\Tief and the two files in them";
    EXPECT_FALSE(exists(two + "/Neu"));
}

TEST_F(SyncRun, CancelMidCopyLeavesNoHalfFileAndNoTemporary)
{
    Put(one + "/gross.bin", std::string(8 << 20, 'g'));
    Put(one + "/klein.txt", "k");
    Window window;
    window.cancelAfterProgress = 2;
    EXPECT_EQ(Sync(window), SyncCancelled);
    EXPECT_EQ(namesIn(two), std::vector<std::string>{});
    EXPECT_EQ(job.Skipped, 2);
    EXPECT_TRUE(window.Logged("Abgebrochen: 0 Aktionen ausgeführt, 2 nicht ausgeführt"));
    Window again;
    EXPECT_EQ(Sync(again), SyncFinished);
    EXPECT_EQ(contentOf(two + "/gross.bin").size(), std::size_t(8 << 20));
}

TEST_F(SyncRun, BadPlacesAreRefusedWithoutChangingAnything)
{
    ::mkdir((one + "/innen").c_str(), 0755);
    Put(two + "/b.txt", "b");
    struct Row {
        std::string path1, path2, reason;
    } rows[] = {
        {one, one, "derselbe Ordner"},
        {one, one + "/innen", "Ein Pfad liegt im anderen"},
        {one + "/innen", one, "Ein Pfad liegt im anderen"},
        {one + "/fehlt", two, std::strerror(ENOENT)},
        {two + "/b.txt", one, "Kein Ordner"},
    };
    for (const Row& row : rows) {
        Window window;
        SyncJob job;
        EXPECT_EQ(m_files.synchronise(row.path1, row.path2, window, job), SyncFailed);
        ASSERT_EQ(window.errors.size(), 1u) << row.path2;
        EXPECT_NE(window.errors[0].find(row.reason), std::string::npos) << window.errors[0];
        EXPECT_LE(window.tasks.size(), 0u);
    }
    EXPECT_EQ(namesIn(one), std::vector<std::string>{"innen"});
}

TEST_F(SyncRun, OddNamesSurviveTheConfirmationAndTheTrash)
{
    const std::vector<std::string> names = {"Fall", "caf\xe9", "fall", "x\\y:z.txt"};
    for (const auto& name : names)
        Put(one + "/" + name, name);
    Window first;
    EXPECT_EQ(Sync(first), SyncFinished);
    EXPECT_EQ(first.shown->UP.Count(), 4);
    EXPECT_TRUE(first.shown->UP.Contains(desktop::NameToLocation("caf\xe9")));
    EXPECT_EQ(namesIn(two), names);
    for (const auto& name : names)
        EXPECT_EQ(contentOf(two + "/" + name), name);

    ::unlink((one + "/caf\xe9").c_str());
    Window second;
    EXPECT_EQ(Sync(second), SyncFinished);
    EXPECT_EQ(second.errors, std::vector<std::string>{});
    EXPECT_FALSE(exists(two + "/caf\xe9"));
    const auto info = namesIn(Trash("info"));
    ASSERT_EQ(info.size(), 1u);
    EXPECT_NE(contentOf(Trash("info/" + info[0])).find("/zwei/caf%E9\n"), std::string::npos);
}

TEST_F(SyncRun, UnreadableLinkedAndVanishingEntriesFailAloneAndNothingIsLost)
{
    ::mkfifo((one + "/fifo").c_str(), 0644);
    ::symlink("/etc", (one + "/link").c_str());
    Put(one + "/weg.txt", "w"), Put(one + "/da.txt", "d");
    Window window;
    window.answer = [&](SyncActions&) { return ::unlink((one + "/weg.txt").c_str()) == 0; };
    EXPECT_EQ(Sync(window), SyncFinished);
    EXPECT_EQ(job.Errors, 2);
    ASSERT_EQ(window.errors.size(), 2u);
    EXPECT_EQ(window.errors[0].rfind("Nicht lesbar, übergangen | fifo |", 0), 0u);
    EXPECT_EQ(window.errors[1].rfind("Datei nach Pfad 2 kopieren | weg.txt |", 0), 0u);
    EXPECT_TRUE(window.Logged("Übergangen: link"));
    EXPECT_EQ(namesIn(two), std::vector<std::string>{"da.txt"});
}

TEST_F(SyncRun, TenThousandFilesThenTheSecondRunPlansExactlyTheChangedOnes)
{
    const auto nameOf = [](int i, char slash) {
        return "Ordner " + std::to_string(i % 100) + slash + "Datei " + std::to_string(i) + ".txt";
    };
    for (int i = 0; i < 100; ++i)
        ::mkdir((one + "/Ordner " + std::to_string(i)).c_str(), 0755);
    for (int i = 0; i < 10000; ++i)
        Put(one + "/" + nameOf(i, '/'), "Inhalt " + std::to_string(i));
    Window first;
    ASSERT_EQ(Sync(first), SyncFinished);
    EXPECT_EQ(first.errors, std::vector<std::string>{});
    EXPECT_EQ(contentOf(two + "/" + nameOf(9999, '/')), "Inhalt 9999");

    // Edits on both sides, each on other files.
    std::vector<std::string> up, down;
    for (int i = 0; i < 10000; i += 97) {
        Put((i % 2 ? two : one) + "/" + nameOf(i, '/'), "geändert", 1700000060);
        (i % 2 ? down : up).push_back(nameOf(i, '\\'));
    }
    const auto sorted = [](const StringList& list) {
        std::vector<std::string> items = list.items();
        std::sort(items.begin(), items.end());
        return items;
    };
    std::sort(up.begin(), up.end());
    std::sort(down.begin(), down.end());
    Window second;
    ASSERT_EQ(Sync(second), SyncFinished);
    EXPECT_EQ(sorted(second.shown->UP), up);
    EXPECT_EQ(sorted(second.shown->DOWN), down);
    EXPECT_EQ(second.shown->Total(), int(up.size() + down.size()));
    EXPECT_EQ(job.Errors, 0);
    EXPECT_EQ(contentOf(one + "/" + nameOf(97, '/')), "geändert");
    EXPECT_EQ(contentOf(two + "/" + nameOf(194, '/')), "geändert");
}

TEST_F(SyncRun, AFullDiskFailsTheCopyThatDoesNotFitOnlyAndKeepsItPlanned)
{
    if (::mount("tmpfs", two.c_str(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "mounting a small tmpfs is not allowed here";
    const struct Unmount {
        std::string at;
        ~Unmount() { ::umount2(at.c_str(), MNT_DETACH); }
    } unmount{two};
    Put(one + "/Bericht.dat", "alte Fassung");
    Window first;
    ASSERT_EQ(Sync(first), SyncFinished);

    // The new version does not fit on side 2's disk; a small new file does.
    Put(one + "/Bericht.dat", std::string(2 << 20, 'x'), 1700000100);
    Put(one + "/klein.txt", "k");
    Window full;
    EXPECT_EQ(Sync(full), SyncFinished);
    EXPECT_EQ(job.Errors, 1);
    ASSERT_EQ(full.errors.size(), 1u);
    EXPECT_NE(full.errors[0].find("Bericht.dat"), std::string::npos) << full.errors[0];
    EXPECT_EQ(contentOf(two + "/Bericht.dat"), "alte Fassung");
    EXPECT_EQ(namesIn(two), (std::vector<std::string>{"Bericht.dat", "klein.txt"}));

    // Another volume's trash lies in its top folder, which is side 2's root
    // here: it must not be synchronised back. Had the protocol taken the
    // failed copy as done, the old file would now be planned over the new.
    ::unlink((one + "/klein.txt").c_str());
    Window again, later;
    EXPECT_EQ(Sync(again), SyncFinished);
    EXPECT_EQ(again.errors.size(), 1u);
    job = {};
    job.DryRun = true;
    EXPECT_EQ(SyncOutcome(m_files.synchronise(one, two, later, job)), SyncFinished);
    EXPECT_EQ(later.shown->Total(), 1);
    EXPECT_EQ(later.shown->UP, StringList{"Bericht.dat"});
    EXPECT_EQ(namesIn(two), (std::vector<std::string>{".Trash-0", "Bericht.dat"}));
}

// Data at the start and in the middle, holes between and at the end: a copy
// that skips holes must still give the whole size, and keep the holes.
TEST_F(SyncRun, ASparseFileOfTwoGigabytesArrivesWholeAndStaysSparse)
{
    constexpr off_t size = off_t(2) << 30;
    const std::pair<off_t, std::string> marks[] = {{0, "Anfang"},
                                                   {off_t(1) << 30, "Mitte"},
                                                   {off_t(3) << 28, std::string(4, '\0')},
                                                   {size - 4, std::string(4, '\0')}};
    const int out = ::open((one + "/Abbild.img").c_str(), O_CREAT | O_WRONLY, 0644);
    ASSERT_EQ(::ftruncate(out, size), 0);
    for (const auto& [offset, text] : marks) {
        if (text[0] != '\0') {
            ASSERT_EQ(::pwrite(out, text.data(), text.size(), offset), ssize_t(text.size()));
        }
    }
    ::close(out);
    Window window;
    EXPECT_EQ(Sync(window), SyncFinished);
    EXPECT_EQ(window.errors, std::vector<std::string>{});
    const int in = ::open((two + "/Abbild.img").c_str(), O_RDONLY);
    struct stat copied {};
    ASSERT_EQ(::fstat(in, &copied), 0);
    EXPECT_EQ(copied.st_size, size);
    EXPECT_LT(copied.st_blocks * 512, 1 << 20);
    for (const auto& [offset, text] : marks) {
        std::string read(text.size(), '\0');
        ASSERT_EQ(::pread(in, read.data(), read.size(), offset), ssize_t(read.size()));
        EXPECT_EQ(read, text) << "at " << offset;
    }
    ::close(in);
}

} // namespace
