#include "engine/compile/binder.h"
#include "engine/compile/emitter.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

std::string_view joinWord(JoinKind kind) {
  switch (kind) {
    case JoinKind::Inner:
    case JoinKind::Cross:  // SQLite's own CROSS JOIN would fix the order of the loops
      return "JOIN";
    case JoinKind::Left:
      return "LEFT JOIN";
    case JoinKind::Right:
      return "RIGHT JOIN";
    case JoinKind::Full:
      return "FULL JOIN";
  }
  return {};
}

BoundFromPtr makeFrom(auto content) {
  return std::make_unique<BoundFrom>(BoundFrom{std::move(content)});
}

bool isInner(const BoundFrom& from) {
  const auto* join = std::get_if<BoundJoin>(&from.content);
  return join == nullptr || (join->kind == "JOIN" && isInner(*join->left) && isInner(*join->right));
}

// Appends an inner join's tables to a chain one by one and gathers its conditions.
BoundFromPtr appendInner(BoundFromPtr chain, BoundFromPtr right, std::vector<NodePtr>& conditions) {
  if (!std::holds_alternative<BoundJoin>(right->content))
    return makeFrom(BoundJoin{"JOIN", std::move(chain), std::move(right), nullptr});
  auto& join = std::get<BoundJoin>(right->content);
  chain = appendInner(std::move(chain), std::move(join.left), conditions);
  chain = appendInner(std::move(chain), std::move(join.right), conditions);
  if (join.on) conditions.push_back(std::move(join.on));
  return chain;
}

// Names of a derived table's columns: all given, none twice.
void requireColumnNames(const DerivedTable& table, const std::vector<SourceColumn>& columns) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].name.empty())
      fail(8155, concat("没有为 '", table.alias.text, "' 的列 ", std::to_string(i + 1), " 指定任何列名称。"));
    for (std::size_t j = 0; j < i; ++j)
      if (sameName(columns[i].name, columns[j].name))
        fail(8156, concat("多次为 '", table.alias.text, "' 指定了列 '", columns[i].name, "'。"));
  }
}

}  // namespace

const TableInfo& Binder::requireTable(const ObjectName& name) const {
  const TableInfo* table = catalog_.findTable(plainName(name));
  if (table == nullptr)
    fail(208, concat("对象名 '", writtenName({name.database, name.schema, {}}, name.name.text), "' 无效。"));
  return *table;
}

std::vector<BoundFromPtr> Binder::bindFrom(const std::vector<TableRefPtr>& tables, Scope& scope) {
  clause_ = Clause::On;
  std::vector<BoundFromPtr> from;
  for (const TableRefPtr& table : tables) from.push_back(bindTable(*table, scope));
  return from;
}

BoundFromPtr Binder::bindTable(const TableRef& table, Scope& scope) {
  struct Visitor {
    Binder& binder;
    Scope& scope;
    BoundFromPtr operator()(const NamedTable& named) { return binder.bindNamedTable(named, scope); }
    BoundFromPtr operator()(const DerivedTable& derived) { return binder.bindDerivedTable(derived, scope); }
    BoundFromPtr operator()(const Join& join) { return binder.bindJoin(join, scope); }
  };
  return std::visit(Visitor{*this, scope}, table.node);
}

void Binder::addSource(Scope& scope, Source source) {
  for (const Source& other : scope.sources)
    if (sameName(other.name, source.name))
      fail(1013, concat("FROM 子句中的对象 '", source.name, "' 出现了不止一次。请使用别名来区分它们。"));
  scope.sources.push_back(std::move(source));
}

BoundFromPtr Binder::bindNamedTable(const NamedTable& named, Scope& scope) {
  const TableInfo& table = requireTable(named.name);
  Source source{.id = nextSource_++, .table = &table, .aliased = !named.alias.empty()};
  source.name = source.aliased ? named.alias.text : named.name.name.text;
  for (const ColumnInfo& column : table.columns)
    source.columns.push_back({column.name, column.type, column.name, column.type.kind == Kind::Text});
  const int id = source.id;
  addSource(scope, std::move(source));
  return makeFrom(BoundSource{.id = id, .table = table.name, .query = nullptr});
}

BoundFromPtr Binder::bindDerivedTable(const DerivedTable& derived, Scope& scope) {
  auto query = std::make_unique<BoundQuery>(bindQuery(*derived.query, scope.outer, false));
  const std::vector<BoundItem>& items = itemsOf(*query);
  if (!derived.columns.empty() && derived.columns.size() != items.size())
    fail(8158, concat("'", derived.alias.text, "' 的列数与在列列表中指定的列数不同。"));
  Source source{.id = nextSource_++, .name = std::string(derived.alias.text), .aliased = true};
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::string name = derived.columns.empty() ? items[i].name : std::string(derived.columns[i].text);
    const SqlType type = items[i].type.kind == Kind::Null ? SqlType{Kind::Int} : items[i].type;
    source.columns.push_back({name, type, derivedColumn(i), items[i].stored});
  }
  requireColumnNames(derived, source.columns);
  const int id = source.id;
  addSource(scope, std::move(source));
  return makeFrom(BoundSource{.id = id, .table = {}, .query = std::move(query)});
}

BoundFromPtr Binder::bindJoin(const Join& join, Scope& scope) {
  const std::size_t first = scope.sources.size();
  BoundFromPtr left = bindTable(*join.left, scope);
  BoundFromPtr right = bindTable(*join.right, scope);
  NodePtr on;
  if (join.on) {
    const std::size_t visible = std::exchange(scope.firstVisible, first);
    clause_ = Clause::On;
    on = bindCondition(*join.on, scope);
    scope.firstVisible = visible;
  }
  const bool chains =
      joinWord(join.kind) == "JOIN" && std::holds_alternative<BoundJoin>(right->content) && isInner(*right);
  if (!chains)
    return makeFrom(BoundJoin{joinWord(join.kind), std::move(left), std::move(right), std::move(on)});
  InfixNode conditions{"AND", {}};
  BoundFromPtr chain = appendInner(std::move(left), std::move(right), conditions.operands);
  if (on) conditions.operands.push_back(std::move(on));
  if (!conditions.operands.empty()) std::get<BoundJoin>(chain->content).on = makeNode(std::move(conditions));
  return chain;
}

}  // namespace goodsbook::engine
