#include "host/data/progressive_load.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSignalSpy>

#include "host/data/errors.h"
#include "tests/host/data/sample_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using test::MemoryRow;

// Numbers 0, 1, 2, …; fails behind `good` rows where that is fewer than `count`.
class Numbers : public engine::Cursor {
 public:
  explicit Numbers(int count, int good = -1) : count_(count), good_(good < 0 ? count : good) {}

  std::span<const engine::Column> columns() const override { return columns_; }
  bool next() override {
    if (at_ == good_ && good_ < count_) throw EDatabaseError(3617, 16, 1, 1, u"中断"_s);
    if (at_ == count_) return false;
    row_ = MemoryRow({std::int64_t{at_++}});
    return true;
  }
  const engine::Row& row() const override { return row_; }

 private:
  std::vector<engine::Column> columns_ = {{"n", engine::Type::Integer, 0}};
  MemoryRow row_{{}};
  int count_;
  int good_;
  int at_ = 0;
};

void runUntilIdle(const ProgressiveLoad& load) {
  while (load.isRunning()) QCoreApplication::processEvents();
}

TEST(ProgressiveLoad, ShowsTheFirstRowsAtOnceAndTheRestInTime) {
  RecordSet rows;
  ProgressiveLoad load(rows);
  QSignalSpy progress(&load, &ProgressiveLoad::progress);
  QSignalSpy finished(&load, &ProgressiveLoad::finished);
  load.start(std::make_unique<Numbers>(50'000));
  EXPECT_TRUE(load.isRunning());
  EXPECT_TRUE(rows.isLoading());
  EXPECT_EQ(rows.rowCount(), 200);
  EXPECT_EQ(rows.currentRow(), 0);
  rows.moveTo(100);
  runUntilIdle(load);
  EXPECT_EQ(rows.rowCount(), 50'000);
  EXPECT_EQ(rows.currentRow(), 100);
  EXPECT_EQ(rows.valueAt(49'999, 0), QVariant(qlonglong{49'999}));
  EXPECT_FALSE(rows.isLoading());
  EXPECT_EQ(finished.count(), 1);
  EXPECT_EQ(progress.last()[0].toInt(), 50'000);
}

TEST(ProgressiveLoad, ShortListsAreThereAtOnce) {
  RecordSet rows;
  ProgressiveLoad load(rows);
  QSignalSpy finished(&load, &ProgressiveLoad::finished);
  load.start(std::make_unique<Numbers>(3));
  EXPECT_FALSE(load.isRunning());
  EXPECT_EQ(rows.rowCount(), 3);
  EXPECT_EQ(finished.count(), 1);
  load.start(std::make_unique<Numbers>(0));
  EXPECT_TRUE(rows.isOpen());
  EXPECT_TRUE(rows.isEmpty());
}

TEST(ProgressiveLoad, WhatNeedsAllRowsGetsThem) {
  static constexpr int count = 5000;
  const auto started = [](RecordSet& rows, ProgressiveLoad& load) {
    load.start(std::make_unique<Numbers>(count));
    EXPECT_EQ(rows.rowCount(), 200);
  };
  RecordSet rows;
  ProgressiveLoad load(rows);
  started(rows, load);
  EXPECT_EQ(rows.sum(u"n"_s), count * (count - 1) / 2.0);
  started(rows, load);
  EXPECT_TRUE(rows.locate(u"n"_s, 4321));
  EXPECT_EQ(rows.currentRow(), 4321);
  started(rows, load);
  rows.last();
  EXPECT_EQ(rows.currentRow(), count - 1);
  started(rows, load);
  int walked = 0;
  for (rows.first(); !rows.eof(); rows.next()) ++walked;
  EXPECT_EQ(walked, count);
  started(rows, load);
  rows.append();
  EXPECT_EQ(rows.currentRow(), count);
  rows.cancel();
  started(rows, load);
  rows.setSort(u"n"_s, true);
  EXPECT_EQ(rows.valueAt(0, 0), QVariant(qlonglong{count - 1}));
  started(rows, load);
  EXPECT_EQ(rows.valueAt(0, 0), QVariant(qlonglong{0})) << "unsorted while rows still come";
  rows.waitForAll();
  EXPECT_EQ(rows.valueAt(0, 0), QVariant(qlonglong{count - 1}));
}

TEST(ProgressiveLoad, FilterHoldsForRowsThatComeLater) {
  RecordSet rows;
  ProgressiveLoad load(rows);
  load.start(std::make_unique<Numbers>(1000));
  ASSERT_TRUE(rows.setFilter(u"n>=990"_s));
  rows.setFiltered(true);
  EXPECT_EQ(rows.currentRow(), -1);
  runUntilIdle(load);
  EXPECT_EQ(rows.rowCount(), 10);
  EXPECT_EQ(rows.currentRow(), 0);
}

TEST(ProgressiveLoad, RowsEditedAndRemovedMeanwhileStayAsTheyAre) {
  RecordSet rows;
  ProgressiveLoad load(rows);
  load.start(std::make_unique<Numbers>(1000));
  rows.setValue(u"n"_s, -7);
  rows.post();
  rows.moveTo(1);
  rows.remove();
  runUntilIdle(load);
  EXPECT_EQ(rows.rowCount(), 999);
  EXPECT_EQ(rows.valueAt(0, 0), QVariant(qlonglong{-7}));
  EXPECT_EQ(rows.valueAt(1, 0), QVariant(qlonglong{2}));
  EXPECT_EQ(rows.valueAt(998, 0), QVariant(qlonglong{999}));
  rows.CancelUpdates();
  EXPECT_EQ(rows.rowCount(), 1000);
  EXPECT_EQ(rows.valueAt(1, 0), QVariant(qlonglong{1}));
}

TEST(ProgressiveLoad, NewContentsEndAnOlderLoad) {
  RecordSet rows;
  ProgressiveLoad older(rows);
  ProgressiveLoad newer(rows);
  older.start(std::make_unique<Numbers>(1000));
  newer.start(std::make_unique<Numbers>(300));
  runUntilIdle(older);
  runUntilIdle(newer);
  EXPECT_EQ(rows.rowCount(), 300);
  older.start(std::make_unique<Numbers>(1000));
  rows.clear();
  runUntilIdle(older);
  EXPECT_EQ(rows.rowCount(), 0);
  older.start(std::make_unique<Numbers>(1000));
  older.start(std::make_unique<Numbers>(500));
  runUntilIdle(older);
  EXPECT_EQ(rows.rowCount(), 500);
}

TEST(ProgressiveLoad, CancelKeepsWhatIsThere) {
  RecordSet rows;
  ProgressiveLoad load(rows);
  QSignalSpy finished(&load, &ProgressiveLoad::finished);
  load.start(std::make_unique<Numbers>(1000));
  load.cancel();
  EXPECT_EQ(rows.rowCount(), 200);
  EXPECT_FALSE(rows.isLoading());
  EXPECT_EQ(finished.count(), 0);
}

TEST(ProgressiveLoad, SomebodyWaitingCanStopAndTheRowsComeAllTheSame) {
  RecordSet rows;
  ProgressiveLoad load(rows);
  int asked = 0;
  load.setWaitHook([&](int) {
    ++asked;
    return false;
  });
  load.start(std::make_unique<Numbers>(50'000'000));
  EXPECT_THROW(rows.waitForAll(), EAbort);
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(load.isRunning());
  const int before = rows.rowCount();
  EXPECT_LT(before, 50'000'000);
  while (rows.rowCount() == before) QCoreApplication::processEvents();
  load.cancel();
}

TEST(ProgressiveLoad, FailuresAreTold) {
  RecordSet rows;
  ProgressiveLoad load(rows);
  QSignalSpy failed(&load, &ProgressiveLoad::failed);
  load.start(std::make_unique<Numbers>(5000, 1000));
  runUntilIdle(load);
  ASSERT_EQ(failed.count(), 1);
  EXPECT_EQ(failed[0][0].toString(), u"中断"_s);
  EXPECT_EQ(rows.rowCount(), 1000);
  EXPECT_FALSE(rows.isLoading());
  load.start(std::make_unique<Numbers>(5000, 1000));
  EXPECT_THROW(rows.waitForAll(), EDatabaseError);
  EXPECT_EQ(failed.count(), 2);
  EXPECT_THROW(load.start(std::make_unique<Numbers>(50, 10)), EDatabaseError);
  EXPECT_EQ(rows.rowCount(), 10);
}

TEST(ProgressiveLoad, ARecordSetMayGoFirst) {
  auto rows = std::make_unique<RecordSet>();
  ProgressiveLoad load(*rows);
  load.start(std::make_unique<Numbers>(5000));
  rows.reset();
  runUntilIdle(load);
  EXPECT_FALSE(load.isRunning());
}

}  // namespace
}  // namespace goodsbook
