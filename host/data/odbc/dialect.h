#pragma once

#include <QString>
#include <QStringList>

namespace goodsbook {

// What kinds of servers want differently. T-SQL is what the screens speak; PostgreSQL is known as far as the
// connection itself goes.
class Dialect {
 public:
  enum class Kind { TransactSql, PostgreSql };

  // By the name that the driver gives the server.
  static Dialect ofServer(const QString& productName);

  Kind kind() const { return kind_; }
  bool isTransactSql() const { return kind_ == Kind::TransactSql; }

  QString begin() const { return QStringLiteral("BEGIN TRANSACTION"); }
  QString commit() const { return QStringLiteral("COMMIT TRANSACTION"); }
  // Harmless where the server has ended the transaction already.
  QString rollback() const;

  // What a new connection is told; the first part may fail where the server does not know it.
  QStringList wishes() const;
  QStringList settings(int lockMilliseconds) const;

  // Finds the line of a saved batch, once the server has finished with it: it waits for a commit under way.
  QString auditLineOf(const QString& token) const;

 private:
  explicit Dialect(Kind kind) : kind_(kind) {}
  Kind kind_;
};

}  // namespace goodsbook
