#include "tests/engine/screens/shop.h"

namespace goodsbook::engine::test {
namespace {

constexpr std::string_view shopData[] = {
    "insert into D1003 values('01','瓶','P',''),('02','箱','X','24瓶'),('03','kg','KG',null)",
    "insert into D1004 values('01','饮料','','Z','YL'),('0101','碳酸','','01','TS'),('02','食品','','Z','SP')",
    "insert into SYS_USER values('U1','张三',1),('U2','李四',0)",
    "insert into D1007 values('01','总仓','ZC','','','','','Z'),('02','分仓','FC','','','','','01')",
    "insert into D1008 values('B1','采购部','CGB','王五','','Z')",
    "insert into D1002 values('01','华北','张三','010','','','Z')",
    "insert into D1011 values('1','自提','ZT')",
    "insert into D1012 values('1','月结','YJ')",
    "insert into D1001 values('1','人民币','RMB','',1,1),('2','美元','MY','',0,7.123456)",
    "insert into D1101 values('Y1','赵六','ZL','B1','138','','','',0.05,'2026-01-01','2027-01-01',0,'')",
    "insert into D6801 values('1001','现金'),('1002','银行'),('100201','工行')",
    "insert into D1010 values('01','现金','XJ',0,'','','1001',100.5)",
    "insert into D1102(KH_GYS_ID,KG_NAME,PYM,FULL_NAME,GRADE,ADDR_ID,SEND_ID,KM_IDA,KM_IDB,FZR,TEL) "
    "values('C001','客户','KH','全称','1','01','1','Y1','21310001','孙七','010')",
    "insert into D1103(KH_GYS_ID,KG_NAME,PYM,FULL_NAME,GRADE,ADDR_ID,SEND_ID,KM_IDA,KM_IDB,FZR,TEL) "
    "values('S001','供应商','GYS','全称','1','01','1','26110001','11510001','周八','020')",
    "insert into D1801(WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,DJ,MONEY,KC,USER_ID,BDATE,EDATE,T,NOTE,cd,PYM,"
    "DW_ZH,DW_J_NAME,dwcount,TMC) values"
    "('A001','可口可乐','330ml',1,0,'01',1.5,150,100,'ADMIN','2026-01-05 08:30:00',null,1,'','上海','KKKL',1,'',1,2),"
    "('A002','雪碧','330ml',1,1,'0101',1.4,-14,-10,'U1','2026-02-10','2026-03-01 12:00:00',1,'热销','上海','XB',24,'箱',2,1),"
    "('A003','饼干',null,0,0,'02',3.25,0,0,'ADMIN','2026-02-28 23:59:59','2026-02-28',1,null,null,'BG',1,null,1,1),"
    "('A004','无类商品','x',1,0,'99',0,0,0,'ADMIN','2026-03-15',null,1,'','','WLSP',1,'',1,2)",
    "insert into D1801DW(T,WL_ID,DW_ID,TM,ABASE,SJ,VIPSJ,PFJ,CGJ,PFJ1,PFJ2,PFJ3,PFJ4) values"
    "(1,'A001','01','690001',1,3.5,3.2,3,2,0,0,0,0),(1,'A002','01','690002',1,3.4,3.1,2.9,1.9,0,0,0,0),"
    "(0,'A002','02','690003',24,80,75,70,45.6,1,2,3,4),(1,'A003','03','690004',1,12.8,12,11,8,0,0,0,0),"
    "(1,'A004','01','690001',1,1,1,1,1,0,0,0,0)",
    "insert into D1801DWTM select adw,'690004' from D1801DW where TM='690002'",
    "insert into D1801DWSJ select adw,'01',3.3,3 from D1801DW where TM='690001'",
    "insert into D1802(WL_ID,CK_ID,KC,DJ,CHECK_KC) values('A001','01',100,1.5,0),('A002','01',-10,1.4,1)",
    "insert into D8202(noid,kh_gys_id,ck_id,bdate,edate,send_id,user_id,YW_ID,JY_ID,note,t,sk,sdate) values"
    "('26110001','S001','01','2026-11-01',null,'1','ADMIN','Y1','01','',1,0,null),"
    "('26110002','S001','02','2026-11-02',null,'1','U1','Y1','01','急',0,5.5,'2026-11-03')",
    "insert into D8202A(noid,id,wl_id,ck_id,sl,dj,money,sl_return,DW_J,DW_L,DW_ZH,note,d8201aid,adw) "
    "select '26110001',1,WL_ID,'01',2,2.1,4.2,0,0,2,1,'',0,adw from D1801DW where TM='690002'",
    "insert into D8202A(noid,id,wl_id,ck_id,sl,dj,money,sl_return,DW_J,DW_L,DW_ZH,note,d8201aid,adw) "
    "select '26110002',1,WL_ID,'02',5,1.8,9,0,0,5,1,'n',0,adw from D1801DW where TM='690002'",
};

// The shop, made once for all tests of a process.
const std::filesystem::path& shopFile() {
  static Session shop(Tables::Program);
  static const std::filesystem::path file = [] {
    shop.setUp(shopData);
    const std::filesystem::path copy = shop.folder() / "shop.db";
    shop.connection().backup(copy);
    return copy;
  }();
  return file;
}

}  // namespace

void expectAnswer(const StatementRow& row) {
  Session session(shopFile());
  expectAnswer(session, row);
}

}  // namespace goodsbook::engine::test
