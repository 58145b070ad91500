#pragma once

#include <QTimer>
#include <QWidget>
#include <map>

#include "host/controls/TDBGridEh.h"

namespace goodsbook {

class GridModel;

// The line of sums below a grid, each under its column. Sums are taken once after any number of changes.
class GridFooter : public QWidget {
  Q_OBJECT

 public:
  GridFooter(TDBGridEh* grid, GridModel* model);

  int wantedHeight() const;
  QString text(int column);  // what stands under a column

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void invalidate();

  TDBGridEh* grid_;
  GridModel* model_;
  std::map<int, QString> sums_;
  bool isValid_ = false;
};

}  // namespace goodsbook
