#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "host/data/record_set.h"
#include "tests/host/data/sample_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using test::column;
using test::loadUnits;
using test::MemoryRow;
using test::null;
using test::num;
using test::txt;

struct OneColumn {
  engine::Type type;
  std::vector<test::Value> values;
};

void load(RecordSet& rows, const OneColumn& data) {
  const std::vector<engine::Column> columns = {{"v", data.type, 0}, {"i", engine::Type::Integer, 0}};
  rows.beginLoad(columns);
  std::int64_t i = 0;
  for (const auto& value : data.values) rows.appendLoaded(MemoryRow({value, i++}));
  rows.endLoad();
}

struct Sorted {
  const char* name;
  OneColumn data;
  const char* ascending;  // numbers of the rows in their loaded order
  const char* descending;
};

TEST(RecordSetOrder, SortsByTypedKeysAndIsStable) {
  const std::vector<Sorted> cases = {
      {"integers, also negative ones",
       {engine::Type::Integer, {num(3), num(-5), num(0), num(3)}},
       "1 2 0 3",
       "0 3 2 1"},
      {"floats, also negative ones",
       {engine::Type::Float, {0.5, -1.5, -0.0, 0.0, 1e300}},
       "1 2 3 0 4",
       "4 0 2 3 1"},
      {"nulls come first", {engine::Type::Integer, {num(1), null, num(-1), null}}, "1 3 2 0", "0 2 1 3"},
      {"text without regard to case",
       {engine::Type::Text, {txt("b"), txt("A"), txt("B"), txt("a")}},
       "1 3 0 2",
       "0 2 1 3"},
      {"full-width letters are letters",
       {engine::Type::Text, {txt("ｂ"), txt("a"), txt("B")}},
       "1 0 2",
       "0 2 1"},
      {"blanks at the end do not count",
       {engine::Type::Text, {txt("a "), txt("a"), txt(" a")}},
       "2 0 1",
       "0 1 2"},
      {"a text before what it begins",
       {engine::Type::Text, {txt("abc"), txt("ab"), txt("")}},
       "2 1 0",
       "0 1 2"},
      {"texts that agree in their first letters",
       {engine::Type::Text,
        {txt("SP00000000000003"), txt("SP00000000000001"), txt("sp00000000000002"), txt("SP000000")}},
       "3 1 2 0",
       "0 2 1 3"},
      {"digits as text", {engine::Type::Text, {txt("10"), txt("9"), txt("1")}}, "2 0 1", "1 0 2"},
  };
  for (const auto& sorted : cases) {
    SCOPED_TRACE(sorted.name);
    RecordSet rows;
    load(rows, sorted.data);
    rows.setSort(u"v"_s, false);
    EXPECT_EQ(column(rows, u"i"_s), QString::fromLatin1(sorted.ascending));
    rows.setSort(u"V"_s, true);
    EXPECT_EQ(column(rows, u"i"_s), QString::fromLatin1(sorted.descending));
    rows.setSort({}, false);
    EXPECT_EQ(rows.valueAt(1, 1), QVariant(qlonglong{1}));
  }
}

// Values of each kind that a packed column may hold, at a size that fills many stretches of it.
class LargeSets : public ::testing::TestWithParam<const char*> {
 protected:
  static constexpr int count = 100'000;

