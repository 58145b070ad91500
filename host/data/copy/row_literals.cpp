#include "host/data/copy/row_literals.h"

#include <array>
#include <bit>
#include <cstdio>

#include "host/data/odbc/odbc_database.h"
#include "host/data/value_text.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

void appendText(std::string& text, std::string_view value, const CopyWords& words) {
  text += words.textBefore;
  for (const char c : value) {
    text += c;
    if (c == '\'') text += c;
  }
  text += '\'';
}

// With an exponent it is a float wherever it is read, and every digit counts.
void appendFloat(std::string& text, double value) {
  std::array<char, 40> digits{};
  std::snprintf(digits.data(), digits.size(), "%.16e", value);
  text += digits.data();
}

void appendBytes(std::string& text, std::span<const std::byte> bytes, const CopyWords& words) {
  const auto hex = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                           static_cast<qsizetype>(bytes.size()))
                       .toHex();
  text += words.bytesBefore;
  text.append(hex.constData(), static_cast<std::size_t>(hex.size()));
  text += words.bytesAfter;
}

void appendValue(std::string& text, const engine::Row& row, int column, engine::Type type,
                 const CopyWords& words) {
  if (row.isNull(column)) {
    text += "null";
    return;
  }
  switch (type) {
    case engine::Type::Bit:
    case engine::Type::Integer:
      text += std::to_string(row.integer(column));
      return;
    case engine::Type::Float:
      appendFloat(text, row.real(column));
      return;
    case engine::Type::DateTime:
      text += '\'';
      text += toDateTime(row.integer(column)).toString(u"yyyy-MM-ddTHH:mm:ss.zzz"_s).toStdString();
      text += '\'';
      return;
    case engine::Type::Text:
      appendText(text, row.text(column), words);
      return;
    case engine::Type::Blob:
      appendBytes(text, row.blob(column), words);
      return;
  }
}

class Sum {
 public:
  void add(std::string_view bytes) {
    constexpr std::uint64_t prime = 0x100000001B3U;
    for (const char c : bytes) state_ = (state_ ^ static_cast<unsigned char>(c)) * prime;
    add(bytes.size());
  }
  void add(std::uint64_t number) {
    state_ += number + 0x9E3779B97F4A7C15U;
    state_ = (state_ ^ state_ >> 30U) * 0xBF58476D1CE4E5B9U;
    state_ = (state_ ^ state_ >> 27U) * 0x94D049BB133111EBU;
    state_ ^= state_ >> 31U;
  }
  std::uint64_t value() const { return state_; }

 private:
  std::uint64_t state_ = 0xCBF29CE484222325U;
};

std::uint64_t valueSum(const engine::Row& row, int column, engine::Type type) {
  Sum sum;
  if (row.isNull(column)) return sum.value();
  switch (type) {
    case engine::Type::Bit:
    case engine::Type::Integer:
    case engine::Type::DateTime:
      sum.add(static_cast<std::uint64_t>(row.integer(column)));
      break;
    case engine::Type::Float:
      sum.add(std::bit_cast<std::uint64_t>(row.real(column) + 0.0));  // no negative zero
      break;
    case engine::Type::Text:
      sum.add(row.text(column));
      break;
    case engine::Type::Blob: {
      const auto bytes = row.blob(column);
      sum.add(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
      break;
    }
  }
  return sum.value();
}

}  // namespace

CopyWords copyWordsFor(Database& database) {
  auto* server = dynamic_cast<OdbcDatabase*>(&database);
  if (server == nullptr || server->dialect().isTransactSql()) return {};
  return {.identityInsert = {}, .bytesBefore = "'\\x", .bytesAfter = "'", .textBefore = "'"};
}

void appendRow(std::string& text, const engine::Row& row, std::span<const engine::Column> columns,
               const CopyWords& words) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    text += i == 0 ? '(' : ',';
    appendValue(text, row, static_cast<int>(i), columns[i].type, words);
  }
  text += ')';
}

void RowSums::add(const engine::Row& row, std::span<const engine::Column> columns) {
  columns_.resize(columns.size());
  ++rows_;
  Sum whole;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const std::uint64_t value = valueSum(row, static_cast<int>(i), columns[i].type);
    columns_[i] += value;
    whole.add(value);
  }
  whole_ += whole.value();
}

int RowSums::differingColumn(const RowSums& other) const {
  for (std::size_t i = 0; i < columns_.size() && i < other.columns_.size(); ++i) {
    if (columns_[i] != other.columns_[i]) return static_cast<int>(i);
  }
  return whole_ == other.whole_ ? -1 : 0;
}

}  // namespace goodsbook
