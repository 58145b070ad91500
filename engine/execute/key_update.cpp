#include "engine/execute/key_update.h"

#include <algorithm>
#include <map>

#include "engine/compile/emitter.h"
#include "engine/execute/constraint_errors.h"
#include "engine/runtime/failure.h"
#include "engine/storage/sqlite_errors.h"

namespace goodsbook::engine {
namespace {

using NewRows = std::map<std::int64_t, std::vector<Value>>;  // by row number

NewRows readRows(Session& session, const Plan& plan, std::span<const Value> values) {
  StatementHandle source = prepare(session.db(), plan.sourceSql);
  for (std::size_t i = 0; i < values.size(); ++i) bindValue(source.get(), static_cast<int>(i + 1), values[i]);
  NewRows rows;
  while (session.step(source.get()) == SQLITE_ROW) {
    std::vector<Value> row;
    for (std::size_t i = 0; i < plan.written.size(); ++i)
      row.push_back(columnValue(source.get(), static_cast<int>(i + 1)));
    rows.emplace(sqlite3_column_int64(source.get(), 0), std::move(row));
  }
  return rows;
}

// A value that no column holds, another one for each row.
Value placeholder(std::int64_t row) {
  const auto* bytes = reinterpret_cast<const std::byte*>(&row);
  Bytes value{std::byte{'#'}};
  value.insert(value.end(), bytes, bytes + sizeof row);
  return value;
}

class KeyUpdate {
 public:
  KeyUpdate(Session& session, const TableInfo& table, const Plan& plan, NewRows rows)
      : session_(session), table_(table), plan_(plan), rows_(std::move(rows)) {}

  std::int64_t run() {
    putAside();
    write();
    return static_cast<std::int64_t>(rows_.size());
  }

 private:
  std::string updateSql(bool keysOnly) const {
    std::string settings;
    for (std::size_t i = 0; i < plan_.written.size(); ++i) {
      if (keysOnly && !table_.isInKey(plan_.written[i])) continue;
      settings += concat(settings.empty() ? "" : ", ", quotedName(table_.columns[plan_.written[i]].name),
                         " = ?", keysOnly ? "2" : std::to_string(i + 2));
    }
    return concat("UPDATE ", quotedName(table_.name), " SET ", settings, " WHERE ", table_.rowName, " = ?1");
  }

  void putAside() {
    StatementHandle aside = prepare(session_.db(), updateSql(true));
    for (const auto& [row, values] : rows_) {
      const Value mark = placeholder(row);
      sqlite3_reset(aside.get());
      sqlite3_bind_int64(aside.get(), 1, row);
      bindValue(aside.get(), 2, mark);
      if (const int code = session_.step(aside.get()); code != SQLITE_DONE)
        throw sqliteFailure(session_.db(), code);
    }
  }

  void write() {
    StatementHandle update = prepare(session_.db(), updateSql(false));
    for (const auto& [row, values] : rows_) {
      sqlite3_reset(update.get());
      sqlite3_bind_int64(update.get(), 1, row);
      for (std::size_t i = 0; i < values.size(); ++i)
        bindValue(update.get(), static_cast<int>(i + 2), values[i]);
      const int code = session_.step(update.get());
      if (code == SQLITE_DONE) continue;
      const KeyInfo* key = brokenKey(session_, table_);
      if (key == nullptr) {
        const auto plan = std::make_shared<Plan>(plan_);
        throw constraintError(session_, table_, plan, {}, code);
      }
      throw duplicateKeyError(table_, *key, keyOf(*key, row, values));
    }
  }

  std::vector<Value> keyOf(const KeyInfo& key, std::int64_t row, const std::vector<Value>& values) {
    std::vector<Value> result;
    for (const std::size_t column : key.columns) {
      const auto place = std::find(plan_.written.begin(), plan_.written.end(), column);
      if (place != plan_.written.end()) {
        result.push_back(values[static_cast<std::size_t>(place - plan_.written.begin())]);
        continue;
      }
      SqliteStatement old(session_.db(), concat("SELECT ", quotedName(table_.columns[column].name), " FROM ",
                                                quotedName(table_.name), " WHERE ", table_.rowName, " = ?1"));
      old.bind(1, row).step();
      result.push_back(columnValue(old.get(), 0));
    }
    return result;
  }

  Session& session_;
  const TableInfo& table_;
  const Plan& plan_;
  NewRows rows_;
};

}  // namespace

std::int64_t updateKeys(Session& session, const TableInfo& table, const Plan& plan,
                        std::span<const Value> values) {
  return KeyUpdate(session, table, plan, readRows(session, plan, values)).run();
}

}  // namespace goodsbook::engine
