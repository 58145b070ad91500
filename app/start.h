#pragma once

#include <QDateTime>
#include <QString>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "host/data/server_database.h"
#include "host/session.h"

// Starting to work on a database: what the program, `drive` and `tour` have in common.
namespace goodsbook {

// Something that the user asked for at the start cannot be had; the text says what.
class StartError : public std::runtime_error {
 public:
  explicit StartError(const QString& text) : std::runtime_error(text.toStdString()), text_(text) {}
  const QString& text() const { return text_; }

 private:
  QString text_;
};

// Where the program keeps its files when nothing else is said; created when missing.
QString defaultProgramDir();
QString defaultDatabase(const QString& programDir);

// Opens the database, a file (created when missing) or a server's address, for work with this desktop in this
// folder (created when missing). A file's GETDATE() follows the desktop's clock, a server has its own.
// StartError when one of them cannot be used.
std::unique_ptr<Session> openSession(const QString& database, const QString& programDir,
                                     std::unique_ptr<Desktop> desktop,
                                     const ServerLogin& login = serverLoginFromEnvironment());

// Makes `user` the one who works: checks the password, sets the globals of the host from the company's
// settings. StartError for an unknown or inactive user and for a wrong password.
void signIn(Session& session, const QString& user, const QString& password);

// For a user whose warehouse the settings do not name: the first one that the user may use, else the shop's
// first.
void takeFirstWarehouse(Session& session);

}  // namespace goodsbook
