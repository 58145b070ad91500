#include "host/data/U_dataop.h"

#include <QCoreApplication>
#include <set>

#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/data/errors.h"
#include "host/data/numbering.h"
#include "host/data/statement_text.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int unitGridTag = 10032;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(U_dataop)
};

class LoadSink : public engine::ResultSink {
 public:
  explicit LoadSink(RecordSet& rows) : rows_(rows) {}
  void beginSet(std::span<const engine::Column> columns) override { rows_.beginLoad(columns); }
  void row(const engine::Row& row) override { rows_.appendLoaded(row); }
  void endSet() override { rows_.endLoad(); }

 private:
  RecordSet& rows_;
};

// Runs an operation and records what it was and what came of it.
template <typename Operation>
auto recorded(SentStatement sent, Operation&& operation) {
  Session& session = Session::current();
  try {
    const auto [answer, told] = operation(session);
    sent.result = told;
    session.record(std::move(sent));
    return answer;
  } catch (const EDatabaseError& error) {
    sent.result = error.text;
    session.record(std::move(sent));
    throw;
  }
}

void loadPage(Database& database, RecordSet& rows, const QString& select, int pageSize, int pageNo) {
  const auto cursor = database.openCursor(select);
  rows.beginLoad(cursor->columns());
  bool more = true;
  for (qint64 skip = qint64{pageSize} * (pageNo - 1); skip > 0 && more; --skip) more = cursor->next();
  for (int i = 0; i < pageSize && more && cursor->next(); ++i) rows.appendLoaded(cursor->row());
  rows.endLoad();
}

[[noreturn]] void refuseRow(RecordSet& rows, int row, const QString& text) {
  rows.moveTo(row);
  DISPINFO(text, 5);
  throw EAbort();
}

QString labelOf(const RecordSet& rows, int field) {
  const Field& found = rows.field(field);
  return found.label.isEmpty() ? found.name : found.label;
}

void checkAboveZero(RecordSet& rows, int field) {
  for (int row = 0; row < rows.rowCount(); ++row) {
    bool isNumber = false;
    const double value = rows.valueAt(row, field).toString().toDouble(&isNumber);
    if (isNumber && value > 0) continue;
    const QString name = rows.tag == unitGridTag ? Texts::tr("转换率") : labelOf(rows, field);
    refuseRow(rows, row, Texts::tr("第%1行的%2必须是大于零的数字!").arg(row + 1).arg(name));
  }
}

// Codes ignore case; an empty text and the "0" of a field that nobody filled in are none.
void checkNoneTwice(RecordSet& rows, const QString& fieldName, const QString& caption) {
  const int field = rows.fieldIndex(fieldName);
  if (field < 0) return;
  std::set<QString> seen;
  for (int row = 0; row < rows.rowCount(); ++row) {
    const QString code = rows.textAt(row, field).trimmed().toUpper();
    if (code.isEmpty() || code == u"0" || seen.insert(code).second) continue;
    refuseRow(rows, row, Texts::tr("%1“%2”在表格中重复!").arg(caption, rows.textAt(row, field).trimmed()));
  }
}

SentStatement statementOf(const PictureCell& picture) {
  return {u"Applyupdatapict"_s, {}, picture.keyValue, {}, picture.table + u'.' + picture.blobField, {}};
}

void store(const PictureCell& picture, Database& database) {
  const auto& [rows, table, keyField, keyValue, blobField] = picture;
  const bool has = rows.isOpen() && rows.hasField(blobField) && !rows.isNull(blobField);
  const QByteArray bytes = has ? rows.value(blobField).toByteArray() : QByteArray();
  if (database.storeBlob(table, blobField, keyField, keyValue, bytes) == 0)
    throw EDatabaseError(50000, 16, 1, 1, Texts::tr("图片没有保存：找不到“%1”").arg(keyValue));
}

}  // namespace

bool opensql(RecordSet& rows, const QString& moduleCode, const QString& sql, int pageSize, int pageNo,
             const QString& keyField, const QString& /*extra*/, bool /*flag*/, const QString& /*mode*/) {
  return recorded({u"opensql"_s, moduleCode, keyField, {}, sql, {}}, [&](Session& session) {
    // Loaded aside first: a select that fails half-way leaves the screen's rows as they are.
    RecordSet loaded;
    loaded.declareFields(rows.declaredFields());
    if (pageSize > 0) {
      const bool ordered = keyField.isEmpty() || sql.contains(u"order by"_s, Qt::CaseInsensitive);
      const QString select = ordered ? sql : sql + u" order by "_s + keyField;
      loadPage(session.database(), loaded, select, pageSize, std::max(pageNo, 1));
    } else {
      LoadSink sink(loaded);
      session.database().query(sql, sink);
    }
    rows.adopt(loaded);
    return std::pair(true, u"Y"_s);
  });
}

QString ExecSql(const QString& moduleCode, const QString& keyValue, const QString& operation,
                const QString& sql, unsigned short /*limit*/, bool /*flag1*/, bool /*flag2*/, bool /*flag3*/,
                bool /*flag4*/) {
  return recorded({u"ExecSql"_s, moduleCode, keyValue, operation, sql, {}}, [&](Session& session) {
    session.database().save(sql, {G_UserId, moduleCode, keyValue, operation});
    return std::pair(u"Y"_s, u"Y"_s);
  });
}

void execSqlBeside(const QString& moduleCode, const QString& keyValue, const QString& operation,
                   const QString& sql, const std::function<void()>& pause) {
  recorded({u"ExecSql"_s, moduleCode, keyValue, operation, sql, {}}, [&](Session& session) {
    session.database().saveBeside(sql, {G_UserId, moduleCode, keyValue, operation}, pause);
    return std::pair(true, u"Y"_s);
  });
}

QString GetNOID(const QString& moduleCode, const QString& prefix, int serialLength) {
  return recorded(
      {u"GetNOID"_s, moduleCode, prefix, QString::number(serialLength), {}, {}}, [&](Session& session) {
        const QString number =
            drawNumber(session.database(), moduleCode, prefix, serialLength, session.desktop().now());
        return std::pair(number, number);
      });
}

void Applyupdatapict(RecordSet& rows, const QString& table, const QString& keyField, const QString& keyValue,
                     const QString& blobField) {
  const PictureCell picture{rows, table, keyField, keyValue, blobField};
  recorded(statementOf(picture), [&](Session& session) {
    store(picture, session.database());
    return std::pair(true, u"Y"_s);
  });
}

void execSqlWithPicture(const QString& moduleCode, const QString& keyValue, const QString& operation,
                        const QString& sql, const PictureCell& picture) {
  recorded({u"ExecSql"_s, moduleCode, keyValue, operation, sql, {}}, [&](Session& session) {
    Database& database = session.database();
    database.save(sql, {G_UserId, moduleCode, keyValue, operation}, [&] { store(picture, database); });
    return std::pair(true, u"Y"_s);
  });
  recorded(statementOf(picture), [](Session&) { return std::pair(true, u"Y"_s); });
}

void checkDatamore(RecordSet& rows, const QString& fieldName, const QString& /*extra*/) {
  const int field = rows.fieldIndex(fieldName);
  if (field < 0) throw std::invalid_argument("no field " + fieldName.toStdString());
  rows.waitForAll();
  checkAboveZero(rows, field);
  if (rows.tag != unitGridTag) return;
  checkNoneTwice(rows, u"DW_ID"_s, Texts::tr("单位"));
  checkNoneTwice(rows, u"TM"_s, Texts::tr("条码"));
}

}  // namespace goodsbook
