#include "host/data/U_dataop.h"
#include "tests/app/sample_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using DatabaseCommands = ScreenTest;

QJsonObject run(const QString& text) {
  return {{u"cmd"_s, u"sql"_s}, {u"text"_s, text}};
}

TEST_F(DatabaseCommands, ResultSetsAreTexts) {
  done(run(
      u"insert into D1001 (hb_id, hb_name, hb_bw, hb_hl) values ('01', N'人民币', 1, 3.5), ('02', null, 0, 3)"_s));
  const QJsonArray sets = done(run(
      u"select hb_id, hb_name, hb_bw, hb_hl from D1001 order by hb_id; select count(*) as n from D1001"_s))
                              ["sets"_L1]
                                  .toArray();
  ASSERT_EQ(sets.size(), 2);
  EXPECT_EQ(sets[0]["columns"_L1].toArray(), (QJsonArray{u"hb_id"_s, u"hb_name"_s, u"hb_bw"_s, u"hb_hl"_s}));
  EXPECT_EQ(sets[0]["rows"_L1].toArray(),
            (QJsonArray{QJsonArray{u"01"_s, u"人民币"_s, u"1"_s, u"3.5"_s},
                        QJsonArray{u"02"_s, QJsonValue::Null, u"0"_s, u"3"_s}}));
  EXPECT_EQ(sets[1]["rows"_L1].toArray(), (QJsonArray{QJsonArray{u"2"_s}}));
}

TEST_F(DatabaseCommands, FailuresTellNumberSeverityAndLine) {
  const QJsonObject reply = send(run(u"select 1\nselect * from NOWHERE"_s));
  EXPECT_EQ(reply["ok"_L1], false);
  EXPECT_EQ(reply["number"_L1], 208);
  EXPECT_EQ(reply["severity"_L1], 16);
  EXPECT_EQ(reply["line"_L1], 2);
  EXPECT_TRUE(reply["error"_L1].toString().contains(u"NOWHERE"_s));
}

TEST_F(DatabaseCommands, StatementsListsWhatScreensSendAndNotTheDriversOwn) {
  done(run(u"delete from D1003"_s));
  onGui([] {
    ExecSql(u"103"_s, u"KG"_s, u"Add"_s, u"insert into D1003 (dw_id,dw_name) values ('KG','x')"_s, 0);
  });
  const QJsonArray list = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  ASSERT_EQ(list.size(), 1);
  EXPECT_EQ(list[0].toObject(),
            (QJsonObject{{u"op"_s, u"ExecSql"_s},
                         {u"module"_s, u"103"_s},
                         {u"key"_s, u"KG"_s},
                         {u"operation"_s, u"Add"_s},
                         {u"sql"_s, u"insert into D1003 (dw_id,dw_name) values ('KG','x')"_s},
                         {u"result"_s, u"Y"_s}}));
  EXPECT_EQ(done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray(), QJsonArray());
}

}  // namespace
}  // namespace goodsbook
