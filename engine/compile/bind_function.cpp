#include <algorithm>
#include <array>

#include "engine/compile/binder.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/date_time.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

// Functions that are nothing but a call: the kinds of their arguments (t text, i whole, n number, d
// date-time; capitals are needed, small ones may be left out) and what they give.
struct PlainFunction {
  std::string_view name;
  std::string_view arguments;
  SqlType result;
  std::string_view sql;
};

constexpr std::array<PlainFunction, 15> plainFunctions{{
    {"left", "TI", {Kind::Text}, "ts_left"},
    {"right", "TI", {Kind::Text}, "ts_right"},
    {"substring", "TII", {Kind::Text}, "ts_substring"},
    {"len", "T", {Kind::Int}, "ts_len"},
    {"ltrim", "T", {Kind::Text}, "ts_ltrim"},
    {"rtrim", "T", {Kind::Text}, "ts_rtrim"},
    {"trim", "T", {Kind::Text}, "ts_trim"},
    {"upper", "T", {Kind::Text}, "ts_upper"},
    {"lower", "T", {Kind::Text}, "ts_lower"},
    {"replace", "TTT", {Kind::Text}, "ts_replace"},
    {"charindex", "TTi", {Kind::Int}, "ts_charindex"},
    {"replicate", "TI", {Kind::Text}, "ts_replicate"},
    {"stuff", "TIIT", {Kind::Text}, "ts_stuff"},
    {"sqrt", "N", {Kind::Float}, "ts_sqrt"},
    {"power", "NN", {Kind::Float}, "ts_power"},
}};

[[noreturn]] void failArguments(std::string_view name, std::string_view wanted) {
  fail(174, concat(name, " 函数要求有 ", wanted, " 个参数。"), 15);
}

void requireArguments(const FunctionCall& call, std::size_t count) {
  if (call.arguments.size() != count) failArguments(call.name.text, std::to_string(count));
}

const PlainFunction* findPlain(std::string_view name) {
  for (const PlainFunction& function : plainFunctions)
    if (sameName(function.name, name)) return &function;
  return nullptr;
}

bool isCapital(char c) {
  return c >= 'A' && c <= 'Z';
}

DatePart requireDatePart(const Expression& expression) {
  const auto* word = std::get_if<ColumnRef>(&expression.node);
  const auto part = word != nullptr && word->qualifier.empty() ? datePartOf(word->column.text) : std::nullopt;
  if (!part)
    fail(155, concat("'", word == nullptr ? "?" : word->column.text, "' 不是可以识别的日期部分选项。"), 15);
  return *part;
}

}  // namespace

BoundValue Binder::now() {
  ParameterSource source{.origin = ParameterSource::Origin::Now};
  source.from = {Kind::DateTime};
  return addParameter(std::move(source), {Kind::DateTime});
}

BoundValue Binder::bindFunction(const FunctionCall& call, const Scope& scope) {
  const auto is = [&](std::string_view name) { return sameName(call.name.text, name); };
  for (const std::string_view aggregate : {"count", "count_big", "sum", "avg", "min", "max"})
    if (is(aggregate)) return bindAggregate(call, scope);
  if (call.distinct) fail(102, concat("'DISTINCT' 附近有语法错误: ", call.name.text, "。"), 15);
  if (is("getdate") || is("current_timestamp")) {
    requireArguments(call, 0);
    return now();
  }
  if (is("isnull")) return bindIsNullFunction(call, scope);
  if (is("coalesce")) return bindCoalesce(call, scope);
  if (is("nullif")) return bindNullIf(call, scope);
  if (is("round")) return bindRound(call, scope);
  if (is("abs")) return bindNumberFunction(call, "abs", false, scope);
  if (is("floor")) return bindNumberFunction(call, "ts_floor", true, scope);
  if (is("ceiling")) return bindNumberFunction(call, "ts_ceiling", true, scope);
  if (is("sign")) return bindNumberFunction(call, "ts_sign", false, scope);
  for (const std::string_view date : {"dateadd", "datediff", "datepart", "year", "month", "day"})
    if (is(date)) return bindDateFunction(call, scope);
  const PlainFunction* function = findPlain(call.name.text);
  if (function == nullptr) fail(195, concat("'", call.name.text, "' 不是可以识别的内置函数名称。"), 15);
  const std::string_view kinds = function->arguments;
  const auto least = static_cast<std::size_t>(std::count_if(kinds.begin(), kinds.end(), isCapital));
  if (call.arguments.size() < least || call.arguments.size() > kinds.size())
    failArguments(call.name.text, std::to_string(least));
  CallNode node{.name = std::string(function->sql), .arguments = {}};
  for (std::size_t i = 0; i < call.arguments.size(); ++i) {
    BoundValue argument = bindValue(*call.arguments[i], scope);
    const char kind = static_cast<char>(kinds[i] | 0x20);
    argument = kind == 't'   ? toText(std::move(argument))
               : kind == 'i' ? toWhole(std::move(argument))
                             : toNumber(std::move(argument));
    node.arguments.push_back(std::move(argument.node));
  }
  return {.node = makeNode(std::move(node)), .type = function->result};
}

