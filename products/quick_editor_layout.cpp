#include <algorithm>

#include "host/U_glo.h"
#include "host/data/display_format.h"
#include "host/forms/form_builder.h"
#include "products/quick_editor.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int referencePricePitch = 44;  // the form with reference prices is so much taller

}  // namespace

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
  FieldSpec barcode = productField(u"TM"_s, true);
  barcode.exit = [this] { TMExit(); };
  FieldSpec productName = productField(u"Edit2"_s);
  productName.required = true;
  form.fields({
      productField(u"Edit1"_s),
      barcode,
      productName,
      productField(u"Edit3"_s),
      productField(u"CD"_s, true),
      productField(u"CLASS_ID"_s),
      productField(u"dw_id"_s, true),
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
      edit(name)->setAccessibleName(tr("参考售价%1").arg(name.back()));
    }
    label(u"Label15"_s)->setMinimumHeight(referencePricePitch - body()->layout()->spacing());
  }
  form.fields({
      number(u"CGJ"_s, tr("采 购 价"), FieldCheck::FloatCanZero, false, false),
      {.name = u"JJJJ"_s, .label = tr("最近进价"), .kind = FieldKind::Value, .sameRow = true},
      {.name = u"DJ"_s, .label = tr("加权价"), .kind = FieldKind::Value, .column = u"DJ"_s, .sameRow = true},
      productField(u"YS"_s),
      productField(u"check_kc"_s, true),
      productField(u"NOTE"_s),
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
  attachPickers();
  connect(edit(u"TM"_s), &QLineEdit::textChanged, this, [this] { TMChange(); });
  makeChangeButton();
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
