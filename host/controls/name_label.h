#pragma once

#include <QLabel>

#include "host/export.h"

namespace goodsbook {

// The name that belongs to a code. One that is too long for its place ends with "…" and stands in the tool
// tip.
class GOODSBOOKHOST_EXPORT NameLabel : public QLabel {
  Q_OBJECT

 public:
  explicit NameLabel(QWidget* parent = nullptr);

  QString shownText() const;  // what of the text can be seen

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;
};

}  // namespace goodsbook
