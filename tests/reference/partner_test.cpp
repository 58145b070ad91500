// Customers and suppliers.
#include <gtest/gtest.h>

#include "host/U_glo.h"
#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Member {
  int module;
  QString listClass, caption, table, codeTitle, codeCaption, account, kmIda;
  bool customers;
};

const Member members[] = {
    {113, u"TF2113"_s, u"客户基本资料"_s, u"d1102"_s, u"客户代号"_s, u"客户编号"_s, u"2131"_s, u""_s, true},
    {114, u"TF2114"_s, u"供应商基本资料"_s, u"d1103"_s, u"供应商代号"_s, u"供应商编号"_s, u"1151"_s,
     u"2611000001"_s, false},
};

class Partners : public ReferenceTest, public testing::WithParamInterface<Member> {
 protected:
  const Member& member() { return GetParam(); }
  void SetUp() override {
    ScreenTest::SetUp();
    sql(u"insert into D1002 (addr_id,addr_name,oid) values ('01','华东','Z'),('02','华南','Z');"
        "insert into D1011 (send_id,send_name) values ('B','快递'),('A','自提');"
        "insert into D1101 (yw_id,yw_name,bm_id) values ('Y1','张三','01');"
        "insert into D1008 (bm_id,bm_name,oid) values ('01','营业部','Z')"_s);
  }
  void TearDown() override {
    onGui([] { GPARAM6 = 0; });
    ScreenTest::TearDown();
  }
  void insert(const QString& code, const QString& region = u"01"_s, const QString& delivery = u"B"_s) {
    sql(u"insert into "_s + member().table +
        u" (kh_gys_id,kg_name,pym,full_name,grade,addr_id,send_id,km_ida,km_idb,bdate,edate,fzr,tel,web) values ('"_s +
        code + u"','旧名','JM','旧全名','3','"_s + region + u"','"_s + delivery +
        u"','','K','2020-01-01','2020-01-01','王','123','www.a.cn')"_s);
  }
  void openPartners() { openList(member().module); }
  QStringList codes() { return column(u"KH_GYS_ID"_s); }
  QString inserted(const QString& code, const QString& number) {
    return u"INSERT INTO "_s + member().table.toUpper() +
           u"(KH_GYS_ID, KG_NAME,PYM,FULL_NAME, GRADE, ADDR_ID, SEND_ID, KM_IDA,KM_IDB, BDATE,EDATE, FZR, TEL, TEL1, FAX, ADDR, EMAIL, NOTE, WEB)VALUES('"_s +
           code + u"','新','X','','1','01','A','"_s + (member().customers ? QString() : number) + u"','"_s +
           member().account + number.mid(4) + u"',GETDATE(),GETDATE(),'','','','','','','','')"_s;
  }
  QString uniqueness(const QString& code) {
    return u"select * from "_s + member().table.toUpper() + u" where KH_gys_id='"_s + code + u'\'';
  }
  Lines executed() {  // numbers drawn are left out
    Lines texts;
    const QJsonArray sent = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
    for (const QJsonValue& one : sent) {
      if (one["op"_L1].toString() == "GetNOID"_L1) continue;
      EXPECT_EQ(one["module"_L1].toString(), QString::number(member().module));
      texts.push_back(one["sql"_L1].toString());
    }
    return texts;
  }
};

INSTANTIATE_TEST_SUITE_P(Members, Partners, testing::ValuesIn(members),
                         [](const auto& made) { return "Module" + std::to_string(made.param.module); });

