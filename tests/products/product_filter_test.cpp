// The product filter: what it asks the list for, and what the list says about it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>

#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class ProductFilter : public ProductScreen {
 protected:
  void openFilter() {
    openList();
    act(u"Act_Filter"_s);
    ASSERT_EQ(frontClass(), u"TF2101F"_s);
  }
  // The condition in the list's statement; the mark "none" when the list was not read again.
  QString asked() {
    const Lines all = statements();
    if (all.empty()) return u"none"_s;
    const QString head = u" AND (D1801DW.T = 1)  "_s;
    return all.back().mid(all.back().indexOf(head) + head.size()).trimmed();
  }
  QStringList shown() {
    QStringList codes;
    const QJsonArray list = rows(u"DBGridEh"_s);
    for (const QJsonValue& row : list) codes << row["WL_ID"_L1].toString();
    return codes;
  }
  bool listSays(const QString& display) {
    const QJsonArray all = done({{u"cmd"_s, u"elements"_s}})["elements"_L1].toArray();
    for (const QJsonValue& element : all) {
      if (element["text"_L1].toString().contains(display)) return true;
    }
    return false;
  }
};

TEST_F(ProductFilter, HasItsFieldsLimitsAndDefaults) {
  openFilter();
  const auto field = [this](const QString& name) {
    const QJsonObject got = get(name);
    return got["title"_L1].toString() + u' ' + QString::number(got["maxlength"_L1].toInt());
  };
  EXPECT_EQ(text(u"Label1"_s), u"编码/条码/品名/拼音码"_s);
  EXPECT_EQ(text(u"Label3"_s), u"规    格"_s);
  EXPECT_EQ(text(u"Label4"_s), u"商品类型"_s);
  EXPECT_EQ(field(u"Edit1"_s), u"编码/条码/品名/拼音码 20"_s);
  EXPECT_EQ(field(u"Edit3"_s), u"规    格 40"_s);
  EXPECT_EQ(field(u"CLASS_ID"_s), u"商品类型 4"_s);
  EXPECT_TRUE(get(u"Edit1"_s)["focused"_L1].toBool());
  EXPECT_TRUE(get(u"YS"_s)["checked"_L1].toBool());
  EXPECT_FALSE(get(u"NO"_s)["checked"_L1].toBool());
  EXPECT_EQ(text(u"btn_1"_s), u"今天改动"_s);
  EXPECT_EQ(text(u"btn_2"_s), u"昨天改动"_s);
  EXPECT_EQ(type(u"Edit1"_s, u"abc"_s), u"ABC"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductFilter, OneOfValidAndInvalidHasToBeChosen) {
  openFilter();
  check(u"YS"_s, false);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"有效和无效必须选定一个"_s});
  EXPECT_EQ(frontClass(), u"TF2101F"_s);
  EXPECT_EQ(asked(), u"none"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductFilter, BothBoxesAndEmptyFieldsShowAllProducts) {
  product(u"P1"_s, u"可乐"_s);
  product(u"P2"_s, u"雪碧"_s);
  sql(u"update D1801 set WL_YS=0 where WL_ID='P2'"_s);
  openFilter();
  check(u"NO"_s, true);
  click(u"btn_ok"_s);
  EXPECT_EQ(asked(), QString());
  EXPECT_EQ(shown(), (QStringList{u"P1"_s, u"P2"_s}));
  EXPECT_FALSE(listSays(u"●"_s));
  EXPECT_EQ(text(u"FilterText"_s), QString());
}

TEST_F(ProductFilter, OnlyInvalidOnes) {
  product(u"P1"_s, u"可乐"_s);
  product(u"P2"_s, u"雪碧"_s);
  sql(u"update D1801 set WL_YS=0 where WL_ID='P2'"_s);
  openFilter();
  check(u"YS"_s, false);
  check(u"NO"_s, true);
  click(u"btn_ok"_s);
  EXPECT_TRUE(asked().contains(u"D1801.WL_YS='0'"_s));
  EXPECT_EQ(shown(), QStringList{u"P2"_s});
}

