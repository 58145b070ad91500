#pragma once

#include <QString>

#include "host/export.h"

class QTreeWidget;
class QTreeWidgetItem;

// The nodes in the tree of a TFrm_Base_Node: caption code, one blank, name; and one node of another kind over
// the rows whose parent does not exist.
namespace goodsbook::treenode {

// `name` is what the node is found and asked about by, `shown` what its caption says, which may be more.
GOODSBOOKHOST_EXPORT QTreeWidgetItem* make(const QString& code, const QString& shown, const QString& name);
GOODSBOOKHOST_EXPORT void rename(QTreeWidgetItem* node, const QString& code, const QString& name);
GOODSBOOKHOST_EXPORT QString name(const QTreeWidgetItem* node);
GOODSBOOKHOST_EXPORT QTreeWidgetItem* makeOrphanHead();
GOODSBOOKHOST_EXPORT bool isOrphanHead(const QTreeWidgetItem* node);
GOODSBOOKHOST_EXPORT QString code(const QTreeWidgetItem* node);  // empty for null and the orphans' head
GOODSBOOKHOST_EXPORT QTreeWidgetItem* selected(const QTreeWidget& tree);  // null when nothing is selected
GOODSBOOKHOST_EXPORT QTreeWidgetItem* find(const QTreeWidget& tree, const QString& code);
// Where a new node of the top level goes: behind the others, before the orphans' head.
GOODSBOOKHOST_EXPORT int topLevelEnd(const QTreeWidget& tree);

}  // namespace goodsbook::treenode
