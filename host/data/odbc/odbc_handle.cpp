#include "host/data/odbc/odbc_handle.h"

#include <utility>

#include "host/data/odbc/odbc_messages.h"

namespace goodsbook {

OdbcHandle::OdbcHandle(SQLSMALLINT type, const OdbcHandle& parent) : type_(type) {
  if (!SQL_SUCCEEDED(SQLAllocHandle(type, parent.get(), &handle_))) {
    handle_ = SQL_NULL_HANDLE;
    throw firstError(messagesOf(parent)).toError();
  }
}

OdbcHandle OdbcHandle::environment() {
  OdbcHandle environment(SQL_HANDLE_ENV, OdbcHandle());
  SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, attribute(SQL_OV_ODBC3), 0);
  return environment;
}

OdbcHandle::~OdbcHandle() {
  free();
}

OdbcHandle::OdbcHandle(OdbcHandle&& other) noexcept
    : type_(other.type_), handle_(std::exchange(other.handle_, nullptr)) {}

OdbcHandle& OdbcHandle::operator=(OdbcHandle&& other) noexcept {
  if (this == &other) return *this;
  free();
  type_ = other.type_;
  handle_ = std::exchange(other.handle_, nullptr);
  return *this;
}

void OdbcHandle::free() {
  if (handle_ == SQL_NULL_HANDLE) return;
  SQLFreeHandle(type_, handle_);
  handle_ = SQL_NULL_HANDLE;
}

}  // namespace goodsbook
