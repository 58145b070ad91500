#pragma once

#include <QHash>
#include <QString>
#include <functional>

#include "host/data/record_set.h"

namespace goodsbook {

// The units of one product as its editor's grid shows them, over D1801DW. The change log becomes statements.
class UnitRows {
 public:
  // `rows` gets the fields of the grid; unit names come from D1003, read once.
  explicit UnitRows(RecordSet& rows);

  void open(const QString& moduleCode, const QString& product);      // main unit first
  void openCopy(const QString& moduleCode, const QString& product);  // the same rows as new ones
  void openEmpty(const QString& moduleCode);

  // Shows a message and throws EAbort when the rows cannot be saved: no row, not one main unit, its rate is
  // not 1, a unit that there is not, or a rate that is none. Where one cell is to blame its row is current
  // then and `pointTo` is called with its field.
  using PointTo = std::function<void(const QString& field)>;
  void check(const PointTo& pointTo);

  // The statements of all changes, in the order in which they were made.
  QString statements(const QString& product) const;

  bool moveToMain();  // makes the main unit's row current; false when there is none
  QVariant savedValue(const QString& field) const;  // of the current row: an emptied number was saved as 0
  bool isNew() const;                               // the current row was added in this editing
  QString unitName(const QString& code) const;      // empty for an unknown one

 private:
  void create();
  void readNames(const QString& moduleCode);
  void load(const QString& moduleCode, const QString& product);
  void setDefaults();
  void checkUnits(const PointTo& pointTo);

  RecordSet& rows_;
  RecordSet source_;
  QHash<QString, QString> names_;  // by upper-case code
};

}  // namespace goodsbook
