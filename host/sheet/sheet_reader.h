#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

#include "host/export.h"

// Reading spreadsheets: open a file, choose a sheet, take its rows one by one as the texts that a spreadsheet
// program would show. Nothing of the file is run or calculated, and no file can make the readers take more
// than a few hundred megabytes.
namespace goodsbook {

// A file that cannot be read; what() is a Chinese text for the user.
class GOODSBOOKHOST_EXPORT SheetError : public std::runtime_error {
 public:
  explicit SheetError(const QString& text);
  ~SheetError() override;
  const QString text;
};

struct SheetRow {
  int number = 0;              // in the sheet, from 1
  std::vector<QString> cells;  // as many as were asked for; empty where the sheet has none
};

class GOODSBOOKHOST_EXPORT SheetRows {
 public:
  virtual ~SheetRows();
  // The next row in the file's order, hidden ones included; rows without cells may be left out. False behind
  // the last one. Throws SheetError.
  virtual bool next(SheetRow& row) = 0;
};

class GOODSBOOKHOST_EXPORT SheetBook {
 public:
  virtual ~SheetBook();
  virtual QStringList sheets() const = 0;                        // their names; never empty
  virtual std::unique_ptr<SheetRows> rows(int sheet) const = 0;  // valid while the book lives
};

struct SheetOptions {
  int columns = 256;  // how many columns are wanted, from the first
  // Called every few milliseconds of work; may throw to give up.
  std::function<void()> pause = [] {};
};

// Opens .xlsx, .xls and .csv files, told by what is in them; any other format through LibreOffice where it is
// installed. Throws SheetError.
GOODSBOOKHOST_EXPORT std::unique_ptr<SheetBook> openSheets(const QString& path, SheetOptions options = {});

}  // namespace goodsbook
