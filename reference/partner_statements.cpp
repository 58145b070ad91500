// The texts that customers and suppliers share but for their table and the salesperson.
#include "reference/partner.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QString Partner::deleteStatement() const {
  return u"delete from "_s + table + u" Where kh_gys_id=%S"_s;
}

QString Partner::uniqueness() const {
  return u"select * from "_s + table.toUpper() + u" where KH_gys_id='"_s;
}

QString Partner::insert() const {
  // KM_IDA is the customer's salesperson; with suppliers it keeps the number that was drawn.
  return u"INSERT INTO "_s + table.toUpper() +
         u"(KH_GYS_ID, KG_NAME,PYM,FULL_NAME, GRADE, ADDR_ID, SEND_ID, KM_IDA,KM_IDB, BDATE,EDATE, FZR, TEL, TEL1, FAX, ADDR, EMAIL, NOTE, WEB)VALUES('{Edit1}','{Edit2}','{pym}','{FULL_NAME}','{GRADE}','{addr_id}','{SEND_ID}','"_s +
         (hasSalesperson ? u"{YW_ID}"_s : u"{number}"_s) +
         u"','{account}',GETDATE(),GETDATE(),'{Edit3}','{Edit4}','{Edit5}','{Edit6}','{Edit7}','{Edit8}','{Edit9}','{web}')"_s;
}

QString Partner::update() const {
  return u"Update "_s + table +
         u"  set KH_GYS_ID='{Edit1}',FULL_NAME='{FULL_NAME}',KG_NAME='{Edit2}',PYM='{pym}',FZR='{Edit3}',TEL='{Edit4}',TEL1='{Edit5}',FAX='{Edit6}',ADDR='{Edit7}',EMAIL='{Edit8}',NOTE='{Edit9}',"_s +
         (hasSalesperson ? u"KM_IDA='{YW_ID}',"_s : QString()) +
         u"SEND_ID='{SEND_ID}',ADDR_ID='{addr_id}',WEB='{web}',GRADE='{GRADE}' where KH_GYS_ID='{row}';"_s;
}

QuickFilter partnerFilter(const QString& caption, const Partner& partner) {
  QuickFilter filter{
      .caption = caption, .label = PartnerList::tr("客户代号/名称/联系人/电话/拼音码"), .columns = {}};
  for (const QString& column : {u"KH_GYS_ID"_s, u"KG_NAME"_s, u"FZR"_s, u"pym"_s, u"TEL"_s})
    filter.columns.push_back(partner.table + u'.' + column);
  return filter;
}

}  // namespace goodsbook
