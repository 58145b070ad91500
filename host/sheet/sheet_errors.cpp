#include "host/sheet/sheet_errors.h"

#include <QCoreApplication>
#include <QDir>

namespace goodsbook {

SheetError::SheetError(const QString& message) : std::runtime_error(message.toStdString()), text(message) {}
SheetError::~SheetError() = default;
SheetRows::~SheetRows() = default;
SheetBook::~SheetBook() = default;

namespace sheet {
namespace {

struct SheetTexts {
  Q_DECLARE_TR_FUNCTIONS(SheetReader)
};

[[noreturn]] void fail(const QString& text, const QString& path) {
  throw SheetError(text.arg(QDir::toNativeSeparators(path)));
}

}  // namespace

void failNoSheet(const QString& path) {
  fail(SheetTexts::tr("文件 %1 不是电子表格文件，请选择 .xls、.xlsx 或 .csv 文件。"), path);
}

void failDamaged(const QString& path) {
  fail(SheetTexts::tr("文件 %1 不完整或已损坏，请用表格程序打开检查后重新保存。"), path);
}

void failPassword(const QString& path) {
  fail(SheetTexts::tr("文件 %1 设有打开密码，请在表格程序中取消密码后重新保存。"), path);
}

void failTooBig(const QString& path) {
  fail(SheetTexts::tr("文件 %1 展开后过大，无法读取。请只保留要导入的工作表和列。"), path);
}

void failEmpty(const QString& path) {
  fail(SheetTexts::tr("文件 %1 是空的。"), path);
}

void failUnreadable(const QString& path, const QString& why) {
  throw SheetError(SheetTexts::tr("文件 %1 打不开：%2。请检查文件是否存在，或是否正被其他程序打开。")
                       .arg(QDir::toNativeSeparators(path), why));
}

}  // namespace sheet
}  // namespace goodsbook
