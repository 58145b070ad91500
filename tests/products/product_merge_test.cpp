// Merging duplicate products: refusals, the batch, and what is in the tables afterwards.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

const QString finished =
    u"合并完成，请刷新查看，再到[进销存]->[月底结帐]->库存数量平衡检查，修正最终库存数!"_s;
const QString question =
    u"特别提示:\r\n合并功能是将重复录入的商品合并成一个商品，合并后仅保留选择的第一行，其他行删除，\r\n合并后所删除的数据不可找回,如不清楚请在工程师指导下进行，是否继续进行合并选择的商品?"_s;

class Merge : public ProductScreen {
 protected:
  void SetUp() override {
    ProductScreen::SetUp();
    for (const QString& code : {u"P1"_s, u"P2"_s, u"P3"_s}) product(code, u"可乐"_s, code);
  }
  QString unitOf(const QString& code) {
    return sql(u"select adw from D1801DW where WL_ID='"_s + code + u'\'')[0][0];
  }
  void merge(const QList<int>& picked) {
    select(picked);
    answer({u"y"_s});
    act(u"Act_hb"_s);
  }
};

// The batch for one product, put together from the tables' names as a shop's database knows them.
QString batchFor(const QString& kept, const QString& unit, const QString& folded) {
  QString text =
      u"INSERT INTO D1802 (WL_ID, CK_ID, KC, DJ, CK_KW, CK_ACCL, BDATE, BEGIN_SL, BEGIN_MONEY, CHECK_KC) SELECT 'K',B.*,0,0,NULL,0,GETDATE(),0,0,(SELECT CHECK_KC FROM D1801 WHERE WL_ID='K') FROM (SELECT A.CK_ID FROM (SELECT CK_ID,WL_ID FROM D712A"
      " UNION ALL SELECT CK_ID,WL_ID FROM D713A UNION ALL SELECT CK_ID,WL_ID FROM D704A UNION ALL SELECT CK_ID,WL_ID FROM D8401A"
      " UNION ALL SELECT CK_ID,WL_ID FROM D8402A UNION ALL SELECT CK_ID,WL_ID FROM D8403A UNION ALL SELECT CK_ID,WL_ID FROM D8300A"
      " UNION ALL SELECT CK_ID,WL_ID FROM D8301A UNION ALL SELECT CK_ID,WL_ID FROM D8302A UNION ALL SELECT CK_ID,WL_ID FROM D8303A"
      " UNION ALL SELECT CK_ID,WL_ID FROM D8102A UNION ALL SELECT CK_ID,WL_ID FROM D8103A UNION ALL SELECT CK_ID,WL_ID FROM D8202A"
      " UNION ALL SELECT CK_ID,WL_ID FROM D8203A ) A WHERE A.WL_ID='X' GROUP BY A.CK_ID) B LEFT JOIN (SELECT CK_ID FROM D1802 WHERE WL_ID='K') C ON B.CK_ID=C.CK_ID WHERE C.CK_ID IS NULL; "
      "update d8301a set sl=a.sl,money=a.money,kc=a.kc,sl1=a.sl1,sl2=a.sl2,sl3=a.sl3 from (SELECT  I.NOID, I.CK_ID, SUM(I.SL) AS sl, SUM(I.MONEY) AS money, SUM(I.KC) AS kc, SUM(I.SL1) AS sl1, SUM(I.SL2) AS sl2, SUM(I.SL3) AS sl3 FROM D8301A I INNER JOIN (SELECT NOID FROM D8301A WHERE (WL_ID='K') OR (WL_ID='X') GROUP BY NOID HAVING COUNT(*)>1) B ON I.NOID=B.NOID WHERE (WL_ID='K') OR (WL_ID='X') GROUP BY I.NOID, I.CK_ID) a where d8301a.noid=a.noid and (WL_ID='K');"
      "delete from d8301a from (SELECT NOID FROM D8301A WHERE (WL_ID='K') OR (WL_ID='X') GROUP BY NOID HAVING COUNT(*)>1) B where d8301a.noid=b.noid and (WL_ID='X');"_s;
  for (const QString& table : {u"D712A"_s, u"D713A"_s, u"D704A"_s, u"d8401A"_s, u"d8402A"_s, u"d8403A"_s,
                               u"d8300A"_s, u"d8301A"_s, u"d8302A"_s, u"d8303A"_s, u"d8101A"_s, u"d8102A"_s,
                               u"d8103A"_s, u"d8201A"_s, u"d8202A"_s, u"d8203A"_s}) {
    text += u"update  "_s + table + u" set wl_id='K',adw="_s + unit + u" where wl_id='X';"_s;
  }
  text += u"delete from d1801 where wl_id='X';"_s;
  return text.replace(u"'K'"_s, u'\'' + kept + u'\'').replace(u"'X'"_s, u'\'' + folded + u'\'');
}

