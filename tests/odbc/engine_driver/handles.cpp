#include "tests/odbc/engine_driver/handles.h"

#include <utility>

namespace goodsbook::engine_driver {
namespace {

constexpr int leastErrorSeverity = 11;

std::u16string stateOf(const engine::Diagnostic& message) {
  if (message.severity < leastErrorSeverity) return u"01000";
  switch (message.number) {
    case 17:
      return u"08001";
    case 10054:
      return u"08S01";
    case 208:
      return u"42S02";
    case 207:
      return u"42S22";
    case 515:
    case 2601:
    case 2627:
      return u"23000";
    case 1205:
      return u"40001";
    case 3617:
      return u"HY008";
    default:
      return u"42000";
  }
}

}  // namespace

void Handle::tell(const engine::Diagnostic& message) {
  records.push_back({stateOf(message), message});
}

void Handle::tell(std::u16string state, std::string text) {
  records.push_back({std::move(state), {.text = std::move(text)}});
}

const Result* Statement::rows() const {
  const Result* at = result();
  return at != nullptr && at->kind == Result::Kind::Rows ? at : nullptr;
}

void Statement::close() {
  results.clear();
  current = 0;
  nextRow = 0;
  takenBytes.clear();
}

SQLRETURN Statement::arriveAt(std::size_t index) {
  current = index;
  nextRow = 0;
  takenBytes.clear();
  const Result* at = result();
  if (at == nullptr) return SQL_NO_DATA;
  switch (at->kind) {
    case Result::Kind::Count:
      // A first statement that meets no row is told as one without data.
      return index == 0 && at->count == 0 ? SQL_NO_DATA : SQL_SUCCESS;
    case Result::Kind::Rows:
      return SQL_SUCCESS;
    case Result::Kind::Message:
      tell(at->message);
      return SQL_SUCCESS_WITH_INFO;
    case Result::Kind::Error:
      tell(at->message);
      return SQL_ERROR;
  }
  return SQL_ERROR;
}

}  // namespace goodsbook::engine_driver
