#pragma once

#include <QWidget>

#include "host/print/label_pages.h"

namespace goodsbook {

// One page of labels as it will be printed, scaled to the widget.
class LabelPreview : public QWidget {
  Q_OBJECT

 public:
  explicit LabelPreview(QWidget* parent = nullptr);

  void show(const LabelJob& job, int page);
  void showText(const QString& text);  // in place of a page: what is wrong with the layout

 protected:
  void paintEvent(QPaintEvent* event) override;
  QSize sizeHint() const override { return {460, 560}; }

 private:
  LabelJob job_;
  int page_ = 0;
  QString text_;
};

}  // namespace goodsbook
