#include "host/forms/list_screen.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QShowEvent>
#include <QSplitter>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <memory>

#include "host/U_function.h"
#include "host/controls/progress.h"
#include "host/controls/storage.h"
#include "host/data/progressive_load.h"
#include "host/forms/Sys_filter.h"
#include "host/forms/list_statement.h"
#include "host/print/list_print.h"
#include "host/session.h"
#include "host/sheet/list_export.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

QToolBar* makeToolBar(QWidget* parent) {
  auto* bar = new QToolBar(parent);
  bar->setObjectName(u"ToolBar"_s);
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  bar->setIconSize(QSize(22, 22));
  bar->setMovable(false);
  return bar;
}

}  // namespace

ListScreen::ListScreen(QWidget* owner)
    : TFrm_Base_Common(owner),
      DBGridEh(new TDBGridEh(this)),
      ToolBar(makeToolBar(this)),
      PopupMenu(new QMenu(this)),
      Splitter(new QSplitter(this)),
      headRow(new QHBoxLayout),
      ConditionTitle(new QLabel(this)),
      load_(new ProgressiveLoad(AdoQry_Main, this)) {
  AdoQry_Main.setObjectName(u"AdoQry_Main"_s);
  AdoQry_Main.setParent(this);
  DBGridEh->setObjectName(u"DBGridEh"_s);
  PopupMenu->setObjectName(u"PopupMenu"_s);
  Splitter->setObjectName(u"Splitter"_s);
  Splitter->setChildrenCollapsible(false);
  Splitter->addWidget(DBGridEh);
  ConditionTitle->setObjectName(u"ConditionTitle"_s);
  ConditionTitle->hide();
  headRow->addWidget(ConditionTitle);
  headRow->setContentsMargins(8, 0, 8, 0);
  headRow->setSpacing(0);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(ToolBar);
  layout->addLayout(headRow);
  layout->addWidget(body(), 0);
  layout->addWidget(Splitter, 1);
  buildStatusLine();
  buildBaseActions();
  resize(960, 600);
  setWindowFlag(Qt::WindowMinMaxButtonsHint);

  DBGridEh->setRecordSet(&AdoQry_Main);
  DBGridEh->setReadOnly(true);
  DBGridEh->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(DBGridEh, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { PopupMenu->popup(DBGridEh->viewport()->mapToGlobal(at)); });
  connect(DBGridEh, &TDBGridEh::rowDoubleClicked, this,
          [this] { guarded(this, [this] { DBGridEhDblClick(); }); });
  connect(&AdoQry_Main, &RecordSet::opened, this, &ListScreen::applyMoneyFormats);
  for (const auto moved : {&RecordSet::opened, &RecordSet::rowsInserted, &RecordSet::rowsRemoved,
                           &RecordSet::orderChanged, &RecordSet::closed}) {
    connect(&AdoQry_Main, moved, this, &ListScreen::rowsMoved);
  }
  connect(&AdoQry_Main, &RecordSet::afterScroll, this, &ListScreen::rowsMoved);
  connect(DBGridEh, &TDBGridEh::picksChanged, this, &ListScreen::rowsMoved);
  connect(load_, &ProgressiveLoad::progress, this, &ListScreen::rowsMoved);
  connect(load_, &ProgressiveLoad::finished, this, [this] {
    findKeyAgain();
    rowsMoved();
  });
  connect(load_, &ProgressiveLoad::failed, this,
          [this](const QString& text) { guarded(this, [&text] { DISPINFO(text, 5); }); });
  offerCancel();
}

void ListScreen::offerCancel() {
  // One box for each waiting; it comes up when that takes longer than a moment.
  auto box = std::make_shared<std::unique_ptr<Progress>>();
  const auto close = [box] { box->reset(); };
  connect(load_, &ProgressiveLoad::finished, this, close);
  connect(load_, &ProgressiveLoad::failed, this, close);
  connect(load_, &ProgressiveLoad::answered, this, close);
  const auto shown = [this, box](const auto& work) {
    // The events let through may end this screen, and with it this function.
    const auto kept = box;  // NOLINT(performance-unnecessary-copy-initialization)
    if (!*kept) *kept = std::make_unique<Progress>(this, tr("正在读取…"), 0);
    try {
      work(**kept);
    } catch (const EAbort&) {
      kept->reset();
      return false;
    }
    return true;
  };
  load_->setWaitHook([this, shown](int count) {
    showCount();
    return shown([count](Progress& progress) { progress.step(count); });
  });
  load_->setIdleHook([shown] { return shown([](Progress& progress) { progress.wait(); }); });
}

