#include <QApplication>
#include <cstdio>

#include "app/appearance.h"
#include "app/commands/drive_command.h"
#include "app/commands/program_command.h"

using namespace Qt::StringLiterals;

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(Main)
};

QString usage() {
  return Texts::tr(
      "用法：goodsbook [选项]\n"
      "      goodsbook 命令 [选项]      （goodsbook 命令 --help 说明各命令的选项）\n"
      "\n"
      "  --database FILE      数据库文件；没有就新建\n"
      "  --program-dir DIR    程序目录：标签、设置、条码库等文件放在这里\n"
      "  --user ID            登录用户\n"
      "  --version            版本\n"
      "  --help               本说明\n"
      "\n"
      "命令：\n"
      "  drive     由标准输入的命令操作程序，每行一个 JSON 对象\n"
      "  tour      打开每个窗口，各存一张图片\n"
      "  sql       执行一批 T-SQL\n"
      "  schema    显示建表语句\n"
      "  init      新建一个数据库，可带样例数据\n");
}

void print(const QString& text) {
  std::fputs(text.toUtf8().constData(), stdout);
}

}  // namespace

int main(int argc, char** argv) {
  using namespace goodsbook;
  QCoreApplication::setApplicationName(u"goodsbook"_s);
  QCoreApplication::setApplicationVersion(QStringLiteral(GOODSBOOK_VERSION));
  const QByteArray command = argc > 1 ? argv[1] : "";
  if (command == "--version") {
    print(u"goodsbook %1\n"_s.arg(QCoreApplication::applicationVersion()));
    return 0;
  }
  if (command == "--help" || command == "-h") {
    print(usage());
    return 0;
  }
  choosePlatform();
  QApplication application(argc, argv);
  setUpAppearance();
  QStringList arguments = QCoreApplication::arguments();
  if (command == "drive") {
    arguments.removeAt(1);
    return runDrive(arguments);
  }
  if (!command.isEmpty() && !command.startsWith('-')) {
    std::fputs(
        Texts::tr("goodsbook：没有命令 %1\n\n").arg(QString::fromLocal8Bit(command)).toUtf8().constData(),
        stderr);
    std::fputs(usage().toUtf8().constData(), stderr);
    return 2;
  }
  return runProgram(arguments);
}
