#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringConverter>
#include <QStringList>
#include <optional>

#include "host/barcodes/barcode_library.h"

namespace goodsbook {

// A text file with a barcode a line: barcode, name, specification, unit and origin, separated by commas, in
// UTF-8 or GB18030. Values may stand in double quotes. A first line without any digit in its first value
// holds titles. Blank lines are passed over.
class BarcodeTable {
 public:
  explicit BarcodeTable(const QString& file);  // std::runtime_error when it cannot be read

  // The next line; nothing at the end. std::runtime_error when reading fails.
  struct Line {
    qint64 number = 0;  // from 1
    KnownBarcode known;
    QString fault;  // why it cannot be taken; empty for a good line
  };
  std::optional<Line> next();

  int percent() const;  // of the file that has been read

 private:
  bool readLine();

  QFile file_;
  QStringDecoder decoder_;
  QByteArray line_;
  qint64 number_ = 0;
  bool tooLong_ = false;
};

}  // namespace goodsbook
