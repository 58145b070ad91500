// Printed labels, read back by a scanner that is not ours.
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include "app/commands/init_command.h"
#include "host/print/label_layouts.h"
#include "host/print/label_pages.h"
#include "tests/labels/code_reader.h"
#include "tests/labels/label_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int resolutions[] = {203, 300, 600};

QImage paperOf(const LabelJob& job) {
  QImage paper(job.pageDots(), QImage::Format_Grayscale8);
  const int dotsPerMeter = qRound(job.printer.dpi / 0.0254);
  paper.setDotsPerMeterX(dotsPerMeter);
  paper.setDotsPerMeterY(dotsPerMeter);
  paper.fill(Qt::white);
  return paper;
}

LabelRow labelFor(const QString& barcode) {
  LabelRow row;
  row[LabelField::Code] = u"000123"_s;
  row[LabelField::Barcode] = barcode;
  row[LabelField::Name] = u"立冬里巧克力味冰棍"_s;
  row[LabelField::Specification] = u"110g"_s;
  row[LabelField::Unit] = u"支"_s;
  row[LabelField::Price] = u"11.30"_s;
  row[LabelField::MemberPrice] = u"10.74"_s;
  row[LabelField::Origin] = u"河北保定"_s;
  row[LabelField::Company] = u"样例商店"_s;
  return row;
}

struct Expected {
  QString kind;
  QString text;
};

Expected expectedOf(const QString& barcode) {
  switch (barCodeOf(barcode).kind) {
    case BarCode::Kind::Ean13:
      return {u"EAN-13"_s, barcode};
    case BarCode::Kind::Ean8:
      return {u"EAN-8"_s, barcode};
    case BarCode::Kind::UpcA:
      return {u"UPC-A"_s, barcode};
    default:
      return {u"CODE-128"_s, barcode};
  }
}

class PrintedLabels : public LabelScreen {
 protected:
  static std::vector<LabelLayoutFile> shipped() { return labelLayouts(u"/nonexistent"_s); }
  static LabelJob jobOf(const LabelLayout& layout, int dpi, const std::vector<LabelRow>& rows) {
    LabelJob job;
    job.layout = layout;
    job.printer.dpi = dpi;
    job.count = static_cast<int>(rows.size());
    job.row = [&rows](int index) { return rows[static_cast<std::size_t>(index)]; };
    return job;
  }
  QImage printed(const LabelJob& job, int page, LabelWarnings& warnings) {
    QImage paper;
    onGui([&] {
      paper = paperOf(job);
      QPainter painter(&paper);
      LabelPainter labels(job.layout, job.printer);
      paintLabelPage(painter, labels, job, page, warnings);
    });
    return paper;
  }
  // Every label of a page carries its row's code and no other.
  void expectCodes(const QImage& paper, const LabelJob& job, int page) {
    for (int place = 0; place < job.layout.perSheet(); ++place) {
      const int index = page * job.layout.perSheet() + place - job.firstPlace;
      const bool used = index >= 0 && index < job.count;
      const QRect label = job.printer.dots(QRectF(job.layout.corner(place), job.layout.label));
      const std::vector<ReadCode> read = readCodes(paper.copy(label));
      ASSERT_EQ(read.size(), used ? 1U : 0U)
          << job.layout.name.toStdString() << ' ' << job.printer.dpi << " dpi, label " << index;
      if (!used) continue;
      const Expected expected = expectedOf(job.row(index)[LabelField::Barcode]);
      EXPECT_EQ(read.front().kind, expected.kind) << expected.text.toStdString();
      EXPECT_EQ(read.front().text, expected.text);
    }
  }
};

TEST_F(PrintedLabels, EveryKindOfCodeIsReadFromEveryLayoutAtEveryResolution) {
  std::vector<LabelRow> rows;
  for (const QString& code : {u"6921612000018"_s, u"96385074"_s, u"036000291452"_s, u"000123"_s, u"AB-12"_s,
                              u"6921612000019"_s, u"12345678901234567890"_s, u"a b/c"_s})
    rows.push_back(labelFor(code));
  int layouts = 0;
  for (const LabelLayoutFile& file : shipped()) {
    ASSERT_EQ(file.error, QString());
    ++layouts;
    for (const int dpi : resolutions) {
      const LabelJob job = jobOf(file.layout, dpi, rows);
      for (int page = 0; page < job.pageCount(); ++page) {
        LabelWarnings warnings;
        expectCodes(printed(job, page, warnings), job, page);
      }
    }
  }
  EXPECT_EQ(layouts, 6);
}

