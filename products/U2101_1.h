#pragma once

#include "host/controls/TDBGridEh.h"
#include "products/product_editor.h"
#include "products/unit_rows.h"

class QStackedWidget;

namespace goodsbook {

class LookupPicker;
class PictureLabel;

// Products: the editor, with one unit typed into fields or several in a grid.
class TF2101_1 : public ProductEditor {
  Q_OBJECT

 public:
  explicit TF2101_1(QWidget* owner = nullptr);

 protected:
  void RefreshData() override;
  void SaveData() override;
  void showSaved() override;
  void Edit1Exit() override;
  void FormKeyDown(QKeyEvent* event) override;
  void AllChange() override;
  bool hasUnsavedInput() const override;
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

  void unitButtonClick(int row, const QString& field);
  void pickUnit();
  void addUnitRow();
  void removeUnitRow();
  void gridChange();

  void openPicture();   // N1
  void clearPicture();  // N3
  void savePicture();   // N2
  void showPicture();   // N4
  void setPicture(const QVariant& bytes);

  void drawNumber();  // what an automatic number stands for becomes one
  QString headerStatements() const;
  void checkUnits();  // of the grid
  void checkSingleUnit();
  void confirmOtherStyle();  // throws EAbort where input in the style that is not shown shall not be lost
  QString unitStatements() const;
  QString closingStatements() const;
  void save(const QString& batch);  // and the picture, if it is to be stored

  RecordSet DataSetDJ;    // the units grid
  RecordSet AdoQry_Pict;  // the picture's row
  UnitRows units_;
  TDBGridEh* DBGridEh1 = nullptr;
  PictureLabel* Image1 = nullptr;
  QStackedWidget* unitPages_ = nullptr;
  LookupPicker* gridUnitPicker_ = nullptr;
  bool singleUnit_ = true;
  bool typedSingle_ = false;  // the unit's fields were typed into since the screen was filled
  bool typedInGrid_ = false;  // and the grid
};

}  // namespace goodsbook
