// The quick product editors over the lines of a purchase document.
#include "products/purchase_entry.h"

#include <gtest/gtest.h>

#include <QPointer>

#include "tests/products/quick_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class PurchaseEntry : public QuickScreen {
 protected:
  // One new product with this much of it; the editor closes.
  void enter(const QString& packs, const QString& loose, const QString& price) {
    purchase(u"TF2101A_1"_s);
    type(u"Edit1"_s, u"P1"_s);
    fill();
    if (GPARAM28) type(u"dw_zh"_s, u"12"_s);
    if (GPARAM28) type(u"J"_s, packs);
    type(u"L"_s, loose);
    type(u"JJ"_s, price);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines());
  }
  QJsonObject line() {
    const QJsonArray lines = rows(u"purchase"_s);
    EXPECT_EQ(lines.size(), 1);
    return lines.isEmpty() ? QJsonObject() : lines[0].toObject();
  }
};

TEST_F(PurchaseEntry, OpensForANewProductWithTheInputsOfThePurchase) {
  set(u"GPARAM28"_s, u"1"_s);
  for (const QString& editor : {u"TF2101A_1"_s, u"TF2101A_3"_s}) {
    purchase(editor);
    EXPECT_EQ(frontClass(), editor);
    for (const QString& name :
         {u"Label13"_s, u"J"_s, u"L"_s, u"JJ"_s, u"Label10"_s, u"Label12"_s, u"dw_zh"_s, u"Edit4"_s}) {
      EXPECT_TRUE(shown(name)) << name.toStdString();
      EXPECT_TRUE(get(name)["enabled"_L1].toBool()) << name.toStdString();
    }
    EXPECT_EQ(text(u"Label13"_s), u"本次进货(件/零数/  本次进价)："_s);
    EXPECT_EQ(text(u"J"_s) + text(u"L"_s) + text(u"JJ"_s), u"000"_s);
    EXPECT_TRUE(get(u"Edit1"_s)["focused"_L1].toBool());
    EXPECT_FALSE(shown(u"BTN_CHANGE"_s));
    EXPECT_FALSE(shown(u"ContinueAdd"_s));
    EXPECT_EQ(send({{u"cmd"_s, u"get"_s}, {u"element"_s, u"PFJ1"_s}})["ok"_L1].toBool(),
              editor == "TF2101A_3"_L1);
    click(u"btn_Cancel"_s);
    EXPECT_EQ(rows(u"purchase"_s).size(), 0);
  }
}

