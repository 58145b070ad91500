#pragma once

#include <QPointer>

#include "reference/flat_list.h"

namespace goodsbook {

// Staff and salespeople: the list.
class TF2112 : public FlatList {
  Q_OBJECT

 public:
  explicit TF2112(QWidget* owner = nullptr);
  void InitForm(const Trecord& record) override;
};

extern QPointer<TF2112> F2112;  // the last one opened

}  // namespace goodsbook
