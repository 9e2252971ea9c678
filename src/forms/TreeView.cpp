#include "forms/TreeView.h"

#include "forms/ControlError.h"
#include "forms/Form.h"
#include "forms/ImageList.h"
#include "forms/Screen.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QTreeView>
#include <utility>

namespace fw {

// The model hands the view the nodes themselves as internal pointers; it keeps
// no state of its own besides which child lists the view has asked about.
// Under the last shown level the view gets one note row instead of the
// children; its index carries the node above it with the lowest bit set,
// which is free as nodes are aligned.
class TreeModel : public QAbstractItemModel {
    static constexpr quintptr kNoteTag = 1;

  public:
    TreeModel(TreeView& tree, QObject* parent) : QAbstractItemModel(parent), m_tree(&tree) {}

    static TreeNode* nodeOf(const QModelIndex& index)
    {
        return index.isValid() && !(index.internalId() & kNoteTag)
                   ? static_cast<TreeNode*>(index.internalPointer())
                   : nullptr;
    }
    static TreeNode* noteOwner(const QModelIndex& index)
    {
        return index.isValid() && (index.internalId() & kNoteTag)
                   ? reinterpret_cast<TreeNode*>(index.internalId() & ~kNoteTag)
                   : nullptr;
    }
    static bool showsNoteBelow(const TreeNode* node)
    {
        return node && node->m_depth >= TreeView::ShownLevels - 1;
    }
    QModelIndex indexOf(TreeNode& node) const { return createIndex(node.m_row, 0, &node); }

    // The list of children under parent, marked as known to the view; null
    // where the view sees no nodes below.
    const std::vector<TreeNode*>* childrenOf(const QModelIndex& parent) const
    {
        if (!m_tree || noteOwner(parent))
            return nullptr;
        if (TreeNode* node = nodeOf(parent)) {
            node->m_childrenKnown = true;
            return &node->m_children;
        }
        m_tree->m_nodes.m_rootsKnown = true;
        return &m_tree->m_nodes.m_roots;
    }

    QModelIndex index(int row, int column, const QModelIndex& parent) const override
    {
        if (TreeNode* node = nodeOf(parent); showsNoteBelow(node)) {
            node->m_childrenKnown = true;
            if (row != 0 || column != 0 || node->m_children.empty())
                return {};
            return createIndex(0, 0, quintptr(node) | kNoteTag);
        }
        const auto* list = childrenOf(parent);
        if (!list || column != 0 || row < 0 || row >= int(list->size()))
            return {};
        return createIndex(row, 0, (*list)[std::size_t(row)]);
    }
    QModelIndex parent(const QModelIndex& child) const override
    {
        if (TreeNode* owner = noteOwner(child))
            return indexOf(*owner);
        TreeNode* node = nodeOf(child);
        if (!node || !node->m_parent)
            return {};
        return indexOf(*node->m_parent);
    }
    int rowCount(const QModelIndex& parent) const override
    {
        if (parent.column() > 0)
            return 0;
        if (TreeNode* node = nodeOf(parent); showsNoteBelow(node)) {
            node->m_childrenKnown = true;
            return node->m_children.empty() ? 0 : 1;
        }
        const auto* list = childrenOf(parent);
        return list ? int(list->size()) : 0;
    }
    int columnCount(const QModelIndex&) const override { return 1; }
    bool hasChildren(const QModelIndex& parent) const override { return rowCount(parent) > 0; }
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        // The note shows greyed, and the keys pass over it.
        if (noteOwner(index))
            return Qt::NoItemFlags;
        return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (noteOwner(index) && m_tree)
            return role == Qt::DisplayRole ? QVariant(m_tree->DepthNote) : QVariant();
        TreeNode* node = nodeOf(index);
        if (!node || !m_tree)
            return {};
        if (role == Qt::DisplayRole)
            return node->m_text;
        if (role == Qt::DecorationRole)
            return m_tree->iconOf(*node);
        if (role == Qt::ForegroundRole && node->m_foreColor != TreeNode::DefaultColor)
            return QColor(int(node->m_foreColor & 0xFF), int((node->m_foreColor >> 8) & 0xFF),
                          int((node->m_foreColor >> 16) & 0xFF));
        return {};
    }