TEST_F(PurchaseEntry, WithoutPacksOnlyQuantityAndPriceAreAsked) {
  purchase(u"TF2101A_1"_s);
  for (const QString& name : {u"Label10"_s, u"Label12"_s, u"dw_zh"_s, u"Edit4"_s, u"J"_s})
    EXPECT_FALSE(shown(name)) << name.toStdString();
  for (const QString& name : {u"Label13"_s, u"L"_s, u"JJ"_s}) EXPECT_TRUE(shown(name)) << name.toStdString();
  EXPECT_EQ(text(u"Label13"_s), u"  本次进货（数量/单价)"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(PurchaseEntry, SavingAppendsOnePostedLine) {
  purchase(u"TF2101A_1"_s);
  type(u"Edit1"_s, u"P1"_s);
  fill();
  type(u"TM"_s, u" 690 "_s);
  type(u"L"_s, u"3"_s);
  type(u"JJ"_s, u"2.50"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  const QJsonArray all = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  const QJsonObject save = all.at(all.size() - 2).toObject();
  EXPECT_EQ(save["module"_L1].toString() + save["key"_L1].toString() + save["operation"_L1].toString(),
            u"101P1Add"_s);
  EXPECT_EQ(all.last()["sql"_L1].toString(), u"select adw from D1801dw where wl_id='P1'"_s);
  const std::vector<std::pair<QString, QString>> values{
      {u"WL_ID"_s, u"P1"_s},    {u"WL_NAME"_s, u"可乐"_s},
      {u"WL_GG"_s, u"500ml"_s}, {u"DW_ID"_s, u"01"_s},
      {u"TM"_s, u" 690 "_s},    {u"DW_NAME"_s, u"瓶"_s},
      {u"DW_ZH"_s, QString()},  {u"DW_J"_s, QString()},
      {u"DW_L"_s, QString()},   {u"ADW"_s, sql(u"select adw from D1801DW"_s)[0][0]}};
  const QJsonObject added = line();
  for (const auto& [field, value] : values) EXPECT_EQ(added[field].toString(), value) << field.toStdString();
  EXPECT_EQ(added["SL"_L1].toString().toDouble(), 3);
  EXPECT_EQ(added["DJ"_L1].toString().toDouble(), 2.5);
  EXPECT_EQ(added["MONEY"_L1].toString().toDouble(), 7.5);
  EXPECT_EQ(sql(u"select TM from D1801DW"_s), (Table{{u"690"_s}}));
}

TEST_F(PurchaseEntry, PacksAndLoosePiecesAreReckonedTogether) {
  set(u"GPARAM28"_s, u"1"_s);
  enter(u"2"_s, u"5"_s, u"1.25"_s);
  const QJsonObject added = line();
  for (const auto& [field, value] : {std::pair{u"DW_ZH"_s, 12.0},
                                     {u"DW_J"_s, 2.0},
                                     {u"DW_L"_s, 5.0},
                                     {u"SL"_s, 29.0},
                                     {u"DJ"_s, 1.25},
                                     {u"MONEY"_s, 36.25}})
    EXPECT_EQ(added[field].toString().toDouble(), value) << field.toStdString();
}

TEST_F(PurchaseEntry, AmountsKeepFourDecimals) {
  set(u"G_PriceFormat"_s, u"0.0000"_s);
  enter({}, u"0.3333"_s, u"0.3333"_s);
  EXPECT_EQ(line()["MONEY"_L1].toString().toDouble(), 0.1111);
}

TEST_F(PurchaseEntry, WhatIsNoNumberEndsTheReckoning) {
  enter({}, u"3"_s, QString());
  EXPECT_EQ(line()["SL"_L1].toString().toDouble(), 3);
  EXPECT_EQ(line()["MONEY"_L1].toString() + line()["DJ"_L1].toString(), QString());
}

TEST_F(PurchaseEntry, BlankPacksLeaveTheQuantityEmpty) {
  set(u"GPARAM28"_s, u"1"_s);
  enter(QString(), u"3"_s, u"2"_s);
  const QJsonObject added = line();
  EXPECT_EQ(added["DW_ZH"_L1].toString().toDouble(), 12);
  EXPECT_EQ(added["DW_L"_L1].toString().toDouble(), 3);
  EXPECT_EQ(added["DJ"_L1].toString().toDouble(), 2);
  for (const QString& field : {u"DW_J"_s, u"SL"_s, u"MONEY"_s})
    EXPECT_EQ(added[field].toString(), QString()) << field.toStdString();
}

TEST_F(PurchaseEntry, AFailingSaveLeavesTheLinesAsTheyWere) {
  purchase(u"TF2101A_3"_s);
  type(u"Edit1"_s, u"P1"_s);
  fill();
  type(u"Edit2"_s, u"可'乐"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(frontClass(), u"TF2101A_3"_s);
  EXPECT_EQ(rows(u"purchase"_s).size(), 0);
  click(u"btn_Cancel"_s);
}

TEST_F(PurchaseEntry, NumbersAreDrawnForNewProductsHereToo) {
  set(u"GPARAM0"_s, u"1"_s);
  set(u"GPARAM2"_s, u"4"_s);
  purchase(u"TF2101A_1"_s);
  EXPECT_TRUE(get(u"TM"_s)["focused"_L1].toBool());
  fill();
  click(u"btn_ok"_s);
  EXPECT_EQ(line()["WL_ID"_L1].toString(), u"0001"_s);
}

TEST_F(PurchaseEntry, EachPurchaseHasLinesOfItsOwn) {
  enter({}, u"1"_s, u"1"_s);
  purchase(u"TF2101A_3"_s);
  EXPECT_EQ(rows(u"purchase"_s).size(), 0);
  purchase(u"TF2101A_1"_s);  // while the other one is open
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray().size(), 0);
}

TEST_F(PurchaseEntry, OnlyQuickEditorsAreOpened) {
  for (const QString& name : {u"TF2101A_2"_s, u"TF2101_1"_s, u"TF9999"_s})
    EXPECT_TRUE(refused({{u"cmd"_s, u"purchase"_s}, {u"class"_s, name}}).contains(name));
  refused({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"purchase"_s}});
}

TEST_F(PurchaseEntry, TheNextProductOfADocumentKeepsCategoryAndUnit) {
  openList();  // loads the plug-in
  RecordSet lines;
  onGui([&] { lines.create(purchaseLineFields()); });
  QPointer<TFrm_Base_Detail> editor;
  onGui([&] {
    editor = createQuickEditor(quickEditorClass, driver().owner());
    editor->SetStatus(lines);
  });
  for (const QString& number : {u"P1"_s, u"P2"_s}) {
    type(u"Edit1"_s, number);
    type(u"Edit2"_s, u"可乐"_s);
    if (number == "P1"_L1) type(u"CLASS_ID"_s, u"01"_s);
    if (number == "P1"_L1) type(u"dw_id"_s, u"02"_s);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines());
    onGui([&] { editor->SetStatus(lines); });
    EXPECT_EQ(text(u"CLASS_ID"_s) + text(u"CLASS_NAME"_s) + text(u"dw_id"_s) + text(u"DW_NAME"_s),
              u"01饮料02箱"_s);
    EXPECT_EQ(text(u"Edit2"_s), QString());
  }
  click(u"btn_Cancel"_s);
  onGui([&] {
    EXPECT_EQ(lines.rowCount(), 2);
    EXPECT_EQ(lines.textAt(1, lines.fieldIndex(u"WL_ID"_s)), u"P2"_s);
    EXPECT_EQ(lines.state(), RecordSet::State::Browse);
    delete editor;
    lines.close();
  });
}

TEST_F(PurchaseEntry, ThePromptIsThereForOtherModulesToo) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  openList();
  onGui([&] {
    const std::unique_ptr<TFrm_Base_Dialog> prompt(createBarcodePrompt(driver().owner()));
    ASSERT_TRUE(prompt);
    EXPECT_FALSE(isKnownBarcode(*prompt, u"6902"_s));
    EXPECT_TRUE(isKnownBarcode(*prompt, u"6901"_s));
    EXPECT_EQ(prompt->AdoQry_Tmp.text(u"WL_NAME"_s), u"可乐"_s);
  });
}

