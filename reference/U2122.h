#pragma once

#include <QPointer>

#include "reference/flat_list.h"

namespace goodsbook {

// Cash and bank accounts: the list.
class TF2122 : public FlatList {
  Q_OBJECT

 public:
  explicit TF2122(QWidget* owner = nullptr);
  void InitForm(const Trecord& record) override;
};

extern QPointer<TF2122> F2122;  // the last one opened

}  // namespace goodsbook
