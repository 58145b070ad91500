#include "host/data/row_table.h"

#include <QDateTime>
#include <utility>

#include "host/data/field_value.h"
#include "host/data/value_text.h"

namespace goodsbook {
namespace {

Cell cellOf(FieldType type, const QVariant& stored) {
  Cell cell;
  cell.null = !stored.isValid();
  if (cell.null) return cell;
  switch (type) {
    case FieldType::Integer:
      cell.integer = stored.toLongLong();
      break;
    case FieldType::Boolean:
      cell.integer = stored.toBool() ? 1 : 0;
      break;
    case FieldType::DateTime:
      cell.integer = fromDateTime(stored.toDateTime());
      break;
    case FieldType::Float:
      cell.real = stored.toDouble();
      break;
    case FieldType::Text:
      cell.held = stored.toString().toUtf8();
      break;
    case FieldType::Blob:
      cell.held = stored.toByteArray();
      break;
  }
  // The bytes stand on the heap, so that the view survives a move of the cell.
  cell.bytes = {cell.held.constData(), static_cast<std::size_t>(cell.held.size())};
  return cell;
}

}  // namespace

RowTable::RowTable(std::vector<Field> fields) : fields_(std::move(fields)) {
  columns_.reserve(fields_.size());
  for (const auto& field : fields_) columns_.emplace_back(field.type);
}

void RowTable::appendLoaded(const engine::Row& row) {
  for (std::size_t i = 0; i < columns_.size(); ++i) columns_[i].append(row, static_cast<int>(i));
  ++loaded_;
}

void RowTable::finishLoad() {
  for (auto& column : columns_) column.finish();
}

void RowTable::settleTypedNumbers() {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (fields_[i].type != FieldType::Float) continue;
    for (auto& [row, values] : edited_) values[i] = fromStored(FieldType::Float, values[i]);
  }
}

const RowTable::Values* RowTable::editsOf(RowRef row) const {
  if (edited_.empty()) return nullptr;
  const auto found = edited_.find(row);
  return found == edited_.end() ? nullptr : &found->second;
}

bool RowTable::isNull(RowRef row, int field) const {
  const auto index = static_cast<std::size_t>(field);
  if (const auto* edits = editsOf(row)) return !(*edits)[index].isValid();
  return (row & addedBit) != 0 || columns_[index].isNull(row);
}

Cell RowTable::cell(RowRef row, int field) const {
  const auto index = static_cast<std::size_t>(field);
  const FieldType type = fields_[index].type;
  if (const auto* edits = editsOf(row)) return cellOf(type, (*edits)[index]);
  Cell cell;
  const auto& column = columns_[index];
  if ((row & addedBit) != 0 || column.isNull(row)) return cell;
  cell.null = false;
  switch (type) {
    case FieldType::Float:
      cell.real = column.real(row);
      break;
    case FieldType::Text:
    case FieldType::Blob:
      cell.bytes = column.bytes(row);
      break;
    default:
      cell.integer = column.integer(row);
      break;
  }
  return cell;
}

QVariant RowTable::stored(RowRef row, int field) const {
  const auto index = static_cast<std::size_t>(field);
  if (const auto* edits = editsOf(row)) return (*edits)[index];
  const auto& column = columns_[index];
  if ((row & addedBit) != 0 || column.isNull(row)) return {};
  switch (fields_[index].type) {
    case FieldType::Integer:
      return static_cast<qlonglong>(column.integer(row));
    case FieldType::Boolean:
      return column.integer(row) != 0;
    case FieldType::DateTime:
      return toDateTime(column.integer(row));
    case FieldType::Float:
      return column.real(row);
    case FieldType::Text: {
      const auto text = column.bytes(row);
      return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    case FieldType::Blob: {
      const auto bytes = column.bytes(row);
      return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
  }
  return {};
}

RowTable::Values RowTable::values(RowRef row) const {
  if (const auto* edits = editsOf(row)) return *edits;
  Values values(fields_.size());
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = stored(row, static_cast<int>(i));
  return values;
}

std::size_t RowTable::memoryBytes() const {
  std::size_t total = 0;
  for (const auto& column : columns_) total += column.memoryBytes();
  constexpr std::size_t nodeBytes = 48;
  return total + edited_.size() * (nodeBytes + fields_.size() * sizeof(QVariant));
}

}  // namespace goodsbook
