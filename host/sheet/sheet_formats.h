#pragma once

#include "host/sheet/sheet_reader.h"

// The readers behind openSheets(), one for each format. All throw SheetError.
namespace goodsbook::sheet {

std::unique_ptr<SheetBook> openXlsx(const QString& path, const SheetOptions& options);
std::unique_ptr<SheetBook> openXls(const QString& path, const SheetOptions& options);
std::unique_ptr<SheetBook> openCsv(const QString& path, const SheetOptions& options);
// Any format that LibreOffice reads, where it is installed.
std::unique_ptr<SheetBook> openThroughOffice(const QString& path, const SheetOptions& options);

bool looksLikeText(const QByteArray& head);  // no control characters but line ends and tabs

}  // namespace goodsbook::sheet
