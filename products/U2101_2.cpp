#include "products/U2101_2.h"

#include <QPushButton>

#include "host/data/U_dataop.h"
#include "host/forms/form_builder.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

TF2101_2::TF2101_2(QWidget* owner) : TFrm_Base_Dialog(owner), DBGridEh(new TDBGridEh(body())) {
  setWindowTitle(tr("商品资料更改记录"));
  resize(1000, 420);
  const QString time = u"yyyy-MM-dd HH:mm:ss"_s;
  AdoQry_Tmp.declareFields({{.name = u"DJ"_s, .type = FieldType::Float, .label = tr("加权价")}});
  DBGridEh->setObjectName(u"DBGridEh"_s);
  DBGridEh->setColumns({
      {.field = u"BDATE"_s, .title = tr("更改日期"), .width = 132, .displayFormat = time},
      {.field = u"WL_ID"_s, .title = tr("商品编号"), .width = 83},
      {.field = u"WL_NAME"_s, .title = tr("商品名称"), .width = 160},
      {.field = u"WL_GG"_s, .title = tr("规格"), .width = 80},
      {.field = u"CLASS_ID"_s, .title = tr("类型代号"), .width = 62},
      {.field = u"WL_YS"_s, .title = tr("有效"), .width = 44, .checkBox = true},
      {.field = u"EDATE"_s, .title = tr("修改日期"), .width = 132, .displayFormat = time},
      {.field = u"USER_ID"_s, .title = tr("登录用户代号"), .width = 86},
      {.field = u"CD"_s, .title = tr("产地"), .width = 80},
      {.field = u"NOTE"_s, .title = tr("备注"), .width = 96},
  });
  DBGridEh->setReadOnly(true);
  DBGridEh->setRowNumbers(true);
  DBGridEh->setEmptyText(tr("该商品没有更改记录"));
  DBGridEh->setRecordSet(&AdoQry_Tmp);
  FormBuilder(*this).wide(DBGridEh, 1);
  setCloseOnly();
  FormCreate();
}

void TF2101_2::init(const QString& code) {
  opensql(AdoQry_Tmp, moduleCode_, u"select * from d1801b where wl_id='"_s + code + u'\'');
}

}  // namespace goodsbook
