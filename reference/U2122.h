#pragma once

#include <QPointer>

#include "host/forms/Base_outer.h"

namespace goodsbook {

// Cash and bank accounts: the list.
class TF2122 : public TFrm_Base_Outer {
  Q_OBJECT

 public:
  explicit TF2122(QWidget* owner = nullptr);
  void InitForm(const Trecord& record) override;

 protected:
  void FormCreate() override;
};

extern QPointer<TF2122> F2122;  // the last one opened

}  // namespace goodsbook
