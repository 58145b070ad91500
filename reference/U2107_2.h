#pragma once

#include "host/controls/TDBGridEh.h"
#include "host/forms/Base_dialog.h"

namespace goodsbook {

// The users' rights on one warehouse: read and write, a tick each. OK keeps the ticks for the warehouse's
// next save; nothing is written here.
class TF2107_2 : public TFrm_Base_Dialog {
  Q_OBJECT

 public:
  explicit TF2107_2(QWidget* owner = nullptr);

  // Shows the rights on a warehouse; ticks not saved yet survive from an earlier opening for the same one.
  void init(const QString& warehouse, bool readOnly);
  void initwl(const QString& warehouse) { warehouse_ = warehouse; }
  void closeado();
  // Builds the batch that writes the rights, if they are those of `warehouse` (case and blanks around it do
  // not count); else the batch stays as it was.
  void refresqltext(const QString& warehouse);
  const QString& batch() const { return batch_; }  // empty until it was built

 protected:
  void btn_okClick() override;
  void btn_CancelClick() override;

 private:
  void bsSkinButton1Click();
  void AdoQry_TmpWValidate();
  // The current cell has another colour while the focus is elsewhere.
  void DBGridEh1DrawColumnCell(QStyleOptionViewItem& cell) const;

  TDBGridEh* DBGridEh1;
  QPushButton* bsSkinButton1;
  QString warehouse_, batch_;
};

}  // namespace goodsbook
