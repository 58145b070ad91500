// A shop's first day: everything that it deals with is set up from the keyboard.
#include <gtest/gtest.h>

#include "app/starting_set.h"
#include "host/session.h"
#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using Texts = std::vector<std::pair<QString, QString>>;  // element, what is typed there

class FirstDay : public ReferenceTest {
 protected:
  void startingSet() {
    onGui([] { sample::startingSet(sampleTools(Session::current().database())); });
  }
  void fill(const Texts& texts) {
    for (const auto& [element, text] : texts) type(element, text);
  }
  void save() {
    press(u"F9"_s);
    EXPECT_EQ(messages(), Lines());
  }
  void add(const Texts& texts, const QString& key = u"Ins"_s) {
    press(key);
    fill(texts);
    save();
  }
  // Opens the list of `element`, looks for `typed` there and takes the row found.
  void pick(const QString& element, const QString& typed) {
    focus(element);
    press(u"F4"_s);
    type(u"Edit1"_s, typed);
    press(u"Return"_s);
  }
  // A column of the list as it is after a fresh start of the screen.
  QString listed(int module, const QString& field) {
    openList(module);
    return column(field).join(u',');
  }
};

TEST_F(FirstDay, EverythingIsSetUpInANaturalOrder) {
  startingSet();
  openList(103);
  add({{u"Edit1"_s, u"kg"_s}, {u"Edit2"_s, u"公斤"_s}});
  openList(104);
  add({{u"t0"_s, u"10"_s}, {u"t1"_s, u"食品"_s}});
  add({{u"t0"_s, u"1001"_s}, {u"t1"_s, u"饼干"_s}}, u"Ctrl+D"_s);
  openList(107);
  add({{u"Edit1"_s, u"01"_s}, {u"Edit3"_s, u"总仓"_s}, {u"Edit4"_s, u"老王"_s}});
  openList(108);
  add({{u"Edit1"_s, u"01"_s}, {u"Edit2"_s, u"营业部"_s}});
  openList(112);
  press(u"Ins"_s);
  fill({{u"Edit1"_s, u"1001"_s}, {u"Edit2"_s, u"张三"_s}});
  pick(u"BM_ID"_s, u"yyb"_s);
  EXPECT_EQ(text(u"bm_NAME"_s), u"营业部"_s);
  save();
  openList(111);
  add({{u"Edit1"_s, u"02"_s}, {u"Edit3"_s, u"外地"_s}, {u"Edit4"_s, u"张三"_s}});
  openList(123);
  add({{u"Edit1"_s, u"05"_s}, {u"Edit2"_s, u"专车"_s}});
  openList(114);
  press(u"Ins"_s);
  fill({{u"Edit1"_s, u"G1"_s}, {u"Edit2"_s, u"青山粮油"_s}});
  EXPECT_EQ(text(u"addr_id"_s) + text(u"SEND_ID"_s), u"0101"_s);
  save();
  openList(113);
  press(u"Ins"_s);
  fill({{u"Edit1"_s, u"K1"_s}, {u"Edit2"_s, u"小王超市"_s}});
  pick(u"addr_id"_s, u"外"_s);
  pick(u"SEND_ID"_s, u"zc"_s);
  pick(u"YW_ID"_s, u"张"_s);
  save();
  openList(122);
  press(u"Ins"_s);
  fill({{u"Edit1"_s, u"01"_s}, {u"Edit2"_s, u"基本户"_s}, {u"Edit3"_s, u"6222"_s}});
  pick(u"KM_ID"_s, u"基本"_s);
  EXPECT_EQ(text(u"KM_ID"_s), u"100201"_s);
  save();

  EXPECT_TRUE(listed(103, u"DW_NAME"_s).contains(u"公斤"_s));
  EXPECT_EQ(listed(104, u"CLASS_NAME"_s), u"饼干 (0),食品 (0)"_s);
  EXPECT_EQ(listed(107, u"CK_NAME"_s), u"总仓 (0)"_s);
  EXPECT_EQ(listed(112, u"BM_NAME"_s), u"营业部"_s);
  EXPECT_EQ(listed(111, u"ADDR_NAME"_s), u"本市,外地"_s);
  EXPECT_EQ(listed(114, u"SEND_NAME"_s), u"自提"_s);
  EXPECT_EQ(listed(113, u"ADDR_NAME"_s) + listed(113, u"SEND_NAME"_s) + listed(113, u"YW_NAME"_s),
            u"外地专车张三"_s);
  EXPECT_EQ(listed(122, u"CLSNAME"_s), u"银行存款"_s);
}

TEST_F(FirstDay, WhatIsNeededFirstIsSaid) {
  openList(112);
  press(u"Ins"_s);
  fill({{u"Edit1"_s, u"1001"_s}, {u"Edit2"_s, u"张三"_s}});
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines{u"部门不能为空!"_s});
  click(u"btn_Cancel"_s);
  openList(122);
  press(u"Ins"_s);
  fill({{u"Edit1"_s, u"01"_s}, {u"Edit2"_s, u"基本户"_s}, {u"KM_ID"_s, u"1002"_s}});
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines{u"该类的科目不存在!"_s});
  click(u"btn_Cancel"_s);
}

}  // namespace
}  // namespace goodsbook
