#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace goodsbook::engine {

// One failure of a statement, told the way a server tells it.
struct Diagnostic {
  int number = 0;     // the server's message number, 50000 for RAISERROR
  int severity = 16;  // 11 and above end a batch; 10 and below are notices
  int state = 1;
  int line = 1;      // 1-based line of the batch at which the statement starts
  std::string text;  // UTF-8, Chinese, names the table, column or word concerned
};

// Thrown by everything in the engine that fails. Nothing else leaves its public functions but std::bad_alloc.
class SqlError : public std::runtime_error {
 public:
  explicit SqlError(Diagnostic diagnostic)
      : std::runtime_error(diagnostic.text), diagnostic_(std::move(diagnostic)) {}
  const Diagnostic& diagnostic() const noexcept { return diagnostic_; }

 private:
  Diagnostic diagnostic_;
};

}  // namespace goodsbook::engine