ListScreen::~ListScreen() {
  DBGridEh->setRecordSet(nullptr);
}

// Not in FormCreate: the constructor of a family's class would give all its members one section.
void ListScreen::loadLayout() {
  if (layout_ || !Session::exists()) return;
  manager_ = new TIniPropStorageManEh(u"layout.ini"_s, this);
  layout_ =
      new TPropStorageEh(QString::fromLatin1(metaObject()->className()).section(u':', -1), manager_, this);
  layout_->addGrid(DBGridEh);
  layout_->LoadProperties();
}

void ListScreen::InitForm(const Trecord& record) {
  loadLayout();
  SetFormParam(QString::number(record.module()));
  SetUserParam(record);
  if (Tag == 0) Tag = record.module();
  setAttribute(Qt::WA_DeleteOnClose);
  updateActions();
  if (ScreenFrame* frame = frameOf(parentWidget())) {
    frame->place(this);
  } else {
    show();
  }
  // The screen that called this sets its statement and its editor first.
  QTimer::singleShot(0, this, [this] { guarded(this, [this] { GetData(); }); });
}

QString ListScreen::listStatement() const {
  return listStatement_.isEmpty() ? bodyParam(bodyparam::listStatement) : listStatement_;
}

void ListScreen::GetData() {
  DBGridEh->setKeyField(bodyParam(bodyparam::keyField));
  const QString statement = listStatement();
  if (statement.trimmed().isEmpty()) return;
  openRows(withCondition(statement, conditionText_));
}

void ListScreen::openRows(const QString& select) {
  Session& session = Session::current();
  SentStatement sent{
      .op = u"opensql"_s, .module = moduleCode(), .key = {}, .operation = {}, .sql = select, .result = {}};
  try {
    session.database().forgetDoubt();
    load_->start(session.database(), select);
  } catch (const EDatabaseError& error) {
    sent.result = error.text;
    session.record(std::move(sent));
    throw;
  }
  sent.result = u"Y"_s;
  session.record(std::move(sent));
}

void ListScreen::findKeyAgain() {
  if (!keyToFind_.isValid()) return;
  const QVariant key = std::exchange(keyToFind_, QVariant());
  if (AdoQry_Main.currentRow() <= 0) AdoQry_Main.locate(bodyParam(bodyparam::keyField), key);
}

void ListScreen::refresh() {
  const QString key = bodyParam(bodyparam::keyField);
  const bool known = AdoQry_Main.isOpen() && AdoQry_Main.currentRow() >= 0 && AdoQry_Main.hasField(key);
  const QVariant current = known ? AdoQry_Main.value(key) : QVariant();
  reload();
  if (known && AdoQry_Main.isOpen() && AdoQry_Main.hasField(key) && !findLoaded(key, current) &&
      load_->isRunning()) {
    keyToFind_ = current;  // among the rows to come
  }
}

void ListScreen::reload() {
  const QString column = DBGridEh->selectedField();
  keyToFind_ = QVariant();
  GetData();
  if (AdoQry_Main.isOpen() && !column.isEmpty()) DBGridEh->setSelectedField(column);
}

// Without waiting for the rows that are still to come.
bool ListScreen::findLoaded(const QString& field, const QVariant& value) {
  const int index = AdoQry_Main.fieldIndex(field);
  for (int row = 0; row < AdoQry_Main.rowCount(); ++row) {
    if (AdoQry_Main.valueAt(row, index) != value) continue;
    AdoQry_Main.moveTo(row);
    return true;
  }
  return false;
}

void ListScreen::applyMoneyFormats() {
  const QString columns = bodyParam(bodyparam::moneyColumns) + u',' + bodyParam(bodyparam::priceColumns);
  for (const QString& name : columns.split(u',', Qt::SkipEmptyParts)) {
    if (AdoQry_Main.hasField(name.trimmed())) AdoQry_Main.setFieldFormat(name.trimmed(), G_PriceFormat);
  }
}

