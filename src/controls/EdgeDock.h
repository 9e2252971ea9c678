#pragma once
// Keeps a widget docked to the top or bottom edge of its parent at full
// width, following the parent's resizes and the widget's own height.

#include <QObject>

class QWidget;

namespace fw {

class EdgeDock : public QObject {
  public:
    enum Edge { Top, Bottom };
    /// Docks now and stays installed for the widget's life.
    EdgeDock(QWidget* widget, Edge edge);
    void dock();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* m_widget;
    Edge m_edge;
    bool m_docking = false;
};

} // namespace fw
