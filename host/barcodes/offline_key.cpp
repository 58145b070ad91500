#include "host/barcodes/offline_key.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

constexpr qsizetype prefixLength = 6;
constexpr qsizetype restLength = 7;

// 32 bits as upper-case hexadecimal digits without leading zeros; 0 is empty.
std::optional<QString> hexadecimal(const QString& digits) {
  const bool isNumber = std::ranges::all_of(digits, [](QChar sign) { return sign >= u'0' && sign <= u'9'; });
  if (!isNumber) return std::nullopt;
  const quint32 bits = digits.toUInt();  // of eight digits at most
  return bits == 0 ? QString() : QString::number(bits, 16).toUpper();
}

}  // namespace

QString offlineKey(const QString& barcode) {
  if (barcode.size() <= prefixLength) return {};
  QString rest = barcode.mid(prefixLength, restLength);
  // A 1 in front keeps leading zeros through the conversion to a number.
  if (rest.startsWith(u'0')) rest = u'1' + rest.rightJustified(restLength, u'0');
  const auto tail = hexadecimal(rest);
  const auto head = hexadecimal(barcode.left(prefixLength));
  return tail && head ? *tail + *head : u"ZZZZ"_s;
}

}  // namespace goodsbook
