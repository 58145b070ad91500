#pragma once

#include "host/forms/Base_dialog.h"

namespace goodsbook {

class PictureLabel;

// The pictures of the listed products, one at a time.
class tF2101_4 : public TFrm_Base_Dialog {
  Q_OBJECT

 public:
  explicit tF2101_4(QWidget* owner = nullptr);

  // `sql` gives WL_ID, WL_NAME and PICT; the two integers are the list's paging.
  void InitForm(const QString& sql, int pageSize, int pageNo);

 protected:
  void FormKeyDown(QKeyEvent* event) override;

 private:
  void BtnPrintClick();
  void showCurrent();
  void move(int key);

  QLabel* caption_;
  PictureLabel* picture_;
  QLabel* position_;
  int pageSize_ = 0, pageNo_ = 0;
};

}  // namespace goodsbook
