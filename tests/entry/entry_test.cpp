// The plug-in as the program loads it.
#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>

#include "app/driver/screen_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class Entry : public ScreenTest {};

TEST_F(Entry, ANumberWithoutAScreenIsToldInAPlainBox) {
  for (const int module : {105, 106, 109, 110, 115, 121, 100, 126, 0, -1, 2147483647}) {
    EXPECT_TRUE(open(module).isEmpty()) << module;
    const QJsonArray boxes = done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray();
    ASSERT_EQ(boxes.size(), 1) << module;
    EXPECT_EQ(boxes[0]["text"_L1].toString(), u"模块未制作%1"_s.arg(module));
    EXPECT_EQ(boxes[0]["kind"_L1].toInt(), 0);
  }
  EXPECT_TRUE(done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray().isEmpty());
  EXPECT_TRUE(statements().empty());
}

TEST_F(Entry, TheModuleNumberIsTheTwentyFifthWord) {
  QJsonArray words;
  for (int i = 0; i < 28; ++i) words.append(i == 24 ? 103 : 101);
  const QJsonObject screen = done({{u"cmd"_s, u"open"_s}, {u"words"_s, words}})["screen"_L1].toObject();
  EXPECT_EQ(screen["class"_L1].toString(), u"TF2103"_s);
  EXPECT_EQ(screen["tag"_L1].toInt(), 103);
  EXPECT_FALSE(screen["modal"_L1].toBool());
}

TEST_F(Entry, AModuleOpenedTwiceGivesTwoIndependentScreens) {
  const QJsonObject first = open(103);
  const QJsonObject second = open(103);
  EXPECT_NE(first["id"_L1].toInt(), second["id"_L1].toInt());
  EXPECT_EQ(done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray().size(), 2);
  done({{u"cmd"_s, u"close"_s}, {u"id"_s, first["id"_L1]}});
  const QJsonArray left = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  ASSERT_EQ(left.size(), 1);
  EXPECT_EQ(left[0]["id"_L1], second["id"_L1]);
}

// What the plug-in offers: one entry, and the screens that other modules use by name.
TEST(Plugin, ExportsItsEntryAndThePublishedScreensOnly) {
  QProcess nm;
  nm.start(u"nm"_s, {u"-D"_s, u"-C"_s, u"--defined-only"_s, QStringLiteral(MASTERDATA_FILE)});
  ASSERT_TRUE(nm.waitForFinished()) << nm.errorString().toStdString();
  const QStringList lines = QString::fromUtf8(nm.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
  static const QRegularExpression published(u"goodsbook::TF2101A_[123]\\b"_s);
  QStringList others;
  for (const QString& line : lines) {
    if (!line.contains(published)) others << line.section(u' ', 1);
  }
  EXPECT_EQ(others, QStringList{u"T ProcDLL1"_s});
}

TEST(Plugin, KnowsNeitherTheEngineNorSqlite) {
  QProcess nm;
  nm.start(u"nm"_s, {u"-D"_s, u"-C"_s, u"--undefined-only"_s, QStringLiteral(MASTERDATA_FILE)});
  ASSERT_TRUE(nm.waitForFinished()) << nm.errorString().toStdString();
  const QString symbols = QString::fromUtf8(nm.readAllStandardOutput());
  EXPECT_TRUE(symbols.contains(u"goodsbook::TFrm_Base_Outer"_s));
  EXPECT_FALSE(symbols.contains(u"goodsbook::engine::Connection"_s));
  EXPECT_FALSE(symbols.contains(u"sqlite3_"_s));
}

}  // namespace
}  // namespace goodsbook
