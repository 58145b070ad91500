#include "reference/U2123_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const CodeTable& TF2123_1::table() {
  static const CodeTable table{
      .caption = tr("送货方式资料"),
      .keyField = u"send_id"_s,
      .listStatement = u"select * From d1011"_s,
      .deleteStatement = u"delete from d1011 Where send_id=%S"_s,
      .columns = {{.field = u"SEND_ID"_s, .title = tr("送货方式代号"), .width = 100},
                  {.field = u"SEND_NAME"_s, .title = tr("送货方式"), .width = 120}},
      .listFields = {{.name = u"SEND_ID"_s, .size = 2}, {.name = u"SEND_NAME"_s, .size = 10}},
      .fields = {codeField(tr("送货方式代号"), u"send_id"_s),
                 nameField(tr("送货方式名称"), 10, u"send_name"_s)},
      .codeCaption = tr("送货方式编号"),
      .uniqueness = u"select send_id from D1011 where send_id='"_s,
      .taken = tr("送货方式已登记!"),
      .insert = u"insert into D1011 (send_id,send_name,PYM)ValueS('{Edit1}','{Edit2}','{pym}')"_s,
      .update = u"update D1011 set send_name='{Edit2}',PYM='{pym}' where send_id='{row}'"_s,
  };
  return table;
}

TF2123_1::TF2123_1(QWidget* owner) : CodeTableEditor(table(), owner) {}

}  // namespace goodsbook
