#pragma once

#include <QApplication>
#include <QDialog>

#include "app/driver/screen_test.h"
#include "host/controls/TDBGridEh.h"
#include "host/controls/edits.h"
#include "host/data/record_set.h"
#include "host/forms/Base.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace goodsbook {

// A window with one of each element that the driver works with, and a modal dialog that it opens.
class SampleScreen : public TFrm_Base {
  Q_OBJECT

 public:
  explicit SampleScreen(QWidget* owner);
  ~SampleScreen() override { disconnect(qApp, nullptr, this, nullptr); }  // its elements lose the focus later

  RecordSet AdoQry_Main;
  TCustomDBEditEh* code;
  TCustomDBEditEh* name;
  QPlainTextEdit* note;
  QCheckBox* valid;
  QGroupBox* options;
  QPushButton* askButton;
  TDBGridEh* grid;
  QTreeWidget* tree;
  TFrm_Base* dialog;

  int clicks = 0;
  int doubleClicks = 0;
  int addCalls = 0;
  int dialogResult = -1;
  bool keepFocusInCode = false;  // the check of the code field takes the focus back
  QStringList cellButtons;

 private:
  void buildFields();
  void buildDialog();
  void buildActions();
  void fill();
};

// Tests of the driver over one such window.
class SampleScreenTest : public ScreenTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  SampleScreen* screen = nullptr;  // gone when it is closed
  int screenId = 0;
};

}  // namespace goodsbook
