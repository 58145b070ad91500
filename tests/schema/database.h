#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/connection.h"

namespace goodsbook::schema::test {

using Table = std::vector<std::vector<std::string>>;  // values as texts, "null" for NULL

// An embedded database in a folder of its own, which goes with the object.
class Database {
 public:
  Database();
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  std::unique_ptr<engine::Connection> connect() const;
  engine::Connection& connection() { return *connection_; }

  void execute(std::string_view batch);  // as owner
  void executeScript(std::string_view script);
  Table rows(std::string_view select);
  std::int64_t number(std::string_view select);              // of the first row's first column
  std::vector<std::string> columns(std::string_view table);  // name and type of each

 private:
  std::filesystem::path folder_;
  std::unique_ptr<engine::Connection> connection_;
};

}  // namespace goodsbook::schema::test
