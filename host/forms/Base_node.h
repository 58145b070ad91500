#pragma once

#include <QSet>

#include "host/export.h"
#include "host/forms/edit_list_screen.h"

class QTreeWidget;

namespace goodsbook {

class TreeFind;

// A tree of rows that name their parent, beside the list of the same rows. A node's caption is code, one
// blank, name. Rows whose parent does not exist stand under a node of their own at the end.
class GOODSBOOKHOST_EXPORT TFrm_Base_Node : public EditListScreen {
  Q_OBJECT

 public:
  explicit TFrm_Base_Node(QWidget* owner = nullptr);

  // A screen calls InitForm last: its body parameters and its editor, a TFrm_Base_Node_d, are set before.
  QTreeWidget* tree() const { return TreeView; }

 protected:
  virtual void GetList();   // loads the rows and builds the tree; open nodes and the selected one stay
  void GetData() override;  // GetList

  // "Add" makes a node beside the selected one, "CopyAdd" one under it.
  void openEditor(const QString& mode) override;
  void Act_DeleteExecute() override;
  bool onRow() const override;        // a node is selected
  void Act_LocateExecute() override;  // to the field that finds nodes
  void FormKeyDown(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

  void buildTree();
  QString selectedCode() const;  // empty when nothing is selected
  // A row's name without what the list statement adds to it; nodes are found and asked about by it.
  virtual QString bareName(const QString& shown) const { return shown; }
  bool eventFilter(QObject* watched, QEvent* event) override;

  QTreeWidget* TreeView;

 private:
  void treeMoved();
  void listMoved();
  void showNodeInList();
  void followList();
  QSet<QString> closedCodes() const;

  TreeFind* FindNode;
  bool syncing_ = false;
};

}  // namespace goodsbook
