#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "host/data/sql_sets.h"
#include "host/export.h"

namespace goodsbook {

class FieldSet;
class RecordSet;
class TFrm_Base_Common;

// What a row looked like in the database when its editor was opened, and what became of it meanwhile. Reads
// the table and key column that the screen's delete statement names, and what belongs to the row; the
// look-ups are the host's own. A screen without a delete statement is not guarded.
class GOODSBOOKHOST_EXPORT RowGuard {
 public:
  void watch(const TFrm_Base_Common& screen, const QString& key);
  // Rows that hang on another one and are saved all together: `owner` selects that one by its key alone,
  // `rows` what hangs on it, told apart by `rowKey`; messages call them `list`.
  void watchRows(const QString& owner, const QString& rows, const QString& rowKey, const QString& list);
  void forget();

  // Brings the list's current row up to date, so that an editor that fills itself from a list read long ago
  // does not write old values back: reads it again by `statement`, the list's, names of codes included. A row
  // that the list would not show now gets its columns as watch() found them, and the names of the codes in
  // `fields`.
  void bringUpToDate(RecordSet& list, const QString& statement, const FieldSet& fields) const;

  // Before a save: tells when the row is gone, asks when it was changed, and throws EAbort unless the user
  // wants to save all the same. `shown` is what messages call the row.
  void confirmSave(TFrm_Base_Common& screen, const QString& shown);

 private:
  struct Part {
    QString select = {};
    QString table = {};
    QString rowKey = {};  // empty: one row
    QString list = {};    // what holds the rows, for rows that were added or removed
    QString mark = {};    // column set in the row that the list shows; empty: the first
    SqlSet found = {};
  };

  void takeFound(RecordSet& list, const FieldSet& fields) const;

  // The columns whose values differ, and the part's list when there are rows on one side only.
  static QStringList differences(const Part& part, const SqlSet& after);

  std::vector<Part> parts_;  // the row itself first
  QString condition_;        // that finds the row in statements that join its table
};

}  // namespace goodsbook