    // The row of parent's list that the view sees change when a child comes
    // or goes at row, or -1: changes to a list the view never saw need no
    // announcement, and under the last shown level only the note's coming
    // and going shows (the first child arriving, the last one leaving).
    int shownRow(TreeNode* parent, int row, bool firstOrLast) const
    {
        if (!(parent ? parent->m_childrenKnown : m_tree->m_nodes.m_rootsKnown))
            return -1;
        if (showsNoteBelow(parent))
            return firstOrLast ? 0 : -1;
        return row;
    }
    QModelIndex parentIndex(TreeNode* parent) const
    {
        return parent ? indexOf(*parent) : QModelIndex();
    }
    void beginInsert(TreeNode* parent, int row) { beginInsertRows(parentIndex(parent), row, row); }
    void endInsert() { endInsertRows(); }
    void beginRemove(TreeNode* parent, int row) { beginRemoveRows(parentIndex(parent), row, row); }
    void endRemove() { endRemoveRows(); }
    void beginReset() { beginResetModel(); }
    void endReset() { endResetModel(); }
    void changed(TreeNode& node)
    {
        if (shownRow(node.m_parent, node.m_row, false) >= 0) {
            const QModelIndex index = indexOf(node);
            emit dataChanged(index, index);
        }
    }

    TreeView* m_tree;
};

// QTreeView with the control's mouse events, which arrive at its viewport.
class TreeWidget : public QTreeView {
  public:
    TreeWidget(TreeView& tree, QWidget* parent) : QTreeView(parent), m_tree(tree) {}

    // Set while the view moves the selection for a reason of its own: a mouse
    // press, which reports itself as a click on release, or the focus
    // arriving, which makes the first node current without anyone choosing it.
    bool m_movingByItself = false;

    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override
    {
        QTreeView::scrollTo(index, hint);
        // Qt scrolls to the column's start; a deep row's text stands further right.
        const int left = visualRect(index).left();
        if (left < 0 || left > viewport()->width() - indentation())
            horizontalScrollBar()->setValue(horizontalScrollBar()->value() + left - indentation());
    }

  protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QTreeView::resizeEvent(event);
        // The column fills the view, and grows past it with deep levels.
        header()->setMinimumSectionSize(viewport()->width());
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        m_movingByItself = true;
        QTreeView::mousePressEvent(event);
        m_movingByItself = false;
    }
    void focusInEvent(QFocusEvent* event) override
    {
        m_movingByItself = true;
        QTreeView::focusInEvent(event);
        m_movingByItself = false;
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QTreeView::mouseReleaseEvent(event);
        if (event->button() == Qt::LeftButton)
            m_tree.raise(m_tree.Click);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        QTreeView::mouseDoubleClickEvent(event);
        m_tree.raise(m_tree.DblClick);
    }

  private:
    TreeView& m_tree;
};

namespace {
// Frees a node and everything below it without recursion, since documents can
// nest deeper than the stack allows; each node is shown to forget first.
template <class Forget> void freeSubtree(TreeNode* top, Forget&& forget)
{
    std::vector<TreeNode*> pending{top};
    while (!pending.empty()) {
        TreeNode* node = pending.back();
        pending.pop_back();
        forget(*node);
        for (TreeNode* child = node->Child(); child; child = child->Next())
            pending.push_back(child);
        delete node;
    }
}
} // namespace

// ---- TreeNode ---------------------------------------------------------------

const std::vector<TreeNode*>& TreeNode::siblings() const
{
    return m_parent ? m_parent->m_children : m_tree->m_nodes.m_roots;
}

void TreeNode::SetText(const QString& text)
{
    m_text = text;
    m_tree->nodeChanged(*this);
}

void TreeNode::SetForeColor(std::uint32_t colour)
{
    m_foreColor = colour;
    m_tree->nodeChanged(*this);
}

QString TreeNode::Image() const
{
    return m_tree->imageKey(m_image);
}
QString TreeNode::SelectedImage() const
{
    return m_tree->imageKey(m_selectedImage);
}
QString TreeNode::ExpandedImage() const
{
    return m_tree->imageKey(m_expandedImage);
}

