#pragma once

#include <QElapsedTimer>
#include <QPointer>

#include "host/data/record_set.h"

namespace goodsbook {

// While it lives the views of a set do not follow every row that is changed or added: laying out a grid anew
// costs more than making a product.
class QuietRows {
 public:
  explicit QuietRows(RecordSet* rows);  // null, or a set that goes before: nothing to do
  ~QuietRows();
  QuietRows(const QuietRows&) = delete;
  QuietRows& operator=(const QuietRows&) = delete;

  // Lets the views catch up, as often as that takes a small share of the time.
  void show();
  void showNow();

 private:
  QPointer<RecordSet> rows_;
  QElapsedTimer sinceShown_;
  qint64 costMs_ = 0;
};

}  // namespace goodsbook
