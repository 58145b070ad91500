#pragma once

#include <QDateTime>
#include <QStringList>
#include <functional>
#include <memory>

#include "host/data/database.h"
#include "host/data/odbc/server_address.h"
#include "host/data/server_attendant.h"
#include "host/export.h"

namespace goodsbook {

// All limits on waiting for a server. The driver is told of each, too, but not relied on: what it has not
// answered a little later goes on without anybody, and its connection is given up.
struct ServerOptions {
  // A server in the same shop answers within a second; a far one after a nap, within a few.
  int connectSeconds = 10;
  // One batch or block of rows. Long reports and copies are work, not silence; 0: no limit.
  int statementSeconds = 120;
  // One step of a save that somebody sits before (where `attend` is set): the longest is the wait for locks,
  // and whoever has looked at a busy window for half a minute takes it for dead.
  int saveSeconds = 30;
  // How long a statement waits for rows that somebody else holds; below all limits on statements, so that the
  // server tells of it.
  int lockMilliseconds = 10'000;
  std::function<QDateTime()> clock = {};  // GETDATE() of batches; the server's clock when empty
  AttendantMaker attend = {};             // stays with whoever waits; nobody does when empty
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
  Silent,  // the port is open, but nobody answers
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

// Connects and looks whether the program can work there. It raises nothing but EAbort, when it was given up.
GOODSBOOKHOST_EXPORT ServerCheck checkServer(const ServerAddress& address, const ServerLogin& login,
                                             ServerOptions options = {});

// The same for a database that is open already: its schema only.
GOODSBOOKHOST_EXPORT ServerCheck checkSchema(Database& database);

// The drivers that the system's ODBC manager knows by name.
GOODSBOOKHOST_EXPORT QStringList installedDrivers();

}  // namespace goodsbook
