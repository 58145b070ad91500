#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "engine/catalog/catalog.h"
#include "engine/connection.h"
#include "engine/execute/parameters.h"
#include "engine/execute/plan_cache.h"
#include "engine/execute/session.h"

namespace goodsbook::engine {

// What a statement is run in: the procedure around it, if any.
struct Frame {
  const Script* script = nullptr;
  const ProcedureInfo* procedure = nullptr;  // null outside of procedures
  std::vector<Value> variables{};
  int depth = 0;
};

// A statement ready to run: its plan and the values of this run.
struct ReadyStatement {
  PlanPtr plan{};
  std::vector<Value> values{};
};

// What all batches and cursors of a connection share: the catalogue, the plans, the clock.
class EngineState {
 public:
  explicit EngineState(const Options& options) : options_(options) {}

  // Reads the definitions again when another connection or this one has changed them. Inside a transaction.
  void refresh(Session& session);

  // After a rollback: definitions that were undone must not be taken for later ones with the same version
  // number.
  void forgetUndone(Session& session) noexcept;

  const Catalog& catalog() const { return *catalog_; }
  // Keeps what is found in the catalogue alive while statements may change it.
  std::shared_ptr<const Catalog> hold() const { return catalog_; }
  // The table whose identity column takes given values, empty for none; of this connection.
  void setIdentityInsert(std::string_view table) { identityInsert_ = table; }
  const std::string& identityInsert() const { return identityInsert_; }

  bool raisedErrorsGoOn() const { return options_.raisedErrorsGoOn; }

  ReadyStatement ready(const Frame& frame, const Statement& statement);
  std::int64_t boundStatements() const { return bound_; }

 private:
  PlanPtr planFor(const Frame& frame, const Statement& statement);
  std::int64_t now() const;

  const Options& options_;
  std::shared_ptr<const Catalog> catalog_;
  PlanCache plans_;
  Shape shape_;
  std::string key_;
  std::string identityInsert_;
  std::int64_t bound_ = 0;
};

}  // namespace goodsbook::engine