TEST_F(Merge, NeedsTheRightToAdd) {
  openList({{u"add"_s, false}});
  select({0, 1});
  act(u"Act_hb"_s);
  EXPECT_EQ(messages(), Lines{u"您必须有增加的权限，才可以使用合并商品功能!"_s});
  EXPECT_EQ(statements(), Lines());
}

TEST_F(Merge, NeedsASelection) {
  openList();
  select({});
  act(u"Act_hb"_s);
  EXPECT_EQ(messages(), Lines{u"合并功能必须选定两行以上!"_s});
  EXPECT_EQ(statements(), Lines());
}

TEST_F(Merge, AnswersOtherThanYesSendNothing) {
  openList();
  select({0, 1});
  answer({u"n"_s});
  act(u"Act_hb"_s);
  const QJsonArray boxes = done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0]["text"_L1].toString(), question);
  EXPECT_EQ(boxes[0]["kind"_L1].toInt(), 2);
  EXPECT_EQ(statements(), Lines());
}

TEST_F(Merge, OneSelectedRowSendsABatchWithoutStatements) {
  openList();
  merge({1});
  const QJsonArray batches = sent(u"ExecSql"_s);
  ASSERT_EQ(batches.size(), 1);
  EXPECT_EQ(batches[0]["sql"_L1].toString(), QString());
  EXPECT_EQ(batches[0]["key"_L1].toString(), u"P2"_s);
  EXPECT_EQ(messages(), (Lines{question, finished}));
  EXPECT_EQ(sql(u"select count(*) from D1801"_s), (Table{{u"3"_s}}));
}

TEST_F(Merge, TheFirstSelectedRowIsKeptAndTheOthersFollowInOrder) {
  openList();
  const QString unit = unitOf(u"P2"_s);
  merge({1, 2, 0});
  const QJsonArray all = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  ASSERT_EQ(all.size(), 2);
  EXPECT_EQ(all[0]["sql"_L1].toString(), u"select adw from D1801dw where wl_id='P2'"_s);
  EXPECT_EQ(all[1]["module"_L1].toString(), u"101"_s);
  EXPECT_EQ(all[1]["key"_L1].toString(), u"P2"_s);
  EXPECT_EQ(all[1]["operation"_L1].toString(), u"D"_s);
  EXPECT_EQ(all[1]["sql"_L1].toString().toStdString(),
            (batchFor(u"P2"_s, unit, u"P3"_s) + batchFor(u"P2"_s, unit, u"P1"_s)).toStdString());
  EXPECT_EQ(sql(u"select wl_id from D1801"_s), (Table{{u"P2"_s}}));
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 3) << "the list is not refreshed by itself";
}

