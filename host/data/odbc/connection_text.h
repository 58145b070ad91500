#pragma once

#include <QString>
#include <utility>
#include <vector>

#include "host/export.h"

namespace goodsbook {

class ServerAddress;
struct ServerLogin;

// key=value;… with braces round the values that need them.
GOODSBOOKHOST_EXPORT QString connectionText(const std::vector<std::pair<QString, QString>>& words);

// What the ODBC manager is given, user and password included: for the call itself only, never to be shown or
// kept.
GOODSBOOKHOST_EXPORT QString connectionText(const ServerAddress& address, const ServerLogin& login);

// `text` without the password, wherever a driver repeats it.
QString withoutSecrets(QString text, const ServerLogin& login);

}  // namespace goodsbook
