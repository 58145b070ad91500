#include "engine/execute/batch_runner.h"

#include <algorithm>
#include <array>

#include "engine/execute/constants.h"
#include "engine/execute/constraint_errors.h"
#include "engine/execute/key_update.h"
#include "engine/execute/raise_error.h"
#include "engine/execute/schema_runner.h"
#include "engine/execute/statement_row.h"
#include "engine/runtime/convert.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

constexpr int raisedError = 50000;
constexpr int leastErrorSeverity = 11;
constexpr int highestSeverity = 25;

bool writes(const Statement& statement) {
  if (const auto* block = std::get_if<Block>(&statement.node)) return engine::writes(block->statements);
  if (const auto* content = std::get_if<If>(&statement.node))
    return writes(*content->then) || (content->otherwise && writes(*content->otherwise));
  return !std::holds_alternative<SelectStatement>(statement.node) &&
         !std::holds_alternative<RaiseError>(statement.node) &&
         !std::holds_alternative<Print>(statement.node) && !std::holds_alternative<SetOption>(statement.node);
}

// Errors that do not know yet where in the batch they happened.
SqlError atLine(const SqlError& error, const Statement& statement) {
  Diagnostic diagnostic = error.diagnostic();
  diagnostic.line = static_cast<int>(statement.position.line);
  return SqlError(std::move(diagnostic));
}

}  // namespace

bool writes(const std::vector<Statement>& statements) {
  return std::any_of(statements.begin(), statements.end(), [](const Statement& one) { return writes(one); });
}

void BatchRunner::run(const Script& script) {
  Frame frame;
  frame.script = &script;
  runAll(script.statements, frame);
}

void BatchRunner::runAll(const std::vector<Statement>& statements, const Frame& frame) {
  for (const Statement& statement : statements) runOne(statement, frame);
}

void BatchRunner::runOne(const Statement& statement, const Frame& frame) {
  struct Visitor {
    BatchRunner& runner;
    const Statement& statement;
    const Frame& frame;
    void operator()(const SelectStatement&) { runner.select(statement, frame); }
    void operator()(const Insert&) { runner.write(statement, frame); }
    void operator()(const Update&) { runner.write(statement, frame); }
    void operator()(const Delete&) { runner.write(statement, frame); }
    void operator()(const If& content) { runner.runIf(content, statement, frame); }
    void operator()(const Block& block) { runner.runAll(block.statements, frame); }
    void operator()(const RaiseError& raise) { runner.raise(raise, statement, frame); }
    void operator()(const Print& print) { runner.print(print, frame); }
    void operator()(const Execute& execute) { runner.call(execute, frame); }
    void operator()(const SetOption& option) { runner.setOption(option); }
    void operator()(const CreateTable&) { runner.define(statement, "CREATE TABLE"); }
    void operator()(const CreateIndex&) { runner.define(statement, "CREATE INDEX"); }
    void operator()(const AlterTableAdd&) { runner.define(statement, "ALTER TABLE"); }
    void operator()(const Drop&) { runner.define(statement, "DROP"); }
    void operator()(const CreateProcedure&) { runner.define(statement, "CREATE PROCEDURE"); }
  };
  // What fails inside a block or a branch knows its own line; inside a procedure it is the line of the EXEC
  // that counts.
  const bool nested =
      std::holds_alternative<Block>(statement.node) || std::holds_alternative<If>(statement.node);
  try {
    std::visit(Visitor{*this, statement, frame}, statement.node);
  } catch (const SqlError& error) {
    if (nested) throw;
    throw atLine(error, statement);
  }
}

void BatchRunner::select(const Statement& statement, const Frame& frame) {
  auto [plan, values] = state_.ready(frame, statement);
  Session::Lease lease = session_.lease(plan, std::move(values));
  const StatementRow row(lease.get());
  sink_.beginSet(plan->columns);
  while (lease.step() == SQLITE_ROW) sink_.row(row);
  sink_.endSet();
}

void BatchRunner::write(const Statement& statement, const Frame& frame) {
  auto [plan, values] = state_.ready(frame, statement);
  int code = SQLITE_OK;
  {
    Session::Lease lease = session_.lease(plan, values);
    code = lease.step();
  }
  if (code == SQLITE_DONE) {
    sink_.affected(sqlite3_changes64(session_.db()));
    return;
  }
  const TableInfo& table = *state_.catalog().findTable(plan->table);
  const bool keyMoved =
      plan->write == Plan::Write::Update && !plan->sourceSql.empty() && code != SQLITE_CONSTRAINT_NOTNULL;
  if (!keyMoved) throw constraintError(session_, table, plan, values, code);
  sink_.affected(updateKeys(session_, table, *plan, values));
}

