#pragma once
// The standard tree control: nodes with key, text, tag and pictures from a
// bound image list, added relative to other nodes, found by key in constant
// time. The widget is a QTreeView over a light model of these nodes, so that a
// tree of hundreds of thousands of nodes fills quickly.
//
//     tvw->SetImageList(img);
//     TreeNode& root = tvw->Nodes().Add(nullptr, tvwLast, "r", "Wurzel", "tag.closed");
//     tvw->Nodes().Add(&root, tvwChild, "", "id = 7", "property");

#include "forms/Control.h"
#include "forms/ImageKeys.h"

#include <QHash>
#include <QIcon>
#include <QPointer>
#include <QRect>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class QTreeView;

namespace fw {

class ImageList;
class TreeModel;
class TreeView;
class TreeWidget;

/// Where a new node goes, relative to the node given.
enum TreeRelationship {
    tvwFirst = 0,    ///< first among the relative's siblings
    tvwLast = 1,     ///< last among the relative's siblings
    tvwNext = 2,     ///< right after the relative
    tvwPrevious = 3, ///< right before the relative
    tvwChild = 4,    ///< last child of the relative
};

class TreeNode {
  public:
    TreeNode(const TreeNode&) = delete;
    TreeNode& operator=(const TreeNode&) = delete;

    fw::TreeView& TreeView() const { return *m_tree; }
    const QString& Key() const { return m_key; }
    const QString& Text() const { return m_text; }
    void SetText(const QString& text);
    const QString& Tag() const { return m_tag; }
    void SetTag(const QString& tag) { m_tag = tag; }

    /// Picture keys of the bound image list; empty for none. Setting a key
    /// the list lacks raises ControlError 35601 (35613 with no list bound).
    QString Image() const;
    void SetImage(const QString& key);
    /// Shown while the node is selected, if set.
    QString SelectedImage() const;
    void SetSelectedImage(const QString& key);
    /// Shown while the node is expanded, if set.
    QString ExpandedImage() const;
    void SetExpandedImage(const QString& key);

    /// Text colour as a host colour (0x00BBGGRR); DefaultColor for the view's own.
    static constexpr std::uint32_t DefaultColor = 0xFFFFFFFFu;
    std::uint32_t ForeColor() const { return m_foreColor; }
    void SetForeColor(std::uint32_t colour);

    /// Number of children.
    int Children() const { return static_cast<int>(m_children.size()); }
    TreeNode* Parent() const { return m_parent; }
    /// First child, or null.
    TreeNode* Child() const { return m_children.empty() ? nullptr : m_children.front(); }
    TreeNode* Next() const;
    TreeNode* Previous() const;
    TreeNode* FirstSibling() const;
    TreeNode* LastSibling() const;
    /// The top-level node above this one (itself at the top).
    TreeNode* Root() const;
    /// Texts from the top down, joined by the tree's PathSeparator.
    QString FullPath() const;

    bool Expanded() const { return m_expanded; }
    /// Expanding or collapsing raises Expand or Collapse, from code as from the user.
    void SetExpanded(bool expanded);
    bool Selected() const;
    void SetSelected(bool selected);
    /// Scrolls and expands the ancestors so that the node can be seen.
    void EnsureVisible();

  private:
    friend class TreeView;
    friend class TreeModel;
    friend class TreeNodes;
    TreeNode(fw::TreeView& tree, TreeNode* parent) : m_tree(&tree), m_parent(parent) {}
    const std::vector<TreeNode*>& siblings() const;
    /// Within the levels the view shows.
    bool shown() const;
    TreeNode* shownAncestor() const;

