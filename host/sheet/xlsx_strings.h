#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "host/sheet/sheet_xml.h"

namespace goodsbook::sheet {

// The texts that the cells of a workbook share, packed: a sheet can have a million of them.
class SharedStrings {
 public:
  void read(SheetXml& xml, const QString& path);
  QString at(qsizetype index) const;  // empty for an unknown one

 private:
  QByteArray bytes_;
  std::vector<qsizetype> ends_;
};

// Reads one text, from behind the start of `element` to its end: plain or in runs, without readings of
// characters.
QString richText(SheetXml& xml, QLatin1StringView element);

}  // namespace goodsbook::sheet
