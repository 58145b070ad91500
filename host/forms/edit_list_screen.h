#pragma once

#include "host/export.h"
#include "host/forms/list_screen.h"

namespace goodsbook {

class TFrm_Base_Detail;

// What lists and trees with an editor share: add, copy, change, view and delete, as far as the user's rights
// go.
class GOODSBOOKHOST_EXPORT EditListScreen : public ListScreen {
  Q_OBJECT

 public:
  explicit EditListScreen(QWidget* owner = nullptr);

  void InitForm(const Trecord& record) override;

  // The editor gets the list's module, body parameters and the user's rights. Not owned here.
  void setEditor(TFrm_Base_Detail* editor);
  TFrm_Base_Detail* editor() const { return editor_; }

 protected:
  virtual void Act_AddExecute();
  virtual void Act_CopyAddExecute();
  virtual void Act_EditExecute();
  virtual void Act_ViewExecute();
  virtual void Act_DeleteExecute() = 0;
  void DBGridEhDblClick() override;  // Act_Edit, or Act_View without the right to edit

  void updateActions() override;
  virtual bool onRow() const = 0;  // is there a row to work on?
  virtual void openEditor(const QString& mode) = 0;

 private:
  TFrm_Base_Detail* editor_ = nullptr;
};

}  // namespace goodsbook
