// The progress window driven by lines on its input, as `formwerk
// frm_DialogProcess` reads them from a pipe.
#include "cli/ProcessDriver.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_Percent.h"
#include "dialogs/frm_DialogProcess.h"
#include "testing/TestHost.h"

#include <QFile>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

struct Driven {
    fw::cli::Outcome outcome;
    QStringList warnings;
    double value = 0;
    double max = 0;
    QString text;
    bool barBelowText = false;
};

Driven drive(int fd)
{
    fw::testing::ScopedTestHost host;
    auto context = std::make_shared<fw::DialogContext>();
    context->Request.Subtitle = "Start";
    fw::frm_DialogProcess form;
    form.Context = context;
    Driven driven;
    driven.outcome = fw::cli::DriveProgress(
        form, [&](const QString& warning) { driven.warnings << warning; }, fd);
    EXPECT_TRUE(form.IsUnloaded());
    driven.value = form.bar->Value();
    driven.max = form.bar->Max();
    driven.text = form.lab_Description->Caption();
    driven.barBelowText =
        form.bar->Top() >= form.lab_Description->Top() + form.lab_Description->Height();
    return driven;
}

// The input is closed once written, as a script that has finished closes its pipe.
Driven drive(const QByteArray& input)
{
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    EXPECT_EQ(::write(ends[1], input.constData(), input.size()), input.size());
    ::close(ends[1]);
    const Driven driven = drive(ends[0]);
    ::close(ends[0]);
    return driven;
}

TEST(ProcessDriver, TheLastOfEachCommandShowsAndGarbageIsOnlyWarnedAbout)
{
    const struct {
        const char* name;
        QByteArray input;
        double value, max;
        QString text;
        int warnings;
    } rows[] = {
        {"a burst of values ends on the last", "range 0 50\n10\n20\n+30\n", 30, 50, "Start", 0},
        {"# lines set the text", "# Kopiere a.txt\n5\n  #Kopiere b.txt  \n", 5, 100,
         "Kopiere b.txt", 0},
        {"a long text pushes the bar down", "# " + QByteArray("Kopiere Datei ").repeated(20), 0,
         100, QString("Kopiere Datei ").repeated(20).trimmed(), 0},
        {"garbage and a last line without newline", "3\nfünf\nrange 1\n\n7", 7, 100, "Start", 2},
        {"a number beyond 32 bits is garbage", "4\n99999999999\n", 4, 100, "Start", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Driven driven = drive(row.input);
        EXPECT_FALSE(driven.outcome) << driven.outcome.message.toStdString();
        EXPECT_EQ(driven.value, row.value);
        EXPECT_EQ(driven.max, row.max);
        EXPECT_EQ(driven.text, row.text);
        EXPECT_TRUE(driven.barBelowText);
        EXPECT_EQ(driven.warnings.size(), row.warnings) << driven.warnings.join('\n').toStdString();
    }
}

TEST(ProcessDriver, AnEndlessLineEndsTheWindowWithABadDataCode)
{
    const int zero = ::open("/dev/zero", O_RDONLY);
    ASSERT_GE(zero, 0);
    const Driven driven = drive(zero);
    ::close(zero);
    EXPECT_EQ(driven.outcome.code, fw::cli::ExitData);
    EXPECT_EQ(driven.outcome.message, "a line of standard input is larger than the limit of 64 MB");
}

} // namespace
