#include "host/controls/grid_model.h"

#include "host/data/value_text.h"

namespace goodsbook {

GridModel::GridModel(QObject* parent) : RecordSetModel(parent) {
  connect(this, &QAbstractItemModel::modelReset, this, [this] { resolve(); });
}

void GridModel::setGridColumns(std::vector<GridColumn> columns) {
  columns_ = std::move(columns);
  std::vector<RecordSetColumn> shown;
  for (const GridColumn& column : columns_) {
    Qt::Alignment alignment = column.alignment;
    if (!alignment && (column.checkBox || column.button)) alignment = Qt::AlignCenter;
    if (alignment && !(alignment & Qt::AlignVertical_Mask)) alignment |= Qt::AlignVCenter;
    shown.push_back({.field = column.field,
                     .title = column.title,
                     .format = column.displayFormat,
                     .alignment = alignment,
                     .editable = !column.readOnly && !column.button,
                     .checkBox = column.checkBox});
  }
  setColumns(std::move(shown));
}

void GridModel::resolve() {
  fields_.clear();
  const RecordSet* rows = recordSet();
  for (const GridColumn& column : columns_) {
    fields_.push_back(rows != nullptr && rows->isOpen() ? rows->fieldIndex(column.field) : -1);
  }
}

int GridModel::fieldOf(int column) const {
  const auto i = static_cast<std::size_t>(column);
  return i < fields_.size() ? fields_[i] : -1;
}

int GridModel::columnOf(const QString& field) const {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (columns_[i].field.compare(field, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
  }
  return -1;
}

bool GridModel::isNumber(int column) const {
  if (fieldOf(column) < 0) return false;
  const FieldType type = recordSet()->field(fieldOf(column)).type;
  return type == FieldType::Integer || type == FieldType::Float;
}

bool GridModel::isChecked(int row, int column) const {
  return index(row, column).data(Qt::CheckStateRole).toInt() == Qt::Checked;
}

bool GridModel::canEdit(int index) const {
  return !readOnly_ && index >= 0 && index < columnCount() && !column(index).readOnly &&
         !column(index).button && fieldOf(index) >= 0;
}

QString GridModel::text(int row, int column) const {
  if (column < 0 || column >= columnCount() || row < 0 || row >= rowCount() || fieldOf(column) < 0) return {};
  return recordSet()->textAt(row, fieldOf(column), this->column(column).displayFormat);
}

QString GridModel::editText(int row, int column) const {
  if (row < 0 || row >= rowCount() || fieldOf(column) < 0) return {};
  const bool hasFormat = !this->column(column).displayFormat.isEmpty() ||
                         !recordSet()->field(fieldOf(column)).displayFormat.isEmpty();
  if (!isNumber(column) || !hasFormat) return text(row, column);
  const QVariant value = recordSet()->valueAt(row, fieldOf(column));
  return value.isValid() ? floatText(value.toDouble()) : QString();
}

QString GridModel::title(int column) const {
  return headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

Qt::Alignment GridModel::alignment(int column) const {
  if (const Qt::Alignment wanted = columns()[static_cast<std::size_t>(column)].alignment) return wanted;
  return (isNumber(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole) {
    return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
  }
  return RecordSetModel::headerData(section, orientation, role);
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = RecordSetModel::flags(index);
  if (readOnly_) flags &= ~(Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
  return flags;
}

}  // namespace goodsbook
