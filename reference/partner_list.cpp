#include "host/forms/Sys_filter.h"
#include "reference/partner.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

std::vector<GridColumn> gridColumns(const Partner& partner) {
  const QString date = u"yyyy-MM-dd"_s;
  std::vector<GridColumn> columns{{.field = u"KH_GYS_ID"_s, .title = partner.codeTitle, .width = 80},
                                  {.field = u"KG_NAME"_s, .title = PartnerList::tr("简称"), .width = 140},
                                  {.field = u"FULL_NAME"_s, .title = PartnerList::tr("全称"), .width = 180},
                                  {.field = u"FZR"_s, .title = PartnerList::tr("负责人"), .width = 80},
                                  {.field = u"TEL"_s, .title = PartnerList::tr("电话"), .width = 110},
                                  {.field = u"TEL1"_s, .title = PartnerList::tr("手机"), .width = 110},
                                  {.field = u"FAX"_s, .title = PartnerList::tr("传真"), .width = 100}};
  if (partner.hasSalesperson) {
    columns.push_back({.field = u"YW_NAME"_s, .title = PartnerList::tr("业务员"), .width = 80});
  }
  const std::vector<GridColumn> further{
      {.field = u"GRADE"_s, .title = PartnerList::tr("等级"), .width = 44},
      {.field = u"ADDR_ID"_s, .title = PartnerList::tr("所属区域号"), .width = 80, .visible = false},
      {.field = u"ADDR_NAME"_s, .title = PartnerList::tr("所属区域"), .width = 100},
      {.field = u"SEND_ID"_s, .title = PartnerList::tr("送货代号"), .width = 70, .visible = false},
      {.field = u"SEND_NAME"_s, .title = PartnerList::tr("送货方式"), .width = 90},
      {.field = u"BDATE"_s, .title = PartnerList::tr("开帐日期"), .width = 90, .displayFormat = date},
      {.field = u"EDATE"_s, .title = PartnerList::tr("最后更改"), .width = 90, .displayFormat = date},
      {.field = u"ADDR"_s, .title = PartnerList::tr("详细地址"), .width = 200},
      {.field = u"EMAIL"_s, .title = PartnerList::tr("电邮"), .width = 140},
      {.field = u"WEB"_s, .title = PartnerList::tr("网址"), .width = 140},
      {.field = u"NOTE"_s, .title = PartnerList::tr("备注"), .width = 160}};
  columns.insert(columns.end(), further.begin(), further.end());
  return columns;
}

}  // namespace

PartnerList::PartnerList(const Partner& partner, QWidget* owner) : FlatList(owner), partner_(partner) {
  setWindowTitle(partner.caption);
  std::vector<Field> fields{{.name = u"KM_IDA"_s, .size = 18, .label = tr("会计科目")},
                            {.name = u"KM_IDB"_s, .size = 18, .label = tr("会计科目")}};
  if (partner.hasSalesperson) fields.push_back({.name = u"YW_ID"_s, .size = 4, .label = tr("业务编号")});
  setColumns(gridColumns(partner), std::move(fields));
  FormCreate();
}

void PartnerList::InitForm(const Trecord& record) {
  FlatList::InitForm(record);
  SetBodyParam(bodyparam::make({{bodyparam::keyField, u"kh_gys_id"_s},
                                {bodyparam::deleteStatement, partner_.deleteStatement()},
                                {bodyparam::listStatement, partner_.listStatement}}));
  setEditor(createEditor());
  setFilterDialog(createFilter());
}

void PartnerList::Act_DeleteExecute() {
  SetBodyParam(bodyparam::make({{bodyparam::keyField, bodyParam(bodyparam::keyField)},
                                {bodyparam::deleteStatement, partner_.deleteStatement()},
                                {bodyparam::listStatement, bodyParam(bodyparam::listStatement)}}));
  FlatList::Act_DeleteExecute();
}

}  // namespace goodsbook
