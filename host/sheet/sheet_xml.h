#pragma once

#include <QXmlStreamReader>
#include <functional>
#include <memory>

#include "host/sheet/zip_archive.h"

namespace goodsbook::sheet {

// The markup of one file in a workbook, piece by piece. Bounds what a hostile file can make of it: no
// document types, no endless nesting, no piece beyond a few megabytes. Throws SheetError.
class SheetXml {
 public:
  SheetXml(std::unique_ptr<ZipEntry> entry, QString path, std::function<void()> pause);

  bool next();  // false at the end of the document
  bool starts(QLatin1StringView name) const { return xml_.isStartElement() && xml_.name() == name; }
  bool ends(QLatin1StringView name) const { return xml_.isEndElement() && xml_.name() == name; }
  bool isText() const { return xml_.isCharacters(); }
  QStringView text() const { return xml_.text(); }
  // Of the element that starts here, without regard to name spaces; empty where it is missing.
  QString attribute(QLatin1StringView name) const;

 private:
  std::unique_ptr<ZipEntry> entry_;
  QString path_;
  std::function<void()> pause_;
  QXmlStreamReader xml_;
  int depth_ = 0;
  int sincePause_ = 0;
};

}  // namespace goodsbook::sheet
