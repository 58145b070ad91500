#include <algorithm>

#include "engine/compile/binder.h"
#include "engine/compile/emitter.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

[[noreturn]] void failCount(const Insert& insert, std::size_t given, std::size_t wanted, bool values) {
  if (insert.columns.empty())
    fail(213, concat("列名或所提供值的数目与表 '", insert.table.name.text, "' 的定义不匹配。"));
  const bool fewer = given < wanted;
  if (values)
    fail(
        fewer ? 109 : 110,
        concat("INSERT 语句中列的数目", fewer ? "大于" : "小于",
               " VALUES 子句中指定的值的数目。VALUES 子句中值的数目必须与 INSERT 语句中指定的列的数目匹配。"),
        15);
  fail(fewer ? 120 : 121,
       concat("INSERT 语句的选择列表包含的项", fewer ? "少于" : "多于",
              "插入列表中的项。SELECT 值的数目必须与 INSERT 列的数目匹配。"),
       15);
}

bool hasDefault(const ColumnInfo& column) {
  return !column.defaultSql.empty();
}

}  // namespace

std::vector<std::size_t> Binder::insertColumns(const Insert& insert, const TableInfo& table) const {
  std::vector<std::size_t> columns;
  const bool given = sameName(identitiesOf_, table.name);
  const auto isIdentity = [&](std::size_t column) { return table.columns[column].identity; };
  if (insert.columns.empty()) {
    for (std::size_t i = 0; i < table.columns.size(); ++i)
      if (!table.columns[i].identity) columns.push_back(i);
    return columns;
  }
  for (const Name& name : insert.columns) {
    const auto column = table.find(name.text);
    if (!column) fail(207, concat("列名 '", name.text, "' 无效。"));
    if (isIdentity(*column) && !given)
      fail(544, concat("不能为表 '", table.name, "' 的标识列 '", name.text, "' 插入显式值。"));
    if (std::find(columns.begin(), columns.end(), *column) != columns.end())
      fail(264, concat("列名 '", name.text, "' 在 INSERT 的列列表中多次指定。"));
    columns.push_back(*column);
  }
  if (given && std::none_of(columns.begin(), columns.end(), isIdentity))
    fail(545, concat("IDENTITY_INSERT 为 ON 时，必须为表 '", table.name, "' 的标识列指定显式值。"));
  return columns;
}

NodePtr Binder::bindDefault(const TableInfo& table, std::size_t column) {
  const ColumnInfo& info = table.columns[column];
  if (!hasDefault(info)) return nullNode();
  if (!info.defaultsToNow) return makeNode(ConstantNode{info.defaultSql});
  const Target target{&table, column};
  return coerce(now(), info.type, Purpose::Assign, &target).node;
}

NodePtr Binder::bindAssigned(const Expression& expression, const Target& target, const Scope& scope) {
  if (std::holds_alternative<DefaultValue>(expression.node)) return bindDefault(*target.table, target.column);
  return coerce(bindValue(expression, scope), target.table->columns[target.column].type, Purpose::Assign,
                &target)
      .node;
}

void Binder::bindInsert(const Insert& insert) {
  const TableInfo& table = requireTable(insert.table);
  std::vector<std::size_t> columns = insertColumns(insert, table);
  std::size_t given = columns.size();
  if (std::holds_alternative<DefaultValues>(insert.source)) {
    columns.clear();
    given = 0;
  }
  // Columns that are left out and have a default are written as if they had been given it.
  for (std::size_t i = 0; i < table.columns.size(); ++i)
    if (hasDefault(table.columns[i]) && std::find(columns.begin(), columns.end(), i) == columns.end())
      columns.push_back(i);
  std::string source;
  if (const auto* values = std::get_if<ValueRows>(&insert.source))
    source = insertRows(*values, insert, table, columns, given);
  else if (const auto* query = std::get_if<QueryPtr>(&insert.source))
    source = insertQuery(**query, insert, table, columns, given);
  else if (!columns.empty())
    source = insertRows({}, insert, table, columns, given);
  std::string names;
  for (const std::size_t column : columns)
    names += concat(names.empty() ? "" : ", ", quotedName(table.columns[column].name));
  plan_.result = Plan::Result::Count;
  plan_.write = Plan::Write::Insert;
  plan_.table = table.name;
  plan_.written = columns;
  plan_.sourceSql = source;
  plan_.sql = columns.empty() ? concat("INSERT INTO ", quotedName(table.name), " DEFAULT VALUES")
                              : concat("INSERT INTO ", quotedName(table.name), " (", names, ") ", source);
}

std::string Binder::insertRows(const ValueRows& values, const Insert& insert, const TableInfo& table,
                               const std::vector<std::size_t>& columns, std::size_t given) {
  clause_ = Clause::Assignment;
  const Scope scope;
  std::vector<std::vector<NodePtr>> rows;
  const auto appendDefaults = [&](std::vector<NodePtr>& row) {
    for (std::size_t i = given; i < columns.size(); ++i) row.push_back(bindDefault(table, columns[i]));
  };
  for (const std::vector<ExpressionPtr>& source : values.rows) {
    if (source.size() != values.rows.front().size()) fail(10709, "VALUES 子句中各行的值的数目必须相同。");
    if (source.size() != given) failCount(insert, source.size(), given, true);
    std::vector<NodePtr> row;
    for (std::size_t i = 0; i < given; ++i)
      row.push_back(bindAssigned(*source[i], {&table, columns[i]}, scope));
    appendDefaults(row);
    rows.push_back(std::move(row));
  }
  if (values.rows.empty()) appendDefaults(rows.emplace_back());
  return concat("VALUES ", emitRows(rows));
}

// Conversions stand outside of whatever removes, orders or counts rows by the values as they were.
BoundSelect Binder::wrapForInsert(BoundQuery query) {
  auto* simple = query.terms.size() == 1 && query.orderBy.empty()
                     ? std::get_if<BoundSelect>(&query.terms[0].content)
                     : nullptr;
  if (simple != nullptr && !simple->distinct) return std::move(*simple);
  BoundSelect outer;
  const int id = nextSource_++;
  const std::vector<BoundItem>& items = itemsOf(query);
  for (std::size_t i = 0; i < items.size(); ++i)
    outer.items.push_back(
        {.node = makeNode(ColumnNode{id, derivedColumn(i)}), .name = items[i].name, .type = items[i].type});
  outer.from.push_back(std::make_unique<BoundFrom>(BoundFrom{
      BoundSource{.id = id, .table = {}, .query = std::make_unique<BoundQuery>(std::move(query))}}));
  return outer;
}

std::string Binder::insertQuery(const Query& query, const Insert& insert, const TableInfo& table,
                                const std::vector<std::size_t>& columns, std::size_t given) {
  BoundQuery bound = bindQuery(query, nullptr, true);
  const std::size_t count = itemsOf(bound).size();
  if (count != given) failCount(insert, count, given, false);
  BoundQuery source;
  source.terms.push_back({.content = wrapForInsert(std::move(bound))});
  for (std::size_t i = 0; i < given; ++i) {
    const Target target{&table, columns[i]};
    coerceColumn(source, i, table.columns[columns[i]].type, Purpose::Assign, &target);
  }
  auto& select = std::get<BoundSelect>(source.terms.front().content);
  for (std::size_t i = given; i < columns.size(); ++i)
    select.items.push_back(
        {.node = bindDefault(table, columns[i]), .name = {}, .type = table.columns[columns[i]].type});
  return emitQuery(source);
}

}  // namespace goodsbook::engine
