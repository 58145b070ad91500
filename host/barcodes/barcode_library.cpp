#include "host/barcodes/barcode_library.h"

#include <QDir>
#include <QFileInfo>

#include "host/barcodes/offline_key.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QString BarcodeLibrary::fileIn(const QString& programDir) {
  return QDir(programDir).filePath(u"MOXELZBC"_s);
}

BarcodeLibrary::BarcodeLibrary(const QString& file) {
  database_.Database = file;
}

bool BarcodeLibrary::exists() const {
  return QFileInfo::exists(database_.Database);
}

void BarcodeLibrary::open() {
  database_.Open();
}

qint64 BarcodeLibrary::count() {
  TASQLite3Query query(database_);
  query.Open(u"select count(*) AS COUNT from C"_s);
  return query.FieldByName(u"COUNT"_s).toLongLong();
}

std::vector<KnownBarcode> BarcodeLibrary::find(const QString& barcode) {
  std::vector<KnownBarcode> found;
  TASQLite3Query query(database_);
  for (query.Open(u"select * from C where c_no2='"_s + offlineKey(barcode) + u'\''); !query.Eof();
       query.Next()) {
    found.push_back({.barcode = query.FieldByName(u"C_NO"_s),
                     .name = query.FieldByName(u"C_NAME"_s),
                     .specification = query.FieldByName(u"C_GG"_s),
                     .unit = query.FieldByName(u"C_DW"_s),
                     .origin = query.FieldByName(u"C_CD"_s)});
  }
  return found;
}

}  // namespace goodsbook
