#include <QApplication>
#include <QDir>
#include <QFile>
#include <cstdio>

#include "app/commands/init_command.h"
#include "benchmarks/suites.h"

using namespace Qt::StringLiterals;

// Prints a line a figure: name, ours, floor, ratio, target, "ok" or "over", separated by tabs. The sample
// databases are made on the first run and kept beside the program. usage: goodsbook_bench [products | import]
// 1,000,000 unless told; "import" alone takes the figures of the import; exit status 0 also when a target is
// missed
namespace {

std::string sampleFile(const QString& folder, int products) {
  const QString file = folder + u"/sample-%1.db"_s.arg(products);
  if (!QFile::exists(file)) {
    std::fprintf(stderr, "making a sample of %d products\n", products);
    const int status =
        goodsbook::runInitCommand({u"--database"_s, file, u"--sample"_s, QString::number(products)});
    if (status != 0) std::exit(status);
  }
  return file.toStdString();
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const bool importAlone = argc > 1 && QString::fromLocal8Bit(argv[1]) == "import"_L1;
  const int products = argc > 1 && !importAlone ? QString::fromLocal8Bit(argv[1]).toInt() : 1'000'000;
  if (products <= 0) {
    std::fprintf(stderr, "usage: goodsbook_bench [products]\n");
    return 2;
  }
  const QString folder = QCoreApplication::applicationDirPath() + u"/../samples"_s;
  QDir().mkpath(folder);

  std::printf("work\tours\tfloor\tratio\ttarget\t\n");
  int missed = goodsbook::benchmarks::importFigures(folder.toStdString());
  if (importAlone) return 0;
  missed += goodsbook::benchmarks::listFigures(sampleFile(folder, products));
  missed += goodsbook::benchmarks::gridFigures(sampleFile(folder, products));
  missed += goodsbook::benchmarks::saveFigures(sampleFile(folder, std::min(products, 10'000)));
  missed += goodsbook::benchmarks::labelFigures();
  missed += goodsbook::benchmarks::serverFigures(std::min(products, 100'000));
  if (missed > 0) std::fprintf(stderr, "%d figures are over their target\n", missed);
  return 0;
}