TEST_F(PrintedLabels, BarsAreWholeDotsWithTheirQuietZone) {
  const std::vector<LabelRow> rows{labelFor(u"6921612000018"_s), labelFor(u"96385074"_s),
                                   labelFor(u"036000291452"_s), labelFor(u"AB-12"_s)};
  for (const LabelLayoutFile& file : shipped()) {
    for (const int dpi : resolutions) {
      for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::vector<LabelRow> one{rows[i]};
        const LabelJob job = jobOf(file.layout, dpi, one);
        LabelWarnings warnings;
        const QImage paper = printed(job, 0, warnings);
        const auto item = std::ranges::find(job.layout.items, LabelItem::Kind::BarCode, &LabelItem::kind);
        const QRect place = job.printer.dots(item->place.translated(job.layout.corner(0)));
        const BarCode code = barCodeOf(one[0][LabelField::Barcode]);
        // Along one line of dots through the bars.
        const uchar* line = paper.constScanLine(place.top() + place.height() / 3);
        std::vector<int> runs{0};
        for (int x = place.left(); x <= place.right(); ++x) {
          ASSERT_TRUE(line[x] == 0 || line[x] == 255);
          if (x > place.left() && line[x] != line[x - 1]) runs.push_back(0);
          ++runs.back();
        }
        ASSERT_EQ(runs.size(), code.runs.size() + 2);
        const int module = runs[1] / code.runs[0];
        for (std::size_t run = 0; run < code.runs.size(); ++run)
          EXPECT_EQ(runs[run + 1], module * code.runs[run]);
        EXPECT_GE(runs.front(), module * code.quietBefore);
        EXPECT_GE(runs.back(), module * code.quietBehind);
        EXPECT_EQ(warnings.texts(), QStringList()) << file.name.toStdString() << dpi;
      }
    }
  }
}

TEST_F(PrintedLabels, TheTestPageShowsTheFrameOfEveryLabel) {
  for (const LabelLayoutFile& file : shipped()) {
    const std::vector<LabelRow> none;
    const LabelJob job = jobOf(file.layout, 203, none);
    QImage paper;
    onGui([&] {
      paper = paperOf(job);
      QPainter painter(&paper);
      paintTestPage(painter, job);
    });
    for (int place = 0; place < job.layout.perSheet(); ++place) {
      const QRect label = job.printer.dots(QRectF(job.layout.corner(place), job.layout.label));
      int black = 0;
      for (int x = label.left() + 4; x < label.right() - 4; ++x) {
        bool any = false;
        for (int y = label.top(); y < label.top() + 5 && y < paper.height(); ++y)
          any = any || qGray(paper.pixel(x, y)) < 128;
        black += any;
      }
      EXPECT_GT(black, label.width() * 9 / 10) << file.name.toStdString() << ' ' << place;
    }
  }
}

TEST_F(PrintedLabels, PrintingStartsAtTheFirstFreeLabelOfASheet) {
  std::vector<LabelRow> rows;
  for (int i = 0; i < 30; ++i) rows.push_back(labelFor(u"A%1"_s.arg(i)));
  LabelJob job = jobOf(shipped().front().layout, 203, rows);
  job.firstPlace = 20;
  EXPECT_EQ(job.pageCount(), 3);
  LabelWarnings warnings;
  for (int page = 0; page < 3; ++page) {
    expectCodes(printed(job, page, warnings), job, page);
  }
}

TEST_F(PrintedLabels, OffsetAndScaleMoveLabelsAndKeepBarsWhole) {
  const std::vector<LabelRow> rows(24, labelFor(u"6921612000018"_s));
  LabelJob job = jobOf(shipped().front().layout, 300, rows);
  LabelWarnings warnings;
  const auto inked = [](const QImage& paper) {
    QRect ink;
    for (int y = 0; y < paper.height(); ++y) {
      for (int x = 0; x < paper.width(); ++x) {
        if (paper.constScanLine(y)[x] < 64) ink |= QRect(x, y, 1, 1);
      }
    }
    return ink;
  };
  const QRect before = inked(printed(job, 0, warnings));
  job.printer.offset = {2, -1};
  job.printer.scale = {0.98, 1.01};
  const QImage moved = printed(job, 0, warnings);
  expectCodes(moved, job, 0);
  const QRect after = inked(moved);
  constexpr double dots = 300 / 25.4;
  constexpr double letters = 8;  // letters and bars keep their size where distances shrink
  EXPECT_NEAR(after.left(), before.left() * 0.98 + 2 * dots, letters);
  EXPECT_NEAR(after.right(), before.right() * 0.98 + 2 * dots, letters);
  EXPECT_NEAR(after.top(), before.top() * 1.01 - dots, letters);
  EXPECT_NEAR(after.bottom(), before.bottom() * 1.01 - dots, letters);
}

