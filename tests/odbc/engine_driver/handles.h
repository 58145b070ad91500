#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/error.h"
#include "tests/odbc/engine_driver/odbc_api.h"
#include "tests/odbc/engine_driver/server_session.h"

namespace goodsbook::engine_driver {

struct Record {
  std::u16string state;  // SQLSTATE
  engine::Diagnostic message;
};

// What stands behind a handle of the ODBC manager, with the messages of its last call.
struct Handle {
  virtual ~Handle() = default;
  std::vector<Record> records{};

  void tell(const engine::Diagnostic& message);
  void tell(std::u16string state, std::string text);
};

struct Environment : Handle {};

struct Connection : Handle {
  std::unique_ptr<ServerSession> session{};
};

struct BoundColumn {
  SQLSMALLINT type = SQL_C_DEFAULT;
  SQLPOINTER values = nullptr;
  SQLLEN stride = 0;  // bytes a value
  SQLLEN* lengths = nullptr;
};

struct Parameter {
  SQLSMALLINT type = SQL_C_DEFAULT;
  SQLPOINTER value = nullptr;
  SQLLEN* length = nullptr;
};

struct Statement : Handle {
  explicit Statement(Connection& owner) : connection(owner) {}

  Connection& connection;
  std::vector<BoundColumn> bound{};
  std::vector<Parameter> parameters{};
  SQLULEN arraySize = 1;
  SQLULEN* fetchedCount = nullptr;
  SQLUSMALLINT* rowStates = nullptr;

  std::vector<Result> results{};
  std::size_t current = 0;
  std::size_t nextRow = 0;                // of the current set
  std::vector<std::size_t> takenBytes{};  // of each value of the row, by SQLGetData; `all` when it is through
  static constexpr std::size_t all = static_cast<std::size_t>(-1);

  const Result* result() const { return current < results.size() ? &results[current] : nullptr; }
  const Result* rows() const;  // the current set, or null
  void close();
  SQLRETURN arriveAt(std::size_t index);  // what is told of that result
};

// Runs an entry point: what it throws becomes a message of the handle.
template <typename Kind, typename Work>
SQLRETURN entered(SQLHANDLE given, Work&& work) {
  auto* handle = static_cast<Kind*>(static_cast<Handle*>(given));
  if (handle == nullptr) return SQL_INVALID_HANDLE;
  handle->records.clear();
  try {
    return work(*handle);
  } catch (const engine::SqlError& error) {
    handle->tell(error.diagnostic());
  } catch (const std::exception& error) {
    handle->tell(u"HY000", error.what());
  }
  return SQL_ERROR;
}

}  // namespace goodsbook::engine_driver
