#pragma once

#include "host/forms/Sys_filter.h"

namespace goodsbook {

// Products: the filter.
class TF2101F : public TFrm_Sys_Filter {
  Q_OBJECT

 public:
  explicit TF2101F(QWidget* owner = nullptr);

 protected:
  void InitFocu() override;  // the one field that quick searches look at
  void btn_okClick() override;
  void FormKeyDown(QKeyEvent* event) override;  // F3, F4: quick search for what stands in Edit1

 private:
  void btn_1Click(int tag);  // 0: changed today, else yesterday
  bool Edit1KeyDown(int key);

  QPushButton* btn_1 = nullptr;
  QPushButton* btn_2 = nullptr;
};

}  // namespace goodsbook
