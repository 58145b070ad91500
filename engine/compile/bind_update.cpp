#include <algorithm>

#include "engine/compile/binder.h"
#include "engine/compile/emitter.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {

// The table that a FROM may name again, by its own name or by an alias; otherwise it is joined to the FROM.
Binder::WriteTarget Binder::bindWriteTarget(const ObjectName& name, const std::vector<TableRefPtr>& from,
                                            Scope& scope, std::vector<BoundFromPtr>& bound) {
  bound = bindFrom(from, scope);
  const std::string_view wanted = plainName(name);
  const Source* found = nullptr;
  for (const Source& source : scope.sources)
    if (sameName(source.name, wanted)) found = &source;
  if (found != nullptr && found->table == nullptr) fail(4421, concat("派生表 '", wanted, "' 不可更新。"));
  if (found == nullptr) {
    for (const Source& source : scope.sources) {
      if (source.table == nullptr || !sameName(source.table->name, wanted)) continue;
      if (found != nullptr) fail(8154, concat("表 '", wanted, "' 不明确。"));
      found = &source;
    }
  }
  if (found == nullptr) {
    requireTable(name);
    bound.push_back(bindNamedTable({name, {}}, scope));
    found = &scope.sources.back();
  }
  return {found->table, found->id};
}

NodePtr Binder::rowOf(const WriteTarget& target) const {
  return makeNode(ColumnNode{target.source, target.table->rowName});
}

std::vector<Binder::BoundAssignment> Binder::bindAssignments(const Update& update, const TableInfo& table,
                                                             const Scope& scope) {
  clause_ = Clause::Assignment;
  std::vector<BoundAssignment> assignments;
  for (const Assignment& assignment : update.assignments) {
    const auto column = table.find(assignment.column.text);
    if (!column) fail(207, concat("列名 '", assignment.column.text, "' 无效。"));
    if (table.columns[*column].identity)
      fail(8102, concat("无法更新标识列 '", assignment.column.text, "'。"));
    for (const BoundAssignment& other : assignments)
      if (other.column == *column)
        fail(264, concat("列名 '", assignment.column.text, "' 在 SET 子句中多次指定。"));
    assignments.push_back({*column, bindAssigned(*assignment.value, {&table, *column}, scope)});
  }
  return assignments;
}

void Binder::bindUpdate(const Update& update) {
  Scope scope;
  BoundSelect source;
  const WriteTarget target = bindWriteTarget(update.target, update.from, scope, source.from);
  const TableInfo& table = *target.table;
  std::vector<BoundAssignment> assignments = bindAssignments(update, table, scope);
  clause_ = Clause::Where;
  if (update.where) source.where = bindCondition(*update.where, scope);
  plan_.result = Plan::Result::Count;
  plan_.write = Plan::Write::Update;
  plan_.table = table.name;
  // SQLite changes row after row. Where a new value is read from other rows of the table, or a key moves onto
  // another row's, all new values must be there before the first row is changed.
  const bool direct =
      update.from.empty() && std::none_of(assignments.begin(), assignments.end(), [&](const auto& one) {
        return table.isInKey(one.column) || readsTable(*one.value, table.name);
      });
  std::string settings;
  const auto addSetting = [&](std::size_t column, std::string_view value) {
    settings += concat(settings.empty() ? "" : ", ", quotedName(table.columns[column].name), " = ", value);
  };
  if (direct) {
    for (const BoundAssignment& one : assignments) addSetting(one.column, emitNode(*one.value));
    plan_.sql = concat("UPDATE ", quotedName(table.name), " AS ", sourceName(target.source), " SET ",
                       settings, source.where ? concat(" WHERE ", emitNode(*source.where)) : "");
    return;
  }
  source.items.push_back({.node = rowOf(target), .name = {}, .type = {Kind::BigInt}});
  for (BoundAssignment& one : assignments) {
    addSetting(one.column, concat("s.", derivedColumn(source.items.size())));
    plan_.written.push_back(one.column);
    source.items.push_back(
        {.node = std::move(one.value), .name = {}, .type = table.columns[one.column].type});
  }
  BoundQuery query;
  query.terms.push_back({.content = std::move(source)});
  plan_.sourceSql = emitQuery(query, true);
  plan_.sql = concat("UPDATE ", quotedName(table.name), " AS t SET ", settings, " FROM (", plan_.sourceSql,
                     ") AS s WHERE t.", table.rowName, " = s.c1");
}

void Binder::bindDelete(const Delete& statement) {
  Scope scope;
  BoundSelect source;
  const WriteTarget target = bindWriteTarget(statement.target, statement.from, scope, source.from);
  clause_ = Clause::Where;
  if (statement.where) source.where = bindCondition(*statement.where, scope);
  plan_.result = Plan::Result::Count;
  plan_.write = Plan::Write::Delete;
  plan_.table = target.table->name;
  const std::string table = quotedName(target.table->name);
  if (statement.from.empty()) {
    plan_.sql = concat("DELETE FROM ", table, " AS ", sourceName(target.source),
                       source.where ? concat(" WHERE ", emitNode(*source.where)) : "");
    return;
  }
  source.items.push_back({.node = rowOf(target), .name = {}, .type = {Kind::BigInt}});
  BoundQuery query;
  query.terms.push_back({.content = std::move(source)});
  plan_.sql = concat("DELETE FROM ", table, " WHERE ", target.table->rowName, " IN (", emitQuery(query), ")");
}

void Binder::bindIfCondition(const Expression& condition) {
  clause_ = Clause::Where;
  plan_.result = Plan::Result::Condition;
  const Scope scope;
  plan_.sql = concat("SELECT ", emitNode(*bindCondition(condition, scope)));
}

}  // namespace goodsbook::engine