TEST_P(Partners, TheListShowsThoseWhoseRegionAndDeliveryExist) {
  insert(u"P1"_s);
  insert(u"P2"_s, u"99"_s);
  insert(u"P3"_s, u"01"_s, u"Z"_s);
  const QJsonObject screen = open(member().module);
  EXPECT_EQ(screen["class"_L1].toString(), member().listClass);
  EXPECT_EQ(screen["caption"_L1].toString(), member().caption);
  EXPECT_EQ(codes(), QStringList{u"P1"_s});
  const QString list =
      member().customers
          ? u" SELECT d1102.kh_gys_id,d1102.kg_name,d1102.full_name,d1102.grade, d1002.addr_id,d1002.addr_name,d1011.send_id,d1011.send_name, d1102.km_ida,d1102.km_idb,d1102.bdate,d1102.edate,d1102.fzr, d1102.tel,d1102.tel1,d1102.fax,d1102.addr,d1102.email,d1102.web, d1102.note,D1101.YW_ID,D1101.YW_NAME FROM d1102 INNER JOIN d1011 ON d1102.send_id = d1011.send_id INNER JOIN d1002 ON d1102.addr_id = d1002.addr_id LEFT OUTER JOIN  D1101 ON D1102.KM_IDA = D1101.YW_ID"_s
          : u" SELECT d1103.kh_gys_id,d1103.kg_name,d1103.full_name,d1103.grade, d1002.addr_id,d1002.addr_name,d1011.send_id,d1011.send_name, d1103.km_ida,d1103.km_idb,d1103.bdate,d1103.edate,d1103.fzr,d1103.tel, d1103.tel1,d1103.fax,d1103.addr,d1103.email,d1103.web,d1103.note FROM d1103 INNER JOIN d1011 ON d1103.send_id = d1011.send_id INNER JOIN d1002 ON d1103.addr_id = d1002.addr_id"_s;
  const Lines sent = statements();
  EXPECT_NE(std::find(sent.begin(), sent.end(), list), sent.end());
  QStringList columns;
  const QJsonArray all = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}})["columns"_L1].toArray();
  for (const QJsonValue& column : all) columns << column["title"_L1].toString();
  EXPECT_EQ(columns.join(u',').toStdString(),
            (member().codeTitle + u",简称,全称,负责人,电话,手机,传真,"_s +
             (member().customers ? u"业务员,"_s : QString()) +
             u"等级,所属区域号,所属区域,送货代号,送货方式,开帐日期,最后更改,详细地址,电邮,网址,备注"_s)
                .toStdString());
}

TEST_P(Partners, FieldsHaveTheirLabelsLimitsAndOrder) {
  openPartners();
  act(u"Act_Add"_s);
  EXPECT_EQ(frontClass(), member().listClass + u"_1"_s);
  EXPECT_EQ(focused(), u"Edit1"_s);
  type(u"Edit1"_s, u"p1"_s);
  type(u"Edit2"_s, u"新"_s);
  focus(u"Edit1"_s);
  QStringList fields;
  while (focused() != u"btn_ok" && fields.size() < 20) {
    const QJsonObject field = get(focused());
    fields << field["name"_L1].toString() + u' ' + field["title"_L1].toString() + u' ' +
                  QString::number(field["maxlength"_L1].toInt());
    press(u"Return"_s);
  }
  EXPECT_EQ(
      fields.join(u',').toStdString(),
      (u"Edit1 代    号 10,Edit2 简    称 40,FULL_NAME 全  称 40,GRADE 等级 2,addr_id 所属地区 6,SEND_ID 送货方式 2,"_s +
       (member().customers ? u"YW_ID 业务员 4,"_s : QString()) +
       u"Edit3 联 系 人 20,Edit4 电 话 一 50,Edit5 电 话 二 50,Edit6 传    真 30,Edit7 地    址 100,Edit8 EMAIL 100,Edit9 备    注 100,web 网    址 100"_s)
          .toStdString());
  EXPECT_EQ(text(u"Edit1"_s), u"p1"_s) << "the case stays as typed";
  EXPECT_EQ(text(u"ADDR_NAME"_s) + text(u"SEND_NAME"_s), u"华东自提"_s);
  click(u"btn_Cancel"_s);
}

