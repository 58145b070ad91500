#pragma once

#include <QString>
#include <functional>

#include "host/data/record_set.h"
#include "host/export.h"

// The four data operations of all screens. They work on the current session's database, report failures as
// EDatabaseError and are recorded for `statements` of the driver, in order.
namespace goodsbook {

// Runs `sql` and loads its result into `rows`, replacing its contents. pageSize > 0 loads only page pageNo
// (1-based) of that size, ordered by keyField. True when the select could be opened.
GOODSBOOKHOST_EXPORT bool opensql(RecordSet& rows, const QString& moduleCode, const QString& sql,
                                  int pageSize = 0, int pageNo = 0, const QString& keyField = {},
                                  const QString& extra = {}, bool flag = false,
                                  const QString& mode = QStringLiteral("1"));

// Runs a batch in one transaction, together with one line in the audit table. "Y"; a failure is raised, so
// that nothing that follows in the caller happens.
GOODSBOOKHOST_EXPORT QString ExecSql(const QString& moduleCode, const QString& keyValue,
                                     const QString& operation, const QString& sql,
                                     unsigned short limit = 65535, bool flag1 = false, bool flag2 = true,
                                     bool flag3 = false, bool flag4 = true);

// ExecSql for a batch that takes long: the window lives on, `pause` is called every few milliseconds where
// the database can do without its thread. It must not throw and sends nothing.
GOODSBOOKHOST_EXPORT void execSqlBeside(const QString& moduleCode, const QString& keyValue,
                                        const QString& operation, const QString& sql,
                                        const std::function<void()>& pause);

// The next free number of the module: prefix and a serial of serialLength digits, drawn under a lock, never
// twice; codes that users typed themselves are skipped. serialLength 0: a head of year and month ("2611") and
// a serial that never starts again.
GOODSBOOKHOST_EXPORT QString GetNOID(const QString& moduleCode, const QString& prefix, int serialLength);

// Stores the picture in the current row of `rows` (its field blobField) into table.blobField of the row
// keyField = keyValue; a null picture clears it.
GOODSBOOKHOST_EXPORT void Applyupdatapict(RecordSet& rows, const QString& table, const QString& keyField,
                                          const QString& keyValue, const QString& blobField);

// Where a picture goes, in the words of Applyupdatapict.
struct PictureCell {
  RecordSet& rows;
  QString table, keyField, keyValue, blobField;
};

// ExecSql and then Applyupdatapict as one save: when the picture cannot be stored, nothing of the batch
// stays. Both are told of as if they had been called one by one.
GOODSBOOKHOST_EXPORT void execSqlWithPicture(const QString& moduleCode, const QString& keyValue,
                                             const QString& operation, const QString& sql,
                                             const PictureCell& picture);

// A check over all rows of a grid's record set before they are saved: numbers in `fieldName` are above zero,
// no unit or barcode stands twice where the set's tag asks for it. Shows its own message and throws EAbort.
GOODSBOOKHOST_EXPORT void checkDatamore(RecordSet& rows, const QString& fieldName, const QString& extra);

}  // namespace goodsbook
