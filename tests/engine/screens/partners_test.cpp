#include <gtest/gtest.h>

#include "tests/engine/screens/shop.h"

// The statements of staff, customers, suppliers, and cash and bank accounts.
namespace goodsbook::engine::test {
namespace {

class PartnersTest : public testing::TestWithParam<StatementRow> {};

TEST_P(PartnersTest, LeavesTheRows) {
  expectAnswer(GetParam());
}

const std::string staffList =
    "SELECT D1101.*, D1008.BM_NAME FROM D1101 INNER JOIN  D1008 ON D1101.BM_ID = D1008.BM_ID";
const std::string zhao = "Y1|赵六|ZL|B1|138||||0.05|2026-01-01 00:00:00|2027-01-01 00:00:00|0||采购部";

const StatementRow staff[] = {
    {"staff: list", "", staffList, {zhao}},
    {"staff: filter",
     "",
     staffList +
         " where ((D1101.YW_ID like '%zl%') or(D1101.YW_NAME like '%zl%') or(D1101.TEL like '%zl%') or(D1101.PYM like "
         "'%zl%'))",
     {zhao}},
    {"staff: filter without a hit",
     "",
     staffList +
         " where ((D1101.YW_ID like '%[%') or(D1101.YW_NAME like '%[%') or(D1101.TEL like '%[%') or(D1101.PYM like "
         "'%[%'))",
     {}},
    {"staff: code check", "", "select * from d1101 where yw_id='y2'", {}},
    {"staff: add",
     "INSERT INTO D1101(YW_ID, YW_NAME,PYM,BM_ID, TEL, FAX, EMAIL, ADDR, TC, BDATE, EDATE, T, NOTE) "
     "ValueS('Y2','钱七','QQ','B1','139','','a@b.c','街1号',0.1,'2026-02-01','2027-02-01',0,'')",
     "select * from D1101 where YW_ID='Y2'",
     {"Y2|钱七|QQ|B1|139||a@b.c|街1号|0.1|2026-02-01 00:00:00|2027-02-01 00:00:00|0|"}},
    {"staff: add without dates",
     "INSERT INTO D1101(YW_ID, YW_NAME,PYM,BM_ID, TEL, FAX, EMAIL, ADDR, TC, BDATE, EDATE, T, NOTE) "
     "ValueS('Y2','钱七','QQ','B1','139','','','',0,'','',0,'')",
     "select BDATE,EDATE from D1101 where YW_ID='Y2'",
     {"1900-01-01 00:00:00|1900-01-01 00:00:00"}},
    {"staff: add on a day that does not exist",
     "INSERT INTO D1101(YW_ID, YW_NAME,PYM,BM_ID, TEL, FAX, EMAIL, ADDR, TC, BDATE, EDATE, T, NOTE) "
     "ValueS('Y2','钱七','QQ','B1','139','','','',0,'2026-02-30','',0,'')",
     "select count(*) from D1101",
     {"1"},
     242},
    {"staff: change",
     "update d1101 set "
     "YW_NAME='赵二',PYM='ZE',TEL='1',BM_ID='B1',FAX='',EMAIL='',ADDR='',NOTE='n',tc='0.1',bdate='2026-02-01',edate='2027-02-"
     "01',t=1 where yw_id='Y1'",
     staffList,
     {"Y1|赵二|ZE|B1|1||||0.1|2026-02-01 00:00:00|2027-02-01 00:00:00|1|n|采购部"}},
    {"staff: delete", "delete from D1101 Where yw_id='Y1'", "select count(*) from D1101", {"0"}},
};

const std::string customers =
    " SELECT d1102.kh_gys_id,d1102.kg_name,d1102.full_name,d1102.grade, d1002.addr_id,d1002.addr_name,d1011.send_id,d1011."
    "send_name, d1102.km_ida,d1102.km_idb,d1102.bdate,d1102.edate,d1102.fzr, "
    "d1102.tel,d1102.tel1,d1102.fax,d1102.addr,d1102.email,d1102.web, d1102.note,D1101.YW_ID,D1101.YW_NAME FROM d1102 INNER "
    "JOIN d1011 ON d1102.send_id = d1011.send_id INNER JOIN d1002 ON d1102.addr_id = d1002.addr_id LEFT OUTER JOIN  D1101 "
    "ON D1102.KM_IDA = D1101.YW_ID";
const std::string customer =
    "C001|客户|全称|1|01|华北|1|自提|Y1|21310001|NULL|NULL|孙七|010|NULL|NULL|NULL|NULL|NULL|NULL|Y1|赵六";
const std::string suppliers =
    " SELECT d1103.kh_gys_id,d1103.kg_name,d1103.full_name,d1103.grade, d1002.addr_id,d1002.addr_name,d1011.send_id,d1011."
    "send_name, d1103.km_ida,d1103.km_idb,d1103.bdate,d1103.edate,d1103.fzr,d1103.tel, "
    "d1103.tel1,d1103.fax,d1103.addr,d1103.email,d1103.web,d1103.note FROM d1103 INNER JOIN d1011 ON d1103.send_id = "
    "d1011.send_id INNER JOIN d1002 ON d1103.addr_id = d1002.addr_id";

std::string partnerAdd(const std::string& table, const std::string& number, const std::string& account) {
  return "INSERT INTO " + table +
         "(KH_GYS_ID, KG_NAME,PYM,FULL_NAME, GRADE, ADDR_ID, SEND_ID, KM_IDA,KM_IDB, BDATE,EDATE, FZR, TEL, TEL1, FAX, ADDR, "
         "EMAIL, NOTE, "
         "WEB)VALUES('N1','新','X','新全称','2','01','1','" +
         number + "','" + account + "',GETDATE(),GETDATE(),'联系人','010','139','','','','','www.x.cn')";
}

const StatementRow partners[] = {
    {"customers: list", "", customers, {customer}},
    {"customers: list without a salesperson",
     "update D1102 set KM_IDA='none'",
     customers,
     {"C001|客户|全称|1|01|华北|1|自提|none|21310001|NULL|NULL|孙七|010|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"}},
    {"customers: filter",
     "",
     customers +
         " where ((d1102.KH_GYS_ID like '%c0%') or(d1102.KG_NAME like '%c0%') or(d1102.FZR like '%c0%') or(d1102.pym "
         "like '%c0%') or(d1102.TEL like '%c0%'))",
     {customer}},
    {"customers: code check", "", "select * from D1102 where KH_gys_id='c009'", {}},
    {"customers: add",
     partnerAdd("D1102", "Y1", "21310002"),
     customers + " where d1102.KH_GYS_ID='N1'",
     {"N1|新|新全称|2|01|华北|1|自提|Y1|21310002|2026-11-20 10:11:12|2026-11-20 "
      "10:11:12|联系人|010|139||||www.x.cn||Y1|赵六"}},
    {"customers: change",
     "Update d1102  set "
     "KH_GYS_ID='C002',FULL_NAME='f',KG_NAME='g',PYM='P',FZR='',TEL='1',TEL1='2',FAX='',ADDR='',EMAIL='',NOTE='',KM_IDA='',"
     "SEND_ID='1',ADDR_ID='01',WEB='',GRADE='2' where KH_GYS_ID='C001';",
     customers,
     {"C002|g|f|2|01|华北|1|自提||21310001|NULL|NULL||1|2||||||NULL|NULL"}},
    {"customers: delete", "delete from d1102 Where kh_gys_id='c001'", "select count(*) from D1102", {"0"}},
    {"suppliers: list",
     "",
     suppliers,
     {"S001|供应商|全称|1|01|华北|1|自提|26110001|11510001|NULL|NULL|周八|020|NULL|NULL|NULL|NULL|NULL|NULL"}},
    {"suppliers: filter without a hit",
     "",
     suppliers +
         " where ((d1103.KH_GYS_ID like '%q%') or(d1103.KG_NAME like '%q%') or(d1103.FZR like '%q%') or(d1103.pym "
         "like '%q%') or(d1103.TEL like '%q%'))",
     {}},
    {"suppliers: code check", "", "select KH_GYS_ID from D1103 where KH_gys_id='s001'", {"S001"}},
    {"suppliers: add",
     partnerAdd("D1103", "26110002", "11510002"),
     "select KH_GYS_ID,KM_IDA,KM_IDB,BDATE from D1103 where KH_GYS_ID='N1'",
     {"N1|26110002|11510002|2026-11-20 10:11:12"}},
    {"suppliers: change",
     "Update d1103  set "
     "KH_GYS_ID='S001',FULL_NAME='f',KG_NAME='g',PYM='P',FZR='',TEL='1',TEL1='2',FAX='',ADDR='',EMAIL='',NOTE='',SEND_ID='1',"
     "ADDR_ID='01',WEB='',GRADE='2' where KH_GYS_ID='S001';",
     "select KH_GYS_ID,FULL_NAME,KG_NAME,KM_IDA,GRADE from D1103",
     {"S001|f|g|26110001|2"}},
    {"suppliers: delete", "delete from d1103 Where kh_gys_id='S001'", "select count(*) from D1103", {"0"}},
};

const std::string accountList =
    "SELECT JY_ID, JY_NAME, PYM, CLASSID, YH_NUM, YH_NAME, KM_ID,QCMONEY  ,CASE CLASSID WHEN 0 THEN '现金' WHEN 1 THEN "
    "'银行存款' WHEN 2 THEN '系统使用' END AS CLSNAME FROM D1010";

const StatementRow accounts[] = {
    {"accounts: list", "", accountList, {"01|现金|XJ|0|||1001|100.5|现金"}},
    {"accounts: code check", "", "select jy_id from D1010 where jy_id='01'", {"01"}},
    {"accounts: add, every value in quotes",
     "insert into D1010 (jy_id,jy_name,PYM,CLASSID, YH_NUM, YH_NAME, "
     "KM_ID,QCMONEY)ValueS('02','工行','GH','1','6222','工商银行','100201','')",
     accountList + " where JY_ID='02'",
     {"02|工行|GH|1|6222|工商银行|100201|0|银行存款"}},
    {"accounts: change",
     "update D1010 set jy_name='建行',PYM='JH',CLASSID='2',YH_NUM='',YH_NAME='',km_id='100201',QCMONEY='-5' where jy_id='01'",
     accountList,
     {"01|建行|JH|2|||100201|-5|系统使用"}},
    {"accounts: a balance that is none",
     "update D1010 set QCMONEY='五' where jy_id='01'",
     "select QCMONEY from D1010",
     {"100.5"},
     8114},
    {"accounts: delete, with its semicolon",
     "delete from D1010 Where JY_id='01';",
     "select count(*) from D1010",
     {"0"}},
    {"accounts: a ledger account of the type",
     "",
     "select km_id from d6801 where (km_id='100201') and (km_id like '1002%')",
     {"100201"}},
    {"accounts: a ledger account of another type",
     "",
     "select km_id from d6801 where (km_id='1001') and (km_id like '1002%')",
     {}},
};

INSTANTIATE_TEST_SUITE_P(Staff, PartnersTest, testing::ValuesIn(staff));
INSTANTIATE_TEST_SUITE_P(Partners, PartnersTest, testing::ValuesIn(partners));
INSTANTIATE_TEST_SUITE_P(Accounts, PartnersTest, testing::ValuesIn(accounts));

}  // namespace
}  // namespace goodsbook::engine::test
