#include "host/data/odbc/server_address.h"

#include <QCoreApplication>
#include <algorithm>

#include "host/data/errors.h"
#include "host/data/odbc/connection_text.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(ServerAddress)
};

[[noreturn]] void refuse(const QString& text) {
  throw EDatabaseError(50000, 16, 1, 1, text);
}

bool isSecret(const QString& key) {
  static const QStringList secrets = {u"UID"_s,      u"PWD"_s,     u"User"_s,
                                      u"Username"_s, u"User ID"_s, u"Password"_s};
  return secrets.contains(key, Qt::CaseInsensitive);
}

// The value that begins at `at`, in braces or up to the next semicolon; `at` is behind the semicolon then.
QString readValue(const QString& text, qsizetype& at) {
  QString value;
  if (at < text.size() && text[at] == u'{') {
    for (++at;; ++at) {
      if (at >= text.size()) refuse(Texts::tr("服务器地址中的花括号没有结束"));
      if (text[at] != u'}') {
        value += text[at];
      } else if (at + 1 < text.size() && text[at + 1] == u'}') {
        value += text[at++];
      } else {
        break;
      }
    }
    ++at;
    while (at < text.size() && text[at] != u';') ++at;
  } else {
    const qsizetype end = std::max(text.indexOf(u';', at), qsizetype{-1});
    value = text.mid(at, end < 0 ? -1 : end - at).trimmed();
    at = end < 0 ? text.size() : end;
  }
  ++at;
  return value;
}

}  // namespace

ServerAddress ServerAddress::parse(const QString& text) {
  std::vector<std::pair<QString, QString>> words;
  for (qsizetype at = 0; at < text.size();) {
    const qsizetype sign = text.indexOf(u'=', at);
    const QString key = text.mid(at, sign < 0 ? -1 : sign - at).trimmed();
    if (sign < 0 && key.isEmpty()) break;  // blanks behind the last word
    if (sign < 0 || key.isEmpty() || key.contains(u';')) {
      refuse(Texts::tr("服务器地址应为 Driver=…;Server=…;Port=…;Database=…"));
    }
    at = sign + 1;
    const QString value = readValue(text, at);
    words.emplace_back(key, value);
  }
  return of(std::move(words));
}

ServerAddress ServerAddress::of(std::vector<std::pair<QString, QString>> words) {
  if (std::any_of(words.begin(), words.end(), [](const auto& word) { return isSecret(word.first); })) {
    refuse(
        Texts::tr("服务器地址中不能写用户和密码；请用环境变量 GOODSBOOK_SERVER_USER 和 "
                  "GOODSBOOK_SERVER_PASSWORD，或在登录窗口输入"));
  }
  std::stable_partition(words.begin(), words.end(),
                        [](const auto& word) { return isAddress(word.first + u'='); });
  ServerAddress address;
  address.words_ = std::move(words);
  if (address.driver().isEmpty() && address.value(u"DSN"_s).isEmpty()) {
    refuse(Texts::tr("服务器地址缺少 Driver=…"));
  }
  const bool isFreeTds = address.driver().contains("FreeTDS"_L1, Qt::CaseInsensitive);
  if (isFreeTds && address.server().isEmpty()) refuse(Texts::tr("服务器地址缺少 Server=…"));
  return address;
}

bool ServerAddress::isAddress(const QString& text) {
  return text.startsWith("Driver="_L1, Qt::CaseInsensitive) ||
         text.startsWith("DSN="_L1, Qt::CaseInsensitive);
}

QString ServerAddress::text() const {
  return connectionText(words_);
}

QString ServerAddress::value(const QString& key) const {
  const auto found = std::find_if(words_.begin(), words_.end(), [&](const auto& word) {
    return word.first.compare(key, Qt::CaseInsensitive) == 0;
  });
  return found == words_.end() ? QString() : found->second;
}

int ServerAddress::port() const {
  return value(u"Port"_s).toInt();
}

bool ServerAddress::usesSystemAccount() const {
  static const QStringList yes = {u"yes"_s, u"true"_s, u"1"_s};
  return yes.contains(value(u"Trusted_Connection"_s), Qt::CaseInsensitive);
}

QString ServerAddress::displayName() const {
  const QString host = server().isEmpty() ? value(u"DSN"_s) : server();
  return database().isEmpty() ? host : database() + u" @ "_s + host;
}

ServerAddress ServerAddress::withDatabase(const QString& name) const {
  ServerAddress other = *this;
  std::erase_if(other.words_,
                [](const auto& word) { return word.first.compare("Database"_L1, Qt::CaseInsensitive) == 0; });
  if (!name.isEmpty()) other.words_.emplace_back(u"Database"_s, name);
  return other;
}

ServerLogin serverLoginFromEnvironment() {
  return {qEnvironmentVariable("GOODSBOOK_SERVER_USER"), qEnvironmentVariable("GOODSBOOK_SERVER_PASSWORD")};
}

}  // namespace goodsbook
