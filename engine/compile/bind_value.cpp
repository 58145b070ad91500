#include <array>

#include "engine/catalog/type_names.h"
#include "engine/compile/binder.h"
#include "engine/compile/literals.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

constexpr int castWidth = 30;  // of a varchar without a width in CAST and CONVERT

[[noreturn]] void failMisplaced(std::string_view what) {
  fail(102, concat(what, " 附近有语法错误。"), 15);
}

}  // namespace

Binder::Binder(const Catalog& catalog, std::span<const ParameterInfo> variables, int firstOrdinal, Plan& plan)
    : catalog_(catalog), variables_(variables), firstOrdinal_(firstOrdinal), plan_(plan) {}

BoundValue Binder::bindValue(const Expression& expression, const Scope& scope) {
  struct Visitor {
    Binder& binder;
    const Scope& scope;
    const Expression& expression;

    BoundValue operator()(const Literal& literal) { return binder.bindLiteral(literal); }
    BoundValue operator()(const NullLiteral&) { return {.node = nullNode(), .type = {}}; }
    BoundValue operator()(const DefaultValue&) { failMisplaced("关键字 'DEFAULT'"); }
    BoundValue operator()(const ColumnRef& column) { return binder.bindColumn(column, scope); }
    BoundValue operator()(const Star&) { failMisplaced("'*'"); }
    BoundValue operator()(const Variable& variable) { return binder.bindVariable(variable); }
    BoundValue operator()(const Unary& unary) { return binder.bindUnary(unary, scope); }
    BoundValue operator()(const Binary& binary) { return binder.bindBinary(binary, scope); }
    BoundValue operator()(const Case& content) { return binder.bindCase(content, scope); }
    BoundValue operator()(const Cast& cast) {
      return binder.bindCast(*cast.operand, cast.type, nullptr, scope);
    }
    BoundValue operator()(const Convert& convert) {
      return binder.bindCast(*convert.operand, convert.type, convert.style.get(), scope);
    }
    BoundValue operator()(const FunctionCall& call) { return binder.bindFunction(call, scope); }
    BoundValue operator()(const ScalarSubquery& subquery) {
      return binder.bindSubquery(*subquery.query, scope);
    }
    BoundValue operator()(const Comparison&) { return condition(); }
    BoundValue operator()(const Logical&) { return condition(); }
    BoundValue operator()(const Not&) { return condition(); }
    BoundValue operator()(const Like&) { return condition(); }
    BoundValue operator()(const InList&) { return condition(); }
    BoundValue operator()(const InQuery&) { return condition(); }
    BoundValue operator()(const Between&) { return condition(); }
    BoundValue operator()(const IsNull&) { return condition(); }
    BoundValue operator()(const Exists&) { return condition(); }
    [[noreturn]] BoundValue condition() { failMisplaced("条件"); }
  };
  return std::visit(Visitor{*this, scope, expression}, expression.node);
}

BoundValue Binder::bindLiteral(const Literal& literal) {
  ParameterSource source;
  source.kind = literal.kind;
  source.written = literal.value;
  if (literal.ordinal == Literal::structural)
    source.origin = ParameterSource::Origin::Fixed;
  else
    source.index = literal.ordinal - firstOrdinal_;
  BoundValue value = addParameter(std::move(source), literalType(literal.kind, literal.value));
  value.literal = &literal;
  // A whole number beyond int is a decimal: whether it is one depends on its value.
  if (literal.kind == LiteralKind::Integer && value.type.kind != Kind::Int) pin(value);
  return value;
}

BoundValue Binder::bindVariable(const Variable& variable) {
  for (std::size_t i = 0; i < variables_.size(); ++i) {
    if (!sameName(variables_[i].name, variable.name.text)) continue;
    ParameterSource source{.origin = ParameterSource::Origin::Variable, .index = static_cast<int>(i)};
    source.from = variables_[i].type;
    return addParameter(std::move(source), variables_[i].type);
  }
  fail(137, concat("必须声明标量变量 \"", variable.name.text, "\"。"), 15);
}

