#include "host/data/record_set.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <stdexcept>

#include "host/data/errors.h"
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

// Writes down the signals of a set in the order in which they come.
class Diary : public QObject {
 public:
  explicit Diary(RecordSet& rows) {
    connect(&rows, &RecordSet::beforeScroll, this, [this] { lines += u"leave"_s; });
    connect(&rows, &RecordSet::afterScroll, this, [this](int row) { lines += u"at%1"_s.arg(row); });
    connect(&rows, &RecordSet::newRecord, this, [this] { lines += u"new"_s; });
    connect(&rows, &RecordSet::beforePost, this, [this] { lines += u"posting"_s; });
    connect(&rows, &RecordSet::afterPost, this, [this] { lines += u"posted"_s; });
    connect(&rows, &RecordSet::validateField, this, [this](const QString& name) { lines += name; });
    connect(&rows, &RecordSet::opened, this, [this] { lines += u"opened"_s; });
    connect(&rows, &RecordSet::closed, this, [this] { lines += u"closed"_s; });
  }
  QString take() { return std::exchange(lines, {}).join(u' '); }

  QStringList lines;
};

TEST(RecordSet, StartsClosedAndOpensEmpty) {
  RecordSet rows;
  EXPECT_EQ(rows.state(), RecordSet::State::Closed);
  EXPECT_FALSE(rows.isOpen());
  EXPECT_EQ(rows.rowCount(), 0);
  rows.create({{u"tm"_s, FieldType::Text, 30, u"条码"_s, {}}});
  EXPECT_EQ(rows.state(), RecordSet::State::Browse);
  EXPECT_TRUE(rows.isEmpty());
  EXPECT_TRUE(rows.bof());
  EXPECT_TRUE(rows.eof());
  EXPECT_EQ(rows.currentRow(), -1);
  EXPECT_EQ(rows.text(u"tm"_s), QString());
}

TEST(RecordSet, FieldNamesIgnoreCaseAndUnknownOnesThrow) {
  RecordSet rows;
  loadUnits(rows, {"KG"});
  EXPECT_EQ(rows.fieldIndex(u"DW_ID"_s), 0);
  EXPECT_EQ(rows.fieldIndex(u"nothing"_s), -1);
  EXPECT_EQ(rows.text(u"Dw_Id"_s), u"KG"_s);
  EXPECT_THROW(rows.value(u"nothing"_s), std::invalid_argument);
  EXPECT_THROW(rows.setValue(u"nothing"_s, 1), std::invalid_argument);
}

TEST(RecordSet, EveryColumnGetsANameOfItsOwn) {
  RecordSet rows;
  const std::vector<engine::Column> columns = {{"A"}, {"a"}, {""}, {"A"}};
  rows.beginLoad(columns);
  rows.endLoad();
  QStringList names;
  for (int i = 0; i < rows.fieldCount(); ++i) names += rows.field(i).name;
  EXPECT_EQ(names.join(u' '), u"A a_1 COLUMN3 A_2"_s);
}

TEST(RecordSet, DeclaredFieldsKeepLabelFormatAndSize) {
  RecordSet rows;
  rows.declareFields({{u"ABASE"_s, FieldType::Float, 0, u"转换率"_s, u"0.00"_s},
                      {u"dw_name"_s, FieldType::Text, 4, {}, {}}});
  loadUnits(rows, {"KG"});
  EXPECT_EQ(rows.field(rows.fieldIndex(u"abase"_s)).label, u"转换率"_s);
  EXPECT_EQ(rows.text(u"abase"_s), u"1.50"_s);
  EXPECT_EQ(rows.field(1).size, 4);
  EXPECT_EQ(rows.field(0).size, 2);
}

TEST(RecordSet, ValuesHaveTheTypeOfTheirField) {
  RecordSet rows;
  loadUnits(rows, {"KG"});
  EXPECT_EQ(rows.value(u"dw_id"_s), QVariant(u"KG"_s));
  EXPECT_EQ(rows.value(u"n"_s), QVariant(qlonglong{1}));
  EXPECT_EQ(rows.value(u"abase"_s), QVariant(1.5));
  EXPECT_EQ(rows.value(u"t"_s), QVariant(true));
  EXPECT_EQ(rows.value(u"bdate"_s), QVariant(QDateTime(QDate(1900, 1, 1), QTime(0, 0, 1))));
  EXPECT_EQ(rows.value(u"pict"_s), QVariant(QByteArray("\x01\x00", 2)));
  EXPECT_EQ(rows.text(u"t"_s), u"1"_s);
  EXPECT_EQ(rows.text(u"bdate"_s), u"1900-01-01 00:00:01"_s);
  EXPECT_EQ(rows.integer(u"n"_s), 1);
  EXPECT_EQ(rows.number(u"abase"_s), 1.5);
  EXPECT_TRUE(rows.flag(u"t"_s));
}

