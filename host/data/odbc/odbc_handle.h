#pragma once

#include <sql.h>
#include <sqlext.h>

#include <QString>

namespace goodsbook {

// Owns one handle of the ODBC manager.
class OdbcHandle {
 public:
  OdbcHandle() = default;
  // EDatabaseError where the manager gives none; `parent` tells why.
  OdbcHandle(SQLSMALLINT type, const OdbcHandle& parent);
  ~OdbcHandle();
  OdbcHandle(OdbcHandle&& other) noexcept;
  OdbcHandle& operator=(OdbcHandle&& other) noexcept;

  static OdbcHandle environment();

  SQLHANDLE get() const { return handle_; }
  SQLSMALLINT type() const { return type_; }
  explicit operator bool() const { return handle_ != SQL_NULL_HANDLE; }

 private:
  void free();

  SQLSMALLINT type_ = 0;
  SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

// A text as the manager's functions take it; it lives as long as `text` is unchanged.
inline SQLWCHAR* wide(const QString& text) {
  static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));
  return reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(text.utf16()));
}

// A number as an attribute is given.
inline SQLPOINTER attribute(SQLULEN value) {
  return reinterpret_cast<SQLPOINTER>(value);
}

}  // namespace goodsbook
