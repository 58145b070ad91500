#include <gtest/gtest.h>

#include <string>

#include "engine/error.h"
#include "engine/syntax/parser.h"
#include "engine/syntax/printer.h"
#include "engine/syntax/shape.h"
#include "tests/engine/support/mutator.h"
#include "tests/engine/support/tree_dump.h"

namespace goodsbook::engine {
namespace {

TEST(MutationTest, DamagedBatchesAreReadOrRefused) {
  test::Mutator mutator(test::recordedBatches());
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
