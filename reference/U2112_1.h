#pragma once

#include "host/forms/Base_detail.h"

namespace goodsbook {

// Staff and salespeople: the editor.
class TF2112_1 : public TFrm_Base_Detail {
  Q_OBJECT

 public:
  explicit TF2112_1(QWidget* owner = nullptr);

 protected:
  void RefreshData() override;
  void SaveData() override;

 private:
  void Edit1Exit();
  void tcExit();
};

}  // namespace goodsbook
