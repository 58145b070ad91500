#include "host/data/record_set_model.h"

#include <utility>

#include "host/data/errors.h"

namespace goodsbook {
namespace {

Qt::Alignment defaultAlignment(FieldType type) {
  switch (type) {
    case FieldType::Integer:
    case FieldType::Float:
      return Qt::AlignRight | Qt::AlignVCenter;
    case FieldType::Boolean:
      return Qt::AlignCenter;
    default:
      return Qt::AlignLeft | Qt::AlignVCenter;
  }
}

}  // namespace

RecordSetModel::RecordSetModel(QObject* parent) : QAbstractTableModel(parent) {}

RecordSetModel::~RecordSetModel() = default;

void RecordSetModel::setRecordSet(RecordSet* rows) {
  if (rows_ == rows) return;
  beginResetModel();
  if (rows_) disconnect(rows_, nullptr, this, nullptr);
  rows_ = rows;
  if (rows_) {
    connect(rows, &RecordSet::aboutToReset, this, [this] { beginResetModel(); });
    connect(rows, &RecordSet::wasReset, this, [this] {
      resolveFields();
      endResetModel();
    });
    connect(rows, &RecordSet::aboutToInsertRows, this,
            [this](int first, int last) { beginInsertRows({}, first, last); });
    connect(rows, &RecordSet::rowsInserted, this, [this] { endInsertRows(); });
    connect(rows, &RecordSet::aboutToRemoveRows, this,
            [this](int first, int last) { beginRemoveRows({}, first, last); });
    connect(rows, &RecordSet::rowsRemoved, this, [this] { endRemoveRows(); });
    connect(rows, &RecordSet::rowChanged, this, [this](int row) {
      if (!columns_.empty()) Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
    });
    connect(rows, &QObject::destroyed, this, [this] {
      resolveFields();  // first: a view asks for titles while it learns of the reset
      beginResetModel();
      endResetModel();
    });
  }
  resolveFields();
  endResetModel();
}

void RecordSetModel::setColumns(std::vector<RecordSetColumn> columns) {
  beginResetModel();
  columns_ = std::move(columns);
  resolveFields();
  endResetModel();
}

void RecordSetModel::resolveFields() {
  fields_.clear();
  for (const auto& column : columns_) fields_.push_back(rows_ ? rows_->fieldIndex(column.field) : -1);
}

int RecordSetModel::fieldOf(int column) const {
  return fields_[static_cast<std::size_t>(column)];
}

int RecordSetModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || !rows_ ? 0 : rows_->rowCount();
}

int RecordSetModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant RecordSetModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !rows_ || index.row() >= rows_->rowCount() || index.column() >= columnCount())
    return {};
  const auto& column = columns_[static_cast<std::size_t>(index.column())];
  const int field = fieldOf(index.column());
  if (field < 0 || field >= rows_->fieldCount()) return {};
  switch (role) {
    case Qt::DisplayRole:
      return column.checkBox ? QVariant() : rows_->textAt(index.row(), field, column.format);
    case Qt::EditRole:
      return rows_->valueAt(index.row(), field);
    case Qt::CheckStateRole:
      if (!column.checkBox) return {};
      return QVariant::fromValue(rows_->valueAt(index.row(), field).toBool() ? Qt::Checked : Qt::Unchecked);
    case Qt::TextAlignmentRole: {
      const Qt::Alignment given =
          column.alignment ? column.alignment : defaultAlignment(rows_->field(field).type);
      return QVariant::fromValue(given);
    }
    default:
      return {};
  }
}

QVariant RecordSetModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  if (section < 0 || section >= columnCount()) return {};
  const auto& column = columns_[static_cast<std::size_t>(section)];
  if (!column.title.isEmpty()) return column.title;
  const int field = fieldOf(section);
  if (field < 0 || field >= rows_->fieldCount()) return column.field;
  const QString& label = rows_->field(field).label;
  return label.isEmpty() ? column.field : label;
}

Qt::ItemFlags RecordSetModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (!index.isValid() || index.column() >= columnCount() || fieldOf(index.column()) < 0) return flags;
  const auto& column = columns_[static_cast<std::size_t>(index.column())];
  if (column.editable) flags |= column.checkBox ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
  return flags;
}

bool RecordSetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || !rows_ || index.row() >= rows_->rowCount() || index.column() >= columnCount())
    return false;
  const auto& column = columns_[static_cast<std::size_t>(index.column())];
  const bool fits = role == Qt::EditRole || (role == Qt::CheckStateRole && column.checkBox);
  if (!column.editable || !fits || fieldOf(index.column()) < 0) return false;
  try {
    rows_->moveTo(index.row());
    rows_->setValue(column.field,
                    role == Qt::CheckStateRole ? QVariant(value.toInt() == Qt::Checked) : value);
    return true;
  } catch (const EDatabaseError& error) {
    Q_EMIT editRefused(error.text);
  } catch (const EAbort&) {
    return false;  // whoever refused it has said so
  } catch (const std::exception& error) {
    Q_EMIT editRefused(QString::fromUtf8(error.what()));
  }
  return false;
}

}  // namespace goodsbook
