#include "host/data/odbc/odbc_database.h"

#include <QCoreApplication>
#include <QUuid>
#include <utility>

#include "engine/server_text.h"
#include "host/data/audit_line.h"
#include "host/data/beside.h"
#include "host/data/odbc/blob_update.h"
#include "host/data/odbc/connection_lost.h"
#include "host/data/odbc/odbc_wait.h"
#include "host/data/retry.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int refusedNumber = 262;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(OdbcDatabase)
};

class NoSink : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

class RowCounter : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override { ++count; }
  int count = 0;
};

}  // namespace

// One wait for the main connection. Events that are let through meanwhile find it at work.
class OdbcDatabase::Wait {
 public:
  Wait(OdbcDatabase& database, const QString& text, bool mayGiveUp) : database_(database) {
    database.requireIdle();
    const AttendantMaker& attend = database.pool_->target().options.attend;
    auto& attendant = database.inSteps_ && !mayGiveUp ? database.attendantOfSteps_ : own_;
    if (attend && !attendant) attendant = attend(text.arg(database.displayName()), mayGiveUp);
    attendant_ = attendant.get();
    database.waiting_ = true;
  }
  ~Wait() { database_.waiting_ = false; }
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;

  std::function<bool()> goesOn() const {
    return [its = attendant_] { return its == nullptr || its->goesOn(); };
  }

 private:
  OdbcDatabase& database_;
  std::unique_ptr<ServerAttendant> own_;
  ServerAttendant* attendant_;
};

// All waits meanwhile are one to whoever sits there.
class OdbcDatabase::Steps {
 public:
  explicit Steps(OdbcDatabase& database) : database_(database) { database.inSteps_ = true; }
  ~Steps() {
    database_.inSteps_ = false;
    database_.attendantOfSteps_.reset();
  }
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

 private:
  OdbcDatabase& database_;
};

void OdbcDatabase::requireIdle() const {
  if (waiting_) throw EDatabaseError(50000, 16, 1, 1, Texts::tr("上一步还没有做完，请稍候再做"));
}

OdbcDatabase::OdbcDatabase(const ServerTarget& target) : pool_(std::make_shared<OdbcPool>(target)) {
  connected();
}

OdbcConnection& OdbcDatabase::connected() {
  // What a list has told of need not be told again by the connection beside it.
  if (!inTransaction_ && pool_->takeLoss()) {
    const std::scoped_lock lock(mutex_);
    main_.reset();
  }
  if (!main_ || main_->isLost()) {
    // What became of the last save is not left open because somebody got tired of waiting.
    const Wait wait(*this, Texts::tr("正在连接服务器 %1…"), !doubtful_);
    auto fresh = connectLoose(pool_->target(), wait.goesOn());
    const std::scoped_lock lock(mutex_);
    main_ = std::move(fresh);
    dialect_ = main_->dialect();
  }
  return *main_;
}

void OdbcDatabase::send(const QString& batch, engine::ResultSink& sink) {
  const ServerOptions& options = pool_->target().options;
  const int seconds = options.attend ? options.saveSeconds : options.statementSeconds;
  const Wait wait(*this, Texts::tr("服务器 %1 正在处理…"), false);
  main_->setLimit(seconds);
  runLoose(main_, batch, sink, {wait.goesOn(), limitOf(seconds)});
}

void OdbcDatabase::send(const QString& batch) {
  NoSink sink;
  send(batch, sink);
}

void OdbcDatabase::read(const QString& select, engine::ResultSink& sink) {
  const int seconds = pool_->target().options.statementSeconds;
  const Wait wait(*this, Texts::tr("正在等服务器 %1 的数据…"), !inTransaction_);
  main_->setLimit(seconds);
  runLoose(main_, select, sink, {wait.goesOn(), limitOf(seconds)});
}

// A lost connection takes the transaction and the idle connections beside it along.
template <typename Work>
decltype(auto) OdbcDatabase::watched(Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const EConnectionLost&) {
    inTransaction_ = false;
    pool_->forgetIdle();
    throw;
  }
}

