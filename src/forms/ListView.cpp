#include "forms/ListView.h"

#include "forms/Form.h"
#include "forms/ImageList.h"
#include "forms/ListModel.h"
#include "forms/Screen.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QListView>
#include <QMouseEvent>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QTreeView>
#include <utility>

namespace fw {

// A Qt view with the control's mouse events, which arrive at the viewport,
// and its focus events, which arrive here rather than at the control's frame.
template <class View> class ListWidget : public View {
  public:
    ListWidget(ListView& list, QWidget* parent) : View(parent), m_list(list) {}

    // Set while the view moves the focus row for a reason of its own: a mouse
    // press, which reports itself as a click on release, or the focus
    // arriving, which makes the first row current without anyone choosing it.
    bool m_movingByItself = false;

  protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        raiseMouse(m_list.MouseDown, event, event->button());
        m_movingByItself = true;
        View::mousePressEvent(event);
        m_movingByItself = false;
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        raiseMouse(m_list.MouseMove, event, event->buttons());
        View::mouseMoveEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        View::mouseReleaseEvent(event);
        raiseMouse(m_list.MouseUp, event, event->button());
        if (event->button() == Qt::LeftButton)
            m_list.raise(m_list.Click);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        View::mouseDoubleClickEvent(event);
        // Empty space keeps the last row selected; opening it there would
        // surprise the user.
        if (this->indexAt(event->position().toPoint()).isValid())
            m_list.raise(m_list.DblClick);
    }
    void focusInEvent(QFocusEvent* event) override
    {
        m_movingByItself = true;
        View::focusInEvent(event);
        m_movingByItself = false;
        m_list.raise(m_list.GotFocus);
    }
    void focusOutEvent(QFocusEvent* event) override
    {
        View::focusOutEvent(event);
        m_list.raise(m_list.LostFocus);
    }
    // A cell too narrow for its text shows it shortened; pointing at it shows
    // the whole text (an error's reason, a long path).
    bool viewportEvent(QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip)
            return View::viewportEvent(event);
        const auto* help = static_cast<QHelpEvent*>(event);
        const QModelIndex index = this->indexAt(help->pos());
        const QString text = index.data(Qt::DisplayRole).toString();
        const QRect cell = this->visualRect(index);
        QStyleOptionViewItem option;
        this->initViewItemOption(&option);
        if (!text.isEmpty() &&
            this->itemDelegateForIndex(index)->sizeHint(option, index).width() > cell.width())
            QToolTip::showText(help->globalPos(), text, this->viewport(), cell);
        else
            QToolTip::hideText();
        return true;
    }

  private:
    template <class Event>
    void raiseMouse(const Event& callback, QMouseEvent* event, Qt::MouseButtons buttons)
    {
        const QPoint inControl =
            this->viewport()->mapTo(m_list.widget(), event->position().toPoint());
        const int button = (buttons & Qt::LeftButton ? 1 : 0) |
                           (buttons & Qt::RightButton ? 2 : 0) |
                           (buttons & Qt::MiddleButton ? 4 : 0);
        const int shift = (event->modifiers() & Qt::ShiftModifier ? ShiftDown : 0) |
                          (event->modifiers() & Qt::ControlModifier ? CtrlDown : 0) |
                          (event->modifiers() & Qt::AltModifier ? AltDown : 0);
        m_list.raise(callback, button, shift, float(ToTwips(inControl.x())),
                     float(ToTwips(inControl.y())));
    }

    ListView& m_list;
};

// Every cell of a uniform list is as large as the first one's size hint;
// for large symbols that hint would measure a wrapped name against the
// picture's width and cut every name down to it, so a cell is the grid's.
class CellDelegate : public QStyledItemDelegate {
  public:
    explicit CellDelegate(QListView& view) : QStyledItemDelegate(&view), m_view(view) {}
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (option.decorationPosition == QStyleOptionViewItem::Top && m_view.gridSize().isValid())
            return m_view.gridSize();
        return QStyledItemDelegate::sizeHint(option, index);
    }

  private:
    QListView& m_view;
};

