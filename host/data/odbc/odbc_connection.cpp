#include "host/data/odbc/odbc_connection.h"

#include <QCoreApplication>
#include <array>

#include "host/data/odbc/connect_problem.h"
#include "host/data/odbc/connection_text.h"
#include "host/data/odbc/odbc_messages.h"
#include "host/data/odbc/row_block.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

// The driver manager drops a statement's messages at every cancel, whether or not its thread is just being
// told them: a cancel that does its work is not followed by another one.
constexpr std::chrono::milliseconds betweenCancels{200};

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(OdbcConnection)
};

class NoSink : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

QString productName(const OdbcHandle& connection) {
  std::array<SQLWCHAR, 128> name{};
  SQLSMALLINT length = 0;
  const SQLRETURN code = SQLGetInfoW(connection.get(), SQL_DBMS_NAME, name.data(),
                                     static_cast<SQLSMALLINT>(sizeof(name)), &length);
  return SQL_SUCCEEDED(code) ? QString::fromUtf16(reinterpret_cast<const char16_t*>(name.data())) : QString();
}

}  // namespace

OdbcConnection::OdbcConnection(const ServerTarget& target)
    : name_(target.address.displayName()),
      statementSeconds_(target.options.statementSeconds),
      environment_(OdbcHandle::environment()),
      connection_(SQL_HANDLE_DBC, environment_) {
  connect(target);
  dialect_ = Dialect::ofServer(productName(connection_));
  for (const QString& wish : dialect_->wishes()) {
    try {
      run(wish);
    } catch (const EConnectionLost&) {
      throw;
    } catch (const EDatabaseError&) {
      continue;  // a server without that language answers in its own
    }
  }
  for (const QString& setting : dialect_->settings(target.options.lockMilliseconds)) run(setting);
}

OdbcConnection::~OdbcConnection() {
  if (connected_) SQLDisconnect(connection_.get());
}

void OdbcConnection::connect(const ServerTarget& target) {
  SQLSetConnectAttr(connection_.get(), SQL_ATTR_LOGIN_TIMEOUT,
                    attribute(static_cast<SQLULEN>(target.options.connectSeconds)), 0);
  const QString text = connectionText(target.address, target.login);
  std::array<SQLWCHAR, 1024> completed{};
  SQLSMALLINT length = 0;
  const SQLRETURN code =
      SQLDriverConnectW(connection_.get(), nullptr, wide(text), SQL_NTS, completed.data(),
                        static_cast<SQLSMALLINT>(completed.size()), &length, SQL_DRIVER_NOPROMPT);
  connected_ = SQL_SUCCEEDED(code);
  if (!connected_) throw connectError(messagesOf(connection_), target);
}

void OdbcConnection::requireThere() const {
  if (!lost_) return;
  throw EConnectionLost(
      Texts::tr("与服务器 %1 的连接断开了，这一步没有完成。再做一次时程序会重新连接。").arg(name_));
}

EConnectionLost OdbcConnection::silence(std::chrono::seconds waited) const {
  return EConnectionLost(
      Texts::tr("服务器 %1 在 %2 秒内没有回答，连接已经断开，这一步没有完成。再做一次时程序会重新连接。")
          .arg(name_)
          .arg(waited.count()));
}

void OdbcConnection::check(SQLRETURN code, const OdbcHandle& handle) {
  if (!SQL_SUCCEEDED(code) && code != SQL_NO_DATA) fail(handle);
}

void OdbcConnection::checkMessages(const OdbcHandle& handle) {
  for (const OdbcMessage& message : messagesOf(handle)) {
    if (message.isError()) fail(handle);
  }
}

