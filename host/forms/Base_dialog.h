#pragma once

#include <QHBoxLayout>

#include "host/export.h"
#include "host/forms/Base_common.h"

namespace goodsbook {

// A modal dialog with OK and Cancel. exec() returns the modal result: 1 for OK.
class GOODSBOOKHOST_EXPORT TFrm_Base_Dialog : public TFrm_Base_Common {
  Q_OBJECT

 public:
  explicit TFrm_Base_Dialog(QWidget* owner = nullptr);

  // Adds one comparison to conditionText, joined by " and ": "field LIKE '%value%'" for LIKE, "field='value'"
  // for =, the like for other operators. A blank value adds nothing.
  void Condition_t(const QString& op, const QString& field, const QString& value);

  QString conditionText;  // what a filter hands to its list: a condition, and the same in words
  QString displayText;

 protected:
  // OK: makes sure of the fields (CheckAll). It does not close the dialog; an override does its work and then
  // calls setModalResult(1).
  virtual void btn_okClick();
  virtual void btn_CancelClick();  // closes with result 0
  void setModalResult(int result) { done(result); }

  void FormCreate() override;
  void FormKeyDown(QKeyEvent* event) override;  // Esc: Cancel; F9, Ctrl+Enter: OK
  void setEnterAccepts(bool on) {
    enterAccepts_ = on;
  }  // Enter closes with result 1, for lists to choose from
  void reject() override;
  void showEvent(QShowEvent* event) override;

  QHBoxLayout* buttonRow() const { return buttons_; }  // own buttons go left of OK
  QPushButton* btn_ok;
  QPushButton* btn_Cancel;

 private:
  void pressOk();

  QHBoxLayout* buttons_;
  bool enterAccepts_ = false;
};

}  // namespace goodsbook
