#include "host/data/numbering.h"

#include <QCoreApplication>
#include <array>
#include <vector>

#include "host/data/database.h"
#include "host/data/errors.h"
#include "host/data/retry.h"
#include "host/data/sql_sets.h"
#include "host/data/statement_text.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int monthlySerialDigits = 6;
constexpr int mostSerialDigits = 18;  // what a 64-bit number holds
constexpr int keysAtATime = 500;

struct KeyOfModule {
  const char16_t* module;
  const char16_t* table;
  const char16_t* column;
};

// Where the codes of a module's records are. A deleted product leaves its units, which keep its code taken.
constexpr std::array<KeyOfModule, 14> keys = {{
    {u"101", u"D1801", u"WL_ID"},
    {u"101", u"D1801DW", u"WL_ID"},
    {u"103", u"D1003", u"dw_id"},
    {u"104", u"D1004", u"CLASS_ID"},
    {u"107", u"D1007", u"CK_ID"},
    {u"108", u"D1008", u"BM_ID"},
    {u"111", u"D1002", u"addr_ID"},
    {u"112", u"D1101", u"YW_ID"},
    {u"113", u"D1102", u"KH_GYS_ID"},
    {u"114", u"D1103", u"KH_GYS_ID"},
    {u"122", u"D1010", u"JY_ID"},
    {u"123", u"D1011", u"SEND_ID"},
    {u"124", u"D1012", u"FF_ID"},
    {u"125", u"D1001", u"hb_id"},
}};

QString numberText(qint64 serial, int digits) {
  return QString::number(serial).rightJustified(digits, u'0');
}

// The texts of the first column.
std::vector<QString> read(Database& database, const QString& select) {
  std::vector<QString> texts;
  const SqlSets answer = runSql(database, select, Database::Permission::Screens);
  for (const auto& row : answer.sets.at(0).rows) texts.push_back(row.at(0).value_or(QString()));
  return texts;
}

// The first serial from `serial` on whose code is in no row. Codes of one length stand in the order of their
// serials.
qint64 firstFree(Database& database, const KeyOfModule& key, const QString& prefix, int digits,
                 qint64 serial) {
  const QString column = QString::fromUtf16(key.column);
  const qsizetype length = prefix.size() + digits;
  QString from = prefix + numberText(serial, digits);
  const QString last = prefix + QString(digits, u'9');
  for (;;) {
    const auto taken =
        read(database, u"select top %1 %2 from %3 where %2>=%4 and %2<=%5 and len(%2)=%6 order by %2"_s.arg(
                           QString::number(keysAtATime), column, QString::fromUtf16(key.table),
                           textLiteral(from), textLiteral(last), QString::number(length)));
    for (const QString& code : taken) {
      const QString candidate = prefix + numberText(serial, digits);
      const int order = code.compare(candidate, Qt::CaseInsensitive);
      if (order == 0) ++serial;
      if (order > 0 && code.mid(prefix.size()).toLongLong() > serial) return serial;
    }
    if (taken.size() < static_cast<std::size_t>(keysAtATime)) return serial;
    from = taken.back();
  }
}

// The same over all tables in which the module's codes stand.
qint64 firstFree(Database& database, const QString& moduleCode, const QString& prefix, int digits,
                 qint64 serial) {
  for (qint64 before = -1; before != serial;) {
    before = serial;
    for (const auto& key : keys) {
      if (moduleCode == QStringView(key.module)) serial = firstFree(database, key, prefix, digits, serial);
    }
  }
  return serial;
}

QString drawOnce(Database& database, const QString& moduleCode, const QString& prefix, int serialLength,
                 const QDateTime& now) {
  const int digits = std::min(serialLength, mostSerialDigits);
  Transaction transaction(database);
  const QString line = u" where MODULE=%1 and PREFIX=%2 and SERIAL_LENGTH=%3"_s.arg(
      textLiteral(moduleCode), textLiteral(prefix), QString::number(digits));
  // Counting up before reading makes a server, too, let one program in at a time.
  const SqlSets counted =
      runSql(database, u"update SYS_NOID set LAST_NO=LAST_NO+1"_s + line, Database::Permission::Screens);
  if (counted.counts.at(0) == 0) {
    runSql(database,
           u"insert into SYS_NOID (MODULE,PREFIX,SERIAL_LENGTH,LAST_NO) values (%1,%2,%3,1)"_s.arg(
               textLiteral(moduleCode), textLiteral(prefix), QString::number(digits)),
           Database::Permission::Screens);
  }
  const qint64 next = read(database, u"select LAST_NO from SYS_NOID"_s + line).at(0).toLongLong();
  qint64 serial = next;
  QString number;
  if (digits > 0) {
    serial = firstFree(database, moduleCode, prefix, digits, serial);
    number = prefix + numberText(serial, digits);
    if (number.size() > prefix.size() + digits) {
      throw EDatabaseError(
          50000, 16, 1, 1,
          QCoreApplication::translate("U_dataop", "%1 位的编号已用完，请加长编号").arg(digits));
    }
  } else {
    number = prefix + now.toString(u"yyMM") + numberText(serial, monthlySerialDigits);
  }
  if (serial != next) {
    runSql(database, u"update SYS_NOID set LAST_NO=%1"_s.arg(serial) + line, Database::Permission::Screens);
  }
  transaction.commit();
  return number;
}

}  // namespace

QString drawNumber(Database& database, const QString& moduleCode, const QString& prefix, int serialLength,
                   const QDateTime& now) {
  QString number;
  retried([&] {
    try {
      number = drawOnce(database, moduleCode, prefix, serialLength, now);
    } catch (const EDatabaseError& error) {
      // Two programs drew the very first number of a line: the other one has made the line.
      constexpr int duplicateKey = 2627;
      if (error.number != duplicateKey) throw;
      number = drawOnce(database, moduleCode, prefix, serialLength, now);
    }
  });
  return number;
}

}  // namespace goodsbook