BoundValue Binder::bindIsNullFunction(const FunctionCall& call, const Scope& scope) {
  requireArguments(call, 2);
  BoundValue first = bindValue(*call.arguments[0], scope);
  BoundValue second = bindValue(*call.arguments[1], scope);
  const SqlType type = first.type.kind == Kind::Null ? second.type : first.type;
  if (type.kind == Kind::Decimal) {
    pin(first);
    pin(second);
  }
  // The second value is made one of the first one's type, cut to its width.
  second = coerce(std::move(second), type, Purpose::Cut);
  return {.node = callNode("ifnull", std::move(first.node), std::move(second.node)), .type = type};
}

BoundValue Binder::bindCoalesce(const FunctionCall& call, const Scope& scope) {
  if (call.arguments.size() < 2) failArguments(call.name.text, "2");
  std::vector<BoundValue> values;
  BoundValue merged;
  for (const ExpressionPtr& argument : call.arguments) values.push_back(bindValue(*argument, scope));
  for (const BoundValue& value : values) merged.type = mergedType(merged, value);
  if (merged.type.kind == Kind::Null) fail(4127, "COALESCE 至少要有一个参数不是 NULL 常量。");
  CallNode node{.name = "coalesce", .arguments = {}};
  for (BoundValue& value : values)
    node.arguments.push_back(coerce(std::move(value), merged.type, Purpose::Implicit).node);
  merged.node = makeNode(std::move(node));
  return merged;
}

BoundValue Binder::bindNullIf(const FunctionCall& call, const Scope& scope) {
  requireArguments(call, 2);
  BoundValue result = bindValue(*call.arguments[0], scope);
  CaseNode node;
  node.branches.emplace_back();
  node.branches.front().when = bindComparison(ComparisonOperator::Equal, bindValue(*call.arguments[0], scope),
                                              bindValue(*call.arguments[1], scope));
  node.branches.front().then = nullNode();
  node.otherwise = std::move(result.node);
  return {.node = makeNode(std::move(node)), .type = result.type};
}

BoundValue Binder::bindRound(const FunctionCall& call, const Scope& scope) {
  if (call.arguments.size() < 2 || call.arguments.size() > 3) failArguments(call.name.text, "2 到 3");
  BoundValue number = toNumber(bindValue(*call.arguments[0], scope));
  BoundValue digits = toWhole(bindValue(*call.arguments[1], scope));
  NodePtr cut =
      call.arguments.size() == 3 ? toWhole(bindValue(*call.arguments[2], scope)).node : wholeNode(0);
  if (number.type.kind == Kind::Decimal) pin(number);
  const SqlType type = number.type.kind == Kind::Bit ? SqlType{Kind::Int} : number.type;
  return {.node = callNode("ts_round", std::move(number.node), std::move(digits.node), std::move(cut)),
          .type = type};
}

BoundValue Binder::bindNumberFunction(const FunctionCall& call, std::string_view sqlName, bool whole,
                                      const Scope& scope) {
  requireArguments(call, 1);
  BoundValue number = toNumber(bindValue(*call.arguments[0], scope));
  SqlType type = number.type.kind == Kind::Bit ? SqlType{Kind::Int} : number.type;
  if (type.kind == Kind::Decimal) {
    pin(number);
    if (whole) type.scale = 0;
  }
  return {.node = callNode(sqlName, std::move(number.node)), .type = type};
}

BoundValue Binder::bindDateFunction(const FunctionCall& call, const Scope& scope) {
  const auto is = [&](std::string_view name) { return sameName(call.name.text, name); };
  const auto partNode = [](DatePart part) { return wholeNode(static_cast<int>(part)); };
  const auto date = [&](std::size_t argument) {
    return toDateTime(bindValue(*call.arguments[argument], scope)).node;
  };
  if (is("year") || is("month") || is("day")) {
    requireArguments(call, 1);
    const DatePart part = is("year") ? DatePart::Year : is("month") ? DatePart::Month : DatePart::Day;
    return {.node = callNode("ts_datepart", partNode(part), date(0)), .type = {Kind::Int}};
  }
  requireArguments(call, is("datepart") ? 2 : 3);
  const DatePart part = requireDatePart(*call.arguments[0]);
  if (is("datepart")) return {.node = callNode("ts_datepart", partNode(part), date(1)), .type = {Kind::Int}};
  if (is("datediff")) {
    NodePtr from = date(1);
    return {.node = callNode("ts_datediff", partNode(part), std::move(from), date(2)), .type = {Kind::Int}};
  }
  BoundValue count = bindValue(*call.arguments[1], scope);
  if (!isWhole(count.type.kind)) count = coerce(std::move(count), {Kind::Int}, Purpose::Cut);
  return {.node = callNode("ts_dateadd", partNode(part), std::move(count.node), date(2)),
          .type = {Kind::DateTime}};
}

}  // namespace goodsbook::engine