TEST_F(PurchaseEntry, LinesWithoutAFieldThatIsNeededAreRefused) {
  for (const bool withPacks : {true, false}) {
    set(u"GPARAM28"_s, withPacks ? u"1"_s : u"0"_s);
    openList();
    onGui([&] {
      std::vector<Field> fields = purchaseLineFields(withPacks);
      fields.pop_back();
      RecordSet lines;
      lines.create(fields);
      const std::unique_ptr<TFrm_Base_Detail> editor(createQuickEditor(quickEditorClass, driver().owner()));
      EXPECT_THROW(editor->SetStatus(lines), std::invalid_argument);
      EXPECT_FALSE(editor->isVisible());
    });
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(PurchaseEntry, WithoutPacksTheLinesNeedNoFieldsForThem) {
  openList();
  RecordSet lines;
  QPointer<TFrm_Base_Detail> editor;
  onGui([&] {
    lines.create(purchaseLineFields(false));
    editor = createQuickEditor(quickEditorClass, driver().owner());
    editor->SetStatus(lines);
  });
  type(u"Edit1"_s, u"P1"_s);
  fill();
  type(u"L"_s, u"3"_s);
  type(u"JJ"_s, u"2.5"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  onGui([&] {
    EXPECT_EQ(lines.rowCount(), 1);
    EXPECT_EQ(lines.number(u"MONEY"_s), 7.5);
    delete editor;
    lines.close();
  });
}

TEST_F(PurchaseEntry, TheRowOfReferencePricesMakesTheForm44PixelsTaller) {
  int heights[2] = {};
  for (const int i : {0, 1}) {
    purchase(i == 0 ? quickEditorClass : quickEditorWithReferencePricesClass);
    onGui([&] { heights[i] = driver().addressing().foremost()->height(); });
    click(u"btn_Cancel"_s);
  }
  EXPECT_EQ(heights[1] - heights[0], 44);
}

}  // namespace
}  // namespace goodsbook
