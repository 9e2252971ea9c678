#pragma once
// A user's hands on a tree control: clicks and double clicks on a node's
// text, clicks on its expander. Nodes must be shown (their ancestors expanded).

#include "forms/TreeView.h"

namespace fw::testing {

void ClickNode(TreeView& tree, const TreeNode& node);
void DoubleClickNode(TreeView& tree, const TreeNode& node);
/// Clicks the plus or minus sign in front of a node.
void ClickExpander(TreeView& tree, const TreeNode& node);

} // namespace fw::testing
