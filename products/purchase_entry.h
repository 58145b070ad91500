#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "host/data/record_set.h"
#include "host/forms/Base_detail.h"
#include "host/forms/Base_dialog.h"
#include "host/published_screens.h"

// For other modules: making a product while a purchase is entered. This header is all that such a module
// includes of the products; it links the host library and nothing of this plug-in. examples/purchase shows it
// in use.
namespace goodsbook {

// The two quick editors: retail, member and wholesale price; and the same with four reference selling prices.
inline const QString quickEditorClass = QStringLiteral("TF2101A_1");
inline const QString quickEditorWithReferencePricesClass = QStringLiteral("TF2101A_3");

// The fields that the lines of a purchase must have for a quick editor to append to them; a document adds its
// own. The last three are only filled, and only needed, with packs in use (GPARAM28).
inline std::vector<Field> purchaseLineFields(bool withPacks = true) {
  const auto text = [](const char* name, int size) {
    return Field{QString::fromLatin1(name), FieldType::Text, size, {}, {}};
  };
  const auto number = [](const char* name, FieldType type) {
    return Field{QString::fromLatin1(name), type, 0, {}, {}};
  };
  std::vector<Field> fields{
      text("WL_ID", 20),  // product number, name, specification
      text("WL_NAME", 80),
      text("WL_GG", 40),
      text("DW_ID", 2),  // unit: code, name, barcode, number of the product's unit row
      text("DW_NAME", 6),
      text("TM", 30),
      number("ADW", FieldType::Integer),
      number("SL", FieldType::Float),  // quantity, unit price, amount
      number("DJ", FieldType::Float),
      number("MONEY", FieldType::Float),
  };
  if (withPacks) {  // pieces in a pack, packs, loose pieces
    for (const char* name : {"DW_ZH", "DW_J", "DW_L"}) fields.push_back(number(name, FieldType::Float));
  }
  return fields;
}

// Makes a quick editor owned by `owner`; null when the plug-in with the products is not loaded.
//
//   editor->SetStatus(lines);
//
// then opens it in "Add" over the document's lines, shown modally, and returns at once. Each product that the
// user saves appends one posted line to `lines`, which must outlive the editor's being open. Calling it again
// on the same editor enters the next product and keeps category and unit.
inline TFrm_Base_Detail* createQuickEditor(const QString& className, QWidget* owner) {
  return qobject_cast<TFrm_Base_Detail*>(createPublished(className, owner));
}

// The prompt that lists where a barcode is known already: other products, and the offline barcode library.
// Made once and used again; null as above.
inline TFrm_Base_Dialog* createBarcodePrompt(QWidget* owner) {
  return qobject_cast<TFrm_Base_Dialog*>(createPublished(QStringLiteral("TF2101A_2"), owner));
}

// Fills the prompt for a barcode; true when it is known, and the prompt worth showing. After exec() with
// result 1 the current row of its AdoQry_Tmp is what the user took: WL_NAME, WL_GG, CD, DW_NAME.
inline bool isKnownBarcode(TFrm_Base_Dialog& prompt, const QString& barcode) {
  QMetaObject::invokeMethod(&prompt, "init", Q_ARG(QString, barcode));
  return !prompt.AdoQry_Tmp.isEmpty();
}

}  // namespace goodsbook
