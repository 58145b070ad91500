#pragma once

#include <optional>
#include <string>
#include <vector>

// The recorded answers of a server: data/cases.jsonl, whose first line explains it, and data/prelude.sql, its
// tables.
namespace goodsbook::engine::test {

using CaseValue = std::optional<std::string>;  // no value is NULL

struct CaseSet {
  std::string query;               // of a state after the batch; empty for a set of the batch itself
  std::vector<CaseValue> columns;  // no value: not compared
  std::vector<std::string> types;
  std::vector<std::vector<CaseValue>> rows;
};

struct CaseError {
  std::optional<int> number;
  std::optional<int> documented;
  int severity = 0;
  std::string kind;
};

struct Case {
  std::string name;
  std::vector<std::string> setup;
  std::string batch;
  std::vector<CaseSet> sets;
  std::vector<long long> counts;
  std::optional<CaseError> error;
  std::vector<CaseSet> after;
  bool ordered = false;
  bool subset = false;
  bool beyond = false;
};

const std::vector<Case>& recordedCases();
const std::string& preludeScript();

// A batch with {{query}} in it, each query replaced by a number.
std::string withoutQueries(std::string batch);

}  // namespace goodsbook::engine::test