void BatchRunner::runIf(const If& content, const Statement& statement, const Frame& frame) {
  if (holds(statement, frame))
    runOne(*content.then, frame);
  else if (content.otherwise)
    runOne(*content.otherwise, frame);
}

bool BatchRunner::holds(const Statement& statement, const Frame& frame) {
  try {
    auto [plan, values] = state_.ready(frame, statement);
    Session::Lease lease = session_.lease(plan, std::move(values));
    return lease.step() == SQLITE_ROW && sqlite3_column_int(lease.get(), 0) != 0;
  } catch (const SqlError& error) {
    throw atLine(error, statement);
  }
}

void BatchRunner::raise(const RaiseError& raise, const Statement& statement, const Frame& frame) {
  const auto whole = [&](const ExpressionPtr& expression) {
    const TypedValue typed = constantValue(*expression, frame);
    const Value number = convertValue(typed.value, typed.type, {Kind::Int});
    return isNull(number) ? 0 : static_cast<int>(std::get<std::int64_t>(number));
  };
  const TypedValue message = constantValue(*raise.message, frame);
  if (message.type.kind != Kind::Text && message.type.kind != Kind::Null)
    failUnsupported("RAISERROR 的消息号");
  std::vector<Value> arguments;
  for (const ExpressionPtr& argument : raise.arguments)
    arguments.push_back(constantValue(*argument, frame).value);
  Diagnostic diagnostic{.number = raisedError,
                        .severity = std::clamp(whole(raise.severity), 0, highestSeverity),
                        .state = whole(raise.state),
                        .line = static_cast<int>(statement.position.line),
                        .text = {}};
  diagnostic.text =
      isNull(message.value) ? std::string() : formatMessage(std::get<std::string>(message.value), arguments);
  const bool ends = diagnostic.severity >= leastErrorSeverity && !state_.raisedErrorsGoOn();
  if (ends) throw SqlError(std::move(diagnostic));
  sink_.notice(diagnostic);
}

void BatchRunner::print(const Print& print, const Frame& frame) {
  const TypedValue typed = constantValue(*print.message, frame);
  const Value text = convertValue(typed.value, typed.type, {Kind::Text});
  sink_.notice({.number = 0,
                .severity = 0,
                .state = 1,
                .line = 1,
                .text = isNull(text) ? "" : std::get<std::string>(text)});
}

// Options that say what holds here anyway, or that nobody can see, are taken; the others are refused.
void BatchRunner::setOption(const SetOption& option) {
  static constexpr std::array<std::string_view, 3> harmless{"nocount", "xact_abort", "arithabort"};
  static constexpr std::array<std::string_view, 7> alwaysOn{
      "ansi_nulls",        "quoted_identifier", "ansi_warnings", "ansi_padding", "concat_null_yields_null",
      "ansi_null_dflt_on", "ansi_defaults"};
  const auto named = [&](std::string_view name) { return sameName(name, option.option.text); };
  if (std::any_of(harmless.begin(), harmless.end(), named)) return;
  if (option.on && std::any_of(alwaysOn.begin(), alwaysOn.end(), named)) return;
  if (named("identity_insert")) {
    setIdentityInsert(option);
    return;
  }
  failUnsupported(concat("SET ", option.option.text, option.on ? " ON" : " OFF"));
}

void BatchRunner::setIdentityInsert(const SetOption& option) {
  const Name& name = option.table.name;
  if (permission_ != Permission::Owner) fail(262, "在数据库中拒绝了 SET IDENTITY_INSERT 权限。", 14);
  const TableInfo* table = state_.catalog().findTable(name.text);
  if (table == nullptr) fail(208, concat("对象名 '", name.text, "' 无效。"));
  const std::string& present = state_.identityInsert();
  if (std::none_of(table->columns.begin(), table->columns.end(),
                   [](const auto& column) { return column.identity; }))
    fail(8106, concat("表 '", name.text, "' 没有标识列，无法执行 SET 操作。"));
  if (option.on && !present.empty() && !sameName(present, table->name))
    fail(8107,
         concat("表 '", present, "' 的 IDENTITY_INSERT 已经为 ON，不能再为表 '", table->name, "' 设置。"));
  if (option.on)
    state_.setIdentityInsert(table->name);
  else if (sameName(present, table->name))
    state_.setIdentityInsert({});
}

void BatchRunner::define(const Statement& statement, std::string_view word) {
  if (permission_ != Permission::Owner) fail(262, concat("在数据库中拒绝了 ", word, " 权限。"), 14);
  runDefinition(session_, state_.catalog(), statement);
  state_.refresh(session_);
}

}  // namespace goodsbook::engine
