#pragma once

#include <QString>
#include <utility>
#include <vector>

#include "host/export.h"

namespace goodsbook {

// Where a server's database is found, as the words of a connection string say it:
// "Driver=FreeTDS;Server=192.168.0.5;Port=1433;Database=shop". Words that only the driver knows go along. It
// never holds a user or a password.
class GOODSBOOKHOST_EXPORT ServerAddress {
 public:
  ServerAddress() = default;

  // EDatabaseError for a text that is none, lacks the driver, or holds a user or a password; the text of the
  // error repeats no value.
  static ServerAddress parse(const QString& text);
  // The same for words that are read already; their values may hold any character.
  static ServerAddress of(std::vector<std::pair<QString, QString>> words);

  // The first word "Driver=" tells an address from the name of a file.
  static bool isAddress(const QString& text);

  QString text() const;  // what parse() reads; isAddress() knows it
  QString value(const QString& key) const;
  QString driver() const { return value(QStringLiteral("Driver")); }
  QString server() const { return value(QStringLiteral("Server")); }
  int port() const;  // 0 where none is given
  QString database() const { return value(QStringLiteral("Database")); }
  // "Trusted_Connection=yes": the account that the program runs under is the one that logs in.
  bool usesSystemAccount() const;
  QString displayName() const;  // "shop @ 192.168.0.5"

  ServerAddress withDatabase(const QString& name) const;

  const std::vector<std::pair<QString, QString>>& words() const { return words_; }

 private:
  std::vector<std::pair<QString, QString>> words_;  // the driver first, else in the order given
};

// Who the program is towards the server; nothing to do with the people who sign in. It is kept in memory
// only.
struct ServerLogin {
  QString user, password;
};

// From GOODSBOOK_SERVER_USER and GOODSBOOK_SERVER_PASSWORD; empty where they are not set.
GOODSBOOKHOST_EXPORT ServerLogin serverLoginFromEnvironment();

}  // namespace goodsbook
