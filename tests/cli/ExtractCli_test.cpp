// formwerk --extract RESOURCE DEST: one resource out of the picture store's
// folder or a package, silent on success, one line and exit 1 otherwise.
#include "CliRun.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace {

using namespace fw::testing;

TEST(ExtractCli, WritesStoreAndPackageResourcesAndExplainsFailures)
{
    QTemporaryDir dir;
    QDir().mkpath(dir.filePath("store/Ico/16"));
    QFile own(dir.filePath("store/Ico/16/Mine.txt"));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("eigene Datei");
    own.close();
    qputenv("FORMWERK_PICTURES", QFile::encodeName(dir.filePath("store")));
    const QString out = dir.filePath("out");
    QDir().mkpath(out);
    const struct {
        QStringList args;
        int code;
        QString written; // file below out, empty for none
        QString err;     // start of the message
    } cases[] = {
        {{"--extract", "ico/16/MINE.TXT", out + "/copy.txt"}, 0, "copy.txt", ""},
        {{"--extract", "Ico\\32\\Computer\\Files\\txt.ico", out}, 0, "txt.ico", ""},
        {{"--extract", "Ico\\16\\None.ico", out}, 1, "", "formwerk: Ico\\16\\None.ico is in no"},
        {{"--extract", "Ico\\16\\Mine.txt", out + "/no/such/x"}, 1, "", "formwerk: cannot copy"},
        {{"--extract", "Ico\\16\\Mine.txt"}, 64, "", "formwerk: --extract RESOURCE DEST"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.args.join(' ').toStdString());
        const QStringList before = QDir(out).entryList(QDir::Files | QDir::Hidden);
        const Ran ran = runInProcess(c.args);
        EXPECT_EQ(ran.code, c.code);
        EXPECT_EQ(ran.out, "");
        EXPECT_EQ(ran.err.left(c.err.size()), c.err);
        const QStringList after = QDir(out).entryList(QDir::Files | QDir::Hidden);
        EXPECT_EQ(after.size(), before.size() + (c.written.isEmpty() ? 0 : 1));
        EXPECT_TRUE(c.written.isEmpty() || after.contains(c.written));
    }
    EXPECT_EQ(QImage(out + "/txt.ico").size(), QSize(32, 32));
    qunsetenv("FORMWERK_PICTURES");
}

} // namespace
