#include "products/caption_label.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QTextLayout>

namespace goodsbook {

namespace {

QTextOption breaking(Qt::Alignment alignment) {
  QTextOption option(alignment);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  return option;
}

}  // namespace

CaptionLabel::CaptionLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setAlignment(Qt::AlignCenter);
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  auto* copy = new QAction(tr("复制"), this);
  connect(copy, &QAction::triggered, this, [this] { QGuiApplication::clipboard()->setText(text()); });
  addAction(copy);
  setContextMenuPolicy(Qt::ActionsContextMenu);
}

int CaptionLabel::heightForWidth(int width) const {
  QTextLayout layout(text(), font());
  layout.setTextOption(breaking(alignment()));
  layout.beginLayout();
  int lines = 0;
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    ++lines;
  }
  layout.endLayout();
  return fontMetrics().height() + (lines > 1 ? (lines - 1) * fontMetrics().lineSpacing() : 0);
}

void CaptionLabel::paintEvent(QPaintEvent* event) {
  (void)event;
  QPainter painter(this);
  painter.drawText(QRectF(contentsRect()), text(), breaking(alignment()));
}

}  // namespace goodsbook
