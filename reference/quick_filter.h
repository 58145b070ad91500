#pragma once

#include "host/forms/Sys_filter.h"

namespace goodsbook {

// A filter with one text that is looked for in several columns.
struct QuickFilter {
  QString caption;
  QString label;
  std::vector<QString> columns;  // as the condition names them
};

class QuickFilterDialog : public TFrm_Sys_Filter {
  Q_OBJECT

 protected:
  QuickFilterDialog(const QuickFilter& filter, QWidget* owner);
  void btn_okClick() override;
  void FormKeyDown(QKeyEvent* event) override;  // F2, F3, F4: OK

 private:
  const QuickFilter& filter_;
};

}  // namespace goodsbook