TEST_P(Partners, ANewOneStartsWithTheDefaultsAndTheCurrentCode) {
  insert(u"P1"_s);
  openPartners();
  act(u"Act_Add"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"P1"_s);
  EXPECT_EQ(text(u"Edit2"_s) + text(u"FULL_NAME"_s) + text(u"Edit3"_s) + text(u"web"_s) +
                text(u"ADDR_NAME"_s) + text(u"SEND_NAME"_s),
            QString());
  EXPECT_EQ(text(u"addr_id"_s) + u' ' + text(u"SEND_ID"_s) + u' ' + text(u"GRADE"_s), u"01 A 1"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  EXPECT_EQ(messages(), Lines{member().codeCaption + u"已存在!"_s});
  type(u"Edit1"_s, u"p2"_s);
  type(u"Edit2"_s, u"新"_s);
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(executed(), Lines{inserted(u"p2"_s, u"2611000001"_s)});
  EXPECT_EQ(codes(), (QStringList{u"P1"_s, u"p2"_s}));
  const QJsonObject added = rows(u"DBGridEh"_s)[1].toObject();
  EXPECT_EQ(added["ADDR_NAME"_L1].toString() + added["SEND_NAME"_L1].toString(), u"华东自提"_s);
  EXPECT_EQ(
      sql(u"select km_ida,km_idb,convert(varchar(10),bdate,120),convert(varchar(10),edate,120) from "_s +
          member().table + u" where kh_gys_id='p2'"_s),
      (Table{{member().kmIda, member().account + u"000001"_s, u"2026-11-20"_s, u"2026-11-20"_s}}));
}

TEST_P(Partners, OneWhoseRegionIsMissingIsSavedAndTheUserIsTold) {
  sql(u"delete from D1002"_s);
  openPartners();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"p1"_s);
  type(u"Edit2"_s, u"新"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"已保存，但所属地区【01】不存在：建立之前，刷新后的列表中看不到它。"_s});
  EXPECT_EQ(codes(), QStringList{u"p1"_s});
  act(u"Act_Refresh"_s);
  EXPECT_EQ(codes(), QStringList());
  sql(u"insert into D1002 (addr_id,oid) values ('01','Z')"_s);
  act(u"Act_Refresh"_s);
  EXPECT_EQ(codes(), QStringList{u"p1"_s});
}

TEST_P(Partners, RegionAndDeliveryAreNeeded) {
  sql(u"delete from D1011"_s);
  openPartners();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"p1"_s);
  type(u"Edit2"_s, u"新"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"送货方式不能为空!"_s});
  EXPECT_EQ(focused(), u"SEND_ID"_s);
  type(u"SEND_ID"_s, u"X"_s);
  EXPECT_EQ(focus(u"Edit3"_s), u"SEND_ID"_s);
  EXPECT_EQ(messages(), Lines{u"送货方式【X】不存在!"_s});
  click(u"btn_Cancel"_s);
  EXPECT_EQ(executed().back(), uniqueness(u"p1"_s)) << "nothing was written";
}

TEST_P(Partners, CodesAndNamesAreChecked) {
  openPartners();
  act(u"Act_Add"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  type(u"Edit1"_s, u"a'"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  type(u"Edit1"_s, u"a"_s);
  focus(u"Edit2"_s);
  EXPECT_EQ(focus(u"Edit3"_s), u"Edit2"_s);
  EXPECT_EQ(messages(), (Lines{member().codeCaption + u"不能为空!"_s,
                               member().codeCaption + u"中不能有引号!"_s, u"简称不能为空!"_s}));
  EXPECT_EQ(executed(), Lines{uniqueness(u"a"_s)});
  click(u"btn_Cancel"_s);
}

TEST_P(Partners, AnEditKeepsCodeAccountAndDates) {
  insert(u"P1"_s);
  openPartners();
  act(u"Act_Edit"_s);
  EXPECT_EQ(focused(), u"Edit2"_s);
  EXPECT_TRUE(get(u"Edit1"_s)["readonly"_L1].toBool());
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s) + text(u"FULL_NAME"_s) + text(u"GRADE"_s) +
                text(u"addr_id"_s) + text(u"ADDR_NAME"_s) + text(u"SEND_ID"_s) + text(u"SEND_NAME"_s) +
                text(u"Edit3"_s) + text(u"Edit4"_s) + text(u"web"_s),
            u"P1旧名旧全名301华东B快递王123www.a.cn"_s);
  type(u"Edit2"_s, u"新名"_s);
  type(u"addr_id"_s, u"02"_s);
  if (member().customers) type(u"YW_ID"_s, u"Y1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      executed(),
      Lines{
          u"Update "_s + member().table +
          u"  set KH_GYS_ID='P1',FULL_NAME='旧全名',KG_NAME='新名',PYM='XM',FZR='王',TEL='123',TEL1='',FAX='',ADDR='',EMAIL='',NOTE='',"_s +
          (member().customers ? u"KM_IDA='Y1',"_s : QString()) +
          u"SEND_ID='B',ADDR_ID='02',WEB='www.a.cn',GRADE='3' where KH_GYS_ID='P1';"_s});
  const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
  EXPECT_EQ(row["ADDR_NAME"_L1].toString(), u"华南"_s);
  EXPECT_EQ(row["YW_NAME"_L1].toString(), member().customers ? u"张三"_s : QString());
  EXPECT_EQ(sql(u"select km_idb,convert(varchar(10),edate,120) from "_s + member().table),
            (Table{{u"K"_s, u"2020-01-01"_s}}));
}

