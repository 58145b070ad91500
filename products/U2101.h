#pragma once

#include <QPointer>

#include "host/forms/Base_outer.h"

namespace goodsbook {

// Products: the list, one row a product with its main unit.
class TF2101 : public TFrm_Base_Outer {
  Q_OBJECT

 public:
  explicit TF2101(QWidget* owner = nullptr);
  void InitForm(const Trecord& record) override;

 protected:
  void GetData() override;
  void Act_OtherExecute() override;  // pictures of the listed products

 private:
  void Act_impExecute();  // new products from a spreadsheet
  void Act_hbExecute();   // folds the picked products into the first of them

  bool showsCosts_ = false;
};

extern QPointer<TF2101> F2101;  // the last one opened

}  // namespace goodsbook
