#pragma once

#include "host/export.h"
#include "host/forms/Base_detail.h"

class QTreeWidget;

namespace goodsbook {

// The editor of a tree's node. "Add" makes a node beside the selected one, "CopyAdd" one under it, "Edit"
// changes it.
class GOODSBOOKHOST_EXPORT TFrm_Base_Node_d : public TFrm_Base_Detail {
  Q_OBJECT

 public:
  explicit TFrm_Base_Node_d(QWidget* owner = nullptr);

  using TFrm_Base_Detail::InitForm;
  bool InitForm(const QString& mode, RecordSet& rows, QTreeWidget& tree);

 protected:
  QTreeWidget& tree() const { return *tree_; }
  QString selectedCode() const;  // GETCODE of the selected node; empty when there is none
  // The parent code that a save writes: "Add": the code of the selected node's parent, the root value at the
  // top or with nothing selected; "CopyAdd": the selected node's code; "Edit": unchanged, the selected node's
  // parent.
  QString parentCode() const;
  QString rowCaption() const override;
  // After the save: puts the new node into the tree and selects it, or gives the edited one its new caption,
  // and keeps the list's rows in step: key, name, parent and the declared columns.
  void placeNode(const QString& code, const QString& name);

 private:
  QTreeWidget* tree_ = nullptr;
};

}  // namespace goodsbook
