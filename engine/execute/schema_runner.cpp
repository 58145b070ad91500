#include "engine/execute/schema_runner.h"

#include <algorithm>
#include <optional>

#include "engine/catalog/type_names.h"
#include "engine/compile/emitter.h"
#include "engine/compile/scope.h"
#include "engine/execute/constants.h"
#include "engine/runtime/collation.h"
#include "engine/runtime/convert.h"
#include "engine/runtime/failure.h"
#include "engine/runtime/number_text.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

std::string sqlText(const Value& value) {
  if (isNull(value)) return "NULL";
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return std::to_string(*whole);
  if (const auto* text = std::get_if<std::string>(&value)) return quotedText(*text);
  if (const auto* fraction = std::get_if<double>(&value)) {
    std::string text = shortestText(*fraction);
    return text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
  }
  failUnsupported("varbinary 列的 DEFAULT");
}

// A default as SQLite keeps it: a constant of the column's type, or CURRENT_TIMESTAMP for GETDATE().
std::string defaultSql(const Expression& expression, SqlType type, std::string_view column) {
  if (const auto* call = std::get_if<FunctionCall>(&expression.node)) {
    if (!sameName(call->name.text, "getdate") || type.kind != Kind::DateTime)
      failUnsupported(concat("DEFAULT ", call->name.text, "()"));
    return "CURRENT_TIMESTAMP";
  }
  const TypedValue typed = constantValue(expression, {});
  return sqlText(convertValue(typed.value, typed.type, type, {.target = column}));
}

std::string indexName(std::string_view table, std::string_view index) {
  return quotedName(concat(table, ".", index));
}

class Definer {
 public:
  Definer(Session& session, const Catalog& catalog) : session_(session), catalog_(catalog) {}

  void operator()(const CreateTable& create) {
    const std::string_view name = plainName(create.table);
    requireFree(name);
    std::vector<std::string> parts;
    std::vector<std::string> seen;
    identity_ = std::nullopt;
    nullable_.clear();
    for (const ColumnDefinition& column : create.columns) {
      for (const std::string& other : seen)
        if (sameName(other, column.name.text))
          fail(2705, concat("表 '", name, "' 中多次指定了列 '", column.name.text, "'。"));
      seen.emplace_back(column.name.text);
      if (column.hasIdentity) takeIdentity(column, name);
      if (column.nullability != Nullability::NotNull && column.key != KeyKind::PrimaryKey &&
          !column.hasIdentity && !isInPrimaryKey(create, column.name.text))
        nullable_.emplace_back(column.name.text);
    }
    for (const ColumnDefinition& column : create.columns)
      parts.push_back(columnSql(column, isInPrimaryKey(create, column.name.text)));
    std::vector<TableConstraint> keys = keysOf(create);
    for (const TableConstraint& key : keys) {
      requireColumns(key.columns, seen, name);
      if (std::optional<std::string> sql = keySql(key)) parts.push_back(std::move(*sql));
    }
    std::string sql = concat("CREATE TABLE ", quotedName(name), " (");
    for (std::size_t i = 0; i < parts.size(); ++i) sql += concat(i == 0 ? "" : ", ", parts[i]);
    runSql(session_.db(), sql + ")");
    for (const TableConstraint& key : keys) addNullIndex(name, concat("UQ_", name), key.columns);
    if (identity_ && seed_ != 1) startAt(name);
  }

  void operator()(const CreateIndex& create) {
    const TableInfo& table = requireTable(create.table);
    addIndex(table, create.name.text, create.columns, create.unique);
  }

  void operator()(const AlterTableAdd& alter) {
    const TableInfo& table = requireTable(alter.table);
    if (!alter.constraints.empty()) failUnsupported("ALTER TABLE ADD CONSTRAINT");
    identity_ = std::nullopt;
    for (const ColumnDefinition& column : alter.columns) {
      if (table.find(column.name.text))
        fail(2705, concat("表 '", table.name, "' 中多次指定了列 '", column.name.text, "'。"));
      if (column.hasIdentity || column.key != KeyKind::None) failUnsupported("ALTER TABLE ADD 的标识列或键");
      addColumn(table, column);
    }
    for (auto added = alter.defaults.begin(); added != alter.defaults.end(); ++added) {
      const bool again = std::any_of(alter.defaults.begin(), added, [&](const ColumnDefault& other) {
        return sameName(other.column.text, added->column.text);
      });
      addDefault(table, *added, again);
    }
  }

  void operator()(const Drop& drop) {
    for (const DropItem& item : drop.items) dropOne(drop, item);
  }

