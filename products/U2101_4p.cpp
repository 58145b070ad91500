#include "products/U2101_4p.h"

#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <stdexcept>

#include "host/print/print_job.h"
#include "products/picture.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
constexpr int across = 2, down = 3;  // products on a page
}

tF2101_4P::tF2101_4P(QWidget* owner) : QObject(owner), owner_(owner) {}

void tF2101_4P::init(const RecordSet& rows) {
  rows_.assignFrom(rows);
  runPrintJob(owner_, tr("商品图片"), QPageLayout::Portrait,
              [this](QPrinter& printer, QWidget*) { paint(printer); });
}

void tF2101_4P::paint(QPrinter& printer) const {
  QPainter painter;
  if (!painter.begin(&printer)) throw std::runtime_error(tr("打印机或文件不能写入。").toStdString());
  const QRectF page(QPointF(0, 0), printer.pageRect(QPrinter::DevicePixel).size());
  const QSizeF cell(page.width() / across, page.height() / down);
  const double gap = printer.resolution() / 10.0;
  const double leastCaption = painter.fontMetrics().height() * 2.2;
  QTextOption breaking(Qt::AlignHCenter | Qt::AlignTop);
  breaking.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  const int code = rows_.fieldIndex(u"WL_ID"_s);
  const int name = rows_.fieldIndex(u"WL_NAME"_s);
  const int pict = rows_.fieldIndex(u"PICT"_s);
  for (int row = 0; row < rows_.rowCount(); ++row) {
    const int place = row % (across * down);
    if (row > 0 && place == 0) printer.newPage();
    const int line = place / across;
    const QRectF area = QRectF(QPointF(place % across * cell.width(), line * cell.height()), cell)
                            .adjusted(gap, gap, -gap, -gap);
    const QString text = rows_.textAt(row, code) + u"      "_s + rows_.textAt(row, name);
    const double caption = std::max(leastCaption, painter.boundingRect(area, text, breaking).height());
    const QRectF room = area.adjusted(0, 0, 0, -caption);
    const QImage image = picture::decode(rows_.valueAt(row, pict).toByteArray());
    if (!image.isNull()) {
      QRectF fitted(QPointF(), QSizeF(image.size()).scaled(room.size(), Qt::KeepAspectRatio));
      fitted.moveCenter(room.center());
      painter.drawImage(fitted, image);
    }
    painter.drawText(QRectF(area.left(), room.bottom(), area.width(), caption), text, breaking);
  }
}

}  // namespace goodsbook
