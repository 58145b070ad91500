#include "app/commands/database_choice.h"

#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>

#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(DatabaseChoice)
};

// A line typed at the terminal, which may be another than the standard input.
class Terminal {
 public:
  Terminal() : file_(u"/dev/tty"_s) { file_.open(QIODevice::ReadWrite | QIODevice::Unbuffered); }
  bool isThere() const { return file_.isOpen() && isatty(file_.handle()) != 0; }

  QString ask(const QString& question, bool shown) {
    file_.write(question.toUtf8());
    termios before{};
    tcgetattr(file_.handle(), &before);
    termios silent = before;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    if (!shown) tcsetattr(file_.handle(), TCSAFLUSH, &silent);
    const QByteArray line = file_.readLine();
    if (!shown) {
      tcsetattr(file_.handle(), TCSAFLUSH, &before);
      file_.write("\n");
    }
    return QString::fromUtf8(line).remove(u'\n');
  }

 private:
  QFile file_;
};

}  // namespace

DatabaseChoice::DatabaseChoice(QCommandLineParser& parser, const QString& fileHelp)
    : parser_(parser),
      file_(u"database"_s, fileHelp, u"FILE"_s),
      server_(u"server"_s,
              Texts::tr("数据库服务器：Driver=…;Server=…;Port=…;Database=…；用户和密码在环境变量 "
                        "GOODSBOOK_SERVER_USER、GOODSBOOK_SERVER_PASSWORD 中，没有就询问"),
              u"ADDRESS"_s) {
  parser_.addOptions({file_, server_});
}

QString DatabaseChoice::chosen() const {
  if (!parser_.isSet(server_)) return parser_.value(file_);
  if (parser_.isSet(file_))
    throw EDatabaseError(50000, 16, 1, 1, Texts::tr("--database 和 --server 只能给一个"));
  return ServerAddress::parse(parser_.value(server_)).text();
}

ServerLogin serverLoginForCommand(const ServerAddress& address) {
  if (address.usesSystemAccount()) return {};
  ServerLogin login = serverLoginFromEnvironment();
  if (!login.user.isEmpty() && qEnvironmentVariableIsSet("GOODSBOOK_SERVER_PASSWORD")) return login;
  Terminal terminal;
  if (!terminal.isThere()) return login;
  if (login.user.isEmpty()) {
    login.user = terminal.ask(Texts::tr("%1 的用户：").arg(address.displayName()), true);
  }
  login.password = terminal.ask(Texts::tr("密码："), false);
  return login;
}

ServerLogin loginForChosen(const QString& chosen) {
  if (!ServerAddress::isAddress(chosen)) return {};
  return serverLoginForCommand(ServerAddress::parse(chosen));
}

std::unique_ptr<Database> openChosen(const QString& chosen, bool create) {
  if (!ServerAddress::isAddress(chosen)) return openEmbeddedDatabase(chosen, {.create = create});
  return openServerDatabase(ServerAddress::parse(chosen), loginForChosen(chosen));
}

}  // namespace goodsbook
