#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/engine/support/session.h"

namespace goodsbook::engine::test {

// A row of a table test: a batch, a query after it, what the query gives.
struct StatementRow {
  const char* name;
  std::string batch;              // what changes the data; empty where the query is what a screen sends
  std::string query;              // {{query}} stands for the value of that query, in all three
  std::vector<std::string> rows;  // of the query, cells parted by |
  int error = 0;                  // of the batch, which then leaves nothing behind
};

void PrintTo(const StatementRow& row, std::ostream* out);

// Runs the batch and compares what the query gives then.
void expectAnswer(Session& session, const StatementRow& row);

}  // namespace goodsbook::engine::test
