// The quick product editors as editors of the list: fields, filling, leaving a field, keys.
#include <gtest/gtest.h>

#include "tests/products/quick_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class QuickEditor : public QuickScreen {};

TEST_F(QuickEditor, TheListChoosesItsEditorByTheSetting) {
  product(u"P1"_s, u"可乐"_s);
  const std::vector<std::pair<QString, QString>> editors{{u"0"_s, u"TF2101A_1"_s},
                                                         {u"1"_s, u"TF2101_1"_s},
                                                         {u"2"_s, u"TF2101A_3"_s},
                                                         {QString(), u"TF2101A_3"_s}};
  for (const auto& [setting, editor] : editors) {
    set(u"GPARAM23"_s, setting);
    openList();
    for (const QString& action : {u"Act_Add"_s, u"Act_Edit"_s}) {
      act(action);
      EXPECT_EQ(frontClass(), editor) << action.toStdString();
      EXPECT_EQ(caption(), u"商品基本资料"_s);
      click(u"btn_Cancel"_s);
    }
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(QuickEditor, LabelsAndLimits) {
  set(u"GPARAM28"_s, u"1"_s);
  set(u"GPARAM23"_s, u"2"_s);
  openList();
  act(u"Act_Add"_s);
  const std::vector<std::tuple<QString, QString, int>> fields{
      {u"Edit1"_s, u"商品编号"_s, 20}, {u"TM"_s, u"条    码"_s, 30},  {u"Edit2"_s, u"商品名称"_s, 80},
      {u"Edit3"_s, u"规    格"_s, 40}, {u"CD"_s, u"产    地"_s, 50},  {u"CLASS_ID"_s, u"商品分类"_s, 4},
      {u"dw_id"_s, u"单    位"_s, 2},  {u"Edit4"_s, u"大单位"_s, 10}, {u"NOTE"_s, u"备    注"_s, 100}};
  for (const auto& [name, label, limit] : fields) {
    EXPECT_EQ(get(name)["title"_L1].toString(), label);
    EXPECT_EQ(get(name)["maxlength"_L1].toInt(), limit) << name.toStdString();
  }
  const std::vector<std::pair<QString, QString>> labels{
      {u"dw_zh"_s, u"转换率"_s},    {u"SJ"_s, u"零售价"_s},           {u"vipsj"_s, u"会员价"_s},
      {u"PFJ"_s, u"批发价"_s},      {u"CGJ"_s, u"采 购 价"_s},        {u"JJJJ"_s, u"最近进价"_s},
      {u"DJ"_s, u"加权价"_s},       {u"user_name"_s, u"登录用户:"_s}, {u"BDATE"_s, u"登录时间:"_s},
      {u"EDATE"_s, u"最后更改:"_s}, {u"PFJ1"_s, u"参考售价(1-4)"_s}};
  for (const auto& [name, label] : labels) EXPECT_EQ(get(name)["title"_L1].toString(), label);
  const std::vector<std::pair<QString, QString>> texts{{u"YS"_s, u"有效"_s},
                                                       {u"check_kc"_s, u"允许该商品为负库存"_s},
                                                       {u"Label13"_s, u"本次进货(件/零数/  本次进价)："_s},
                                                       {u"Label14"_s, u"批发价"_s},
                                                       {u"Label15"_s, u"参考售价(1-4)"_s},
                                                       {u"BTN_CHANGE"_s, u"更改记录(F11)"_s}};
  for (const auto& [name, shownText] : texts) EXPECT_EQ(text(name), shownText);
  EXPECT_EQ(type(u"Edit1"_s, u"ab1"_s), u"AB1"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, TheInputsOfAPurchaseAreHiddenInTheList) {
  openList();
  act(u"Act_Add"_s);
  for (const QString& name : {u"Label13"_s, u"J"_s, u"L"_s, u"JJ"_s})
    EXPECT_FALSE(shown(name)) << name.toStdString();
  for (const QString& name : {u"J"_s, u"L"_s, u"JJ"_s}) EXPECT_FALSE(get(name)["enabled"_L1].toBool());
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, LargeUnitsAreShownWhenPacksAreInUse) {
  for (const bool packs : {false, true}) {
    set(u"GPARAM28"_s, packs ? u"1"_s : u"0"_s);
    openList();
    act(u"Act_Add"_s);
    for (const QString& name : {u"Label10"_s, u"Label12"_s, u"dw_zh"_s, u"Edit4"_s})
      EXPECT_EQ(shown(name), packs) << name.toStdString();
    EXPECT_EQ(text(u"Label13"_s), packs ? u"本次进货(件/零数/  本次进价)："_s : u"  本次进货（数量/单价)"_s);
    click(u"btn_Cancel"_s);
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(QuickEditor, TheWholesalePriceIsShownWhereTheShopUsesIt) {
  for (const bool uses : {false, true}) {
    set(u"GPARAM26"_s, uses ? u"PFJ"_s : u"无"_s);
    set(u"GPARAM23"_s, u"2"_s);
    openList();
    act(u"Act_Add"_s);
    EXPECT_EQ(shown(u"PFJ"_s), uses);
    EXPECT_EQ(shown(u"Label14"_s), uses);
    for (const QString& name : {u"PFJ1"_s, u"PFJ2"_s, u"PFJ3"_s, u"PFJ4"_s}) EXPECT_TRUE(shown(name));
    click(u"btn_Cancel"_s);
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(QuickEditor, PricesFollowThePriceFormat) {
  set(u"G_PriceFormat"_s, u"0.000"_s);
  set(u"GPARAM23"_s, u"2"_s);
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  for (const auto& [name, shownText] : {std::pair{u"SJ"_s, u"5.000"_s},
                                        {u"vipsj"_s, u"4.000"_s},
                                        {u"PFJ"_s, u"3.000"_s},
                                        {u"CGJ"_s, u"2.500"_s}})
    EXPECT_EQ(text(name), shownText);
  for (const QString& name : {u"SJ"_s, u"vipsj"_s, u"PFJ"_s, u"CGJ"_s, u"PFJ4"_s})
    EXPECT_EQ(type(name, u"1.23456"_s), u"1.234"_s) << name.toStdString();
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, AddStartsWithDefaults) {
  set(u"GPARAM23"_s, u"2"_s);
  openList();
  act(u"Act_Add"_s);
  EXPECT_TRUE(get(u"Edit1"_s)["focused"_L1].toBool());
  for (const QString& name : {u"Edit1"_s, u"TM"_s, u"Edit2"_s, u"Edit3"_s, u"CD"_s, u"CLASS_ID"_s,
                              u"CLASS_NAME"_s, u"dw_id"_s, u"DW_NAME"_s, u"NOTE"_s, u"JJJJ"_s, u"EDATE"_s})
    EXPECT_EQ(text(name), QString()) << name.toStdString();
  for (const QString& name : {u"SJ"_s, u"vipsj"_s, u"PFJ"_s, u"CGJ"_s, u"DJ"_s, u"PFJ1"_s, u"PFJ2"_s,
                              u"PFJ3"_s, u"PFJ4"_s, u"J"_s, u"L"_s, u"JJ"_s})
    EXPECT_EQ(text(name), u"0"_s) << name.toStdString();
  EXPECT_EQ(text(u"dw_zh"_s), u"1"_s);
  EXPECT_TRUE(get(u"YS"_s)["checked"_L1].toBool());
  EXPECT_TRUE(get(u"check_kc"_s)["checked"_L1].toBool());
  EXPECT_EQ(text(u"user_name"_s), u"系统管理员"_s);
  EXPECT_EQ(text(u"BDATE"_s), u"2026-11-20 10:11:12 "_s);
  EXPECT_FALSE(shown(u"BTN_CHANGE"_s));
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, TheNextProductStartsFromTheNumberBefore) {
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"P1"_s);
  fill();
  click(u"btn_ok"_s);
  act(u"Act_Add"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"P1"_s);
  EXPECT_EQ(text(u"Edit2"_s) + text(u"CLASS_ID"_s) + text(u"dw_id"_s) + text(u"DW_NAME"_s), QString());
  EXPECT_EQ(messages(), Lines());
  focus(u"TM"_s);
  EXPECT_EQ(messages(), Lines{u"商品编号已登记!"_s});
  EXPECT_TRUE(get(u"Edit1"_s)["focused"_L1].toBool());
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, EditShowsTheProduct) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"update D1801 set EDATE='2026-11-05 08:00',DW_ZH=12,DW_J_NAME='箱';update D1801DW set PFJ1=1,PFJ2=2,PFJ3=3,PFJ4=4"_s);
  set(u"GPARAM28"_s, u"1"_s);
  set(u"GPARAM23"_s, u"2"_s);
  openList();
  act(u"Act_Edit"_s);
  EXPECT_TRUE(get(u"TM"_s)["focused"_L1].toBool());
  EXPECT_TRUE(get(u"Edit1"_s)["readonly"_L1].toBool());
  EXPECT_TRUE(shown(u"BTN_CHANGE"_s));
  const std::vector<std::pair<QString, QString>> values{{u"Edit1"_s, u"P1"_s},
                                                        {u"TM"_s, u"69"_s},
                                                        {u"Edit2"_s, u"可乐"_s},
                                                        {u"Edit3"_s, u"500ml"_s},
                                                        {u"CD"_s, u"上海"_s},
                                                        {u"CLASS_ID"_s, u"01"_s},
                                                        {u"CLASS_NAME"_s, u"饮料"_s},
                                                        {u"dw_id"_s, u"01"_s},
                                                        {u"DW_NAME"_s, u"瓶"_s},
                                                        {u"dw_zh"_s, u"12.00"_s},
                                                        {u"Edit4"_s, u"箱"_s},
                                                        {u"SJ"_s, u"5.00"_s},
                                                        {u"vipsj"_s, u"4.00"_s},
                                                        {u"PFJ"_s, u"3.00"_s},
                                                        {u"PFJ1"_s, u"1.00"_s},
                                                        {u"PFJ2"_s, u"2.00"_s},
                                                        {u"PFJ3"_s, u"3.00"_s},
                                                        {u"PFJ4"_s, u"4.00"_s},
                                                        {u"CGJ"_s, u"2.50"_s},
                                                        {u"NOTE"_s, u"注"_s},
                                                        {u"user_name"_s, u"系统管理员"_s},
                                                        {u"BDATE"_s, u"2026-11-01"_s},
                                                        {u"EDATE"_s, u"2026-11-05"_s},
                                                        {u"JJJJ"_s, QString()}};
  for (const auto& [name, value] : values) EXPECT_EQ(text(name), value) << name.toStdString();
  EXPECT_EQ(text(u"DJ"_s).toDouble(), 2);
  EXPECT_EQ(
      statements().back(),
      u"SELECT TOP 1 D8202A.DJ FROM D8202A INNER JOIN D8202 ON D8202A.NOID = D8202.NOID WHERE D8202A.WL_ID = 'P1' ORDER BY D8202.BDATE DESC"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, TheLatestPurchasePriceIsShownToThoseWhoMaySeeCosts) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"insert into D8202 (noid,bdate) values ('R1','2026-10-01');insert into D8202 (noid,bdate) values ('R2','2026-11-01');"
      "insert into D8202A (noid,wl_id,dj) values ('R2','P1',2.75);insert into D8202A (noid,wl_id,dj) values ('R1','P1',1.5)"_s);
  openList();
  act(u"Act_View"_s);
  EXPECT_EQ(text(u"JJJJ"_s), u"2.75"_s);
  click(u"btn_Cancel"_s);
  done({{u"cmd"_s, u"close"_s}});
  openList({{u"cost"_s, false}});
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"JJJJ"_s), u"无权查看"_s);
  EXPECT_EQ(statements().size(), 0U);
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, ACopyKeepsTheNumberUnlessNumbersAreAutomatic) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"update D1801 set EDATE='2026-11-05'"_s);
  openList();
  act(u"Act_CopyAdd"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"P1"_s);
  EXPECT_TRUE(get(u"Edit1"_s)["focused"_L1].toBool());
  EXPECT_EQ(text(u"DJ"_s), u"0"_s);
  EXPECT_EQ(text(u"EDATE"_s), QString());
  EXPECT_EQ(text(u"BDATE"_s), u"2026-11-01"_s);
  EXPECT_FALSE(shown(u"BTN_CHANGE"_s));
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"商品编号已登记!"_s});
  click(u"btn_Cancel"_s);
  set(u"GPARAM0"_s, u"1"_s);
  act(u"Act_CopyAdd"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"自动编号"_s);
  EXPECT_FALSE(get(u"Edit1"_s)["enabled"_L1].toBool());
  EXPECT_TRUE(get(u"TM"_s)["focused"_L1].toBool());
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, ReadOnlyChangesNothing) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_View"_s);
  EXPECT_TRUE(shown(u"BTN_CHANGE"_s));
  for (const QString& name : {u"Edit1"_s, u"TM"_s, u"Edit2"_s, u"SJ"_s, u"NOTE"_s})
    EXPECT_TRUE(get(name)["readonly"_L1].toBool()) << name.toStdString();
  for (const QString& name : {u"YS"_s, u"check_kc"_s}) EXPECT_FALSE(get(name)["enabled"_L1].toBool());
  EXPECT_FALSE(shown(u"btn_ok"_s));
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, TheNumberIsCheckedOnLeavingItButNotTowardsCancel) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, QString());
  focus(u"Edit2"_s);
  EXPECT_EQ(messages().size(), 1U);  // blank
  type(u"Edit1"_s, u"A'B"_s);
  focus(u"Edit2"_s);
  EXPECT_EQ(messages().size(), 1U);  // a quote
  EXPECT_EQ(statements(), Lines());
  type(u"Edit1"_s, u"p1"_s);
  focus(u"Edit2"_s);
  EXPECT_EQ(messages(), Lines{u"商品编号已登记!"_s});
  EXPECT_EQ(statements(), Lines{u"select wl_id from D1801 where wl_id='P1'"_s});
  EXPECT_TRUE(get(u"Edit1"_s)["focused"_L1].toBool());
  click(u"btn_Cancel"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(frontClass(), u"TF2101"_s);
}

