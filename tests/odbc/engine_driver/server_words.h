#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What a program says to a server only, read from the words of a batch. The embedded engine has no use for
// it.
namespace goodsbook::engine_driver {

// A literal that is not N'…' loses what is beyond ASCII, as on a server whose collation is not Chinese.
std::string asPlainLiteralsArrive(std::string_view batch);

enum class TransactionWord : std::uint8_t { None, Begin, Commit, Rollback, RollbackIfOpen };

// A batch that is nothing but BEGIN, COMMIT or ROLLBACK TRANSACTION.
TransactionWord transactionWord(std::string_view batch);

struct EngineBatch {
  std::string text;                       // lines keep their numbers
  std::optional<int> lockMilliseconds{};  // SET LOCK_TIMEOUT
};

// Without the settings of a connection (SET LANGUAGE, DATEFORMAT …) and hints on locks.
EngineBatch withoutServerWords(std::string_view batch);

struct DatabaseStatement {
  enum class Kind : std::uint8_t { Create, Alter, Drop };
  Kind kind = Kind::Create;
  std::string name{};
};

// CREATE, ALTER or DROP DATABASE.
std::optional<DatabaseStatement> databaseStatement(std::string_view batch);

// The tables of a batch that is nothing but TRUNCATE TABLE statements; empty for any other.
std::vector<std::string> truncatedTables(std::string_view batch);

// A batch that reads sys.objects, sys.tables or sys.databases, without the "sys."; nothing for any other. The
// database in use has the number 1.
std::optional<std::string> definitionsQuery(std::string_view batch);

}  // namespace goodsbook::engine_driver
