// Folder-to-folder synchronisation on real folders: what both sides hold
// after a run, after a cancelled run and after failures, and what the window
// was told. The trash and the protocols live in a test data folder.
#include "desktop/DesktopFiles.h"
#include "desktop/LocationPaths.h"

#include <QDir>
#include <QTemporaryDir>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace fw;

namespace {

// Records what the run shows; answers the confirmation as the test says and
// raises the cancel flag after a number of PROGRESS calls in the carry-out.
class Window final : public SyncProgress {
  public:
    std::function<bool(SyncActions&)> answer = [](SyncActions&) { return true; };
    int cancelAfterProgress = -1;
    std::vector<int> tasks;
    std::vector<std::string> log, errors;
    std::optional<SyncActions> shown;

    void SHOWTASK(std::int32_t n) override { tasks.push_back(n); }
    void LOG(const std::string& text) override { log.push_back(text); }
    void PROGRESS(std::int32_t, std::int32_t) override
    {
        if (!tasks.empty() && tasks.back() == 5 && cancelAfterProgress >= 0)
            m_cancelled = m_cancelled || cancelAfterProgress-- == 0;
    }
    void LOGERROR(const std::string& a, const std::string& b, const std::string& c) override
    {
        errors.push_back(a + " | " + b + " | " + c);
    }
    bool Cancelled() const override { return m_cancelled; }
    bool Confirm(SyncActions& actions) override
    {
        shown = actions;
        return answer(actions);
    }
    bool Logged(const std::string& part) const
    {
        return std::any_of(log.begin(), log.end(),
                           [&](const std::string& line) { return line.find(part) != line.npos; });
    }

  private:
    bool m_cancelled = false;
};

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

TEST_F(SyncRun, AFullDiskFailsTheCopyThatDoesNotFitOnly)
{
    if (::mount("tmpfs", two.c_str(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "mounting a small tmpfs is not allowed here";
    const struct Unmount {
        std::string at;
        ~Unmount() { ::umount(at.c_str()); }
    } unmount{two};
    Put(one + "/gross.bin", std::string(2 << 20, 'g'));
    Put(one + "/klein.txt", "k");
    Window window;
    deleteForGood = true;
    EXPECT_EQ(Sync(window), SyncFinished);
    EXPECT_EQ(job.Errors, 1);
    EXPECT_EQ(namesIn(two), std::vector<std::string>{"klein.txt"});
    // Another volume's trash lies in its top folder, which is side 2's root
    // here: it must not be synchronised back.
    ::unlink((one + "/klein.txt").c_str());
    deleteForGood = false;
    Window again, later;
    EXPECT_EQ(Sync(again), SyncFinished);
    EXPECT_EQ(again.errors.size(), 1u);
    EXPECT_EQ(Sync(later), SyncFinished);
    EXPECT_EQ(namesIn(one), std::vector<std::string>{"gross.bin"});
    EXPECT_EQ(namesIn(two), std::vector<std::string>{".Trash-0"});
}

TEST_F(SyncRun, ASparseFileStaysSparse)
{
    const int fd = ::open((one + "/sparse.img").c_str(), O_CREAT | O_WRONLY, 0644);
    ASSERT_EQ(::pwrite(fd, "x", 1, (std::int64_t(1) << 30) - 1), 1);
    ::close(fd);
    Window window;
    EXPECT_EQ(Sync(window), SyncFinished);
    struct stat copied {};
    ASSERT_EQ(::stat((two + "/sparse.img").c_str(), &copied), 0);
    EXPECT_EQ(copied.st_size, std::int64_t(1) << 30);
    EXPECT_LT(copied.st_blocks * 512, 1 << 20);
}

} // namespace
