#include "forms/ImageCombo.h"

#include "forms/ControlError.h"
#include "forms/Form.h"
#include "forms/ImageList.h"

#include <QAbstractListModel>
#include <QComboBox>
#include <QProxyStyle>
#include <QStyledItemDelegate>

namespace fw {

namespace {

constexpr int kIndentPixels = 10; ///< left indent of one level in the open list
constexpr int kIndentRole = Qt::UserRole + 1;

// Levels show only in the open list: the closed box shows the chosen place
// flush left, as file choosers do.
class IndentDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyleOptionViewItem indented(option);
        indented.rect.setLeft(option.rect.left() + indentOf(index));
        QStyledItemDelegate::paint(painter, indented, index);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(indentOf(index), 0);
    }

  private:
    static int indentOf(const QModelIndex& index)
    {
        return kIndentPixels * std::max(0, index.data(kIndentRole).toInt());
    }
};

// Some styles lay the open list over the box with the chosen item on top;
// a place combo drops below, so that the path above stays in sight.
class DropDownStyle : public QProxyStyle {
  public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override
    {
        if (hint == SH_ComboBox_Popup)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, answer);
    }
};

QIcon pictureOf(const ImageList* images, const QVariant& keyOrIndex)
{
    if (!images || !keyOrIndex.isValid())
        return {};
    if (keyOrIndex.typeId() == QMetaType::QString)
        return images->Icon(images->IndexOf(keyOrIndex.toString()));
    return images->Icon(keyOrIndex.toInt());
}

} // namespace

class ImageComboModel : public QAbstractListModel {
  public:
    ImageComboModel(ImageCombo& combo, QObject* parent)
        : QAbstractListModel(parent), m_combo(&combo)
    {
    }

    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() || !m_combo ? 0 : m_combo->m_items.Count();
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!m_combo || !index.isValid() || index.row() >= m_combo->m_items.Count())
            return {};
        const ComboItem& item = *m_combo->m_items.m_items[std::size_t(index.row())];
        switch (role) {
        case Qt::DisplayRole:
            return item.Text();
        case Qt::DecorationRole: {
            const bool chosen = &item == m_combo->m_selected && item.SelImage().isValid();
            return pictureOf(m_combo->m_images, chosen ? item.SelImage() : item.Image());
        }
        case kIndentRole:
            return item.Indentation();
        default:
            return {};
        }
    }

    void rowChanged(int row) { emit dataChanged(index(row), index(row)); }
    void allChanged()
    {
        if (rowCount({}) > 0)
            emit dataChanged(index(0), index(rowCount({}) - 1));
    }

    using QAbstractListModel::beginInsertRows;
    using QAbstractListModel::beginRemoveRows;
    using QAbstractListModel::beginResetModel;
    using QAbstractListModel::endInsertRows;
    using QAbstractListModel::endRemoveRows;
    using QAbstractListModel::endResetModel;

    // Cleared when the control goes before its widget.
    ImageCombo* m_combo;
};

// ---- ComboItem --------------------------------------------------------------

void ComboItem::changed()
{
    if (m_combo->m_model)
        m_combo->m_model->rowChanged(m_row);
}

void ComboItem::SetText(const QString& text)
{
    m_text = text;
    changed();
}

void ComboItem::SetImage(const QVariant& image)
{
    m_image = image;
    changed();
}

void ComboItem::SetSelImage(const QVariant& image)
{
    m_selImage = image;
    changed();
}

void ComboItem::SetIndentation(int levels)
{
    m_indentation = levels;
    changed();
}

// ---- ComboItems -------------------------------------------------------------

ComboItem& ComboItems::Add(int index, const QString& key, const QString& text,
                           const QVariant& image, const QVariant& selImage, int indentation)
{
    if (index < 0 || index > Count() + 1)
        throw ControlError(ControlError::IndexOutOfBounds, "Index out of bounds");
    if (!key.isEmpty() && IsNumericKey(key))
        throw ControlError(ControlError::InvalidKey, "Invalid key");
    if (!key.isEmpty() && Find(key))
        throw ControlError(ControlError::KeyNotUnique, "Key is not unique in collection");
    const int row = index == 0 ? Count() : index - 1;
    auto item = std::unique_ptr<ComboItem>(new ComboItem(m_combo, key, text));
    item->m_image = image;
    item->m_selImage = selImage;
    item->m_indentation = indentation;
    ComboItem& added = *item;
    ImageComboModel* model = m_combo.m_model;
    if (model)
        model->beginInsertRows({}, row, row);
    m_items.insert(m_items.begin() + row, std::move(item));
    renumber(row);
    if (model)
        model->endInsertRows();
    // The box would choose the first item of its own accord.
    m_combo.showSelection();
    return added;
}

