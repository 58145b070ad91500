#pragma once

#include <QFile>
#include <QString>
#include <functional>
#include <memory>

struct UConverter;

namespace goodsbook::sheet {

// The characters of a text file: UTF-8 or UTF-16 by their marks, UTF-8 without one where all of the file is
// such, else GB18030.
class CsvText {
 public:
  CsvText(const QString& path, const std::function<void()>& pause);
  ~CsvText();
  CsvText(const CsvText&) = delete;
  CsvText& operator=(const CsvText&) = delete;

  // The next character, 0xFFFF at the end. Throws SheetError where the file cannot be read on or is no text.
  char16_t next();
  char16_t peek();

 private:
  bool fill();
  QByteArray encodingOf(const std::function<void()>& pause);

  QString path_;
  QFile file_;
  UConverter* converter_ = nullptr;
  QString buffer_;
  qsizetype at_ = 0;
  bool ended_ = false;
};

}  // namespace goodsbook::sheet
