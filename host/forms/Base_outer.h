#pragma once

#include "host/export.h"
#include "host/forms/list_screen.h"

namespace goodsbook {

class TFrm_Base_Detail;

// A list with its editor: add, copy, change, view, delete.
class GOODSBOOKHOST_EXPORT TFrm_Base_Outer : public ListScreen {
  Q_OBJECT

 public:
  explicit TFrm_Base_Outer(QWidget* owner = nullptr);

  void InitForm(const Trecord& record) override;

  // The editor gets the list's module and the user's rights; its body parameters come from the screen. Not
  // owned here.
  void setEditor(TFrm_Base_Detail* editor);
  TFrm_Base_Detail* editor() const { return editor_; }

 protected:
  virtual void Act_AddExecute();
  virtual void Act_CopyAddExecute();
  virtual void Act_EditExecute();
  virtual void Act_ViewExecute();
  virtual void
  Act_DeleteExecute();  // asks, runs the delete statement with the current row's key, removes the row
  void DBGridEhDblClick() override;  // Act_Edit, or Act_View without the right to edit

  void updateActions() override;
  void openEditor(const QString& mode);

 private:
  TFrm_Base_Detail* editor_ = nullptr;
};

}  // namespace goodsbook
