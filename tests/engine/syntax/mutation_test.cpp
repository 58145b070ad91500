#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "engine/error.h"
#include "engine/syntax/parser.h"
#include "engine/syntax/printer.h"
#include "engine/syntax/shape.h"
#include "tests/engine/support/cases.h"
#include "tests/engine/support/tree_dump.h"

namespace goodsbook::engine {
namespace {

// Damages statements in a way that is the same in every run.
class Mutator {
 public:
  explicit Mutator(const std::vector<std::string>& batches) : batches_(batches) {}

  std::string next() {
    std::string batch = any(batches_);
    for (int edits = 1 + below(4); edits > 0 && !batch.empty(); --edits) edit(batch);
    return batch;
  }

 private:
  int below(std::size_t limit) { return static_cast<int>(random_() % limit); }
  const std::string& any(const std::vector<std::string>& texts) {
    return texts[static_cast<std::size_t>(below(texts.size()))];
  }

  void edit(std::string& batch) {
    static const std::vector<std::string> pieces{
        "'",          "''",      "(",      ")",      "[",        "]",         "\"",      ",",        ";",
        "--",         "/*",      "*/",     "N'",     "0x",       "1e",        ".",       "@",        "@@a",
        " from ",     " as ",    " on ",   " join ", " end ",    " if ",      " begin ", " select ", " case ",
        " not ",      " union ", " null ", "\r\n",   "中",       "\xE4",      "\x01",    "5",        "5where",
        " order by ", "+=",      "!<",     "*",      " exists(", " default ", " values "};
    const auto at = static_cast<std::size_t>(below(batch.size()));
    const auto length = static_cast<std::size_t>(below(12));
    switch (below(5)) {
      case 0:
        batch.erase(at, length);
        break;
      case 1:
        batch.insert(at, any(pieces));
        break;
      case 2:
        batch.replace(at, 1, any(pieces));
        break;
      case 3: {
        const std::string& other = any(batches_);
        if (!other.empty()) batch.insert(at, other.substr(static_cast<std::size_t>(below(other.size())), 30));
        break;
      }
      default:
        batch.insert(at, batch.substr(static_cast<std::size_t>(below(batch.size())), length));
    }
  }

  const std::vector<std::string>& batches_;
  std::mt19937 random_{20'261'120};
};

TEST(MutationTest, DamagedBatchesAreReadOrRefused) {
  std::vector<std::string> batches;
  for (const test::Case& recorded : test::recordedCases())
    batches.push_back(test::withoutQueries(recorded.batch));
  Mutator mutator(batches);
  int read = 0;
  int refused = 0;
  Shape shape;
  for (int i = 0; i < 20'000; ++i) {
    const std::string batch = mutator.next();
    try {
      const Script tree = parse(batch);
      ++read;
      for (const Statement& statement : tree.statements) shapeOf(tree, statement, shape);
      const std::string printed = print(tree);
      ASSERT_EQ(test::dump(parse(printed)), test::dump(tree)) << batch << "\n" << printed;
    } catch (const SqlError& error) {
      ++refused;
      ASSERT_EQ(error.diagnostic().severity, 15) << batch;
      ASSERT_FALSE(error.diagnostic().text.empty()) << batch;
    }
  }
  EXPECT_GT(read, 1'000);
  EXPECT_GT(refused, 1'000);
}

}  // namespace
}  // namespace goodsbook::engine
