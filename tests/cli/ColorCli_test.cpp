// The colour picker through the `formwerk` program: a start colour on the
// command line, keys typed by a script, the chosen colour printed.
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Finished {
    int code = -1;
    QJsonObject answer;
    QString err;
};

Finished runColour(const QStringList& args, const QString& keys = {})
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    env.remove("WAYLAND_DISPLAY");
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("FORMWERK_SCRIPT_KEYS", keys);
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(FORMWERK_CLI_PATH), QStringList{"frm_DialogColor"} + args);
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "formwerk did not end; the dialog stayed open";
    }
    return {process.exitCode(), QJsonDocument::fromJson(process.readAllStandardOutput()).object(),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST(ColorCli, TheChosenColourComesBackAsNumberAndHexWhateverTheAnswer)
{
    struct Row {
        QStringList args;
        const char* keys;
        int result, colour;
        const char* hex;
    } const rows[] = {
        // Untouched, the start colour comes back one step of the strip darker.
        {{"--color", "#FF8000"}, "Escape", 2, 254 + 256 * 127, "#FE7F00"},
        {{"--color", "#ff8000"}, "Return", 1, 254 + 256 * 127, "#FE7F00"},
        {{"--color", "16711680"}, "Return", 1, 254 << 16, "#0000FE"},
        {{}, "Return", 1, 0, "#000000"},
        {{"--color", "#FFFFFF"},
         "1 0 0 Tab 2 0 0 Tab 3 0 Return",
         1,
         100 + 256 * 200 + 65536 * 30,
         "#64C81E"},
        {{"--color", "#FFFFFF"}, "1 Tab 2 Tab 3 0 0 Return", 1, 1 + 256 * 2, "#010200"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.keys);
        const Finished f = runColour(row.args, QString::fromLatin1(row.keys));
        EXPECT_EQ(f.code, row.result) << f.err.toStdString();
        EXPECT_EQ(f.answer, QJsonObject({{"Result", row.result},
                                         {"Color", row.colour},
                                         {"ColorHex", QString::fromLatin1(row.hex)}}));
    }
}

TEST(ColorCli, AColourThatIsNoneIsAUsageError)
{
    for (const char* bad : {"red", "#12345", "#1234567", "#GG0000", "16777216", "-1", ""}) {
        SCOPED_TRACE(bad);
        const Finished f = runColour({"--color", bad}, "Return");
        EXPECT_EQ(f.code, 64);
        EXPECT_TRUE(f.answer.isEmpty());
        EXPECT_TRUE(f.err.contains(QStringLiteral("formwerk: --color takes #RRGGBB or a number "
                                                  "from 0 to 16777215 (red + 256 green + 65536 "
                                                  "blue), not '%1'\n")
                                       .arg(QString::fromUtf8(bad))))
            << f.err.toStdString();
    }
}

TEST(ColorCli, AScreenshotNeedsNoAnswer)
{
    QTemporaryDir dir;
    const QString png = dir.filePath("colour.png");
    const Finished f = runColour({"--color", "#2060C0", "--screenshot", png});
    EXPECT_EQ(f.code, 0) << f.err.toStdString();
    EXPECT_TRUE(f.answer.isEmpty());
    EXPECT_GT(QImage(png).width(), 400);
}

} // namespace
