#include "reference/U2114_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const Partner& TF2114_1::partner() {
  static const Partner partner{
      .caption = tr("供应商基本资料"),
      .table = u"d1103"_s,
      .listStatement =
          u" SELECT d1103.kh_gys_id,d1103.kg_name,d1103.full_name,d1103.grade, d1002.addr_id,d1002.addr_name,d1011.send_id,d1011.send_name, d1103.km_ida,d1103.km_idb,d1103.bdate,d1103.edate,d1103.fzr,d1103.tel, d1103.tel1,d1103.fax,d1103.addr,d1103.email,d1103.web,d1103.note FROM d1103 INNER JOIN d1011 ON d1103.send_id = d1011.send_id INNER JOIN d1002 ON d1103.addr_id = d1002.addr_id"_s,
      .codeTitle = tr("供应商代号"),
      .codeCaption = tr("供应商编号"),
      .taken = tr("供应商编号已存在!"),
      .accountHead = u"1151"_s,
  };
  return partner;
}

TF2114_1::TF2114_1(QWidget* owner) : PartnerEditor(partner(), owner) {}

}  // namespace goodsbook
