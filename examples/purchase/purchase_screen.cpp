#include "examples/purchase/purchase_screen.h"

#include <QKeyEvent>
#include <QPushButton>

#include "host/U_function.h"
#include "host/forms/form_builder.h"
#include "products/purchase_entry.h"

using namespace Qt::StringLiterals;
using goodsbook::Field;

namespace example {

PurchaseScreen::PurchaseScreen(QWidget* owner)
    : TFrm_Base_Dialog(owner), grid_(new goodsbook::TDBGridEh(body())) {
  setWindowTitle(tr("采购入库"));
  resize(760, 420);

  // The fields that a quick editor fills, and what else this document keeps.
  std::vector<Field> fields = goodsbook::purchaseLineFields();
  fields.push_back({u"NOTE"_s, goodsbook::FieldType::Text, 100, {}, {}});
  lines_.create(fields);
  lines_.setObjectName(u"lines"_s);

  grid_->setObjectName(u"DBGridEh"_s);
  grid_->setColumns({{.field = u"WL_ID"_s, .title = tr("商品编号"), .width = 90},
                     {.field = u"TM"_s, .title = tr("条码"), .width = 110},
                     {.field = u"WL_NAME"_s, .title = tr("商品名称"), .width = 200},
                     {.field = u"WL_GG"_s, .title = tr("规格"), .width = 70},
                     {.field = u"DW_NAME"_s, .title = tr("单位"), .width = 50},
                     {.field = u"SL"_s, .title = tr("数量"), .width = 60, .sum = true},
                     {.field = u"DJ"_s, .title = tr("单价"), .width = 60},
                     {.field = u"MONEY"_s, .title = tr("金额"), .width = 80, .sum = true}});
  grid_->setReadOnly(true);
  grid_->setRowNumbers(true);
  grid_->setFooterVisible(true);
  grid_->setEmptyText(tr("按 F2 增加新商品"));
  grid_->setRecordSet(&lines_);
  goodsbook::FormBuilder(*this).wide(grid_, 1);

  auto* newProductButton = makeButton(u"btn_New"_s, tr("新商品(F2)"));
  buttonRow()->insertWidget(0, newProductButton);
  onClick(newProductButton, [this] { newProduct(); });
  FormCreate();
}

void PurchaseScreen::newProduct() {
  // Made once: the next product starts with the category and the unit of the one before.
  if (!editor_) editor_ = goodsbook::createQuickEditor(goodsbook::quickEditorClass, this);
  if (!editor_) {
    goodsbook::DISPINFO(tr("商品模块没有装入!"), 5);
    return;
  }
  editor_->SetStatus(lines_);
}

void PurchaseScreen::FormKeyDown(QKeyEvent* event) {
  if (event->key() == Qt::Key_F2) {
    event->accept();
    newProduct();
    return;
  }
  TFrm_Base_Dialog::FormKeyDown(event);
}

}  // namespace example
