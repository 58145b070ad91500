#include "tests/odbc/postgres_server.h"

#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <csignal>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace goodsbook::test {
namespace {

const QString database = u"shop"_s;
constexpr int patience = 60'000;  // milliseconds

// The folder of the newest server that is installed.
QString programs() {
  const QDir all(u"/usr/lib/postgresql"_s);
  const QStringList versions = all.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
  if (versions.isEmpty()) throw std::runtime_error("PostgreSQL is not installed (package postgresql)");
  return all.filePath(versions.constFirst() + u"/bin"_s);
}

// The server refuses to run as root.
const passwd* unprivileged() {
  if (geteuid() != 0) return nullptr;
  const passwd* user = getpwnam("postgres");
  return user != nullptr ? user : getpwnam("nobody");
}

int freePort() {
  QTcpServer probe;
  if (!probe.listen(QHostAddress::LocalHost)) throw std::runtime_error("no free port");
  return probe.serverPort();
}

}  // namespace

PostgresServer& PostgresServer::shared() {
  static PostgresServer server;
  return server;
}

PostgresServer::PostgresServer() : folder_(QDir::tempPath() + u"/goodsbook_pg_XXXXXX"_s), port_(freePort()) {
  const QString secret = folder_.filePath(u"password"_s);
  QFile file(secret);
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("cannot write into the temporary folder");
  file.write(login().password.toUtf8());
  file.close();
  if (const passwd* user = unprivileged()) {
    for (const QString& path : {folder_.path(), secret}) {
      if (chown(path.toLocal8Bit().constData(), user->pw_uid, user->pw_gid) != 0) {
        throw std::runtime_error("cannot give the temporary folder away");
      }
    }
  }
  run(u"initdb"_s, {u"-D"_s, folder_.filePath(u"data"_s), u"-U"_s, login().user, u"--pwfile"_s, secret,
                    u"-A"_s, u"scram-sha-256"_s, u"-E"_s, u"UTF8"_s, u"--locale=C.UTF-8"_s, u"--no-sync"_s});
  start();
  psql(u"create database "_s + database);
}

PostgresServer::~PostgresServer() {
  kill();
}

ServerAddress PostgresServer::address(int port) const {
  return ServerAddress::parse(
      u"Driver=PostgreSQL Unicode;Server=127.0.0.1;Port=%1;Database=%2;SSLmode=disable;BoolsAsChar=0;"
      "ByteaAsLongVarBinary=1;MaxVarcharSize=4000"_s.arg(port > 0 ? port : port_)
          .arg(database));
}

void PostgresServer::start() {
  server_.setStandardErrorFile(folder_.filePath(u"log"_s));
  prepare(server_);
  server_.start(
      programs() + u"/postgres"_s,
      {u"-D"_s, folder_.filePath(u"data"_s), u"-p"_s, QString::number(port_), u"-c"_s,
       u"listen_addresses=127.0.0.1"_s, u"-c"_s, u"unix_socket_directories="_s + folder_.path(), u"-c"_s,
       u"fsync=off"_s, u"-c"_s, u"full_page_writes=off"_s, u"-c"_s, u"deadlock_timeout=50ms"_s});
  while (!answers()) {
    if (server_.waitForFinished(0) || server_.state() == QProcess::NotRunning) {
      throw std::runtime_error("the PostgreSQL server ended at once");
    }
  }
}

void PostgresServer::kill() {
  if (server_.state() == QProcess::NotRunning) return;
  ::kill(static_cast<pid_t>(server_.processId()), SIGQUIT);  // it ends at once, as when the machine fails
  server_.waitForFinished(patience);
}

bool PostgresServer::answers() const {
  QProcess probe;
  prepare(probe);
  probe.start(programs() + u"/pg_isready"_s,
              {u"-q"_s, u"-h"_s, u"127.0.0.1"_s, u"-p"_s, QString::number(port_)});
  return probe.waitForFinished(patience) && probe.exitCode() == 0;
}

void PostgresServer::cutConnections() {
  psql(
      u"select pg_terminate_backend(pid) from pg_stat_activity where pid<>pg_backend_pid() and usename='shop'"_s);
}

QString PostgresServer::psql(const QString& sql) const {
  const QString into = sql.startsWith("create database"_L1) ? u"postgres"_s : database;
  return run(u"psql"_s, {u"-h"_s, u"127.0.0.1"_s, u"-p"_s, QString::number(port_), u"-U"_s, login().user,
                         u"-d"_s, into, u"-At"_s, u"-v"_s, u"ON_ERROR_STOP=1"_s, u"-c"_s, sql});
}

void PostgresServer::prepare(QProcess& process) const {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"PGPASSWORD"_s, login().password);
  environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
  process.setProcessEnvironment(environment);
  process.setWorkingDirectory(folder_.path());
  const passwd* user = unprivileged();
  process.setChildProcessModifier([user, uid = user ? user->pw_uid : 0, gid = user ? user->pw_gid : 0] {
    if (user && (setgroups(0, nullptr) != 0 || setgid(gid) != 0 || setuid(uid) != 0)) _exit(126);
    prctl(PR_SET_PDEATHSIG, SIGQUIT);
  });
}

QString PostgresServer::run(const QString& program, const QStringList& arguments) const {
  QProcess process;
  prepare(process);
  process.start(programs() + u'/' + program, arguments);
  if (!process.waitForFinished(patience) || process.exitCode() != 0) {
    throw std::runtime_error(program.toStdString() + ": " + process.readAllStandardError().toStdString());
  }
  return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

}  // namespace goodsbook::test
