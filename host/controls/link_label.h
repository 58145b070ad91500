#pragma once

#include <QLabel>

#include "host/export.h"

namespace goodsbook {

// A label that is clicked like a link, by mouse or by Space and Enter while it has the focus.
class GOODSBOOKHOST_EXPORT LinkLabel : public QLabel {
  Q_OBJECT

 public:
  explicit LinkLabel(const QString& text, QWidget* parent = nullptr);
  void setLink(bool on);  // off: an ordinary label

 Q_SIGNALS:
  void clicked();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool link_ = false;
};

}  // namespace goodsbook
