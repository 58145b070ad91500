#include "reference/U2113_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const Partner& TF2113_1::partner() {
  static const Partner partner{
      .caption = tr("客户基本资料"),
      .deleteStatement = u"delete from d1102 Where kh_gys_id=%S"_s,
      .listStatement =
          u" SELECT d1102.kh_gys_id,d1102.kg_name,d1102.full_name,d1102.grade, d1002.addr_id,d1002.addr_name,d1011.send_id,d1011.send_name, d1102.km_ida,d1102.km_idb,d1102.bdate,d1102.edate,d1102.fzr, d1102.tel,d1102.tel1,d1102.fax,d1102.addr,d1102.email,d1102.web, d1102.note,D1101.YW_ID,D1101.YW_NAME FROM d1102 INNER JOIN d1011 ON d1102.send_id = d1011.send_id INNER JOIN d1002 ON d1102.addr_id = d1002.addr_id LEFT OUTER JOIN  D1101 ON D1102.KM_IDA = D1101.YW_ID"_s,
      .codeTitle = tr("客户代号"),
      .codeCaption = tr("客户编号"),
      .uniqueness = u"select * from D1102 where KH_gys_id='"_s,
      .taken = tr("客户编号已存在!"),
      .accountHead = u"2131"_s,
      .hasSalesperson = true,
      .insert =
          u"INSERT INTO D1102(KH_GYS_ID, KG_NAME,PYM,FULL_NAME, GRADE, ADDR_ID, SEND_ID, KM_IDA,KM_IDB, BDATE,EDATE, FZR, TEL, TEL1, FAX, ADDR, EMAIL, NOTE, WEB)VALUES('{Edit1}','{Edit2}','{pym}','{FULL_NAME}','{GRADE}','{addr_id}','{SEND_ID}','{YW_ID}','{account}',GETDATE(),GETDATE(),'{Edit3}','{Edit4}','{Edit5}','{Edit6}','{Edit7}','{Edit8}','{Edit9}','{web}')"_s,
      .update =
          u"Update d1102  set KH_GYS_ID='{Edit1}',FULL_NAME='{FULL_NAME}',KG_NAME='{Edit2}',PYM='{pym}',FZR='{Edit3}',TEL='{Edit4}',TEL1='{Edit5}',FAX='{Edit6}',ADDR='{Edit7}',EMAIL='{Edit8}',NOTE='{Edit9}',KM_IDA='{YW_ID}',SEND_ID='{SEND_ID}',ADDR_ID='{addr_id}',WEB='{web}',GRADE='{GRADE}' where KH_GYS_ID='{row}';"_s,
  };
  return partner;
}

TF2113_1::TF2113_1(QWidget* owner) : PartnerEditor(partner(), owner) {}

}  // namespace goodsbook