TEST_F(PrintedLabels, WhatAScannerCouldNotReadIsTold) {
  const auto toldAbout = [this](const QString& barcode, int dpi, int layout) {
    const std::vector<LabelRow> rows{labelFor(barcode)};
    const LabelJob job = jobOf(shipped()[static_cast<std::size_t>(layout)].layout, dpi, rows);
    LabelWarnings warnings;
    printed(job, 0, warnings);
    return warnings.texts().join(u'\n').remove(u"立冬里巧克力味冰棍："_s).toStdString();
  };
  constexpr int roll40 = 2;
  EXPECT_EQ(toldAbout(u"6921612000018"_s, 203, roll40), "");
  EXPECT_EQ(toldAbout(u"6921612000019"_s, 600, 4), "条码 6921612000019 的校验位应为 8，已按 Code 128 打印");
  EXPECT_EQ(toldAbout(u"ABCDEFGHIJKLMN"_s, 203, roll40),
            "条码 ABCDEFGHIJKLMN 的线条太细（0.125 毫米），可能扫不出来：请用更宽的标签或更高的分辨率");
  EXPECT_EQ(toldAbout(u"ABCDEFGHIJKLMNOPQRSTUVWXYZABCDE"_s, 203, roll40),
            "条码 ABCDEFGHIJKLMNOPQRSTUVWXYZABCDE 在标签上放不下，没有印条码");
  EXPECT_EQ(toldAbout({}, 203, roll40), "没有条码");
  EXPECT_EQ(toldAbout(u"条码1"_s, 203, roll40), "条码“条码1”含有条码不能表示的字符");
}

TEST_F(PrintedLabels, LongNamesAreWrappedShrunkAndNeverCutInSilence) {
  std::vector<LabelRow> rows{labelFor(u"100"_s)};
  const LabelJob job = jobOf(shipped()[2].layout, 300, rows);
  LabelWarnings fits;
  rows[0][LabelField::Name] = QString(u"名"_s).repeated(30);
  printed(job, 0, fits);
  EXPECT_EQ(fits.texts(), QStringList());
  LabelWarnings cut;
  const QString name = QString(u"名"_s).repeated(200);
  rows[0][LabelField::Name] = name;
  printed(job, 0, cut);
  EXPECT_EQ(cut.texts(), QStringList{name + u"：“"_s + name + u"”在标签上放不下，只印出一部分"_s});
}

TEST_F(PrintedLabels, ATextTooLargeForItsPlaceIsTold) {
  const auto toldAbout = [this](const QString& item) {
    const QString text = u"名称 甲\n纸张 60 40\n标签 60 40\n"_s + item;
    const std::vector<LabelRow> rows{labelFor(u"100"_s)};
    const LabelJob job = jobOf(readLabelLayout(text, u"my.label"_s), 300, rows);
    LabelWarnings warnings;
    printed(job, 0, warnings);
    return warnings.texts().join(u'\n').toStdString();
  };
  const std::string told = "立冬里巧克力味冰棍：“11.30”在标签上放不下，只印出一部分";
  EXPECT_EQ(toldAbout(u"文字 1 1 30 3 {售价} 字号 8"_s), "");
  EXPECT_EQ(toldAbout(u"文字 1 1 30 1 {售价} 字号 8"_s), told);    // too low for the smallest letters
  EXPECT_EQ(toldAbout(u"文字 1 1 0.3 30 {售价} 字号 8"_s), told);  // too narrow for a single one
}

TEST_F(PrintedLabels, WarningsAreBoundedAndCounted) {
  LabelWarnings warnings;
  LabelRow row;
  for (int i = 0; i < 1500; ++i) {
    row[LabelField::Name] = u"商品%1"_s.arg(i);
    for (int copy = 0; copy < 2; ++copy) warnings.add(row, u"没有条码"_s);
  }
  EXPECT_EQ(warnings.texts().size(), 1000);
  EXPECT_TRUE(warnings.all().endsWith(u"商品999：没有条码\n……还有 500 条"_s));
  EXPECT_TRUE(warnings.summary().endsWith(u"商品11：没有条码\n……还有 1488 条"_s));
}

