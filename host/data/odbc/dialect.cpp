#include "host/data/odbc/dialect.h"

#include "host/data/statement_text.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

Dialect Dialect::ofServer(const QString& productName) {
  return Dialect(productName.contains("PostgreSQL"_L1, Qt::CaseInsensitive) ? Kind::PostgreSql
                                                                            : Kind::TransactSql);
}

QString Dialect::rollback() const {
  return isTransactSql() ? u"IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION"_s : u"ROLLBACK TRANSACTION"_s;
}

QStringList Dialect::wishes() const {
  // The server's own messages in the language of its users, where it has that language.
  return isTransactSql() ? QStringList(u"SET LANGUAGE N'Simplified Chinese'"_s) : QStringList();
}

QStringList Dialect::settings(int lockMilliseconds) const {
  if (!isTransactSql()) return {u"SET lock_timeout = %1"_s.arg(lockMilliseconds)};
  return {
      u"SET DATEFORMAT ymd SET DATEFIRST 7 SET LOCK_TIMEOUT %1 SET TEXTSIZE 2147483647 SET XACT_ABORT ON "
      "SET NOCOUNT OFF SET ANSI_NULLS ON SET ANSI_PADDING ON SET ANSI_WARNINGS ON SET ARITHABORT ON "
      "SET CONCAT_NULL_YIELDS_NULL ON SET QUOTED_IDENTIFIER ON "
      "SET TRANSACTION ISOLATION LEVEL READ COMMITTED"_s.arg(lockMilliseconds)};
}

QString Dialect::auditLineOf(const QString& token) const {
  // Even where readers see old versions of rows, this one waits for the line's writer.
  const QString hint = isTransactSql() ? u" WITH (READCOMMITTEDLOCK)"_s : QString();
  return u"SELECT AUDIT_ID FROM SYS_AUDIT"_s + hint + u" WHERE TOKEN="_s + textLiteral(token);
}

}  // namespace goodsbook
