#include "host/print/label_painter.h"

#include <QApplication>
#include <QCoreApplication>
#include <algorithm>
#include <cmath>

#include "host/print/text_fit.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Labels {
  Q_DECLARE_TR_FUNCTIONS(Labels)
};

constexpr double millimetresPerInch = 25.4;
constexpr double widestModule = 0.5;      // millimetres; wider bars gain nothing
constexpr double narrowestModule = 0.19;  // below this the scanners of shops miss codes
constexpr qsizetype mostKept = 1000;      // warnings
constexpr double leastBarHeight = 3;      // millimetres that a hand-held scanner still crosses

}  // namespace

int LabelPrinter::dots(double millimetres) const {
  return static_cast<int>(std::lround(millimetres * dpi / millimetresPerInch));
}

QRect LabelPrinter::dots(const QRectF& place) const {
  const auto across = [this](double x) { return dots(x * scale.x() + offset.x()); };
  const auto down = [this](double y) { return dots(y * scale.y() + offset.y()); };
  const QPoint corner(across(place.left()), down(place.top()));
  return {corner, QSize(across(place.right()) - corner.x(), down(place.bottom()) - corner.y())};
}

void LabelWarnings::add(const LabelRow& row, const QString& what) {
  const QString name = row[LabelField::Name].isEmpty() ? row[LabelField::Code] : row[LabelField::Name];
  add(name.isEmpty() ? what : Labels::tr("%1：%2").arg(name, what));
}

void LabelWarnings::add(const QString& text) {
  const qsizetype before = known_.size();
  known_.insert(qHash(text));
  if (known_.size() > before && texts_.size() < mostKept) texts_ << text;
}

QString LabelWarnings::summary() const {
  constexpr qsizetype inABox = 12;
  return first(inABox);
}

QString LabelWarnings::all() const {
  return first(mostKept);
}

QString LabelWarnings::first(qsizetype most) const {
  QString text = texts_.mid(0, most).join(u'\n');
  if (known_.size() > most) text += u'\n' + Labels::tr("……还有 %1 条").arg(known_.size() - most);
  return text;
}

LabelPainter::LabelPainter(const LabelLayout& layout, const LabelPrinter& printer)
    : layout_(layout), printer_(printer) {}

bool LabelPainter::isTooNarrow(int moduleDots, int dpi) {
  return moduleDots * millimetresPerInch / dpi < narrowestModule;
}

int LabelPainter::pixels(double points) const {
  return std::max(1, static_cast<int>(std::lround(points * printer_.dpi / 72)));
}

void LabelPainter::paint(QPainter& painter, QPointF corner, const LabelRow& row, LabelWarnings& warnings) {
  painter.setPen(Qt::black);
  for (const LabelItem& item : layout_.items) {
    const QRect place = printer_.dots(item.place.translated(corner));
    switch (item.kind) {
      case LabelItem::Kind::Text:
        if (const QString text = item.text(row); !text.isEmpty())
          paintText(painter, item, place, text, row, warnings);
        break;
      case LabelItem::Kind::BarCode:
        paintBars(painter, item, place, row, warnings);
        break;
      case LabelItem::Kind::Line:
        painter.fillRect(QRect(place.topLeft(), place.size().expandedTo(QSize(1, 1))), Qt::black);
        break;
    }
  }
}

void LabelPainter::paintText(QPainter& painter, const LabelItem& item, const QRect& place,
                             const QString& text, const LabelRow& row, LabelWarnings& warnings) {
  QFont font = QApplication::font();
  font.setBold(item.bold);
  const FittedText fitted(text, place.size(), font, pixels(item.size), pixels(item.least));
  if (fitted.isCut()) {
    warnings.add(row, Labels::tr("“%1”在标签上放不下，只印出一部分").arg(text));
    painter.save();  // nothing else on the label is to suffer
    painter.setClipRect(place, Qt::IntersectClip);
  }
  fitted.draw(painter, place, item.alignment);
  if (fitted.isCut()) painter.restore();
}

void LabelPainter::paintBars(QPainter& painter, const LabelItem& item, QRect place, const LabelRow& row,
                             LabelWarnings& warnings) {
  const QString& text = row[LabelField::Barcode];
  if (text != lastText_ || lastText_.isEmpty()) {
    lastText_ = text;
    lastCode_ = barCodeOf(text);
  }
  const BarCode& code = lastCode_;
  if (!code.problem.isEmpty()) warnings.add(row, code.problem);
  if (text.trimmed().isEmpty()) return;
  const int room = code.isEmpty() ? 0 : place.width() / code.width();
  if (room == 0) {
    if (!code.isEmpty()) warnings.add(row, Labels::tr("条码 %1 在标签上放不下，没有印条码").arg(text));
    paintText(painter, item, place, text, row, warnings);
    return;
  }
  const int module = std::min(room, std::max(1, printer_.dots(widestModule)));
  if (isTooNarrow(module, printer_.dpi)) {
    warnings.add(row, Labels::tr("条码 %1 的线条太细（%2 毫米），可能扫不出来：请用更宽的标签或更高的分辨率")
                          .arg(text)
                          .arg(module * millimetresPerInch / printer_.dpi, 0, 'f', 3));
  }
  const int spare = place.width() - module * code.width();
  const int before = (item.alignment & Qt::AlignRight)     ? spare
                     : (item.alignment & Qt::AlignHCenter) ? spare / 2
                                                           : 0;
  int x = place.left() + before + module * code.quietBefore;
  int height = place.height();
  if (item.digits) {
    const int letters = pixels(item.size) * 9 / 8;
    // Centred under the bars, which need not be in the middle of their quiet zones.
    const int beside = module * std::min(code.quietBefore, code.quietBehind);
    const QRect below(x - beside, place.bottom() + 1 - letters, module * code.modules + 2 * beside, letters);
    paintText(painter, item, below, text, row, warnings);
    height -= letters + printer_.dots(0.3);
  }
  if (height < printer_.dots(leastBarHeight))
    warnings.add(row, Labels::tr("条码 %1 太矮，可能扫不出来").arg(text));
  std::vector<QRectF> bars;
  bars.reserve(code.runs.size() / 2 + 1);
  for (std::size_t run = 0; run < code.runs.size(); ++run) {
    const int width = module * code.runs[run];
    if (run % 2 == 0) bars.emplace_back(x, place.top(), width, height);
    x += width;
  }
  painter.save();
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.drawRects(bars.data(), static_cast<int>(bars.size()));
  painter.restore();
}

}  // namespace goodsbook
