#include "reference/U2113_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const Partner& TF2113_1::partner() {
  static const Partner partner{
      .caption = tr("客户基本资料"),
      .table = u"d1102"_s,
      .listStatement =
          u" SELECT d1102.kh_gys_id,d1102.kg_name,d1102.full_name,d1102.grade, d1002.addr_id,d1002.addr_name,d1011.send_id,d1011.send_name, d1102.km_ida,d1102.km_idb,d1102.bdate,d1102.edate,d1102.fzr, d1102.tel,d1102.tel1,d1102.fax,d1102.addr,d1102.email,d1102.web, d1102.note,D1101.YW_ID,D1101.YW_NAME FROM d1102 INNER JOIN d1011 ON d1102.send_id = d1011.send_id INNER JOIN d1002 ON d1102.addr_id = d1002.addr_id LEFT OUTER JOIN  D1101 ON D1102.KM_IDA = D1101.YW_ID"_s,
      .codeTitle = tr("客户代号"),
      .codeCaption = tr("客户编号"),
      .taken = tr("客户编号已存在!"),
      .accountHead = u"2131"_s,
      .hasSalesperson = true,
  };
  return partner;
}

TF2113_1::TF2113_1(QWidget* owner) : PartnerEditor(partner(), owner) {}

}  // namespace goodsbook