TEST(RecordSet, NullsAreEmptyZeroAndFalse) {
  RecordSet rows;
  rows.beginLoad(test::unitColumns());
  rows.appendLoaded(MemoryRow({null, null, null, null, null, null, null}));
  rows.endLoad();
  for (int i = 0; i < rows.fieldCount(); ++i) {
    EXPECT_FALSE(rows.valueAt(0, i).isValid());
    EXPECT_EQ(rows.textAt(0, i), QString());
    EXPECT_TRUE(rows.isNull(rows.field(i).name));
  }
  EXPECT_EQ(rows.integer(u"n"_s), 0);
  EXPECT_EQ(rows.number(u"abase"_s), 0);
  EXPECT_FALSE(rows.flag(u"t"_s));
}

TEST(RecordSet, WalksToTheEndAndBack) {
  RecordSet rows;
  loadUnits(rows, {"A", "B", "C"});
  QString walked;
  for (rows.first(); !rows.eof(); rows.next()) walked += rows.text(u"dw_id"_s);
  EXPECT_EQ(walked, u"ABC"_s);
  EXPECT_EQ(rows.currentRow(), 2);
  for (rows.last(); !rows.bof(); rows.prior()) walked += rows.text(u"dw_id"_s);
  EXPECT_EQ(walked, u"ABCCBA"_s);
  EXPECT_EQ(rows.currentRow(), 0);
  rows.next();
  EXPECT_FALSE(rows.bof());
  rows.moveTo(99);
  EXPECT_EQ(rows.currentRow(), 2);
  EXPECT_FALSE(rows.eof());
  rows.moveTo(-5);
  EXPECT_EQ(rows.currentRow(), 0);
}

TEST(RecordSet, TellsWhenAnotherRowBecomesCurrent) {
  RecordSet rows;
  Diary diary(rows);
  loadUnits(rows, {"A", "B"});
  EXPECT_EQ(diary.take(), u"opened at0"_s);
  rows.next();
  EXPECT_EQ(diary.take(), u"leave at1"_s);
  rows.next();
  rows.last();
  EXPECT_EQ(diary.take(), QString());
  loadUnits(rows, {});
  EXPECT_EQ(diary.take(), u"opened"_s);
}

TEST(RecordSet, LocateIgnoresCaseAndStaysWhereItIsWhenNothingIsFound) {
  RecordSet rows;
  loadUnits(rows, {"A", "b1", "C"});
  EXPECT_TRUE(rows.locate(u"dw_id"_s, u"B1"_s));
  EXPECT_EQ(rows.currentRow(), 1);
  EXPECT_FALSE(rows.locate(u"dw_id"_s, u"x"_s));
  EXPECT_EQ(rows.currentRow(), 1);
  EXPECT_TRUE(rows.locate(u"n"_s, u"3"_s));
  EXPECT_EQ(rows.currentRow(), 2);
  EXPECT_FALSE(rows.locate(u"n"_s, u"three"_s));
  EXPECT_TRUE(rows.locate(u"t"_s, false));
  EXPECT_EQ(rows.currentRow(), 1);
  EXPECT_FALSE(rows.locate(u"dw_name"_s, QVariant()));
}

TEST(RecordSet, BookmarksNameRowsWhateverTheOrder) {
  RecordSet rows;
  loadUnits(rows, {"B", "A", "C"});
  const auto b = rows.bookmark();
  const auto c = rows.bookmarkAt(2);
  rows.setSort(u"dw_id"_s, false);
  EXPECT_EQ(rows.rowOf(b), 1);
  EXPECT_EQ(rows.currentRow(), 1);
  EXPECT_TRUE(rows.gotoBookmark(c));
  EXPECT_EQ(rows.text(u"dw_id"_s), u"C"_s);
  rows.remove();
  EXPECT_FALSE(rows.gotoBookmark(c));
  EXPECT_EQ(rows.rowOf(c), -1);
  EXPECT_EQ(rows.rowOf(-1), -1);
}

