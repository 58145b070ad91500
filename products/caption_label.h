#pragma once

#include <QLabel>

namespace goodsbook {

// A caption of several lines that never asks for width: it breaks between words, and within a word that is
// longer than a line. Its context menu copies it.
class CaptionLabel : public QLabel {
  Q_OBJECT

 public:
  explicit CaptionLabel(QWidget* parent = nullptr);
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override { return {0, fontMetrics().height()}; }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace goodsbook
