#include "host/data/statement_text.h"

namespace goodsbook {

QString textLiteral(const QString& text) {
  return QStringLiteral("N'") + QString(text).replace(u'\'', QStringLiteral("''")) + u'\'';
}

QString bytesLiteral(const QByteArray& bytes) {
  return bytes.isNull() ? QStringLiteral("null") : QStringLiteral("0x") + QString::fromLatin1(bytes.toHex());
}

QString quotedName(const QString& name) {
  return u'[' + QString(name).replace(u']', QStringLiteral("]]")) + u']';
}

}  // namespace goodsbook
