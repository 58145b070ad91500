#pragma once

#include <QHBoxLayout>
#include <optional>

#include "host/export.h"
#include "host/forms/Base_common.h"

namespace goodsbook {

class TDBGridEh;

// What dialogs and editors share: the body over a row of buttons that ends with OK and Cancel.
//
// A save whose answer was lost (ESaveUnknown) leaves the screen open and in doubt: the next OK asks first
// whether it was made. If so, OK ends as after the save, or says so where the input was changed since
// (AllChange, a grid's row); nothing is sent. If not, it is an OK like any other.
class GOODSBOOKHOST_EXPORT OkCancelScreen : public TFrm_Base_Common {
  Q_OBJECT

 public:
  explicit OkCancelScreen(QWidget* owner = nullptr);

  void AllChange() override;
  void done(int result) override;

 protected:
  virtual void btn_okClick() = 0;  // the focus is on OK then: the field that had it has been checked
  virtual void endSaved();  // in place of it where the save had been made: what comes behind a save; closes
  virtual void btn_CancelClick() = 0;
  virtual bool okAllowed() const;  // OK is shown and enabled
  virtual bool hasUnsavedInput() const { return false; }

  void FormKeyDown(QKeyEvent* event) override;  // Esc: reject(); F9, Ctrl+Enter: OK
  void reject() override;  // Esc and the close button: asks first when there is unsaved input
  void pressOk();
  bool hasOpenCell() const;  // one is being typed into
  bool takeCells();          // reads the cells that are being typed into; false when one was refused
  void setCloseOnly();       // OK is gone, Cancel is called what it does then
  // The save is made. Whatever fails behind it, another OK does not send it again: endSaved() takes its
  // place.
  void markSaved() { doubt_ = Doubt{}; }
  // The screen is filled anew or closed: what was saved is no longer in it.
  void endDoubt();
  bool looksUpCodes() const override { return !doubt_; }  // the lost save may have made the code

  QHBoxLayout* buttonRow() const { return buttons_; }  // own buttons go left of OK
  QPushButton* btn_ok;
  QPushButton* btn_Cancel;

 private:
  struct Doubt {
    QString save{};  // what ESaveUnknown calls it; empty: it is known to be made
    bool changedSince = false;
  };

  void runOk();
  bool wasSaved() const;
  bool wasChangedSince() const;
  QList<TDBGridEh*> grids() const;
  void discard();

  std::optional<Doubt> doubt_;
  QHBoxLayout* buttons_;
  bool pressing_ = false;
};

}  // namespace goodsbook