// Views 0 to 2. Large symbols are laid out in list mode on a fixed grid with
// the picture above the text, not in Qt's icon mode, which places every item
// on its own and would not scale to a million rows.
class ListListWidget : public ListWidget<QListView> {
  public:
    ListListWidget(ListView& list, QWidget* parent) : ListWidget(list, parent)
    {
        setItemDelegate(new CellDelegate(*this));
    }
    bool m_largeSymbols = false;

  protected:
    void initViewItemOption(QStyleOptionViewItem* option) const override
    {
        ListWidget::initViewItemOption(option);
        if (m_largeSymbols) {
            option->decorationPosition = QStyleOptionViewItem::Top;
            option->displayAlignment = Qt::AlignHCenter | Qt::AlignTop;
        }
    }
};

// View 3, the details with column headers.
class ListTreeWidget : public ListWidget<QTreeView> {
  public:
    using ListWidget::ListWidget;
};

// ---- ListView ---------------------------------------------------------------

ListView::ListView(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ListView"), nullptr), m_items(*this), m_columns(*this)
{
    m_stack = new QStackedWidget(container ? container : form.clientArea());
    m_model = new ListModel(*this, m_stack);
    m_selection = new QItemSelectionModel(m_model, m_model);
    m_listWidget = new ListListWidget(*this, m_stack);
    m_treeWidget = new ListTreeWidget(*this, m_stack);
    for (QAbstractItemView* view : {static_cast<QAbstractItemView*>(m_listWidget),
                                    static_cast<QAbstractItemView*>(m_treeWidget)}) {
        view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        view->setSelectionBehavior(QAbstractItemView::SelectRows);
        view->setSelectionMode(QAbstractItemView::SingleSelection);
        view->setTextElideMode(Qt::ElideMiddle);
        m_stack->addWidget(view);
    }
    // Every row is one line (or, as large symbols, one grid cell): uniform
    // sizes spare the views from measuring each of a million rows.
    m_listWidget->setUniformItemSizes(true);
    m_listWidget->setWrapping(true);
    m_listWidget->setResizeMode(QListView::Adjust);
    m_treeWidget->setUniformRowHeights(true);
    m_treeWidget->setRootIsDecorated(false);
    m_treeWidget->setItemsExpandable(false);
    m_treeWidget->setAllColumnsShowFocus(true);
    m_treeWidget->header()->setSectionsClickable(true);
    m_treeWidget->header()->setStretchLastSection(false);
    QObject::connect(m_treeWidget->header(), &QHeaderView::sectionClicked, m_stack,
                     [this](int section) {
                         if (section < m_columns.Count())
                             raise(ColumnClick, m_columns.Item(section + 1));
                     });
    setWidget(m_stack);
    showView();

    QObject::connect(m_selection, &QItemSelectionModel::currentChanged, m_stack,
                     [this](const QModelIndex& current) {
                         ListItem* item = m_model->itemOf(current);
                         if (item && !m_byCode && !m_listWidget->m_movingByItself &&
                             !m_treeWidget->m_movingByItself)
                             raise(ItemClick, *item);
                     });
    for (QAbstractItemView* view : {static_cast<QAbstractItemView*>(m_listWidget),
                                    static_cast<QAbstractItemView*>(m_treeWidget)})
        QObject::connect(view, &QAbstractItemView::clicked, m_stack,
                         [this](const QModelIndex& index) {
                             if (ListItem* item = m_model->itemOf(index))
                                 raise(ItemClick, *item);
                         });
}

ListView::~ListView()
{
    // The window usually goes first and takes views and model with it; if
    // not, the model must stop handing out rows before they are freed.
    if (m_model) {
        m_model->beginReset();
        m_model->m_list = nullptr;
        m_items.m_rows.clear();
        m_model->endReset();
    }
}

QAbstractItemView* ListView::activeView() const
{
    if (m_view == lvwReport)
        return m_treeWidget;
    return m_listWidget;
}

void ListView::flush() const
{
    if (m_model)
        m_model->announce();
}

// Only the view on show is bound to the model, so that the hidden one neither
// lays out nor follows a million rows; both share one selection.
void ListView::attach(QAbstractItemView* view)
{
    if (!view || view->model() == m_model)
        return;
    QItemSelectionModel* stale = view->selectionModel();
    view->setModel(m_model);
    QItemSelectionModel* made = view->selectionModel();
    view->setSelectionModel(m_selection);
    for (QItemSelectionModel* own : {stale, made})
        if (own && own != m_selection)
            delete own;
}

void ListView::showView()
{
    m_cellSize = QSize(); // the symbol and details views size their own cells
    if (!m_stack)
        return;
    QAbstractItemView* shown = activeView();
    QAbstractItemView* hidden =
        shown == m_treeWidget ? static_cast<QAbstractItemView*>(m_listWidget) : m_treeWidget;
    if (hidden == m_treeWidget && m_treeWidget->model() == m_model)
        for (const auto& column : m_columns.m_columns) // keep what the user dragged
            column->m_widthPixels = m_treeWidget->header()->sectionSize(column->m_index);
    const bool hadFocus = hidden->hasFocus();
    if (hidden->model() == m_model)
        hidden->setModel(nullptr);
    attach(shown);
    if (shown == m_treeWidget) {
        for (const auto& column : m_columns.m_columns)
            m_treeWidget->header()->resizeSection(column->m_index, column->m_widthPixels);
        m_treeWidget->setHeaderHidden(m_columns.Count() == 0);
        m_treeWidget->setIconSize(QSize(16, 16));
    } else {
        const bool large = m_view == lvwIcon;
        const ImageList* pictures = large ? m_icons : m_smallIcons;
        const int fallback = large ? 32 : 16;
        const QSize icon = pictures ? QSize(pictures->ImageWidth(), pictures->ImageHeight())
                                    : QSize(fallback, fallback);
        m_listWidget->m_largeSymbols = large;
        m_listWidget->setIconSize(icon);
        m_listWidget->setFlow(m_view == lvwList ? QListView::TopToBottom : QListView::LeftToRight);
        m_listWidget->setWordWrap(large);
        const int lineHeight = m_listWidget->fontMetrics().height();
        if (large)
            m_listWidget->setGridSize(
                QSize(std::max(3 * icon.width(), 76), icon.height() + 2 * lineHeight + 8));
        else
            fitListCells();
    }
    m_stack->setCurrentWidget(shown);
    m_stack->setFocusProxy(shown);
    if (hadFocus)
        shown->setFocus();
    if (const QModelIndex current = m_selection->currentIndex(); current.isValid())
        shown->scrollTo(current);
}

void ListView::fitListCells()
{
    m_cellSize = QSize();
    if (!m_listWidget || m_view == lvwIcon || m_view == lvwReport)
        return;
    if (m_longestText.isEmpty()) {
        m_listWidget->setGridSize({});
        return;
    }
    const QString shown = DisplayText ? DisplayText(m_longestText) : m_longestText;
    const QFontMetrics metrics = m_listWidget->fontMetrics();
    const QSize icon = m_listWidget->iconSize();
    // Beyond two thirds of the list a name is shortened in its middle instead.
    const int widest = std::max(200, m_listWidget->viewport()->width() * 2 / 3);
    const int width = std::min(icon.width() + metrics.horizontalAdvance(shown) + 16, widest);
    m_cellSize = QSize(width, std::max(icon.height(), metrics.height()) + 4);
    m_listWidget->setGridSize(m_cellSize);
}

void ListView::SetView(int view)
{
    flush();
    m_view = view >= lvwIcon && view <= lvwReport ? view : lvwList;
    showView();
    if (m_model)
        m_model->allChanged(); // the pictures come from the other list now
}

void ListView::SetIcons(ImageList* images)
{
    m_icons = images;
    if (m_view == lvwIcon)
        showView();
    if (m_model)
        m_model->allChanged();
}

void ListView::SetSmallIcons(ImageList* images)
{
    m_smallIcons = images;
    if (m_view != lvwIcon)
        showView();
    if (m_model)
        m_model->allChanged();
}

QIcon ListView::iconOf(const ListItem& item) const
{
    const bool large = m_view == lvwIcon;
    QIcon icon =
        m_imageKeys.iconOf(large ? item.m_icon : item.m_smallIcon, large ? m_icons : m_smallIcons);
    if (item.m_ghosted && !icon.isNull()) {
        const QSize size = m_stack ? activeView()->iconSize() : QSize(16, 16);
        return QIcon(icon.pixmap(size, QIcon::Disabled));
    }
    return icon;
}

void ListView::itemChanged(const ListItem& item)
{
    if (m_model)
        m_model->rowChanged(item);
}

void ListView::columnsChanged()
{
    if (!m_model)
        return;
    m_model->columnsChanged();
    if (m_treeWidget && m_treeWidget->model() == m_model) {
        for (const auto& column : m_columns.m_columns)
            m_treeWidget->header()->resizeSection(column->m_index, column->m_widthPixels);
        m_treeWidget->setHeaderHidden(m_columns.Count() == 0);
    }
}

void ListView::SetMultiSelect(bool on)
{
    m_multiSelect = on;
    const auto mode =
        on ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection;
    m_listWidget->setSelectionMode(mode);
    m_treeWidget->setSelectionMode(mode);
}

void ListView::SetCheckboxes(bool on)
{
    m_checkboxes = on;
    if (m_model)
        m_model->allChanged();
}

ListItem* ListView::SelectedItem() const
{
    flush();
    if (!m_model || !m_selection)
        return nullptr;
    const QModelIndex current = m_selection->currentIndex();
    if (current.isValid() && m_selection->isSelected(current))
        return m_model->itemOf(current);
    ListItem* first = nullptr;
    for (const QItemSelectionRange& range : m_selection->selection()) {
        ListItem* top = m_model->at(range.top());
        if (top && (!first || top->m_row < first->m_row))
            first = top;
    }
    return first;
}

void ListView::SetSelectedItem(ListItem* item)
{
    flush();
    if (!m_model || !m_selection)
        return;
    const bool wasByCode = std::exchange(m_byCode, true);
    if (item)
        m_selection->setCurrentIndex(m_model->indexOf(*item), QItemSelectionModel::ClearAndSelect |
                                                                  QItemSelectionModel::Rows);
    else
        m_selection->clear();
    m_byCode = wasByCode;
}

ListItem* ListView::HitTest(float x, float y) const
{
    flush();
    QAbstractItemView* view = m_stack ? activeView() : nullptr;
    if (!view)
        return nullptr;
    const QPoint inControl(ToPixels(int(x)), ToPixels(int(y)));
    return m_model->itemOf(view->indexAt(view->viewport()->mapFrom(m_stack, inControl)));
}

QRect ListView::ItemRect(const ListItem& item) const
{
    flush();
    QAbstractItemView* view = m_stack ? activeView() : nullptr;
    return view ? view->visualRect(m_model->indexOf(item)) : QRect();
}

QRect ListView::HeaderRect(const ColumnHeader& column) const
{
    if (m_view != lvwReport || !m_treeWidget)
        return {};
    const QHeaderView* header = m_treeWidget->header();
    return QRect(header->sectionViewportPosition(column.m_index), 0,
                 header->sectionSize(column.m_index), header->height());
}

QWidget* ListView::viewport() const
{
    return m_stack ? activeView()->viewport() : nullptr;
}

QHeaderView* ListView::detailsHeader() const
{
    return m_treeWidget && m_treeWidget->model() == m_model ? m_treeWidget->header() : nullptr;
}

QWidget* ListView::headerWidget() const
{
    return m_treeWidget ? m_treeWidget->header()->viewport() : nullptr;
}

void ListView::SetSorted(bool on)
{
    m_sorted = on;
    if (on)
        sortRows();
}

void ListView::SetSortKey(int column)
{
    m_sortKey = std::max(0, column);
    if (m_sorted)
        sortRows();
}

void ListView::SetSortOrder(int order)
{
    m_sortOrder = order == 1 ? 1 : 0;
    if (m_sorted)
        sortRows();
}

void ListView::sortRows()
{
    flush();
    auto& rows = m_items.m_rows;
    // The texts are made once, not in each of the n log n comparisons.
    std::vector<QString> texts;
    texts.reserve(rows.size());
    for (const auto& row : rows)
        texts.push_back(m_sortKey == 0 ? row->m_text : row->SubItem(m_sortKey));
    const auto textOf = [&texts](const ListItem& item) -> const QString& {
        return texts[std::size_t(item.m_row)];
    };
    if (m_model)
        m_model->layoutWillChange();
    std::stable_sort(rows.begin(), rows.end(), [&](const auto& a, const auto& b) {
        const int order = textOf(*a).compare(textOf(*b), Qt::CaseInsensitive);
        return m_sortOrder == 0 ? order < 0 : order > 0;
    });
    std::vector<int> newRowOfOld(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        newRowOfOld[std::size_t(rows[i]->m_row)] = int(i);
        rows[i]->m_row = int(i);
    }
    if (m_model)
        m_model->layoutDidChange(newRowOfOld);
}

QVariant ListView::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"VIEW")
        return m_view;
    if (key == u"MULTISELECT")
        return m_multiSelect;
    if (key == u"CHECKBOXES")
        return m_checkboxes;
    if (key == u"SORTED")
        return m_sorted;
    if (key == u"SORTKEY")
        return m_sortKey;
    if (key == u"SORTORDER")
        return m_sortOrder;
    if (key == u"LISTITEMS.COUNT")
        return m_items.Count();
    if (key == u"COLUMNHEADERS.COUNT")
        return m_columns.Count();
    return Control::GetProperty(name);
}