  void operator()(const CreateProcedure& create, std::string_view text) {
    const std::string_view name = plainName(create.name);
    if (catalog_.findProcedure(name) != nullptr) failExists(name);
    for (const ProcedureParameter& parameter : create.parameters) typeOf(parameter.type, 1);
    runSql(
        session_.db(),
        "CREATE TABLE IF NOT EXISTS goodsbook_procedures (name TEXT PRIMARY KEY COLLATE NOCASE, definition TEXT NOT NULL)");
    SqliteStatement insert(session_.db(), "INSERT INTO goodsbook_procedures VALUES (?1, ?2)");
    const Value nameValue = std::string(name);
    const Value textValue = std::string(text);
    insert.bind(1, nameValue).bind(2, textValue).step();
    countProcedureChange();
  }

 private:
  [[noreturn]] static void failExists(std::string_view name) {
    fail(2714, concat("数据库中已存在名为 '", name, "' 的对象。"));
  }

  void requireFree(std::string_view name) {
    if (catalog_.findTable(name) != nullptr) failExists(name);
    if (name.starts_with(reservedPrefix) || name.starts_with("sqlite_"))
      failUnsupported(concat("表名 ", name));
  }

  const TableInfo& requireTable(const ObjectName& name) const {
    const TableInfo* table = catalog_.findTable(plainName(name));
    if (table == nullptr)
      fail(4902, concat("找不到对象 \"", name.name.text, "\"，因为它不存在或者您没有所需的权限。"));
    return *table;
  }

  static void requireColumns(const std::vector<IndexColumn>& columns, const std::vector<std::string>& known,
                             std::string_view table) {
    for (const IndexColumn& column : columns)
      if (std::none_of(known.begin(), known.end(),
                       [&](const std::string& one) { return sameName(one, column.name.text); }))
        fail(1911, concat("目标表 '", table, "' 中不存在列名 '", column.name.text, "'。"));
  }

  void takeIdentity(const ColumnDefinition& column, std::string_view table) {
    if (identity_) fail(2744, concat("为表 '", table, "' 指定了多个标识列。只允许为每个表指定一个标识列。"));
    const SqlType type = typeOf(column.type, 1);
    if (!isWhole(type.kind) || type.kind == Kind::Bit)
      fail(2749,
           concat("标识列 '", column.name.text, "' 的数据类型必须是 int、bigint、smallint 或 tinyint。"));
    if (column.identity.increment != 1) failUnsupported("增量不是 1 的 IDENTITY");
    identity_ = std::string(column.name.text);
    seed_ = column.identity.seed;
  }

  static bool isInPrimaryKey(const CreateTable& create, std::string_view column) {
    return std::any_of(create.constraints.begin(), create.constraints.end(), [&](const TableConstraint& key) {
      return key.kind == KeyKind::PrimaryKey &&
             std::any_of(key.columns.begin(), key.columns.end(),
                         [&](const IndexColumn& one) { return sameName(one.name.text, column); });
    });
  }

  static std::vector<TableConstraint> keysOf(const CreateTable& create) {
    std::vector<TableConstraint> keys = create.constraints;
    for (const ColumnDefinition& column : create.columns)
      if (column.key != KeyKind::None)
        keys.push_back({.name = column.keyName,
                        .position = column.name.position,
                        .kind = column.key,
                        .columns = {{column.name, false}}});
    const auto primary = std::count_if(keys.begin(), keys.end(),
                                       [](const auto& key) { return key.kind == KeyKind::PrimaryKey; });
    if (primary > 1)
      fail(8110, concat("不能向表 '", create.table.name.text, "' 添加多个 PRIMARY KEY 约束。"));
    return keys;
  }

  static std::string plainColumnSql(std::string_view name, SqlType type, bool required) {
    std::string sql = concat(quotedName(name), " ", declaredType(type));
    if (type.kind == Kind::Text) sql += concat(" COLLATE ", collationName);
    if (required) sql += " NOT NULL";
    return sql;
  }

  std::string columnSql(const ColumnDefinition& column, bool inPrimaryKey) const {
    // SQLite numbers rows by such a column only; AUTOINCREMENT never gives a number twice.
    if (column.hasIdentity) return quotedName(column.name.text) + " INTEGER PRIMARY KEY AUTOINCREMENT";
    const SqlType type = typeOf(column.type, 1);
    const bool required =
        column.nullability == Nullability::NotNull || column.key == KeyKind::PrimaryKey || inPrimaryKey;
    std::string sql = plainColumnSql(column.name.text, type, required);
    if (column.defaultValue)
      sql += concat(" DEFAULT ", defaultSql(*column.defaultValue, type, column.name.text));
    return sql;
  }

