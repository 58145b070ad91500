#include "reference/U2103_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const CodeTable& TF2103_1::table() {
  static const CodeTable table{
      .caption = tr("计量单位资料"),
      .keyField = u"DW_id"_s,
      .listStatement = u"select * From D1003"_s,
      .deleteStatement = u"delete from D1003 Where dw_id=%S"_s,
      .columns = {{.field = u"dw_id"_s, .title = tr("单位编号"), .width = 60},
                  {.field = u"dw_name"_s, .title = tr("单位"), .width = 62},
                  {.field = u"DW_note"_s, .title = tr("备注"), .width = 89}},
      .listFields = {{.name = u"dw_id"_s, .size = 2},
                     {.name = u"dw_name"_s, .size = 6},
                     {.name = u"dw_note"_s, .size = 30}},
      .fields = {codeField(tr("单位编号"), u"dw_id"_s),
                 nameField(tr("单位名称"), 6, u"dw_name"_s),
                 {.name = u"Edit3"_s, .label = tr("备    注"), .limit = 20, .column = u"dw_note"_s}},
      .codeCaption = tr("单位编号"),
      .uniqueness = u"select * from d1003 where dw_id='"_s,
      .taken = tr("单位编号已登记!"),
      .insert =
          u"insert into D1003 (dw_id,dw_name,pym,dw_note)ValueS('{Edit1}','{Edit2}','{pym}','{Edit3}')"_s,
      .update = u"update D1003 set dw_name='{Edit2}',PYM='{pym}',dw_note='{Edit3}' where dw_id='{row}'"_s,
  };
  return table;
}

TF2103_1::TF2103_1(QWidget* owner) : CodeTableEditor(table(), owner) {}

}  // namespace goodsbook
