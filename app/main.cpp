#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "app/appearance.h"
#include "app/commands/barcode_library_command.h"
#include "app/commands/console.h"
#include "app/commands/copy_command.h"
#include "app/commands/drive_command.h"
#include "app/commands/init_command.h"
#include "app/commands/program_command.h"
#include "app/commands/schema_command.h"
#include "app/commands/sql_command.h"
#include "app/commands/tour_command.h"
#include "host/data/odbc/loose_work.h"

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
      "  --server ADDRESS     数据库服务器：Driver=…;Server=…;Port=…;Database=…\n"
      "                       用户和密码：环境变量 GOODSBOOK_SERVER_USER、GOODSBOOK_SERVER_PASSWORD，没有就询问\n"
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
      "  copy      把全部数据复制到另一个空数据库(文件或服务器)\n"
      "  init      新建一个数据库，可带样例数据\n"
      "  barcode-library  由 CSV 文件建立离线条码库，或查一个条码\n");
}

using Command = int (*)(const QStringList&);

Command consoleCommand(const QByteArray& name) {
  if (name == "sql") return goodsbook::runSqlCommand;
  if (name == "copy") return goodsbook::runCopyCommand;
  if (name == "schema") return goodsbook::runSchemaCommand;
  if (name == "barcode-library") return goodsbook::runBarcodeLibraryCommand;
  return nullptr;
}

Command windowCommand(const QByteArray& name) {
  if (name == "init") return goodsbook::runInitCommand;  // it draws pictures
  if (name == "drive") return goodsbook::runDrive;
  if (name == "tour") return goodsbook::runTour;
  if (name.isEmpty() || name.startsWith('-')) return goodsbook::runProgram;
  return nullptr;
}

// A driver that a frozen server keeps is not waited for, and nothing is unloaded under its feet.
int left(int status) {
  constexpr std::chrono::milliseconds patience{500};
  if (goodsbook::looseWorkEnds(patience)) return status;
  std::fflush(nullptr);
  std::_Exit(status);
}

// The arguments behind the command's name.
QStringList argumentsFrom(int first) {
  return QCoreApplication::arguments().mid(first);
}

}  // namespace

int main(int argc, char** argv) {
  using namespace goodsbook;
  QCoreApplication::setApplicationName(u"goodsbook"_s);
  QCoreApplication::setApplicationVersion(QStringLiteral(GOODSBOOK_VERSION));
  const QByteArray name = argc > 1 ? argv[1] : "";
  if (name == "--version") {
    printLine(u"goodsbook "_s + QCoreApplication::applicationVersion());
    return commandDone;
  }
  if (name == "--help" || name == "-h") {
    printLine(usage());
    return commandDone;
  }
  if (const Command command = consoleCommand(name)) {
    const QCoreApplication application(argc, argv);
    useChineseTexts();
    return left(command(argumentsFrom(2)));
  }
  const Command command = windowCommand(name);
  if (!command) {
    printError(Texts::tr("goodsbook：没有命令 %1\n").arg(QString::fromLocal8Bit(name)));
    printError(usage());
    return unusableArguments;
  }
  if (name == "init" || name == "tour") qputenv("QT_QPA_PLATFORM", "offscreen");
  choosePlatform();
  const QApplication application(argc, argv);
  setUpAppearance();
  const bool named = !name.isEmpty() && !name.startsWith('-');
  return left(command(argumentsFrom(named ? 2 : 1)));
}
