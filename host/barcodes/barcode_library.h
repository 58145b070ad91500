#pragma once

#include <QString>
#include <vector>

#include "host/controls/TASQLite3.h"
#include "host/export.h"

namespace goodsbook {

// What the offline library knows of a barcode.
struct KnownBarcode {
  QString barcode, name, specification, unit, origin;
};

// The offline library of commodity barcodes: a SQLite file whose table C holds one row a barcode. Read only;
// BarcodeLibraryBuilder makes it.
class GOODSBOOKHOST_EXPORT BarcodeLibrary {
 public:
  static QString fileIn(const QString& programDir);  // where the program looks for it

  explicit BarcodeLibrary(const QString& file);

  bool exists() const;
  // All three raise EDatabaseError when the file cannot be read or has no such table.
  void open();
  qint64 count();
  std::vector<KnownBarcode> find(const QString& barcode);  // in the library's order

 private:
  TASQLite3DB database_;
};

}  // namespace goodsbook