  static std::string columnList(const std::vector<IndexColumn>& columns) {
    std::string list;
    for (const IndexColumn& column : columns)
      list +=
          concat(list.empty() ? "" : ", ", quotedName(column.name.text), column.descending ? " DESC" : "");
    return list;
  }

  // Nothing for a key that is the identity column alone: that is SQLite's row number.
  std::optional<std::string> keySql(const TableConstraint& key) const {
    if (identity_ && key.columns.size() == 1 && sameName(key.columns[0].name.text, *identity_))
      return std::nullopt;
    const bool primary = key.kind == KeyKind::PrimaryKey && !identity_;
    return concat(primary ? "PRIMARY KEY (" : "UNIQUE (", columnList(key.columns), ")");
  }

  bool isNullable(std::string_view column) const {
    return std::any_of(nullable_.begin(), nullable_.end(),
                       [&](const std::string& one) { return sameName(one, column); });
  }

  // A server lets a unique column be NULL once, SQLite any number of times: an index over the NULLs makes up
  // for it.
  void addNullIndex(std::string_view table, std::string_view key, const std::vector<IndexColumn>& columns) {
    if (std::none_of(columns.begin(), columns.end(),
                     [&](const IndexColumn& one) { return isNullable(one.name.text); }))
      return;
    if (columns.size() > 1) failUnsupported("可为 NULL 的多列唯一键");
    const std::string column = quotedName(columns[0].name.text);
    runSql(session_.db(), concat("CREATE UNIQUE INDEX ", indexName(table, concat(key, "#null")), " ON ",
                                 quotedName(table), " (", column, " IS NULL) WHERE ", column, " IS NULL"));
  }

  void addIndex(const TableInfo& table, std::string_view name, const std::vector<IndexColumn>& columns,
                bool unique) {
    std::vector<std::string> known;
    nullable_.clear();
    for (const ColumnInfo& column : table.columns) {
      known.push_back(column.name);
      if (column.nullable) nullable_.push_back(column.name);
    }
    requireColumns(columns, known, table.name);
    if (hasIndex(table, name)) fail(1913, concat("表 '", table.name, "' 中已存在名为 '", name, "' 的索引。"));
    SqliteStatement create(session_.db(),
                           concat("CREATE ", unique ? "UNIQUE " : "", "INDEX ", indexName(table.name, name),
                                  " ON ", quotedName(table.name), " (", columnList(columns), ")"));
    if ((session_.step(create.get()) & 0xff) == SQLITE_CONSTRAINT)
      fail(1505, concat("因为发现对象“", table.name, "”有重复的键，CREATE UNIQUE INDEX 语句终止。"));
    if (unique) addNullIndex(table.name, name, columns);
  }

  bool hasIndex(const TableInfo& table, std::string_view name) const {
    SqliteStatement find(session_.db(),
                         "SELECT 1 FROM sqlite_schema WHERE type = 'index' AND name = ?1 COLLATE NOCASE");
    const Value value = concat(table.name, ".", name);
    return find.bind(1, value).step();
  }

  void addColumn(const TableInfo& table, const ColumnDefinition& column) {
    const std::string name = quotedName(column.name.text);
    const bool required = column.nullability == Nullability::NotNull;
    const std::string sql = columnSql(column, false);
    if (sql.find(" DEFAULT CURRENT_TIMESTAMP") != std::string::npos)
      failUnsupported("ALTER TABLE ADD … DEFAULT GETDATE()");
    if (required && !column.defaultValue)
      fail(4901, concat("ALTER TABLE 只允许添加可为 NULL 或有 DEFAULT 的列；列 '", column.name.text,
                        "' 不满足这些条件。"));
    runSql(session_.db(), concat("ALTER TABLE ", quotedName(table.name), " ADD COLUMN ", sql));
    // SQLite gives the default to the rows that are there; a server only where NULL is not allowed.
    if (column.defaultValue && !required)
      runSql(session_.db(), concat("UPDATE ", quotedName(table.name), " SET ", name, " = NULL"));
  }

  void addDefault(const TableInfo& table, const ColumnDefault& added, bool again) {
    const std::optional<std::size_t> index = table.find(added.column.text);
    if (!index)
      fail(1752, concat("表 '", table.name, "' 中的列 '", added.column.text, "' 对于创建默认约束无效。"));
    const ColumnInfo& column = table.columns[*index];
    if (column.identity) fail(1754, concat("不能为标识列 '", column.name, "' 创建默认值。"));
    if (again || !column.defaultSql.empty() || column.defaultsToNow)
      fail(1781, concat("列 '", column.name, "' 已绑定了默认值。"));
    const std::string plain = plainColumnSql(column.name, column.type, !column.nullable);
    const std::string value = defaultSql(*added.value, column.type, column.name);
    std::string definition = definitionOf(table);
    const std::size_t at = elementAt(definition, plain);
    if (at == std::string::npos) failUnsupported(concat("为列 ", column.name, " 添加 DEFAULT"));
    definition.insert(at + plain.size(), " DEFAULT " + value);
    rewriteDefinition(table, definition);
  }