TEST_F(PrintedLabels, APdfIsReadAtItsResolution) {
  openList();
  make({u"100"_s, u"200"_s, u"300"_s}, 9);
  const int last = static_cast<int>(shipped().size()) - 1;
  int resolution = 0;
  for (const int layout : {0, 2, last}) {
    act(u"Act_Print"_s);
    ASSERT_EQ(frontClass(), u"LabelDialog"_s);
    goTo(u"LayoutGrid"_s, layout);
    focus(u"Resolution"_s);
    press(u"Home"_s);
    for (int down = 0; down < resolution; ++down) press(u"Down"_s);
    const int dpi = resolutions[resolution++];
    EXPECT_EQ(text(u"Resolution"_s), u"%1 dpi"_s.arg(dpi));
    const QString pdf = file(u"labels-%1.pdf"_s.arg(dpi));
    done({{u"cmd"_s, u"printto"_s}, {u"path"_s, pdf}});
    click(u"btn_ok"_s);
    ASSERT_EQ(frontClass(), u"TF2102"_s);
    QProcess draw;
    draw.start(u"pdftoppm"_s,
               {u"-r"_s, QString::number(dpi), u"-gray"_s, u"-l"_s, u"2"_s, pdf, file(u"page"_s)});
    ASSERT_TRUE(draw.waitForFinished());
    const LabelLayout used = shipped()[static_cast<std::size_t>(layout)].layout;
    const QDir folderOfPages(folder());
    QStringList read;
    for (const QString& page : folderOfPages.entryList({u"page*.pgm"_s}, QDir::Files, QDir::Name)) {
      QImage picture(folderOfPages.filePath(page));
      picture.setDotsPerMeterX(qRound(dpi / 0.0254));
      for (const ReadCode& code : readCodes(picture)) {
        read << code.text;
      }
      QFile::remove(folderOfPages.filePath(page));
    }
    read.sort();
    // The scanner tells equal codes of a page once; of a roll the first two pages are one product.
    const QString water = u"6901234567892"_s;
    const QStringList expected = used.perSheet() > 1
                                     ? QStringList{u"200"_s, water, u"96385074"_s, u"96385074"_s}
                                     : QStringList{water, water};
    EXPECT_EQ(read, expected);
  }
}

// --- the sample shop

class SampleLabels : public PrintedLabels {
 protected:
  SampleLabels() { startFrom(sample()); }
  void SetUp() override { ScreenTest::SetUp(); }
  static QString sample() {
    static const QTemporaryDir folder;
    const QString path = folder.filePath(u"sample.db"_s);
    if (!QFile::exists(path)) runInitCommand({u"--database"_s, path, u"--sample"_s, u"1000"_s});
    return path;
  }
};

TEST_F(SampleLabels, AThousandProductsAreReadFromSheetsRollsAndTags) {
  std::vector<LabelRow> rows;
  for (const std::vector<QString>& product :
       sql(u"select D1801.WL_ID,TM,WL_NAME,WL_GG,CD,SJ,VIPSJ from D1801 inner join D1801DW on "
           u"D1801.WL_ID=D1801DW.WL_ID where D1801DW.T=1 order by D1801.WL_ID"_s)) {
    LabelRow row;
    row[LabelField::Code] = product[0];
    row[LabelField::Barcode] = product[1];
    row[LabelField::Name] = product[2];
    row[LabelField::Specification] = product[3];
    row[LabelField::Origin] = product[4];
    row[LabelField::Price] = product[5];
    row[LabelField::MemberPrice] = product[6];
    rows.push_back(std::move(row));
  }
  ASSERT_EQ(rows.size(), 1000U);
  constexpr std::size_t sheet = 0, roll = 2, tag = 5;
  for (const std::size_t layout : {sheet, roll, tag}) {
    const LabelJob job = jobOf(shipped()[layout].layout, 203, rows);
    LabelWarnings warnings;
    for (int page = 0; page < job.pageCount(); ++page) expectCodes(printed(job, page, warnings), job, page);
    EXPECT_EQ(warnings.texts(), QStringList());
  }
}

}  // namespace
}  // namespace goodsbook