    fw::TreeView* m_tree;
    TreeNode* m_parent;
    std::vector<TreeNode*> m_children;
    QString m_key;
    QString m_text;
    QString m_tag;
    int m_row = 0;
    int m_depth = 0; ///< 0 at the top level
    // Picture keys as numbers in the tree's own key table, 0 for none.
    std::uint16_t m_image = 0;
    std::uint16_t m_selectedImage = 0;
    std::uint16_t m_expandedImage = 0;
    bool m_expanded = false;
    std::uint32_t m_foreColor = DefaultColor;
    // The view has asked about this node's children: later changes to them
    // must be announced; until then they may change in silence.
    mutable bool m_childrenKnown = false;
};

/// The nodes of a tree, as the classic Nodes collection.
class TreeNodes {
  public:
    /// Adds a node relative to another (null: at the top level, after the
    /// last top-level node, whatever the relationship). ControlError 35602 for a
    /// key that is taken, 35603 for a numeric key, 35601/35613 for a picture
    /// key the image list lacks. Nothing is added when it fails.
    TreeNode& Add(TreeNode* relative, TreeRelationship relationship = tvwNext,
                  const QString& key = {}, const QString& text = {}, const QString& image = {},
                  const QString& selectedImage = {});
    /// The same with the relative given by key; ControlError 35601 if there is none.
    TreeNode& Add(const QString& relativeKey, TreeRelationship relationship = tvwNext,
                  const QString& key = {}, const QString& text = {}, const QString& image = {},
                  const QString& selectedImage = {});
    /// Number of nodes in the whole tree.
    int Count() const { return m_count; }
    /// A node by key; ControlError 35601 if there is none.
    TreeNode& Item(const QString& key) const;
    /// A node by key, or null.
    TreeNode* Find(const QString& key) const { return m_byKey.value(key, nullptr); }
    bool Exists(const QString& key) const { return m_byKey.contains(key); }
    /// Removes a node with all its descendants.
    void Remove(TreeNode& node);
    void Remove(const QString& key) { Remove(Item(key)); }
    void Clear();
    /// The top-level nodes in order.
    const std::vector<TreeNode*>& Roots() const { return m_roots; }

  private:
    friend class TreeView;
    friend class TreeNode;
    friend class TreeModel;
    explicit TreeNodes(fw::TreeView& tree) : m_tree(tree) {}
    void forget(TreeNode& node);

    fw::TreeView& m_tree;
    std::vector<TreeNode*> m_roots;
    QHash<QString, TreeNode*> m_byKey;
    int m_count = 0;
    mutable bool m_rootsKnown = false;
};

class TreeView : public Control {
  public:
    /// Levels the view shows at most. Qt's tree view lays out expanded levels
    /// by recursion, one stack frame per level, so a deeper document would
    /// overflow the stack; under the last shown level a note row stands for
    /// the rest. The nodes themselves nest as deep as they come.
    static constexpr int ShownLevels = 256;
    /// The text of that note row.
    QString DepthNote = QStringLiteral("\u2026");

    TreeView(Form& form, const QString& name, QWidget* container = nullptr);
    ~TreeView() override;

    TreeNodes& Nodes() { return m_nodes; }
    const TreeNodes& Nodes() const { return m_nodes; }
    ImageList* GetImageList() const { return m_images; }
    /// Binds the image list whose pictures the nodes name by key.
    void SetImageList(ImageList* images);
    TreeNode* SelectedItem() const;
    void SetSelectedItem(TreeNode* node);
    /// The node at a point of the control in twips, or null.
    TreeNode* HitTest(float x, float y) const;
    QString PathSeparator() const { return m_pathSeparator; }
    void SetPathSeparator(const QString& separator) { m_pathSeparator = separator; }
    /// Indentation of a level in twips.
    int Indentation() const;
    void SetIndentation(int twips);

    /// Negative sizes raise ControlError 380, as the classic control does;
    /// Move then leaves the size as it was.
    void SetWidth(int twips) override;
    void SetHeight(int twips) override;

    /// Where a node is shown, in the view's viewport pixels; empty if it is
    /// not shown (a collapsed ancestor). For drivers that click on nodes.
    QRect NodeRect(const TreeNode& node) const;
    QWidget* viewport() const;

    /// A click on a node, or a move of the selection by key.
    std::function<void(TreeNode& node)> NodeClick;
    std::function<void(TreeNode& node)> Expand;
    std::function<void(TreeNode& node)> Collapse;

    /// "Indentation", "PathSeparator"; "Nodes.Count" reads the count.
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    friend class TreeNode;
    friend class TreeNodes;
    friend class TreeModel;
    friend class TreeWidget;
    /// The number of a picture key in the key table; validated against the list.
    std::uint16_t imageId(const QString& key);
    const QString& imageKey(std::uint16_t id) const;
    QIcon iconOf(const TreeNode& node) const;
    void nodeChanged(TreeNode& node);
    void nodeExpanded(TreeNode& node, bool expanded);

    TreeNodes m_nodes;
    // Qt's parent chain owns both; the form's window may go before its controls.
    QPointer<TreeModel> m_model;
    QPointer<TreeWidget> m_view;
    ImageList* m_images = nullptr;
    ImageKeys m_imageKeys;
    QString m_pathSeparator = QStringLiteral("\\");
    // Set while code, not the user, moves the selection.
    bool m_selectingByCode = false;
};

} // namespace fw
