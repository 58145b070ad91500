#include "host/print/list_report.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>

#include "host/data/errors.h"
#include "host/print/pdf_text.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

// The text of a PDF, page by page.
QStringList pagesOf(const QString& path) {
  QProcess process;
  process.start(u"pdftotext"_s, {u"-layout"_s, path, u"-"_s});
  EXPECT_TRUE(process.waitForFinished()) << process.errorString().toStdString();
  QStringList pages = QString::fromUtf8(process.readAllStandardOutput()).split(u'\f');
  pages.removeLast();
  return pages;
}

QString withoutBlanks(QString text) {
  return text.remove(u' ');
}

class Report : public testing::Test {
 protected:
  Report() {
    report.company = u"样例商店"_s;
    report.title = u"计量单位资料"_s;
    report.filter = u"名称包含 箱"_s;
    report.date = u"2026-11-20 10:11"_s;
    report.columns = {{u"单位编号"_s, 60}, {u"单位"_s, 120}, {u"数量"_s, 80, Qt::AlignRight}};
    report.hideRepeats = {false, true, false};
  }

  void fill(int count) {
    report.rowCount = count;
    report.cells = [](int row) {
      return QStringList{u"C%1"_s.arg(row), u"箱子%1"_s.arg(row / 50), QString::number(row * 2)};
    };
  }

  QStringList printed() {
    const QString path = folder.filePath(u"list.pdf"_s);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    paintReport(report, printer);
    EXPECT_TRUE(makeTextSearchable(path));
    return pagesOf(path);
  }

  QTemporaryDir folder;
  ListReport report;
};

TEST_F(Report, APageTellsWhoseListItIsAndWhatItShows) {
  fill(2);
  const QStringList pages = printed();
  ASSERT_EQ(pages.size(), 1);
  for (const QString& part : {u"样例商店"_s, u"计量单位资料"_s, u"名称包含 箱"_s, u"2026-11-20 10:11"_s,
                              u"单位编号"_s, u"数量"_s, u"C0"_s, u"C1"_s, u"第 1 页 / 共 1 页"_s}) {
    EXPECT_TRUE(withoutBlanks(pages[0]).contains(withoutBlanks(part))) << part.toStdString() << " in\n"
                                                                       << pages[0].toStdString();
  }
}

TEST_F(Report, EveryRowStandsOnExactlyOnePage) {
  fill(500);
  const QStringList pages = printed();
  ASSERT_GT(pages.size(), 5);
  const QString all = pages.join(u' ').simplified() + u' ';
  for (int row = 0; row < 500; ++row) EXPECT_EQ(all.count(u" C%1 "_s.arg(row)), 1) << row;
  EXPECT_TRUE(withoutBlanks(pages.last()).contains(u"第%1页/共%1页"_s.arg(pages.size())));
  for (const QString& page : pages) EXPECT_TRUE(page.contains(u"单位编号"_s));
}

TEST_F(Report, ARepeatedTextIsLeftOutExceptOnTopOfAPage) {
  fill(200);
  const QStringList pages = printed();
  ASSERT_GT(pages.size(), 2);
  EXPECT_EQ(pages[0].count(u"箱子0"_s), 1);
  EXPECT_EQ(pages[1].count(u"箱子"_s),
            pages[1].contains(u"箱子1"_s) && pages[1].contains(u"箱子0"_s) ? 2 : 1);
}

TEST_F(Report, SumsStandBelowTheLastRow) {
  fill(120);
  report.sums = {u"合计"_s, {}, u"14280"_s};
  const QStringList pages = printed();
  for (const QString& page : pages) EXPECT_EQ(page.contains(u"14280"_s), page == pages.last());
  EXPECT_LT(pages.last().indexOf(u"C119"_s), pages.last().indexOf(u"合计"_s));
}

TEST_F(Report, AListWithoutRowsPrintsItsHeadings) {
  fill(0);
  const QStringList pages = printed();
  ASSERT_EQ(pages.size(), 1);
  EXPECT_TRUE(pages[0].contains(u"单位编号"_s));
}

TEST_F(Report, ProgressCountsTwiceTheRowsAndCanGiveUp) {
  fill(60);
  int last = -1;
  report.onRow = [&](int done) { last = done; };
  printed();
  EXPECT_EQ(last, 119);
  report.onRow = [](int done) {
    if (done == 70) throw EAbort();
  };
  EXPECT_THROW(printed(), EAbort);
}

TEST_F(Report, CharactersThatAreRadicalsTooCanBeFound) {
  fill(1);
  const QString text = u"牛肉面大米白糖长鱼一页"_s;
  report.cells = [text](int) { return QStringList{u"1"_s, text, u"2"_s}; };
  EXPECT_TRUE(printed().first().contains(text));
}

TEST_F(Report, AFileThatCannotBeWrittenIsAnError) {
  fill(1);
  QPrinter printer;
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(folder.filePath(u"missing/list.pdf"_s));
  EXPECT_THROW(paintReport(report, printer), std::runtime_error);
}

}  // namespace
}  // namespace goodsbook
