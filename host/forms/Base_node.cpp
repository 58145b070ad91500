#include "host/forms/Base_node.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include "host/U_function.h"
#include "host/forms/Base_node_d.h"
#include "host/forms/row_delete.h"
#include "host/forms/row_uses.h"
#include "host/forms/tree_find.h"
#include "host/forms/tree_node.h"
#include "host/forms/tree_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// What is selected once a node is gone: the next one that is not below it, or the one before it.
QTreeWidgetItem* neighbourOf(QTreeWidget& tree, QTreeWidgetItem* node) {
  const auto isWithin = [node](const QTreeWidgetItem* other) {
    while (other && other != node) other = other->parent();
    return other == node;
  };
  QTreeWidgetItem* next = tree.itemBelow(node);
  while (next && isWithin(next)) next = tree.itemBelow(next);
  if (next && !treenode::isOrphanHead(next)) return next;
  next = tree.itemAbove(node);
  while (next && treenode::isOrphanHead(next)) next = tree.itemAbove(next);
  return next;
}

}  // namespace

TFrm_Base_Node::TFrm_Base_Node(QWidget* owner)
    : EditListScreen(owner), TreeView(new QTreeWidget(this)), FindNode(new TreeFind(*TreeView, this)) {
  TreeView->setObjectName(u"TreeView"_s);
  TreeView->setHeaderHidden(true);
  TreeView->setUniformRowHeights(true);
  TreeView->setExpandsOnDoubleClick(false);
  TreeView->setContextMenuPolicy(Qt::CustomContextMenu);
  TreeView->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  TreeView->header()->setStretchLastSection(false);
  FindNode->setObjectName(u"FindNode"_s);
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(2);
  column->addWidget(FindNode);
  column->addWidget(TreeView);
  Splitter->insertWidget(0, side);
  Splitter->setStretchFactor(0, 2);
  Splitter->setStretchFactor(1, 3);
  Splitter->setSizes({380, 580});
  action(u"Act_Add"_s)->setText(tr("增加同级"));
  setActionHint(action(u"Act_Add"_s), tr("在所选节点的同级增加"));
  action(u"Act_CopyAdd"_s)->setText(tr("增加下级"));
  setActionHint(action(u"Act_CopyAdd"_s), tr("在所选节点之下增加"));
  setActionShown(u"Act_Locate"_s, true);
  setActionHint(action(u"Act_Locate"_s), tr("按代号、名称或拼音首字母查找节点"));
  connect(TreeView, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { PopupMenu->popup(TreeView->viewport()->mapToGlobal(at)); });
  connect(TreeView, &QTreeWidget::itemSelectionChanged, this, &TFrm_Base_Node::treeMoved);
  connect(TreeView, &QTreeWidget::itemDoubleClicked, this,
          [this] { guarded(this, [this] { DBGridEhDblClick(); }); });
  connect(&AdoQry_Main, &RecordSet::afterScroll, this, &TFrm_Base_Node::listMoved);
  connect(DBGridEh, &QAbstractItemView::pressed, this, &TFrm_Base_Node::followList);
  DBGridEh->installEventFilter(this);
  setTabOrder(FindNode, TreeView);
  setTabOrder(TreeView, DBGridEh);
}

void TFrm_Base_Node::GetData() {
  GetList();
}

void TFrm_Base_Node::GetList() {
  {
    const QScopedValueRollback<bool> syncing(syncing_, true);
    EditListScreen::GetData();
    AdoQry_Main.waitForAll();
    buildTree();
  }
  followList();
}

QSet<QString> TFrm_Base_Node::closedCodes() const {
  QSet<QString> closed;
  for (QTreeWidgetItemIterator it(TreeView); *it; ++it) {
    if ((*it)->childCount() > 0 && !(*it)->isExpanded()) closed.insert(treenode::code(*it));
  }
  return closed;
}

void TFrm_Base_Node::buildTree() {
  const QScopedValueRollback<bool> syncing(syncing_, true);
  const QSet<QString> closed = closedCodes();
  const bool wasEmpty = TreeView->topLevelItemCount() == 0;
  const QString current = selectedCode();

  RecordSet asLoaded;  // a sort of the list is not the tree's
  asLoaded.assignFrom(AdoQry_Main);
  const int keyIndex = asLoaded.fieldIndex(bodyParam(bodyparam::keyField));
  const int nameIndex = asLoaded.fieldIndex(nameFieldOf(*this, asLoaded));
  const int parentIndex = asLoaded.fieldIndex(bodyParam(bodyparam::parentField));
  std::vector<TreeRow> rows;
  for (int row = 0; row < asLoaded.rowCount(); ++row) {
    rows.push_back({asLoaded.textAt(row, keyIndex), asLoaded.textAt(row, parentIndex)});
  }

  TreeView->clear();
  std::vector<QTreeWidgetItem*> nodes;
  QTreeWidgetItem* orphanHead = nullptr;
  for (const TreePlace& place : treeOf(rows, bodyParam(bodyparam::rootValue))) {
    const QString& code = rows[static_cast<std::size_t>(place.row)].code;
    const QString shown = asLoaded.textAt(place.row, nameIndex);
    QTreeWidgetItem* node = treenode::make(code, shown, bareName(shown));
    nodes.push_back(node);
    if (place.parent >= 0) {
      nodes[static_cast<std::size_t>(place.parent)]->addChild(node);
    } else if (place.parent == TreePlace::orphanParent) {
      if (!orphanHead) TreeView->addTopLevelItem(orphanHead = treenode::makeOrphanHead());
      orphanHead->addChild(node);
    } else {
      TreeView->addTopLevelItem(node);
    }
  }
  TreeView->expandAll();
  for (QTreeWidgetItem* node : nodes) {
    if (closed.contains(treenode::code(node))) node->setExpanded(false);
  }
  QTreeWidgetItem* again = current.isEmpty() ? nullptr : treenode::find(*TreeView, current);
  // Another user may have deleted the node that was selected.
  if (!again && (wasEmpty || !current.isEmpty()) && !nodes.empty()) again = nodes.front();
  if (again) TreeView->setCurrentItem(again);
  showNodeInList();
}

