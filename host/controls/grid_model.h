#pragma once

#include <vector>

#include "host/controls/TDBGridEh.h"
#include "host/data/record_set_model.h"

namespace goodsbook {

// The columns of a grid over a record set. A column whose field the set does not have (a button column) is
// empty.
class GridModel : public RecordSetModel {
  Q_OBJECT

 public:
  explicit GridModel(QObject* parent);

  void setGridColumns(std::vector<GridColumn> columns);
  const std::vector<GridColumn>& gridColumns() const { return columns_; }
  const GridColumn& column(int index) const { return columns_[static_cast<std::size_t>(index)]; }
  int columnOf(const QString& field) const;
  int fieldOf(int column) const;  // -1: none
  void setReadOnly(bool readOnly) { readOnly_ = readOnly; }

  bool isNumber(int column) const;
  bool isChecked(int row, int column) const;
  bool canEdit(int column) const;
  QString text(int row, int column) const;      // as shown
  QString editText(int row, int column) const;  // as it is edited: numbers without their format
  QString title(int column) const;
  Qt::Alignment alignment(int column) const;

  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void resolve();

  std::vector<GridColumn> columns_;
  std::vector<int> fields_;
  bool readOnly_ = false;
};

}  // namespace goodsbook
