#include "engine/runtime/sql_type.h"

namespace goodsbook::engine {

std::string typeName(SqlType type) {
  switch (type.kind) {
    case Kind::Null:
      return "void";
    case Kind::Binary:
      return "varbinary";
    case Kind::Text:
      return "varchar";
    case Kind::Bit:
      return "bit";
    case Kind::TinyInt:
      return "tinyint";
    case Kind::SmallInt:
      return "smallint";
    case Kind::Int:
      return "int";
    case Kind::BigInt:
      return "bigint";
    case Kind::Money:
      return "money";
    case Kind::Decimal:
      return "numeric";
    case Kind::Float:
      return "float";
    case Kind::DateTime:
      return "datetime";
  }
  return {};
}

Type resultType(SqlType type) {
  switch (type.kind) {
    case Kind::Binary:
      return Type::Blob;
    case Kind::Text:
      return Type::Text;
    case Kind::Bit:
      return Type::Bit;
    case Kind::Money:
    case Kind::Decimal:
    case Kind::Float:
      return Type::Float;
    case Kind::DateTime:
      return Type::DateTime;
    case Kind::Null:
    case Kind::TinyInt:
    case Kind::SmallInt:
    case Kind::Int:
    case Kind::BigInt:
      return Type::Integer;
  }
  return Type::Text;
}

std::int64_t packType(SqlType type) {
  return static_cast<std::int64_t>(type.kind) | (static_cast<std::int64_t>(type.scale) << 8) |
         (static_cast<std::int64_t>(type.width) << 16);
}

SqlType unpackType(std::int64_t packed) {
  return {static_cast<Kind>(packed & 0xff), static_cast<int>(packed >> 16),
          static_cast<int>((packed >> 8) & 0xff)};
}

}  // namespace goodsbook::engine
