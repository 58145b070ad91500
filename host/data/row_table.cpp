#include "host/data/row_table.h"

#include <QDateTime>
#include <bit>
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

RowTable::RowTable(std::vector<Field> fields) : fields_(std::move(fields)), columns_(fields_.size()) {
  std::vector<FieldType> types;
  for (const auto& field : fields_) types.push_back(field.type);
  buffer_ = RowBuffer(std::move(types));
}

void RowTable::appendLoaded(const engine::Row& row) {
  if (buffer_.count() == segmentRows) pack();
  buffer_.append(row);
}

void RowTable::finishLoad() {
  if (buffer_.count() > 0) pack();
  buffer_ = RowBuffer();
  for (auto& column : columns_) column.shrink_to_fit();
}

void RowTable::pack() {
  const std::uint32_t count = buffer_.count();
  std::vector<std::int64_t> numbers(count);
  std::vector<std::string_view> texts(count);
  for (std::uint32_t column = 0; column < fields_.size(); ++column) {
    const FieldType type = fields_[column].type;
    const bool isText = type == FieldType::Text || type == FieldType::Blob;
    NullBits nulls;
    for (std::uint32_t row = 0; row < count; ++row) {
      if (isText) {
        texts[row] = buffer_.text(row, column);
      } else {
        numbers[row] = buffer_.number(row, column);
      }
    }
    if (buffer_.hasNulls(column)) {
      for (std::uint32_t row = 0; row < count; ++row) {
        if (!buffer_.isNull(row, column)) continue;
        nulls.set(row);
        if (row > 0) numbers[row] = numbers[row - 1];  // so that a null widens nothing
      }
    }
    columns_[column].push_back(isText                     ? PackedSegment::ofTexts(texts, nulls)
                               : type == FieldType::Float ? PackedSegment::ofFloats(numbers, nulls)
                                                          : PackedSegment::ofIntegers(numbers, nulls));
  }
  packed_ += count;
  buffer_.clear();
}

bool RowTable::isLoadedNull(RowRef row, std::size_t field) const {
  if (row < packed_) return columns_[field][row >> segmentShift].isNull(row & segmentMask);
  return buffer_.isNull(row - packed_, static_cast<std::uint32_t>(field));
}

std::int64_t RowTable::loadedNumber(RowRef row, std::size_t field) const {
  if (row < packed_) return columns_[field][row >> segmentShift].number(row & segmentMask);
  return buffer_.number(row - packed_, static_cast<std::uint32_t>(field));
}

std::string_view RowTable::loadedText(RowRef row, std::size_t field) const {
  if (row < packed_) return columns_[field][row >> segmentShift].text(row & segmentMask);
  return buffer_.text(row - packed_, static_cast<std::uint32_t>(field));
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
  return (row & addedBit) != 0 || isLoadedNull(row, index);
}

Cell RowTable::cell(RowRef row, int field) const {
  const auto index = static_cast<std::size_t>(field);
  const FieldType type = fields_[index].type;
  if (const auto* edits = editsOf(row)) return cellOf(type, (*edits)[index]);
  Cell cell;
  if ((row & addedBit) != 0 || isLoadedNull(row, index)) return cell;
  cell.null = false;
  switch (type) {
    case FieldType::Float:
      cell.real = std::bit_cast<double>(loadedNumber(row, index));
      break;
    case FieldType::Text:
    case FieldType::Blob:
      cell.bytes = loadedText(row, index);
      break;
    default:
      cell.integer = loadedNumber(row, index);
      break;
  }
  return cell;
}

QVariant RowTable::stored(RowRef row, int field) const {
  const auto index = static_cast<std::size_t>(field);
  if (const auto* edits = editsOf(row)) return (*edits)[index];
  if ((row & addedBit) != 0 || isLoadedNull(row, index)) return {};
  switch (fields_[index].type) {
    case FieldType::Integer:
      return static_cast<qlonglong>(loadedNumber(row, index));
    case FieldType::Boolean:
      return loadedNumber(row, index) != 0;
    case FieldType::DateTime:
      return toDateTime(loadedNumber(row, index));
    case FieldType::Float:
      return std::bit_cast<double>(loadedNumber(row, index));
    case FieldType::Text: {
      const auto text = loadedText(row, index);
      return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    case FieldType::Blob: {
      const auto bytes = loadedText(row, index);
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
  std::size_t total = buffer_.memoryBytes();
  for (const auto& column : columns_) {
    total += column.capacity() * sizeof(PackedSegment);
    for (const auto& segment : column) total += segment.memoryBytes();
  }
  constexpr std::size_t nodeBytes = 48;
  return total + edited_.size() * (nodeBytes + fields_.size() * sizeof(QVariant));
}

}  // namespace goodsbook
