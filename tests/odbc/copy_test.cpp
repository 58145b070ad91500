#include <QRegularExpression>
#include <algorithm>

#include "host/data/copy/database_copy.h"
#include "host/data/errors.h"
#include "host/data/statement_text.h"
#include "schema/schema.h"
#include "schema/tables.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// A shop's file goes to a server and comes back.
namespace goodsbook::test {
namespace {

// The program's tables as PostgreSQL knows them; flags as small numbers.
QString tablesForPostgres() {
  QString text;
  for (const schema::ScriptBatch& batch : schema::batches(schema::script())) {
    QString part = QString::fromUtf8(batch.text.data(), static_cast<qsizetype>(batch.text.size()));
    if (part.contains(u"create procedure"_s)) continue;
    part.remove(QRegularExpression(u"--[^\n]*"_s));
    part.replace(u"nvarchar(max)"_s, u"text"_s).replace(u"nvarchar"_s, u"varchar"_s);
    part.replace(u"varbinary(max)"_s, u"bytea"_s).replace(u"datetime"_s, u"timestamp(3)"_s);
    part.replace(QRegularExpression(u"\\bbit\\b"_s), u"smallint"_s).remove(u"identity(1,1)"_s);
    part.replace(QRegularExpression(u"\n(create index|create table|insert into)"_s), u";\n\\1"_s);
    text += part + u";\n"_s;
  }
  return text;
}

class CopyTest : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    run(tablesForPostgres());
    shop_ = openEmbeddedDatabase(u":memory:"_s);
    fill();
  }

  void fill() {
    const QString picture = bytesLiteral(QByteArray(70'000, '\x9C') + QByteArray("\0\xFF'", 3));
    inShop(
        u"insert into D1801 (WL_ID,WL_NAME,WL_YS,DJ,KC,BDATE,EDATE,NOTE,pict) values "
        "(N'007',N'五粮液''52°'' 😀',1,12.3456789012345678,0.1,'2026-11-20 10:11:12.347','1753-01-01',N' a ',%1),"
        "(N'8',null,0,-1e-300,1e300,null,null,N'',0x),(N'中',N'第一行\n第二行',null,0,null,null,null,null,null)"_s
            .arg(picture));
    inShop(
        u"insert into D1801DW (T,WL_ID,DW_ID,SJ) values (1,N'a',N'01',1),(0,N'b',N'01',2),(1,N'c',N'01',3)"_s);
    inShop(u"delete from D1801DW where WL_ID=N'b'"_s);  // a gap in the numbers
    for (int block = 0; block < 30; ++block) {
      QStringList values;
      for (int i = 0; i < 100; ++i) values << u"(%1,N'条码%2')"_s.arg(block * 100 + i).arg(i);
      inShop(u"insert into D1801DWTM values "_s + values.join(u','));
    }
    inShop(u"insert into SYS_AUDIT (AUDIT_TIME,STATEMENT) values (getdate(),N'%1')"_s.arg(
        QString(20'000, u'句')));
    inShop(u"update SYS_USER set USER_NAME=N'老板'"_s);
  }

  SqlSets inShop(const QString& batch) { return runSql(*shop_, batch, Database::Permission::Owner); }

  static Rows allRows(Database& database, const schema::Table& table) {
    QStringList columns;
    for (const std::string& column : table.columns) columns << QString::fromStdString(column);
    Rows rows = texts(
        runSql(database, u"select %1 from %2"_s.arg(columns.join(u','), QString::fromStdString(table.name)),
               Database::Permission::Owner));
    std::sort(rows.begin(), rows.end());
    return rows;
  }

  std::unique_ptr<Database> shop_;
};

TEST_F(CopyTest, EveryRowGoesToTheServerAndComesBack) {
  qint64 told = 0;
  const auto copied = copyDatabase(*shop_, database(), [&](const QString&, qint64 rows) {
    told = std::max(told, rows);
    return true;
  });
  EXPECT_EQ(told, 3000);
  EXPECT_EQ(copied.size(), schema::tables().size());
  const auto back = openEmbeddedDatabase(u":memory:"_s);
  copyDatabase(database(), *back);
  for (const schema::Table& table : schema::tables()) {
    SCOPED_TRACE(table.name);
    EXPECT_TRUE(allRows(*shop_, table) == allRows(*back, table));
  }
  EXPECT_EQ(texts(runSql(*back, u"select adw from D1801DW order by adw"_s, Database::Permission::Owner)),
            (Rows{{u"1"_s}, {u"3"_s}}));
  runSql(*back, u"insert into D1801DW (WL_ID) values (N'd')"_s, Database::Permission::Owner);
  EXPECT_EQ(texts(runSql(*back, u"select max(adw) from D1801DW"_s, Database::Permission::Owner)),
            (Rows{{u"4"_s}}));
}

TEST_F(CopyTest, ATargetWithDataIsRefused) {
  run(u"insert into D1003 (dw_id) values ('01')"_s);
  const EDatabaseError error = failure([&] { copyDatabase(*shop_, database()); });
  EXPECT_TRUE(error.text.contains(u"表 D1003 中已有数据"_s)) << error.what();
  EXPECT_EQ(rows(u"select count(*) from D1801"_s), (Rows{{u"0"_s}}));
}

TEST_F(CopyTest, ATargetThatChangesAValueIsNoticedAndNothingStays) {
  run(u"create function spoil() returns trigger language plpgsql as 'begin new.tm := upper(new.tm)||''!''; return new; end';"
      "create trigger spoiling before insert on D1801DWTM for each row when (new.adw=2999) execute function spoil()"_s);
  const EDatabaseError error = failure([&] { copyDatabase(*shop_, database()); });
  EXPECT_TRUE(error.text.contains(u"表 D1801DWTM 复制后核对不符"_s)) << error.what();
  EXPECT_EQ(rows(u"select count(*) from D1801"_s), (Rows{{u"0"_s}}));
}

TEST_F(CopyTest, ACancelledCopyLeavesNothing) {
  EXPECT_THROW(copyDatabase(*shop_, database(), [](const QString&, qint64 rows) { return rows < 500; }),
               EAbort);
  EXPECT_EQ(rows(u"select count(*) from D1801"_s), (Rows{{u"0"_s}}));
}

TEST_F(CopyTest, ADatabaseOfAnotherVersionIsRefused) {
  run(u"update SYS_VERSION set VERSION=1"_s);
  EXPECT_TRUE(failure([&] { copyDatabase(*shop_, database()); }).text.contains(u"旧版本"_s));
}

}  // namespace
}  // namespace goodsbook::test
