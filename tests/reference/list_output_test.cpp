// What a list gives to paper and to files, from its tool bar on.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

#include "app/driver/screen_test.h"
#include "host/U_glo.h"
#include "host/controls/TDBGridEh.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class ListOutput : public ScreenTest {
 protected:
  void openCurrencies(int count) {
    QString batch;
    for (int i = 0; i < count; ++i) {
      const QString code = QString::number(i).rightJustified(2, u'0');
      const QString note = i % 2 == 0 ? QString() : u"备\"注"_s;
      batch +=
          u"insert into D1001 (hb_id,hb_name,hb_note,hb_bw,hb_hl) values ('%1','币%1','%2',%3,%4);"_s.arg(
              code, note, QString::number(i % 2), QString::number(i * 0.5));
    }
    sql(batch);
    open(125);
    rows(u"DBGridEh"_s);
  }

  QString path(const QString& name) const { return folder() + u'/' + name; }

  void exportTo(const QString& file) {
    done({{u"cmd"_s, u"pickfile"_s}, {u"path"_s, file}});
    act(u"Act_Export"_s);
  }

  QString printed() {
    done({{u"cmd"_s, u"printto"_s}, {u"path"_s, path(u"list.pdf"_s)}});
    act(u"Act_Print"_s);
    QProcess process;
    process.start(u"pdftotext"_s, {u"-layout"_s, path(u"list.pdf"_s), u"-"_s});
    EXPECT_TRUE(process.waitForFinished()) << process.errorString().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
  }
};

QByteArray contentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

QStringList cellsOf(const QString& path) {
  QProcess process;
  process.start(u"python3"_s,
                {QStringLiteral(GOODSBOOK_SOURCE_DIR) + u"/tests/host/sheet/sheet_dump.py"_s, path});
  EXPECT_TRUE(process.waitForFinished(60'000)) << process.errorString().toStdString();
  return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

TEST_F(ListOutput, ASheetHasWhatTheGridShows) {
  openCurrencies(2);
  exportTo(path(u"list.xlsx"_s));
  EXPECT_EQ(messages(), std::vector<QString>());
  const QStringList cells = cellsOf(path(u"list.xlsx"_s));
  for (const QString& cell :
       {u"货币基本资料|A1|t|General|b|货币代号"_s, u"货币基本资料|E1|t|General|b|备注"_s,
        u"货币基本资料|A2|t|General|-|00"_s, u"货币基本资料|C2|t|General|-|否"_s,
        u"货币基本资料|C3|t|General|-|是"_s, u"货币基本资料|D3|n|0.000000|-|0.5"_s,
        u"货币基本资料|E3|t|General|-|备\"注"_s}) {
    EXPECT_TRUE(cells.contains(cell)) << cell.toStdString() << " not in\n" << cells.join(u'\n').toStdString();
  }
}

TEST_F(ListOutput, ATextFileHasWhatTheGridShows) {
  openCurrencies(2);
  exportTo(path(u"list.csv"_s));
  EXPECT_EQ(
      contentOf(path(u"list.csv"_s)).toStdString(),
      "\xEF\xBB\xBF"
      "货币代号,货币名称,本位币,汇率,备注\r\n00,币00,否,0.000000,\r\n01,币01,是,0.500000,\"备\"\"注\"\r\n");
}

TEST_F(ListOutput, ANameWithoutEndingIsASheet) {
  openCurrencies(1);
  exportTo(path(u"list"_s));
  EXPECT_TRUE(QFile::exists(path(u"list.xlsx"_s)));
}

TEST_F(ListOutput, AFileThatCannotBeWrittenIsToldOnce) {
  openCurrencies(1);
  exportTo(path(u"no/list.xlsx"_s));
  const std::vector<QString> told = messages();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_TRUE(told[0].contains(u"list.xlsx"_s));
}

TEST_F(ListOutput, NoFileChosenIsNoExport) {
  openCurrencies(1);
  act(u"Act_Export"_s);
  EXPECT_EQ(messages(), std::vector<QString>());
  EXPECT_EQ(QDir(folder()).entryList({u"*.xlsx"_s, u"*.csv"_s}, QDir::Files), QStringList());
}

TEST_F(ListOutput, APrintHasHeadRowsAndPages) {
  onGui([] { setGlobal(u"G_CoName"_s, u"样例商店"_s); });
  openCurrencies(90);
  const QString text = printed();
  EXPECT_EQ(messages(), std::vector<QString>());
  for (const QString& part : {u"样例商店"_s, u"货币基本资料"_s, u"2026-11-20"_s, u"货币代号"_s, u"币00"_s,
                              u"币89"_s, u"44.500000"_s, u"√"_s}) {
    EXPECT_TRUE(text.contains(part)) << part.toStdString() << " not in\n" << text.toStdString();
  }
  EXPECT_EQ(text.count(u'\f'), QString(text).remove(u' ').count(u"页/共"_s));
  EXPECT_GT(text.count(u'\f'), 1);
}

TEST_F(ListOutput, WithoutATargetThePreviewShows) {
  openCurrencies(90);
  act(u"Act_Print"_s);
  EXPECT_EQ(frontClass(), u"QPrintPreviewDialog"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2125"_s);
  EXPECT_EQ(messages(), std::vector<QString>());
}

TEST_F(ListOutput, HiddenColumnsStayAtHome) {
  openCurrencies(3);
  onGui([] {
    for (QWidget* widget : QApplication::allWidgets()) {
      if (auto* grid = qobject_cast<TDBGridEh*>(widget)) grid->setColumnVisible(u"HB_HL"_s, false);
    }
  });
  exportTo(path(u"list.csv"_s));
  EXPECT_TRUE(contentOf(path(u"list.csv"_s)).startsWith("\xEF\xBB\xBF货币代号,货币名称,本位币,备注\r\n"));
  EXPECT_FALSE(printed().contains(u"汇率"_s));
}

TEST_F(ListOutput, AnEmptyListCanBePrinted) {
  openCurrencies(0);
  EXPECT_TRUE(printed().contains(u"货币代号"_s));
}

}  // namespace
}  // namespace goodsbook
