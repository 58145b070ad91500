#pragma once

#include <QJsonObject>
#include <QModelIndex>
#include <vector>

class QTreeView;

namespace goodsbook {

struct TreeNode {
  QModelIndex index;
  int depth;
};

// All nodes in display order, closed branches included.
std::vector<TreeNode> nodesOf(const QTreeView& tree);

// The nodes as `rows` tells them: fields CODE, CAPTION and DEPTH.
QJsonObject treeRows(const QTreeView& tree, int offset, int limit);

}  // namespace goodsbook
