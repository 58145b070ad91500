#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>

#include "tests/odbc/engine_driver/odbc_api.h"

// Texts on their way between the ODBC manager and the driver.
namespace goodsbook::engine_driver {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

inline std::u16string_view wideText(const SQLWCHAR* text, SQLINTEGER length) {
  const auto* start = reinterpret_cast<const char16_t*>(text);
  return length == SQL_NTS ? std::u16string_view(start)
                           : std::u16string_view(start, static_cast<std::size_t>(length));
}

// Room and length in characters.
inline SQLRETURN copyOut(std::u16string_view text, SQLWCHAR* to, SQLSMALLINT room, SQLSMALLINT* length) {
  if (length != nullptr) *length = static_cast<SQLSMALLINT>(std::min<std::size_t>(text.size(), 0x7FFF));
  if (to == nullptr || room <= 0) return SQL_SUCCESS;
  const std::size_t copied = std::min(text.size(), static_cast<std::size_t>(room) - 1);
  std::memcpy(to, text.data(), copied * sizeof(SQLWCHAR));
  to[copied] = 0;
  return copied == text.size() ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

// Room and length in bytes.
inline SQLRETURN copyOutBytes(std::u16string_view text, SQLWCHAR* to, SQLSMALLINT room, SQLSMALLINT* length) {
  constexpr auto unit = static_cast<SQLSMALLINT>(sizeof(SQLWCHAR));
  const SQLRETURN code = copyOut(text, to, static_cast<SQLSMALLINT>(room / unit), length);
  if (length != nullptr) *length = static_cast<SQLSMALLINT>(*length * unit);
  return code;
}

}  // namespace goodsbook::engine_driver
