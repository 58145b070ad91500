#include "app/sign_in/users.h"

#include <sodium.h>

#include <array>
#include <stdexcept>

#include "host/U_function.h"
#include "host/data/sql_sets.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

using TextRow = std::vector<std::optional<QString>>;

std::vector<TextRow> select(Database& database, const QString& statement) {
  return runSql(database, statement, Database::Permission::Screens).sets.at(0).rows;
}

QString text(const TextRow& row, std::size_t column) {
  return row.at(column).value_or(QString());
}

User userOf(const TextRow& row) {
  return {text(row, 0), text(row, 1), text(row, 2) == "1"_L1};
}

QString storedHash(Database& database, const QString& id) {
  const auto rows = select(database, u"select HASH from SYS_PASSWORD where USER_ID="_s + QuotedStr(id));
  return rows.empty() ? QString() : text(rows.front(), 0);
}

void startSodium() {
  if (sodium_init() < 0) throw std::runtime_error("libsodium cannot be started");
}

QString hashOf(const QString& password) {
  startSodium();
  const QByteArray bytes = password.toUtf8();
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (crypto_pwhash_str(hash.data(), bytes.constData(), static_cast<unsigned long long>(bytes.size()),
                        crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0) {
    throw std::bad_alloc();
  }
  return QString::fromLatin1(hash.data());
}

// The columns of SYS_RIGHT in the order of selecting.
constexpr std::array rightBytes = {Trecord::addRight,   Trecord::editRight,   Trecord::deleteRight,
                                   Trecord::printRight, Trecord::exportRight, Trecord::importRight,
                                   Trecord::costRight};

}  // namespace

std::vector<User> Users::active() const {
  std::vector<User> users;
  for (const auto& row :
       select(database_, u"select USER_ID, USER_NAME, T from SYS_USER where T=1 order by USER_ID"_s)) {
    users.push_back(userOf(row));
  }
  return users;
}

std::optional<User> Users::find(const QString& id) const {
  const auto rows =
      select(database_, u"select USER_ID, USER_NAME, T from SYS_USER where USER_ID="_s + QuotedStr(id));
  if (rows.empty()) return std::nullopt;
  return userOf(rows.front());
}

bool Users::hasPassword(const QString& id) const {
  return !storedHash(database_, id).isEmpty();
}

bool Users::isPassword(const QString& id, const QString& password) const {
  const QByteArray hash = storedHash(database_, id).toLatin1();
  if (hash.isEmpty()) return password.isEmpty();
  startSodium();
  const QByteArray bytes = password.toUtf8();
  return crypto_pwhash_str_verify(hash.constData(), bytes.constData(),
                                  static_cast<unsigned long long>(bytes.size())) == 0;
}

void Users::setPassword(const QString& id, const QString& password) {
  QString batch = u"delete from SYS_PASSWORD where USER_ID="_s + QuotedStr(id);
  if (!password.isEmpty()) {
    batch += u";insert into SYS_PASSWORD (USER_ID, HASH) values ("_s + QuotedStr(id) + u',' +
             QuotedStr(hashOf(password)) + u')';
  }
  runSql(database_, batch, Database::Permission::Owner);
}

std::optional<Trecord> Users::callRecord(const QString& user, int module) const {
  Trecord record;
  record.setModule(module);
  if (user.compare("ADMIN"_L1, Qt::CaseInsensitive) == 0) {
    for (const auto right : rightBytes) record.setRight(right, true);
    return record;
  }
  // The module's own row goes before the one for all modules.
  const auto rows = select(
      database_,
      u"select R_ADD, R_EDIT, R_DELETE, R_PRINT, R_EXPORT, R_IMPORT, R_COST from SYS_RIGHT where USER_ID="_s +
          QuotedStr(user) +
          u" and MODULE in ('%1','*') order by case MODULE when '*' then 1 else 0 end"_s.arg(module));
  if (rows.empty()) return std::nullopt;
  for (std::size_t i = 0; i < rightBytes.size(); ++i)
    record.setRight(rightBytes[i], text(rows.front(), i) == "1"_L1);
  return record;
}

}  // namespace goodsbook
