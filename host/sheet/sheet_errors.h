#pragma once

#include "host/sheet/sheet_reader.h"

// Why a file cannot be read, in the words of the user. Each throws SheetError.
namespace goodsbook::sheet {

[[noreturn]] void failNoSheet(const QString& path);   // something else altogether
[[noreturn]] void failDamaged(const QString& path);   // cut off or spoilt
[[noreturn]] void failPassword(const QString& path);  // locked
[[noreturn]] void failTooBig(const QString& path);    // unpacks to more than any list of goods
[[noreturn]] void failEmpty(const QString& path);     // no bytes at all
[[noreturn]] void failUnreadable(const QString& path, const QString& why);

}  // namespace goodsbook::sheet