TEST_F(ProductFilter, AllFieldsTogether) {
  product(u"P1"_s, u"可乐"_s);
  product(u"P2"_s, u"雪碧"_s);
  openFilter();
  type(u"Edit1"_s, u" p1 "_s);
  type(u"Edit3"_s, u"500"_s);
  type(u"CLASS_ID"_s, u"01"_s);
  click(u"btn_ok"_s);
  const QString condition = asked();
  EXPECT_TRUE(condition.contains(
      u"((D1801DW.TM LIKE '%P1%') or (D1801.WL_ID LIKE '%P1%') or (D1801.WL_name LIKE '%P1%') or (D1801.PYM LIKE '%P1%')) and D1801.WL_GG LIKE '%500%' and D1801.CLASS_ID='01' and D1801.WL_YS='1'"_s))
      << condition.toStdString();
  EXPECT_EQ(shown(), QStringList{u"P1"_s});
  EXPECT_TRUE(listSays(u" ●编码/条码/品名/拼音码 包含  P1  ●规格 包含 500 ●商品类型=01"_s));
}

TEST_F(ProductFilter, QuickKeysLookAtTheFirstFieldOnly) {
  product(u"P1"_s, u"可乐"_s);
  product(u"P12"_s, u"雪碧"_s);
  openFilter();
  type(u"Edit3"_s, u"no such"_s);
  type(u"Edit1"_s, u"p1"_s);
  press(u"F3"_s);
  EXPECT_TRUE(asked().contains(u"LIKE '%P1%'"_s));
  EXPECT_EQ(shown(), (QStringList{u"P1"_s, u"P12"_s}));
  EXPECT_TRUE(listSays(u"编码/条码/品名/拼音码 包含 P1"_s));
  statements();
  act(u"Act_Filter"_s);
  type(u"Edit1"_s, u"p1 "_s);
  press(u"F4"_s);
  EXPECT_TRUE(asked().contains(
      u"((D1801DW.TM='P1') or (D1801.WL_ID='P1') or (D1801.WL_name='P1') or (D1801.PYM='P1'))"_s));
  EXPECT_EQ(shown(), QStringList{u"P1"_s});
  EXPECT_TRUE(listSays(u"编码/条码/品名/拼音码 等于 P1"_s));
}