void TreeNode::SetImage(const QString& key)
{
    m_image = m_tree->imageId(key);
    m_tree->nodeChanged(*this);
}
void TreeNode::SetSelectedImage(const QString& key)
{
    m_selectedImage = m_tree->imageId(key);
    m_tree->nodeChanged(*this);
}
void TreeNode::SetExpandedImage(const QString& key)
{
    m_expandedImage = m_tree->imageId(key);
    m_tree->nodeChanged(*this);
}

TreeNode* TreeNode::Next() const
{
    const auto& list = siblings();
    return std::size_t(m_row + 1) < list.size() ? list[std::size_t(m_row + 1)] : nullptr;
}
TreeNode* TreeNode::Previous() const
{
    return m_row > 0 ? siblings()[std::size_t(m_row - 1)] : nullptr;
}
TreeNode* TreeNode::FirstSibling() const
{
    return siblings().front();
}
TreeNode* TreeNode::LastSibling() const
{
    return siblings().back();
}
TreeNode* TreeNode::Root() const
{
    const TreeNode* node = this;
    while (node->m_parent)
        node = node->m_parent;
    return const_cast<TreeNode*>(node);
}

QString TreeNode::FullPath() const
{
    QStringList parts;
    for (const TreeNode* node = this; node; node = node->m_parent)
        parts.prepend(node->m_text);
    return parts.join(m_tree->m_pathSeparator);
}

void TreeNode::SetExpanded(bool expanded)
{
    if (!m_tree->m_view || !shown()) {
        m_expanded = expanded;
        return;
    }
    m_tree->m_view->setExpanded(m_tree->m_model->indexOf(*this), expanded);
}

bool TreeNode::Selected() const
{
    return m_tree->SelectedItem() == this;
}

void TreeNode::SetSelected(bool selected)
{
    if (selected)
        m_tree->SetSelectedItem(this);
    else if (Selected())
        m_tree->SetSelectedItem(nullptr);
}

void TreeNode::EnsureVisible()
{
    for (TreeNode* node = m_parent; node; node = node->m_parent)
        if (!node->m_expanded)
            node->SetExpanded(true);
    if (m_tree->m_view)
        m_tree->m_view->scrollTo(m_tree->m_model->indexOf(*shownAncestor()));
}

bool TreeNode::shown() const
{
    return m_depth < TreeView::ShownLevels;
}

TreeNode* TreeNode::shownAncestor() const
{
    const TreeNode* node = this;
    while (!node->shown())
        node = node->m_parent;
    return const_cast<TreeNode*>(node);
}

// ---- TreeNodes --------------------------------------------------------------

TreeNode& TreeNodes::Add(const QString& relativeKey, TreeRelationship relationship,
                         const QString& key, const QString& text, const QString& image,
                         const QString& selectedImage)
{
    return Add(&Item(relativeKey), relationship, key, text, image, selectedImage);
}

TreeNode& TreeNodes::Add(TreeNode* relative, TreeRelationship relationship, const QString& key,
                         const QString& text, const QString& image, const QString& selectedImage)
{
    if (!key.isEmpty()) {
        if (IsNumericKey(key))
            throw ControlError(ControlError::InvalidKey, "Invalid key");
        if (m_byKey.contains(key))
            throw ControlError(ControlError::KeyNotUnique, "Key is not unique in collection");
    }
    const std::uint16_t imageId = m_tree.imageId(image);
    const std::uint16_t selectedId = m_tree.imageId(selectedImage);

    TreeNode* parent = nullptr;
    std::size_t row = m_roots.size();
    if (relative) {
        if (relationship == tvwChild) {
            parent = relative;
            row = relative->m_children.size();
        } else {
            parent = relative->m_parent;
            const std::size_t here = std::size_t(relative->m_row);
            const std::size_t count = relative->siblings().size();
            row = relationship == tvwFirst      ? 0
                  : relationship == tvwLast     ? count
                  : relationship == tvwPrevious ? here
                                                : here + 1;
        }
    }
    std::vector<TreeNode*>& list = parent ? parent->m_children : m_roots;

    auto* node = new TreeNode(m_tree, parent);
    node->m_key = key;
    node->m_text = text;
    node->m_image = imageId;
    node->m_selectedImage = selectedId;
    node->m_row = int(row);
    node->m_depth = parent ? parent->m_depth + 1 : 0;
    const int shownRow =
        m_tree.m_model ? m_tree.m_model->shownRow(parent, int(row), list.empty()) : -1;
    if (shownRow >= 0)
        m_tree.m_model->beginInsert(parent, shownRow);
    list.insert(list.begin() + std::ptrdiff_t(row), node);
    for (std::size_t i = row + 1; i < list.size(); ++i)
        list[i]->m_row = int(i);
    if (!key.isEmpty())
        m_byKey.insert(key, node);
    ++m_count;
    if (shownRow >= 0)
        m_tree.m_model->endInsert();
    return *node;
}

