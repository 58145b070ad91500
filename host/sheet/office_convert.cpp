// Other formats: LibreOffice makes an .xlsx of them, without a window, in a folder that goes with the book.

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "host/sheet/sheet_errors.h"
#include "host/sheet/sheet_formats.h"

using namespace Qt::StringLiterals;

namespace goodsbook::sheet {
namespace {

struct OfficeTexts {
  Q_DECLARE_TR_FUNCTIONS(SheetReader)
};

constexpr int longestMs = 180'000;
constexpr int betweenPausesMs = 20;

QString officeProgram() {
  for (const QString& name : {u"soffice"_s, u"libreoffice"_s}) {
    if (QString found = QStandardPaths::findExecutable(name); !found.isEmpty()) return found;
  }
  return QStandardPaths::findExecutable(u"soffice"_s,
                                        {qEnvironmentVariable("ProgramFiles") + u"/LibreOffice/program"_s});
}

// Ends the process with the object, also when the user gives up.
class Conversion {
 public:
  ~Conversion() {
    if (process.state() == QProcess::NotRunning) return;
    process.kill();
    process.waitForFinished();
  }
  QProcess process;
};

class ConvertedBook : public SheetBook {
 public:
  ConvertedBook(const QString& path, const SheetOptions& options) {
    convert(path, options);
    const QString made = folder_.filePath(QFileInfo(path).completeBaseName() + u".xlsx"_s);
    if (!QFileInfo::exists(made)) failNoSheet(path);
    book_ = openXlsx(made, options);
  }

  QStringList sheets() const override { return book_->sheets(); }
  std::unique_ptr<SheetRows> rows(int sheet) const override { return book_->rows(sheet); }

 private:
  void convert(const QString& path, const SheetOptions& options) {
    const QString program = officeProgram();
    if (program.isEmpty()) {
      throw SheetError(
          OfficeTexts::tr(
              "读取文件 %1 的格式需要安装 LibreOffice。请安装，或用表格程序另存为 .xlsx 后再导入。")
              .arg(QDir::toNativeSeparators(path)));
    }
    Conversion conversion;
    const QString profile = u"-env:UserInstallation=file://"_s + folder_.filePath(u"profile"_s);
    conversion.process.start(
        program, {profile, u"--headless"_s, u"--norestore"_s, u"--convert-to"_s, u"xlsx"_s, u"--outdir"_s,
                  folder_.path(), QFileInfo(path).absoluteFilePath()});
    if (!conversion.process.waitForStarted()) failUnreadable(path, conversion.process.errorString());
    QElapsedTimer time;
    time.start();
    while (!conversion.process.waitForFinished(betweenPausesMs) &&
           conversion.process.state() != QProcess::NotRunning) {
      if (time.elapsed() > longestMs) failDamaged(path);
      options.pause();
    }
  }

  QTemporaryDir folder_;
  std::unique_ptr<SheetBook> book_;
};

}  // namespace

std::unique_ptr<SheetBook> openThroughOffice(const QString& path, const SheetOptions& options) {
  return std::make_unique<ConvertedBook>(path, options);
}

}  // namespace goodsbook::sheet
