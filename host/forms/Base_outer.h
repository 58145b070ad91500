#pragma once

#include "host/export.h"
#include "host/forms/edit_list_screen.h"

namespace goodsbook {

// A list with its editor: add, copy, change, view, delete.
class GOODSBOOKHOST_EXPORT TFrm_Base_Outer : public EditListScreen {
  Q_OBJECT

 public:
  using EditListScreen::EditListScreen;

 protected:
  // Asks, runs the delete statement with the current row's key, removes the row.
  void Act_DeleteExecute() override;
  bool onRow() const override;
  void openEditor(const QString& mode) override;
};

}  // namespace goodsbook
