#include "reference/tree_table.h"

#include <QRegularExpression>

#include "host/U_function.h"
#include "host/Zpy.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/forms/form_builder.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
const QString topLevel = u"Z"_s;  // stands in the parent's column of a top-level row

// Rows under such a code would stand at the top.
void refuseTopLevel(const QString& code) {
  if (code.trimmed().compare(topLevel, Qt::CaseInsensitive) != 0) return;
  DISPINFO(TreeTableEditor::tr("代号【%1】表示最上级，不能使用!").arg(topLevel), 5);
  throw EAbort();
}
}  // namespace

TreeTableList::TreeTableList(const TreeTable& table, QWidget* owner) : TFrm_Base_Node(owner), table_(table) {
  setWindowTitle(table.caption);
  setColumns(table.columns);
  FormCreate();
}

void TreeTableList::InitForm(const Trecord& record) {
  SetBodyParam(bodyparam::make({{bodyparam::keyField, table_.keyField},
                                {bodyparam::parentField, table_.parentField},
                                {bodyparam::rootValue, topLevel},
                                {bodyparam::listStatement, table_.listStatement},
                                {bodyparam::deleteStatement, table_.deleteStatement}}));
  setEditor(createEditor());
  TFrm_Base_Node::InitForm(record);
}

QString TreeTableList::bareName(const QString& shown) const {
  static const QRegularExpression count(u" \\(\\d+\\)$"_s);
  return table_.countsUses ? QString(shown).remove(count) : shown;
}

TreeTableEditor::TreeTableEditor(const TreeTable& table, QWidget* owner)
    : TFrm_Base_Node_d(owner), table_(table) {
  setWindowTitle(table.caption);
  std::vector<FieldSpec> fields = table.fields;
  FieldSpec& code = fields.front();
  code.code = true;
  code.exit = [this] {
    refuseTopLevel(text(codeElement()));
    reference::checkNewCode(*this, AdoQry_Tmp, codeElement(), table_.codeCaption, table_.uniqueness,
                            table_.taken);
  };
  FormBuilder(*this).fields(std::move(fields));
  body()->setMinimumWidth(360);  // names and notes are longer than codes
  FormCreate();
}

void TreeTableEditor::RefreshData() {
  setLoading(true);
  const bool adds = isAdding();
  firstFocus = adds ? codeElement() : table_.nameElement;
  lockedFields = adds ? QString() : codeElement();
  if (mode() == "Add"_L1) {
    fields().clear();
  } else {
    opensql(AdoQry_Tmp, moduleCode_, table_.rowStatement + selectedCode() + u"')"_s);
    if (AdoQry_Tmp.isEmpty()) {
      DISPINFO(tr("【%1】已被删除，请刷新!").arg(selectedCode()), 5);
      throw EAbort();
    }
    fields().load(AdoQry_Tmp);
  }
  TFrm_Base_Node_d::RefreshData();
}

void TreeTableEditor::SaveData() {
  const QString code = text(codeElement());
  const QString name = text(table_.nameElement);
  const reference::Values values{
      {u"pym"_s, Zpy::GetPY(name.trimmed())}, {u"parent"_s, parentCode()}, {u"selected"_s, selectedCode()}};
  const QString sql =
      reference::composed(isAdding() ? table_.insert : table_.update, *this, values) + furtherStatements();
  ExecSql(moduleCode_, code, mode(), sql, table_.saveLimit, false, true, false, true);
}

void TreeTableEditor::showSaved() {
  placeNode(text(codeElement()), text(table_.nameElement));
}

}  // namespace goodsbook