void OdbcConnection::fail(const OdbcHandle& handle) {
  const std::vector<OdbcMessage> messages = messagesOf(handle);
  // Cancelling once more takes away what the driver had to say of the first time.
  if (messages.empty() && interrupted_) {
    throw EDatabaseError(cancelledNumber, 16, 1, 1, Texts::tr("这一步已被中断"));
  }
  const OdbcMessage message = firstError(messages);
  SQLUINTEGER dead = SQL_CD_FALSE;
  const SQLRETURN known = SQLGetConnectAttr(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr);
  if (message.tellsLostConnection() || (SQL_SUCCEEDED(known) && dead == SQL_CD_TRUE)) {
    lost_ = true;
    requireThere();
  }
  if (message.number == timedOutNumber) {
    throw EDatabaseError(
        timedOutNumber, 16, 1, 1,
        Texts::tr("服务器 %1 在 %2 秒内没有做完，这一步已取消").arg(name_).arg(statementSeconds_));
  }
  throw message.toError();
}

OdbcConnection::Statement::Statement(OdbcConnection& connection)
    : connection_(connection), handle_(SQL_HANDLE_STMT, connection.connection_) {
  // Braces in texts are texts.
  SQLSetStmtAttr(handle_.get(), SQL_ATTR_NOSCAN, attribute(SQL_NOSCAN_ON), 0);
  if (connection.statementSeconds_ > 0) {
    SQLSetStmtAttr(handle_.get(), SQL_ATTR_QUERY_TIMEOUT,
                   attribute(static_cast<SQLULEN>(connection.statementSeconds_)), 0);
  }
  const std::scoped_lock lock(connection.mutex_);
  connection.running_ = handle_.get();
  connection.interrupted_ = false;
  connection.cancelled_ = {};
}

OdbcConnection::Statement::Statement(OdbcConnection& connection, const QString& text)
    : Statement(connection) {
  // The manager takes no empty text; a blank one is a batch without statements.
  const QString batch = text.isEmpty() ? u" "_s : text;
  code_ = SQLExecDirectW(handle_.get(), wide(batch), static_cast<SQLINTEGER>(batch.size()));
  connection_.check(code_, handle_);
  atResult_ = true;
}

OdbcConnection::Statement::~Statement() {
  const std::scoped_lock lock(connection_.mutex_);
  connection_.running_ = SQL_NULL_HANDLE;
  handle_ = OdbcHandle();
}

bool OdbcConnection::Statement::nextSet(engine::ResultSink& sink) {
  for (;;) {
    if (!atResult_) {
      code_ = SQLMoreResults(handle_.get());
      if (code_ == SQL_NO_DATA) return false;
      connection_.check(code_, handle_);
    }
    atResult_ = false;
    if (code_ == SQL_SUCCESS_WITH_INFO) {
      const auto messages = messagesOf(handle_);
      for (const OdbcMessage& message : messages) {
        if (message.isError()) connection_.fail(handle_);
        sink.notice(message.toNotice());
      }
    }
    SQLSMALLINT columns = 0;
    if (SQL_SUCCEEDED(SQLNumResultCols(handle_.get(), &columns)) && columns > 0) return true;
    SQLLEN rows = -1;
    if (SQL_SUCCEEDED(SQLRowCount(handle_.get(), &rows)) && rows >= 0) sink.affected(rows);
  }
}

void OdbcConnection::run(const QString& batch, engine::ResultSink& sink) {
  Statement statement(*this, batch);
  while (statement.nextSet(sink)) {
    RowBlock rows(*this, statement.handle());
    sink.beginSet(rows.columns());
    while (rows.next()) sink.row(rows);
    sink.endSet();
  }
}

void OdbcConnection::run(const QString& batch) {
  NoSink sink;
  run(batch, sink);
}

void OdbcConnection::interrupt() {
  const std::scoped_lock lock(mutex_);
  if (running_ == SQL_NULL_HANDLE) return;
  interrupted_ = true;
  const auto now = std::chrono::steady_clock::now();
  if (now - cancelled_ < betweenCancels) return;
  cancelled_ = now;
  SQLCancel(running_);
}

}  // namespace goodsbook