TEST_F(Merge, LinesOfOneDocumentBecomeOneWithTheSums) {
  const auto line = [this](const QString& document, const QString& code, const QString& numbers) {
    sql(u"insert into D8301A (NOID,WL_ID,CK_ID,adw,SL,MONEY,KC,SL1,SL2,SL3) values ('%1','%2','A',%3,%4)"_s
            .arg(document, code, unitOf(code), numbers));
  };
  line(u"1"_s, u"P1"_s, u"1,10,100,0.5,2,3"_s);
  line(u"1"_s, u"P2"_s, u"2.5,20,200,0.25,4,-1"_s);
  line(u"1"_s, u"P3"_s, u"7,7,7,7,7,7"_s);
  line(u"2"_s, u"P2"_s, u"9,90,900,1,1,1"_s);
  line(u"3"_s, u"P1"_s, u"6,60,600,2,2,2"_s);
  openList();
  merge({0, 1});
  EXPECT_EQ(messages().back(), finished);
  const QString a = unitOf(u"P1"_s);
  EXPECT_EQ(sql(u"select NOID,WL_ID,adw,SL,MONEY,KC,SL1,SL2,SL3 from D8301A order by NOID,WL_ID"_s),
            (Table{{u"1"_s, u"P1"_s, a, u"3.5"_s, u"30"_s, u"300"_s, u"0.75"_s, u"6"_s, u"2"_s},
                   {u"1"_s, u"P3"_s, unitOf(u"P3"_s), u"7"_s, u"7"_s, u"7"_s, u"7"_s, u"7"_s, u"7"_s},
                   {u"2"_s, u"P1"_s, a, u"9"_s, u"90"_s, u"900"_s, u"1"_s, u"1"_s, u"1"_s},
                   {u"3"_s, u"P1"_s, a, u"6"_s, u"60"_s, u"600"_s, u"2"_s, u"2"_s, u"2"_s}}));
}

TEST_F(Merge, StockRowsAppearWhereTheFoldedProductMovedStock) {
  // A: the kept product has stock there already; B: moved by a receipt; C: only an order, no stock.
  sql(u"insert into D1802 (WL_ID,CK_ID,KC) values ('P1','A',5);"
      "insert into D8202A (noid,id,wl_id,ck_id,adw) values ('1',1,'P2','A',2);"
      "insert into D8202A (noid,id,wl_id,ck_id,adw) values ('1',2,'P2','B',2);"
      "insert into D712A (WL_ID,CK_ID,adw) values ('P2','B',2);"
      "insert into D8101A (WL_ID,CK_ID,adw) values ('P2','C',2);"
      "insert into D8201A (WL_ID,CK_ID,adw) values ('P2','C',2)"_s);
  openList();
  merge({0, 1});
  EXPECT_EQ(
      sql(u"select WL_ID,CK_ID,KC,DJ,CK_KW,CK_ACCL,CONVERT(varchar(10),BDATE,120),BEGIN_SL,BEGIN_MONEY,CHECK_KC from D1802 order by CK_ID"_s),
      (Table{{u"P1"_s, u"A"_s, u"5"_s, u"NULL"_s, u"NULL"_s, u"NULL"_s, u"NULL"_s, u"NULL"_s, u"NULL"_s,
              u"NULL"_s},
             {u"P1"_s, u"B"_s, u"0"_s, u"0"_s, u"NULL"_s, u"0"_s, u"2026-11-20"_s, u"0"_s, u"0"_s, u"1"_s}}));
  for (const QString& table : {u"D8202A"_s, u"D712A"_s, u"D8101A"_s, u"D8201A"_s}) {
    EXPECT_EQ(sql(u"select distinct wl_id,adw from "_s + table), (Table{{u"P1"_s, unitOf(u"P1"_s)}}))
        << table.toStdString();
  }
}

