#include <cmath>
#include <optional>
#include <tuple>

#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/Zpy.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "products/quick_editor.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// Quantities, prices and amounts are reckoned in ten-thousandths. Nothing for a text that is no number.
struct Currency {
  long double units = 0;

  static std::optional<Currency> of(const QString& text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber) return std::nullopt;
    return Currency{std::round(static_cast<long double>(value) * perUnit)};
  }
  Currency operator+(Currency other) const { return {units + other.units}; }
  Currency operator*(Currency other) const { return {std::round(units * other.units / perUnit)}; }
  double value() const { return static_cast<double>(units / perUnit); }

 private:
  static constexpr long double perUnit = 10'000;
};

}  // namespace

void QuickProductEditor::SaveData() {
  checkCodes();
  checkPrices();
  drawNumber();
  const bool takesCode = text(u"TM"_s).isEmpty();
  takeCodeAsBarcode();
  try {
    refuseWithdrawnNegativeStock(tr("该商品当前库存为负库存,不能取消该商品的负库存状态!"));
    ExecSql(moduleCode_, text(u"Edit1"_s), mode(), headerStatements() + unitStatement() + stockStatement(),
            65535, false, true, false, true);
  } catch (...) {
    if (takesCode) setText(u"TM"_s, {});  // the next try may draw another number
    throw;
  }
}

void QuickProductEditor::takeCodeAsBarcode() {
  if (!GKH1 && text(u"TM"_s).isEmpty()) setText(u"TM"_s, text(u"Edit1"_s));
}

void QuickProductEditor::showSaved() {
  takeCodeAsBarcode();  // a save whose answer was lost has given it back
  if (fromDocument_) {
    appendPurchaseLine();
  } else {
    writeBack();
  }
}

// A copied product may bring codes that were deleted meanwhile; lists would not show it.
void QuickProductEditor::checkCodes() {
  for (const QString& name : {u"CLASS_ID"_s, u"dw_id"_s}) {
    if (!text(name).trimmed().isEmpty()) CheckId(edit(name));
  }
}

// Prices of a new product go into its statement as numbers. A copied product may lack some, and fields that
// were never left have not been checked.
void QuickProductEditor::checkPrices() {
  if (isAdding()) vipsjExit();
  QStringList prices{u"SJ"_s, u"vipsj"_s, u"PFJ"_s, u"CGJ"_s};
  if (hasReferencePrices_) prices << u"PFJ1"_s << u"PFJ2"_s << u"PFJ3"_s << u"PFJ4"_s;
  for (const QString& name : prices) {
    if (isAdding() || !text(name).isEmpty()) CheckFloat(edit(name));
  }
}

void QuickProductEditor::drawNumber() {
  if (!GPARAM0 || mode() == "Edit"_L1) return;
  setText(u"Edit1"_s, {});
  Edit1Exit();
  // Numbers by category need one: nothing is saved without a number.
  if (text(u"Edit1"_s).isEmpty()) CheckBlank(edit(u"CLASS_ID"_s));
}

QString QuickProductEditor::headerStatements() const {
  const QString number = text(u"Edit1"_s);
  const QString name = text(u"Edit2"_s);
  const QString flags = text(u"YS"_s) + u"',CHECK_KC='"_s + text(u"check_kc"_s);
  if (isAdding()) {
    return u"insert into D1801 (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, DJ,MONEY,KC,  USER_ID, BDATE, T, NOTE,cd,PYM,DW_ZH,DW_J_NAME)  ValueS('"_s +
           number.trimmed() + u"','"_s + name + u"','"_s + text(u"Edit3"_s) + u"','"_s + text(u"YS"_s) +
           u"','"_s + text(u"check_kc"_s) + u"','"_s + text(u"CLASS_ID"_s) + u"',0,0,0,'"_s + G_UserId +
           u"',GETDATE(),1,'"_s + text(u"NOTE"_s) + u"','"_s + text(u"CD"_s) + u"','"_s + Zpy::GetPY(name) +
           u"','"_s + text(u"dw_zh"_s) + u"','"_s + text(u"Edit4"_s) + u"');"_s;
  }
  return u"UPDATE D1801 set WL_NAME='"_s + name + u"',WL_GG='"_s + text(u"Edit3"_s) + u"',WL_YS='"_s + flags +
         u"',CLASS_ID='"_s + text(u"CLASS_ID"_s) + u"',NOTE='"_s + text(u"NOTE"_s) + u"',cd='"_s +
         text(u"CD"_s) + u"',DW_ZH='"_s + text(u"dw_zh"_s) + u"',DW_J_NAME='"_s + text(u"Edit4"_s) +
         u"',USER_ID='"_s + G_UserId + u"',pym='"_s + Zpy::GetPY(name) +
         u"',EDATE=GETDATE() where WL_ID='"_s + number + u"';"_s + historyStatement(number);
}

