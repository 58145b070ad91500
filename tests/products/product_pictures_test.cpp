// Pictures: the browser over the listed products, and the picture of one product in its editor.
#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QProcess>
#include <QRegularExpression>

#include "host/data/record_set.h"
#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

const QString listed =
    u" SELECT d1801.wl_id,d1801.wl_name,D1801.PICT FROM d1801 INNER JOIN d1004 ON d1801.class_id = d1004.class_id INNER JOIN sys_user ON d1801.user_id = sys_user.user_id INNER JOIN d1801dw ON d1801.wl_id = d1801dw.wl_id INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id INNER JOIN (select TM,COUNT(TM) AS TMC FROM (SELECT TM from d1801dw union all SELECT TM from D1801DWTM) TMP GROUP BY TM) TM ON D1801DW.TM=TM.TM AND (D1801DW.T = 1)  "_s;

class ProductPictures : public ProductScreen {
 protected:
  static QString bytes(int count, const QString& pair) { return u"0x"_s + pair.repeated(count); }
  void products(int count) {
    QString batch;
    for (int i = 0; i < count; ++i) {
      batch +=
          u"insert into D1801 (WL_ID,WL_NAME,CLASS_ID,USER_ID,WL_YS) values ('%1','n','01','ADMIN',1);"
          "insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE) values (1,'%1','01','%1',1);"_s.arg(1000 + i);
    }
    sql(batch);
  }
  QString imageFile(const QString& name) {
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString path = folder() + u'/' + name;
    EXPECT_TRUE(image.save(path));
    return path;
  }
  static QImage patterned() {
    QImage noise(300, 200, QImage::Format_RGB32);
    for (int y = 0; y < noise.height(); ++y) {
      for (int x = 0; x < noise.width(); ++x) noise.setPixel(x, y, static_cast<uint>(x * 7919 + y * 104729));
    }
    return noise;
  }
  static QByteArray jpeg(bool progressive = false) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(progressive);
    EXPECT_TRUE(writer.write(patterned()));
    return bytes;
  }
  static QByteArray grainyJpeg() {  // as a photograph is
    QImage image(300, 200, QImage::Format_RGB32);
    uint seed = 1;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        seed = seed * 1664525U + 1013904223U;
        const int grain = static_cast<int>(seed >> 24) % 33;
        image.setPixel(x, y, qRgb(x / 2 + grain, y + grain, 100 + grain));
      }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, "JPEG", 85));
    return bytes;
  }
  QString fileOf(const QString& name, const QByteArray& content) {
    QFile file(folder() + u'/' + name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
    return file.fileName();
  }
  void pick(const QString& path) { done({{u"cmd"_s, u"pickfile"_s}, {u"path"_s, path}}); }
  QList<QByteArray> shown() {  // the pictures of the browser, as it keeps them
    QList<QByteArray> pictures;
    onGui([&] {
      const auto* rows = QApplication::activeModalWidget()->findChild<RecordSet*>(u"AdoQry_Tmp"_s);
      ASSERT_TRUE(rows);
      const int field = rows->fieldIndex(u"PICT"_s);
      for (int row = 0; row < rows->rowCount(); ++row) pictures << rows->valueAt(row, field).toByteArray();
    });
    return pictures;
  }
  QString stored(const QString& code) {
    return sql(u"select pict from D1801 where WL_ID='"_s + code + u'\'')[0][0];
  }
};

TEST_F(ProductPictures, ShortOnesGiveWayToTheCompanyPicture) {
  product(u"P1"_s, u"可乐"_s, u"1"_s);
  product(u"P2"_s, u"雪碧"_s, u"2"_s);
  product(u"P3"_s, u"水"_s, u"3"_s);
  sql(u"insert into sys_co (id,co,mod_pict) values ('1','店',"_s + bytes(120, u"cc"_s) +
      u");update D1801 set pict="_s + bytes(99, u"aa"_s) + u" where WL_ID='P1';update D1801 set pict="_s +
      bytes(100, u"bb"_s) + u" where WL_ID='P2'"_s);
  openList();
  act(u"Act_Other"_s);
  ASSERT_EQ(frontClass(), u"tF2101_4"_s);
  EXPECT_EQ(caption(), u"商品图片"_s);
  EXPECT_EQ(statements(),
            (Lines{u"select id as pict_id,co as pict_name, mod_pict as pict from sys_co"_s, listed}));
  EXPECT_EQ(text(u"Label1"_s), u"商 品 图 片 浏 览"_s);
  EXPECT_EQ(text(u"BtnPrint"_s), u"预览/打印 F2"_s);
  EXPECT_EQ(text(u"Label2"_s), u"P1      可乐"_s);
  EXPECT_EQ(text(u"Label3"_s), u"1/3"_s);
  EXPECT_EQ(shown(),
            (QList<QByteArray>{QByteArray(120, '\xcc'), QByteArray(100, '\xbb'), QByteArray(120, '\xcc')}));
  press(u"PgDown"_s);
  EXPECT_EQ(text(u"Label2"_s), u"P2      雪碧"_s);
  EXPECT_EQ(text(u"Label3"_s), u"2/3"_s);
  press(u"End"_s);
  EXPECT_EQ(text(u"Label3"_s), u"3/3"_s);
  press(u"Esc"_s);
  EXPECT_EQ(stored(u"P1"_s).toLower(), bytes(99, u"aa"_s));
  EXPECT_EQ(stored(u"P3"_s), u"NULL"_s);
}