// P2 and P3 go into P1, with lines of all kinds in three warehouses. The sums are counted by hand.
TEST_F(Merge, DocumentsOfAllKindsKeepTheirLinesAndSums) {
  const QStringList tables{u"D712A"_s,  u"D713A"_s,  u"D704A"_s,  u"D8401A"_s, u"D8402A"_s,
                           u"D8403A"_s, u"D8300A"_s, u"D8302A"_s, u"D8303A"_s, u"D8101A"_s,
                           u"D8102A"_s, u"D8103A"_s, u"D8201A"_s, u"D8202A"_s, u"D8203A"_s};
  for (const QString& table : tables) {
    const QString head = u"insert into "_s + table + u" (WL_ID,CK_ID,adw) values "_s;
    sql(head + u"('P1','A',1);"_s + head + u"('P2','A',2);"_s + head + u"('P2','B',2);"_s + head +
        u"('P3','B',3);"_s);
  }
  sql(u"update D8202A set sl=10,money=25 where wl_id='P1';update D8202A set sl=2,money=6 where wl_id='P2';"
      "update D8202A set sl=3,money=7.5 where wl_id='P3';"
      "insert into D8301A (NOID,WL_ID,CK_ID,adw,SL,MONEY,KC,SL1,SL2,SL3) values ('1','P1','A',1,1,10,100,1,0,0);"
      "insert into D8301A (NOID,WL_ID,CK_ID,adw,SL,MONEY,KC,SL1,SL2,SL3) values ('1','P2','A',2,2,20,200,0,2,0);"
      "insert into D8301A (NOID,WL_ID,CK_ID,adw,SL,MONEY,KC,SL1,SL2,SL3) values ('1','P3','A',3,4,40,400,0,0,4);"
      "insert into D8301A (NOID,WL_ID,CK_ID,adw,SL,MONEY,KC,SL1,SL2,SL3) values ('2','P3','C',3,8,80,800,8,8,8);"
      "insert into D1802 (WL_ID,CK_ID,KC) values ('P1','A',5);insert into D1802 (WL_ID,CK_ID,KC) values ('P2','B',7)"_s);
  const QString unit = unitOf(u"P1"_s);
  openList();
  merge({0, 1, 2});
  EXPECT_EQ(messages().back(), finished);
  for (const QString& table : tables) {
    EXPECT_EQ(sql(u"select wl_id,ck_id,adw,count(*) from "_s + table +
                  u" group by wl_id,ck_id,adw order by ck_id"_s),
              (Table{{u"P1"_s, u"A"_s, unit, u"2"_s}, {u"P1"_s, u"B"_s, unit, u"2"_s}}))
        << table.toStdString();
  }
  EXPECT_EQ(sql(u"select sum(sl),sum(money) from D8202A"_s), (Table{{u"17"_s, u"44.5"_s}}));
  EXPECT_EQ(sql(u"select NOID,WL_ID,CK_ID,adw,SL,MONEY,KC,SL1,SL2,SL3 from D8301A order by NOID"_s),
            (Table{{u"1"_s, u"P1"_s, u"A"_s, unit, u"7"_s, u"70"_s, u"700"_s, u"1"_s, u"2"_s, u"4"_s},
                   {u"2"_s, u"P1"_s, u"C"_s, unit, u"8"_s, u"80"_s, u"800"_s, u"8"_s, u"8"_s, u"8"_s}}));
  EXPECT_EQ(sql(u"select WL_ID,CK_ID,KC from D1802 order by WL_ID,CK_ID"_s),
            (Table{{u"P1"_s, u"A"_s, u"5"_s},
                   {u"P1"_s, u"B"_s, u"0"_s},
                   {u"P1"_s, u"C"_s, u"0"_s},
                   {u"P2"_s, u"B"_s, u"7"_s}}));
  EXPECT_EQ(sql(u"select WL_ID from D1801"_s), (Table{{u"P1"_s}}));
}

