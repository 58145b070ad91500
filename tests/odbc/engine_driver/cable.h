#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace goodsbook::engine_driver {

// The cable to a "server", which a test cuts by files in the server's folder. While `cut` is there, nobody
// gets through. The next transaction whose batches hold the text of the file `cut-after-commit` is committed
// and makes that file the cut, so that the answer is lost; `cut-before-commit`: it is not even committed.
class Cable {
 public:
  explicit Cable(std::filesystem::path folder);

  bool isCut() const;
  void requireWhole() const;  // SqlError as of a connection that broke

  void beginsTransaction() { said_.clear(); }
  void carries(std::string_view batch) { said_ += batch; }
  void mayBreakBeforeCommit() const;
  void mayBreakAfterCommit() const;

 private:
  void breaksWhere(const char* file) const;

  std::filesystem::path folder_;
  std::string said_;  // in the transaction
};

}  // namespace goodsbook::engine_driver
