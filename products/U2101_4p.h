#pragma once

#include <QWidget>

#include "host/data/record_set.h"

class QPrinter;

namespace goodsbook {

// The print-out of product pictures, several products a page.
class tF2101_4P : public QObject {
  Q_OBJECT

 public:
  explicit tF2101_4P(QWidget* owner);

  // Copies the rows (WL_ID, WL_NAME, PICT) and opens the preview.
  void init(const RecordSet& rows);

 private:
  void paint(QPrinter& printer) const;

  QWidget* owner_;
  RecordSet rows_;
};

}  // namespace goodsbook
