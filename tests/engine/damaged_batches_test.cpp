#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/engine/support/mutator.h"
#include "tests/engine/support/session.h"

namespace goodsbook::engine::test {
namespace {

constexpr int internalError = 50001;

TEST(DamagedBatchesTest, RunOrFailWithAnErrorOfTheirOwn) {
  Session session;
  session.setUp(std::array<std::string_view, 2>{
      "insert into D1003 values('01','瓶','P',''),('02','箱','X',null)",
      "insert into D1801(WL_ID,WL_NAME,DJ,BDATE) values('A001','可乐',1.5,'2026-01-05'),('A002',null,null,null)"});
  Mutator mutator(recordedBatches());
  int run = 0;
  int failed = 0;
  for (int i = 0; i < 6'000; ++i) {
    const std::string batch = i % 4 == 0 ? mutator.next() : mutator.nextInOtherWords();
    session.connection().begin();
    const Outcome outcome = session.run(batch);
    if (!outcome.error) {
      ++run;
      session.connection().rollback();
      continue;
    }
    ++failed;
    EXPECT_NE(outcome.error->number, internalError) << batch << "\n" << outcome.error->text;
    EXPECT_GE(outcome.error->severity, 11) << batch;
    EXPECT_FALSE(session.connection().inTransaction()) << batch;
  }
  EXPECT_GT(run, 300);
  EXPECT_GT(failed, 300);
  session.connection().checkIntegrity();
}

}  // namespace
}  // namespace goodsbook::engine::test
