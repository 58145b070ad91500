#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "host/data/odbc/server_address.h"

namespace goodsbook::test {

// A PostgreSQL server of the test's own: a cluster in a temporary folder on a free loopback port, run as an
// unprivileged user where the test is root. It goes with the object. Throws std::runtime_error where it
// cannot be had.
class PostgresServer {
 public:
  PostgresServer();
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  // The one of the test program, started on first use.
  static PostgresServer& shared();

  int port() const { return port_; }
  ServerAddress address(int port = 0) const;  // through another port where one is given
  ServerLogin login() const { return {QStringLiteral("shop"), QStringLiteral("geheim;{1}")}; }

  void kill();            // at once, as when the machine fails
  void start();           // again, on the same port
  void cutConnections();  // the server's side of all connections ends
  // Runs SQL by the server's own client, beside all drivers.
  QString psql(const QString& sql) const;

 private:
  void prepare(QProcess& process) const;
  QString run(const QString& program, const QStringList& arguments) const;
  bool answers() const;

  QTemporaryDir folder_;
  int port_ = 0;
  QProcess server_;  // ends with the test, however that ends
};

}  // namespace goodsbook::test