TEST_F(QuickEditor, FieldsThatAreLeftAreChecked) {
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"P1"_s);
  for (const auto& [name, typed] : {std::pair{u"Edit2"_s, QString()},
                                    {u"CLASS_ID"_s, u"99"_s},
                                    {u"dw_id"_s, u"99"_s},
                                    {u"SJ"_s, QString()},
                                    {u"CGJ"_s, u"-"_s}}) {
    type(name, typed);
    focus(u"NOTE"_s);
    EXPECT_EQ(messages().size(), 1U) << name.toStdString();
    EXPECT_TRUE(get(name)["focused"_L1].toBool()) << name.toStdString();
    type(name, name == "Edit2"_L1                                     ? u"可乐"_s
               : name.startsWith("SJ"_L1) || name.startsWith("CG"_L1) ? u"0"_s
                                                                      : u"01"_s);
  }
  focus(u"NOTE"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(text(u"CLASS_NAME"_s) + text(u"DW_NAME"_s), u"饮料瓶"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, EmptyMemberAndWholesalePricesTakeTheRetailPrice) {
  set(u"GPARAM23"_s, u"2"_s);
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"P1"_s);
  type(u"SJ"_s, u"5.5"_s);
  for (const QString& name : {u"PFJ1"_s, u"PFJ"_s, u"vipsj"_s}) type(name, QString());
  EXPECT_EQ(text(u"PFJ"_s), u"5.5"_s);  // filled on leaving it for vipsj
  EXPECT_EQ(text(u"vipsj"_s), QString());
  type(u"PFJ4"_s, QString());
  EXPECT_EQ(text(u"vipsj"_s), u"5.5"_s);
  focus(u"NOTE"_s);
  EXPECT_EQ(text(u"PFJ1"_s) + text(u"PFJ4"_s), QString());
  type(u"vipsj"_s, QString());
  click(u"btn_Cancel"_s);
  EXPECT_EQ(text(u"DBGridEh"_s), QString());
}