QString OdbcDatabase::prepared(const QString& batch) const {
  if (!dialect_->isTransactSql()) return batch;
  std::string now;
  if (const auto& clock = pool_->target().options.clock) {
    now = "convert(datetime,'" + clock().toString(u"yyyy-MM-ddTHH:mm:ss.zzz"_s).toStdString() + "',126)";
  }
  return QString::fromStdString(engine::forServer(batch.toStdString(), now));
}

// Runs `work` in the open transaction or in one of its own; an error of it ends the transaction.
template <typename Work>
void OdbcDatabase::inOwnTransaction(Work&& work) {
  const bool own = !inTransaction_;
  if (own) begin();
  try {
    watched(work);
  } catch (...) {
    if (inTransaction_) rollback();
    throw;
  }
  if (own) commit();
}

void OdbcDatabase::execute(const QString& batch, engine::ResultSink& sink, Permission permission) {
  requireIdle();
  const std::string text = batch.toStdString();
  if (permission == Permission::Screens) {
    const std::string_view word = engine::ownersWord(text);
    if (!word.empty()) {
      if (inTransaction_) rollback();
      throw EDatabaseError(
          refusedNumber, 14, 1, 1,
          Texts::tr("没有权限执行 %1").arg(QString::fromUtf8(word.data(), qsizetype(word.size()))));
    }
  } else if (!inTransaction_ && engine::standsOutsideTransactions(text)) {
    watched([&] {
      connected();
      send(batch, sink);
    });
    return;
  }
  inOwnTransaction([&] { send(prepared(batch), sink); });
}

void OdbcDatabase::query(const QString& select, engine::ResultSink& sink) {
  if (waiting_) {
    const auto beside = pool_->open(prepared(select));
    sink.beginSet(beside->columns());
    while (beside->next()) sink.row(beside->row());
    sink.endSet();
    return;
  }
  watched([&] {
    connected();
    read(prepared(select), sink);
  });
}

std::unique_ptr<engine::Cursor> OdbcDatabase::openCursor(const QString& select) {
  if (waiting_) return pool_->open(prepared(select));
  return watched([&] {
    connected();  // tells the dialect, and first of all whether the server is there
    const Wait wait(*this, Texts::tr("正在等服务器 %1 的数据…"), !inTransaction_);
    return pool_->open(prepared(select), wait.goesOn());
  });
}

std::unique_ptr<engine::Cursor> OdbcDatabase::openCursorBeside(const QString& select,
                                                               const std::function<bool()>& pause) {
  return pool_->open(prepared(select), pause);
}

void OdbcDatabase::begin() {
  requireIdle();
  if (inTransaction_) throw EDatabaseError(50000, 16, 1, 1, Texts::tr("已有打开的事务，不能再打开一个"));
  watched([&] {
    send(connected().dialect().begin());
    inTransaction_ = true;
  });
}

void OdbcDatabase::commit() {
  constexpr int noTransaction = 3902;
  if (!inTransaction_) throw EDatabaseError(noTransaction, 16, 1, 1, Texts::tr("没有打开的事务，不能提交"));
  watched([&] {
    try {
      send(dialect_->commit());
      inTransaction_ = false;
    } catch (const EConnectionLost&) {
      throw ECommitUnknown(
          Texts::tr("与服务器 %1 的连接断开了，不知道这一步是否已经完成。再做一次时程序会重新连接。")
              .arg(displayName()));
    } catch (const EDatabaseError& error) {
      rollback();
      // A commit that was told to stop may have been through already.
      if (error.number != timedOutNumber && error.number != cancelledNumber) throw;
      throw ECommitUnknown(
          Texts::tr("服务器 %1 没有及时回答，不知道这一步是否已经完成。").arg(displayName()));
    }
  });
}

void OdbcDatabase::rollback() {
  inTransaction_ = false;
  if (!main_) return;
  try {
    watched([&] { send(dialect_->rollback()); });
  } catch (const EConnectionLost&) {
    return;  // then the server rolls back by itself; the reason for it all is told by the caller
  } catch (const EDatabaseError&) {
    const std::scoped_lock lock(mutex_);
    main_.reset();  // a connection in an unknown state is worth nothing; closing it rolls back
  }
}

