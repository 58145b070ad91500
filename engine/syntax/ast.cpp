#include "engine/syntax/ast.h"

namespace goodsbook::engine {
namespace {

template <class... Nodes>
bool holdsOneOf(const Expression& expression) noexcept {
  return (std::holds_alternative<Nodes>(expression.node) || ...);
}

}  // namespace

bool isCondition(const Expression& expression) noexcept {
  return holdsOneOf<Comparison, Logical, Not, Like, InList, InQuery, Between, IsNull, Exists>(expression);
}

}  // namespace goodsbook::engine
