#include <QItemSelectionModel>
#include <QJsonArray>
#include <QPointer>
#include <QTreeView>
#include <algorithm>

#include "app/driver/driver.h"
#include "app/driver/elements.h"
#include "app/driver/input.h"
#include "app/driver/table.h"
#include "app/driver/tree_nodes.h"
#include "host/U_function.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

void collect(const QAbstractItemModel& model, const QModelIndex& parent, int depth,
             std::vector<TreeNode>& nodes) {
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex index = model.index(row, 0, parent);
    nodes.push_back({index, depth});
    collect(model, index, depth + 1, nodes);
  }
}

QString captionOf(const TreeNode& node) {
  return node.index.data().toString();
}

QJsonArray describeNodes(const QTreeView& tree) {
  QJsonArray list;
  for (const TreeNode& node : nodesOf(tree)) {
    list.append(QJsonObject{{u"caption"_s, captionOf(node)},
                            {u"depth"_s, node.depth},
                            {u"selected"_s, tree.selectionModel()->isSelected(node.index)}});
  }
  return list;
}

QModelIndex findNode(const QTreeView& tree, const QString& code) {
  const std::vector<TreeNode> nodes = nodesOf(tree);
  const auto found =
      std::ranges::find_if(nodes, [&](const TreeNode& node) { return GETCODE(captionOf(node)) == code; });
  if (found == nodes.end()) throw CommandError(DriverTexts::tr("没有节点 %1").arg(code));
  return found->index;
}

Step listNodes(Driver& driver, const Arguments& arguments) {
  return {.actions = {}, .answer = [&driver, name = arguments.optionalText("element").value_or(QString())] {
            const QTreeView& tree = findTree(driver.addressing().addressed(), name);
            return QJsonObject{{u"nodes"_s, describeNodes(tree)}};
          }};
}

Step selectNode(Driver& driver, const Arguments& arguments) {
  QTreeView& tree =
      findTree(driver.addressing().reachable(), arguments.optionalText("element").value_or(QString()));
  requireUsable(tree);
  if (arguments.isNull("code")) {
    return {.actions = {[target = QPointer(&tree)] {
              if (!target) return;
              target->clearSelection();
              target->setCurrentIndex({});
            }}};
  }
  const QPersistentModelIndex node = findNode(tree, arguments.text("code"));
  return {.actions = {[target = QPointer(&tree), node] {
            if (!target || !node.isValid()) return;
            for (QModelIndex parent = node.parent(); parent.isValid(); parent = parent.parent())
              target->expand(parent);
            target->scrollTo(node);
            const QRect place = target->visualRect(node);
            clickAt(*target->viewport(), place.center(), false);
          }}};
}

constexpr Command commands[] = {{"tree", listNodes}, {"node", selectNode}};

}  // namespace

std::vector<TreeNode> nodesOf(const QTreeView& tree) {
  std::vector<TreeNode> nodes;
  collect(*tree.model(), tree.rootIndex(), 0, nodes);
  return nodes;
}

QJsonObject treeRows(const QTreeView& tree, int offset, int limit) {
  const std::vector<TreeNode> nodes = nodesOf(tree);
  const int count = static_cast<int>(nodes.size());
  const int first = std::min(offset, count);
  const QModelIndex current =
      tree.selectionModel()->isSelected(tree.currentIndex()) ? tree.currentIndex() : QModelIndex();
  int currentRow = -1;
  QJsonArray rows;
  for (int row = 0; row < count; ++row) {
    const TreeNode& node = nodes[static_cast<std::size_t>(row)];
    if (current.isValid() && node.index.siblingAtColumn(current.column()) == current) currentRow = row;
    if (row < first || row - first >= limit) continue;
    rows.append(QJsonObject{{u"CODE"_s, GETCODE(captionOf(node))},
                            {u"CAPTION"_s, captionOf(node)},
                            {u"DEPTH"_s, QString::number(node.depth)}});
  }
  QJsonArray columns;
  for (const QString& field : {u"CODE"_s, u"CAPTION"_s, u"DEPTH"_s}) {
    const bool shown = field == "CAPTION"_L1;
    columns.append(QJsonObject{{u"field"_s, field},
                               {u"title"_s, field},
                               {u"width"_s, shown ? tree.columnWidth(0) : 0},
                               {u"visible"_s, shown},
                               {u"readonly"_s, true}});
  }
  return {{u"count"_s, count}, {u"current"_s, currentRow}, {u"columns"_s, columns}, {u"rows"_s, rows}};
}

std::span<const Command> treeCommands() {
  return commands;
}

}  // namespace goodsbook
