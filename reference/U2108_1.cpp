#include "reference/U2108_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const TreeTable& TF2108_1::table() {
  static const TreeTable table{
      .caption = tr("部门基本资料"),
      .keyField = u"BM_ID"_s,
      .parentField = u"OID"_s,
      .listStatement = u"SELECT BM_ID, BM_NAME, BM_ZG, BM_NOTE, OID FROM D1008 ORDER BY OID,BM_ID "_s,
      .deleteStatement = u"delete from d1008 Where BM_id=%S"_s,
      .columns = {{.field = u"BM_ID"_s, .title = tr("部门代号"), .width = 80},
                  {.field = u"BM_NAME"_s, .title = tr("部门名称"), .width = 160},
                  {.field = u"BM_ZG"_s, .title = tr("部门主管"), .width = 100},
                  {.field = u"BM_NOTE"_s, .title = tr("备注"), .width = 200}},
      .fields =
          {{.name = u"Edit1"_s, .label = tr("部门代号"), .limit = 4, .upper = true, .column = u"bm_id"_s},
           {.name = u"Edit2"_s,
            .label = tr("部门名称"),
            .limit = 10,
            .required = true,
            .column = u"bm_name"_s},
           {.name = u"Edit3"_s, .label = tr("部门主管"), .limit = 8, .column = u"bm_zg"_s},
           {.name = u"Edit4"_s, .label = tr("备    注"), .limit = 20, .column = u"bm_note"_s}},
      .nameElement = u"Edit2"_s,
      .codeCaption = tr("部门编号"),
      .uniqueness = u"select * from d1008 where bm_id='"_s,
      .taken = tr("部门编号已登记!"),
      .rowStatement = u"SELECT BM_ID, BM_NAME, BM_ZG, BM_NOTE, OID FROM D1008 WHERE (BM_id ='"_s,
      .insert =
          u"insert into D1008 (bm_id,bm_name,pym,bm_zg,bm_note,oid) ValueS('{Edit1}','{Edit2}','{pym}','{Edit3}','{Edit4}','{parent}')"_s,
      .update =
          u"update d1008 set bm_name='{Edit2}',pym='{pym}',bm_zg='{Edit3}',bm_note='{Edit4}' where BM_id='{selected}'"_s,
  };
  return table;
}

TF2108_1::TF2108_1(QWidget* owner) : TreeTableEditor(table(), owner) {}

}  // namespace goodsbook
