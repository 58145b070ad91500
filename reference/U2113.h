#pragma once

#include <QPointer>

#include "reference/partner.h"

namespace goodsbook {

// Customers: the list.
class TF2113 : public PartnerList {
  Q_OBJECT

 public:
  explicit TF2113(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Detail* createEditor() override;
  TFrm_Sys_Filter* createFilter() override;
};

extern QPointer<TF2113> F2113;  // the last one opened

}  // namespace goodsbook
