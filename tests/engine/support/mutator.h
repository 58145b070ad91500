#pragma once

#include <random>
#include <string>
#include <vector>

namespace goodsbook::engine::test {

// Damages statements in a way that is the same in every run.
class Mutator {
 public:
  explicit Mutator(std::vector<std::string> batches) : batches_(std::move(batches)) {}

  // One of the batches with one to four edits of its letters.
  std::string next();
  // One of the batches with one to four words put in place of others of their kind: it mostly still is T-SQL.
  std::string nextInOtherWords();
  // One of the batches with one or two values in place of others.
  std::string nextWithOtherValues();

 private:
  int below(std::size_t limit) { return static_cast<int>(random_() % limit); }
  const std::string& any(const std::vector<std::string>& texts);
  void edit(std::string& batch);
  void exchangeWord(std::string& batch);

  std::vector<std::string> batches_;
  std::mt19937 random_{20'261'120};
};

// The batches of the recorded cases.
std::vector<std::string> recordedBatches();

}  // namespace goodsbook::engine::test