TEST_F(ProductFilter, QuickKeysDoNothingWithOnlyBlanks) {
  openFilter();
  type(u"Edit1"_s, u"   "_s);
  for (const QString& key : {u"F3"_s, u"F4"_s}) {
    press(key);
    EXPECT_EQ(frontClass(), u"TF2101F"_s);
  }
  EXPECT_EQ(asked(), u"none"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductFilter, ChangedTodayAndYesterdayAreWholeDays) {
  const std::vector<std::pair<QString, QString>> changes{
      {u"P1"_s, u"2026-11-18 23:59:59"_s}, {u"P2"_s, u"2026-11-19 00:00:00"_s},
      {u"P3"_s, u"2026-11-19 23:59:59"_s}, {u"P4"_s, u"2026-11-20 00:00:00"_s},
      {u"P5"_s, u"2026-11-20 23:59:59"_s}, {u"P6"_s, u"2026-11-21 00:00:00"_s}};
  for (const auto& [code, time] : changes) {
    product(code, code);
    sql(u"update D1801 set %1='%2' where WL_ID='%3'"_s.arg(code == u"P3"_s ? u"EDATE"_s : u"BDATE"_s, time,
                                                           code));
  }
  openFilter();
  click(u"btn_1"_s);
  EXPECT_TRUE(asked().contains(
      u"((d1801.bdate>='2026-11-20') AND (d1801.bdate<'2026-11-21')) or  ((d1801.edate>='2026-11-20') AND (d1801.edate<'2026-11-21'))"_s));
  EXPECT_EQ(shown(), (QStringList{u"P4"_s, u"P5"_s}));
  EXPECT_TRUE(listSays(u"【今天改动】"_s));
  statements();
  act(u"Act_Filter"_s);
  click(u"btn_2"_s);
  EXPECT_TRUE(asked().contains(
      u"((d1801.bdate>='2026-11-19') AND (d1801.bdate<'2026-11-20')) or  ((d1801.edate>='2026-11-19') AND (d1801.edate<'2026-11-20'))"_s));
  EXPECT_EQ(shown(), (QStringList{u"P2"_s, u"P3"_s}));
  EXPECT_TRUE(listSays(u"【昨天改动】"_s));
}

TEST_F(ProductFilter, TheDayButtonsAreToldApartByTheirTags) {
  openFilter();
  onGui([&] {
    const QWidget* filter = QApplication::activeModalWidget();
    ASSERT_TRUE(filter);
    EXPECT_EQ(filter->findChild<QPushButton*>(u"btn_1"_s)->property("Tag"), QVariant(0));
    EXPECT_EQ(filter->findChild<QPushButton*>(u"btn_2"_s)->property("Tag"), QVariant(1));
  });
  click(u"btn_Cancel"_s);
}

TEST_F(ProductFilter, OneClickClearsTheCondition) {
  product(u"P1"_s, u"可乐"_s);
  product(u"P2"_s, u"雪碧"_s);
  openFilter();
  type(u"Edit1"_s, u"p2"_s);
  press(u"F3"_s);
  EXPECT_EQ(shown(), QStringList{u"P2"_s});
  act(u"Act_Refresh"_s);
  EXPECT_TRUE(asked().contains(u"LIKE '%P2%'"_s)) << "a refresh keeps the condition";
  EXPECT_EQ(shown(), QStringList{u"P2"_s});
  EXPECT_TRUE(get(u"btn_ClearFilter"_s)["visible"_L1].toBool());
  click(u"btn_ClearFilter"_s);
  EXPECT_EQ(asked(), QString());
  EXPECT_EQ(shown(), (QStringList{u"P1"_s, u"P2"_s}));
  EXPECT_FALSE(get(u"btn_ClearFilter"_s)["visible"_L1].toBool());
  EXPECT_FALSE(listSays(u"包含"_s));
}

TEST_F(ProductFilter, TheQuickKeysAreForTheFirstFieldOnly) {
  openFilter();
  type(u"Edit1"_s, u"p1"_s);
  type(u"Edit3"_s, u"500"_s);
  press(u"F3"_s);
  EXPECT_EQ(frontClass(), u"TF2101F"_s);
  EXPECT_EQ(asked(), u"none"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductFilter, TheCategoryHasToExist) {
  openFilter();
  type(u"CLASS_ID"_s, u"99"_s);
  EXPECT_EQ(focus(u"Edit3"_s), u"CLASS_ID"_s);
  EXPECT_EQ(messages().size(), 1U);
  type(u"CLASS_ID"_s, QString());
  EXPECT_EQ(focus(u"Edit3"_s), u"Edit3"_s) << "a blank one asks for nothing";
  click(u"btn_Cancel"_s);
}

TEST_F(ProductFilter, ACategoryThatThereIsNotIsRefusedByOkToo) {
  openFilter();
  type(u"CLASS_ID"_s, u"zzzz"_s);
  press(u"Esc"_s);
  ASSERT_EQ(frontClass(), u"TF2101"_s);
  messages();
  statements();
  act(u"Act_Filter"_s);
  ASSERT_EQ(text(u"CLASS_ID"_s).toLower(), u"zzzz"_s);
  check(u"YS"_s, false);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"商品类型【%1】不存在!"_s.arg(text(u"CLASS_ID"_s))}) << "before anything else";
  EXPECT_EQ(frontClass(), u"TF2101F"_s);
  EXPECT_TRUE(get(u"CLASS_ID"_s)["focused"_L1].toBool());
  EXPECT_EQ(asked(), u"none"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductFilter, AQuoteBreaksTheStatementAndNothingElse) {
  product(u"P1"_s, u"可乐"_s);
  openFilter();
  type(u"Edit1"_s, u"o'x"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(sql(u"select WL_ID from D1801"_s), (Table{{u"P1"_s}}));
}

TEST_F(ProductFilter, EscClosesOnlyThePickerFirst) {
  openFilter();
  click(u"CLASS_ID.button"_s);
  EXPECT_NE(frontClass(), u"TF2101F"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2101F"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2101"_s);
}

}  // namespace
}  // namespace goodsbook
