// The colour picker through the `formwerk` program: a start colour on the
// command line, keys typed by a script, the chosen colour printed.
#include "CliRun.h"

#include <QImage>
#include <QTemporaryDir>

namespace {

using fw::testing::Ran;

Ran runColour(const QStringList& args, const QString& keys = {})
{
    return fw::testing::answerProgram(QStringList{"frm_DialogColor"} + args, keys);
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
        const Ran f = runColour(row.args, QString::fromLatin1(row.keys));
        EXPECT_EQ(f.code, row.result) << f.err.toStdString();
        EXPECT_EQ(f.json(), QJsonObject({{"Result", row.result},
                                         {"Color", row.colour},
                                         {"ColorHex", QString::fromLatin1(row.hex)}}));
    }
}

TEST(ColorCli, AColourThatIsNoneIsAUsageError)
{
    for (const char* bad : {"red", "#12345", "#1234567", "#GG0000", "16777216", "-1", ""}) {
        SCOPED_TRACE(bad);
        const Ran f = runColour({"--color", bad}, "Return");
        EXPECT_EQ(f.code, 64);
        EXPECT_TRUE(f.json().isEmpty());
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
    const Ran f = runColour({"--color", "#2060C0", "--screenshot", png});
    EXPECT_EQ(f.code, 0) << f.err.toStdString();
    EXPECT_TRUE(f.json().isEmpty());
    EXPECT_GT(QImage(png).width(), 400);
}

} // namespace
