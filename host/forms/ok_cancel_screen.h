#pragma once

#include <QHBoxLayout>

#include "host/export.h"
#include "host/forms/Base_common.h"

namespace goodsbook {

class TDBGridEh;

// What dialogs and editors share: the body over a row of buttons that ends with OK and Cancel.
class GOODSBOOKHOST_EXPORT OkCancelScreen : public TFrm_Base_Common {
  Q_OBJECT

 public:
  explicit OkCancelScreen(QWidget* owner = nullptr);

 protected:
  virtual void btn_okClick() = 0;  // the focus is on OK then: the field that had it has been checked
  virtual void btn_CancelClick() = 0;
  virtual bool okAllowed() const;  // OK is shown and enabled
  virtual bool hasUnsavedInput() const { return false; }

  void FormKeyDown(QKeyEvent* event) override;  // Esc: reject(); F9, Ctrl+Enter: OK
  void reject() override;  // Esc and the close button: asks first when there is unsaved input
  void pressOk();
  bool takeCells();     // reads the cells that are being typed into; false when one was refused
  void setCloseOnly();  // OK is gone, Cancel is called what it does then

  QHBoxLayout* buttonRow() const { return buttons_; }  // own buttons go left of OK
  QPushButton* btn_ok;
  QPushButton* btn_Cancel;

 private:
  QList<TDBGridEh*> grids() const;
  void discard();

  QHBoxLayout* buttons_;
  bool pressing_ = false;
};

}  // namespace goodsbook