TreeNode& TreeNodes::Item(const QString& key) const
{
    TreeNode* node = m_byKey.value(key, nullptr);
    if (!node)
        throw ControlError(ControlError::ElementNotFound, "Element not found");
    return *node;
}

void TreeNodes::forget(TreeNode& node)
{
    if (!node.m_key.isEmpty())
        m_byKey.remove(node.m_key);
    --m_count;
}

void TreeNodes::Remove(TreeNode& node)
{
    TreeNode* parent = node.m_parent;
    std::vector<TreeNode*>& list = parent ? parent->m_children : m_roots;
    const int row = node.m_row;
    const int shownRow =
        m_tree.m_model ? m_tree.m_model->shownRow(parent, row, list.size() == 1) : -1;
    // The selection that moves off a removed node is no click of the user's.
    const bool wasSelectingByCode = std::exchange(m_tree.m_selectingByCode, true);
    if (shownRow >= 0)
        m_tree.m_model->beginRemove(parent, shownRow);
    list.erase(list.begin() + row);
    for (std::size_t i = std::size_t(row); i < list.size(); ++i)
        list[i]->m_row = int(i);
    freeSubtree(&node, [this](TreeNode& gone) { forget(gone); });
    if (shownRow >= 0)
        m_tree.m_model->endRemove();
    m_tree.m_selectingByCode = wasSelectingByCode;
}

void TreeNodes::Clear()
{
    if (m_tree.m_model)
        m_tree.m_model->beginReset();
    for (TreeNode* root : m_roots)
        freeSubtree(root, [](TreeNode&) {});
    m_roots.clear();
    m_byKey.clear();
    m_count = 0;
    m_rootsKnown = false;
    if (m_tree.m_model)
        m_tree.m_model->endReset();
}

// ---- TreeView ---------------------------------------------------------------

TreeView::TreeView(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("TreeView"), nullptr), m_nodes(*this)
{
    m_view = new TreeWidget(*this, container ? container : form.clientArea());
    m_model = new TreeModel(*this, m_view);
    m_view->setHeaderHidden(true);
    // Every row is one line of text beside a small picture; uniform heights
    // spare the view from measuring each row of a large tree.
    m_view->setUniformRowHeights(true);
    // Deep levels stand far to the right: a column as wide as its rows lets
    // the view scroll to them (Qt measures only some rows around those shown).
    m_view->header()->setStretchLastSection(false);
    m_view->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setModel(m_model);
    setWidget(m_view);

    QObject::connect(m_view, &QTreeView::expanded, m_view, [this](const QModelIndex& index) {
        if (TreeNode* node = TreeModel::nodeOf(index))
            nodeExpanded(*node, true);
    });
    QObject::connect(m_view, &QTreeView::collapsed, m_view, [this](const QModelIndex& index) {
        if (TreeNode* node = TreeModel::nodeOf(index))
            nodeExpanded(*node, false);
    });
    QObject::connect(m_view, &QTreeView::clicked, m_view, [this](const QModelIndex& index) {
        if (TreeNode* node = TreeModel::nodeOf(index))
            raise(NodeClick, *node);
    });
    QObject::connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, m_view,
                     [this](const QModelIndex& current, const QModelIndex& previous) {
                         // Pictures that depend on the selection change with it.
                         if (TreeNode* old = TreeModel::nodeOf(previous))
                             nodeChanged(*old);
                         TreeNode* node = TreeModel::nodeOf(current);
                         if (!node)
                             return;
                         nodeChanged(*node);
                         if (!m_selectingByCode && !m_view->m_movingByItself)
                             raise(NodeClick, *node);
                     });
}

