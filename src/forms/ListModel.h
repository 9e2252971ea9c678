#pragma once
// The Qt model behind a ListView, shared by the list's units; not part of the
// public interface.

#include "forms/ControlError.h"
#include "forms/ListView.h"

#include <QAbstractTableModel>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <vector>

namespace fw {

namespace listview {
inline ControlError outOfBounds()
{
    return ControlError(ControlError::IndexOutOfBounds, "Index out of bounds");
}
inline ControlError notFound()
{
    return ControlError(ControlError::ElementNotFound, "Element not found");
}
inline Qt::Alignment alignmentOf(int alignment)
{
    const Qt::Alignment horizontal = alignment == 1   ? Qt::AlignRight
                                     : alignment == 2 ? Qt::AlignHCenter
                                                      : Qt::AlignLeft;
    return horizontal | Qt::AlignVCenter;
}
} // namespace listview

// Rows reach the view through this model. Two things make it more than a
// plain table: rows appended in a burst are announced to the view in one step
// once the event loop runs (m_shown counts the announced ones), and while
// runs of rows are taken out, the rows behind the run being removed are
// reached across a gap, so that each run is one removal for the view and the
// whole thinning costs one pass over the rows.
class ListModel : public QAbstractTableModel {
  public:
    ListModel(ListView& list, QObject* parent) : QAbstractTableModel(parent), m_list(&list) {}

    ListItem* at(int row) const
    {
        const auto& rows = m_list->m_items.m_rows;
        const std::size_t i = std::size_t(row < m_gapAt ? row : row + m_gapSize);
        return i < rows.size() ? rows[i].get() : nullptr;
    }
    ListItem* itemOf(const QModelIndex& index) const
    {
        return index.isValid() && m_list ? at(index.row()) : nullptr;
    }
    QModelIndex indexOf(const ListItem& item, int column = 0) const
    {
        return item.m_row < m_shown ? createIndex(item.m_row, column) : QModelIndex();
    }

    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() || !m_list ? 0 : m_shown;
    }
    int columnCount(const QModelIndex& parent) const override
    {
        return parent.isValid() || !m_list ? 0 : m_columnCount;
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        if (!index.isValid())
            return Qt::NoItemFlags;
        Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
        if (index.column() == 0 && m_list->m_checkboxes)
            flags |= Qt::ItemIsUserCheckable;
        return flags;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        const ListItem* item = itemOf(index);
        if (!item)
            return {};
        const int column = index.column();
        switch (role) {
        case Qt::DisplayRole:
            if (column != 0)
                return item->SubItem(column);
            return m_list->DisplayText ? m_list->DisplayText(item->m_text) : item->m_text;
        case Qt::SizeHintRole:
            // Uniform cells are measured on one sample row; give it the
            // longest name's room.
            return column == 0 && m_list->m_cellSize.isValid() ? QVariant(m_list->m_cellSize)
                                                               : QVariant();
        case Qt::DecorationRole:
            return column == 0 ? QVariant(m_list->iconOf(*item)) : QVariant();
        case Qt::CheckStateRole:
            if (column == 0 && m_list->m_checkboxes)
                return item->m_checked ? Qt::Checked : Qt::Unchecked;
            return {};
        case Qt::ForegroundRole:
            if (item->m_ghosted)
                return QGuiApplication::palette().color(QPalette::Disabled, QPalette::Text);
            return {};
        case Qt::TextAlignmentRole:
            if (column > 0 && column < m_list->m_columns.Count())
                return int(listview::alignmentOf(m_list->m_columns.Item(column + 1).m_alignment));
            return {};
        default:
            return {};
        }
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        ListItem* item = itemOf(index);
        if (!item || role != Qt::CheckStateRole || !m_list->m_checkboxes)
            return false;
        item->m_checked = value.toInt() == Qt::Checked;
        emit dataChanged(index, index);
        if (!m_list->m_byCode)
            m_list->raise(m_list->ItemCheck, *item);
        return true;
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || !m_list || section >= m_list->m_columns.Count())
            return {};
        const ColumnHeader& column = m_list->m_columns.Item(section + 1);
        if (role == Qt::DisplayRole)
            return column.m_text;
        if (role == Qt::TextAlignmentRole)
            return int(listview::alignmentOf(column.m_alignment));
        return {};
    }

    // Appended rows: one announcement for the whole burst, queued.
    void appended()
    {
        if (m_announceQueued)
            return;
        m_announceQueued = true;
        QMetaObject::invokeMethod(
            this, [this] { announce(); }, Qt::QueuedConnection);
    }
    void announce()
    {
        m_announceQueued = false;
        const int total = m_list ? m_list->m_items.Count() : 0;
        if (m_shown >= total)
            return;
        beginInsertRows({}, m_shown, total - 1);
        m_shown = total;
        endInsertRows();
        m_list->fitListCells();
    }
    void beginInsert(int row)
    {
        beginInsertRows({}, row, row);
        ++m_shown;
    }
    void endInsert() { endInsertRows(); }
    // A run of model rows goes; the rows behind it are then read across the gap.
    void beginRemove(int first, int count) { beginRemoveRows({}, first, first + count - 1); }
    void endRemove(int first, int count, int gapSize)
    {
        m_shown -= count;
        m_gapAt = first;
        m_gapSize = gapSize;
        endRemoveRows();
    }
    void closeGap() { m_gapAt = m_gapSize = 0; }
    void beginReset() { beginResetModel(); }
    void endReset()
    {
        m_shown = 0;
        closeGap();
        endResetModel();
    }
    void rowChanged(const ListItem& item)
    {
        if (item.m_row < m_shown)
            emit dataChanged(index(item.m_row, 0), index(item.m_row, columnCount({}) - 1));
    }
    void allChanged()
    {
        if (m_shown > 0)
            emit dataChanged(index(0, 0), index(m_shown - 1, columnCount({}) - 1));
    }
    void layoutWillChange() { emit layoutAboutToBeChanged(); }
    void layoutDidChange(const std::vector<int>& newRowOfOld)
    {
        QModelIndexList from = persistentIndexList();
        QModelIndexList to;
        to.reserve(from.size());
        for (const QModelIndex& old : from) {
            const int row = newRowOfOld[std::size_t(old.row())];
            to.append(row < 0 ? QModelIndex() : createIndex(row, old.column()));
        }
        m_shown = m_list->m_items.Count();
        changePersistentIndexList(from, to);
        emit layoutChanged();
    }
    // The columns were added, removed or renamed: the view learns the new
    // count without losing rows or selection.
    void columnsChanged()
    {
        const int wanted = std::max(1, m_list->m_columns.Count());
        if (wanted > m_columnCount) {
            beginInsertColumns({}, m_columnCount, wanted - 1);
            m_columnCount = wanted;
            endInsertColumns();
        } else if (wanted < m_columnCount) {
            beginRemoveColumns({}, wanted, m_columnCount - 1);
            m_columnCount = wanted;
            endRemoveColumns();
        }
        emit headerDataChanged(Qt::Horizontal, 0, m_columnCount - 1);
        allChanged();
    }

    ListView* m_list;
    int m_shown = 0;
    int m_gapAt = 0;
    int m_gapSize = 0;
    int m_columnCount = 1;
    bool m_announceQueued = false;
};

} // namespace fw
