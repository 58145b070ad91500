#pragma once

#include "host/barcodes/barcode_library.h"
#include "host/controls/TDBGridEh.h"
#include "host/forms/Base_dialog.h"
#include "products/published.h"

namespace goodsbook {

class LinkLabel;

// Where a barcode is known already: other products, and the offline library of barcodes. Result 1: its
// current row is taken over. Published for other modules.
class GOODSBOOK_PUBLISHED TF2101A_2 : public TFrm_Base_Dialog {
  Q_OBJECT

 public:
  Q_INVOKABLE explicit TF2101A_2(QWidget* owner = nullptr);

  // Fills the list for a barcode as it was typed. The caller shows the dialog when rows() has any.
  Q_INVOKABLE void init(const QString& barcode);
  const RecordSet& rows() const { return AdoQry_Tmp; }

 protected:
  void FormCreate() override;

 private:
  void buildGrid();
  QWidget* buildPanel();
  void appendOffline(const QString& barcode);
  void offerDownload();
  QString downloadPage() const;
  void Label1Click();

  BarcodeLibrary library_;
  bool offlineAvailable_ = false;
  TDBGridEh* DBGridEh;
  LinkLabel* Label1;
};

}  // namespace goodsbook
