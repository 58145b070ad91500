#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "engine/connection.h"

namespace goodsbook::engine_driver {

// The databases of a "server": a folder with a file for each. Failures are SqlError.
class Databases {
 public:
  // A folder that is missing is made. A name without a slash is a folder among the temporary ones.
  explicit Databases(const std::string& server);
  const std::filesystem::path& folder() const { return folder_; }

  // The database that is always there, with nothing in it.
  static bool isMaster(const std::string& name);

  std::unique_ptr<engine::Connection> open(const std::string& name,
                                           std::chrono::milliseconds lockTimeout) const;
  void create(const std::string& name) const;
  void requirePresent(const std::string& name) const;
  void drop(const std::string& name) const;  // and the folder, when it was the last

  // Takes all rows out of the tables and starts their numbers again. It stands for itself: no transaction
  // around it takes it back.
  void truncate(const std::string& name, const std::vector<std::string>& tables) const;

  // A database with the tables `objects`, `tables` and `databases`, which tell what is defined.
  std::unique_ptr<engine::Connection> definitions(const std::string& name) const;

 private:
  std::filesystem::path file(const std::string& name) const;

  std::filesystem::path folder_;
};

}  // namespace goodsbook::engine_driver