QString TFrm_Base_Node::selectedCode() const {
  return treenode::code(treenode::selected(*TreeView));
}

void TFrm_Base_Node::showNodeInList() {
  const QString code = selectedCode();
  if (!code.isEmpty()) AdoQry_Main.locate(bodyParam(bodyparam::keyField), code);
  updateActions();
}

void TFrm_Base_Node::treeMoved() {
  if (syncing_) return;
  const QScopedValueRollback<bool> syncing(syncing_, true);
  showNodeInList();
}

void TFrm_Base_Node::listMoved() {
  if (syncing_ || AdoQry_Main.currentRow() < 0) return;
  const QScopedValueRollback<bool> syncing(syncing_, true);
  if (QTreeWidgetItem* node = treenode::find(*TreeView, AdoQry_Main.text(bodyParam(bodyparam::keyField)))) {
    TreeView->setCurrentItem(node);
  }
  updateActions();
}

// The user is in the list: the row that stands out there is the one he means.
void TFrm_Base_Node::followList() {
  if (DBGridEh->hasFocus() && selectedCode().isEmpty()) listMoved();
}

bool TFrm_Base_Node::eventFilter(QObject* watched, QEvent* event) {
  if (watched == DBGridEh && event->type() == QEvent::FocusIn) followList();
  return EditListScreen::eventFilter(watched, event);
}

bool TFrm_Base_Node::onRow() const {
  return !selectedCode().isEmpty();
}

void TFrm_Base_Node::openEditor(const QString& mode) {
  auto* nodeEditor = qobject_cast<TFrm_Base_Node_d*>(editor());
  if (!nodeEditor || (mode != "Add"_L1 && !onRow())) return;
  const QPointer<TFrm_Base_Node> self = this;
  const QPointer<QWidget> place = focusWidget();
  {
    const QScopedValueRollback<bool> syncing(syncing_, true);
    nodeEditor->InitForm(mode, AdoQry_Main, *TreeView);
    if (!self) return;
  }
  showCount();
  treeMoved();
  (place ? place.data() : TreeView)->setFocus();
}

void TFrm_Base_Node::Act_LocateExecute() {
  FindNode->setFocus();
}

void TFrm_Base_Node::Act_DeleteExecute() {
  QTreeWidgetItem* node = treenode::selected(*TreeView);
  const QString code = treenode::code(node);
  if (code.isEmpty()) return;
  QString question = tr("是否删除【%1】?").arg(code + u' ' + treenode::name(node));
  if (node->childCount() > 0)
    question += tr("\r\n它有 %1 个下级，下级不会一起删除。").arg(node->childCount());
  question += usesLine(*this, code);
  if (DISPINFO(question, 2) != 'y') return;
  deleteByTemplate(*this, code);
  const QString nextCode = treenode::code(neighbourOf(*TreeView, node));
  {
    const QScopedValueRollback<bool> syncing(syncing_, true);
    if (AdoQry_Main.locate(bodyParam(bodyparam::keyField), code)) AdoQry_Main.remove();
    TreeView->clearSelection();
    buildTree();
  }
  if (QTreeWidgetItem* found = nextCode.isEmpty() ? nullptr : treenode::find(*TreeView, nextCode)) {
    TreeView->setCurrentItem(found);
  } else {
    listMoved();
  }
  updateActions();
  showCount();
}

void TFrm_Base_Node::FormKeyDown(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
    if (focusWidget() == TreeView) {
      event->accept();
      DBGridEhDblClick();
      return;
    }
    if (focusWidget() == FindNode) {
      event->accept();
      TreeView->setFocus();
      return;
    }
  }
  EditListScreen::FormKeyDown(event);
}

void TFrm_Base_Node::showEvent(QShowEvent* event) {
  EditListScreen::showEvent(event);
  if (!event->spontaneous()) TreeView->setFocus();
}

}  // namespace goodsbook
