#pragma once

#include <QObject>

class QWidget;

namespace goodsbook {

// In which order windows came up. A dialog that is made with its list and shown later counts from when it is
// shown, each time anew; a page keeps its place however often its tab is turned to.
class OpeningOrder : public QObject {
 public:
  static void watch();                               // from now on, once for the program
  static qulonglong placeOf(const QWidget& window);  // 0: not shown since then

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit OpeningOrder(QObject* parent);

  qulonglong last_ = 0;
};

}  // namespace goodsbook
