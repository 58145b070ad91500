#include "host/data/errors.h"
#include "host/data/record_set.h"
#include "host/data/value_text.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// Values on their way from a server and to it.
namespace goodsbook::test {
namespace {

using engine::Type;

class ValuesTest : public ServerTest {};

class TypeSink : public engine::ResultSink {
 public:
  std::vector<engine::Column> columns;
  void beginSet(std::span<const engine::Column> given) override {
    columns.assign(given.begin(), given.end());
  }
  void row(const engine::Row&) override {}
};

TEST_F(ValuesTest, ColumnsHaveTheirTypesNamesAndWidths) {
  run(u"create table t (b boolean, s smallint, i int, l bigint, f float, n numeric(12,2), d timestamp, "
      "v varchar(20), x bytea)"_s);
  TypeSink sink;
  database().query(u"select * from t"_s, sink);
  std::vector<Type> types;
  for (const auto& column : sink.columns) types.push_back(column.type);
  EXPECT_EQ(types, (std::vector<Type>{Type::Bit, Type::Integer, Type::Integer, Type::Integer, Type::Float,
                                      Type::Float, Type::DateTime, Type::Text, Type::Blob}));
  EXPECT_EQ(sink.columns[7].name, "v");
  EXPECT_EQ(sink.columns[7].width, 20);
}

TEST_F(ValuesTest, ValuesArriveAsTheyAre) {
  EXPECT_EQ(
      rows(u"select true as b, 7 as i, -9007199254740993 as l, 3.5::float as f, 12.25::numeric(9,2) as n, "
           "timestamp '2026-11-20 10:11:12.347' as d, varchar(9) '五粮液😀' as v"_s),
      (Rows{{u"1"_s, u"7"_s, u"-9007199254740993"_s, u"3.5"_s, u"12.25"_s, u"2026-11-20 10:11:12.347"_s,
             u"五粮液😀"_s}}));
  EXPECT_EQ(
      rows(
          u"select timestamp '1899-12-31 23:59:59' as a, timestamp '1753-01-01' as b, date '2024-02-29' as c"_s),
      (Rows{{u"1899-12-31 23:59:59"_s, u"1753-01-01 00:00:00"_s, u"2024-02-29 00:00:00"_s}}));
}

TEST_F(ValuesTest, NullIsNoValueInEveryType) {
  run(u"create table t (b boolean, i int, f float, d timestamp, v varchar(20), x bytea, w text)"_s);
  run(u"insert into t values (null,null,null,null,null,null,null)"_s);
  EXPECT_EQ(rows(u"select b,i,f,d,v from t"_s),
            (Rows{{u"NULL"_s, u"NULL"_s, u"NULL"_s, u"NULL"_s, u"NULL"_s}}));
  EXPECT_EQ(rows(u"select * from t"_s), (Rows{std::vector<QString>(7, u"NULL"_s)}));
  EXPECT_EQ(rows(u"select varchar(3) '' as v, 0 as i"_s), (Rows{{QString(), u"0"_s}}));
}

TEST_F(ValuesTest, LongTextsArriveWhole) {
  const QString text = QString(100'000, u'商') + u"😀末"_s + QString(70'001, u'x');
  run(u"create table t (id int, w text)"_s);
  run(u"insert into t values (1,'%1'),(2,''),(3,'短')"_s.arg(text));
  const Rows got = rows(u"select id,w from t order by id"_s);
  ASSERT_EQ(got.size(), 3U);
  EXPECT_EQ(got[0][1].size(), text.size());
  EXPECT_TRUE(got[0][1] == text);
  EXPECT_EQ(got[1][1], QString());
  EXPECT_EQ(got[2][1], u"短"_s);
}

TEST_F(ValuesTest, PicturesAreStoredAndReadWhole) {
  QByteArray picture(3'000'000, '\0');
  for (qsizetype i = 0; i < picture.size(); ++i) picture[i] = static_cast<char>(i * 31 % 251);
  run(u"create table d1801 (wl_id varchar(20) primary key, pict bytea); insert into d1801 values ('7',null),('8',null)"_s);
  EXPECT_EQ(database().storeBlob(u"D1801"_s, u"pict"_s, u"WL_ID"_s, u"7"_s, picture), 1);
  EXPECT_EQ(database().storeBlob(u"D1801"_s, u"pict"_s, u"WL_ID"_s, u"nobody"_s, picture), 0);
  const Rows got = rows(u"select pict,wl_id from d1801 order by wl_id"_s);
  EXPECT_TRUE(got[0][0] == u"0x"_s + QString::fromLatin1(picture.toHex().toUpper()));
  EXPECT_EQ(got[1][0], u"NULL"_s);
  EXPECT_EQ(database().storeBlob(u"D1801"_s, u"pict"_s, u"WL_ID"_s, u"7"_s, {}), 1);
  EXPECT_EQ(rows(u"select pict from d1801 where wl_id='7'"_s), (Rows{{u"NULL"_s}}));
}

TEST_F(ValuesTest, ManyBlocksOfRowsComeInOrderAndWhole) {
  constexpr int count = 12'345;
  run(u"create table t (i int, v varchar(60), f float)"_s);
  run(u"insert into t select i, case when i%7=0 then null else '商品'||i end, i/4.0 from generate_series(1,%1) i"_s
          .arg(count));
  const Rows got = rows(u"select i,v,f from t order by i"_s);
  ASSERT_EQ(got.size(), static_cast<std::size_t>(count));
  for (int i = 1; i <= count; ++i) {
    const auto& row = got[static_cast<std::size_t>(i - 1)];
    ASSERT_EQ(row[0], QString::number(i));
    ASSERT_EQ(row[1], i % 7 == 0 ? u"NULL"_s : u"商品%1"_s.arg(i));
    ASSERT_EQ(row[2], floatText(i / 4.0));
  }
}

TEST_F(ValuesTest, AValueIsNeverCutInSilence) {
  // An expression without a declared width may be longer than its driver says.
  const EDatabaseError error = refused(u"select repeat('x',9000)::varchar as v"_s);
  EXPECT_TRUE(error.text.contains(u"不能完整读取"_s)) << error.what();
  EXPECT_EQ(rows(u"select 1"_s), (Rows{{u"1"_s}}));
}

TEST_F(ValuesTest, APairOfSurrogatesMayLieWhereAPieceEnds) {
  run(u"create table t (w text)"_s);
  for (int before = 8189; before <= 8192; ++before) {
    const QString text = QString(before, u'x') + u"😀"_s + QString(9'000, u'商') + u"😀末"_s;
    run(u"delete from t; insert into t values ('%1')"_s.arg(text));
    EXPECT_TRUE(rows(u"select w from t"_s).at(0).at(0) == text) << before;
  }
}

TEST_F(ValuesTest, ARowThatCannotBeReadIsAnErrorAndNotTheEnd) {
  run(u"create table t as select i from generate_series(1,1000) i"_s);
  const auto streamed = openServerDatabase(
      ServerAddress::parse(server().address().text() + u";UseDeclareFetch=1;Fetch=100"_s), server().login());
  int count = 0;
  const EDatabaseError error = failure([&] {
    const auto cursor = streamed->openCursor(u"select 100/(i-250) as n from t"_s);
    while (cursor->next()) ++count;
  });
  EXPECT_EQ(error.number, 8134) << error.what();
  EXPECT_LT(count, 250);
}

TEST_F(ValuesTest, BracesAndQuestionMarksInTextsAreTexts) {
  EXPECT_EQ(rows(u"select varchar(40) '{fn now()} ? {d ''x''}' as v"_s), (Rows{{u"{fn now()} ? {d 'x'}"_s}}));
}

}  // namespace
}  // namespace goodsbook::test
