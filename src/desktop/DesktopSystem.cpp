#include "desktop/DesktopSystem.h"
#include "forms/Control.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/Screen.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStyle>
#include <QTableView>
#include <QTextEdit>
#include <QTreeView>
#include <QWidget>

namespace fw::desktop {

namespace {

QRect globalRect(const Control& control)
{
    const QWidget* widget = control.widget();
    if (!widget)
        return {};
    return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
}

class DesktopMonitorList final : public MonitorList {
  public:
    DesktopMonitorList()
    {
        QList<QScreen*> screens = QGuiApplication::screens();
        if (QScreen* primary = QGuiApplication::primaryScreen()) {
            screens.removeAll(primary);
            screens.prepend(primary);
            m_virtual = primary->virtualGeometry();
        }
        for (QScreen* screen : screens) {
            const QRect g = screen->geometry();
            m_monitors.push_back({int(m_monitors.size()) + 1, g.x(), g.y(), g.width(), g.height()});
        }
    }
    int VirtualLeft() const override { return m_virtual.x(); }
    int VirtualTop() const override { return m_virtual.y(); }
    int VirtualWidth() const override { return m_virtual.width(); }
    int VirtualHeight() const override { return m_virtual.height(); }
    int Count() const override { return int(m_monitors.size()); }
    MonitorInfo Item(int index) const override
    {
        return index >= 1 && index <= Count() ? m_monitors[std::size_t(index - 1)] : MonitorInfo{};
    }
    MonitorInfo Primary() const override { return Item(1); }
    MonitorInfo ByIndex(int index) const override
    {
        for (const MonitorInfo& info : m_monitors)
            if (info.Index == index)
                return info;
        return {};
    }

  private:
    QRect m_virtual;
    std::vector<MonitorInfo> m_monitors;
};

template <class T> T* widgetAs(QWidget* widget)
{
    if (!widget)
        return nullptr;
    if (auto* own = qobject_cast<T*>(widget))
        return own;
    return widget->findChild<T*>();
}

} // namespace

void DesktopWindows::setWindowColorKey(Form& form, int level, int mode, std::uint32_t)
{
    QWidget* window = form.window();
    if (!window)
        return;
    if (mode == 2) {
        window->setWindowOpacity(std::clamp(level, 0, 255) / 255.0);
    } else if (mode == 1) {
        window->setAttribute(Qt::WA_TranslucentBackground, true);
    } else {
        window->setWindowOpacity(1.0);
        window->setAttribute(Qt::WA_TranslucentBackground, false);
    }
}

int DesktopWindows::windowTop(const Control& control)
{
    return globalRect(control).top();
}
int DesktopWindows::windowLeft(const Control& control)
{
    return globalRect(control).left();
}
// The edges lie just outside the widget, as the platform's window rectangles do.
int DesktopWindows::windowBottom(const Control& control)
{
    const QRect r = globalRect(control);
    return r.y() + r.height();
}
int DesktopWindows::windowRight(const Control& control)
{
    const QRect r = globalRect(control);
    return r.x() + r.width();
}

std::shared_ptr<MonitorList> DesktopSystem::Monitors()
{
    return std::make_shared<DesktopMonitorList>();
}

namespace {
// The list's own width, not its widget's: a list laid out while its form is
// still loading has no widget size yet, and the columns must fit what the
// form gave it. A vertical scroll bar is allowed for, as a long list gets one.
bool fitListColumns(ListView& list, const std::string& percents)
{
    const int frame = 2 * list.widget()->style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
    const int bar = list.widget()->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int width = std::max(0, ToPixels(list.Width()) - frame - bar);
    const QStringList parts = QString::fromStdString(percents).split(u',');
    ColumnHeaders& columns = list.ColumnHeaders();
    for (int i = 0; i < parts.size() && i < columns.Count(); ++i) {
        bool ok = false;
        const double percent = parts[i].trimmed().toDouble(&ok);
        if (ok && percent >= 0)
            columns.Item(i + 1).SetWidth(ToTwips(int(width * percent / 100.0)));
    }
    return true;
}
} // namespace

void DesktopControls::SetColumnWidths(Control& listView, const std::string& percents)
{
    if (auto* list = dynamic_cast<ListView*>(&listView); list && fitListColumns(*list, percents))
        return;
    QAbstractItemView* view = widgetAs<QTreeView>(listView.widget());
    QHeaderView* header = nullptr;
    if (auto* tree = qobject_cast<QTreeView*>(view)) {
        header = tree->header();
    } else if (auto* table = widgetAs<QTableView>(listView.widget())) {
        view = table;
        header = table->horizontalHeader();
    }
    if (!view || !header)
        return;
    const int width = view->viewport()->width();
    const QStringList parts = QString::fromStdString(percents).split(u',');
    for (int i = 0; i < parts.size() && i < header->count(); ++i) {
        bool ok = false;
        const double percent = parts[i].trimmed().toDouble(&ok);
        if (ok && percent >= 0)
            header->resizeSection(i, int(width * percent / 100.0));
    }
}

void DesktopControls::SelectAll(Control& textBox)
{
    QWidget* widget = textBox.widget();
    if (auto* line = widgetAs<QLineEdit>(widget))
        line->selectAll();
    else if (auto* plain = widgetAs<QPlainTextEdit>(widget))
        plain->selectAll();
    else if (auto* rich = widgetAs<QTextEdit>(widget))
        rich->selectAll();
    else if (auto* spin = widgetAs<QAbstractSpinBox>(widget))
        spin->selectAll();
    else if (auto* combo = widgetAs<QComboBox>(widget); combo && combo->lineEdit())
        combo->lineEdit()->selectAll();
}

} // namespace fw::desktop