BoundValue Binder::bindColumn(const ColumnRef& reference, const Scope& scope) {
  plainName({reference.qualifier.database, reference.qualifier.schema, {}});
  const FoundColumn found = findColumn(scope, reference);
  return {.node = makeNode(ColumnNode{found.source->id, found.column->sql}),
          .type = found.column->type,
          .stored = found.column->stored};
}

BoundValue Binder::bindCase(const Case& expression, const Scope& scope) {
  CaseNode node;
  std::vector<BoundValue> results;
  for (const CaseBranch& branch : expression.branches) {
    CaseNode::Branch bound;
    if (expression.operand)  // CASE x WHEN y: each pair compares on its own terms
      bound.when = bindComparison(ComparisonOperator::Equal, bindValue(*expression.operand, scope),
                                  bindValue(*branch.when, scope));
    else
      bound.when = bindCondition(*branch.when, scope);
    results.push_back(bindValue(*branch.then, scope));
    node.branches.push_back(std::move(bound));
  }
  if (expression.otherwise) results.push_back(bindValue(*expression.otherwise, scope));
  BoundValue merged;
  for (const BoundValue& result : results) merged.type = mergedType(merged, result);
  if (merged.type.kind == Kind::Null)
    fail(8133, "CASE 规范中的结果表达式至少要有一个不是 NULL 常量的表达式。");
  for (std::size_t i = 0; i < results.size(); ++i) {
    NodePtr result = coerce(std::move(results[i]), merged.type, Purpose::Implicit).node;
    if (i < node.branches.size())
      node.branches[i].then = std::move(result);
    else
      node.otherwise = std::move(result);
  }
  merged.node = makeNode(std::move(node));
  return merged;
}

BoundValue Binder::bindCast(const Expression& operand, const DataType& type, const Expression* style,
                            const Scope& scope) {
  const SqlType to = typeOf(type, castWidth);
  int styleNumber = -1;
  if (style != nullptr) {
    const auto* literal = std::get_if<Literal>(&style->node);
    if (literal == nullptr || literal->kind != LiteralKind::Integer)
      failUnsupported("CONVERT 的样式只能是整数常量");
    styleNumber = static_cast<int>(literalWhole(*literal));
    if (literal->ordinal != Literal::structural)
      plan_.pins.push_back({literal->ordinal - firstOrdinal_, std::string(literal->value)});
  }
  BoundValue value = bindValue(operand, scope);
  const bool ofDate = value.type.kind == Kind::DateTime || to.kind == Kind::DateTime;
  if (styleNumber > 0 && !ofDate && value.type.kind != Kind::Null &&
      (isFractional(value.type.kind) || to.kind == Kind::Binary))
    failUnsupported(concat("CONVERT 样式 ", std::to_string(styleNumber)));
  return coerce(std::move(value), to, Purpose::Cut, nullptr, styleNumber);
}

BoundValue Binder::bindSubquery(const Query& query, const Scope& scope) {
  auto bound = std::make_unique<BoundQuery>(bindQuery(query, &scope, false));
  if (itemsOf(*bound).size() != 1)
    fail(116, "当没有用 EXISTS 引入子查询时，在选择列表中只能指定一个表达式。");
  const BoundItem& item = itemsOf(*bound).front();
  BoundValue value;
  value.type = item.type;
  const auto* select =
      bound->terms.size() == 1 ? std::get_if<BoundSelect>(&bound->terms.front().content) : nullptr;
  const bool alwaysOne =
      select != nullptr && ((select->grouped && select->groupBy.empty()) || select->from.empty());
  if (!alwaysOne) {  // ts_one fails on a second row
    const int id = nextSource_++;
    BoundSelect outer;
    outer.from.push_back(std::make_unique<BoundFrom>(
        BoundFrom{BoundSource{.id = id, .table = {}, .query = std::move(bound)}}));
    BoundItem one;
    one.node = callNode("ts_one", makeNode(ColumnNode{id, "c1"}));
    one.type = value.type;
    outer.items.push_back(std::move(one));
    bound = std::make_unique<BoundQuery>();
    bound->terms.push_back({.content = std::move(outer)});
  }
  value.node = makeNode(SubqueryNode{std::move(bound)});
  return value;
}

}  // namespace goodsbook::engine