bool ListView::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"VIEW")
        SetView(value.toInt());
    else if (key == u"MULTISELECT")
        SetMultiSelect(value.toBool());
    else if (key == u"CHECKBOXES")
        SetCheckboxes(value.toBool());
    else if (key == u"SORTED")
        SetSorted(value.toBool());
    else if (key == u"SORTKEY")
        SetSortKey(value.toInt());
    else if (key == u"SORTORDER")
        SetSortOrder(value.toInt());
    else
        return Control::SetProperty(name, value);
    return true;
}

int ListView::RowCount(const QString& collection) const
{
    return collection.compare(u"COLUMNHEADERS", Qt::CaseInsensitive) == 0 ? m_columns.Count() : 0;
}

QVariant ListView::RowProperty(const QString& collection, int row, const QString& property) const
{
    if (row < 1 || row > RowCount(collection))
        return {};
    const ColumnHeader& column = m_columns.Item(row);
    const QString key = property.toUpper();
    if (key == u"TEXT")
        return column.Text();
    if (key == u"KEY")
        return column.Key();
    if (key == u"TAG")
        return column.Tag();
    return {};
}

bool ListView::SetRowProperty(const QString& collection, int row, const QString& property,
                              const QString& value)
{
    if (row < 1 || row > RowCount(collection))
        return false;
    ColumnHeader& column = m_columns.Item(row);
    const QString key = property.toUpper();
    if (key == u"TEXT")
        column.m_text = value; // shown by RowsChanged, once for the whole walk
    else if (key == u"TAG")
        column.m_tag = value;
    else
        return false;
    return true;
}

void ListView::RowsChanged(const QString& collection)
{
    if (RowCount(collection) > 0)
        columnsChanged();
}

} // namespace fw
