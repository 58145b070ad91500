#pragma once

#include "host/export.h"
#include "host/forms/ok_cancel_screen.h"

namespace goodsbook {

// A modal dialog with OK and Cancel. exec() returns the modal result: 1 for OK.
class GOODSBOOKHOST_EXPORT TFrm_Base_Dialog : public OkCancelScreen {
  Q_OBJECT

 public:
  using OkCancelScreen::OkCancelScreen;

  // Adds one comparison to conditionText, joined by " and ": "field LIKE '%value%'" for LIKE, "field='value'"
  // for =, the like for other operators. A blank value adds nothing.
  void Condition_t(const QString& op, const QString& field, const QString& value);

  QString conditionText;  // what a filter hands to its list: a condition, and the same in words
  QString displayText;

 protected:
  // OK: makes sure of the fields (CheckAll). It does not close the dialog; an override does its work and then
  // calls setModalResult(1).
  void btn_okClick() override;
  void btn_CancelClick() override;  // closes with result 0
  void setModalResult(int result) { done(result); }

  void FormKeyDown(QKeyEvent* event) override;
  // Enter closes with result 1, for lists to choose from.
  void setEnterAccepts(bool on) { enterAccepts_ = on; }
  void showEvent(QShowEvent* event) override;

 private:
  bool enterAccepts_ = false;
};

}  // namespace goodsbook
