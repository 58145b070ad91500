#include "reference/U2124_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const CodeTable& TF2124_1::table() {
  static const CodeTable table{
      .caption = tr("付款方式"),
      .keyField = u"FF_id"_s,
      .listStatement = u"SELECT * FROM D1012 "_s,
      .deleteStatement = u"delete from D1012 Where FF_id=%S"_s,
      .columns = {{.field = u"FF_ID"_s, .title = tr("代号"), .width = 60},
                  {.field = u"FF_NAME"_s, .title = tr("付款方式"), .width = 200}},
      .listFields = {{.name = u"FF_ID"_s, .size = 2}, {.name = u"FF_NAME"_s, .size = 30}},
      .fields = {codeField(tr("代    号"), u"ff_id"_s), nameField(tr("付款方式"), 30, u"ff_name"_s)},
      .codeCaption = tr("代号"),
      .uniqueness = u"select ff_id from D1012 where ff_id='"_s,
      .taken = tr("付款方式代号已登记!"),
      .insert = u"insert into D1012 (FF_id,pym,FF_name)ValueS('{Edit1}','{pym}','{Edit2}')"_s,
      .update = u"update D1012 set ff_name='{Edit2}',PYM='{pym}' where ff_id='{Edit1}'"_s,
  };
  return table;
}

TF2124_1::TF2124_1(QWidget* owner) : CodeTableEditor(table(), owner) {}

}  // namespace goodsbook
