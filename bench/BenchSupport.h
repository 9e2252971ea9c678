#pragma once
// Small pieces the benchmarks share.
#include <QEvent>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <QWidget>
#include <functional>
#include <string>

class QAbstractItemView;

namespace fw {
class Form;
}

namespace fw::bench {

/// Counts the paints of a widget (a list's viewport) from the moment it is made.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget* widget) : m_widget(widget) { widget->installEventFilter(this); }
    ~PaintCounter() override { m_widget->removeEventFilter(this); }
    int paints = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }

  private:
    QWidget* m_widget;
};

/// Keeps the offscreen platform's notices (no raise, no size hints, no
/// runtime folder) out of the tables; everything else still goes through.
void QuietOffscreenNotices();

/// Standard output for the benchmarks' own tables.
QTextStream& Out();
/// A measured value with its unit, "-" for a failed (negative) one.
QString Figure(double value, const char* unit);
/// a / b as "1.5x", "-" where either failed.
QString Ratio(double a, double b, int decimals = 1);

/// The folder sizes and the time limit a run asks for: "--sizes 1000,10000"
/// and "--limit SECONDS" among args (the program name left out); what is not
/// given keeps the caller's defaults.
void ReadSizesAndLimit(const QStringList& args, QList<int>& sizes, int& limitMs);

/// Runs the event loop until done() holds; false if limitMs passed first.
bool WaitFor(const std::function<bool()>& done, int limitMs);

/// The file chooser's list as shown now (the control switches between a list
/// and a tree view with its view setting).
QAbstractItemView* ChooserList(Form& form);

/// Milliseconds from Show of the host's frm_DialogFile, opened in a location,
/// to the first paint of at least count rows; -1 if that takes over limitMs.
/// afterPainted, if given, runs on the painted chooser before it unloads.
double
ChooserToPaintedList(const std::string& location, int count, int limitMs,
                     const std::function<void(Form&, QAbstractItemView&)>& afterPainted = {});

} // namespace fw::bench