TEST_F(ProductPictures, TheListsConditionGoesAlong) {
  product(u"P1"_s, u"可乐"_s, u"1"_s);
  product(u"P2"_s, u"雪碧"_s, u"2"_s);
  openList();
  act(u"Act_Filter"_s);
  type(u"Edit1"_s, u"p2"_s);
  press(u"F4"_s);
  rows(u"DBGridEh"_s);
  statements();
  act(u"Act_Other"_s);
  EXPECT_EQ(
      statements().back(),
      listed +
          u" Where  ((D1801DW.TM='P2') or (D1801.WL_ID='P2') or (D1801.WL_name='P2') or (D1801.PYM='P2'))"_s);
  EXPECT_EQ(text(u"Label3"_s), u"1/1"_s);
  press(u"Esc"_s);
}

TEST_F(ProductPictures, ThreeHundredAreTheMost) {
  products(300);
  openList();
  act(u"Act_Other"_s);
  EXPECT_EQ(frontClass(), u"tF2101_4"_s);
  EXPECT_EQ(text(u"Label3"_s), u"1/300"_s);
  press(u"Esc"_s);
  product(u"P1"_s, u"可乐"_s);
  act(u"Act_Refresh"_s);
  rows(u"DBGridEh"_s);
  statements();
  act(u"Act_Other"_s);
  EXPECT_EQ(messages(), Lines{u"记录大于300会造成大量数据,请更改检索条件!"_s});
  EXPECT_EQ(frontClass(), u"TF2101"_s);
  EXPECT_EQ(statements(), Lines());
}

TEST_F(ProductPictures, ThePrintOutHasSeveralProductsAPage) {
  products(7);
  openList();
  act(u"Act_Other"_s);
  const QString path = folder() + u"/seven.pdf"_s;
  done({{u"cmd"_s, u"printto"_s}, {u"path"_s, path}});
  click(u"BtnPrint"_s);
  const auto codesOn = [&](int page) {
    QProcess process;
    process.start(u"pdftotext"_s,
                  {u"-f"_s, QString::number(page), u"-l"_s, QString::number(page), path, u"-"_s});
    EXPECT_TRUE(process.waitForFinished());
    static const QRegularExpression code(u"\\b100[0-9]\\b"_s);
    return QString::fromUtf8(process.readAllStandardOutput()).count(code);
  };
  EXPECT_EQ(codesOn(1), 6);
  EXPECT_EQ(codesOn(2), 1);
  EXPECT_EQ(codesOn(3), 0);
  press(u"Esc"_s);
}

TEST_F(ProductPictures, ThePrintOutIsPreviewed) {
  products(1);
  openList();
  act(u"Act_Other"_s);
  press(u"F2"_s);
  EXPECT_EQ(frontClass(), u"QPrintPreviewDialog"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"tF2101_4"_s);
  press(u"Esc"_s);
}

TEST_F(ProductPictures, ThePrintOutIsADocument) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Other"_s);
  const QString path = folder() + u"/out.pdf"_s;
  done({{u"cmd"_s, u"printto"_s}, {u"path"_s, path}});
  press(u"F2"_s);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.readAll().startsWith("%PDF"));
  press(u"Esc"_s);
}

TEST_F(ProductPictures, ALongNameWithoutABlankBreaksAndWidensNothing) {
  const QString name(80, u'W');
  product(u"P1"_s, name);
  openList();
  act(u"Act_Other"_s);
  onGui([] {
    const QWidget* browser = QApplication::activeModalWidget();
    EXPECT_EQ(browser->width(), 640);
    const auto* caption = browser->findChild<QWidget*>(u"Label2"_s);
    EXPECT_LE(caption->width(), 640);
    EXPECT_GE(caption->height(), 2 * caption->fontMetrics().lineSpacing());
  });
  EXPECT_EQ(text(u"Label2"_s), u"P1      "_s + name);
  const QString path = folder() + u"/long.pdf"_s;
  done({{u"cmd"_s, u"printto"_s}, {u"path"_s, path}});
  click(u"BtnPrint"_s);
  QProcess process;
  process.start(u"pdftotext"_s, {path, u"-"_s});
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(QString::fromUtf8(process.readAllStandardOutput()).count(u'W'), 80);
  press(u"Esc"_s);
}

