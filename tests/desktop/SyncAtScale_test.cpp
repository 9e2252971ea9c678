// Folder synchronisation through the desktop host at sizes and limits a
// user's data reaches: ten thousand files, a sparse file of 2 GB, a target
// disk that fills up during a copy.
#include "desktop/DesktopFiles.h"
#include "host/SyncJob.h"

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using fw::desktop::DesktopFiles;

// Confirms whatever is planned and keeps the plan and the errors.
class RecordingProgress final : public fw::SyncProgress {
  public:
    void SHOWTASK(std::int32_t) override {}
    void LOG(const std::string&) override {}
    void PROGRESS(std::int32_t, std::int32_t) override {}
    void LOGERROR(const std::string& a, const std::string& b, const std::string& c) override
    {
        errors.push_back(a + " | " + b + " | " + c);
    }
    bool Cancelled() const override { return false; }
    bool Confirm(fw::SyncActions& actions) override
    {
        plan = actions;
        return true;
    }
    std::optional<fw::SyncActions> plan;
    std::vector<std::string> errors;
};

// The protocols of the last runs go to the user's data folder: each test
// gets its own, so that no run of another test or of the user counts.
class SyncAtScale : public ::testing::Test {
  protected:
    void SetUp() override
    {
        m_oldDataHome = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", m_dataHome.path().toUtf8());
    }
    void TearDown() override { qputenv("XDG_DATA_HOME", m_oldDataHome); }

    /// One run of source into target through the host's file services.
    fw::SyncOutcome Run(const fs::path& source, const fs::path& target, fw::SyncJob& job,
                        RecordingProgress& window)
    {
        DesktopFiles files;
        return fw::SyncOutcome(files.synchronise(source.string(), target.string(), window, job));
    }

  private:
    QTemporaryDir m_dataHome;
    QByteArray m_oldDataHome;
};

void writeFile(const fs::path& file, const std::string& content)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary | std::ios::trunc) << content;
}

