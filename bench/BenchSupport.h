#pragma once
// Small pieces the benchmarks share.
#include <QEvent>
#include <QObject>
#include <QWidget>

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

} // namespace fw::bench
