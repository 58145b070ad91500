#pragma once

#include "host/forms/Base_detail.h"

namespace goodsbook {

// Cash and bank accounts: the editor. The type decides which bank fields are kept and from which branch of
// the chart of accounts the ledger account comes.
class TF2122_1 : public TFrm_Base_Detail {
  Q_OBJECT

 public:
  explicit TF2122_1(QWidget* owner = nullptr);

 protected:
  void RefreshData() override;
  void SaveData() override;
  void showSaved() override;

 private:
  void Edit1Exit();
  void KM_IDButtonClick();
  void KM_IDExit();
  bool isBank() const;          // else cash
  QString accountHead() const;  // what codes of the type's ledger accounts begin with

  RecordSet ledgerAccounts_;
};

}  // namespace goodsbook
