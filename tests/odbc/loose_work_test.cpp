#include "host/data/odbc/loose_work.h"

#include <gtest/gtest.h>

#include <stdexcept>

// Work in a thread that nobody has to wait for.
namespace goodsbook::test {
namespace {

TEST(LooseWorkTest, HasLetGoOfWhatItUsesWhenItsResultIsThere) {
  constexpr int rounds = 500;  // a thread that lets go too late is mostly quick enough
  for (int i = 0; i < rounds; ++i) {
    const auto used = std::make_shared<int>(i);
    ASSERT_EQ(startLoose([used] { return *used; }).get(), i);
    ASSERT_EQ(used.use_count(), 1) << "in round " << i;
  }
}

TEST(LooseWorkTest, TellsWhatItThrows) {
  EXPECT_THROW(startLoose([] { throw std::runtime_error("no"); }).get(), std::runtime_error);
}

TEST(LooseWorkTest, GoesOnWithoutTheOneWhoStartedItAndIsCounted) {
  std::promise<void> gate;
  startLoose([opened = gate.get_future()] { opened.wait(); });
  EXPECT_FALSE(looseWorkEnds(std::chrono::milliseconds(20)));
  gate.set_value();
  EXPECT_TRUE(looseWorkEnds(std::chrono::seconds(10)));
}

}  // namespace
}  // namespace goodsbook::test
