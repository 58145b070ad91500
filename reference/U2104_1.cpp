#include "reference/U2104_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const TreeTable& TF2104_1::table() {
  static const TreeTable table{
      .caption = tr("类别资料设定"),
      .keyField = u"CLASS_id"_s,
      .parentField = u"oid"_s,
      .listStatement =
          u"SELECT D1004.CLASS_ID, D1004.CLASS_NAME + ' (' + CONVERT(varchar(10),COUNT(D1801.WL_ID)) + ')' AS CLASS_NAME, D1004.OID FROM D1004 LEFT OUTER JOIN D1801 ON D1004.CLASS_ID = D1801.CLASS_ID GROUP BY D1004.CLASS_ID, D1004.CLASS_NAME, D1004.OID ORDER BY D1004.OID, D1004.CLASS_ID"_s,
      .deleteStatement = u"delete from d1004 Where class_id=%S"_s,
      .columns = {{.field = u"CLASS_ID"_s, .title = tr("类别代号"), .width = 80},
                  {.field = u"CLASS_NAME"_s, .title = tr("类别名称"), .width = 260}},
      .fields =
          {{.name = u"t0"_s, .label = tr("类别代号"), .limit = 4, .upper = true, .column = u"class_id"_s},
           {.name = u"t1"_s,
            .label = tr("类别名称"),
            .limit = 30,
            .required = true,
            .column = u"class_name"_s},
           {.name = u"t2"_s, .label = tr("备    注"), .limit = 50, .column = u"class_note"_s}},
      .nameElement = u"t1"_s,
      .codeCaption = tr("类型编号"),
      .uniqueness = u"select * from D1004 where CLASS_id='"_s,
      .taken = tr("类型编号已登记!"),
      .rowStatement = u"SELECT CLASS_ID, CLASS_NAME, CLASS_NOTE, OID FROM D1004 WHERE (CLASS_id ='"_s,
      .insert = u"insert into D1004 ValueS('{t0}','{t1}','{t2}','{parent}','{pym}')"_s,
      .update =
          u"UPDATE D1004 SET  class_NAME = '{t1}',PYM='{pym}', class_NOTE = '{t2}' where class_id='{selected}'"_s,
      .countsUses = true,
  };
  return table;
}

TF2104_1::TF2104_1(QWidget* owner) : TreeTableEditor(table(), owner) {}

}  // namespace goodsbook