QString QuickProductEditor::referencePrices(const QString& form) const {
  QString all;
  if (!hasReferencePrices_) return all;
  for (const QString& name : {u"PFJ1"_s, u"PFJ2"_s, u"PFJ3"_s, u"PFJ4"_s}) {
    QString one = form;
    all += one.replace(u"{name}"_s, name.toLower()).replace(u"{text}"_s, text(name));
  }
  return all;
}

QString QuickProductEditor::unitStatement() const {
  const QString barcode = text(u"TM"_s).trimmed();
  if (isAdding()) {
    return u"insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,"_s + referencePrices(u"{name},"_s) +
           u"cgj) values (1,'"_s + text(u"Edit1"_s) + u"','"_s + text(u"dw_id"_s) + u"','"_s + barcode +
           u"',1,"_s + text(u"SJ"_s) + u',' + text(u"vipsj"_s) + u',' + text(u"PFJ"_s) +
           referencePrices(u",{text}"_s) + u',' + text(u"CGJ"_s) + u");"_s;
  }
  return u"update d1801dw set dw_id='"_s + text(u"dw_id"_s) + u"',tm='"_s + barcode + u"',pfj='"_s +
         text(u"PFJ"_s) + referencePrices(u"',{name}='{text}"_s) + u"',sj='"_s + text(u"SJ"_s) +
         u"',vipsj='"_s + text(u"vipsj"_s) + u"',cgj='"_s + text(u"CGJ"_s) + u"' where t=1 and wl_id='"_s +
         text(u"Edit1"_s) + u"';"_s;
}

void QuickProductEditor::appendPurchaseLine() {
  opensql(AdoQry_Tmp, moduleCode_, u"select adw from D1801dw where wl_id='"_s + text(u"Edit1"_s) + u'\'');
  RecordSet& lines = listRows();
  lines.setSort({}, false);
  lines.append();
  for (const auto& [field, element] : {std::pair{u"WL_ID"_s, u"Edit1"_s},
                                       {u"WL_NAME"_s, u"Edit2"_s},
                                       {u"WL_GG"_s, u"Edit3"_s},
                                       {u"dw_id"_s, u"dw_id"_s},
                                       {u"tm"_s, u"TM"_s},
                                       {u"DW_NAME"_s, u"DW_NAME"_s}}) {
    lines.setValue(field, text(element));
  }
  if (!AdoQry_Tmp.isEmpty()) lines.setValue(u"adw"_s, AdoQry_Tmp.value(u"adw"_s));
  reckonPurchase();
  lines.post();
}

// An input that is no number ends the reckoning; the line keeps what it has by then. A blank one leaves its
// field empty and ends it where it would be reckoned with.
void QuickProductEditor::reckonPurchase() {
  RecordSet& lines = listRows();
  const auto price = Currency::of(text(u"JJ"_s));
  if (price) lines.setValue(u"DJ"_s, text(u"JJ"_s));
  std::optional<Currency> quantity = Currency::of(text(u"L"_s));
  if (GPARAM28) {
    const auto rate = Currency::of(text(u"dw_zh"_s));
    const auto packs = Currency::of(text(u"J"_s));
    const auto loose = quantity;
    for (const auto& [field, element, amount] :
         {std::tuple{u"DW_zh"_s, u"dw_zh"_s, rate}, {u"dw_j"_s, u"J"_s, packs}, {u"dw_l"_s, u"L"_s, loose}}) {
      if (!amount && !text(element).trimmed().isEmpty()) return;
      lines.setValue(field, amount ? QVariant(amount->value()) : QVariant());
    }
    if (!rate || !packs || !loose) return;
    quantity = *packs * *rate + *loose;
  }
  if (!quantity) return;
  lines.setValue(u"sl"_s, quantity->value());
  if (price) lines.setValue(u"money"_s, (*quantity * *price).value());
}

void QuickProductEditor::writeBack() {
  RecordSet& row = listRows();
  storeHeader();
  for (const auto& [field, element] : {std::pair{u"dw_id"_s, u"dw_id"_s},
                                       {u"DW_NAME"_s, u"DW_NAME"_s},
                                       {u"TM"_s, u"TM"_s},
                                       // Not shown, but what the row is edited from the next time.
                                       {u"DW_J_NAME"_s, u"Edit4"_s}}) {
    row.setValue(field, text(element));
  }
  for (const auto& [field, element] : {std::pair{u"SJ"_s, u"SJ"_s},
                                       {u"vipSJ"_s, u"vipsj"_s},
                                       {u"CGJ"_s, u"CGJ"_s},
                                       {u"pfj"_s, u"PFJ"_s},
                                       {u"DW_zh"_s, u"dw_zh"_s}}) {
    row.setValue(field, savedNumber(element));
  }
  if (hasReferencePrices_) {
    for (const QString& name : {u"PFJ1"_s, u"PFJ2"_s, u"PFJ3"_s, u"PFJ4"_s})
      row.setValue(name, savedNumber(name));
  }
  row.post();
}

}  // namespace goodsbook
