#include "host/print/list_report.h"

#include <QApplication>
#include <QCoreApplication>
#include <QPainter>
#include <QPrinter>
#include <stdexcept>

namespace goodsbook {
namespace {

struct ListPrint {
  Q_DECLARE_TR_FUNCTIONS(ListPrint)
};

constexpr double bodyPoints = 9;
constexpr double titlePoints = 15;
constexpr QRgb headingShade = 0xffe8e8e8;
constexpr QRgb lineShade = 0xffa0a0a0;

QFont fontOf(double points, bool bold = false) {
  QFont font = QApplication::font();
  font.setPointSizeF(points);
  font.setBold(bold);
  return font;
}

// The pages of one report on one printer.
class Pages {
 public:
  Pages(const ListReport& report, QPrinter& printer)
      : report_(report),
        printer_(printer),
        painter_(&printer),
        page_(0, 0, printer.width(), printer.height()) {
    if (!painter_.isActive()) {
      throw std::runtime_error(ListPrint::tr("打印不能开始：打印机或文件 %1 写不进去。")
                                   .arg(printer.outputFileName())
                                   .toStdString());
    }
    line_ = QFontMetricsF(fontOf(bodyPoints), &printer).height();
    titleHeight_ = QFontMetricsF(fontOf(titlePoints, true), &printer).height();
    for (const PrintColumn& column : report.columns) titles_ << column.title;
    const ListLayout ruler(report.columns, page_.size(), fontOf(bodyPoints, true), &printer);
    headingHeight_ = ruler.heightOf(titles_);
    top_ = titleHeight_ + 1.5 * line_ * (report.company.isEmpty() ? 1 : 2);
    const double body = page_.height() - top_ - headingHeight_ - 2 * line_;
    layout_.emplace(report.columns, QSizeF(page_.width(), body), fontOf(bodyPoints), &printer);
    left_ = (page_.width() - layout_->totalWidth()) / 2;
  }

  void lay() {
    for (int row = 0; row < report_.rowCount; ++row) {
      report_.onRow(row);
      layout_->addRow(report_.cells(row));
    }
    if (!report_.sums.isEmpty()) layout_->addRow(report_.sums);
  }

  void paint() {
    for (int page = 0; page < layout_->pageCount(); ++page) {
      if (page > 0) printer_.newPage();
      paintFrame(page);
      paintRows(page);
    }
  }

 private:
  void paintFrame(int page) {
    double y = 0;
    painter_.setFont(fontOf(bodyPoints));
    if (!report_.company.isEmpty()) {
      painter_.drawText(QRectF(0, y, page_.width(), line_), Qt::AlignHCenter, report_.company);
      y += 1.5 * line_;
    }
    painter_.setFont(fontOf(titlePoints, true));
    painter_.drawText(QRectF(0, y, page_.width(), titleHeight_), Qt::AlignHCenter, report_.title);
    y += titleHeight_;
    painter_.setFont(fontOf(bodyPoints));
    const QRectF under(0, y + line_ / 4, page_.width(), line_);
    const double dateWidth = painter_.fontMetrics().horizontalAdvance(report_.date) + line_;
    const QString filter = painter_.fontMetrics().elidedText(report_.filter, Qt::ElideRight,
                                                             static_cast<int>(under.width() - dateWidth));
    painter_.drawText(under, Qt::AlignLeft, filter);
    painter_.drawText(under, Qt::AlignRight, report_.date);
    painter_.drawText(QRectF(0, page_.height() - line_, page_.width(), line_), Qt::AlignHCenter,
                      ListPrint::tr("第 %1 页 / 共 %2 页").arg(page + 1).arg(layout_->pageCount()));
  }

  void paintRows(int page) {
    double y = top_;
    painter_.fillRect(QRectF(left_, y, layout_->totalWidth(), headingHeight_), QColor(headingShade));
    painter_.setFont(fontOf(bodyPoints, true));
    paintCells(titles_, y, headingHeight_);
    y += headingHeight_;
    painter_.setFont(fontOf(bodyPoints));
    QStringList above;
    const auto [first, behind] = layout_->rowsOf(page);
    for (int row = first; row < behind; ++row) {
      report_.onRow(report_.rowCount + row);
      const bool sums = row == report_.rowCount;
      if (sums) painter_.setFont(fontOf(bodyPoints, true));
      QStringList cells = sums ? report_.sums : report_.cells(row);
      QStringList shown = cells;
      for (qsizetype i = 0; i < above.size() && !sums; ++i) {
        if (report_.hideRepeats[static_cast<std::size_t>(i)] && cells[i] == above[i]) shown[i].clear();
      }
      paintCells(shown, y, layout_->height(row));
      y += layout_->height(row);
      above = std::move(cells);
    }
  }

  void paintCells(const QStringList& cells, double y, double height) {
    const double pad = layout_->padding();
    painter_.setPen(QPen(QColor(lineShade), line_ / 30));
    for (int column = 0; column < layout_->columnCount(); ++column) {
      painter_.drawRect(QRectF(left_ + layout_->left(column), y, layout_->width(column), height));
    }
    painter_.setPen(Qt::black);
    for (int column = 0; column < layout_->columnCount(); ++column) {
      const QRectF cell(left_ + layout_->left(column) + pad, y + pad, layout_->width(column) - 2 * pad,
                        height - 2 * pad);
      const Qt::Alignment across =
          report_.columns[static_cast<std::size_t>(column)].alignment & Qt::AlignHorizontal_Mask;
      painter_.drawText(cell, cells[column], ListLayout::wrapping(across | Qt::AlignVCenter));
    }
  }

  const ListReport& report_;
  QPrinter& printer_;
  QPainter painter_;
  QRectF page_;
  double line_ = 0, titleHeight_ = 0, headingHeight_ = 0, top_ = 0, left_ = 0;
  QStringList titles_;
  std::optional<ListLayout> layout_;
};

}  // namespace

void paintReport(const ListReport& report, QPrinter& printer) {
  Pages pages(report, printer);
  pages.lay();
  pages.paint();
}

}  // namespace goodsbook
