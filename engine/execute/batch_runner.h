#pragma once

#include "engine/execute/engine_state.h"

namespace goodsbook::engine {

// Whether a batch may write: everything but selects, conditions and messages.
bool writes(const std::vector<Statement>& statements);

// Runs the statements of a batch, one after the other, in the transaction that is open.
class BatchRunner {
 public:
  BatchRunner(EngineState& state, Session& session, ResultSink& sink, Permission permission)
      : state_(state), session_(session), sink_(sink), permission_(permission) {}

  void run(const Script& script);

 private:
  void runAll(const std::vector<Statement>& statements, const Frame& frame);
  void runOne(const Statement& statement, const Frame& frame);

  void select(const Statement& statement, const Frame& frame);
  void write(const Statement& statement, const Frame& frame);
  void runIf(const If& content, const Statement& statement, const Frame& frame);
  bool holds(const Statement& conditional, const Frame& frame);
  void raise(const RaiseError& raise, const Statement& statement, const Frame& frame);
  void print(const Print& print, const Frame& frame);
  void setOption(const SetOption& option);
  void setIdentityInsert(const SetOption& option);
  void define(const Statement& statement, std::string_view word);
  void call(const Execute& execute, const Frame& frame);
  std::vector<Value> arguments(const ProcedureInfo& procedure, const Execute& execute, const Frame& frame);

  EngineState& state_;
  Session& session_;
  ResultSink& sink_;
  Permission permission_;
};

}  // namespace goodsbook::engine
