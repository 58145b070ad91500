#include "host/sheet/xlsx_strings.h"

#include "host/sheet/sheet_errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook::sheet {
namespace {

constexpr qsizetype mostBytes = 256LL << 20;

// "_x000D_" stands for a character that markup cannot hold.
QString unescaped(const QString& text) {
  constexpr qsizetype length = 7;
  qsizetype at = text.indexOf("_x"_L1);
  if (at < 0) return text;
  QString plain = text;
  for (; at >= 0; at = plain.indexOf("_x"_L1, at + 1)) {
    if (at + length > plain.size() || plain.at(at + length - 1) != u'_') continue;
    bool isHex = false;
    const ushort code = plain.mid(at + 2, 4).toUShort(&isHex, 16);
    if (isHex) plain.replace(at, length, QChar(code));
  }
  return plain;
}

}  // namespace

QString richText(SheetXml& xml, QLatin1StringView element) {
  QString text;
  bool inText = false, inReading = false;
  while (xml.next()) {
    if (xml.ends(element)) break;
    if (xml.starts("rPh"_L1)) inReading = true;
    if (xml.ends("rPh"_L1)) inReading = false;
    if (xml.starts("t"_L1)) inText = true;
    if (xml.ends("t"_L1)) inText = false;
    if (xml.isText() && inText && !inReading) text += xml.text();
  }
  return unescaped(text);
}

void SharedStrings::read(SheetXml& xml, const QString& path) {
  while (xml.next()) {
    if (!xml.starts("si"_L1)) continue;
    bytes_ += richText(xml, "si"_L1).toUtf8();
    ends_.push_back(bytes_.size());
    if (bytes_.size() > mostBytes) failTooBig(path);
  }
}

QString SharedStrings::at(qsizetype index) const {
  if (index < 0 || index >= static_cast<qsizetype>(ends_.size())) return {};
  const qsizetype from = index == 0 ? 0 : ends_[static_cast<std::size_t>(index - 1)];
  return QString::fromUtf8(bytes_.constData() + from, ends_[static_cast<std::size_t>(index)] - from);
}

}  // namespace goodsbook::sheet
