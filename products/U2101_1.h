#pragma once

#include "host/controls/TDBGridEh.h"
#include "host/forms/Base_detail.h"
#include "products/unit_rows.h"

class QStackedWidget;

namespace goodsbook {

class LookupPicker;
class PictureLabel;

// Products: the editor, with one unit typed into fields or several in a grid.
class TF2101_1 : public TFrm_Base_Detail {
  Q_OBJECT

 public:
  explicit TF2101_1(QWidget* owner = nullptr);

 protected:
  void RefreshData() override;
  void SaveData() override;
  void FormKeyDown(QKeyEvent* event) override;
  void FormClose() override;  // remembers the input style
  QString helpText() const override;

 private:
  void buildHeader();
  QWidget* buildPicture();
  QWidget* buildSingleUnit();
  QWidget* buildUnitGrid();
  int labelWidth() const;
  void setSingleUnit(bool single);
  void refreshHeader();
  void refreshPicture();

  void Edit1Exit();
  void BTN_CHANGEClick();
  void unitButtonClick(int row, const QString& field);
  void pickUnit();
  void addUnitRow();
  void removeUnitRow();

  void openPicture();   // N1
  void clearPicture();  // N3
  void savePicture();   // N2
  void showPicture();   // N4
  void setPicture(const QVariant& bytes);

  void drawNumber();  // what an automatic number stands for becomes one
  void refuseWithdrawnNegativeStock();
  QString headerStatements() const;
  QString unitStatements();
  QString closingStatements() const;
  void storePicture();
  void showInList();

  RecordSet DataSetDJ;    // the units grid
  RecordSet AdoQry_Pict;  // the picture's row
  UnitRows units_;
  TDBGridEh* DBGridEh1 = nullptr;
  PictureLabel* Image1 = nullptr;
  QStackedWidget* unitPages_ = nullptr;
  QPushButton* BTN_CHANGE = nullptr;
  LookupPicker* gridUnitPicker_ = nullptr;
  bool singleUnit_ = true;
};

}  // namespace goodsbook