  static OneColumn make(const std::string& kind) {
    std::mt19937 random(7);
    OneColumn data{engine::Type::Text, {}};
    const auto pick = [&random](int below) {
      return static_cast<int>(random() % static_cast<unsigned>(below));
    };
    if (kind == "integers" || kind == "small integers") data.type = engine::Type::Integer;
    if (kind == "prices") data.type = engine::Type::Float;
    for (int i = 0; i < count; ++i) {
      if (pick(50) == 0) {
        data.values.emplace_back(null);
      } else if (kind == "integers") {
        data.values.emplace_back(static_cast<std::int64_t>(random() >> 1) *
                                     static_cast<std::int64_t>(random() >> 1) -
                                 (1LL << 40));
      } else if (kind == "small integers") {
        data.values.emplace_back(std::int64_t{pick(200)} - 100);
      } else if (kind == "prices") {
        data.values.emplace_back(pick(100'000) / 100.0 - 50);
      } else if (kind == "codes") {
        data.values.emplace_back("SP0000000" + std::to_string(pick(1'000'000)));
      } else if (kind == "classes") {
        data.values.emplace_back("类" + std::to_string(pick(40)));
      } else {
        data.values.emplace_back(
            std::string(static_cast<std::size_t>(pick(90)), static_cast<char>('a' + pick(3))));
      }
    }
    return data;
  }

  // The same order by plain means.
  static std::vector<std::int64_t> expectedOrder(const OneColumn& data) {
    std::vector<std::int64_t> order(data.values.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](std::int64_t a, std::int64_t b) {
      return data.values[static_cast<std::size_t>(a)] < data.values[static_cast<std::size_t>(b)];
    });
    return order;
  }
};

TEST_P(LargeSets, GiveBackEveryValueAndSortLikeAPlainStableSort) {
  const OneColumn data = make(GetParam());
  RecordSet rows;
  load(rows, data);
  ASSERT_EQ(rows.rowCount(), count);
  for (int row = 0; row < count; ++row) {
    const auto& value = data.values[static_cast<std::size_t>(row)];
    const QVariant found = rows.valueAt(row, 0);
    bool same = false;
    switch (value.index()) {
      case 0:
        same = !found.isValid();
        break;
      case 1:
        same = found.toLongLong() == std::get<1>(value);
        break;
      case 2:
        same = found.toDouble() == std::get<2>(value);
        break;
      default:
        same = found.toString().toStdString() == std::get<3>(value);
        break;
    }
    ASSERT_TRUE(same) << "row " << row;
  }
  rows.setSort(u"v"_s, false);
  const auto expected = expectedOrder(data);
  for (int row = 0; row < count; ++row) {
    ASSERT_EQ(rows.valueAt(row, 1).toLongLong(), expected[static_cast<std::size_t>(row)]) << "place " << row;
  }
}

INSTANTIATE_TEST_SUITE_P(RecordSetOrder, LargeSets,
                         ::testing::Values("integers", "small integers", "prices", "codes", "classes",
                                           "long texts"));

struct Filtered {
  const char* filter;
  const char* expected;  // ids of the rows that pass; nothing where the filter cannot be read
};

TEST(RecordSetOrder, FiltersAreRead) {
  const std::vector<engine::Column> columns = {
      {"wl_id", engine::Type::Text, 20}, {"tm", engine::Type::Text, 30},     {"sl", engine::Type::Float, 0},
      {"T", engine::Type::Bit, 0},       {"day", engine::Type::DateTime, 0}, {"pict", engine::Type::Blob, 0}};
  constexpr std::int64_t day = 86'400'000;
  const std::vector<MemoryRow> data = {
      MemoryRow({txt("a"), txt("A "), 1.0, num(1), num(0), null}),
      MemoryRow({txt("b"), txt("x"), 2.5, num(0), num(day), null}),
      MemoryRow({txt("c"), null, null, null, null, null}),
      MemoryRow({txt("it's"), txt("it's"), -1.0, num(1), num(2 * day), null}),
  };
  const std::vector<Filtered> cases = {
      {"wl_id=tm", "a it's"},
      {"WL_ID = TM", "a it's"},
      {"wl_id<>tm", "b"},
      {"wl_id='A'", "a"},
      {"'A'=wl_id", "a"},
      {"wl_id='it''s'", "it's"},
      {"[wl_id]='b' or [sl] < 0", "b it's"},
      {"sl>=1 and sl<=2.5", "a b"},
      {"sl<>1", "b it's"},
      {"sl=-1", "it's"},
      {"sl='2.5'", "b"},
      {"T=1", "a it's"},
      {"T=true", nullptr},
      {"t='true'", "a it's"},
      {"T=1 and (wl_id='a' or wl_id='b')", "a"},
      {"not T=1", "b c"},
      {"tm is null", "c"},
      {"tm is not null and not wl_id='b'", "a it's"},
      {"day>'1900-01-01'", "b it's"},
      {"day='1900-01-02'", "b"},
      {"wl_id like '_t%'", "it's"},
      {"wl_id not like '%''%'", "a b c"},
      {"wl_id=", nullptr},
      {"wl_id='open", nullptr},
      {"nothing=1", nullptr},
      {"sl='abc'", nullptr},
      {"wl_id=tm and", nullptr},
      {"wl_id tm", nullptr},
      {"(wl_id=tm", nullptr},
      {"wl_id=tm)", nullptr},
      {"wl_id=sl", nullptr},
      {"pict=pict", nullptr},
      {"sl like '1%'", nullptr},
      {"=", nullptr},
  };
  for (const auto& filtered : cases) {
    SCOPED_TRACE(filtered.filter);
    RecordSet rows;
    rows.beginLoad(columns);
    for (const auto& row : data) rows.appendLoaded(row);
    rows.endLoad();
    rows.setFiltered(true);
    const bool readable = rows.setFilter(QString::fromUtf8(filtered.filter));
    EXPECT_EQ(readable, filtered.expected != nullptr);
    EXPECT_EQ(column(rows, u"wl_id"_s),
              filtered.expected ? QString::fromUtf8(filtered.expected) : u"a b c it's"_s);
  }
}

TEST(RecordSetOrder, DeepParenthesesAreRefusedNotFollowed) {
  RecordSet rows;
  loadUnits(rows, {"A"});
  EXPECT_FALSE(rows.setFilter(QString(100'000, u'(') + u"n=1"_s));
}

TEST(RecordSetOrder, UnreadableFilterChangesNothing) {
  RecordSet rows;
  loadUnits(rows, {"A", "B"});
  ASSERT_TRUE(rows.setFilter(u"dw_id='B'"_s));
  rows.setFiltered(true);
  EXPECT_FALSE(rows.setFilter(u"dw_id="_s));
  EXPECT_EQ(rows.filter(), u"dw_id='B'"_s);
  EXPECT_EQ(column(rows, u"dw_id"_s), u"B"_s);
  EXPECT_TRUE(rows.setFilter({}));
  EXPECT_EQ(rows.rowCount(), 2);
}

TEST(RecordSetOrder, FilterKeepsTheCurrentRowWhereItCan) {
  RecordSet rows;
  loadUnits(rows, {"A", "B", "C"});
  rows.setFiltered(true);
  rows.last();
  ASSERT_TRUE(rows.setFilter(u"dw_id<>'A'"_s));
  EXPECT_EQ(rows.currentRow(), 1);
  int scrolledTo = -2;
  QObject::connect(&rows, &RecordSet::afterScroll, &rows, [&](int row) { scrolledTo = row; });
  ASSERT_TRUE(rows.setFilter(u"dw_id='B'"_s));
  EXPECT_EQ(rows.currentRow(), 0);
  EXPECT_EQ(scrolledTo, 0);
  ASSERT_TRUE(rows.setFilter(u"dw_id='X'"_s));
  EXPECT_EQ(scrolledTo, -1);
  EXPECT_TRUE(rows.eof());
}

TEST(RecordSetOrder, PostedRowThatNoLongerPassesLeavesTheView) {
  RecordSet rows;
  loadUnits(rows, {"A", "B", "C", "D"});
  rows.setFiltered(true);
  ASSERT_TRUE(rows.setFilter(u"n<>2"_s));
  QString walked;
  for (rows.first(); !rows.eof(); rows.next()) {
    walked += rows.text(u"dw_id"_s);
    rows.setValue(u"n"_s, rows.text(u"dw_id"_s) == u"C" ? 9 : 2);
  }
  EXPECT_EQ(walked, u"ACD"_s);
  EXPECT_EQ(column(rows, u"dw_id"_s), u"C"_s);
  rows.setFiltered(false);
  EXPECT_EQ(column(rows, u"n"_s), u"2 2 9 2"_s);
}

TEST(RecordSetOrder, SortAndFilterOutlastANewLoad) {
  RecordSet rows;
  loadUnits(rows, {"A", "B"});
  rows.setSort(u"dw_id"_s, true);
  ASSERT_TRUE(rows.setFilter(u"dw_id<>'B'"_s));
  rows.setFiltered(true);
  loadUnits(rows, {"A", "B", "C"});
  EXPECT_EQ(column(rows, u"dw_id"_s), u"C A"_s);
  EXPECT_EQ(rows.currentRow(), 0);
}

TEST(RecordSetOrder, RowsAddedToASortedSetStandAtTheEndAndInTheLoadedOrder) {
  RecordSet rows;
  loadUnits(rows, {"B", "A", "C"});
  rows.setSort(u"dw_id"_s, false);
  rows.append();
  rows.setValue(u"dw_id"_s, u"0"_s);
  rows.post();
  rows.first();
  rows.insert();
  rows.setValue(u"dw_id"_s, u"Z"_s);
  rows.post();
  EXPECT_EQ(column(rows, u"dw_id"_s), u"Z A B C 0"_s);
  rows.setSort({}, false);
  EXPECT_EQ(column(rows, u"dw_id"_s), u"B Z A C 0"_s);
}

}  // namespace
}  // namespace goodsbook
