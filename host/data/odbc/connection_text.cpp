#include "host/data/odbc/connection_text.h"

#include <QStringList>
#include <algorithm>

#include "host/data/odbc/server_address.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

bool needsBraces(const QString& value) {
  const bool special =
      std::any_of(value.begin(), value.end(), [](QChar c) { return u";{}[]()=,?*!@"_s.contains(c); });
  return special || value != value.trimmed();
}

QString braced(const QString& value) {
  return needsBraces(value) ? u'{' + QString(value).replace(u'}', u"}}"_s) + u'}' : value;
}

// The server maker's own driver takes the port as a part of the server's name.
bool takesPortWithServer(const QString& driver) {
  return driver.startsWith("ODBC Driver"_L1, Qt::CaseInsensitive) ||
         driver.startsWith("SQL Server"_L1, Qt::CaseInsensitive);
}

bool isFreeTds(const QString& driver) {
  return driver.contains("freetds"_L1, Qt::CaseInsensitive) ||
         driver.contains("tdsodbc"_L1, Qt::CaseInsensitive);
}

}  // namespace

QString connectionText(const std::vector<std::pair<QString, QString>>& words) {
  QStringList texts;
  for (const auto& [key, value] : words) texts << key + u'=' + braced(value);
  return texts.join(u';');
}

QString connectionText(const ServerAddress& address, const ServerLogin& login) {
  auto words = address.words();
  const QString driver = address.driver();
  if (takesPortWithServer(driver) && address.port() > 0) {
    std::erase_if(words,
                  [](const auto& word) { return word.first.compare("Port"_L1, Qt::CaseInsensitive) == 0; });
    for (auto& [key, value] : words) {
      if (key.compare("Server"_L1, Qt::CaseInsensitive) == 0) value += u',' + address.value(u"Port"_s);
    }
  }
  if (isFreeTds(driver)) {
    // Without a version it tries one after the other, and waits for a silent server as often.
    for (const auto& [key, value] :
         {std::pair(u"ClientCharset"_s, u"UTF-8"_s), {u"TDS_Version"_s, u"7.4"_s}}) {
      if (address.value(key).isEmpty()) words.emplace_back(key, value);
    }
  }
  if (address.usesSystemAccount()) return connectionText(words);
  if (!login.user.isEmpty()) words.emplace_back(u"UID"_s, login.user);
  if (!login.password.isEmpty()) words.emplace_back(u"PWD"_s, login.password);
  return connectionText(words);
}

QString withoutSecrets(QString text, const ServerLogin& login) {
  constexpr qsizetype tellingLength = 3;  // shorter ones would blank out ordinary words
  if (login.password.size() >= tellingLength) text.replace(login.password, u"***"_s);
  return text;
}

}  // namespace goodsbook
