#pragma once

#include <QDateTime>
#include <QStringList>
#include <functional>
#include <memory>

#include "host/data/database.h"
#include "host/data/odbc/server_address.h"
#include "host/export.h"

namespace goodsbook {

struct ServerOptions {
  int connectSeconds = 15;                // how long a connection may take to come about
  int statementSeconds = 120;             // how long the server may work on one batch; 0: no limit
  int lockMilliseconds = 10'000;          // how long a statement waits for rows that somebody else holds
  std::function<QDateTime()> clock = {};  // GETDATE() of batches; the server's clock when empty
};

// A database on a server of the SQL Server class, through the system's ODBC manager. The schema is not looked
// at: checkServer() does that. A connection that got lost is told once, as EDatabaseError number 10054; what
// is done next connects again. EDatabaseError with a text that says what is wrong where no connection comes
// about.
GOODSBOOKHOST_EXPORT std::unique_ptr<Database> openServerDatabase(const ServerAddress& address,
                                                                  const ServerLogin& login,
                                                                  ServerOptions options = {});

enum class ServerProblem {
  None,
  DriverMissing,
  HostUnknown,
  PortClosed,
  LoginRefused,
  DatabaseMissing,
  SchemaMissing,
  SchemaOlder,
  SchemaNewer,
  CollationUnfit,  // it tells capitals from small letters
  Other
};

struct ServerCheck {
  ServerProblem problem = ServerProblem::None;
  QString text;         // what the user reads, also where all is well
  QString advice = {};  // what an administrator should change all the same; mostly empty
};

// Connects and looks whether the program can work there. It raises nothing.
GOODSBOOKHOST_EXPORT ServerCheck checkServer(const ServerAddress& address, const ServerLogin& login,
                                             ServerOptions options = {});

// The same for a database that is open already: its schema only.
GOODSBOOKHOST_EXPORT ServerCheck checkSchema(Database& database);

// The drivers that the system's ODBC manager knows by name.
GOODSBOOKHOST_EXPORT QStringList installedDrivers();

}  // namespace goodsbook
