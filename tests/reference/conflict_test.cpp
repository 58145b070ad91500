// Rows of the reference data that another program changes or deletes while their editor is open, what a
// question before deleting tells, and where filters open.
#include <gtest/gtest.h>

#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Member {
  const char* name;
  int module;
  QString insert;  // the row "1"
  QString node;    // trees: what is selected
  QString change;
  QString shown, changed;  // how the question calls the row and the field
  QString remove;
};

const Member members[] = {
    {"a unit",
     103,
     u"insert into D1003 (dw_id,dw_name) values ('1','瓶')"_s,
     {},
     u"update D1003 set dw_name='箱'"_s,
     u"1 瓶"_s,
     u"单位名称"_s,
     u"delete from D1003"_s},
    {"a currency",
     125,
     u"insert into D1001 (hb_id,hb_name,hb_bw,hb_hl) values ('1','美元',0,7)"_s,
     {},
     u"update D1001 set hb_hl=8"_s,
     u"1 美元"_s,
     u"汇率"_s,
     u"delete from D1001"_s},
    {"a category", 104, u"insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('1','饮料','Z')"_s, u"1"_s,
     u"update D1004 set CLASS_NAME='食品'"_s, u"1 饮料"_s, u"类别名称"_s, u"delete from D1004"_s},
    {"a warehouse", 107, u"insert into D1007 (CK_ID,CK_NAME,OID) values ('1','总店','Z')"_s, u"1"_s,
     u"update D1007 set CK_TEL='5'"_s, u"1 总店"_s, u"电话"_s, u"delete from D1007"_s},
    {"staff",
     112,
     u"insert into D1008 (BM_ID,BM_NAME,OID) values ('1','仓储','Z');"
     "insert into D1101 (YW_ID,YW_NAME,BM_ID,T) values ('1','张三','1',0)"_s,
     {},
     u"update D1101 set YW_NAME='李四'"_s,
     u"1 张三"_s,
     u"名称"_s,
     u"delete from D1101"_s},
    {"a customer",
     113,
     u"insert into D1002 (addr_ID,addr_NAME,OID) values ('01','本地','Z');"
     "insert into D1011 (SEND_ID,SEND_NAME) values ('1','自提');"
     "insert into D1102 (KH_GYS_ID,KG_NAME,GRADE,ADDR_ID,SEND_ID) values ('1','客一','1','01','1')"_s,
     {},
     u"update D1102 set KG_NAME='客二'"_s,
     u"1 客一"_s,
     u"简称"_s,
     u"delete from D1102"_s},
    {"an account",
     122,
     u"insert into D1010 (jy_id,jy_name,classid) values ('1','工行',2)"_s,
     {},
     u"update D1010 set jy_name='建行'"_s,
     u"1 工行"_s,
     u"帐户名称"_s,
     u"delete from D1010"_s},
};

class Conflict : public ReferenceTest, public testing::WithParamInterface<Member> {
 protected:
  void openList() {
    sql(GetParam().insert);
    open(GetParam().module);
    rows(u"DBGridEh"_s);
    if (!GetParam().node.isNull()) done({{u"cmd"_s, u"node"_s}, {u"code"_s, GetParam().node}});
  }
  void edit() {
    openList();
    act(u"Act_Edit"_s);
    statements();
  }
};

INSTANTIATE_TEST_SUITE_P(Reference, Conflict, testing::ValuesIn(members), [](const auto& member) {
  QString name = QString::fromLatin1(member.param.name);
  return name.replace(u' ', u'_').toStdString();
});

TEST_P(Conflict, AChangeMeanwhileIsAskedAbout) {
  edit();
  sql(GetParam().change);
  answer({u"n"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"【%1】打开后已被其他用户修改：%2。\r\n是否仍然保存?"_s.arg(
                            GetParam().shown, GetParam().changed)});
  EXPECT_EQ(statements(), Lines());
  EXPECT_EQ(sql(u"select count(*) as n from SYS_AUDIT"_s), (Table{{u"0"_s}}));
  click(u"btn_Cancel"_s);
}

TEST_P(Conflict, AListReadLongAgoDoesNotBringOldValuesBack) {
  openList();
  sql(GetParam().change);
  act(u"Act_Edit"_s);
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  const QString changed = GetParam().change.section(u'=', -1).remove(u'\'');
  const Lines sent = statements();
  ASSERT_FALSE(sent.empty());
  EXPECT_TRUE(sent.back().contains(changed)) << sent.back().toStdString();
}

TEST_P(Conflict, ADeletedRowIsNotSaved) {
  edit();
  sql(GetParam().remove);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"【%1】已被其他用户删除，不能保存!"_s.arg(GetParam().shown)});
  EXPECT_EQ(statements(), Lines());
  click(u"btn_Cancel"_s);
}