std::string contentOf(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A new content with a later time, as an edit leaves a file.
void edit(const fs::path& file, const std::optional<std::string>& content = {})
{
    const auto time = fs::last_write_time(file);
    writeFile(file, content ? *content : contentOf(file) + " geändert");
    fs::last_write_time(file, time + std::chrono::minutes(1));
}

std::vector<std::string> sorted(const fw::StringList& list)
{
    std::vector<std::string> items = list.items();
    std::sort(items.begin(), items.end());
    return items;
}

std::vector<std::string> namesIn(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(SyncAtScale, TenThousandFilesThenTheSecondRunPlansExactlyTheChangedOnes)
{
    QTemporaryDir dir;
    const fs::path source = dir.filePath("Quelle").toStdString();
    const fs::path target = dir.filePath("Ziel").toStdString();
    auto nameOf = [](int i) {
        return "Ordner " + std::to_string(i % 100) + "/Datei " + std::to_string(i) + ".txt";
    };
    for (int i = 0; i < 10000; ++i)
        writeFile(source / nameOf(i), "Inhalt " + std::to_string(i));
    fs::create_directories(target);
    RecordingProgress first;
    fw::SyncJob all;
    all.ConfirmAll = true;
    ASSERT_EQ(Run(source, target, all, first), fw::SyncFinished);
    EXPECT_EQ(all.Errors, 0) << (first.errors.empty() ? "" : first.errors.front());
    EXPECT_EQ(contentOf(target / nameOf(9999)), "Inhalt 9999");

    // Edits on both sides, each on other files; the listing form of a path
    // has "\" between its names.
    std::vector<std::string> up, down;
    for (int i = 0; i < 10000; i += 97) {
        const bool onSource = i % 2 == 0;
        edit((onSource ? source : target) / nameOf(i));
        std::string location = nameOf(i);
        std::replace(location.begin(), location.end(), '/', '\\');
        (onSource ? up : down).push_back(location);
    }
    std::sort(up.begin(), up.end());
    std::sort(down.begin(), down.end());
    RecordingProgress second;
    fw::SyncJob asked;
    ASSERT_EQ(Run(source, target, asked, second), fw::SyncFinished);
    ASSERT_TRUE(second.plan.has_value());
    EXPECT_EQ(sorted(second.plan->UP), up);
    EXPECT_EQ(sorted(second.plan->DOWN), down);
    EXPECT_EQ(second.plan->Total(), int(up.size() + down.size()));
    EXPECT_EQ(asked.Errors, 0);
    EXPECT_EQ(contentOf(source / nameOf(97)), contentOf(target / nameOf(97)));
    EXPECT_EQ(contentOf(target / nameOf(194)), "Inhalt 194 geändert");
}

TEST_F(SyncAtScale, SparseFileOfTwoGigabytesArrivesWithItsSizeAndContent)
{
    QTemporaryDir dir;
    const fs::path source = dir.filePath("Quelle").toStdString();
    const fs::path target = dir.filePath("Ziel").toStdString();
    fs::create_directories(source);
    fs::create_directories(target);
    constexpr off_t size = off_t(2) << 30;
    // Data at the start and in the middle; holes between and at the end, so
    // that a copy which skips holes must still give the whole size.
    const std::pair<off_t, std::string> marks[] = {{0, "Anfang"},
                                                   {off_t(1) << 30, "Mitte"},
                                                   {off_t(3) << 28, std::string(4, '\0')},
                                                   {size - 4, std::string(4, '\0')}};
    const int out = ::open((source / "Abbild.img").c_str(), O_CREAT | O_WRONLY, 0644);
    ASSERT_GE(out, 0);
    ASSERT_EQ(::ftruncate(out, size), 0);
    for (const auto& [offset, text] : marks) {
        if (text[0] != '\0') {
            ASSERT_EQ(::pwrite(out, text.data(), text.size(), offset), ssize_t(text.size()));
        }
    }
    ::close(out);

    RecordingProgress window;
    fw::SyncJob job;
    job.ConfirmAll = true;
    ASSERT_EQ(Run(source, target, job, window), fw::SyncFinished);
    EXPECT_EQ(job.Errors, 0) << (window.errors.empty() ? "" : window.errors.front());
    EXPECT_EQ(fs::file_size(target / "Abbild.img"), std::uintmax_t(size));
    const int in = ::open((target / "Abbild.img").c_str(), O_RDONLY);
    ASSERT_GE(in, 0);
    for (const auto& [offset, text] : marks) {
        std::string read(text.size(), '\0');
        ASSERT_EQ(::pread(in, read.data(), read.size(), offset), ssize_t(read.size()));
        EXPECT_EQ(read, text) << "at " << offset;
    }
    ::close(in);
}

// A small memory file system as the target; only where mounting is allowed.
class SmallDisk {
  public:
    explicit SmallDisk(const fs::path& folder) : m_folder(folder)
    {
        fs::create_directories(folder);
        m_mounted = ::mount("none", folder.c_str(), "tmpfs", 0, "size=2m") == 0;
    }
    ~SmallDisk()
    {
        if (m_mounted)
            ::umount2(m_folder.c_str(), MNT_DETACH);
    }
    bool Mounted() const { return m_mounted; }

  private:
    fs::path m_folder;
    bool m_mounted = false;
};

TEST_F(SyncAtScale, FullDiskKeepsTheOldFileAndLeavesItPlannedForTheNextRun)
{
    QTemporaryDir dir;
    const fs::path source = dir.filePath("Quelle").toStdString();
    const fs::path target = dir.filePath("Ziel").toStdString();
    SmallDisk disk(target);
    if (!disk.Mounted())
        GTEST_SKIP() << "a 2 MB tmpfs cannot be mounted here (needs root): " << strerror(errno);
    writeFile(source / "Bericht.dat", "alte Fassung");
    RecordingProgress first;
    fw::SyncJob all;
    all.ConfirmAll = true;
    ASSERT_EQ(Run(source, target, all, first), fw::SyncFinished);
    ASSERT_EQ(contentOf(target / "Bericht.dat"), "alte Fassung");

    // The new version does not fit on the target's disk.
    edit(source / "Bericht.dat", std::string(3 << 20, 'x'));
    RecordingProgress failed;
    fw::SyncJob again;
    again.ConfirmAll = true;
    EXPECT_EQ(Run(source, target, again, failed), fw::SyncFinished);
    EXPECT_EQ(again.Errors, 1);
    ASSERT_EQ(failed.errors.size(), 1u);
    EXPECT_NE(failed.errors.front().find("Bericht.dat"), std::string::npos)
        << failed.errors.front();
    EXPECT_EQ(contentOf(target / "Bericht.dat"), "alte Fassung");
    EXPECT_EQ(namesIn(target), std::vector<std::string>{"Bericht.dat"}) << "no temporary stays";

    // Had the protocol taken the failed copy as done, the old target would now
    // look like the newer side and be planned over the source.
    RecordingProgress next;
    fw::SyncJob asked;
    asked.DryRun = true;
    Run(source, target, asked, next);
    ASSERT_TRUE(next.plan.has_value());
    EXPECT_EQ(sorted(next.plan->UP), std::vector<std::string>{"Bericht.dat"});
    EXPECT_EQ(next.plan->DOWN.Count(), 0);
}

} // namespace