TEST_F(ProductPictures, AreStoredAfterTheSaveThatChangedThem) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  type(u"Edit2"_s, u"雪碧"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(sent(u"Applyupdatapict"_s).size(), 0) << "an unchanged picture is not written";
  act(u"Act_Edit"_s);
  pick(imageFile(u"red.png"_s));
  act(u"N1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(sent(u"Applyupdatapict"_s).size(), 1);
  EXPECT_TRUE(stored(u"P1"_s).toLower().startsWith(u"0xffd8ff"_s)) << "stored as JPEG";
  act(u"Act_Edit"_s);
  const QString copy = folder() + u"/copy"_s;
  pick(copy);
  act(u"N2"_s);
  EXPECT_TRUE(QFile::exists(copy + u".jpg"_s));
  act(u"N3"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(stored(u"P1"_s), u"NULL"_s);
}

TEST_F(ProductPictures, LargeOnesAreScaledDownAndTransparencyIsPaper) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  const auto storedAfter = [this](const QImage& image, const QString& name) {
    const QString path = folder() + u'/' + name;
    EXPECT_TRUE(image.save(path));
    act(u"Act_Edit"_s);
    pick(path);
    act(u"N1"_s);
    click(u"btn_ok"_s);
    return QImage::fromData(QByteArray::fromHex(stored(u"P1"_s).mid(2).toLatin1()), "JPEG");
  };
  QImage large(2400, 1200, QImage::Format_RGB32);
  large.fill(Qt::blue);
  for (const QString& name : {u"large.jpg"_s, u"large.png"_s})
    EXPECT_EQ(storedAfter(large, name).size(), QSize(1024, 512)) << name.toStdString();
  QImage clear(50, 40, QImage::Format_ARGB32);
  clear.fill(Qt::transparent);
  const QImage kept = storedAfter(clear, u"clear.png"_s);
  EXPECT_EQ(kept.size(), QSize(50, 40)) << "small ones stay as large as they are";
  EXPECT_GT(qGray(kept.pixel(25, 20)), 250);
}

TEST_F(ProductPictures, AFileThatIsNoWholePictureIsToldAndChangesNothing) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  pick(imageFile(u"red.jpg"_s));
  act(u"N1"_s);
  click(u"btn_ok"_s);
  const QString before = stored(u"P1"_s);
  statements();
  const QImage noise = patterned();
  const auto cut = [&](const QString& name, double part) {
    const QString path = folder() + u'/' + name;
    EXPECT_TRUE(noise.save(path));
    QFile file(path);
    EXPECT_TRUE(file.resize(static_cast<qint64>(static_cast<double>(file.size()) * part)));
    return path;
  };
  QFile plain(folder() + u"/text.jpg"_s);
  ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
  plain.write("no picture at all");
  plain.close();
  const std::vector<std::pair<QString, QString>> files{
      {cut(u"cut.jpg"_s, 0.5), u"图片已损坏，不能打开："_s},
      {cut(u"end.jpg"_s, 0.98), u"图片已损坏，不能打开："_s},
      {cut(u"cut.png"_s, 0.5), u"图片已损坏，不能打开："_s},
      {plain.fileName(), u"该文件不是 JPEG 或 PNG 图片，或已损坏："_s},
      {folder() + u"/none.jpg"_s, u"找不到图片文件："_s}};
  for (const auto& [path, message] : files) {
    act(u"Act_Edit"_s);
    pick(path);
    act(u"N1"_s);
    EXPECT_EQ(messages(), Lines{message + path});
    EXPECT_EQ(frontClass(), u"TF2101_1"_s);
    click(u"btn_ok"_s);
    EXPECT_EQ(sent(u"Applyupdatapict"_s).size(), 0);
    EXPECT_EQ(stored(u"P1"_s), before) << path.toStdString();
  }
}

