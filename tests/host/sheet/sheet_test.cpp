#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <csignal>

#include "host/data/errors.h"
#include "host/sheet/sheet_table.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

QStringList cellsOf(const QString& path) {
  QProcess process;
  process.start(u"python3"_s,
                {QStringLiteral(GOODSBOOK_SOURCE_DIR) + u"/tests/host/sheet/sheet_dump.py"_s, path});
  EXPECT_TRUE(process.waitForFinished(60'000)) << process.errorString().toStdString();
  EXPECT_EQ(process.readAllStandardError().toStdString(), "");
  return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

class Sheet : public testing::Test {
 protected:
  Sheet() {
    rows.create({{.name = u"WL_ID"_s, .size = 20},
                 {.name = u"WL_NAME"_s, .size = 80},
                 {.name = u"SJ"_s, .type = FieldType::Float},
                 {.name = u"KC"_s, .type = FieldType::Integer},
                 {.name = u"WL_YS"_s, .type = FieldType::Boolean},
                 {.name = u"EDATE"_s, .type = FieldType::DateTime}});
    table.columns = {
        {0, u"商品编号"_s, 70}, {1, u"商品名称"_s, 140}, {2, u"零售价"_s, 70, u"0.00"_s},
        {3, u"库存"_s, 70},     {4, u"有效"_s, 35},      {5, u"修改日期"_s, 140, u"yyyy-MM-dd"_s}};
  }

  void add(const QString& code, const QString& name, const QVariant& price = {}, const QVariant& stock = {},
           const QVariant& valid = {}, const QVariant& changed = {}) {
    rows.append();
    rows.setValue(u"WL_ID"_s, code);
    rows.setValue(u"WL_NAME"_s, name);
    if (price.isValid()) rows.setValue(u"SJ"_s, price);
    if (stock.isValid()) rows.setValue(u"KC"_s, stock);
    if (valid.isValid()) rows.setValue(u"WL_YS"_s, valid);
    if (changed.isValid()) rows.setValue(u"EDATE"_s, changed);
    rows.post();
  }

  QByteArray csv() const {
    writeCsv(table, path(u"list.csv"_s));
    QFile file(path(u"list.csv"_s));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  QString path(const QString& name) const { return folder.filePath(name); }
  QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

  QTemporaryDir folder;
  RecordSet rows;
  SheetTable table{rows, {}, u"商品基本资料 "_s};
};

TEST_F(Sheet, CellsHaveTheTypesOfTheirFields) {
  add(u"000123"_s, u"可乐"_s, 3.5, -7, true, QDateTime(QDate(2026, 11, 20), QTime(6, 0)));
  writeXlsx(table, path(u"list.xlsx"_s));
  const QStringList cells = cellsOf(path(u"list.xlsx"_s));
  const QStringList expected{
      u"商品基本资料|A2|t|General|-|000123"_s, u"商品基本资料|B2|t|General|-|可乐"_s,
      u"商品基本资料|C2|n|0.00|-|3.5"_s,       u"商品基本资料|D2|n|General|-|-7"_s,
      u"商品基本资料|E2|t|General|-|是"_s,     u"商品基本资料|F2|n|yyyy-mm-dd|-|46346.25"_s};
  EXPECT_EQ(cells.filter(QRegularExpression(u"\\|[A-F]2\\|"_s)).join(u'\n').toStdString(),
            expected.join(u'\n').toStdString());
}

TEST_F(Sheet, HeadingsAreBoldAndStayWhenScrolling) {
  writeXlsx(table, path(u"list.xlsx"_s));
  const QStringList cells = cellsOf(path(u"list.xlsx"_s));
  EXPECT_TRUE(cells.contains(u"商品基本资料|frozen|1"_s));
  EXPECT_TRUE(cells.contains(u"商品基本资料|A1|t|General|b|商品编号"_s));
  EXPECT_TRUE(cells.contains(u"商品基本资料|F1|t|General|b|修改日期"_s));
  EXPECT_TRUE(cells.contains(u"商品基本资料|width|2|21"_s)) << cells.join(u'\n').toStdString();
}

TEST_F(Sheet, NullsAreEmptyCells) {
  add(u"1"_s, u""_s);
  writeXlsx(table, path(u"list.xlsx"_s));
  EXPECT_EQ(cellsOf(path(u"list.xlsx"_s)).filter(QRegularExpression(u"\\|[A-F]2\\|"_s)),
            QStringList{u"商品基本资料|A2|t|General|-|1"_s});
}

TEST_F(Sheet, ADayBeforeTheCalendarOfSheetsIsText) {
  add(u"1"_s, u"x"_s, {}, {}, {}, QDateTime(QDate(1899, 12, 31), QTime(8, 0)));
  writeXlsx(table, path(u"list.xlsx"_s));
  EXPECT_TRUE(cellsOf(path(u"list.xlsx"_s)).contains(u"商品基本资料|F2|t|General|-|1899-12-31 08:00:00"_s));
}

TEST_F(Sheet, RowsThatDoNotFitGoToFurtherSheets) {
  for (int i = 0; i < 7; ++i) add(QString::number(i), u"x"_s);
  table.title = u"[a]/b:c*?"_s;
  writeXlsx(table, path(u"list.xlsx"_s), 3);
  const QStringList codes = cellsOf(path(u"list.xlsx"_s)).filter(QRegularExpression(u"\\|A\\d+\\|"_s));
  const QStringList expected{u"abc|A1|t|General|b|商品编号"_s,
                             u"abc|A2|t|General|-|0"_s,
                             u"abc|A3|t|General|-|1"_s,
                             u"abc|A4|t|General|-|2"_s,
                             u"abc (2)|A1|t|General|b|商品编号"_s,
                             u"abc (2)|A2|t|General|-|3"_s,
                             u"abc (2)|A3|t|General|-|4"_s,
                             u"abc (2)|A4|t|General|-|5"_s,
                             u"abc (3)|A1|t|General|b|商品编号"_s,
                             u"abc (3)|A2|t|General|-|6"_s};
  EXPECT_EQ(codes.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
}

TEST_F(Sheet, ASheetReplacesTheFileThatWasThere) {
  QFile old(path(u"list.xlsx"_s));
  ASSERT_TRUE(old.open(QIODevice::WriteOnly));
  old.write("old");
  old.close();
  writeXlsx(table, path(u"list.xlsx"_s));
  EXPECT_FALSE(cellsOf(path(u"list.xlsx"_s)).isEmpty());
  EXPECT_EQ(files(), QStringList{u"list.xlsx"_s});
}

TEST_F(Sheet, GivingUpLeavesNothing) {
  for (int i = 0; i < 5; ++i) add(QString::number(i), u"x"_s);
  const SheetTable cancelled{rows, table.columns, u"x"_s, [](int row) {
                               if (row == 3) throw EAbort();
                             }};
  EXPECT_THROW(writeXlsx(cancelled, path(u"list.xlsx"_s)), EAbort);
  EXPECT_THROW(writeCsv(cancelled, path(u"list.csv"_s)), EAbort);
  EXPECT_EQ(files(), QStringList());
}

TEST_F(Sheet, AFolderThatIsNotThereIsToldByName) {
  const auto message = [&](void (*write)(const SheetTable&, const QString&), const QString& file) -> QString {
    try {
      write(table, file);
    } catch (const std::runtime_error& error) {
      return QString::fromUtf8(error.what());
    }
    return {};
  };
  const auto xlsx = [](const SheetTable& what, const QString& where) { writeXlsx(what, where); };
  EXPECT_TRUE(message(xlsx, path(u"no/list.xlsx"_s)).contains(u"no/list.xlsx 写不进去"_s));
  EXPECT_TRUE(message(writeCsv, path(u"no/list.csv"_s)).contains(u"no/list.csv 写不进去"_s));
}

// A file that may not grow stands for a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    rlimit small = before_;
    small.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &small);
    handler_ = std::signal(SIGXFSZ, SIG_IGN);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int) = nullptr;
};

TEST_F(Sheet, AFullDiskIsAnErrorAndLeavesNothing) {
  for (int i = 0; i < 2000; ++i) add(QString::number(i), QString::number(i * 7919) + u"名称"_s);
  {
    const FullDisk full(20'000);
    EXPECT_THROW(writeXlsx(table, path(u"list.xlsx"_s)), std::runtime_error);
    EXPECT_THROW(writeCsv(table, path(u"list.csv"_s)), std::runtime_error);
  }
  EXPECT_EQ(files(), QStringList());
}

TEST_F(Sheet, CsvHasAMarkQuotesAndWindowsLineEnds) {
  add(u"000123"_s, u"一\"二\",三"_s, 3.5, 12, true, QDateTime(QDate(2026, 11, 20), QTime(6, 0)));
  add(u"2"_s, u"两\n行"_s, {}, {}, false);
  EXPECT_EQ(csv().toStdString(),
            "\xEF\xBB\xBF"
            "商品编号,商品名称,零售价,库存,有效,修改日期\r\n"
            "000123,\"一\"\"二\"\",三\",3.50,12,是,2026-11-20\r\n"
            "2,\"两\n行\",,,否,\r\n");
}

}  // namespace
}  // namespace goodsbook
