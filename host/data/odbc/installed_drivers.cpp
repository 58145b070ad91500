#include <array>

#include "host/data/odbc/odbc_handle.h"
#include "host/data/server_database.h"

namespace goodsbook {

QStringList installedDrivers() {
  QStringList drivers;
  const OdbcHandle environment = OdbcHandle::environment();
  std::array<SQLWCHAR, 256> name{}, words{};
  SQLSMALLINT nameLength = 0, wordsLength = 0;
  for (SQLUSMALLINT direction = SQL_FETCH_FIRST;; direction = SQL_FETCH_NEXT) {
    const SQLRETURN code =
        SQLDriversW(environment.get(), direction, name.data(), static_cast<SQLSMALLINT>(name.size()),
                    &nameLength, words.data(), static_cast<SQLSMALLINT>(words.size()), &wordsLength);
    if (!SQL_SUCCEEDED(code)) break;
    drivers << QString::fromUtf16(reinterpret_cast<const char16_t*>(name.data()));
  }
  return drivers;
}

}  // namespace goodsbook
