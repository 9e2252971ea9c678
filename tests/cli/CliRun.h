// Runs the `formwerk` command, in this process or as the built program, and
// collects what it printed.
#pragma once

#include "cli/Cli.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTextStream>
#include <gtest/gtest.h>

namespace fw::testing {

struct Ran {
    int code = -1;
    QString out;
    QString err;
    QJsonObject json() const { return QJsonDocument::fromJson(out.toUtf8()).object(); }
};

inline Ran runInProcess(const QStringList& args)
{
    Ran ran;
    QTextStream out(&ran.out);
    QTextStream err(&ran.err);
    ran.code = fw::cli::Run(args, out, err);
    return ran;
}

// Offscreen, with no trace of a desktop session unless a test adds one.
inline QProcessEnvironment quietEnvironment()
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM",
                             "FORMWERK_SCRIPT_KEYS", "XDG_RUNTIME_DIR"})
        env.remove(name);
    return env;
}

// With keepInputOpen the program's standard input stays open, as a pipe from a
// script that is still working would.
inline Ran startProgram(const QStringList& args, const QProcessEnvironment& env,
                        const QByteArray& input = {}, bool keepInputOpen = false)
{
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(FORMWERK_CLI_PATH), args);
    EXPECT_TRUE(process.waitForStarted(10000));
    if (!input.isEmpty())
        process.write(input);
    if (!keepInputOpen)
        process.closeWriteChannel();
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "formwerk did not end; the dialog stayed open";
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// The built program on the offscreen platform, answered by scripted keys.
inline Ran answerProgram(const QStringList& args, const QString& keys, const QByteArray& input = {},
                         bool keepInputOpen = false)
{
    QProcessEnvironment env = quietEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("FORMWERK_SCRIPT_KEYS", keys);
    return startProgram(args, env, input, keepInputOpen);
}

// A test whose input files live in a temporary folder of its own.
class CliFilesTest : public ::testing::Test {
  protected:
    QString writeFile(const QString& name, const QByteArray& bytes)
    {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    QTemporaryDir dir;
};

} // namespace fw::testing
