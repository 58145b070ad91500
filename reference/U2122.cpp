#include "reference/U2122.h"

#include "reference/U2122_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QPointer<TF2122> F2122;

TF2122::TF2122(QWidget* owner) : FlatList(owner) {
  setWindowTitle(tr("现金银行"));
  setColumns({{.field = u"JY_ID"_s, .title = tr("帐户编号"), .width = 70},
              {.field = u"JY_NAME"_s, .title = tr("帐户名称"), .width = 140},
              {.field = u"CLASSID"_s, .title = tr("类型号"), .width = 56},
              {.field = u"CLSNAME"_s, .title = tr("类型"), .width = 80},
              {.field = u"YH_NUM"_s, .title = tr("银行帐号"), .width = 150},
              {.field = u"YH_NAME"_s, .title = tr("银行全称"), .width = 150},
              {.field = u"KM_ID"_s, .title = tr("会计科目"), .width = 80},
              {.field = u"QCMONEY"_s, .title = tr("期初余额"), .width = 90, .sum = true}},
             {{.name = u"PYM"_s, .size = 50}});
  FormCreate();
}

void TF2122::InitForm(const Trecord& record) {
  FlatList::InitForm(record);
  SetBodyParam(bodyparam::make(
      {{bodyparam::keyField, u"JY_id"_s},
       {bodyparam::deleteStatement, u"delete from D1010 Where JY_id=%S;"_s},
       {bodyparam::listStatement,
        u"SELECT JY_ID, JY_NAME, PYM, CLASSID, YH_NUM, YH_NAME, KM_ID,QCMONEY  ,CASE CLASSID WHEN 0 THEN '现金' WHEN 1 THEN '银行存款' WHEN 2 THEN '系统使用' END AS CLSNAME FROM D1010"_s}}));
  setEditor(new TF2122_1(this));
}

}  // namespace goodsbook
