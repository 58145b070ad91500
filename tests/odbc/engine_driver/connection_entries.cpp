// Handles and connections.
#include <algorithm>
#include <cstring>

#include "tests/odbc/engine_driver/copy_out.h"
#include "tests/odbc/engine_driver/handles.h"
#include "tests/odbc/engine_driver/wide_text.h"

using namespace goodsbook::engine_driver;

namespace {

// The value of a word of a connection string.
std::string valueOf(const std::string& text, std::string_view key) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t sign = text.find('=', at);
    if (sign == std::string::npos) break;
    std::string word = text.substr(at, sign - at);
    const bool braced = sign + 1 < text.size() && text[sign + 1] == '{';
    const std::size_t from = braced ? sign + 2 : sign + 1;
    const std::size_t end = std::min(text.find(braced ? '}' : ';', from), text.size());
    const auto same = [](char a, char b) { return std::tolower(a) == std::tolower(b); };
    if (std::equal(word.begin(), word.end(), key.begin(), key.end(), same))
      return text.substr(from, end - from);
    at = braced ? end + 2 : end + 1;
  }
  return {};
}

SQLHANDLE given(Handle* handle) {
  return handle;
}

}  // namespace

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* handle) {
  switch (type) {
    case SQL_HANDLE_ENV:
      *handle = given(new Environment);
      return SQL_SUCCESS;
    case SQL_HANDLE_DBC:
      *handle = given(new Connection);
      return SQL_SUCCESS;
    case SQL_HANDLE_STMT:
      return entered<Connection>(parent, [&](Connection& connection) {
        *handle = given(new Statement(connection));
        return SQL_SUCCESS;
      });
    default:
      return SQL_ERROR;
  }
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle) {
  delete static_cast<Handle*>(handle);
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT length,
                                    SQLWCHAR* completed, SQLSMALLINT room, SQLSMALLINT* completedLength,
                                    SQLUSMALLINT) {
  return entered<Connection>(handle, [&](Connection& connection) {
    const std::u16string_view words = wideText(text, length);
    const std::string address = toUtf8(words);
    connection.session =
        std::make_unique<ServerSession>(Databases(valueOf(address, "server")), valueOf(address, "database"));
    return copyOut(words, completed, room, completedLength);
  });
}

SQLRETURN SQL_API SQLDisconnect(SQLHDBC handle) {
  return entered<Connection>(handle, [](Connection& connection) {
    connection.session.reset();
    return SQL_SUCCESS;
  });
}

// Log-in time-outs and the like mean nothing here.
SQLRETURN SQL_API SQLSetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetConnectAttrW(SQLHDBC handle, SQLINTEGER which, SQLPOINTER value, SQLINTEGER,
                                     SQLINTEGER*) {
  return entered<Connection>(handle, [&](Connection& connection) -> SQLRETURN {
    if (which != SQL_ATTR_CONNECTION_DEAD) {
      connection.tell(u"HYC00", "attribute not known");
      return SQL_ERROR;
    }
    *static_cast<SQLUINTEGER*>(value) = SQL_CD_FALSE;
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLGetInfoW(SQLHDBC handle, SQLUSMALLINT which, SQLPOINTER value, SQLSMALLINT room,
                              SQLSMALLINT* length) {
  const auto tellText = [&](std::u16string_view text) {
    return copyOutBytes(text, static_cast<SQLWCHAR*>(value), room, length);
  };
  return entered<Connection>(handle, [&](Connection& connection) -> SQLRETURN {
    switch (which) {
      case SQL_DBMS_NAME:
        return tellText(u"Goodsbook T-SQL");
      case SQL_DRIVER_ODBC_VER:
        return tellText(u"03.51");
      case SQL_CURSOR_COMMIT_BEHAVIOR:
      case SQL_CURSOR_ROLLBACK_BEHAVIOR:
        *static_cast<SQLUSMALLINT*>(value) = SQL_CB_CLOSE;
        return SQL_SUCCESS;
      case SQL_GETDATA_EXTENSIONS:
        *static_cast<SQLUINTEGER*>(value) = SQL_GD_ANY_ORDER;
        return SQL_SUCCESS;
      default:
        connection.tell(u"HYC00", "information not known");
        return SQL_ERROR;
    }
  });
}
