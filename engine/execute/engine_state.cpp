#include "engine/execute/engine_state.h"

#include "engine/compile/binder.h"
#include "engine/runtime/date_time.h"
#include "engine/runtime/failure.h"

namespace goodsbook::engine {
namespace {

void bind(Binder& binder, const Statement& statement) {
  if (const auto* select = std::get_if<SelectStatement>(&statement.node))
    binder.bindSelect(*select->query);
  else if (const auto* insert = std::get_if<Insert>(&statement.node))
    binder.bindInsert(*insert);
  else if (const auto* update = std::get_if<Update>(&statement.node))
    binder.bindUpdate(*update);
  else if (const auto* remove = std::get_if<Delete>(&statement.node))
    binder.bindDelete(*remove);
  else
    binder.bindIfCondition(*std::get<If>(statement.node).condition);
}

}  // namespace

void EngineState::refresh(Session& session) {
  const CatalogVersion version = session.version();
  if (catalog_ && catalog_->version() == version) return;
  plans_.clear();
  catalog_ = Catalog::load(session.db(), version);
}

void EngineState::forgetUndone(Session& session) noexcept {
  try {
    if (catalog_ && catalog_->version() == session.version()) return;
  } catch (...) {
    // What cannot be read now is read again at the next statement.
  }
  catalog_.reset();
}

std::int64_t EngineState::now() const {
  return options_.now ? options_.now() : localNow();
}

ReadyStatement EngineState::ready(const Frame& frame, const Statement& statement) {
  shapeOf(*frame.script, statement, shape_);
  PlanPtr plan = planFor(frame, statement);
  std::vector<Value> values = parameterValues(*plan, {shape_.values, frame.variables, now()});
  return {std::move(plan), std::move(values)};
}

PlanPtr EngineState::planFor(const Frame& frame, const Statement& statement) {
  // The parameters of a procedure have types of their own: the same words mean something else in another one.
  key_ = frame.procedure == nullptr ? std::string() : concat(frame.procedure->name, "\n");
  // An insert that names the identity column is a fault at other times.
  const bool given = !identityInsert_.empty() && std::holds_alternative<Insert>(statement.node);
  if (given) key_ += concat("identity of ", identityInsert_, "\n");
  key_ += shape_.text;
  if (PlanPtr found = plans_.find(key_, shape_)) return found;
  auto plan = std::make_shared<Plan>();
  const std::span<const ParameterInfo> variables =
      frame.procedure == nullptr ? std::span<const ParameterInfo>() : frame.procedure->parameters;
  Binder binder(*catalog_, variables, shape_.firstOrdinal, *plan);
  if (given) binder.takeIdentitiesOf(identityInsert_);
  bind(binder, statement);
  ++bound_;
  if (plan->reusable) plans_.insert(key_, plan);
  return plan;
}

}  // namespace goodsbook::engine
