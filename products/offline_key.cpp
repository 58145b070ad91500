#include "products/offline_key.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// 32 bits as upper-case hexadecimal digits without leading zeros; 0 is empty.
std::optional<QString> hexadecimal(const QString& digits) {
  bool isNumber = false;
  const qlonglong value = digits.toLongLong(&isNumber);
  if (!isNumber) return std::nullopt;
  const auto bits = static_cast<quint32>(value);
  return bits == 0 ? QString() : QString::number(bits, 16).toUpper();
}

}  // namespace

QString offlineKey(const QString& barcode) {
  if (barcode.size() < 7) return {};
  QString rest = barcode.mid(6, 7);
  // A 1 in front keeps leading zeros through the conversion to a number.
  if (rest.startsWith(u'0')) rest = u'1' + rest.rightJustified(7, u'0');
  const auto tail = hexadecimal(rest);
  const auto head = hexadecimal(barcode.left(6));
  return tail && head ? *tail + *head : u"ZZZZ"_s;
}

}  // namespace goodsbook
