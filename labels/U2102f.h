#pragma once

#include <QPointer>

#include "host/controls/TDBGridEh.h"
#include "host/forms/Sys_filter.h"

namespace goodsbook {

// Hang tags: fills the set of labels from the latest purchase receipts or for a single product.
class TF2102F : public TFrm_Sys_Filter {
  Q_OBJECT

 public:
  explicit TF2102F(QWidget* owner = nullptr);
  void InitA(RecordSet& labels) { labels_ = &labels; }  // not owned

 protected:
  void FormKeyDown(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  QString helpText() const override;

 private:
  void buildSingle();
  void buildReceipts();
  QWidget* defaultCount();
  void openHeads(const QString& condition);
  void openLines();
  void btn_refClick();
  void BTN_1Click();   // labels for the single product
  void BTN_TMClick();  // labels for the receipt's lines
  void Edit1Exit();
  void CB1Click();
  void Act_DeleteExecute();
  void Button1Click();
  void DBGridEhKeyPress(QKeyEvent* event);
  void setCountOfAll(int count);
  void finishTyping();
  void Label6DblClick();

  RecordSet AdoQry_Main;  // receipts; the lines of the current one are in AdoQry_Tmp
  RecordSet single_;      // the product typed
  RecordSet* labels_ = nullptr;
  TDBGridEh* DBGridEh1 = nullptr;
  TDBGridEh* DBGridEh = nullptr;
  bool opening_ = false;  // the receipts are being read: their lines come once, afterwards
};

extern QPointer<TF2102F> F2102F;  // the label list's dialog

}  // namespace goodsbook
