#include "forms/ImageList.h"
#include "forms/ListModel.h"
#include "forms/Screen.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <algorithm>
#include <utility>

namespace fw {

using listview::notFound;
using listview::outOfBounds;

namespace {

// UTF-8 in a block of its own size: toUtf8 reserves three bytes a character,
// and shrinking that afterwards leaves a hole behind each row's text.
QByteArray exactUtf8(const QString& text)
{
    // Two plain passes rather than one with an early exit: the compiler
    // turns both into vector code.
    char16_t all = 0;
    for (const QChar c : text)
        all |= c.unicode();
    if (all >= 0x80) {
        QByteArray utf8 = text.toUtf8();
        utf8.squeeze();
        return utf8;
    }
    QByteArray ascii(text.size(), Qt::Uninitialized);
    std::transform(text.cbegin(), text.cend(), ascii.data(),
                   [](QChar c) { return char(c.unicode()); });
    return ascii;
}

} // namespace

// ---- ListItem ---------------------------------------------------------------

void ListItem::SetText(const QString& text)
{
    m_text = text;
    m_list->itemChanged(*this);
}

QString ListItem::Icon() const
{
    return m_list->m_imageKeys.keyOf(m_icon);
}
QString ListItem::SmallIcon() const
{
    return m_list->m_imageKeys.keyOf(m_smallIcon);
}
void ListItem::SetIcon(const QString& key)
{
    m_icon = m_list->m_imageKeys.idOf(key, m_list->m_icons);
    m_list->itemChanged(*this);
}
void ListItem::SetSmallIcon(const QString& key)
{
    m_smallIcon = m_list->m_imageKeys.idOf(key, m_list->m_smallIcons);
    m_list->itemChanged(*this);
}

struct ListItem::Extras {
    QString tag;
    std::vector<QByteArray> moreSubItems; // the columns behind the inline ones
};

// Out of line: both need the complete Extras.
ListItem::ListItem(fw::ListView& list, QString key, QString text)
    : m_list(&list), m_key(std::move(key)), m_text(std::move(text))
{
}
ListItem::~ListItem() = default;

ListItem::Extras& ListItem::extras()
{
    if (!m_extras)
        m_extras = std::make_unique<Extras>();
    return *m_extras;
}

const QString& ListItem::Tag() const
{
    static const QString none;
    return m_extras ? m_extras->tag : none;
}

void ListItem::SetTag(const QString& tag)
{
    if (m_extras || !tag.isEmpty())
        extras().tag = tag;
}

QString ListItem::SubItem(int column) const
{
    if (column < 1)
        throw ControlError(ControlError::InvalidPropertyValue, "Invalid property value");
    if (column <= kInlineSubItems)
        return QString::fromUtf8(m_subItems[std::size_t(column - 1)]);
    const std::size_t more = std::size_t(column - kInlineSubItems - 1);
    return m_extras && more < m_extras->moreSubItems.size()
               ? QString::fromUtf8(m_extras->moreSubItems[more])
               : QString();
}

QByteArray& ListItem::subItemSlot(int column)
{
    if (column <= kInlineSubItems)
        return m_subItems[std::size_t(column - 1)];
    const std::size_t more = std::size_t(column - kInlineSubItems - 1);
    std::vector<QByteArray>& moreSubItems = extras().moreSubItems;
    if (moreSubItems.size() <= more)
        moreSubItems.resize(more + 1);
    return moreSubItems[more];
}

void ListItem::SetSubItem(int column, const QString& text)
{
    if (column < 1)
        throw ControlError(ControlError::InvalidPropertyValue, "Invalid property value");
    QByteArray bytes = exactUtf8(text);
    if (column <= kInlineSubItems && m_row > 0) {
        const ListItem* above = m_list->m_items.m_rows[std::size_t(m_row - 1)].get();
        if (above && above->m_subItems[std::size_t(column - 1)] == bytes)
            bytes = above->m_subItems[std::size_t(column - 1)];
    }
    subItemSlot(column) = std::move(bytes);
    m_list->itemChanged(*this);
}

void ListItem::SetGhosted(bool ghosted)
{
    m_ghosted = ghosted;
    m_list->itemChanged(*this);
}

void ListItem::SetChecked(bool checked)
{
    m_checked = checked;
    m_list->itemChanged(*this);
}

bool ListItem::Selected() const
{
    const ListModel* model = m_list->m_model;
    return model && m_list->m_selection && m_list->m_selection->isSelected(model->indexOf(*this));
}

void ListItem::SetSelected(bool selected)
{
    fw::ListView& list = *m_list;
    list.flush();
    if (!list.m_model || !list.m_selection)
        return;
    const QModelIndex index = list.m_model->indexOf(*this);
    const bool wasByCode = std::exchange(list.m_byCode, true);
    if (!selected)
        list.m_selection->select(index, QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    else if (list.m_multiSelect)
        list.m_selection->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    else
        list.m_selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                     QItemSelectionModel::Rows);
    list.m_byCode = wasByCode;
}

void ListItem::EnsureVisible()
{
    m_list->flush();
    if (QAbstractItemView* view = m_list->activeView())
        view->scrollTo(m_list->m_model->indexOf(*this));
}

// ---- ListItems --------------------------------------------------------------

ListItem& ListItems::Add(int index, const QString& key, const QString& text, const QString& icon,
                         const QString& smallIcon)
{
    if (!key.isEmpty() && IsNumericKey(key))
        throw ControlError(ControlError::InvalidKey, "Invalid key");
    if (index < 0 || index > Count() + 1)
        throw outOfBounds();
    const std::uint16_t iconId = m_list.m_imageKeys.idOf(icon, m_list.m_icons);
    const std::uint16_t smallId = m_list.m_imageKeys.idOf(smallIcon, m_list.m_smallIcons);

    if (text.size() > m_list.m_longestText.size())
        m_list.m_longestText = text;
    auto owned = std::unique_ptr<ListItem>(new ListItem(m_list, key, text));
    ListItem& item = *owned;
    item.m_icon = iconId;
    item.m_smallIcon = smallId;
    ListModel* model = m_list.m_model;
    if (index == 0 || index == Count() + 1) {
        item.m_row = Count();
        m_rows.push_back(std::move(owned));
        if (model)
            model->appended();
    } else {
        m_list.flush();
        const int row = index - 1;
        item.m_row = row;
        if (model)
            model->beginInsert(row);
        m_rows.insert(m_rows.begin() + row, std::move(owned));
        for (std::size_t i = std::size_t(row) + 1; i < m_rows.size(); ++i)
            m_rows[i]->m_row = int(i);
        if (model)
            model->endInsert();
    }
    if (m_keysIndexed && !key.isEmpty())
        m_byKey.insert(key, &item);
    return item;
}

ListItem& ListItems::Item(int index) const
{
    if (index < 1 || index > Count())
        throw outOfBounds();
    return *m_rows[std::size_t(index - 1)];
}

ListItem& ListItems::Item(const QString& key) const
{
    if (ListItem* item = Find(key))
        return *item;
    throw notFound();
}

ListItem* ListItems::Find(const QString& key) const
{
    if (key.isEmpty())
        return nullptr;
    indexKeys();
    return m_byKey.value(key, nullptr);
}

void ListItems::indexKeys() const
{
    if (m_keysIndexed)
        return;
    m_byKey.reserve(qsizetype(m_rows.size()));
    for (const auto& row : m_rows)
        if (!row->m_key.isEmpty())
            m_byKey.insert(row->m_key, row.get());
    m_keysIndexed = true;
}

void ListItems::forget(ListItem& item)
{
    if (m_keysIndexed && !item.m_key.isEmpty())
        m_byKey.remove(item.m_key, &item);
}

void ListItems::RemoveRange(int index, int count)
{
    if (count <= 0)
        return;
    if (index < 1 || index + count - 1 > Count())
        throw outOfBounds();
    const int first = index - 1;
    RemoveIf([first, count](const ListItem& item) {
        return item.m_row >= first && item.m_row < first + count;
    });
}

int ListItems::RemoveIf(const std::function<bool(const ListItem&)>& reject)
{
    m_list.flush();
    const std::size_t total = m_rows.size();
    std::vector<bool> rejected(total);
    std::size_t runs = 0;
    for (std::size_t i = 0; i < total; ++i) {
        rejected[i] = reject(*m_rows[i]);
        if (rejected[i] && (i == 0 || !rejected[i - 1]))
            ++runs;
    }
    if (runs == 0)
        return 0;
    // The focus moving off a removed row is no click of the user's.
    const bool wasByCode = std::exchange(m_list.m_byCode, true);
    // Each removal costs the views a little; past a few thousand runs (a
    // search that drops every other row) one new layout of the rows that stay
    // is cheaper than a removal per run.
    constexpr std::size_t kRunsForOneLayout = 2000;
    const int removed = runs > kRunsForOneLayout ? removeByLayout(rejected) : removeRuns(rejected);
    m_list.m_byCode = wasByCode;
    return removed;
}

int ListItems::removeRuns(const std::vector<bool>& rejected)
{
    ListModel* model = m_list.m_model;
    const std::size_t total = m_rows.size();
    std::size_t write = 0;
    for (std::size_t read = 0; read < total;) {
        if (!rejected[read]) {
            if (write != read)
                m_rows[write] = std::move(m_rows[read]);
            m_rows[write]->m_row = int(write);
            ++write;
            ++read;
            continue;
        }
        std::size_t end = read + 1;
        while (end < total && rejected[end])
            ++end;
        const int count = int(end - read);
        if (model)
            model->beginRemove(int(write), count);
        for (std::size_t i = read; i < end; ++i) {
            forget(*m_rows[i]);
            m_rows[i].reset();
        }
        if (model)
            model->endRemove(int(write), count, int(end - write));
        read = end;
    }
    m_rows.resize(write);
    if (model)
        model->closeGap();
    return int(total - write);
}

int ListItems::removeByLayout(const std::vector<bool>& rejected)
{
    ListModel* model = m_list.m_model;
    const std::size_t total = m_rows.size();
    std::vector<int> newRowOfOld(total, -1);
    if (model)
        model->layoutWillChange();
    std::size_t write = 0;
    for (std::size_t read = 0; read < total; ++read) {
        if (rejected[read]) {
            forget(*m_rows[read]);
            m_rows[read].reset();
            continue;
        }
        if (write != read)
            m_rows[write] = std::move(m_rows[read]);
        m_rows[write]->m_row = int(write);
        newRowOfOld[read] = int(write++);
    }
    m_rows.resize(write);
    if (model)
        model->layoutDidChange(newRowOfOld);
    return int(total - write);
}

void ListItems::Clear()
{
    ListModel* model = m_list.m_model;
    const bool wasByCode = std::exchange(m_list.m_byCode, true);
    if (model)
        model->beginReset();
    m_rows.clear();
    m_byKey.clear();
    m_keysIndexed = false;
    m_list.m_longestText.clear();
    if (model)
        model->endReset();
    m_list.m_byCode = wasByCode;
}

// ---- ColumnHeader(s) --------------------------------------------------------

void ColumnHeader::SetText(const QString& text)
{
    m_text = text;
    m_list->columnsChanged();
}

int ColumnHeader::Width() const
{
    if (const QHeaderView* header = m_list->detailsHeader())
        return ToTwips(header->sectionSize(m_index));
    return ToTwips(m_widthPixels);
}

void ColumnHeader::SetWidth(int twips)
{
    if (twips < 0)
        throw ControlError(ControlError::InvalidPropertyValue, "Invalid property value");
    m_widthPixels = ToPixels(twips);
    if (QHeaderView* header = m_list->detailsHeader())
        header->resizeSection(m_index, m_widthPixels);
}

void ColumnHeader::SetAlignment(int alignment)
{
    m_alignment = alignment;
    m_list->columnsChanged();
}

ColumnHeader& ColumnHeaders::Add(int index, const QString& key, const QString& text, int width,
                                 int alignment)
{
    if (!key.isEmpty()) {
        if (IsNumericKey(key))
            throw ControlError(ControlError::InvalidKey, "Invalid key");
        for (const auto& column : m_columns)
            if (column->m_key == key)
                throw ControlError(ControlError::KeyNotUnique, "Key is not unique in collection");
    }
    if (index < 0 || index > Count() + 1)
        throw outOfBounds();
    auto column = std::unique_ptr<ColumnHeader>(new ColumnHeader(m_list));
    column->m_key = key;
    column->m_text = text;
    column->m_alignment = alignment;
    if (width >= 0)
        column->m_widthPixels = ToPixels(width);
    ColumnHeader& added = *column;
    const int at = index == 0 ? Count() : index - 1;
    m_columns.insert(m_columns.begin() + at, std::move(column));
    renumber();
    m_list.columnsChanged();
    return added;
}

ColumnHeader& ColumnHeaders::Item(int index) const
{
    if (index < 1 || index > Count())
        throw outOfBounds();
    return *m_columns[std::size_t(index - 1)];
}

ColumnHeader& ColumnHeaders::Item(const QString& key) const
{
    for (const auto& column : m_columns)
        if (!key.isEmpty() && column->m_key == key)
            return *column;
    throw notFound();
}

void ColumnHeaders::Remove(int index)
{
    Item(index);
    m_columns.erase(m_columns.begin() + (index - 1));
    renumber();
    m_list.columnsChanged();
}

void ColumnHeaders::Clear()
{
    m_columns.clear();
    m_list.columnsChanged();
}

void ColumnHeaders::renumber()
{
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        m_columns[i]->m_index = int(i);
}

} // namespace fw
