#pragma once

#include "host/forms/Base_outer.h"

namespace goodsbook {

// What the flat lists of reference data have in common: the base's actions that none of them has a use for
// are gone. The filter's stays; it shows where a list has a filter dialog.
class FlatList : public TFrm_Base_Outer {
  Q_OBJECT

 protected:
  explicit FlatList(QWidget* owner) : TFrm_Base_Outer(owner) {}
  void FormCreate() override;
};

}  // namespace goodsbook
