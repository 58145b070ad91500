#include "app/commands/barcode_library_command.h"

#include <QCoreApplication>
#include <stdexcept>

#include "app/commands/console.h"
#include "app/start.h"
#include "host/barcodes/barcode_library.h"
#include "host/barcodes/library_builder.h"
#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(BarcodeLibraryCommand)
};

int build(const QString& table, const QString& library) {
  const LibraryBuildEvents events{
      .progress = [](qint64 lines,
                     int percent) { printError(Texts::tr("已读 %1 行（%2%）").arg(lines).arg(percent)); },
      .wrongLine = [](qint64 line,
                      const QString& fault) { printError(Texts::tr("第 %1 行：%2").arg(line).arg(fault)); }};
  const LibraryBuildResult result = buildBarcodeLibrary(table, library, events);
  printLine(
      Texts::tr("条码库 %1：写入 %2 条，错误 %3 行").arg(library).arg(result.written).arg(result.wrong));
  return commandDone;
}

int look(const QString& barcode, const QString& file) {
  BarcodeLibrary library(file);
  library.open();
  const std::vector<KnownBarcode> found = library.find(barcode);
  for (const KnownBarcode& known : found) {
    printLine(
        QStringList{known.barcode, known.name, known.specification, known.unit, known.origin}.join(u'\t'));
  }
  if (found.empty()) printError(Texts::tr("条码库里没有 %1").arg(barcode));
  return found.empty() ? commandFailed : commandDone;
}

}  // namespace

int runBarcodeLibraryCommand(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      Texts::tr("离线条码库：build 由 CSV 文件（条码,品名,规格,单位,产地）建立，look 查一个条码"));
  const QCommandLineOption programDir(u"program-dir"_s, Texts::tr("条码库所在的程序目录"), u"DIR"_s,
                                      defaultProgramDir());
  parser.addOption(programDir);
  parser.addPositionalArgument(u"build|look"_s, Texts::tr("建立或查找"));
  parser.addPositionalArgument(u"FILE.csv|BARCODE"_s, Texts::tr("CSV 文件或条码"));
  if (const auto status = readArguments(parser, arguments)) return *status;
  const QStringList words = parser.positionalArguments();
  const bool builds = !words.isEmpty() && words.front() == "build"_L1;
  if (words.size() != 2 || (!builds && words.front() != "look"_L1)) {
    printError(
        Texts::tr("用法：goodsbook barcode-library build FILE.csv\n"
                  "      goodsbook barcode-library look BARCODE"));
    return unusableArguments;
  }
  const QString library = BarcodeLibrary::fileIn(parser.value(programDir));
  try {
    return builds ? build(words.at(1), library) : look(words.at(1), library);
  } catch (const EDatabaseError& error) {
    printError(error.text);
  } catch (const std::runtime_error& error) {
    printError(QString::fromUtf8(error.what()));
  }
  return commandFailed;
}

}  // namespace goodsbook
