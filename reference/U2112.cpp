#include "reference/U2112.h"

#include "reference/U2112_1.h"
#include "reference/U2112f.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QPointer<TF2112> F2112;

TF2112::TF2112(QWidget* owner) : FlatList(owner) {
  setWindowTitle(tr("公司职员"));
  const QString date = u"yyyy-MM-dd"_s;
  setColumns({{.field = u"YW_ID"_s, .title = tr("职员代号"), .width = 70},
              {.field = u"YW_NAME"_s, .title = tr("名称"), .width = 90},
              {.field = u"BM_ID"_s, .title = tr("部门代号"), .width = 70},
              {.field = u"BM_NAME"_s, .title = tr("部门名称"), .width = 100},
              {.field = u"TEL"_s, .title = tr("电话"), .width = 110},
              {.field = u"FAX"_s, .title = tr("传真"), .width = 100},
              {.field = u"EMAIL"_s, .title = u"EMAIL"_s, .width = 140},
              {.field = u"ADDR"_s, .title = tr("联系地址"), .width = 180},
              {.field = u"TC"_s, .title = tr("提成比"), .width = 60},
              {.field = u"BDATE"_s, .title = tr("合同日期"), .width = 90, .displayFormat = date},
              {.field = u"EDATE"_s, .title = tr("结束日期"), .width = 90, .displayFormat = date},
              {.field = u"T"_s, .title = tr("离职否"), .width = 56, .checkBox = true},
              {.field = u"NOTE"_s, .title = tr("备注"), .width = 160}});
  FormCreate();
}

void TF2112::InitForm(const Trecord& record) {
  FlatList::InitForm(record);
  SetBodyParam(bodyparam::make(
      {{bodyparam::keyField, u"yw_id"_s},
       {bodyparam::deleteStatement, u"delete from D1101 Where yw_id=%S"_s},
       {bodyparam::listStatement,
        u"SELECT D1101.*, D1008.BM_NAME FROM D1101 INNER JOIN  D1008 ON D1101.BM_ID = D1008.BM_ID"_s}}));
  setEditor(new TF2112_1(this));
  setFilterDialog(new TF2112F(this));
}

}  // namespace goodsbook
