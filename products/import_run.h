#pragma once

#include <QString>

#include "host/data/record_set.h"

namespace goodsbook {

// One row of the import grid, as its cells show it.
struct ImportRow {
  QString barcode, name, specification, price, memberPrice;
};

// What every imported product gets.
struct ImportDefaults {
  QString category, categoryName, unit, unitName;
  bool duplicatesToo = false;  // a barcode that exists makes a further product
};

// Makes products of rows, each in a transaction of its own, so that whatever ends a run leaves whole products
// and the next run over the same rows finds them by their barcodes.
class ImportRun {
 public:
  enum class Outcome { Imported, Existing };

  // `list` takes a row for every product made; null for none. Neither set is owned.
  ImportRun(ImportDefaults defaults, RecordSet& scratch, RecordSet* list);

  Outcome import(const ImportRow& row);  // throws EDatabaseError; nothing of the row stays then
  void finish();                         // posts what the list is still being given

 private:
  bool exists(const QString& barcode);
  QString statements(const QString& code, const ImportRow& row) const;
  void addToList(const QString& code, const ImportRow& row);

  ImportDefaults defaults_;
  RecordSet& scratch_;
  RecordSet* list_;
};

// A cell's text as the grid takes it: single quotes become double ones, control characters (line ends, the
// tabs that keep long codes from becoming numbers) go or, between words, become a blank.
QString importText(const QString& cell);

// Why a row failed, for its sixth column: the database's words behind what is wrong with a price.
QString importReason(const ImportRow& row, const QString& error);

}  // namespace goodsbook