TEST_F(ProductPictures, ADamagedJpegWithAnEndIsToldAndChangesNothing) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  const auto filled = [](QByteArray bytes, const std::function<char(int)>& byte) {
    const qsizetype middle = bytes.size() / 2;
    for (int i = 0; i < 200; ++i) bytes[middle + i] = byte(i);
    return bytes;
  };
  const auto random = [](int i) { return static_cast<char>((i * 7919 + 13) % 251); };
  for (const bool progressive : {false, true}) {
    const QByteArray whole = jpeg(progressive);
    const qsizetype middle = whole.size() / 2;
    const std::vector<std::pair<QString, QByteArray>> files{
        {u"half.jpg"_s, whole.left(middle) + "\xff\xd9"},
        {u"zeros.jpg"_s, filled(whole, [](int) { return '\0'; })},
        {u"random.jpg"_s, filled(whole, random)},
        {u"gap.jpg"_s, QByteArray(whole).remove(middle, 3000)},
        {u"open.jpg"_s, whole.chopped(2)}};
    for (const auto& [name, content] : files) {
      const QString path = fileOf(name, content);
      pick(path);
      act(u"N1"_s);
      EXPECT_EQ(messages(), Lines{u"图片已损坏，不能打开："_s + path}) << progressive;
    }
  }
  // Here the zeros read as just as many blocks as they replace: the decoder has nothing to complain of.
  const QString hole = fileOf(u"hole.jpg"_s, filled(grainyJpeg(), [](int) { return '\0'; }));
  pick(hole);
  act(u"N1"_s);
  EXPECT_EQ(messages(), Lines{u"图片已损坏，不能打开："_s + hole});
  click(u"btn_ok"_s);
  EXPECT_EQ(stored(u"P1"_s), u"NULL"_s);
}

TEST_F(ProductPictures, AWholeJpegIsTakenWhateverItsWriterLeftInIt) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  const QByteArray whole = jpeg();
  const QByteArray end("\xff\xd9");
  ASSERT_TRUE(whole.endsWith(end));
  const qsizetype tables = whole.indexOf("\xff\xdb");
  const qsizetype scan = whole.indexOf("\xff\xda");
  QByteArray noRange = whole;  // of coefficients, in the head of the scan
  noRange.replace(scan + 2 + noRange[scan + 3] - 3, 3, QByteArray(3, '\0'));
  const QString fixtures = QStringLiteral(GOODSBOOK_SOURCE_DIR "/tests/products/fixtures/");
  const QStringList files{fileOf(u"whole.jpg"_s, whole),
                          fileOf(u"progressive.jpg"_s, jpeg(true)),
                          fileOf(u"grainy.jpg"_s, grainyJpeg()),
                          fileOf(u"behind.jpg"_s, whole + QByteArray(5000, '\x5a') + end),
                          fileOf(u"between.jpg"_s, QByteArray(whole).insert(tables, QByteArray(2, '\0'))),
                          fileOf(u"filled.jpg"_s, whole.chopped(2) + QByteArray(12, '\0') + end),
                          fileOf(u"range.jpg"_s, noRange),
                          fixtures + u"cmyk.jpg"_s,
                          fixtures + u"ycck.jpg"_s};
  for (const QString& path : files) {
    act(u"Act_Edit"_s);
    pick(path);
    act(u"N1"_s);
    EXPECT_EQ(messages(), Lines()) << path.toStdString();
    click(u"btn_ok"_s);
    EXPECT_EQ(sent(u"Applyupdatapict"_s).size(), 1) << path.toStdString();
  }
}

TEST_F(ProductPictures, AWholePictureIsShownInAWindowThatEscCloses) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  act(u"N4"_s);
  EXPECT_EQ(frontClass(), u"TF2101_1"_s) << "there is none yet";
  pick(imageFile(u"red.jpg"_s));
  press(u"F7"_s);
  press(u"F8"_s);
  EXPECT_EQ(caption(), u"可乐"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(stored(u"P1"_s), u"NULL"_s);
}

TEST_F(ProductPictures, SavingWritesTheStoredBytes) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"update D1801 set pict="_s + bytes(200, u"aa"_s));
  openList();
  act(u"Act_View"_s);
  const QString path = folder() + u"/out.JPG"_s;
  pick(path);
  act(u"N2"_s);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), QByteArray(200, '\xaa'));
  pick(folder() + u"/missing/out.jpg"_s);
  act(u"N2"_s);
  EXPECT_EQ(messages().size(), 1U);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductPictures, ViewingNeitherOpensNorClearsOne) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"update D1801 set pict="_s + bytes(200, u"aa"_s));
  openList();
  act(u"Act_View"_s);
  act(u"N1"_s);
  act(u"N3"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(sent(u"Applyupdatapict"_s).size(), 0);
  EXPECT_EQ(stored(u"P1"_s).size(), 402);
}

TEST_F(ProductPictures, ACopyIsStoredWithAPictureOfItsOwnOnly) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"update D1801 set pict="_s + bytes(200, u"aa"_s));
  openList();
  act(u"Act_CopyAdd"_s);
  type(u"Edit1"_s, u"P2"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(sent(u"Applyupdatapict"_s).size(), 0);
  EXPECT_EQ(stored(u"P2"_s), u"NULL"_s);
  act(u"Act_CopyAdd"_s);
  type(u"Edit1"_s, u"P3"_s);
  pick(imageFile(u"red.jpg"_s));
  act(u"N1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(sent(u"Applyupdatapict"_s).size(), 1);
  EXPECT_TRUE(stored(u"P3"_s).toLower().startsWith(u"0xffd8ff"_s));
}

}  // namespace
}  // namespace goodsbook
