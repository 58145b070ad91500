#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "host/U_glo.h"

namespace goodsbook {

class Database;

struct User {
  QString id, name;
  bool active = false;
};

// The people who may work on a database, their passwords and rights. Failures of the database are
// EDatabaseError.
class Users {
 public:
  explicit Users(Database& database) : database_(database) {}

  std::vector<User> active() const;  // by code
  std::optional<User> find(const QString& id) const;

  bool hasPassword(const QString& id) const;
  bool isPassword(const QString& id, const QString& password) const;  // the empty one when none is set
  void setPassword(const QString& id, const QString& password);       // an empty one takes it away

  // The call record that opens a module: its number and what the user may do there; nothing when the module
  // is closed to the user.
  std::optional<Trecord> callRecord(const QString& user, int module) const;

 private:
  Database& database_;
};

}  // namespace goodsbook
