#pragma once

#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

#include "engine/execute/session.h"
#include "engine/syntax/shape.h"

namespace goodsbook::engine {

// Plans by the shape of their statement, the last used kept.
class PlanCache {
 public:
  // The plan of that shape whose pinned literals have these values, or null.
  PlanPtr find(std::string_view key, const Shape& shape);
  void insert(std::string key, PlanPtr plan);
  void clear();

 private:
  struct Entry {
    std::string key;
    PlanPtr plan;
  };
  std::list<Entry> entries_;
  std::unordered_map<std::string_view, std::list<Entry>::iterator> byKey_;
};

}  // namespace goodsbook::engine
