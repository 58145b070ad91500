#include "engine/runtime/failure.h"

#include "engine/syntax/parser.h"

namespace goodsbook::engine {

void fail(int number, std::string text, int severity) {
  throw SqlError({.number = number, .severity = severity, .state = 1, .line = 1, .text = std::move(text)});
}

void failUnsupported(std::string_view what) {
  fail(notSupportedError, concat("此数据库不支持“", what, "”。"));
}

}  // namespace goodsbook::engine
