#pragma once

#include <QString>
#include <vector>

#include "host/forms/Base_node.h"
#include "host/forms/Base_node_d.h"
#include "reference/composed.h"

namespace goodsbook {

// What one tree of codes differs in. In `insert` and `update`, besides the elements' names, "{pym}" stands
// for the initials of the name, "{parent}" for the code of the row above, "{selected}" for the code of the
// selected node.
struct TreeTable {
  QString caption;
  QString keyField, parentField, listStatement, deleteStatement;
  std::vector<GridColumn> columns;  // of the list beside the tree
  std::vector<FieldSpec> fields;    // the code first; filled from the row that `rowStatement` reads
  QString nameElement;
  QString codeCaption;   // how messages name the code
  QString uniqueness;    // a select; the code and a quote follow
  QString taken;         // the message for a code that is there already
  QString rowStatement;  // the selected node's row; its code and "')" follow
  QString insert, update;
  unsigned short saveLimit = 0;  // ExecSql's number
  bool countsUses = false;       // the list statement puts a count in parentheses behind each name
};

// The tree screen of one table.
class TreeTableList : public TFrm_Base_Node {
  Q_OBJECT

 public:
  void InitForm(const Trecord& record) override;

 protected:
  TreeTableList(const TreeTable& table, QWidget* owner);
  QString bareName(const QString& shown) const override;
  virtual TFrm_Base_Node_d* createEditor() = 0;

 private:
  const TreeTable& table_;
};

// The editor of one node.
class TreeTableEditor : public TFrm_Base_Node_d {
  Q_OBJECT

 protected:
  TreeTableEditor(const TreeTable& table, QWidget* owner);
  void RefreshData() override;
  void SaveData() override;
  void showSaved() override;
  // What a save runs behind the row's own statement, in the same batch.
  virtual QString furtherStatements() { return {}; }
  const QString& codeElement() const { return table_.fields.front().name; }

 private:
  const TreeTable& table_;
};

}  // namespace goodsbook