TEST(RecordSet, AppendedRowTakesDefaultsAndIsPosted) {
  RecordSet rows;
  loadUnits(rows, {"A"});
  QObject::connect(&rows, &RecordSet::newRecord, &rows, [&] { rows.setValue(u"abase"_s, 1); });
  Diary diary(rows);
  rows.append();
  EXPECT_EQ(rows.state(), RecordSet::State::Insert);
  EXPECT_EQ(rows.rowCount(), 2);
  EXPECT_FALSE(rows.isModified());
  EXPECT_EQ(rows.number(u"abase"_s), 1);
  rows.setValue(u"DW_ID"_s, u"B"_s);
  EXPECT_TRUE(rows.isModified());
  rows.post();
  EXPECT_EQ(rows.state(), RecordSet::State::Browse);
  EXPECT_EQ(diary.take(), u"leave abase new at1 dw_id posting posted"_s);
  EXPECT_EQ(column(rows, u"dw_id"_s), u"A B"_s);
}

TEST(RecordSet, InsertPutsTheRowBeforeTheCurrentOne) {
  RecordSet rows;
  loadUnits(rows, {"A", "C"});
  rows.last();
  rows.insert();
  rows.setValue(u"dw_id"_s, u"B"_s);
  rows.post();
  EXPECT_EQ(column(rows, u"dw_id"_s), u"A B C"_s);
  EXPECT_EQ(rows.currentRow(), 1);
}

TEST(RecordSet, MovingAwayPostsWhatWasChanged) {
  RecordSet rows;
  loadUnits(rows, {"A", "B"});
  rows.setValue(u"dw_id"_s, u"X"_s);
  EXPECT_EQ(rows.state(), RecordSet::State::Edit);
  EXPECT_EQ(rows.text(u"dw_id"_s), u"X"_s);
  EXPECT_EQ(rows.textAt(0, 0), u"X"_s);
  rows.next();
  EXPECT_EQ(rows.state(), RecordSet::State::Browse);
  EXPECT_EQ(column(rows, u"dw_id"_s), u"X B"_s);
}

TEST(RecordSet, MovingToTheCurrentRowPostsNothing) {
  RecordSet rows;
  loadUnits(rows, {"A", "B"});
  rows.last();
  rows.next();
  rows.moveTo(1);
  EXPECT_FALSE(rows.eof());
  rows.setValue(u"dw_id"_s, u"X"_s);
  rows.moveTo(1);
  EXPECT_EQ(rows.state(), RecordSet::State::Edit);
}

TEST(RecordSet, MovingAwayFromAnUntouchedNewRowDropsIt) {
  RecordSet rows;
  loadUnits(rows, {"A", "B"});
  QObject::connect(&rows, &RecordSet::newRecord, &rows, [&] { rows.setValue(u"abase"_s, 1); });
  rows.append();
  rows.prior();
  EXPECT_EQ(column(rows, u"dw_id"_s), u"A B"_s);
  EXPECT_FALSE(rows.hasChanges());
}

TEST(RecordSet, AppendWhileEditingPostsFirst) {
  RecordSet rows;
  loadUnits(rows, {"A"});
  rows.setValue(u"dw_id"_s, u"X"_s);
  rows.append();
  rows.setValue(u"dw_id"_s, u"Y"_s);
  rows.append();
  rows.setValue(u"dw_id"_s, u"Z"_s);
  rows.post();
  EXPECT_EQ(column(rows, u"dw_id"_s), u"X Y Z"_s);
}

TEST(RecordSet, PostMayBeRefused) {
  RecordSet rows;
  loadUnits(rows, {"A", "B"});
  QObject::connect(&rows, &RecordSet::beforePost, &rows, [] { throw EAbort(); });
  rows.setValue(u"dw_id"_s, u"X"_s);
  EXPECT_THROW(rows.next(), EAbort);
  EXPECT_EQ(rows.currentRow(), 0);
  EXPECT_EQ(rows.state(), RecordSet::State::Edit);
  EXPECT_EQ(rows.text(u"dw_id"_s), u"X"_s);
  rows.cancel();
  EXPECT_EQ(column(rows, u"dw_id"_s), u"A B"_s);
}

TEST(RecordSet, ValidationSetsOtherFieldsAndMayRefuse) {
  RecordSet rows;
  loadUnits(rows, {"A"});
  QObject::connect(&rows, &RecordSet::validateField, &rows, [&](const QString& name) {
    if (name == u"t" && rows.flag(u"t"_s)) rows.setValue(u"n"_s, 77);
    if (name == u"dw_id" && rows.text(name).isEmpty()) throw EAbort();
  });
  rows.setValue(u"t"_s, u"true"_s);
  EXPECT_EQ(rows.integer(u"n"_s), 77);
  EXPECT_THROW(rows.setValue(u"dw_id"_s, u""_s), EAbort);
  EXPECT_EQ(rows.text(u"dw_id"_s), u"A"_s);
}