void OdbcDatabase::save(const QString& batch, const AuditLine& line, const std::function<void()>& within) {
  requireIdle();
  const Steps steps(*this);
  // It would be told as saved while the one who opened the transaction may still roll back.
  if (inTransaction_) throw EDatabaseError(50000, 16, 1, 1, Texts::tr("有打开的事务时不能单独保存"));
  if (isSavedAlready(batch, line)) return;
  retried([&] { saveOnce(batch, line, within); });
}

void OdbcDatabase::saveOnce(const QString& batch, const AuditLine& line,
                            const std::function<void()>& within) {
  const QString token = QUuid::createUuid().toString(QUuid::WithoutBraces);
  NoSink sink;
  try {
    begin();
    execute(batch, sink, Permission::Screens);
    if (within) within();
    execute(auditStatement(line, batch, token), sink, Permission::Screens);
    commit();
  } catch (const ECommitUnknown&) {
    doubtful_ = Doubtful{token, batch, line.module, line.key, line.operation};
    if (!isSavedAlready(batch, line)) {
      throw EConnectionLost(
          Texts::tr("与服务器 %1 的连接断开了，没有保存。请再保存一次。").arg(displayName()));
    }
  }
}

// What is not known about a commit there has to be known here, where the next save asks.
void OdbcDatabase::saveBeside(const QString& batch, const AuditLine& line,
                              const std::function<void()>& pause) {
  requireIdle();
  if (isSavedAlready(batch, line)) return;
  ServerTarget target = pool_->target();
  target.options.attend = {};  // `pause` does that, and the work may take longer than a save
  std::optional<OdbcDatabase> other;
  const auto work = [&] { other.emplace(target).save(batch, line, {}); };
  try {
    runBeside(work, pause);
  } catch (...) {
    if (other) doubtful_ = other->doubtful_;
    throw;
  }
}

bool OdbcDatabase::wasSaved(const QString& save) {
  RowCounter found;
  try {
    watched([&] {
      connected();
      send(dialect_->auditLineOf(save), found);
    });
  } catch (const EDatabaseError&) {
    throw ESaveUnknown(EConnectionLost(Texts::tr("与服务器 %1 的连接断开了，还不知道上一次是否已经保存。"
                                                 "连接恢复后请再保存一次：程序会先查对，不会重复保存。")
                                           .arg(displayName())),
                       save);
  }
  if (doubtful_ && doubtful_->token == save) doubtful_.reset();
  return found.count > 0;
}

// Whether the batch is the one whose answer was lost and has been saved after all. The doubt ends with the
// answer, or with the next save of something else.
bool OdbcDatabase::isSavedAlready(const QString& batch, const AuditLine& line) {
  if (!doubtful_) return false;
  const Doubtful asked = *doubtful_;
  const bool same = asked == Doubtful{asked.token, batch, line.module, line.key, line.operation};
  const bool saved = same && wasSaved(asked.token);
  doubtful_.reset();
  return saved;
}

int OdbcDatabase::storeBlob(const QString& table, const QString& field, const QString& keyField,
                            const QString& keyValue, const QByteArray& bytes) {
  requireIdle();
  int rows = 0;
  const auto store = [&] {
    inOwnTransaction([&] {
      const int seconds = pool_->target().options.statementSeconds;  // a large picture is work
      const Wait wait(*this, Texts::tr("服务器 %1 正在处理…"), false);
      main_->setLimit(seconds);
      const auto update = [its = main_, table, field, keyField, keyValue, bytes] {
        return updateBlob(*its, table, field, keyField, keyValue, bytes);
      };
      rows = doLoose(main_, update, {wait.goesOn(), limitOf(seconds)});
    });
  };
  if (inTransaction_) {
    store();
  } else {
    retried(store);
  }
  return rows;
}

void OdbcDatabase::interrupt() {
  pool_->interrupt();
  const std::scoped_lock lock(mutex_);
  if (main_) main_->interrupt();
}

QString OdbcDatabase::displayName() const {
  return pool_->target().address.displayName();
}

std::unique_ptr<Database> openServerDatabase(const ServerAddress& address, const ServerLogin& login,
                                             ServerOptions options) {
  return std::make_unique<OdbcDatabase>(ServerTarget{address, login, std::move(options)});
}

}  // namespace goodsbook
