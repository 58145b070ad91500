#include "engine/catalog/type_names.h"

#include <array>
#include <charconv>
#include <utility>

#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

constexpr std::array<std::pair<std::string_view, Kind>, 22> typeNames{{
    {"bit", Kind::Bit},
    {"tinyint", Kind::TinyInt},
    {"smallint", Kind::SmallInt},
    {"int", Kind::Int},
    {"integer", Kind::Int},
    {"bigint", Kind::BigInt},
    {"money", Kind::Money},
    {"smallmoney", Kind::Money},
    {"decimal", Kind::Decimal},
    {"dec", Kind::Decimal},
    {"numeric", Kind::Decimal},
    {"float", Kind::Float},
    {"double precision", Kind::Float},
    {"datetime", Kind::DateTime},
    {"varchar", Kind::Text},
    {"nvarchar", Kind::Text},
    {"varbinary", Kind::Binary},
    {"text", Kind::Text},
    {"ntext", Kind::Text},
    {"image", Kind::Binary},
    {"character varying", Kind::Text},
    {"sysname", Kind::Text},
}};

constexpr std::array<std::string_view, 17> refusedTypes{"char",
                                                        "nchar",
                                                        "character",
                                                        "real",
                                                        "date",
                                                        "time",
                                                        "datetime2",
                                                        "datetimeoffset",
                                                        "smalldatetime",
                                                        "binary",
                                                        "xml",
                                                        "sql_variant",
                                                        "uniqueidentifier",
                                                        "timestamp",
                                                        "rowversion",
                                                        "national character",
                                                        "table"};

// Doubles carry fifteen digits exactly.
constexpr int mostDigits = 15;

bool hasNoWidth(std::string_view name) {
  return sameName(name, "text") || sameName(name, "ntext") || sameName(name, "image");
}

SqlType decimalOf(const DataType& type) {
  const int digits = type.width == DataType::notGiven ? mostDigits : type.width;
  const int scale = type.scale == DataType::notGiven ? 0 : type.scale;
  if (digits < 1 || digits > mostDigits || scale > digits)
    failUnsupported(concat("decimal(", std::to_string(digits), ",", std::to_string(scale), ")"));
  return {Kind::Decimal, digits, scale};
}

}  // namespace

SqlType typeOf(const DataType& type, int defaultWidth) {
  const std::string_view name = type.name.text;
  for (const std::string_view refused : refusedTypes)
    if (sameName(refused, name)) failUnsupported(concat("数据类型 ", name));
  for (const auto& [known, kind] : typeNames) {
    if (!sameName(known, name)) continue;
    if (kind == Kind::Decimal) return decimalOf(type);
    if (kind == Kind::Float && type.width != DataType::notGiven && type.width < 25)
      failUnsupported("float(24)");
    if (kind != Kind::Text && kind != Kind::Binary) return {kind};
    if (hasNoWidth(name) || type.width == DataType::maximum) return {kind};
    if (sameName(name, "sysname")) return {kind, 128};
    if (type.width == DataType::notGiven) return {kind, defaultWidth};
    if (type.width < 1 || type.width > 8000)
      fail(131, concat("赋予数据类型 ", name, " 的大小 (", std::to_string(type.width),
                       ") 超出了允许的最大值 8000。"));
    return {kind, type.width};
  }
  fail(2715, concat("找不到数据类型 ", name, "。"));
}

std::string declaredType(SqlType type) {
  const std::string width = std::to_string(type.width);
  switch (type.kind) {
    case Kind::Text:
      return type.width == 0 ? "VARCHAR_MAX" : concat("VARCHAR(", width, ")");
    case Kind::Binary:
      return type.width == 0 ? "VARBINARY_MAX" : concat("VARBINARY(", width, ")");
    case Kind::Decimal:  // REAL keeps SQLite from turning 1.0 into a whole number
      return concat("REAL DECIMAL(", width, ",", std::to_string(type.scale), ")");
    case Kind::Money:
      return "REAL MONEY";
    case Kind::Bit:
      return "BIT";
    case Kind::TinyInt:
      return "TINYINT";
    case Kind::SmallInt:
      return "SMALLINT";
    case Kind::BigInt:
      return "BIGINT";
    case Kind::Float:
      return "FLOAT";
    case Kind::DateTime:
      return "DATETIME";
    case Kind::Null:
    case Kind::Int:
      return "INT";
  }
  return "INT";
}

SqlType typeOfDeclared(std::string_view declared) {
  if (declared == "INTEGER") return {Kind::Int};  // an identity column
  if (declared.starts_with("REAL ")) declared.remove_prefix(5);
  DataType type;
  const std::size_t paren = declared.find('(');
  type.name.text = declared.substr(0, paren);
  if (declared.ends_with("_MAX")) {
    type.name.text.remove_suffix(4);
    type.width = DataType::maximum;
  }
  if (paren != std::string_view::npos) {
    const char* end = declared.data() + declared.size();
    const auto width = std::from_chars(declared.data() + paren + 1, end, type.width);
    if (*width.ptr == ',') std::from_chars(width.ptr + 1, end, type.scale);
  }
  return typeOf(type, 1);
}

}  // namespace goodsbook::engine
