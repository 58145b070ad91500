#include "engine/execute/constraint_errors.h"

#include <algorithm>

#include "engine/compile/emitter.h"
#include "engine/runtime/collation.h"
#include "engine/runtime/convert.h"
#include "engine/runtime/date_time.h"
#include "engine/runtime/failure.h"
#include "engine/storage/sqlite_errors.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

using KeyValue = std::vector<Value>;

std::string shown(const Value& value, SqlType type) {
  if (isNull(value)) return "<NULL>";
  const int style = type.kind == Kind::DateTime ? 121 : Conversion::noStyle;
  return std::get<std::string>(convertValue(value, type, {Kind::Text}, {.style = style, .cut = true}));
}

bool sameKey(const KeyValue& a, const KeyValue& b) {
  return std::equal(a.begin(), a.end(), b.begin(), [](const Value& x, const Value& y) {
    const auto* left = std::get_if<std::string>(&x);
    const auto* right = std::get_if<std::string>(&y);
    return left != nullptr && right != nullptr ? compareTexts(*left, *right) == 0 : x == y;
  });
}

// "UNIQUE constraint failed: D1003.dw_id, D1003.pym": the columns behind the table's name.
std::vector<std::size_t> failedColumns(std::string_view message, const TableInfo& table) {
  std::vector<std::size_t> columns;
  message.remove_prefix(std::min(message.size(), message.find(": ") + 2));
  while (!message.empty()) {
    const std::size_t end = message.find(", ");
    std::string_view column = message.substr(0, end);
    column.remove_prefix(std::min(column.size(), table.name.size() + 1));
    if (const auto found = table.find(column)) columns.push_back(*found);
    message.remove_prefix(end == std::string_view::npos ? message.size() : end + 2);
  }
  return columns;
}

// The first key among the rows of an INSERT that is there already.
class DuplicateSearch {
 public:
  DuplicateSearch(Session& session, const TableInfo& table, const KeyInfo& key, const Plan& plan)
      : session_(session), probe_(session.db(), probeSql(table, key)) {
    for (const std::size_t column : key.columns) {
      const auto place = std::find(plan.written.begin(), plan.written.end(), column);
      places_.push_back(static_cast<int>(place - plan.written.begin()));
      known_ = known_ && place != plan.written.end();
    }
  }

  KeyValue run(const Plan& plan, std::span<const Value> values) {
    if (!known_) return {};
    StatementHandle rows = prepare(session_.db(), plan.sourceSql);
    for (std::size_t i = 0; i < values.size(); ++i) bindValue(rows.get(), static_cast<int>(i + 1), values[i]);
    std::vector<KeyValue> seen;
    while (session_.step(rows.get()) == SQLITE_ROW) {
      KeyValue key;
      for (const int place : places_) key.push_back(columnValue(rows.get(), place));
      const bool twice =
          std::any_of(seen.begin(), seen.end(), [&](const KeyValue& other) { return sameKey(key, other); });
      if (twice || isStored(key)) return key;
      if (seen.size() < mostCompared) seen.push_back(std::move(key));
    }
    return {};
  }

 private:
  static constexpr std::size_t mostCompared = 1000;  // a clearer message is not worth more

  static std::string probeSql(const TableInfo& table, const KeyInfo& key) {
    std::string sql = concat("SELECT 1 FROM ", quotedName(table.name), " WHERE ");
    for (std::size_t i = 0; i < key.columns.size(); ++i)
      sql += concat(i == 0 ? "" : " AND ", quotedName(table.columns[key.columns[i]].name), " IS ?",
                    std::to_string(i + 1));
    return sql;
  }

  bool isStored(const KeyValue& key) {
    sqlite3_reset(probe_.get());
    for (std::size_t i = 0; i < key.size(); ++i) probe_.bind(static_cast<int>(i + 1), key[i]);
    return probe_.step();
  }

  Session& session_;
  SqliteStatement probe_;
  std::vector<int> places_;
  bool known_ = true;
};

SqlError nullError(const TableInfo& table, const Plan& plan, std::string_view message) {
  const std::vector<std::size_t> columns = failedColumns(message, table);
  const std::string column = columns.empty() ? std::string() : table.columns[columns.front()].name;
  return SqlError(
      {.number = 515,
       .severity = 16,
       .state = 2,
       .line = 1,
       .text = concat("不能将值 NULL 插入列 '", column, "'，表 '", table.name, "'；列不允许有 Null 值。",
                      plan.write == Plan::Write::Insert ? "INSERT" : "UPDATE", " 失败。")});
}

}  // namespace

const KeyInfo* brokenKey(Session& session, const TableInfo& table) {
  const std::string_view message = sqlite3_errmsg(session.db());
  // The index that allows one NULL only is named after the key it belongs to: "table.key#null".
  if (const std::size_t quote = message.find("index '"); quote != std::string_view::npos) {
    std::string_view name = message.substr(quote + 7 + table.name.size() + 1);
    name = name.substr(0, name.find('#'));
    for (const KeyInfo& key : table.keys)
      if (sameName(key.name, name)) return &key;
    return nullptr;
  }
  const std::vector<std::size_t> columns = failedColumns(message, table);
  for (const KeyInfo& key : table.keys)
    if (key.columns == columns) return &key;
  return nullptr;
}

SqlError duplicateKeyError(const TableInfo& table, const KeyInfo& key, std::span<const Value> value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i)
    text += concat(i == 0 ? "" : ", ", shown(value[i], table.columns[key.columns[i]].type));
  const std::string tail = value.empty() ? std::string() : concat("重复键值为 (", text, ")。");
  const bool index = key.by == UniqueBy::Index;
  const std::string head =
      index ? concat("不能在具有唯一索引“", key.name, "”的对象“", table.name, "”中插入重复键的行。")
            : concat("违反了 ", key.by == UniqueBy::PrimaryKey ? "PRIMARY KEY" : "UNIQUE KEY", " 约束“",
                     key.name, "”。不能在对象“", table.name, "”中插入重复键。");
  return SqlError(
      {.number = index ? 2601 : 2627, .severity = 14, .state = 1, .line = 1, .text = concat(head, tail)});
}

SqlError constraintError(Session& session, const TableInfo& table, const PlanPtr& plan,
                         std::span<const Value> values, int code) {
  const std::string message = sqlite3_errmsg(session.db());
  if (code == SQLITE_CONSTRAINT_NOTNULL) return nullError(table, *plan, message);
  const KeyInfo* key = brokenKey(session, table);
  if (key == nullptr) return sqliteFailure(session.db(), code);
  if (plan->write != Plan::Write::Insert) return duplicateKeyError(table, *key, {});
  return duplicateKeyError(table, *key, DuplicateSearch(session, table, *key, *plan).run(*plan, values));
}

}  // namespace goodsbook::engine