TEST_F(QuickEditor, F11ShowsTheHistory) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  type(u"Edit2"_s, u"雪碧"_s);
  click(u"btn_ok"_s);
  act(u"Act_View"_s);
  press(u"F11"_s);
  EXPECT_EQ(frontClass(), u"TF2101_2"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["WL_NAME"_L1].toString(), u"雪碧"_s);
  press(u"Esc"_s);
  click(u"BTN_CHANGE"_s);
  EXPECT_EQ(frontClass(), u"TF2101_2"_s);
  press(u"Esc"_s);
  click(u"btn_Cancel"_s);
  act(u"Act_Add"_s);
  press(u"F11"_s);
  EXPECT_EQ(messages(), Lines{u"【增加】的状态下无更改记录,您应该在【修改/查看】状态下浏览更改记录!"_s});
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditor, EscClosesAPickerFirst) {
  openList();
  act(u"Act_Add"_s);
  for (const auto& [field, picker] :
       {std::pair{u"CLASS_ID"_s, u"TFrm_Sys_LINK_CL"_s}, {u"dw_id"_s, u"TFrm_Sys_LINK_DW"_s}}) {
    type(u"Edit1"_s, u"P1"_s);
    click(field + u".button"_s);
    EXPECT_EQ(frontClass(), picker);
    press(u"Return"_s);
    EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
    EXPECT_EQ(text(field), u"01"_s);
    click(field + u".button"_s);
    press(u"Esc"_s);
    EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  }
  EXPECT_EQ(text(u"CLASS_NAME"_s) + text(u"DW_NAME"_s), u"饮料瓶"_s);
  answer({u"n"_s});
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2101"_s);
}

}  // namespace
}  // namespace goodsbook
