#include <zip.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <QXmlStreamReader>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "app/commands/init_command.h"
#include "app/driver/drive_desktop.h"
#include "app/master_data.h"
#include "benchmarks/figure.h"
#include "benchmarks/plain_sqlite.h"
#include "benchmarks/suites.h"
#include "host/data/sql_sets.h"
#include "host/session.h"
#include "host/sheet/sheet_reader.h"

using namespace Qt::StringLiterals;

namespace goodsbook::benchmarks {
namespace {

constexpr double longestGapMs = 100;

void makeShop(const QString& file) {
  const auto database = openEmbeddedDatabase(file);
  runSql(
      *database,
      u"if not exists (select 1 from D1004 where CLASS_ID='01') insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('01','饮料','Z');if not exists (select 1 from D1003 where dw_id='01') insert into D1003 (dw_id,dw_name) values ('01','瓶')"_s,
      Database::Permission::Screens);
}

// The longest time in which the event loop did not turn.
class Turns {
 public:
  Turns() {
    since_.start();
    QObject::connect(&timer_, &QTimer::timeout, &timer_,
                     [this] { longest_ = std::max(longest_, since_.restart()); });
    timer_.start(0);
  }
  double longestMs() const { return static_cast<double>(longest_); }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  qint64 longest_ = 0;
};

struct Run {
  double ms = 0, gap = 0;
};

enum class Before { Keep, Clear };

// Opens the product list and its import, reads the file and makes its products, as a user would.
Run importThroughDialog(const QString& database, const QString& folder, const QString& file,
                        Before before = Before::Keep) {
  resetGlobals();
  setGlobal(u"G_UserId"_s, u"ADMIN"_s);
  setGlobal(u"GPARAM2"_s, u"8"_s);
  Session session(openEmbeddedDatabase(database), std::make_unique<DriveDesktop>(), folder);
  MasterData plugIn;
  if (!plugIn.load()) {
    std::fprintf(stderr, "%s\n", qPrintable(plugIn.error()));
    std::exit(1);
  }
  QWidget owner;
  Trecord record;
  record.setModule(101);
  for (const auto right : {Trecord::addRight, Trecord::importRight}) record.setRight(right, true);
  plugIn.open(record, &owner);
  QApplication::processEvents();
  QAction* imports = nullptr;
  for (QWidget* window : QApplication::allWidgets()) {
    if (auto* found = window->findChild<QAction*>(u"Act_imp"_s)) imports = found;
  }
  Run run;
  QTimer::singleShot(0, &owner, [&] {
    QWidget* dialog = QApplication::activeModalWidget();
    const auto edit = [&](const QString& name) { return dialog->findChild<QLineEdit*>(name); };
    const auto press = [&](const QString& name) { dialog->findChild<QAbstractButton*>(name)->click(); };
    edit(u"Edt_path"_s)->setText(file);
    edit(u"CLASS_ID"_s)->setText(u"01"_s);
    edit(u"dw_id"_s)->setText(u"01"_s);
    dialog->findChild<QCheckBox*>(u"cb2"_s)->setChecked(before == Before::Clear);
    const Turns turns;
    run.ms = milliseconds([&] {
      press(u"btn_ref"_s);
      press(u"btn_ok"_s);
    });
    run.gap = turns.longestMs();
    std::fprintf(stderr, "%s\n", qPrintable(dialog->findChild<QLabel*>(u"lab_result"_s)->text()));
    press(u"btn_Cancel"_s);
  });
  imports->trigger();
  return run;
}

void readSheet(const QString& file) {
  const auto book = openSheets(file, {.columns = 5});
  const auto rows = book->rows(0);
  SheetRow row;
  while (rows->next(row)) {
  }
}

// Unpacks the markup of the sheet and of its texts and parses it.
void parseSheet(const QString& file) {
  zip_t* archive = zip_open(QFile::encodeName(file).constData(), ZIP_RDONLY, nullptr);
  for (const char* name : {"xl/sharedStrings.xml", "xl/worksheets/sheet1.xml"}) {
    zip_stat_t entry{};
    if (zip_stat(archive, name, 0, &entry) != 0) std::exit(1);
    QByteArray markup(static_cast<qsizetype>(entry.size), Qt::Uninitialized);
    zip_file_t* packed = zip_fopen(archive, name, 0);
    if (zip_fread(packed, markup.data(), entry.size) != static_cast<zip_int64_t>(entry.size)) std::exit(1);
    zip_fclose(packed);
    QXmlStreamReader xml(markup);
    while (!xml.atEnd()) xml.readNext();
  }
  zip_discard(archive);
}

// The same look-ups and inserts in SQLite's words, prepared once, a transaction a row; on the disk at the
// end, as with the dialog.
double importPlainly(const QString& database, int rows) {
  PlainSqlite plain(database.toStdString());
  sqlite3_stmt* known = plain.prepare("SELECT TM FROM D1801DW WHERE TM=?1");
  sqlite3_stmt* counted = plain.prepare(
      "UPDATE SYS_NOID SET LAST_NO=LAST_NO+1 WHERE MODULE='101' AND PREFIX='' AND SERIAL_LENGTH=8");
  sqlite3_stmt* number =
      plain.prepare("SELECT LAST_NO FROM SYS_NOID WHERE MODULE='101' AND PREFIX='' AND SERIAL_LENGTH=8");
  sqlite3_stmt* taken =
      plain.prepare("SELECT WL_ID FROM D1801 WHERE WL_ID>=?1 AND WL_ID<='99999999' LIMIT 500");
  sqlite3_stmt* product = plain.prepare(
      "INSERT INTO D1801 (WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,DJ,MONEY,KC,USER_ID,BDATE,T,NOTE,cd,PYM,DW_ZH,"
      "DW_J_NAME) VALUES (?1,?2,?3,1,1,'01',0,0,0,'ADMIN',4000000000000,1,'','',?4,1,'')");
  sqlite3_stmt* unit = plain.prepare(
      "INSERT INTO D1801DW (T,WL_ID,DW_ID,TM,ABASE,SJ,VIPSJ,PFJ,CGJ) VALUES (1,?1,'01',?2,1,CAST(?3 AS REAL),"
      "CAST(?4 AS REAL),CAST(?3 AS REAL),0)");
  sqlite3_stmt* audit = plain.prepare(
      "INSERT INTO SYS_AUDIT (AUDIT_TIME,USER_ID,MODULE,KEY_VALUE,OPERATION,STATEMENT) VALUES "
      "(4000000000000,'ADMIN','101',?1,'Add',?2)");
  plain.run("INSERT INTO SYS_NOID (MODULE,PREFIX,SERIAL_LENGTH,LAST_NO) VALUES ('101','',8,0)");
  const std::string statement(420, 's');
  return milliseconds([&] {
    plain.run("PRAGMA synchronous = NORMAL");
    for (int row = 0; row < rows; ++row) {
      const std::string code = QString::number(row + 1).rightJustified(8, u'0').toStdString();
      const std::string barcode = std::to_string(6900000000000 + row);
      plain.runPrepared(known, {barcode});
      plain.run("BEGIN IMMEDIATE");
      plain.runPrepared(counted, {});
      plain.runPrepared(number, {});
      plain.runPrepared(taken, {code});
      plain.runPrepared(product,
                        {code, "矿泉水" + std::to_string(row), "500ml", "KQS" + std::to_string(row)});
      plain.runPrepared(unit, {code, barcode, "2.50", "2.25"});
      plain.runPrepared(audit, {code, statement});
      plain.run("COMMIT");
    }
    plain.run("PRAGMA synchronous = FULL");
    plain.run("UPDATE SYS_NOID SET LAST_NO=LAST_NO WHERE MODULE='101'");
  });
}

// Clears many products, with a backup of them before, and imports others.
bool clearingFigure(const std::string& sheets) {
  const QDir samples(QString::fromStdString(sheets));
  const QTemporaryDir folder(samples.filePath(u"XXXXXX"_s));
  const QString database = folder.filePath(u"ours.db"_s);
  if (runInitCommand({u"--database"_s, database, u"--sample"_s, u"100000"_s}) != 0) return false;
  makeShop(database);
  const Run run =
      importThroughDialog(database, folder.path(), samples.filePath(u"goods-10000.xlsx"_s), Before::Clear);
  return print(
      {"clear 100000 products before an import: longest gap of the window", "ms", run.gap, 0, longestGapMs});
}

}  // namespace

int importFigures(const std::string& sheets) {
  int missed = 0;
  if (const QString file = QString::fromStdString(sheets) + u"/goods-50000.xlsx"_s; QFileInfo::exists(file)) {
    const Pair read = sideBySide(
        3, [&] { readSheet(file); }, [&] { parseSheet(file); });
    missed += !print({"read 50000 rows of an .xlsx", "ms", read.ours, read.floor, 2});
  }
  for (const int rows : {10'000, 50'000}) {
    for (const QString& kind : {u"xlsx"_s, u"xls"_s}) {
      const QString file = QString::fromStdString(sheets) + u"/goods-%1.%2"_s.arg(rows).arg(kind);
      if (!QFileInfo::exists(file)) continue;
      const QTemporaryDir folder(QString::fromStdString(sheets) + u"/XXXXXX"_s);
      makeShop(folder.filePath(u"ours.db"_s));
      makeShop(folder.filePath(u"floor.db"_s));
      const double floor = importPlainly(folder.filePath(u"floor.db"_s), rows);
      const Run run = importThroughDialog(folder.filePath(u"ours.db"_s), folder.path(), file);
      const std::string name = "import " + std::to_string(rows) + " rows of an ." + kind.toStdString();
      missed += !print({name, "ms", run.ms, floor, 2});
      missed += !print({name + ": longest gap of the window", "ms", run.gap, 0, longestGapMs});
      if (rows > 10'000) continue;
      const Run again = importThroughDialog(folder.filePath(u"ours.db"_s), folder.path(), file);
      missed += !print({name + ", all known: longest gap", "ms", again.gap, 0, longestGapMs});
    }
  }
  return missed + !clearingFigure(sheets);
}

}  // namespace goodsbook::benchmarks
