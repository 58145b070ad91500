#include <QItemSelectionModel>
#include <QJsonArray>
#include <QPointer>
#include <QTreeView>

#include "app/driver/driver.h"
#include "app/driver/elements.h"
#include "app/driver/input.h"
#include "app/driver/table.h"
#include "host/U_function.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// Calls `visit(index, depth)` for every node in display order until it gives false.
template <class Visit>
bool walk(const QAbstractItemModel& model, const QModelIndex& parent, int depth, const Visit& visit) {
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex index = model.index(row, 0, parent);
    if (!visit(index, depth) || !walk(model, index, depth + 1, visit)) return false;
  }
  return true;
}

QJsonArray nodesOf(const QTreeView& tree) {
  QJsonArray nodes;
  walk(*tree.model(), tree.rootIndex(), 0, [&](const QModelIndex& index, int depth) {
    nodes.append(QJsonObject{{u"caption"_s, index.data().toString()},
                             {u"depth"_s, depth},
                             {u"selected"_s, tree.selectionModel()->isSelected(index)}});
    return true;
  });
  return nodes;
}

QModelIndex findNode(const QTreeView& tree, const QString& code) {
  QModelIndex found;
  walk(*tree.model(), tree.rootIndex(), 0, [&](const QModelIndex& index, int) {
    if (GETCODE(index.data().toString()) == code) found = index;
    return !found.isValid();
  });
  if (!found.isValid()) throw CommandError(DriverTexts::tr("没有节点 %1").arg(code));
  return found;
}

Step listNodes(Driver& driver, const Arguments& arguments) {
  return {.actions = {}, .answer = [&driver, name = arguments.optionalText("element").value_or(QString())] {
            const QTreeView& tree = findTree(driver.addressing().addressed(), name);
            return QJsonObject{{u"nodes"_s, nodesOf(tree)}};
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

std::span<const Command> treeCommands() {
  return commands;
}

}  // namespace goodsbook
