#include "host/data/odbc/connect_problem.h"

#include <QCoreApplication>
#include <QHostInfo>
#include <QTcpSocket>
#include <algorithm>

#include "host/data/odbc/connection_lost.h"
#include "host/data/odbc/connection_text.h"
#include "host/data/odbc/odbc_connection.h"
#include "host/data/odbc/odbc_messages.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int usualPort = 1433;
constexpr int knockMilliseconds = 3'000;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(ServerProblem)
};

bool any(const std::vector<OdbcMessage>& messages, const auto& test) {
  return std::any_of(messages.begin(), messages.end(), test);
}

bool hasState(const std::vector<OdbcMessage>& messages, QLatin1StringView state) {
  return any(messages, [&](const OdbcMessage& message) { return message.state == state; });
}

bool hasNumber(const std::vector<OdbcMessage>& messages, int number) {
  return any(messages, [&](const OdbcMessage& message) { return message.number == number; });
}

// Drivers that put everything under one state say it in words.
bool says(const std::vector<OdbcMessage>& messages, QLatin1StringView words) {
  return any(messages,
             [&](const OdbcMessage& message) { return message.text.contains(words, Qt::CaseInsensitive); });
}

bool driverMissing(const std::vector<OdbcMessage>& messages) {
  return hasState(messages, "IM002"_L1) || hasState(messages, "IM003"_L1) ||
         (hasState(messages, "01000"_L1) && says(messages, "Can't open lib"_L1));
}

bool databaseMissing(const std::vector<OdbcMessage>& messages) {
  return hasNumber(messages, 4060) ||
         (says(messages, "database \""_L1) && says(messages, "does not exist"_L1));
}

bool loginRefused(const std::vector<OdbcMessage>& messages) {
  return hasNumber(messages, 18456) || hasState(messages, "28000"_L1) ||
         says(messages, "authentication failed"_L1) || says(messages, "no password supplied"_L1);
}

bool timedOut(const std::vector<OdbcMessage>& messages) {
  return hasState(messages, "HYT00"_L1) || hasState(messages, "HYT01"_L1) ||
         says(messages, "timeout expired"_L1);
}

// What the network says about the server itself.
ServerProblem knock(const ServerAddress& address) {
  const QString host = address.server().section(u'\\', 0, 0).section(u',', 0, 0);
  if (host.isEmpty()) return ServerProblem::Other;
  const QHostInfo found = QHostInfo::fromName(host);
  if (found.error() != QHostInfo::NoError || found.addresses().isEmpty()) return ServerProblem::HostUnknown;
  const int given = address.port();
  QTcpSocket socket;
  socket.connectToHost(found.addresses().constFirst(), static_cast<quint16>(given > 0 ? given : usualPort));
  return socket.waitForConnected(knockMilliseconds) ? ServerProblem::Other : ServerProblem::PortClosed;
}

ServerProblem judge(const std::vector<OdbcMessage>& messages, const ServerAddress& address) {
  if (driverMissing(messages)) return ServerProblem::DriverMissing;
  // A server that lets nobody into a database says both, the reason first or last.
  if (databaseMissing(messages)) return ServerProblem::DatabaseMissing;
  if (loginRefused(messages)) return ServerProblem::LoginRefused;
  const ServerProblem known = knock(address);
  return known == ServerProblem::Other && timedOut(messages) ? ServerProblem::Silent : known;
}

QString plainText(ServerProblem problem, const ServerTarget& target, const QString& driverText) {
  const ServerAddress& address = target.address;
  const int port = address.port() > 0 ? address.port() : usualPort;
  switch (problem) {
    case ServerProblem::DriverMissing:
      return Texts::tr("没有安装 ODBC 驱动程序“%1”").arg(address.driver());
    case ServerProblem::HostUnknown:
      return Texts::tr("找不到服务器“%1”，请检查名称和网络").arg(address.server());
    case ServerProblem::PortClosed:
      return Texts::tr("服务器“%1”的端口 %2 连不上：服务没有启动，端口不对，或被防火墙挡住")
          .arg(address.server())
          .arg(port);
    case ServerProblem::LoginRefused:
      if (address.usesSystemAccount()) {
        return Texts::tr("服务器不让本机的系统帐户登录：%1").arg(driverText);
      }
      return target.login.user.isEmpty()
                 ? Texts::tr("服务器拒绝登录：没有给出服务器的用户和密码")
                 : Texts::tr("服务器拒绝用户“%1”登录：用户或密码不对").arg(target.login.user);
    case ServerProblem::DatabaseMissing:
      return Texts::tr("服务器上没有数据库“%1”，或用户“%2”不能使用它")
          .arg(address.database(), target.login.user);
    case ServerProblem::Silent:
      return Texts::tr("服务器“%1”在 %3 秒内没有回答（端口 %2）：服务停住了，或那里不是数据库服务器")
          .arg(address.server())
          .arg(port)
          .arg(target.options.connectSeconds);
    default:
      if (!address.server().isEmpty()) {
        return Texts::
            tr("服务器“%1”的端口 %2 有程序应答，但没有接受连接（服务正在启动，那里不是数据库服务器，或要求别的连接选项）：%3")
                .arg(address.server())
                .arg(port)
                .arg(driverText);
      }
      return Texts::tr("不能连接服务器“%1”：%2").arg(address.displayName(), driverText);
  }
}

}  // namespace

EConnectFailed connectError(const std::vector<OdbcMessage>& messages, const ServerTarget& target) {
  const ServerProblem problem = judge(messages, target.address);
  const OdbcMessage first = firstError(messages);
  return {problem, first.number, withoutSecrets(plainText(problem, target, first.text), target.login)};
}

EConnectFailed silenceError(const ServerTarget& target) {
  return {ServerProblem::Silent, timedOutNumber, plainText(ServerProblem::Silent, target, {})};
}

}  // namespace goodsbook
