#include <gtest/gtest.h>

#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "tests/host/data/sample_rows.h"
#include "tests/host/data/test_session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using test::column;

class DataopTest : public ::testing::Test {
 protected:
  void addUnits(const QString& ids) {
    for (const QChar id : ids) shop_.run(u"insert into D1003(dw_id,dw_name) values('%1','单位%1')"_s.arg(id));
  }

  QString sent() {
    QStringList lines;
    for (const auto& statement : shop_.session().takeStatements()) {
      lines += QStringList{statement.op,        statement.module, statement.key,
                           statement.operation, statement.sql,    statement.result}
                   .join(u'|');
    }
    return lines.join(u'\n');
  }

  test::TestSession shop_;
};

TEST_F(DataopTest, OpensqlReplacesTheRows) {
  addUnits(u"AB"_s);
  RecordSet rows;
  rows.declareFields({{.name = u"DW_NAME"_s, .label = u"名称"_s}});
  EXPECT_TRUE(opensql(rows, u"103"_s, u"select * from d1003 order by dw_id"_s));
  EXPECT_EQ(column(rows, u"dw_name"_s), u"单位A 单位B"_s);
  EXPECT_EQ(rows.field(rows.fieldIndex(u"dw_name"_s)).label, u"名称"_s);
  EXPECT_TRUE(opensql(rows, u"103"_s, u"select dw_id from d1003 where dw_id='x'"_s));
  EXPECT_TRUE(rows.isOpen());
  EXPECT_TRUE(rows.eof());
  EXPECT_EQ(rows.fieldCount(), 1);
  EXPECT_EQ(
      sent(),
      u"opensql|103|||select * from d1003 order by dw_id|Y\nopensql|103|||select dw_id from d1003 where dw_id='x'|Y"_s);
}

TEST_F(DataopTest, OpensqlThatFailsLeavesTheRowsAsTheyAre) {
  addUnits(u"12x"_s);
  RecordSet rows;
  opensql(rows, u"103"_s, u"select dw_id from d1003 where dw_id<>'x'"_s);
  rows.setValue(u"dw_id"_s, u"9"_s);
  EXPECT_THROW(opensql(rows, u"103"_s, u"select * from nowhere"_s), EDatabaseError);
  EXPECT_THROW(opensql(rows, u"103"_s, u"select cast(dw_id as int) from d1003"_s), EDatabaseError);
  EXPECT_EQ(rows.state(), RecordSet::State::Edit);
  EXPECT_EQ(column(rows, u"dw_id"_s), u"9 2"_s);
}

TEST_F(DataopTest, OpensqlReadsPages) {
  addUnits(u"ECADB"_s);
  const auto page = [&](int number) {
    RecordSet rows;
    opensql(rows, u"103"_s, u"select dw_id from d1003"_s, 2, number, u"dw_id"_s);
    return column(rows, u"dw_id"_s);
  };
  EXPECT_EQ(page(1), u"A B"_s);
  EXPECT_EQ(page(2), u"C D"_s);
  EXPECT_EQ(page(3), u"E"_s);
  EXPECT_EQ(page(4), QString());
}

TEST_F(DataopTest, ExecSqlWritesAndLeavesOneAuditLine) {
  EXPECT_EQ(ExecSql(u"103"_s, u"KG"_s, u"Add"_s,
                    u"insert into D1003(dw_id,dw_name) values('KG','公斤');update d1003 set pym='GJ'"_s),
            u"Y"_s);
  EXPECT_EQ(shop_.ask(u"select dw_id,dw_name,pym from d1003"_s), u"KG,公斤,GJ"_s);
  EXPECT_EQ(
      shop_.ask(u"select AUDIT_TIME,USER_ID,MODULE,KEY_VALUE,OPERATION,STATEMENT from SYS_AUDIT"_s),
      u"2026-11-20 10:11:12,ADMIN,103,KG,Add,insert into D1003(dw_id,dw_name) values('KG','公斤');update d1003 set pym='GJ'"_s);
  EXPECT_EQ(
      sent(),
      u"ExecSql|103|KG|Add|insert into D1003(dw_id,dw_name) values('KG','公斤');update d1003 set pym='GJ'|Y"_s);
}

TEST_F(DataopTest, ExecSqlThatFailsLeavesNothing) {
  const auto refused = [&](const QString& sql) {
    try {
      ExecSql(u"103"_s, u"KG"_s, u"Add"_s, sql);
      ADD_FAILURE() << "was run: " << sql.toStdString();
      return 0;
    } catch (const EDatabaseError& error) {
      EXPECT_TRUE(sent().endsWith(error.text));
      return error.number;
    }
  };
  EXPECT_EQ(refused(u"insert into D1003(dw_id) values('A');insert into D1003(dw_id) values('A')"_s), 2627);
  EXPECT_EQ(refused(u"insert into D1003(dw_id) values('A');RAISERROR ('不行', 16, 1)"_s), 50000);
  EXPECT_EQ(refused(u"insert into D1003(dw_id) values('A');drop table D1003"_s), 262);
  EXPECT_EQ(shop_.ask(u"select count(*) from d1003"_s), u"0"_s);
  EXPECT_EQ(shop_.ask(u"select count(*) from SYS_AUDIT"_s), u"0"_s);
  EXPECT_FALSE(shop_.database().inTransaction());
}

