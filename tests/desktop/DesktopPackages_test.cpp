// Resource packages of the desktop host: zip files made here, good ones with
// libzip and hostile ones byte by byte, found by name, listed, extracted, and
// refused without a byte written where it should not be.
#include "desktop/DesktopPackages.h"
#include "desktop/DesktopPictures.h"
#include "desktop/SettingsStore.h"
#include "forms/Pictures.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zip.h>
#include <zlib.h>

using fw::desktop::DesktopPackage;
using fw::desktop::DesktopPictures;
using fw::desktop::PackageFolders;

namespace {

using Files = std::vector<std::pair<std::string, std::string>>; // name in the zip, content

void writeBytes(const QString& file, const std::string& bytes)
{
    QDir().mkpath(QFileInfo(file).path());
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(bytes.data(), qint64(bytes.size()));
}

void writeZip(const QString& file, const Files& files)
{
    QDir().mkpath(QFileInfo(file).path());
    int error = 0;
    zip_t* archive =
        zip_open(QFile::encodeName(file).constData(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    ASSERT_NE(archive, nullptr);
    for (const auto& [name, content] : files) {
        zip_source_t* source = zip_source_buffer(archive, content.data(), content.size(), 0);
        ASSERT_GE(zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8), 0) << name;
    }
    ASSERT_EQ(zip_close(archive), 0);
}

std::string png(const QColor& colour, int size = 16)
{
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes.toStdString();
}

std::string deflated(const std::string& data)
{
    z_stream stream{};
    deflateInit2(&stream, 9, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY);
    std::string out(deflateBound(&stream, data.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    stream.avail_in = uInt(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = uInt(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

// One entry as it stands in the file, whatever it claims.
struct Raw {
    std::string name;
    std::string content; // the inflated bytes
    bool deflate = false;
    std::uint16_t flags = 0; // bit 0: encrypted
    std::uint32_t unixMode = 0100644;
    std::int64_t claimedSize = -1; // -1: the true size
    bool badCrc = false;
};

void put16(std::string& out, std::uint32_t v)
{
    out += char(v & 0xff);
    out += char((v >> 8) & 0xff);
}

void put32(std::string& out, std::uint32_t v)
{
    put16(out, v & 0xffff);
    put16(out, v >> 16);
}

// A zip file written by hand, for what libzip refuses to make.
std::string rawZip(const std::vector<Raw>& entries)
{
    std::string out, directory;
    for (const Raw& e : entries) {
        const std::string data = e.deflate ? deflated(e.content) : e.content;
        std::uint32_t crc =
            crc32(0, reinterpret_cast<const Bytef*>(e.content.data()), uInt(e.content.size()));
        if (e.badCrc)
            crc ^= 0xdeadbeef;
        const auto size = std::uint32_t(e.claimedSize < 0 ? e.content.size() : e.claimedSize);
        const auto offset = std::uint32_t(out.size());
        const auto fields = [&](std::string& to) {
            put16(to, 20);
            put16(to, e.flags);
            put16(to, e.deflate ? 8 : 0);
            put32(to, 0); // time and date
            put32(to, crc);
            put32(to, std::uint32_t(data.size()));
            put32(to, size);
            put16(to, std::uint32_t(e.name.size()));
            put16(to, 0);
        };
        put32(out, 0x04034b50);
        fields(out);
        out += e.name + data;
        put32(directory, 0x02014b50);
        put16(directory, 0x0314); // made on Unix
        fields(directory);
        put16(directory, 0);
        put16(directory, 0);
        put16(directory, 0);
        put32(directory, e.unixMode << 16);
        put32(directory, offset);
        directory += e.name;
    }
    const auto start = std::uint32_t(out.size());
    out += directory;
    put32(out, 0x06054b50);
    put32(out, 0);
    put16(out, std::uint32_t(entries.size()));
    put16(out, std::uint32_t(entries.size()));
    put32(out, std::uint32_t(directory.size()));
    put32(out, start);
    put16(out, 0);
    return out;
}

class Packages : public ::testing::Test {
  protected:
    QString folder() const { return dir.filePath("packages"); }
    std::shared_ptr<PackageFolders> folders(bool builtIn = false) const
    {
        return std::make_shared<PackageFolders>(QStringList{folder(), dir.filePath("more")},
                                                builtIn);
    }
    QStringList filesIn(const QString& path) const
    {
        return QDir(path).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
    QTemporaryDir dir;
};

std::vector<std::string> items(const fw::StringList& list)
{
    return list.items();
}

TEST_F(Packages, LoadFindsPackagesByNameCaseBlindInFolderOrder)
{
    writeZip(folder() + "/Icons.zip", {{"Ico/16/a.ico", "first"}});
    writeZip(dir.filePath("more/icons.zip"), {{"Ico/16/b.ico", "second"}});
    writeZip(dir.filePath("more/Extra.zip"), {{"Ico/16/c.ico", "extra"}});
    writeBytes(folder() + "/Text.zip", "this is no zip file");
    const struct {
        std::string name;
        std::string item; // held by the package found; empty: nothing loads
    } cases[] = {
        {"ICONS", "ico\\16\\A.ICO"},
        {"icons.ZIP", "Ico\\16\\a.ico"},
        {" EXTRA ", "Ico/16/c.ico"},
        {"TEXT", ""},
        {"missing", ""},
        {"../packages/Icons", ""},
        {"", ""},
        {"FORMWERK", ""}, // the library's own, left out here
    };
    for (const auto& c : cases) {
        DesktopPackage package(folders());
        EXPECT_EQ(package.Load(c.name), !c.item.empty()) << c.name << package.LastError();
        EXPECT_EQ(package.Exists(c.item), !c.item.empty()) << c.name;
        EXPECT_FALSE(package.Exists("Ico\\16\\nothing.ico"));
    }
    DesktopPackage own(folders(true));
    ASSERT_TRUE(own.Load("Formwerk"));
    EXPECT_TRUE(own.Exists("Ico\\32\\Computer\\Files\\txt.ico"));
}

TEST_F(Packages, AFolderNamedInTheSettingsStoreIsSearchedAfterTheDataFolders)
{
    auto store = std::make_shared<fw::desktop::SettingsStore>(dir.filePath("settings"));
    ASSERT_TRUE(store->Write("HKEY_CURRENT_USER",
                             "Software\\Valdrenix\\Core\\Settings\\Resources\\PackageFolder",
                             QJsonValue(folder())));
    writeZip(folder() + "/Mine.zip", {{"Ico/16/mine.ico", "x"}});
    const auto fromStore = std::make_shared<PackageFolders>(store, false);
    EXPECT_EQ(fromStore->Folders().last(), folder());
    DesktopPackage package(fromStore);
    EXPECT_TRUE(package.Load("MINE"));
}

TEST_F(Packages, ContentListsFilesFoldersOrBothOnOneOrEveryLevel)
{
    writeZip(folder() + "/P.zip", {{"Ico/20/Computer/Signs/OK.ico", "1"},
                                   {"Ico/20/Computer/Signs/Ärger Groß.ico", "2"},
                                   {"Ico/20/Computer/Folders/", ""},
                                   {"Ico/20/Computer/read me.txt", "3"},
                                   {"Ico/32/x.ico", "4"}});
    DesktopPackage package(folders());
    ASSERT_TRUE(package.Load("P"));
    using V = std::vector<std::string>;
    const struct {
        std::string path;
        std::uint32_t a, b;
        V expected;
    } cases[] = {
        {"Ico\\20\\Computer\\", 0, 0, {"Ico\\20\\Computer\\read me.txt"}},
        {"ico/20/computer", 1, 0, {"Ico\\20\\Computer\\Signs\\", "Ico\\20\\Computer\\Folders\\"}},
        {"ICO\\20\\COMPUTER\\",
         2,
         0,
         {"Ico\\20\\Computer\\read me.txt", "Ico\\20\\Computer\\Signs\\",
          "Ico\\20\\Computer\\Folders\\"}},
        {"Ico\\20\\Computer\\Signs\\",
         0,
         0,
         {"Ico\\20\\Computer\\Signs\\OK.ico", "Ico\\20\\Computer\\Signs\\Ärger Groß.ico"}},
        {"Ico",
         0,
         1,
         {"Ico\\20\\Computer\\read me.txt", "Ico\\20\\Computer\\Signs\\OK.ico",
          "Ico\\20\\Computer\\Signs\\Ärger Groß.ico", "Ico\\32\\x.ico"}},
        {"", 1, 0, {"Ico\\"}},
        {"Ico\\nowhere\\", 2, 1, {}},
        {"Ico\\..\\Ico\\", 2, 0, {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(items(package.Content(c.path, c.a, c.b, 0)), c.expected) << c.path;
    EXPECT_TRUE(package.Exists("ico\\20\\computer\\signs\\ärger groß.ICO"));
}

TEST_F(Packages, ExtractWritesTheItemToAFileOrIntoAFolder)
{
    writeZip(folder() + "/P.zip", {{"Ico/16/Große Datei.ico", "inhalt"}});
    DesktopPackage package(folders());
    ASSERT_TRUE(package.Load("P"));
    const QString out = dir.filePath("out");
    QDir().mkpath(out);
    const std::string posix = QFile::encodeName(out).toStdString();
    const struct {
        std::string destination;
        QString written;
    } cases[] = {
        {posix + "/copy.bin", "copy.bin"},
        {posix, "Große Datei.ico"},
        {"C:" + QString(posix.c_str()).replace('/', '\\').toStdString() + "\\loc.bin", "loc.bin"},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(package.Extract("ICO\\16\\große datei.ico", c.destination))
            << c.destination << package.LastError();
        QFile file(out + "/" + c.written);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << c.destination;
        EXPECT_EQ(file.readAll(), "inhalt");
    }
    EXPECT_FALSE(package.Extract("Ico\\16\\missing.ico", posix));
    EXPECT_FALSE(package.Extract("Ico\\16\\Große Datei.ico", posix + "/no/such/folder/x"));
    EXPECT_EQ(filesIn(out).size(), 3);
}

TEST_F(Packages, HostileEntriesAreRefusedAndNothingIsWritten)
{
    const std::string zeros(8 << 20, '\0');
    const Raw good{"Ico/good.ico", "fine"};
    const struct {
        const char* why;
        Raw entry;
        std::string ask; // the item asked for
        bool listed;     // whether the package admits to holding it
    } cases[] = {
        {"zip slip", {"../evil.ico", "x"}, "..\\evil.ico", false},
        {"deep zip slip", {"Ico/../../evil.ico", "x"}, "Ico\\..\\..\\evil.ico", false},
        {"absolute", {"/tmp/evil.ico", "x"}, "\\tmp\\evil.ico", false},
        {"drive", {"C:/evil.ico", "x"}, "C:\\evil.ico", false},
        {"symbolic link",
         {"Ico/link.ico", "/etc/passwd", false, 0, 0120777},
         "Ico\\link.ico",
         true},
        {"encrypted", {"Ico/secret.ico", "x", false, 1}, "Ico\\secret.ico", true},
        {"bad CRC", {"Ico/crc.ico", "content", false, 0, 0100644, -1, true}, "Ico\\crc.ico", true},
        {"ratio bomb", {"Ico/bomb.ico", zeros, true}, "Ico\\bomb.ico", true},
        {"lying header", {"Ico/liar.ico", zeros, true, 0, 0100644, 100}, "Ico\\liar.ico", true},
        {"short data", {"Ico/short.ico", "abc", false, 0, 0100644, 10}, "Ico\\short.ico", true},
        {"over the limit", {"Ico/large.ico", std::string(5000, 'x')}, "Ico\\large.ico", true},
    };
    const QString out = dir.filePath("out/inner");
    QDir().mkpath(out);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        writeBytes(folder() + "/Hostile.zip", rawZip({good, c.entry}));
        DesktopPackage package(folders());
        ASSERT_TRUE(package.Load("Hostile")) << package.LastError();
        package.SetLimits({4096, 1000});
        EXPECT_EQ(package.Exists(c.ask), c.listed);
        EXPECT_FALSE(package.Extract(c.ask, QFile::encodeName(out).toStdString()));
        EXPECT_FALSE(package.LastError().empty());
        EXPECT_TRUE(filesIn(out).isEmpty()) << filesIn(out).join(' ').toStdString();
        EXPECT_TRUE(filesIn(dir.filePath("out")).isEmpty());
        EXPECT_FALSE(QFile::exists("/tmp/evil.ico"));
        // The good entry beside it still comes out.
        EXPECT_TRUE(package.Extract("Ico\\good.ico", QFile::encodeName(out).toStdString()));
        QFile::remove(out + "/good.ico");
    }
}

TEST_F(Packages, BrokenPackagesAndDuplicateNamesFailClearly)
{
    const std::string whole = rawZip({{"Ico/a.ico", "one"}, {"ICO/A.ICO", "two"}});
    const struct {
        const char* why;
        std::string bytes;
        bool loads;
    } cases[] = {
        {"duplicate name", whole, true},
        {"truncated", whole.substr(0, whole.size() - 30), false},
        {"empty file", "", false},
        {"no zip", "PK\x03\x04 but then nothing of the sort", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        writeBytes(folder() + "/Broken.zip", c.bytes);
        DesktopPackage package(folders());
        EXPECT_EQ(package.Load("Broken"), c.loads) << package.LastError();
        EXPECT_FALSE(package.Extract("Ico\\a.ico", QFile::encodeName(dir.path()).toStdString()));
        EXPECT_FALSE(package.LastError().empty());
        EXPECT_FALSE(QFile::exists(dir.filePath("a.ico")));
    }
}

TEST_F(Packages, APackageRemovedOrReplacedWhileLoadedAnswersAsEmpty)
{
    for (const bool replace : {false, true}) {
        writeZip(folder() + "/Gone.zip", {{"Ico/16/a.ico", "a"}});
        DesktopPackage package(folders());
        ASSERT_TRUE(package.Load("Gone"));
        ASSERT_TRUE(package.Exists("Ico\\16\\a.ico"));
        QFile::remove(folder() + "/Gone.zip");
        if (replace)
            writeZip(folder() + "/Gone.zip", {{"Ico/16/a.ico", "other"}, {"Ico/16/b.ico", "b"}});
        EXPECT_FALSE(package.Exists("Ico\\16\\a.ico"));
        EXPECT_EQ(package.Content("Ico\\16\\", 2, 1, 0).Count(), 0);
        EXPECT_FALSE(
            package.Extract("Ico\\16\\a.ico", QFile::encodeName(dir.path()).toStdString()));
        EXPECT_NE(package.LastError().find("removed or replaced"), std::string::npos);
    }
}

TEST_F(Packages, AHundredThousandEntriesAreIndexedOnce)
{
    Files files;
    files.reserve(100000);
    for (int i = 0; i < 100000; ++i)
        files.emplace_back("Ico/" + std::to_string(i % 20) + "/n" + std::to_string(i) + ".ico", "");
    writeZip(folder() + "/Big.zip", files);
    DesktopPackage package(folders());
    ASSERT_TRUE(package.Load("Big"));
    EXPECT_EQ(package.Content("Ico\\7\\", 0, 0, 0).Count(), 5000);
    EXPECT_EQ(package.Content("Ico", 1, 0, 0).Count(), 20);
    EXPECT_TRUE(package.Exists("ICO\\19\\N99999.ICO"));
}

// The picture service over packages.

QColor centreOf(DesktopPictures& pictures, const std::string& path)
{
    const QImage image = fw::ToImage(pictures.LoadPicture(path, 0, -1, -1));
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

TEST_F(Packages, PicturesComeFromTheStoreThenPackagesInFolderOrder)
{
    const QString store = dir.filePath("store");
    writeBytes(store + "/Ico/16/Signs/Both.png", png(Qt::red));
    writeZip(folder() + "/A.zip",
             {{"Ico/16/Signs/BOTH.png", png(Qt::green)}, {"Ico/16/Signs/Pack.ico", png(Qt::blue)}});
    writeZip(dir.filePath("more/B.zip"), {{"ICO/16/SIGNS/PACK.ICO", png(Qt::yellow)},
                                          {"Ico/16/Signs/Late.png", png(Qt::cyan)},
                                          {"Ico/16/Fremd/x.ico", "not a picture"}});
    writeBytes(folder() + "/Junk.zip", "not a zip at all");
    DesktopPictures pictures(store, folders());
    EXPECT_EQ(centreOf(pictures, "Ico\\16\\Signs\\Both.ico"), QColor(Qt::red));
    EXPECT_EQ(centreOf(pictures, "ico/16/signs/pack.ico"), QColor(Qt::blue));
    EXPECT_EQ(centreOf(pictures, "Ico\\16\\Signs\\Late.ico"), QColor(Qt::cyan));

    using V = std::vector<std::string>;
    EXPECT_EQ(
        items(pictures.ListResources("ico\\16\\signs\\", false, false, true)),
        (V{"ico\\16\\signs\\Both.png", "ico\\16\\signs\\Late.png", "ico\\16\\signs\\Pack.ico"}));
    EXPECT_EQ(items(pictures.ListResources("Ico/16", true, false, true)),
              (V{"Ico\\16\\Fremd\\", "Ico\\16\\Signs\\"}));
    EXPECT_EQ(items(pictures.ListResources("", true, false, true)), (V{"Ico\\"}));
    EXPECT_EQ(pictures.ListResources("Ico\\..\\", true, false, true).Count(), 0);

    std::string error;
    const std::string out = QFile::encodeName(dir.filePath("x.png")).toStdString();
    EXPECT_TRUE(pictures.ExtractResource("Ico\\16\\Signs\\Pack.ico", out, error)) << error;
    EXPECT_EQ(QImage(dir.filePath("x.png")).pixelColor(8, 8), QColor(Qt::blue));
    EXPECT_TRUE(pictures.ExtractResource("Ico\\16\\Signs\\both.png", out, error)) << error;
    EXPECT_EQ(QImage(dir.filePath("x.png")).pixelColor(8, 8), QColor(Qt::red));
    EXPECT_FALSE(pictures.ExtractResource("Ico\\16\\Signs\\None.ico", out, error));
    EXPECT_NE(pictures.NewResourcePackage(), nullptr);
}

TEST_F(Packages, AnEmptyStoreListsNothingAndTheLibrarysOwnPackageFillsTheTypeIcons)
{
    DesktopPictures empty(dir.filePath("nothing"), folders(false));
    EXPECT_EQ(empty.ListResources("", true, false, true).Count(), 0);
    EXPECT_EQ(empty.ListResources("Ico\\32\\Computer\\Files\\", false, false, true).Count(), 0);

    DesktopPictures own(dir.filePath("nothing"), folders(true));
    const fw::StringList types =
        own.ListResources("Ico\\32\\Computer\\Files\\", false, false, true);
    for (const char* name : {"txt.ico", "wav.ico", "bmp.ico", "New.ico"})
        EXPECT_TRUE(types.Contains(std::string("Ico\\32\\Computer\\Files\\") + name)) << name;
    for (const char* folder : {"Ico\\16\\Computer\\", "Ico\\20\\Computer\\"})
        EXPECT_TRUE(
            own.ListResources(folder, true, false, true).Contains(std::string(folder) + "Signs\\"));
    // Its pictures are PNG data under ".ico" names, which Qt reads by content.
    std::string error;
    const QString out = dir.filePath("wav.ico");
    ASSERT_TRUE(own.ExtractResource("Ico\\32\\Computer\\Files\\wav.ico",
                                    QFile::encodeName(out).toStdString(), error))
        << error;
    EXPECT_EQ(QImage(out).size(), QSize(32, 32));
}

} // namespace
