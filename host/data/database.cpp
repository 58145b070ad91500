#include "host/data/database.h"

namespace goodsbook {
namespace {

// A batch whose answers nobody asked for.
class NoSink : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

}  // namespace

Database::~Database() = default;

void Database::save(const QString& batch, const AuditLine& line, const std::function<void()>& within) {
  NoSink sink;
  Transaction transaction(*this);
  execute(batch, sink);
  if (within) within();
  execute(auditStatement(line, batch, {}), sink);
  transaction.commit();
}

std::unique_ptr<engine::Cursor> Database::openCursorBeside(const QString& select,
                                                           const std::function<bool()>& /*pause*/) {
  return openCursor(select);
}

void Database::saveBeside(const QString& batch, const AuditLine& line, const std::function<void()>& pause) {
  pause();
  save(batch, line);
}

Transaction::Transaction(Database& database) : database_(database) {
  database_.begin();
}

Transaction::~Transaction() {
  // A batch that failed has already ended the transaction; what is left to undo may fail too, and nobody can
  // be told here.
  if (!open_ || !database_.inTransaction()) return;
  try {
    database_.rollback();
  } catch (const std::exception&) {
    open_ = false;
  }
}

void Transaction::commit() {
  database_.commit();
  open_ = false;
}

RelaxedCommits::RelaxedCommits(Database& database) : database_(database) {
  database_.setRelaxed(true);
}

RelaxedCommits::~RelaxedCommits() {
  try {
    finish([] {});
  } catch (const std::exception&) {
    relaxed_ = false;  // whoever must know calls finish()
  }
}

void RelaxedCommits::keepUp(const std::function<void()>& pause) {
  if (database_.wantsSettling()) database_.settle(pause);
}

void RelaxedCommits::finish(const std::function<void()>& pause) {
  if (!relaxed_) return;
  database_.setRelaxed(false);
  relaxed_ = false;
  database_.settle(pause);
}

}  // namespace goodsbook
