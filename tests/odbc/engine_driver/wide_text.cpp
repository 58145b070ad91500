#include "tests/odbc/engine_driver/wide_text.h"

#include <QString>

namespace goodsbook::engine_driver {

std::u16string toUtf16(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).toStdU16String();
}

std::string toUtf8(std::u16string_view utf16) {
  return QString::fromUtf16(utf16.data(), static_cast<qsizetype>(utf16.size())).toStdString();
}

}  // namespace goodsbook::engine_driver
