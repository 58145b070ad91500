#include "host/sheet/csv_text.h"

#include <unicode/ucnv.h>

#include <QStringDecoder>

#include "host/sheet/sheet_errors.h"

namespace goodsbook::sheet {
namespace {

constexpr qsizetype portion = 1 << 16;
constexpr char16_t atEnd = 0xFFFF;

}  // namespace

CsvText::CsvText(const QString& path, const std::function<void()>& pause) : path_(path), file_(path) {
  if (!file_.open(QIODevice::ReadOnly)) failUnreadable(path, file_.errorString());
  const QByteArray name = encodingOf(pause);
  UErrorCode status = U_ZERO_ERROR;
  converter_ = ucnv_open(name.constData(), &status);
  if (U_FAILURE(status)) failDamaged(path_);
  if (peek() == 0xFEFF) next();
}

CsvText::~CsvText() {
  ucnv_close(converter_);
}

QByteArray CsvText::encodingOf(const std::function<void()>& pause) {
  const QByteArray mark = file_.peek(2);
  if (mark == "\xFF\xFE") return "UTF-16LE";
  if (mark == "\xFE\xFF") return "UTF-16BE";
  QStringDecoder decoder(QStringDecoder::Utf8);
  while (!file_.atEnd() && !decoder.hasError()) {
    const QByteArray bytes = file_.read(portion);
    if (bytes.isEmpty()) break;
    const QString ignored = decoder(bytes);
    pause();
  }
  // A character that the end cuts in two leaves no error behind; GB18030 would read it no better.
  const bool isUtf8 = !decoder.hasError();
  if (!file_.seek(0)) failUnreadable(path_, file_.errorString());
  return isUtf8 ? "UTF-8" : "GB18030";
}

bool CsvText::fill() {
  while (!ended_ && at_ >= buffer_.size()) {
    const QByteArray bytes = file_.read(portion);
    if (file_.error() != QFile::NoError) failUnreadable(path_, file_.errorString());
    ended_ = bytes.isEmpty();
    buffer_.resize(portion * 2);
    at_ = 0;
    auto* start = reinterpret_cast<UChar*>(buffer_.data());
    UChar* target = start;
    const char* source = bytes.constData();
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUnicode(converter_, &target, start + buffer_.size(), &source, source + bytes.size(), nullptr,
                   ended_, &status);
    if (U_FAILURE(status)) failDamaged(path_);
    buffer_.truncate(target - start);
  }
  return at_ < buffer_.size();
}

char16_t CsvText::peek() {
  return fill() ? buffer_.at(at_).unicode() : atEnd;
}

char16_t CsvText::next() {
  if (!fill()) return atEnd;
  const char16_t sign = buffer_.at(at_++).unicode();
  if (sign == 0) failNoSheet(path_);
  return sign;
}

}  // namespace goodsbook::sheet