TEST_P(Conflict, WithoutAChangeNothingIsAsked) {
  edit();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select count(*) as n from SYS_AUDIT"_s), (Table{{u"1"_s}}));
}

class Stale : public ReferenceTest {
 protected:
  void SetUp() override {
    ReferenceTest::SetUp();
    sql(u"insert into D1002 (addr_ID,addr_NAME,OID) values ('01','本地','Z'),('02','外地','Z');"
        "insert into D1011 (SEND_ID,SEND_NAME) values ('1','自提'),('2','快递');"
        "insert into D1008 (BM_ID,BM_NAME,OID) values ('1','仓储','Z'),('2','销售','Z');"
        "insert into D1101 (YW_ID,YW_NAME,BM_ID,T) values ('Y1','张三','1',0),('Y2','李四','1',0);"
        "insert into D1102 (KH_GYS_ID,KG_NAME,GRADE,ADDR_ID,SEND_ID,KM_IDA) values ('1','客一','1','01','1','Y1');"
        "insert into D6801 values ('1001','现金'),('1002','银行存款');"
        "insert into D1010 (jy_id,jy_name,classid,km_id,qcmoney) values ('1','工行',1,'1002',0)"_s);
  }
  void openList(int module) {
    open(module);
    rows(u"DBGridEh"_s);
  }
  QString row(const QString& field) { return rows(u"DBGridEh"_s)[0][field].toString(); }
};

TEST_F(Stale, ACustomersCodesAndNamesComeUpToDate) {
  openList(113);
  sql(u"update D1102 set KM_IDA='Y2',ADDR_ID='02',SEND_ID='2'"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"YW_ID"_s) + text(u"YW_NAME"_s), u"Y2李四"_s);
  EXPECT_EQ(text(u"addr_id"_s) + text(u"ADDR_NAME"_s), u"02外地"_s);
  EXPECT_EQ(text(u"SEND_ID"_s) + text(u"SEND_NAME"_s), u"2快递"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select KM_IDA,ADDR_ID,SEND_ID from D1102"_s), (Table{{u"Y2"_s, u"02"_s, u"2"_s}}));
  EXPECT_EQ(row(u"YW_NAME"_s) + row(u"ADDR_NAME"_s) + row(u"SEND_NAME"_s), u"李四外地快递"_s);
}

TEST_F(Stale, ACustomerWhomTheListWouldNotShowComesUpToDateToo) {
  openList(113);
  sql(u"update D1102 set KM_IDA='Y2',SEND_ID='2',NOTE='新';delete from D1002"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"YW_ID"_s) + text(u"YW_NAME"_s), u"Y2李四"_s);
  EXPECT_EQ(text(u"SEND_ID"_s) + text(u"SEND_NAME"_s), u"2快递"_s);
  EXPECT_EQ(text(u"addr_id"_s) + text(u"ADDR_NAME"_s), u"01"_s);
  EXPECT_EQ(text(u"Edit9"_s), u"新"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(Stale, AnAccountsTypeComesUpToDate) {
  openList(122);
  sql(u"update D1010 set classid=0,km_id='1001'"_s);
  act(u"Act_Edit"_s);
  EXPECT_TRUE(get(u"RB2"_s)["checked"_L1].toBool());
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select classid from D1010"_s), (Table{{u"0"_s}}));
  EXPECT_EQ(row(u"CLSNAME"_s), u"现金"_s);
}

TEST_F(Stale, AStaffMembersDepartmentComesUpToDate) {
  openList(112);
  sql(u"update D1101 set BM_ID='2'"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"BM_ID"_s) + text(u"bm_NAME"_s), u"2销售"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(row(u"BM_NAME"_s), u"销售"_s);
}

TEST_F(Stale, TheQuestionNamesFieldsThatAreStoredUnderAnotherName) {
  struct Case {
    int module;
    QString change, question;
  };
  for (const Case& one : {Case{113, u"update D1102 set KM_IDA='Y2'"_s,
                               u"【1 客一】打开后已被其他用户修改：业务员。\r\n是否仍然保存?"_s},
                          Case{122, u"update D1010 set classid=0"_s,
                               u"【1 工行】打开后已被其他用户修改：类型。\r\n是否仍然保存?"_s}}) {
    SCOPED_TRACE(one.module);
    openList(one.module);
    act(u"Act_Edit"_s);
    sql(one.change);
    answer({u"n"_s});
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines{one.question});
    click(u"btn_Cancel"_s);
    done({{u"cmd"_s, u"close"_s}});
  }
}

struct Used {
  const char* name;
  int module;
  QString insert;
  QString node;
  QString question;
};