ComboItem& ComboItems::Item(int index) const
{
    if (index < 1 || index > Count())
        throw ControlError(ControlError::IndexOutOfBounds, "Index out of bounds");
    return *m_items[std::size_t(index - 1)];
}

ComboItem& ComboItems::Item(const QString& key) const
{
    if (ComboItem* item = Find(key))
        return *item;
    throw ControlError(ControlError::ElementNotFound, "Element not found");
}

ComboItem* ComboItems::Find(const QString& key) const
{
    // A combo holds a few dozen places; a scan beats keeping an index in step.
    if (key.isEmpty())
        return nullptr;
    for (const auto& item : m_items)
        if (item->m_key == key)
            return item.get();
    return nullptr;
}

void ComboItems::Remove(int index)
{
    ComboItem& item = Item(index);
    if (&item == m_combo.m_selected)
        m_combo.m_selected = nullptr;
    ImageComboModel* model = m_combo.m_model;
    if (model)
        model->beginRemoveRows({}, index - 1, index - 1);
    m_items.erase(m_items.begin() + (index - 1));
    renumber(index - 1);
    if (model)
        model->endRemoveRows();
    m_combo.showSelection();
}

void ComboItems::Clear()
{
    ImageComboModel* model = m_combo.m_model;
    if (model)
        model->beginResetModel();
    m_combo.m_selected = nullptr;
    m_items.clear();
    if (model)
        model->endResetModel();
    m_combo.showSelection();
}

void ComboItems::renumber(int from)
{
    for (std::size_t row = std::size_t(from); row < m_items.size(); ++row)
        m_items[row]->m_row = int(row);
}

// ---- ImageCombo -------------------------------------------------------------

ImageCombo::ImageCombo(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ImageCombo"), nullptr), m_items(*this)
{
    m_combo = new QComboBox(container ? container : form.clientArea());
    m_model = new ImageComboModel(*this, m_combo);
    m_combo->setModel(m_model);
    auto* style = new DropDownStyle;
    style->setParent(m_combo);
    m_combo->setStyle(style);
    m_combo->setItemDelegate(new IndentDelegate(m_combo));
    m_combo->setIconSize(QSize(16, 16));
    m_combo->setMaxVisibleItems(20);
    setWidget(m_combo);
    // activated comes from the user only, never from code moving the box.
    QObject::connect(m_combo, &QComboBox::activated, m_combo, [this](int row) {
        if (m_byCode || row < 0 || row >= m_items.Count())
            return;
        ComboItem* before = m_selected;
        m_selected = m_items.m_items[std::size_t(row)].get();
        if (before != m_selected && m_model) {
            if (before)
                m_model->rowChanged(before->m_row);
            m_model->rowChanged(row);
        }
        raise(Click);
    });
}

ImageCombo::~ImageCombo()
{
    // The window usually goes first and takes box and model with it; if not,
    // the model must stop reading items before they are freed.
    if (m_model) {
        m_model->beginResetModel();
        m_model->m_combo = nullptr;
        m_items.m_items.clear();
        m_model->endResetModel();
    }
}

void ImageCombo::SetImageList(fw::ImageList* images)
{
    m_images = images;
    if (images && m_combo)
        m_combo->setIconSize(QSize(images->ImageWidth(), images->ImageHeight()));
    Refresh();
}

void ImageCombo::SetSelectedItem(ComboItem* item)
{
    ComboItem* before = m_selected;
    m_selected = item && item->m_combo == this ? item : nullptr;
    if (m_model && before != m_selected) {
        if (before)
            m_model->rowChanged(before->m_row);
        if (m_selected)
            m_model->rowChanged(m_selected->m_row);
    }
    showSelection();
}

void ImageCombo::showSelection()
{
    if (!m_combo)
        return;
    m_byCode = true;
    m_combo->setCurrentIndex(m_selected ? m_selected->m_row : -1);
    m_byCode = false;
}

void ImageCombo::Refresh()
{
    if (m_model)
        m_model->allChanged();
    Control::Refresh();
}

QString ImageCombo::Text() const
{
    return m_selected ? m_selected->Text() : QString();
}

QVariant ImageCombo::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"TEXT")
        return Text();
    if (key == u"LISTCOUNT")
        return m_items.Count();
    if (key == u"SELECTEDINDEX")
        return m_selected ? m_selected->Index() : 0;
    return Control::GetProperty(name);
}

bool ImageCombo::SetProperty(const QString& name, const QVariant& value)
{
    if (name.compare(u"SelectedIndex", Qt::CaseInsensitive) != 0)
        return Control::SetProperty(name, value);
    const int index = value.toInt();
    SetSelectedItem(index >= 1 && index <= m_items.Count() ? &m_items.Item(index) : nullptr);
    return true;
}

} // namespace fw
