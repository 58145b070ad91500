#include "reference/U2125_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const CodeTable& TF2125_1::table() {
  static const CodeTable table{
      .caption = tr("货币基本资料"),
      .keyField = u"hb_id"_s,
      .listStatement = u"select * From D1001"_s,
      .deleteStatement = u"delete from D1001 Where hb_id=%S"_s,
      .columns = {{.field = u"HB_ID"_s, .title = tr("货币代号"), .width = 70},
                  {.field = u"HB_NAME"_s, .title = tr("货币名称"), .width = 100},
                  {.field = u"HB_BW"_s, .title = tr("本位币"), .width = 60, .checkBox = true},
                  {.field = u"HB_HL"_s, .title = tr("汇率"), .width = 100},
                  {.field = u"HB_NOTE"_s, .title = tr("备注"), .width = 120}},
      .listFields = {{.name = u"HB_ID"_s, .size = 2},
                     {.name = u"HB_NAME"_s, .size = 10},
                     {.name = u"HB_BW"_s, .type = FieldType::Boolean},
                     {.name = u"HB_HL"_s, .type = FieldType::Float, .displayFormat = u"0.000000"_s},
                     {.name = u"HB_NOTE"_s, .size = 10}},
      .fields =
          {codeField(tr("货币代号"), u"hb_id"_s),
           nameField(tr("货币名称"), 6, u"hb_name"_s),
           {.name = u"Edit3"_s, .label = tr("备    注"), .limit = 20, .column = u"hb_note"_s},
           {.name = u"hb_bw"_s, .label = tr("本 位 币"), .kind = FieldKind::Check, .column = u"hb_bw"_s},
           {.name = u"HB_HL"_s,
            .label = tr("汇    率"),
            .kind = FieldKind::Number,
            .required = true,  // it goes into the statement without quotes
            .check = FieldCheck::Float,
            .column = u"hb_hl"_s,
            .format = u"0.000000"_s,
            .places = 6}},
      .initial = {{u"HB_HL"_s, u"0.000000"_s}},
      .codeCaption = tr("货币编号"),
      .uniqueness = u"select hb_id from D1001 where hb_id='"_s,
      .taken = tr("货币编号已登记!"),
      .insert =
          u"insert into D1001 (hb_id,hb_name,pym,hb_note,hb_bw,hb_hl)ValueS('{Edit1}','{Edit2}','{pym}','{Edit3}',{hb_bw},{HB_HL})"_s,
      .update =
          u"update D1001 set hb_id='{Edit1}',PYM='{pym}',hb_name='{Edit2}',hb_note='{Edit3}',hb_bw={hb_bw},hb_hl={HB_HL} where hb_id='{row}'"_s,
  };
  return table;
}

TF2125_1::TF2125_1(QWidget* owner) : CodeTableEditor(table(), owner) {}

}  // namespace goodsbook
