#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <new>
#include <span>
#include <string_view>

#include "engine/error.h"
#include "engine/runtime/functions.h"
#include "engine/runtime/value.h"

// What the units with SQLite functions share.
namespace goodsbook::engine {

struct FunctionArguments {
  sqlite3_context* context;
  std::span<sqlite3_value*> values;

  int size() const { return static_cast<int>(values.size()); }
  sqlite3_value* at(int i) const { return values[static_cast<std::size_t>(i)]; }
  bool isNull(int i) const { return sqlite3_value_type(at(i)) == SQLITE_NULL; }
  std::int64_t integer(int i) const { return sqlite3_value_int64(at(i)); }
  double real(int i) const { return sqlite3_value_double(at(i)); }
  std::string_view text(int i) const {
    const auto* start = reinterpret_cast<const char*>(sqlite3_value_text(at(i)));
    return start == nullptr ? std::string_view()
                            : std::string_view(start, static_cast<std::size_t>(sqlite3_value_bytes(at(i))));
  }
  Value value(int i) const;
  bool anyNull() const;

  void give(std::int64_t result) const { sqlite3_result_int64(context, result); }
  void give(double result) const { sqlite3_result_double(context, result); }
  void give(std::string_view result) const {
    sqlite3_result_text64(context, result.data(), result.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  void give(const Value& result) const;
};

using FunctionBody = void (*)(const FunctionArguments&);

void giveError(sqlite3_context* context, const SqlError& error);

// SQLite calls a plain function: this one runs the body and keeps its error.
template <FunctionBody Body>
void callFunction(sqlite3_context* context, int count, sqlite3_value** values) {
  try {
    Body({context, {values, static_cast<std::size_t>(count)}});
  } catch (const SqlError& error) {
    giveError(context, error);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

struct FunctionEntry {
  const char* name;
  int arguments;
  void (*call)(sqlite3_context*, int, sqlite3_value**);
};

void registerTextFunctions(sqlite3* db, FunctionErrors& errors);
void registerNumberFunctions(sqlite3* db, FunctionErrors& errors);
void registerDateFunctions(sqlite3* db, FunctionErrors& errors);
void registerConversions(sqlite3* db, FunctionErrors& errors);
void registerFunctions(sqlite3* db, FunctionErrors& errors, std::span<const FunctionEntry> entries);

}  // namespace goodsbook::engine
