#include "reference/U2114_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const Partner& TF2114_1::partner() {
  static const Partner partner{
      .caption = tr("供应商基本资料"),
      .deleteStatement = u"delete from d1103 Where kh_gys_id=%S"_s,
      .listStatement =
          u" SELECT d1103.kh_gys_id,d1103.kg_name,d1103.full_name,d1103.grade, d1002.addr_id,d1002.addr_name,d1011.send_id,d1011.send_name, d1103.km_ida,d1103.km_idb,d1103.bdate,d1103.edate,d1103.fzr,d1103.tel, d1103.tel1,d1103.fax,d1103.addr,d1103.email,d1103.web,d1103.note FROM d1103 INNER JOIN d1011 ON d1103.send_id = d1011.send_id INNER JOIN d1002 ON d1103.addr_id = d1002.addr_id"_s,
      .codeTitle = tr("供应商代号"),
      .codeCaption = tr("供应商编号"),
      .uniqueness = u"select * from D1103 where KH_gys_id='"_s,
      .taken = tr("供应商编号已存在!"),
      .accountHead = u"1151"_s,
      .insert =
          u"INSERT INTO D1103(KH_GYS_ID, KG_NAME,PYM,FULL_NAME, GRADE, ADDR_ID, SEND_ID, KM_IDA,KM_IDB, BDATE,EDATE, FZR, TEL, TEL1, FAX, ADDR, EMAIL, NOTE, WEB)VALUES('{Edit1}','{Edit2}','{pym}','{FULL_NAME}','{GRADE}','{addr_id}','{SEND_ID}','{number}','{account}',GETDATE(),GETDATE(),'{Edit3}','{Edit4}','{Edit5}','{Edit6}','{Edit7}','{Edit8}','{Edit9}','{web}')"_s,
      .update =
          u"Update d1103  set KH_GYS_ID='{Edit1}',FULL_NAME='{FULL_NAME}',KG_NAME='{Edit2}',PYM='{pym}',FZR='{Edit3}',TEL='{Edit4}',TEL1='{Edit5}',FAX='{Edit6}',ADDR='{Edit7}',EMAIL='{Edit8}',NOTE='{Edit9}',SEND_ID='{SEND_ID}',ADDR_ID='{addr_id}',WEB='{web}',GRADE='{GRADE}' where KH_GYS_ID='{row}';"_s,
  };
  return partner;
}

TF2114_1::TF2114_1(QWidget* owner) : PartnerEditor(partner(), owner) {}

}  // namespace goodsbook
