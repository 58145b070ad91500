#pragma once

#include <QString>
#include <utility>
#include <vector>

#include "host/forms/Base_detail.h"
#include "reference/flat_list.h"

namespace goodsbook {

// What one small code table differs in: code, name, and at most a few more columns. In `insert` and `update`,
// "{Edit1}" stands for the text of that element, "{pym}" for the initials of the name, "{row}" for the key of
// the list's current row.
struct CodeTable {
  QString caption;
  QString keyField, listStatement, deleteStatement;
  std::vector<GridColumn> columns;
  std::vector<Field> listFields;

  std::vector<FieldSpec> fields;  // codeField, nameField, and what else there is
  std::vector<std::pair<QString, QString>> initial =
      {};               // in "Add": what other fields than empty ones start with
  QString codeCaption;  // how messages name the code
  QString uniqueness;   // a select; the code and a quote follow
  QString taken;        // the message for a code that is there already
  QString insert, update;
};

// The declarations of the two fields that every code table has: the code, typed in capitals, and the name.
FieldSpec codeField(const QString& label, const QString& column);
FieldSpec nameField(const QString& label, int limit, const QString& column);

// The list of one code table.
class CodeTableList : public FlatList {
  Q_OBJECT

 public:
  void InitForm(const Trecord& record) override;

 protected:
  CodeTableList(const CodeTable& table, QWidget* owner);
  virtual TFrm_Base_Detail* createEditor() = 0;

 private:
  const CodeTable& table_;
};

// The editor of one row of a code table.
class CodeTableEditor : public TFrm_Base_Detail {
  Q_OBJECT

 protected:
  CodeTableEditor(const CodeTable& table, QWidget* owner);
  void RefreshData() override;
  void SaveData() override;

 private:
  const CodeTable& table_;
};

}  // namespace goodsbook