TEST_P(Partners, NumbersAreDrawnAtTheSave) {
  onGui([] { GPARAM6 = 4; });
  insert(u"0001"_s);
  openPartners();
  for (const QString& mode : {u"Act_Add"_s, u"Act_CopyAdd"_s}) {
    act(mode);
    EXPECT_EQ(text(u"Edit1"_s), u"自动编号"_s);
    EXPECT_FALSE(get(u"Edit1"_s)["enabled"_L1].toBool());
    EXPECT_EQ(focused(), u"Edit2"_s);
    type(u"Edit2"_s, u"新"_s);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines());
  }
  EXPECT_EQ(codes(), (QStringList{u"0001"_s, u"0002"_s, u"0003"_s}));
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"0003"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(codes().last(), u"0003"_s);
}

TEST_P(Partners, TheWebLinkCompletesTheAddress) {
  insert(u"P1"_s);
  openPartners();
  act(u"Act_View"_s);
  EXPECT_TRUE(get(u"OPENURL"_s)["enabled"_L1].toBool());
  EXPECT_EQ(text(u"OPENURL"_s), u"打开该网站"_s);
  click(u"OPENURL"_s);
  click(u"btn_Cancel"_s);
  act(u"Act_Edit"_s);
  for (const QString& address : {u"shop.cn"_s, u" shop.cn "_s, u"HTTP://shop.cn"_s, u"WwW.shop.cn"_s,
                                 u"https://shop.cn"_s, QString()}) {
    type(u"web"_s, address);
    click(u"OPENURL"_s);
  }
  QStringList urls;
  const QJsonArray opened = done({{u"cmd"_s, u"opened"_s}})["urls"_L1].toArray();
  for (const QJsonValue& url : opened) urls << url.toString();
  EXPECT_EQ(urls.join(u',').toStdString(),
            "www.a.cn,www.shop.cn,www.shop.cn,HTTP://shop.cn,WwW.shop.cn,www.https://shop.cn");
  click(u"btn_Cancel"_s);
}

TEST_P(Partners, RegionAndDeliveryArePicked) {
  openPartners();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"a"_s);
  type(u"Edit2"_s, u"新"_s);
  type(u"SEND_ID"_s, QString());
  click(u"SEND_ID.button"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 2);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), member().listClass + u"_1"_s);
  type(u"SEND_ID"_s, u"B"_s);
  if (member().customers) {
    click(u"YW_ID.button"_s);
    press(u"Return"_s);
    EXPECT_EQ(text(u"YW_ID"_s) + text(u"YW_NAME"_s), u"Y1张三"_s);
  }
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select send_id from "_s + member().table), (Table{{u"B"_s}}));
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["SEND_NAME"_L1].toString(), u"快递"_s);
}

TEST_P(Partners, TheFilterLooksInFiveColumns) {
  insert(u"P1"_s);
  openPartners();
  act(u"Act_Filter"_s);
  EXPECT_EQ(frontClass(), member().listClass + u'F');
  EXPECT_EQ(get(u"GYS_NAME"_s)["title"_L1].toString(), u"客户代号/名称/联系人/电话/拼音码"_s);
  EXPECT_EQ(get(u"GYS_NAME"_s)["maxlength"_L1].toInt(), 20);
  type(u"GYS_NAME"_s, u"王"_s);
  press(u"F2"_s);
  EXPECT_EQ(codes(), QStringList{u"P1"_s});
  const QString condition =
      u"((d.KH_GYS_ID like '%王%') or(d.KG_NAME like '%王%') or(d.FZR like '%王%') or(d.pym like '%王%') or(d.TEL like '%王%'))"_s;
  EXPECT_TRUE(statements().back().contains(QString(condition).replace(u"d."_s, member().table + u'.')));
  act(u"Act_Filter"_s);
  type(u"GYS_NAME"_s, u"xyz"_s);
  press(u"F4"_s);
  EXPECT_EQ(codes(), QStringList());
}

TEST_P(Partners, DeletingSendsItsStatement) {
  insert(u"P1"_s);
  openPartners();
  answer({u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(executed(), Lines{u"delete from "_s + member().table + u" Where kh_gys_id='P1'"_s});
  EXPECT_EQ(codes(), QStringList());
}

}  // namespace
}  // namespace goodsbook