void ListScreen::setColumns(std::vector<GridColumn> columns, std::vector<Field> fields) {
  const bool summed =
      std::any_of(columns.begin(), columns.end(), [](const GridColumn& column) { return column.sum; });
  if (!fields.empty()) AdoQry_Main.declareFields(std::move(fields));
  DBGridEh->setColumns(std::move(columns));
  DBGridEh->setFooterVisible(summed);
}

void ListScreen::hideColumns(const QString& names) {
  std::vector<GridColumn> kept = DBGridEh->columns();
  for (const QString& name : names.split(u',', Qt::SkipEmptyParts)) {
    std::erase_if(kept, [&name](const GridColumn& column) {
      return column.field.compare(name.trimmed(), Qt::CaseInsensitive) == 0;
    });
  }
  const QByteArray layout = DBGridEh->saveLayout();
  DBGridEh->setColumns(std::move(kept));
  DBGridEh->restoreLayout(layout);
}

void ListScreen::setFilterDialog(TFrm_Sys_Filter* filter) {
  filter_ = filter;
  setActionShown(u"Act_Filter"_s, filter != nullptr);
}

void ListScreen::setCondition(const QString& condition, const QString& displayText) {
  conditionText_ = condition;
  displayText_ = displayText;
  filterLabel_->setText(displayText);
  filterLabel_->setToolTip(displayText.trimmed().toHtmlEscaped());
  const bool narrowed = !condition.trimmed().isEmpty();
  filterLabel_->setVisible(narrowed);
  clearFilter_->setVisible(narrowed);
  showEmptyText();
}

void ListScreen::setEmptyText(const QString& text) {
  emptyText_ = text;
  showEmptyText();
}

void ListScreen::showEmptyText() {
  const bool narrowed = !conditionText_.trimmed().isEmpty();
  DBGridEh->setEmptyText(narrowed ? tr("没有符合条件的记录。按 Ctrl+F 更改条件，或点击下方“清除筛选”。")
                                  : emptyText_);
}

void ListScreen::Act_FilterExecute() {
  if (!filter_ || filter_->exec() != 1) return;
  narrow(filter_->conditionText, filter_->displayText);
}

void ListScreen::clearFilter() {
  if (filter_) filter_->resetCondition();
  narrow({}, {});
}

void ListScreen::narrow(const QString& condition, const QString& displayText) {
  const QString oldCondition = conditionText_;
  const QString oldText = displayText_;
  setCondition(condition, displayText);
  const QPointer<ListScreen> self = this;
  try {
    // Whoever looks for something begins at the first row found; without the condition he stays where he was.
    if (condition.trimmed().isEmpty()) {
      refresh();
    } else {
      reload();
    }
  } catch (...) {
    if (self) setCondition(oldCondition, oldText);  // the rows shown are still those
    throw;
  }
}

void ListScreen::Act_RefreshExecute() {
  refresh();
}

void ListScreen::Act_PrintExecute() {
  printList(this, *DBGridEh, listTitle(), displayText_.trimmed());
}

void ListScreen::Act_ExportExecute() {
  exportList(this, *DBGridEh, listTitle());
}

void ListScreen::Act_LocateExecute() {
  DBGridEh->setFocus();
}

void ListScreen::Act_OtherExecute() {}

void ListScreen::Act_CloseExecute() {
  close();
}

QString ListScreen::listTitle() const {
  const QString own = bodyParam(bodyparam::caption);
  return own.isEmpty() ? windowTitle().trimmed() : own;
}

void ListScreen::FormClose() {
  if (layout_) layout_->SaveProperties();
  TFrm_Base_Common::FormClose();
}

void ListScreen::done(int result) {
  const QPointer<ListScreen> self = this;
  ScreenFrame* frame = frameOf(parentWidget());
  TFrm_Base_Common::done(result);
  if (self && frame) frame->remove(this);
}

void ListScreen::FormKeyDown(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (enter && plain && focusWidget() == DBGridEh && DBGridEh->isReadOnly()) {
    event->accept();
    if (AdoQry_Main.currentRow() >= 0) DBGridEhDblClick();
    return;
  }
  TFrm_Base_Common::FormKeyDown(event);
}

void ListScreen::showEvent(QShowEvent* event) {
  if (!isWindow()) setAttribute(Qt::WA_Moved);  // a page does not centre itself over its owner
  TFrm_Base_Common::showEvent(event);
  if (!event->spontaneous()) DBGridEh->setFocus();
}

}  // namespace goodsbook
