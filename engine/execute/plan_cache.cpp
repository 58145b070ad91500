#include "engine/execute/plan_cache.h"

#include <algorithm>

namespace goodsbook::engine {

PlanPtr PlanCache::find(std::string_view key, const Shape& shape) {
  const auto found = byKey_.find(key);
  if (found == byKey_.end()) return nullptr;
  const PlanPtr& plan = found->second->plan;
  const bool fits = std::all_of(plan->pins.begin(), plan->pins.end(), [&](const Pin& pin) {
    return shape.values[static_cast<std::size_t>(pin.literal)].value == pin.value;
  });
  if (!fits) return nullptr;
  entries_.splice(entries_.begin(), entries_, found->second);
  return plan;
}

void PlanCache::insert(std::string key, PlanPtr plan) {
  if (const auto found = byKey_.find(key); found != byKey_.end()) {
    found->second->plan = std::move(plan);
    return;
  }
  entries_.push_front({std::move(key), std::move(plan)});
  byKey_[entries_.front().key] = entries_.begin();
  if (entries_.size() <= keptStatements) return;
  byKey_.erase(entries_.back().key);
  entries_.pop_back();
}

void PlanCache::clear() {
  byKey_.clear();
  entries_.clear();
}

}  // namespace goodsbook::engine
