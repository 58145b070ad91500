#include "engine/runtime/functions.h"

#include "engine/runtime/collation.h"
#include "engine/runtime/failure.h"
#include "engine/runtime/function_support.h"

namespace goodsbook::engine {
namespace {

int collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return compareTexts({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                      {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

// ts_one: the only value of a subquery; two of them are an error.
struct OneValue {
  sqlite3_value* value;
  bool seen;
};

void oneStep(sqlite3_context* context, int, sqlite3_value** values) {
  auto* state = static_cast<OneValue*>(sqlite3_aggregate_context(context, sizeof(OneValue)));
  if (state == nullptr) {
    sqlite3_result_error_nomem(context);
  } else if (state->seen) {
    giveError(
        context,
        SqlError(
            {.number = 512,
             .severity = 16,
             .state = 1,
             .line = 1,
             .text =
                 "子查询返回的值不止一个。当子查询跟随在比较运算符之后，或用作表达式时，这种情况是不允许的。"}));
  } else {
    state->seen = true;
    state->value = sqlite3_value_dup(values[0]);
  }
}

void oneFinal(sqlite3_context* context) {
  auto* state = static_cast<OneValue*>(sqlite3_aggregate_context(context, 0));
  if (state == nullptr || state->value == nullptr) return;
  sqlite3_result_value(context, state->value);
  sqlite3_value_free(state->value);
}

// SQLite's Bloom filters hash the length of a text, so that they lose texts that are equal with other blanks
// behind them.
void switchOffBloomFilters(sqlite3* db) {
  constexpr int bloomFilter = 0x00080000;
  constexpr int bloomPulldown = 0x00100000;
  sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, db, bloomFilter | bloomPulldown);
}

}  // namespace

Value FunctionArguments::value(int i) const {
  switch (sqlite3_value_type(at(i))) {
    case SQLITE_INTEGER:
      return integer(i);
    case SQLITE_FLOAT:
      return real(i);
    case SQLITE_TEXT:
      return std::string(text(i));
    case SQLITE_BLOB: {
      const auto* start = static_cast<const std::byte*>(sqlite3_value_blob(at(i)));
      return Bytes(start, start + sqlite3_value_bytes(at(i)));
    }
    default:
      return {};
  }
}

bool FunctionArguments::anyNull() const {
  for (int i = 0; i < size(); ++i)
    if (isNull(i)) return true;
  return false;
}

void FunctionArguments::give(const Value& result) const {
  if (const auto* whole = std::get_if<std::int64_t>(&result))
    give(*whole);
  else if (const auto* fraction = std::get_if<double>(&result))
    give(*fraction);
  else if (const auto* textResult = std::get_if<std::string>(&result))
    give(std::string_view(*textResult));
  else if (const auto* bytes = std::get_if<Bytes>(&result))
    sqlite3_result_blob64(context, bytes->data(), bytes->size(), SQLITE_TRANSIENT);
  else
    sqlite3_result_null(context);
}

void giveError(sqlite3_context* context, const SqlError& error) {
  static_cast<FunctionErrors*>(sqlite3_user_data(context))->last = error.diagnostic();
  sqlite3_result_error(context, error.what(), -1);
}

void registerFunctions(sqlite3* db, FunctionErrors& errors, std::span<const FunctionEntry> entries) {
  for (const FunctionEntry& entry : entries)
    sqlite3_create_function_v2(db, entry.name, entry.arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC, &errors,
                               entry.call, nullptr, nullptr, nullptr);
}

void registerRuntime(sqlite3* db, FunctionErrors& errors) {
  switchOffBloomFilters(db);
  sqlite3_create_collation_v2(db, collationName, SQLITE_UTF8, nullptr, collate, nullptr);
  sqlite3_create_function_v2(db, "ts_one", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, &errors, nullptr, oneStep,
                             oneFinal, nullptr);
  registerTextFunctions(db, errors);
  registerNumberFunctions(db, errors);
  registerDateFunctions(db, errors);
  registerConversions(db, errors);
}

}  // namespace goodsbook::engine
