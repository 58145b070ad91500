// `goodsbook tour` over sample data: every screen opens, shows, and goes again.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int patience = 120'000;

TEST(TourProcess, EveryScreenHasItsPictures) {
  const QTemporaryDir folder;
  QProcess tour;
  tour.start(QStringLiteral(GOODSBOOK_PROGRAM), {u"tour"_s, u"--out"_s, folder.filePath(u"pictures"_s)});
  ASSERT_TRUE(tour.waitForFinished(patience));
  EXPECT_EQ(tour.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(tour.exitCode(), 0) << tour.readAllStandardError().toStdString();
  const QDir pictures(folder.filePath(u"pictures"_s));
  for (const int module : {101, 102, 103, 104, 107, 108, 111, 112, 113, 114, 122, 123, 124, 125}) {
    for (const QString& size : {QString(), u"-small"_s}) {
      const QString name = QString::number(module) + size + u".png"_s;
      const QImage picture(pictures.filePath(name));
      EXPECT_FALSE(picture.isNull()) << name.toStdString();
    }
  }
  for (const QString& name :
       {u"101-edit.png"_s, u"101-imp-read.png"_s, u"101-imp-read-small.png"_s, u"101-imp-done.png"_s,
        u"101-history.png"_s, u"101-units-small.png"_s, u"101-barcodes.png"_s, u"101-regional-prices.png"_s,
        u"101-pictures-print.png"_s, u"112-filter.png"_s, u"107-rights.png"_s, u"main-tabs-dark.png"_s}) {
    EXPECT_TRUE(pictures.exists(name)) << name.toStdString();
  }
}

}  // namespace
}  // namespace goodsbook
