#include "reference/U2107_1.h"

#include <QPushButton>

#include "host/U_glo.h"
#include "host/forms/form_builder.h"
#include "reference/U2107_2.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

const TreeTable& TF2107_1::table() {
  static const TreeTable table{
      .caption = tr("仓库基本资料"),
      .keyField = u"CK_ID"_s,
      .parentField = u"OID"_s,
      .listStatement =
          u"SELECT D1007.CK_ID, D1007.CK_NAME + ' (' + CONVERT(varchar(10),COUNT(D1802.WL_ID)) + ')' AS CK_NAME, D1007.OID FROM D1007 LEFT OUTER JOIN D1802 ON D1007.CK_ID = D1802.CK_ID GROUP BY D1007.CK_ID, D1007.CK_NAME, D1007.OID ORDER BY D1007.OID, D1007.CK_ID "_s,
      .deleteStatement = u"delete from d1007 Where ck_id=%S"_s,
      .columns = {{.field = u"CK_ID"_s, .title = tr("仓库代号"), .width = 80},
                  {.field = u"CK_NAME"_s, .title = tr("仓库名称"), .width = 260}},
      .fields = {{.name = u"Edit1"_s, .label = tr("仓库代号"), .limit = 4, .column = u"CK_ID"_s},
                 {.name = u"Edit3"_s,
                  .label = tr("仓库名称"),
                  .limit = 16,
                  .required = true,
                  .column = u"CK_NAME"_s},
                 {.name = u"Edit4"_s, .label = tr("管 理 员"), .limit = 10, .column = u"CK_GL"_s},
                 {.name = u"Edit5"_s, .label = tr("电    话"), .limit = 15, .column = u"CK_TEL"_s},
                 {.name = u"Edit6"_s, .label = tr("地    址"), .limit = 40, .column = u"CK_ADDR"_s},
                 {.name = u"Edit7"_s, .label = tr("备    注"), .limit = 100, .column = u"CK_NOTE"_s}},
      .nameElement = u"Edit3"_s,
      .codeCaption = tr("仓库编号"),
      .uniqueness = u"select * from d1007 where ck_id='"_s,
      .taken = tr("仓库编号已登记!"),
      .rowStatement = u"SELECT D1007.* FROM D1007  WHERE (D1007.ck_id ='"_s,
      .insert =
          u"insert into D1007 ( CK_ID, CK_NAME,PYM, CK_GL, CK_TEL, CK_ADDR, CK_NOTE,OID) ValueS({q:Edit1},{q:Edit3},{q:pym},{q:Edit4},{q:Edit5},{q:Edit6},{q:Edit7},{q:parent})"_s,
      .update =
          u"update d1007 set CK_NAME={q:Edit3},pym='{pym}',CK_GL={q:Edit4},CK_TEL={q:Edit5},CK_ADDR={q:Edit6},CK_NOTE={q:Edit7} where ck_id={q:selected}"_s,
      .saveLimit = 65535,
      .countsUses = true,
  };
  return table;
}

TF2107_1::TF2107_1(QWidget* owner)
    : TreeTableEditor(table(), owner),
      rights_(new TF2107_2(this)),
      BTN_QS(makeButton(u"BTN_QS"_s, tr("  权限设定"))) {
  BTN_QS->setToolTip(tr("设定各操作员对本仓库的读、写权限"));
  FormBuilder(*this).wide(BTN_QS);
  BTN_QS->setVisible(G_CHKCK);
  onClick(BTN_QS, [this] { BTN_QSClick(); });
  FormCreate();
}

void TF2107_1::BTN_QSClick() {
  rights_->init(text(codeElement()), isReadOnly());
  if (rights_->exec() == QDialog::Accepted) enableOk();
}

QString TF2107_1::furtherStatements() {
  rights_->refresqltext(text(codeElement()));
  return rights_->batch();
}

}  // namespace goodsbook
