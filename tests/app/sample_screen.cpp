#include "tests/app/sample_screen.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "app/driver/driver.h"
#include "host/lookup/pickers.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

SampleScreen::SampleScreen(QWidget* owner)
    : TFrm_Base(owner),
      code(new TCustomDBEditEh(this)),
      name(new TCustomDBEditEh(this)),
      note(new QPlainTextEdit(this)),
      valid(new QCheckBox(u"有效(&V)"_s, this)),
      options(new QGroupBox(u"选项"_s, this)),
      askButton(new QPushButton(u"询问"_s, this)),
      grid(new TDBGridEh(this)),
      tree(new QTreeWidget(this)),
      dialog(new TFrm_Base(this)) {
  Tag = 999;
  setWindowTitle(u"样例窗口 "_s);
  buildFields();
  buildDialog();
  buildActions();
  fill();
}

void SampleScreen::buildFields() {
  code->setObjectName(u"Edit1"_s);
  code->setTypingLimit(4);
  code->setUpperCase(true);
  name->setObjectName(u"Edit2"_s);
  note->setObjectName(u"NOTE"_s);
  valid->setObjectName(u"YS"_s);
  options->setObjectName(u"Options"_s);
  options->setCheckable(true);
  options->setChecked(false);
  askButton->setObjectName(u"btn_ask"_s);
  askButton->setAutoDefault(false);
  grid->setObjectName(u"DBGridEh"_s);
  tree->setObjectName(u"TreeView"_s);
  tree->setHeaderHidden(true);

  auto* locked = new TCustomDBEditEh(this);
  locked->setObjectName(u"Locked"_s);
  locked->setReadOnly(true);
  locked->setText(u"固定"_s);
  auto* off = new QPushButton(u"停用"_s, this);
  off->setObjectName(u"btn_off"_s);
  off->setEnabled(false);
  auto* hidden = new QLabel(u"看不见"_s, this);
  hidden->setObjectName(u"Hidden"_s);
  hidden->hide();

  auto* form = new QFormLayout;
  form->addRow(u"编号"_s, code);
  form->addRow(u"名    称"_s, name);
  form->addRow(u"固定"_s, locked);
  form->addRow(u"备注"_s, note);
  auto* inGroup = new QVBoxLayout(options);
  inGroup->addWidget(off);
  auto* all = new QVBoxLayout(this);
  all->addLayout(form);
  all->addWidget(valid);
  all->addWidget(options);
  all->addWidget(askButton);
  all->addWidget(tree);
  all->addWidget(grid, 1);
  resize(640, 700);

  connect(askButton, &QPushButton::clicked, this, [this] { ++clicks; });
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* from, QWidget* to) {
    if (keepFocusInCode && from == code && to && to->window() == this) code->setFocus();
  });
}

void SampleScreen::buildDialog() {
  dialog->setObjectName(u"SampleDialog"_s);
  dialog->setWindowTitle(u"样例对话框"_s);
  auto* edit = new TCustomDBEditEh(dialog);
  edit->setObjectName(u"Edit9"_s);
  auto* category = new TExtEdit(dialog);
  category->setObjectName(u"CLASS_ID"_s);
  (new TFrm_Sys_LINK_CL(dialog))->init(category);
  auto* ok = new QPushButton(u"确定"_s, dialog);
  ok->setObjectName(u"btn_ok"_s);
  auto* layout = new QVBoxLayout(dialog);
  layout->addWidget(edit);
  layout->addWidget(category);
  layout->addWidget(ok);
  connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
}

void SampleScreen::buildActions() {
  auto* add = new QAction(u"增加(&A)"_s, this);
  add->setObjectName(u"Act_Add"_s);
  add->setShortcut(QKeySequence(u"F6"_s));
  add->setToolTip(u"增加一行 (F6)"_s);
  auto* off = new QAction(u"导入"_s, this);
  off->setObjectName(u"Act_imp"_s);
  off->setEnabled(false);
  off->setVisible(false);
  addActions({add, off});
  connect(add, &QAction::triggered, this, [this] {
    ++addCalls;
    dialogResult = dialog->exec();
  });
}

void SampleScreen::fill() {
  AdoQry_Main.setParent(this);
  AdoQry_Main.setObjectName(u"AdoQry_Main"_s);
  const auto field = [](const QString& fieldName, FieldType type, const QString& format) {
    return Field{fieldName, type, 0, {}, format};
  };
  AdoQry_Main.create({field(u"dw_id"_s, FieldType::Text, {}), field(u"dw_name"_s, FieldType::Text, {}),
                      field(u"sj"_s, FieldType::Float, u"0.00"_s), field(u"ys"_s, FieldType::Boolean, {}),
                      field(u"pym"_s, FieldType::Text, {})});
  for (int i = 1; i <= 3; ++i) {
    AdoQry_Main.append();
    AdoQry_Main.setValue(u"dw_id"_s, u"0%1"_s.arg(i));
    AdoQry_Main.setValue(u"dw_name"_s, u"单位%1"_s.arg(i));
    AdoQry_Main.setValue(u"sj"_s, i * 1.5);
    AdoQry_Main.setValue(u"ys"_s, i == 2);
    AdoQry_Main.post();
  }
  AdoQry_Main.mergeChangeLog();
  AdoQry_Main.first();
  grid->setColumns(
      {{.field = u"dw_id"_s, .title = u"编号"_s, .width = 60},
       {.field = u"dw_name"_s, .title = u"名称"_s, .width = 120, .readOnly = false},
       {.field = u"sj"_s, .title = u"售价"_s, .width = 80, .visible = false},
       {.field = u"ys"_s, .title = u"有效"_s, .width = 50, .readOnly = false, .checkBox = true}});
  grid->setRecordSet(&AdoQry_Main);
  connect(grid, &TDBGridEh::columnButtonClicked, this,
          [this](int row, const QString& column) { cellButtons << u"%1:%2"_s.arg(row).arg(column); });
  connect(grid, &TDBGridEh::rowDoubleClicked, this, [this] { ++doubleClicks; });

  auto* first = new QTreeWidgetItem(tree, {u"01 食品 (3)"_s});
  new QTreeWidgetItem(first, {u"0101 糖果"_s});
  new QTreeWidgetItem(tree, {u"02 百货"_s});
}

void SampleScreenTest::SetUp() {
  ScreenTest::SetUp();
  onGui([this] {
    screen = new SampleScreen(driver().owner());
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    screenId = screen->screenId();
  });
}

void SampleScreenTest::TearDown() {
  ScreenTest::TearDown();
}

}  // namespace goodsbook
