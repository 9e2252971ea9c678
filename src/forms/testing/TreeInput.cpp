#include "forms/testing/TreeInput.h"

#include "forms/Screen.h"

#include <QTest>
#include <QWidget>

namespace fw::testing {

namespace {
QPoint textOf(TreeView& tree, const TreeNode& node)
{
    const QRect rect = tree.NodeRect(node);
    return QPoint(rect.left() + std::min(rect.width() / 2, 40), rect.center().y());
}
} // namespace

void ClickNode(TreeView& tree, const TreeNode& node)
{
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, textOf(tree, node));
}

void DoubleClickNode(TreeView& tree, const TreeNode& node)
{
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, textOf(tree, node));
}

void ClickExpander(TreeView& tree, const TreeNode& node)
{
    const QRect rect = tree.NodeRect(node);
    const int indent = tree.Indentation() / Screen::TwipsPerPixelX();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(rect.left() - indent / 2, rect.center().y()));
}

} // namespace fw::testing
