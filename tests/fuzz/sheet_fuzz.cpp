// Feeds files to the sheet readers. The first byte chooses the name's ending, the rest is the file; whatever
// is in it, reading ends with rows or with a SheetError.
#include <QFile>
#include <QStandardPaths>
#include <cstdint>

#include "host/sheet/sheet_reader.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qputenv("PATH", "/nowhere");  // other formats would start LibreOffice
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size < 1) return 0;
  static const QString folder = qEnvironmentVariable("FUZZ_FOLDER", u"/dev/shm"_s);
  static const QString base = folder + u"/sheet-fuzz-%1"_s.arg(reinterpret_cast<quintptr>(&folder), 0, 16);
  constexpr const char16_t* endings[] = {u".xlsx", u".xls", u".csv"};
  const QString path = base + QString::fromUtf16(endings[bytes[0] % 3]);
  {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return 0;
    file.write(reinterpret_cast<const char*>(bytes + 1), static_cast<qint64>(size - 1));
  }
  try {
    const auto book = goodsbook::openSheets(path, {.columns = 12});
    const int sheets = static_cast<int>(book->sheets().size());
    for (int sheet = 0; sheet < sheets && sheet < 3; ++sheet) {
      const auto rows = book->rows(sheet);
      goodsbook::SheetRow row;
      while (rows->next(row)) {
      }
    }
  } catch (const goodsbook::SheetError&) {
    return 0;
  }
  return 0;
}
