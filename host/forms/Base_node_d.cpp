#include "host/forms/Base_node_d.h"

#include <QTreeWidget>

#include "host/forms/row_delete.h"
#include "host/forms/tree_node.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

TFrm_Base_Node_d::TFrm_Base_Node_d(QWidget* owner) : TFrm_Base_Detail(owner) {
  appendsRow = false;  // a node is placed after the save
  fillsFromList = false;
}

bool TFrm_Base_Node_d::InitForm(const QString& mode, RecordSet& rows, QTreeWidget& tree) {
  tree_ = &tree;
  return TFrm_Base_Detail::InitForm(mode, rows);
}

QString TFrm_Base_Node_d::selectedCode() const {
  return treenode::code(treenode::selected(*tree_));
}

QString TFrm_Base_Node_d::rowCaption() const {
  const QTreeWidgetItem* node = treenode::selected(*tree_);
  return treenode::code(node) + u' ' + treenode::name(node);
}

QString TFrm_Base_Node_d::parentCode() const {
  const QTreeWidgetItem* node = treenode::selected(*tree_);
  if (mode() == "CopyAdd"_L1) return treenode::code(node);
  const QString above = node ? treenode::code(node->parent()) : QString();
  return above.isEmpty() ? bodyParam(bodyparam::rootValue) : above;
}

void TFrm_Base_Node_d::placeNode(const QString& code, const QString& name) {
  RecordSet& rows = listRows();
  QTreeWidgetItem* node = treenode::selected(*tree_);
  const QString keyField = bodyParam(bodyparam::keyField);
  if (isAdding()) {
    const QString parent = parentCode();
    QTreeWidgetItem* above = node;
    if (mode() == "Add"_L1) above = node ? node->parent() : nullptr;
    if (treenode::isOrphanHead(above)) above = nullptr;  // its rows have no parent to share
    QTreeWidgetItem* added = treenode::make(code, name, name);
    if (above) {
      above->addChild(added);
      above->setExpanded(true);
    } else {
      tree_->insertTopLevelItem(treenode::topLevelEnd(*tree_), added);
    }
    rows.append();
    rows.setValue(keyField, code);
    rows.setValue(bodyParam(bodyparam::parentField), parent);
    tree_->setCurrentItem(added);
  } else if (node) {
    rows.locate(keyField, treenode::code(node));
    treenode::rename(node, code.trimmed(), name.trimmed());
  }
  const QString nameField = nameFieldOf(*this, rows);
  if (!nameField.isEmpty()) rows.setValue(nameField, name);
  storeFields();
}

}  // namespace goodsbook