TEST(RecordSet, CancelBringsTheRowBackOrTakesTheNewOneAway) {
  RecordSet rows;
  loadUnits(rows, {"A", "B", "C"});
  rows.setValue(u"dw_id"_s, u"X"_s);
  rows.cancel();
  EXPECT_EQ(rows.text(u"dw_id"_s), u"A"_s);
  rows.append();
  rows.setValue(u"dw_id"_s, u"X"_s);
  rows.cancel();
  EXPECT_EQ(rows.currentRow(), 0);
  EXPECT_EQ(column(rows, u"dw_id"_s), u"A B C"_s);
  EXPECT_FALSE(rows.hasChanges());
}

TEST(RecordSet, RemovingMakesTheNextRowCurrentAndAtTheEndTheLast) {
  RecordSet rows;
  loadUnits(rows, {"A", "B", "C"});
  rows.moveTo(1);
  rows.remove();
  EXPECT_EQ(rows.text(u"dw_id"_s), u"C"_s);
  rows.remove();
  EXPECT_EQ(rows.text(u"dw_id"_s), u"A"_s);
  EXPECT_EQ(rows.currentRow(), 0);
  Diary diary(rows);
  rows.remove();
  EXPECT_EQ(diary.take(), u"leave at-1"_s);
  EXPECT_TRUE(rows.isEmpty());
  EXPECT_TRUE(rows.eof());
  rows.remove();
  EXPECT_EQ(diary.take(), QString());
}

TEST(RecordSet, RemovingManyRowsFromTheFrontStaysQuick) {
  RecordSet rows;
  loadUnits(rows, std::vector<std::string>(100'000, "A"));
  for (rows.first(); !rows.isEmpty();) rows.remove();
  EXPECT_EQ(rows.rowCount(), 0);
}

TEST(RecordSet, EditingAnEmptySetAppends) {
  RecordSet rows;
  loadUnits(rows, {});
  rows.setValue(u"dw_id"_s, u"A"_s);
  EXPECT_EQ(rows.state(), RecordSet::State::Insert);
  rows.post();
  EXPECT_EQ(column(rows, u"dw_id"_s), u"A"_s);
}

struct Conversion {
  const char* name;
  const char* field;
  QVariant put;
  QVariant expected;  // invalid: null
  bool refused = false;
};

TEST(RecordSet, SetValueConverts) {
  const std::vector<Conversion> conversions = {
      {"a number into text", "dw_id", 3.50, u"3.5"_s},
      {"a flag into text", "dw_id", true, u"1"_s},
      {"text longer than the field stays whole", "dw_id", u"longer"_s, u"longer"_s},
      {"digits into an integer", "n", u" 42 "_s, qlonglong{42}},
      {"a fraction into an integer is cut", "n", 2.9, qlonglong{2}},
      {"empty text into an integer is null", "n", u""_s, {}},
      {"letters into an integer", "n", u"4x"_s, {}, true},
      {"text with a fraction into an integer", "n", u"1.5"_s, {}, true},
      {"digits into a float", "abase", u"2.50"_s, 2.5},
      {"groups of thousands into a float", "abase", u"1,234.5"_s, {}, true},
      {"nan into a float", "abase", u"nan"_s, {}, true},
      {"blank text into a float is null", "abase", u"  "_s, {}},
      {"one into a flag", "t", u"1"_s, true},
      {"false into a flag", "t", u"FALSE"_s, false},
      {"yes into a flag", "t", u"yes"_s, {}, true},
      {"a day into a date", "bdate", u"2026-11-20"_s, QDateTime(QDate(2026, 11, 20), QTime(0, 0))},
      {"a time into a date", "bdate", u"2026/1/2 3:04:05"_s, QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5))},
      {"a date without dashes", "bdate", u"20261120"_s, QDateTime(QDate(2026, 11, 20), QTime(0, 0))},
      {"a day that is none", "bdate", u"2026-13-40"_s, {}, true},
      {"an invalid value is null", "dw_id", QVariant(), {}},
  };
  for (const auto& conversion : conversions) {
    SCOPED_TRACE(conversion.name);
    RecordSet rows;
    loadUnits(rows, {"A"});
    const QString field = QString::fromLatin1(conversion.field);
    if (conversion.refused) {
      try {
        rows.setValue(field, conversion.put);
        ADD_FAILURE() << "was not refused";
      } catch (const EDatabaseError& error) {
        EXPECT_EQ(error.number, 245);
        EXPECT_TRUE(error.text.contains(field));
      }
      EXPECT_EQ(rows.state(), RecordSet::State::Browse);
      continue;
    }
    rows.setValue(field, conversion.put);
    EXPECT_EQ(rows.value(field), conversion.expected);
    rows.post();
    EXPECT_EQ(rows.value(field), conversion.expected);
  }
}

