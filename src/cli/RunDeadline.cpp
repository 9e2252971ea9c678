#include "cli/RunDeadline.h"

#include "forms/Form.h"

#include <QApplication>
#include <QJsonDocument>
#include <QWidget>
#include <cstdio>
#include <cstdlib>

namespace fw::cli {

namespace {

// Time for the unloaded forms' event loops to unwind before the force.
constexpr int kUnwindMs = 3000;

// The form whose event loop runs innermost: the active modal one, else any
// other that is still open.
Form* innermostOpenForm()
{
    if (QWidget* modal = QApplication::activeModalWidget())
        if (Form* form = Form::fromWindow(modal->window()); form && form->IsLoaded())
            return form;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (Form* form = Form::fromWindow(window); form && form->IsLoaded())
            return form;
    return nullptr;
}

[[noreturn]] void endByForce()
{
    const QByteArray answer = QJsonDocument(TimedOutAnswer()).toJson(QJsonDocument::Compact);
    std::fputs(answer.constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
    std::fputs("formwerk: the dialog did not close at its time limit and was ended\n", stderr);
    std::_Exit(ExitTimedOut); // a dialog stuck in its own loop is past saving
}

} // namespace

QJsonObject TimedOutAnswer()
{
    return {{QStringLiteral("Result"), 0}, {QStringLiteral("TimedOut"), true}};
}

TimeLimit TimeLimitOf(int givenMs, bool scripted, const QString& platform)
{
    if (givenMs >= 0)
        return {givenMs == 0 ? -1 : givenMs, {}};
    const bool windowless =
        platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
    if (!scripted || !windowless)
        return {};
    return {kScriptedLimitSeconds * 1000,
            QStringLiteral("the scripted keys left the dialog open for %1 s, so it was closed "
                           "unanswered (--timeout SECONDS sets another limit)")
                .arg(kScriptedLimitSeconds)};
}

RunDeadline::RunDeadline(TimeLimit limit) : m_limit(std::move(limit))
{
    if (m_limit.ms < 0)
        return;
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RunDeadline::expire);
    m_timer.start(m_limit.ms);
}

void RunDeadline::expire()
{
    m_expired = true;
    // No form refuses an unload by code today; the bound keeps a future one
    // that does from holding this loop.
    for (int attempts = 0; attempts < 32; ++attempts) {
        Form* form = innermostOpenForm();
        if (!form || !form->Unload())
            break;
    }
    QTimer::singleShot(kUnwindMs, this, [] { endByForce(); });
}

} // namespace fw::cli
