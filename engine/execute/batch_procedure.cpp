// EXEC.
#include <optional>

#include "engine/compile/scope.h"
#include "engine/execute/batch_runner.h"
#include "engine/execute/constants.h"
#include "engine/runtime/convert.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

constexpr int deepestCall = 32;

std::size_t parameterNamed(const ProcedureInfo& procedure, std::string_view name) {
  for (std::size_t i = 0; i < procedure.parameters.size(); ++i)
    if (sameName(procedure.parameters[i].name, name)) return i;
  fail(8145, concat(name, " 不是过程 ", procedure.name, " 的参数。"));
}

// Which argument each parameter was given, if any.
std::vector<const Argument*> matchArguments(const ProcedureInfo& procedure, const Execute& execute) {
  std::vector<const Argument*> given(procedure.parameters.size());
  std::size_t position = 0;
  bool named = false;
  for (const Argument& argument : execute.arguments) {
    if (argument.parameter.empty()) {
      if (named) fail(119, "必须传递参数，并以 '@name = value' 的形式传递后续的参数。", 15);
      if (position >= given.size()) fail(8144, concat("过程或函数 ", procedure.name, " 指定了过多的参数。"));
      given[position++] = &argument;
      continue;
    }
    named = true;
    const std::size_t parameter = parameterNamed(procedure, argument.parameter.text);
    if (given[parameter] != nullptr) fail(8143, concat("参数 '", argument.parameter.text, "' 被提供多次。"));
    given[parameter] = &argument;
  }
  return given;
}

}  // namespace

void BatchRunner::call(const Execute& execute, const Frame& frame) {
  const std::shared_ptr<const Catalog> held = state_.hold();
  const ProcedureInfo* procedure = held->findProcedure(plainName(execute.procedure));
  if (procedure == nullptr) fail(2812, concat("找不到存储过程 '", execute.procedure.name.text, "'。"));
  if (frame.depth + 1 > deepestCall)
    fail(217, concat("超过了存储过程的最大嵌套层数(最大层数为 ", std::to_string(deepestCall), ")。"));
  Frame inner;
  inner.script = &procedure->script;
  inner.procedure = procedure;
  inner.variables = arguments(*procedure, execute, frame);
  inner.depth = frame.depth + 1;
  runAll(*procedure->body, inner);
}

std::vector<Value> BatchRunner::arguments(const ProcedureInfo& procedure, const Execute& execute,
                                          const Frame& frame) {
  const std::vector<const Argument*> given = matchArguments(procedure, execute);
  std::vector<Value> values;
  for (std::size_t i = 0; i < given.size(); ++i) {
    const ParameterInfo& parameter = procedure.parameters[i];
    const Expression* expression = given[i] == nullptr ? nullptr : given[i]->value.get();
    const bool byDefault = expression == nullptr || std::holds_alternative<DefaultValue>(expression->node);
    if (byDefault && parameter.defaultValue == nullptr)
      fail(201,
           concat("过程或函数 '", procedure.name, "' 需要参数 '", parameter.name, "'，但未提供该参数。"));
    const TypedValue typed = constantValue(byDefault ? *parameter.defaultValue : *expression, frame);
    values.push_back(convertValue(typed.value, typed.type, parameter.type, {.target = parameter.name}));
  }
  return values;
}

}  // namespace goodsbook::engine