TEST_F(DataopTest, LongKeysAndQuotesDoNotBreakTheAuditLine) {
  const QString key = QString(300, u'键') + u"'"_s;
  ExecSql(u"103"_s, u"O'Hara"_s, u"Edit"_s, u"update d1003 set dw_name='it''s'"_s);
  ExecSql(u"103"_s, key, QString(99, u'x'), u"update d1003 set dw_name='b'"_s);
  EXPECT_EQ(shop_.ask(u"select KEY_VALUE,STATEMENT from SYS_AUDIT where OPERATION='Edit'"_s),
            u"O'Hara,update d1003 set dw_name='it''s'"_s);
  EXPECT_EQ(shop_.ask(u"select len(KEY_VALUE),len(OPERATION) from SYS_AUDIT where OPERATION<>'Edit'"_s),
            u"100,20"_s);
}

TEST_F(DataopTest, PicturesAreStoredAndCleared) {
  shop_.run(u"insert into D1801(WL_ID,WL_NAME,CLASS_ID) values('P1','','')"_s);
  RecordSet rows;
  opensql(rows, u"101"_s, u"select WL_ID,pict from D1801 where wl_id='P1'"_s);
  rows.setValue(u"pict"_s, QByteArray("\x89PNG", 4));
  Applyupdatapict(rows, u"D1801"_s, u"WL_ID"_s, u"P1"_s, u"pict"_s);
  EXPECT_EQ(shop_.ask(u"select pict from D1801"_s), u"0x89504E47"_s);
  rows.setValue(u"pict"_s, QVariant());
  Applyupdatapict(rows, u"D1801"_s, u"WL_ID"_s, u"P1"_s, u"pict"_s);
  EXPECT_EQ(shop_.ask(u"select pict from D1801"_s), u"-"_s);
  EXPECT_THROW(Applyupdatapict(rows, u"D1801"_s, u"WL_ID"_s, u"none"_s, u"pict"_s), EDatabaseError);
}

TEST_F(DataopTest, ABatchWhosePictureIsNotStoredIsNotSavedEither) {
  RecordSet rows;
  rows.create({{.name = u"pict"_s, .type = FieldType::Blob}});
  rows.append();
  rows.setValue(u"pict"_s, QByteArray("\x89PNG", 4));
  const QString batch = u"insert into D1801(WL_ID,WL_NAME,CLASS_ID) values('P1','','')"_s;
  const auto save = [&](const QString& key) {
    execSqlWithPicture(u"101"_s, u"P1"_s, u"Add"_s, batch, {rows, u"D1801"_s, u"WL_ID"_s, key, u"pict"_s});
  };
  EXPECT_THROW(save(u"none"_s), EDatabaseError);
  EXPECT_EQ(shop_.ask(u"select count(*) from D1801"_s), u"0"_s);
  EXPECT_EQ(shop_.ask(u"select count(*) from SYS_AUDIT"_s), u"0"_s);
  EXPECT_FALSE(shop_.database().inTransaction());
  save(u"P1"_s);
  EXPECT_EQ(shop_.ask(u"select pict from D1801"_s), u"0x89504E47"_s);
  EXPECT_EQ(shop_.ask(u"select count(*) from SYS_AUDIT"_s), u"1"_s);
}

struct Units {
  const char* name;
  std::vector<std::vector<test::Value>> rows;  // DW_ID, TM, ABASE
  const char* message;                         // nothing when it passes
  int current = 0;
};

TEST_F(DataopTest, UnitGridsAreCheckedBeforeTheyAreSaved) {
  const std::vector<engine::Column> columns = {
      {"DW_ID", engine::Type::Text, 2}, {"TM", engine::Type::Text, 30}, {"ABASE", engine::Type::Float, 0}};
  const std::vector<Units> cases = {
      {"rates above zero pass", {{"KG", "690", 1.0}, {"BX", "691", 0.001}}, nullptr},
      {"a rate of zero", {{"KG", "690", 1.0}, {"BX", "691", 0.0}}, "5 第2行的转换率必须是大于零的数字!", 1},
      {"a negative rate", {{"KG", "690", -1.0}}, "5 第1行的转换率必须是大于零的数字!"},
      {"no rate", {{"KG", "690", test::null}}, "5 第1行的转换率必须是大于零的数字!"},
      {"a unit twice", {{"KG", "", 1.0}, {"kg", "", 2.0}}, "5 单位“kg”在表格中重复!", 1},
      {"a barcode twice", {{"KG", "690", 1.0}, {"BX", "690", 2.0}}, "5 条码“690”在表格中重复!", 1},
      {"empty barcodes are none",
       {{"KG", "", 1.0}, {"BX", "0", 2.0}, {"CT", "0", 3.0}, {"DZ", test::null, 3.0}},
       nullptr},
  };
  for (const auto& units : cases) {
    SCOPED_TRACE(units.name);
    RecordSet rows;
    rows.tag = 10032;
    rows.beginLoad(columns);
    for (const auto& row : units.rows) rows.appendLoaded(test::MemoryRow(row));
    rows.endLoad();
    shop_.desktop().messages.clear();
    if (units.message == nullptr) {
      checkDatamore(rows, u"abase"_s, {});
      EXPECT_TRUE(shop_.desktop().messages.isEmpty());
      continue;
    }
    EXPECT_THROW(checkDatamore(rows, u"abase"_s, {}), EAbort);
    EXPECT_EQ(shop_.desktop().messages, QStringList{QString::fromUtf8(units.message)});
    EXPECT_EQ(rows.currentRow(), units.current);
  }
}

}  // namespace
}  // namespace goodsbook