const Used used[] = {
    {"a unit",
     103,
     u"insert into D1003 (dw_id,dw_name) values ('1','瓶');"
     "insert into D1801DW (WL_ID,DW_ID) values ('a','1');insert into D1801DW (WL_ID,DW_ID) values ('b','1')"_s,
     {},
     u"是否删除【1 瓶】?\r\n该资料已被使用：商品单位 2 行。"_s},
    {"a category with a child", 104,
     u"insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('1','饮料','Z');"
     "insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('2','茶','1');"
     "insert into D1801 (WL_ID,WL_NAME,CLASS_ID) values ('a','可乐','1')"_s,
     u"1"_s, u"是否删除【1 饮料】?\r\n它有 1 个下级，下级不会一起删除。\r\n该资料已被使用：商品 1 行。"_s},
    {"a warehouse", 107,
     u"insert into D1007 (CK_ID,CK_NAME,OID) values ('1','总店','Z');insert into D1802 (WL_ID,CK_ID) values ('a','1');"
     "insert into SYS_USER_CK values ('ADMIN','1',1);insert into D8202 (noid,ck_id) values ('1','1');"
     "insert into D8202 (noid,ck_id) values ('2','1');insert into D1801DWSJ (ADW,CK_ID) values (1,'1');"
     "insert into D8201A (WL_ID,CK_ID) values ('a','1');insert into D8402A (WL_ID,CK_ID) values ('a','1')"_s,
     u"1"_s,
     u"是否删除【1 总店】?\r\n该资料已被使用：商品库存 1 行、仓库权限 1 行、进货单 2 行、区域售价 1 行、采购订单 1 行、其他单据 1 行。"_s},
    {"a department", 108,
     u"insert into D1008 (BM_ID,BM_NAME,OID) values ('1','仓储','Z');"
     "insert into D1101 (YW_ID,YW_NAME,BM_ID) values ('9','张三','1')"_s,
     u"1"_s, u"是否删除【1 仓储】?\r\n该资料已被使用：公司职员 1 行。"_s},
    {"a delivery method",
     123,
     u"insert into D1011 (SEND_ID,SEND_NAME) values ('1','自提');"
     "insert into D1102 (KH_GYS_ID,SEND_ID) values ('1','1');insert into D1103 (KH_GYS_ID,SEND_ID) values ('1','1')"_s,
     {},
     u"是否删除【1 自提】?\r\n该资料已被使用：客户 1 行、供应商 1 行。"_s},
    {"a salesperson",
     112,
     u"delete from D1101;insert into D1008 (BM_ID,BM_NAME,OID) values ('S','销售','Z');insert into D1101 (YW_ID,YW_NAME,BM_ID) values ('1','张三','S');"
     "insert into D1102 (KH_GYS_ID,KM_IDA) values ('2','1');insert into D8202 (noid,YW_ID) values ('3','1')"_s,
     {},
     u"是否删除【1 张三】?\r\n该资料已被使用：客户 1 行、进货单 1 行。"_s},
    {"a payment method that nothing names",
     124,
     u"insert into D1012 (FF_ID,FF_NAME) values ('1','现金')"_s,
     {},
     u"是否删除【1 现金】?"_s},
};

using Uses = ReferenceTest;

TEST_F(Uses, AreNamedBeforeDeleting) {
  for (const Used& one : used) {
    SCOPED_TRACE(one.name);
    sql(one.insert);
    open(one.module);
    rows(u"DBGridEh"_s);
    if (!one.node.isNull()) done({{u"cmd"_s, u"node"_s}, {u"code"_s, one.node}});
    statements();
    answer({u"n"_s});
    act(u"Act_Delete"_s);
    EXPECT_EQ(messages(), Lines{one.question});
    EXPECT_EQ(statements(), Lines());
    done({{u"cmd"_s, u"close"_s}});
  }
}

using Filters = ReferenceTest;

TEST_F(Filters, OpenOnTheirFirstField) {
  for (const int module : {112, 113, 114}) {
    open(module);
    for (int again = 0; again < 2; ++again) {
      act(u"Act_Filter"_s);
      EXPECT_TRUE(get(u"GYS_NAME"_s)["focused"_L1].toBool()) << module;
      press(u"Tab"_s);
      EXPECT_TRUE(get(u"btn_ok"_s)["focused"_L1].toBool()) << module;
      press(u"Tab"_s);
      EXPECT_TRUE(get(u"btn_Cancel"_s)["focused"_L1].toBool()) << module;
      press(u"Esc"_s);
    }
    done({{u"cmd"_s, u"close"_s}});
  }
}

}  // namespace
}  // namespace goodsbook
