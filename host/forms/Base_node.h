#pragma once

#include <QSet>

#include "host/export.h"
#include "host/forms/list_screen.h"

class QTreeWidget;

namespace goodsbook {

class TFrm_Base_Node_d;

// A tree of rows that name their parent, beside the list of the same rows. A node's caption is code, one
// blank, name. Rows whose parent does not exist stand under a node of their own at the end.
class GOODSBOOKHOST_EXPORT TFrm_Base_Node : public ListScreen {
  Q_OBJECT

 public:
  explicit TFrm_Base_Node(QWidget* owner = nullptr);

  // To be called last by a screen: its body parameters and its editor are set before.
  void InitForm(const Trecord& record) override;
  void setEditor(TFrm_Base_Node_d* editor);
  QTreeWidget* tree() const { return TreeView; }

 protected:
  virtual void GetList();   // loads the rows and builds the tree; open nodes and the selected one stay
  void GetData() override;  // GetList

  virtual void Act_AddExecute();      // a node beside the selected one
  virtual void Act_CopyAddExecute();  // a node under the selected one
  virtual void Act_EditExecute();
  virtual void Act_ViewExecute();
  virtual void Act_DeleteExecute();
  void DBGridEhDblClick() override;  // and Enter on a node
  void FormKeyDown(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

  void updateActions() override;
  void buildTree();
  QString selectedCode() const;  // empty when nothing is selected

  QTreeWidget* TreeView;

 private:
  void openEditor(const QString& mode);
  void treeMoved();
  void listMoved();
  void showNodeInList();
  QSet<QString> closedCodes() const;

  TFrm_Base_Node_d* editor_ = nullptr;
  bool syncing_ = false;
};

}  // namespace goodsbook