// The first product can be folded in, the second cannot: neither is.
TEST_F(Merge, AFailureAtTheSecondProductUndoesTheFirst) {
  sql(u"update D1801 set WL_ID='P''4' where WL_ID='P3';update D1801DW set WL_ID='P''4' where WL_ID='P3';"
      "insert into D8301A (NOID,WL_ID,CK_ID,adw,SL) values ('1','P1','A',1,1);"
      "insert into D8301A (NOID,WL_ID,CK_ID,adw,SL) values ('1','P2','A',2,2)"_s);
  openList();
  merge({0, 1, 2});
  const Lines shown = messages();
  ASSERT_EQ(shown.size(), 2U);
  EXPECT_NE(shown[1], finished);
  EXPECT_EQ(sql(u"select WL_ID,SL from D8301A order by WL_ID"_s),
            (Table{{u"P1"_s, u"1"_s}, {u"P2"_s, u"2"_s}}));
  EXPECT_EQ(sql(u"select count(*) from D1801"_s), (Table{{u"3"_s}}));
  EXPECT_EQ(sql(u"select count(*) from D1802"_s), (Table{{u"0"_s}}));
}

TEST_F(Merge, TheKeptProductsMainUnitIsWrittenAlsoWhereItsCartonIsOlder) {
  const QString carton = unitOf(u"P1"_s);
  sql(u"update D1801DW set T=0,DW_ID='02',ABASE=12 where adw="_s + carton);
  sql(u"insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE) values (1,'P1','01','70',1);"
      "insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE) values (0,'P1','02','71',24);"
      "insert into D712A (WL_ID,CK_ID,adw) values ('P2','A',2)"_s);
  const QString main = sql(u"select adw from D1801DW where WL_ID='P1' and T=1"_s)[0][0];
  ASSERT_NE(main, carton);
  openList();
  const QJsonArray list = rows(u"DBGridEh"_s);
  const auto rowOf = [&](const QString& code) {
    return static_cast<int>(
        std::ranges::find_if(list,
                             [&](const QJsonValue& row) { return row["WL_ID"_L1].toString() == code; }) -
        list.begin());
  };
  merge({rowOf(u"P1"_s), rowOf(u"P2"_s)});
  EXPECT_EQ(sql(u"select WL_ID,adw from D712A"_s), (Table{{u"P1"_s, main}}));
}

TEST_F(Merge, EveryKindOfDocumentLineGoesToTheKeptProduct) {
  const QStringList tables{u"D712A"_s,  u"D713A"_s,  u"D704A"_s,  u"D8401A"_s, u"D8402A"_s, u"D8403A"_s,
                           u"D8300A"_s, u"D8301A"_s, u"D8302A"_s, u"D8303A"_s, u"D8101A"_s, u"D8102A"_s,
                           u"D8103A"_s, u"D8201A"_s, u"D8202A"_s, u"D8203A"_s};
  for (const QString& table : tables)
    sql(u"insert into "_s + table + u" (WL_ID,CK_ID,adw) values ('P3','A',3)"_s);
  openList();
  merge({0, 2});
  for (const QString& table : tables) {
    EXPECT_EQ(sql(u"select WL_ID,adw from "_s + table), (Table{{u"P1"_s, unitOf(u"P1"_s)}}))
        << table.toStdString();
  }
}

TEST_F(Merge, ABatchThatFailsShowsTheErrorAndChangesNothing) {
  sql(u"insert into D712A (WL_ID,CK_ID,adw) values ('P2','A',2)"_s);
  openList();
  sql(u"delete from D1801DW where WL_ID='P1'"_s);  // no unit: its number is missing in the statements
  merge({0, 1});
  EXPECT_TRUE(
      sent(u"ExecSql"_s)[0]["sql"_L1].toString().contains(u"set wl_id='P1',adw= where wl_id='P2';"_s));
  const Lines shown = messages();
  ASSERT_EQ(shown.size(), 2U);
  EXPECT_NE(shown[1], finished);
  EXPECT_NE(shown[1], QString());
  EXPECT_EQ(sql(u"select WL_ID,adw from D712A"_s), (Table{{u"P2"_s, u"2"_s}}));
  EXPECT_EQ(sql(u"select count(*) from D1801"_s), (Table{{u"3"_s}}));
}

}  // namespace
}  // namespace goodsbook
