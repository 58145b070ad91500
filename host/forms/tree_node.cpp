#include "host/forms/tree_node.h"

#include <QCoreApplication>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include "host/U_function.h"

namespace goodsbook::treenode {
namespace {

constexpr int orphanHeadType = QTreeWidgetItem::UserType + 1;
constexpr int nameRole = Qt::UserRole;

}  // namespace

QTreeWidgetItem* make(const QString& code, const QString& shown, const QString& name) {
  auto* node = new QTreeWidgetItem;
  node->setText(0, code + u' ' + shown);
  node->setData(0, nameRole, name);
  return node;
}

void rename(QTreeWidgetItem* node, const QString& code, const QString& name) {
  node->setText(0, code + u' ' + name);
  node->setData(0, nameRole, name);
}

QString name(const QTreeWidgetItem* node) {
  return node ? node->data(0, nameRole).toString() : QString();
}

QTreeWidgetItem* makeOrphanHead() {
  auto* node = new QTreeWidgetItem(orphanHeadType);
  node->setText(0, QCoreApplication::translate("goodsbook::TFrm_Base_Node", "（上级不存在）"));
  node->setToolTip(0, QCoreApplication::translate("goodsbook::TFrm_Base_Node", "这些记录的上级已被删除"));
  node->setFlags(Qt::ItemIsEnabled);
  QFont font = node->font(0);
  font.setItalic(true);
  node->setFont(0, font);
  return node;
}

bool isOrphanHead(const QTreeWidgetItem* node) {
  return node && node->type() == orphanHeadType;
}

QString code(const QTreeWidgetItem* node) {
  return node && !isOrphanHead(node) ? GETCODE(node->text(0)) : QString();
}

QTreeWidgetItem* selected(const QTreeWidget& tree) {
  const QList<QTreeWidgetItem*> nodes = tree.selectedItems();
  return nodes.isEmpty() ? nullptr : nodes.front();
}

QTreeWidgetItem* find(const QTreeWidget& tree, const QString& wanted) {
  for (QTreeWidgetItemIterator it(const_cast<QTreeWidget*>(&tree)); *it; ++it) {
    if (code(*it).compare(wanted, Qt::CaseInsensitive) == 0 && !isOrphanHead(*it)) return *it;
  }
  return nullptr;
}

int topLevelEnd(const QTreeWidget& tree) {
  const int count = tree.topLevelItemCount();
  return count > 0 && isOrphanHead(tree.topLevelItem(count - 1)) ? count - 1 : count;
}

}  // namespace goodsbook::treenode
