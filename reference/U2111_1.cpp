#include "reference/U2111_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const TreeTable& TF2111_1::table() {
  static const TreeTable table{
      .caption = tr("区域详细划分"),
      .keyField = u"ADDR_ID"_s,
      .parentField = u"OID"_s,
      .listStatement = u"SELECT  * from  D1002 ORDER BY  OID,ADDR_ID "_s,
      .deleteStatement = u"delete from d1002 Where ADDR_id=%S"_s,
      .columns = {{.field = u"ADDR_ID"_s, .title = tr("区域代号"), .width = 80},
                  {.field = u"ADDR_NAME"_s, .title = tr("区域名称"), .width = 140},
                  {.field = u"ADDR_GL"_s, .title = tr("负责人"), .width = 90},
                  {.field = u"ADDR_TEL"_s, .title = tr("电话"), .width = 110},
                  {.field = u"ADDR_ADDR"_s, .title = tr("地址"), .width = 180},
                  {.field = u"ADDR_NOTE"_s, .title = tr("备注"), .width = 180}},
      .fields = {{.name = u"Edit1"_s, .label = tr("区域代号"), .limit = 4, .column = u"addr_ID"_s},
                 {.name = u"Edit3"_s,
                  .label = tr("区域名称"),
                  .limit = 10,
                  .required = true,
                  .column = u"addr_NAME"_s},
                 {.name = u"Edit4"_s,
                  .label = tr("负 责 人"),
                  .limit = 10,
                  .required = true,
                  .column = u"addr_GL"_s},
                 {.name = u"Edit5"_s, .label = tr("电    话"), .limit = 15, .column = u"addr_TEL"_s},
                 {.name = u"Edit6"_s, .label = tr("地    址"), .limit = 40, .column = u"addr_ADDR"_s},
                 {.name = u"Edit7"_s, .label = tr("备    注"), .limit = 100, .column = u"addr_NOTE"_s}},
      .nameElement = u"Edit3"_s,
      .codeCaption = tr("区域代号"),
      .uniqueness = u"select * from d1002 where addr_id='"_s,
      .taken = tr("区域代号已登记!"),
      .rowStatement = u"SELECT * FROM D1002 WHERE (D1002.addr_id ='"_s,
      .insert =
          u"insert into D1002 (addr_ID, addr_NAME, addr_GL, addr_TEL, addr_ADDR, addr_NOTE,OID)ValueS('{Edit1}','{Edit3}','{Edit4}','{Edit5}','{Edit6}','{Edit7}','{parent}')"_s,
      .update =
          u"update D1002 set addr_NAME='{Edit3}',addr_GL='{Edit4}',addr_TEL='{Edit5}',addr_ADDR='{Edit6}',addr_NOTE='{Edit7}' where addr_id='{selected}'"_s,
  };
  return table;
}

TF2111_1::TF2111_1(QWidget* owner) : TreeTableEditor(table(), owner) {}

}  // namespace goodsbook
