#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>

#include "host/U_glo.h"
#include "host/data/display_format.h"
#include "host/forms/form_builder.h"
#include "host/lookup/pickers.h"
#include "products/quick_editor.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

void QuickProductEditor::buildFields() {
  const auto number = [this](const QString& name, const QString& label, FieldCheck check, bool large,
                             bool sameRow) {
    return FieldSpec{.name = name,
                     .label = label,
                     .kind = FieldKind::Number,
                     .check = check,
                     .column = name,
                     .width = 100,
                     .sameRow = sameRow,
                     .large = large};
  };
  const auto withExit = [this](FieldSpec spec) {
    spec.exit = [this] { vipsjExit(); };
    return spec;
  };
  FormBuilder form(*this);
  form.fields({
      {.name = u"Edit1"_s,
       .label = tr("商品编号"),
       .limit = 20,
       .upper = true,
       .exit = [this] { Edit1Exit(); },
       .code = true,
       .column = u"WL_ID"_s},
      {.name = u"TM"_s,
       .label = tr("条    码"),
       .limit = 30,
       .exit = [this] { TMExit(); },
       .column = u"TM"_s,
       .sameRow = true},
      {.name = u"Edit2"_s, .label = tr("商品名称"), .limit = 80, .required = true, .column = u"WL_NAME"_s},
      {.name = u"Edit3"_s, .label = tr("规    格"), .limit = 40, .column = u"WL_GG"_s},
      {.name = u"CD"_s, .label = tr("产    地"), .limit = 50, .column = u"CD"_s, .sameRow = true},
      {.name = u"CLASS_ID"_s,
       .label = tr("商品分类"),
       .kind = FieldKind::Lookup,
       .limit = 4,
       .check = FieldCheck::Id,
       .column = u"CLASS_ID"_s,
       .nameLabel = u"CLASS_NAME"_s,
       .nameColumn = u"CLASS_NAME"_s},
      {.name = u"dw_id"_s,
       .label = tr("单    位"),
       .kind = FieldKind::Lookup,
       .limit = 2,
       .check = FieldCheck::Id,
       .column = u"DW_ID"_s,
       .nameLabel = u"DW_NAME"_s,
       .nameColumn = u"DW_NAME"_s,
       .sameRow = true},
      {.name = u"dw_zh"_s,
       .label = tr("转换率"),
       .kind = FieldKind::Number,
       .check = FieldCheck::FloatCanZero,
       .column = u"DW_ZH"_s,
       .format = u"0.00"_s,
       .width = 80,
       .labelName = u"Label10"_s},
      {.name = u"Edit4"_s,
       .label = tr("大单位"),
       .limit = 10,
       .column = u"DW_J_NAME"_s,
       .sameRow = true,
       .labelName = u"Label12"_s},
      number(u"SJ"_s, tr("零售价"), FieldCheck::Float, true, false),
      withExit(number(u"vipsj"_s, tr("会员价"), FieldCheck::None, true, true)),
  });
  FieldSpec wholesale = withExit(number(u"PFJ"_s, tr("批发价"), FieldCheck::None, true, false));
  wholesale.labelName = u"Label14"_s;
  form.field(wholesale);
  if (hasReferencePrices_) {
    for (const QString& name : {u"PFJ1"_s, u"PFJ2"_s, u"PFJ3"_s, u"PFJ4"_s}) {
      const bool first = name == "PFJ1"_L1;
      FieldSpec price =
          withExit(number(name, first ? tr("参考售价(1-4)") : QString(), FieldCheck::None, true, !first));
      price.format = u"0.00"_s;
      if (first) price.labelName = u"Label15"_s;
      form.field(price);
    }
  }
  form.fields({
      number(u"CGJ"_s, tr("采 购 价"), FieldCheck::FloatCanZero, false, false),
      {.name = u"JJJJ"_s, .label = tr("最近进价"), .kind = FieldKind::Value, .sameRow = true},
      {.name = u"DJ"_s, .label = tr("加权价"), .kind = FieldKind::Value, .column = u"DJ"_s, .sameRow = true},
      {.name = u"YS"_s, .label = tr("有效"), .kind = FieldKind::Check, .column = u"WL_YS"_s},
      {.name = u"check_kc"_s,
       .label = tr("允许该商品为负库存"),
       .kind = FieldKind::Check,
       .column = u"CHECK_KC"_s,
       .sameRow = true},
      {.name = u"NOTE"_s, .label = tr("备    注"), .limit = 100, .column = u"NOTE"_s},
      {.name = u"J"_s,
       .label = tr("本次进货(件/零数/  本次进价)："),
       .kind = FieldKind::Number,
       .width = 80,
       .labelName = u"Label13"_s},
      {.name = u"L"_s, .kind = FieldKind::Number, .width = 80, .sameRow = true},
      {.name = u"JJ"_s, .kind = FieldKind::Number, .width = 100, .sameRow = true},
      {.name = u"user_name"_s, .label = tr("登录用户:"), .kind = FieldKind::Value, .column = u"USER_NAME"_s},
      {.name = u"BDATE"_s, .label = tr("登录时间:"), .kind = FieldKind::Value, .sameRow = true},
      {.name = u"EDATE"_s, .label = tr("最后更改:"), .kind = FieldKind::Value, .sameRow = true},
  });
  edit(u"L"_s)->setAccessibleName(tr("零数"));
  edit(u"JJ"_s)->setAccessibleName(tr("本次进价"));
  (new TFrm_Sys_LINK_CL(this))->init(lookupEdit(u"CLASS_ID"_s));
  (new TFrm_Sys_LINK_DW(this))->init(nullptr, nullptr, lookupEdit(u"dw_id"_s), nullptr, {}, {}, {});
  connect(edit(u"TM"_s), &QLineEdit::textChanged, this, [this] { TMChange(); });
  BTN_CHANGE = makeButton(u"BTN_CHANGE"_s, tr("更改记录(F11)"));
  buttonRow()->insertWidget(0, BTN_CHANGE);
  onClick(BTN_CHANGE, [this] { BTN_CHANGEClick(); });
}

void QuickProductEditor::applyPriceFormats() {
  QStringList prices{u"SJ"_s, u"JJ"_s, u"vipsj"_s, u"PFJ"_s, u"CGJ"_s};
  if (hasReferencePrices_) prices << u"PFJ1"_s << u"PFJ2"_s << u"PFJ3"_s << u"PFJ4"_s;
  for (const QString& name : prices) {
    numberEdit(name)->setDisplayFormat(G_PriceFormat);
    numberEdit(name)->setDecimalPlaces(decimalsOf(G_PriceFormat));
  }
}

}  // namespace goodsbook
