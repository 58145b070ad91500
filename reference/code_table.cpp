#include "reference/code_table.h"

#include <QLayout>
#include <QRegularExpression>

#include "host/U_function.h"
#include "host/Zpy.h"
#include "host/forms/form_builder.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

CodeTableList::CodeTableList(const CodeTable& table, QWidget* owner) : TFrm_Base_Outer(owner), table_(table) {
  setWindowTitle(table.caption);
  setColumns(table.columns, table.listFields);
  FormCreate();
}

void CodeTableList::FormCreate() {
  TFrm_Base_Outer::FormCreate();
  removeScreenAction(u"Act_Filter"_s);  // a handful of rows needs no filter
  removeScreenAction(u"Act_Other"_s);
}

void CodeTableList::InitForm(const Trecord& record) {
  TFrm_Base_Outer::InitForm(record);
  const QStringList settings = bodyparam::make({{bodyparam::keyField, table_.keyField},
                                                {bodyparam::deleteStatement, table_.deleteStatement},
                                                {bodyparam::listStatement, table_.listStatement}});
  SetBodyParam(settings);
  TFrm_Base_Detail* editor = createEditor();
  setEditor(editor);
  editor->SetBodyParam(settings);
}

CodeTableEditor::CodeTableEditor(const CodeTable& table, QWidget* owner)
    : TFrm_Base_Detail(owner), table_(table) {
  setWindowTitle(table.caption);
  std::vector<FieldSpec> fields = table.fields;
  fields.front().exit = [this] { Edit1Exit(); };
  FormBuilder(*this).fields(std::move(fields));
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

void CodeTableEditor::Edit1Exit() {
  TCustomDBEditEh* code = edit(u"Edit1"_s);
  CheckBlankInstr(code, table_.codeCaption);
  CheckBlank(code);
  CheckText(code, table_.codeCaption);
  opensql(AdoQry_Tmp, moduleCode_, table_.uniqueness + code->text() + u'\'');
  if (AdoQry_Tmp.isEmpty()) return;
  DISPINFO(table_.taken, 5);
  throw EAbort();
}

void CodeTableEditor::SaveData() {
  const QString sql = statement(isAdding() ? table_.insert : table_.update);
  ExecSql(moduleCode_, text(u"Edit1"_s), mode(), sql, 0, false, true, false, true);
  storeFields();
}

// Values go in as typed. They are put in one by one from left to right, so that braces in a value stay what
// they are.
QString CodeTableEditor::statement(const QString& form) const {
  static const QRegularExpression place(u"\\{(\\w+)\\}"_s);
  QString sql;
  qsizetype from = 0;
  for (auto matches = place.globalMatch(form); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    const QString name = match.captured(1);
    sql += QStringView(form).sliced(from, match.capturedStart() - from);
    if (name == "pym"_L1) {
      sql += Zpy::GetPY(text(u"Edit2"_s).trimmed());
    } else if (name == "row"_L1) {
      sql += listRows().text(table_.keyField);
    } else {
      sql += text(name);
    }
    from = match.capturedEnd();
  }
  return sql += QStringView(form).sliced(from);
}

}  // namespace goodsbook
