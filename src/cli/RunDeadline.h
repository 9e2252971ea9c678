#pragma once
// A time limit for one dialog run. Scripted keys that never close their
// dialog, or a window nobody can see, would otherwise keep the command
// waiting for ever; like `timeout`, the run then ends with exit code 124.

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QTimer>

namespace fw::cli {

/// The exit code of a run that reached its time limit, as `timeout` uses it.
constexpr int ExitTimedOut = 124;

/// The limit of scripted runs on a platform that shows no window, when the
/// command line sets none.
constexpr int kScriptedLimitSeconds = 30;

/// The answer of a run that reached its time limit.
QJsonObject TimedOutAnswer();

/// How long a run may take, and what stderr says when it took that long.
struct TimeLimit {
    int ms = -1; ///< -1: no limit
    QString notice;
};

/// The limit of a run: the --timeout given (-1 none given, 0 no limit), said
/// nothing about as `timeout` says nothing; else kScriptedLimitSeconds, with a
/// notice, for scripted keys on a platform that shows no window.
TimeLimit TimeLimitOf(int givenMs, bool scripted, const QString& platform);

/// Armed for the lifetime of a run. At the limit every open form is unloaded,
/// innermost first, so that the run returns and prints TimedOutAnswer(); a
/// run that still does not return soon after is ended by force.
class RunDeadline : public QObject {
  public:
    explicit RunDeadline(TimeLimit limit);
    bool Expired() const { return m_expired; }
    /// The line for stderr once expired; may be empty.
    const QString& Notice() const { return m_limit.notice; }

  private:
    void expire();

    TimeLimit m_limit;
    bool m_expired = false;
    QTimer m_timer;
};

} // namespace fw::cli
