#pragma once

#include <QPointer>

#include "reference/partner.h"

namespace goodsbook {

// Suppliers: the list.
class TF2114 : public PartnerList {
  Q_OBJECT

 public:
  explicit TF2114(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Detail* createEditor() override;
  TFrm_Sys_Filter* createFilter() override;
};

extern QPointer<TF2114> F2114;  // the last one opened

}  // namespace goodsbook
