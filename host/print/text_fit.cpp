#include "host/print/text_fit.h"

#include <QFontMetrics>
#include <QTextLayout>
#include <algorithm>

namespace goodsbook {
namespace {

QStringList wrapped(const QString& text, const QFont& font, int width) {
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    lines << text.mid(line.textStart(), line.textLength()).trimmed();
  }
  layout.endLayout();
  return lines;
}

}  // namespace

FittedText fitText(const QString& text, QSize room, QFont font, int largest, int least) {
  FittedText fitted;
  for (int size = std::max(largest, 1);; size = std::max(least, size - std::max(1, size / 16))) {
    font.setPixelSize(size);
    const QFontMetrics metrics(font);
    // A line of Chinese fills its square; the font's own spacing is made for screens.
    fitted.ascent = metrics.ascent() - std::max(0, (metrics.height() - size * 9 / 8)) / 2;
    fitted.lineHeight = size * 9 / 8;
    const int fits = std::max(1, room.height() / fitted.lineHeight);
    fitted.font = font;
    // Measuring is what costs time here: a text that fits at once is measured once.
    fitted.widths = {metrics.horizontalAdvance(text)};
    fitted.lines = {text};
    if (fitted.widths.front() > room.width()) {
      fitted.lines = wrapped(text, font, room.width());
      fitted.widths.clear();
      for (const QString& line : fitted.lines) fitted.widths.push_back(metrics.horizontalAdvance(line));
    }
    const bool widthFits = std::ranges::max(fitted.widths) <= room.width();
    if (fitted.lines.size() <= fits && fitted.lineHeight <= room.height() && widthFits) return fitted;
    if (size > least) continue;
    // A broken line may be a dot wider than the sum of its letters.
    const bool tooWide = std::ranges::max(fitted.widths) > room.width() + 1;
    const bool tooMany = fitted.lines.size() > fits;
    fitted.isCut = tooMany || tooWide || fitted.lineHeight > room.height();
    if (tooMany) {
      const QString rest = fitted.lines.mid(fits - 1).join(QString());
      fitted.lines = fitted.lines.mid(0, fits - 1);
      fitted.lines << metrics.elidedText(rest, Qt::ElideRight, room.width());
      fitted.widths.resize(static_cast<std::size_t>(fits));
      fitted.widths.back() = metrics.horizontalAdvance(fitted.lines.back());
    }
    return fitted;
  }
}

}  // namespace goodsbook
