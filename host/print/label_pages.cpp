#include "host/print/label_pages.h"

#include <QApplication>
#include <QCoreApplication>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Labels {
  Q_DECLARE_TR_FUNCTIONS(Labels)
};

QFont fontOf(const LabelPrinter& printer, double points) {
  QFont font = QApplication::font();
  font.setPixelSize(std::max(1, static_cast<int>(points * printer.dpi / 72)));
  return font;
}

// A ruler along the upper and the left edge of the paper, a number every centimetre.
void paintRulers(QPainter& painter, const LabelJob& job) {
  const LabelPrinter& printer = job.printer;
  painter.setFont(fontOf(printer, 5));
  const auto length = [](int millimetre) {
    return millimetre % 10 == 0 ? 4.0 : millimetre % 5 == 0 ? 2.5 : 1.5;
  };
  for (int x = 1; x < job.layout.paper.width(); ++x) {
    painter.fillRect(printer.dots(QRectF(x - 0.05, 0, 0.1, length(x))), Qt::black);
    if (x % 10 == 0)
      painter.drawText(printer.dots(QRectF(x + 0.4, 1.5, 8, 3)), Qt::AlignLeft, QString::number(x));
  }
  for (int y = 1; y < job.layout.paper.height(); ++y) {
    painter.fillRect(printer.dots(QRectF(0, y - 0.05, length(y), 0.1)), Qt::black);
    if (y % 10 == 0)
      painter.drawText(printer.dots(QRectF(1.5, y + 0.2, 8, 3)), Qt::AlignLeft, QString::number(y));
  }
}

void paintFrame(QPainter& painter, const LabelPrinter& printer, const QRectF& label) {
  constexpr double pen = 0.15;
  const QRectF inner = label.adjusted(pen, pen, -pen, -pen);
  for (const QRectF& side : {QRectF(inner.left(), inner.top(), inner.width(), pen),
                             QRectF(inner.left(), inner.bottom() - pen, inner.width(), pen),
                             QRectF(inner.left(), inner.top(), pen, inner.height()),
                             QRectF(inner.right() - pen, inner.top(), pen, inner.height())}) {
    painter.fillRect(printer.dots(side), Qt::black);
  }
}

}  // namespace

int LabelJob::pageCount() const {
  return std::max(1, (firstPlace + count + layout.perSheet() - 1) / layout.perSheet());
}

QPageLayout LabelJob::page() const {
  return {QPageSize(layout.paper, QPageSize::Millimeter, layout.name, QPageSize::ExactMatch),
          QPageLayout::Portrait, QMarginsF(), QPageLayout::Millimeter};
}

QSize LabelJob::pageDots() const {
  return {printer.dots(layout.paper.width()), printer.dots(layout.paper.height())};
}

void paintLabelPage(QPainter& painter, LabelPainter& labels, const LabelJob& job, int page,
                    LabelWarnings& warnings) {
  for (int place = 0; place < job.layout.perSheet(); ++place) {
    const int index = page * job.layout.perSheet() + place - job.firstPlace;
    if (index < 0) continue;
    if (index >= job.count) break;
    labels.paint(painter, job.layout.corner(place), job.row(index), warnings);
  }
}

void paintTestPage(QPainter& painter, const LabelJob& job) {
  painter.setPen(Qt::black);
  paintRulers(painter, job);
  for (int place = 0; place < job.layout.perSheet(); ++place) {
    const QRectF label(job.layout.corner(place), job.layout.label);
    paintFrame(painter, job.printer, label);
    painter.setFont(fontOf(job.printer, 14));
    const QRect inner = job.printer.dots(label.adjusted(2, 2, -2, -2));
    painter.drawText(inner, Qt::AlignCenter, QString::number(place + 1));
    painter.setFont(fontOf(job.printer, 6));
    if (place == 0) {
      const QString settings = Labels::tr("%1 dpi，偏移 %2 / %3 毫米，缩放 %4 / %5 %")
                                   .arg(job.printer.dpi)
                                   .arg(job.printer.offset.x())
                                   .arg(job.printer.offset.y())
                                   .arg(job.printer.scale.x() * 100)
                                   .arg(job.printer.scale.y() * 100);
      painter.drawText(inner, Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap,
                       job.layout.name + u'\n' + settings);
    }
  }
}

}  // namespace goodsbook