TEST(RecordSet, TypedNumbersShowAsTypedUntilTheLogIsMerged) {
  RecordSet rows;
  loadUnits(rows, {"A"});
  rows.setFieldFormat(u"abase"_s, u"0.0"_s);
  rows.setValue(u"abase"_s, u"12.500"_s);
  rows.post();
  EXPECT_EQ(rows.text(u"abase"_s), u"12.500"_s);
  EXPECT_EQ(rows.value(u"abase"_s), QVariant(12.5));
  ASSERT_EQ(rows.changes().size(), 1U);
  EXPECT_EQ(rows.changes()[0].newValues[3].toString(), u"12.500"_s);
  rows.mergeChangeLog();
  EXPECT_EQ(rows.text(u"abase"_s), u"12.5"_s);
}

TEST(RecordSet, SumsTheVisibleRows) {
  RecordSet rows;
  loadUnits(rows, {"A", "B", "C"});
  EXPECT_EQ(rows.sum(u"abase"_s), 1.5 + 2.5 + 3.5);
  EXPECT_EQ(rows.sum(u"n"_s), 6);
  ASSERT_TRUE(rows.setFilter(u"dw_id<>'B'"_s));
  rows.setFiltered(true);
  EXPECT_EQ(rows.sum(u"n"_s), 4);
  rows.setValue(u"n"_s, 10);
  EXPECT_EQ(rows.sum(u"n"_s), 13);
  rows.setValue(u"n"_s, QVariant());
  EXPECT_EQ(rows.sum(u"n"_s), 3);
}

TEST(RecordSet, AssignFromIsACopyOfItsOwn) {
  RecordSet rows;
  loadUnits(rows, {"B", "A"});
  rows.setSort(u"dw_id"_s, false);
  rows.append();
  rows.setValue(u"dw_id"_s, u"C"_s);
  rows.post();
  RecordSet copy;
  copy.assignFrom(rows);
  EXPECT_EQ(column(copy, u"dw_id"_s), u"B A C"_s);
  EXPECT_FALSE(copy.hasChanges());
  copy.setValue(u"dw_id"_s, u"X"_s);
  copy.post();
  copy.last();
  copy.remove();
  EXPECT_EQ(column(rows, u"dw_id"_s), u"A B C"_s);
  copy.CancelUpdates();
  EXPECT_EQ(column(copy, u"dw_id"_s), u"B A C"_s);
}

TEST(RecordSet, ViewsHearNothingWhileControlsAreDisabled) {
  RecordSet rows;
  loadUnits(rows, {"A", "B"});
  QStringList heard;
  QObject::connect(&rows, &RecordSet::aboutToReset, &rows, [&] { heard += u"reset"_s; });
  QObject::connect(&rows, &RecordSet::wasReset, &rows, [&] { heard += u"done"_s; });
  QObject::connect(&rows, &RecordSet::rowChanged, &rows, [&](int row) { heard += QString::number(row); });
  QObject::connect(&rows, &RecordSet::aboutToInsertRows, &rows, [&] { heard += u"insert"_s; });
  QObject::connect(&rows, &RecordSet::aboutToRemoveRows, &rows, [&] { heard += u"remove"_s; });
  rows.disableControls();
  rows.disableControls();
  rows.setValue(u"dw_id"_s, u"X"_s);
  rows.append();
  rows.setValue(u"dw_id"_s, u"Y"_s);
  rows.first();
  rows.remove();
  rows.setSort(u"dw_id"_s, true);
  rows.enableControls();
  EXPECT_EQ(heard.join(u' '), u"reset"_s);
  EXPECT_TRUE(rows.controlsDisabled());
  rows.enableControls();
  EXPECT_EQ(heard.join(u' '), u"reset done"_s);
  rows.enableControls();
  rows.setValue(u"dw_id"_s, u"Z"_s);
  EXPECT_EQ(heard.last(), u"1"_s);
}

TEST(RecordSet, ClearKeepsTheFields) {
  RecordSet rows;
  loadUnits(rows, {"A", "B"});
  rows.setValue(u"dw_id"_s, u"X"_s);
  rows.clear();
  EXPECT_TRUE(rows.isOpen());
  EXPECT_TRUE(rows.isEmpty());
  EXPECT_FALSE(rows.hasChanges());
  EXPECT_EQ(rows.fieldCount(), 7);
}

}  // namespace
}  // namespace goodsbook