  std::string definitionOf(const TableInfo& table) const {
    SqliteStatement find(session_.db(), "SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = ?1");
    const Value name = table.name;
    find.bind(1, name).step();
    return std::string(find.text(0));
  }

  // Where a column's text stands in a table's definition as a whole element.
  static std::size_t elementAt(std::string_view definition, std::string_view column) {
    for (std::size_t at = definition.find(column); at != std::string_view::npos;
         at = definition.find(column, at + 1)) {
      const std::string_view before = definition.substr(0, at);
      const std::string_view behind = definition.substr(at + column.size());
      if ((before.ends_with("(") || before.ends_with(", ")) &&
          (behind.starts_with(",") || behind.starts_with(")")))
        return at;
    }
    return std::string_view::npos;
  }

  // SQLite has no statement that gives a column a default. Its own way is to write the definition anew; rows
  // do not depend on it.
  void rewriteDefinition(const TableInfo& table, const std::string& definition) {
    const std::int64_t next = session_.version().schema + 1;
    runSql(session_.db(), "PRAGMA writable_schema = ON");
    try {
      SqliteStatement write(session_.db(),
                            "UPDATE sqlite_schema SET sql = ?2 WHERE type = 'table' AND name = ?1");
      const Value name = table.name;
      const Value text = definition;
      write.bind(1, name).bind(2, text).step();
      runSql(session_.db(), concat("PRAGMA schema_version = ", std::to_string(next)));
    } catch (...) {
      runSql(session_.db(), "PRAGMA writable_schema = RESET");
      throw;
    }
    runSql(session_.db(), "PRAGMA writable_schema = RESET");
  }

  void dropOne(const Drop& drop, const DropItem& item) {
    const std::string_view name = plainName(item.name);
    const auto missing = [&](std::string_view kind) {
      if (!drop.ifExists)
        fail(3701, concat("无法对 ", kind, " '", name, "' 执行 删除，因为它不存在，或者您没有所需的权限。"),
             11);
    };
    switch (drop.kind) {
      case DropKind::Table:
        if (const TableInfo* table = catalog_.findTable(name))
          runSql(session_.db(), concat("DROP TABLE ", quotedName(table->name)));
        else
          missing("表");
        return;
      case DropKind::Index: {
        const TableInfo* table = catalog_.findTable(plainName(item.table));
        if (table == nullptr || !hasIndex(*table, name)) return missing("索引");
        runSql(session_.db(), concat("DROP INDEX ", indexName(table->name, name)));
        runSql(session_.db(), concat("DROP INDEX IF EXISTS ", indexName(table->name, concat(name, "#null"))));
        return;
      }
      case DropKind::Procedure: {
        if (catalog_.findProcedure(name) == nullptr) return missing("过程");
        SqliteStatement remove(session_.db(), "DELETE FROM goodsbook_procedures WHERE name = ?1");
        const Value value = std::string(name);
        remove.bind(1, value).step();
        countProcedureChange();
        return;
      }
    }
  }

  // Other connections see by this number that procedures have changed.
  void countProcedureChange() {
    const std::int64_t next = session_.version().procedures + 1;
    runSql(session_.db(), concat("PRAGMA user_version = ", std::to_string(next)));
  }

  void startAt(std::string_view table) {
    SqliteStatement start(session_.db(), "INSERT INTO sqlite_sequence (name, seq) VALUES (?1, ?2)");
    const Value name = std::string(table);
    const Value last = seed_ - 1;
    start.bind(1, name).bind(2, last).step();
  }

  Session& session_;
  const Catalog& catalog_;
  std::optional<std::string> identity_;
  std::int64_t seed_ = 1;
  std::vector<std::string> nullable_;
};

}  // namespace

void runDefinition(Session& session, const Catalog& catalog, const Statement& statement) {
  Definer define(session, catalog);
  if (const auto* table = std::get_if<CreateTable>(&statement.node))
    define(*table);
  else if (const auto* index = std::get_if<CreateIndex>(&statement.node))
    define(*index);
  else if (const auto* alter = std::get_if<AlterTableAdd>(&statement.node))
    define(*alter);
  else if (const auto* drop = std::get_if<Drop>(&statement.node))
    define(*drop);
  else
    define(std::get<CreateProcedure>(statement.node), statement.text);
}

}  // namespace goodsbook::engine