TreeView::~TreeView()
{
    // The window usually goes first and takes the view and model with it; if
    // not, the model must stop handing out nodes before they are freed.
    if (m_model) {
        m_model->beginReset();
        m_model->m_tree = nullptr;
    }
    for (TreeNode* root : m_nodes.m_roots)
        freeSubtree(root, [](TreeNode&) {});
    m_nodes.m_roots.clear();
    if (m_model)
        m_model->endReset();
}

void TreeView::SetImageList(ImageList* images)
{
    m_images = images;
    if (m_model && m_nodes.m_rootsKnown)
        m_view->viewport()->update();
}

std::uint16_t TreeView::imageId(const QString& key)
{
    return m_imageKeys.idOf(key, m_images);
}

const QString& TreeView::imageKey(std::uint16_t id) const
{
    return m_imageKeys.keyOf(id);
}

QIcon TreeView::iconOf(const TreeNode& node) const
{
    if (!m_images)
        return {};
    std::uint16_t id = node.m_image;
    if (node.m_expanded && node.m_expandedImage)
        id = node.m_expandedImage;
    if (node.m_selectedImage && node.Selected())
        id = node.m_selectedImage;
    return m_imageKeys.iconOf(id, m_images);
}

void TreeView::nodeChanged(TreeNode& node)
{
    if (m_model)
        m_model->changed(node);
}

void TreeView::nodeExpanded(TreeNode& node, bool expanded)
{
    if (node.m_expanded == expanded)
        return;
    node.m_expanded = expanded;
    nodeChanged(node);
    raise(expanded ? Expand : Collapse, node);
}

TreeNode* TreeView::SelectedItem() const
{
    return m_view ? TreeModel::nodeOf(m_view->currentIndex()) : nullptr;
}

void TreeView::SetSelectedItem(TreeNode* node)
{
    if (!m_view)
        return;
    m_selectingByCode = true;
    // A node below the shown levels cannot be selected; the view marks the
    // last one above it.
    if (node)
        m_view->setCurrentIndex(m_model->indexOf(*node->shownAncestor()));
    else
        m_view->selectionModel()->clear();
    m_selectingByCode = false;
}

TreeNode* TreeView::HitTest(float x, float y) const
{
    if (!m_view)
        return nullptr;
    const QPoint inView(ToPixels(int(x)), ToPixels(int(y)));
    return TreeModel::nodeOf(m_view->indexAt(m_view->viewport()->mapFrom(m_view, inView)));
}

int TreeView::Indentation() const
{
    return m_view ? ToTwips(m_view->indentation()) : 0;
}

void TreeView::SetIndentation(int twips)
{
    if (m_view)
        m_view->setIndentation(std::max(0, ToPixels(twips)));
}

void TreeView::SetWidth(int twips)
{
    if (twips < 0)
        throw ControlError(ControlError::InvalidPropertyValue, "Invalid property value");
    Control::SetWidth(twips);
}

void TreeView::SetHeight(int twips)
{
    if (twips < 0)
        throw ControlError(ControlError::InvalidPropertyValue, "Invalid property value");
    Control::SetHeight(twips);
}

QRect TreeView::NodeRect(const TreeNode& node) const
{
    if (!m_view || !node.shown())
        return {};
    for (const TreeNode* up = node.m_parent; up; up = up->m_parent)
        if (!up->m_expanded)
            return {};
    return m_view->visualRect(m_model->indexOf(const_cast<TreeNode&>(node)));
}

QWidget* TreeView::viewport() const
{
    return m_view ? m_view->viewport() : nullptr;
}

QVariant TreeView::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"INDENTATION")
        return Indentation();
    if (key == u"PATHSEPARATOR")
        return m_pathSeparator;
    if (key == u"NODES.COUNT")
        return m_nodes.Count();
    return Control::GetProperty(name);
}

bool TreeView::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"INDENTATION")
        SetIndentation(value.toInt());
    else if (key == u"PATHSEPARATOR")
        m_pathSeparator = value.toString();
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
