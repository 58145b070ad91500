#include "reference/code_table.h"

#include <QLayout>

#include "host/Zpy.h"
#include "host/data/U_dataop.h"
#include "host/forms/form_builder.h"
#include "reference/composed.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

FieldSpec codeField(const QString& label, const QString& column) {
  return {.name = u"Edit1"_s, .label = label, .limit = 2, .upper = true, .code = true, .column = column};
}

FieldSpec nameField(const QString& label, int limit, const QString& column) {
  return {.name = u"Edit2"_s, .label = label, .limit = limit, .required = true, .column = column};
}

CodeTableList::CodeTableList(const CodeTable& table, QWidget* owner) : FlatList(owner), table_(table) {
  setWindowTitle(table.caption);
  setColumns(table.columns, table.listFields);
  FormCreate();
}

void CodeTableList::InitForm(const Trecord& record) {
  FlatList::InitForm(record);
  SetBodyParam(bodyparam::make({{bodyparam::keyField, table_.keyField},
                                {bodyparam::deleteStatement, table_.deleteStatement},
                                {bodyparam::listStatement, table_.listStatement}}));
  setEditor(createEditor());
}

CodeTableEditor::CodeTableEditor(const CodeTable& table, QWidget* owner)
    : TFrm_Base_Detail(owner), table_(table) {
  setWindowTitle(table.caption);
  std::vector<FieldSpec> fields = table.fields;
  fields.front().exit = [this] {
    reference::checkNewCode(*this, AdoQry_Tmp, u"Edit1"_s, table_.codeCaption, table_.uniqueness,
                            table_.taken);
  };
  FormBuilder(*this).fields(std::move(fields));
  body()->setMinimumWidth(300);
  layout()->setSizeConstraint(QLayout::SetFixedSize);
  FormCreate();
}

void CodeTableEditor::RefreshData() {
  setLoading(true);
  const bool edits = mode() == "Edit"_L1;
  firstFocus = edits ? u"Edit2"_s : u"Edit1"_s;
  lockedFields = edits ? u"EDIT1"_s : QString();
  loadFields();
  if (mode() == "Add"_L1) {
    for (const auto& [name, text] : table_.initial) setText(name, text);
  }
  TFrm_Base_Detail::RefreshData();
}

void CodeTableEditor::SaveData() {
  const reference::Values values{{u"pym"_s, Zpy::GetPY(text(u"Edit2"_s).trimmed())},
                                 {u"row"_s, listRows().text(table_.keyField)}};
  const QString sql = reference::composed(isAdding() ? table_.insert : table_.update, *this, values);
  ExecSql(moduleCode_, text(u"Edit1"_s), mode(), sql, 0, false, true, false, true);
}

}  // namespace goodsbook
