#include "products/U2101_imp.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/controls/storage.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/session.h"
#include "host/sheet/sheet_reader.h"
#include "products/import_run.h"
#include "products/quiet_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int fileColumns = 5;
constexpr int firstRow = 2;  // the first is the sheet's heading
constexpr int betweenEventsMs = 35;

}  // namespace

// While the dialog reads or imports only Cancel can be used.
class TF2101_IMP::Busy {
 public:
  Busy(TF2101_IMP& dialog, int steps) : dialog_(dialog), focus_(dialog.focusWidget()) {
    if (dialog.GRID1->isAncestorOf(focus_)) focus_ = dialog.GRID1;  // a cell's editor does not last
    dialog_.btn_Cancel->setFocus();
    set(true);
    dialog_.stop_ = false;
    dialog_.progress_->setRange(0, steps);
    dialog_.progress_->setValue(0);
    dialog_.sinceEvents_.start();
    QApplication::setOverrideCursor(Qt::WaitCursor);
  }
  ~Busy() {
    QApplication::restoreOverrideCursor();
    set(false);
    if (focus_) focus_->setFocus();
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  void set(bool busy) {
    dialog_.busy_ = busy;
    dialog_.head_->setEnabled(!busy);
    dialog_.foot_->setEnabled(!busy);
    dialog_.btn_ok->setEnabled(!busy);
    dialog_.GRID1->setReadOnly(busy);
    dialog_.progress_->setVisible(busy);
    dialog_.result_->setVisible(!busy);
  }

  TF2101_IMP& dialog_;
  QPointer<QWidget> focus_;
};

TF2101_IMP::~TF2101_IMP() = default;

void TF2101_IMP::InitForm(RecordSet* list) {
  list_ = list;
}

void TF2101_IMP::Edt_pathButtonClick() {
  const QString filter =
      tr("EXCEL文档 (*.xls *.xlsx *.XLS *.XLSX);;其他表格 (*.csv *.ods *.et *.CSV *.ODS *.ET)");
  const QString path = Session::current().desktop().openFile(this, tr("选择要导入的文件"), filter);
  if (!path.isEmpty()) setText(u"Edt_path"_s, path);
}

void TF2101_IMP::btn_refClick() {
  const QString path = text(u"Edt_path"_s).trimmed();
  if (path.isEmpty()) {
    DISPINFO(tr("请选择导入的文件!"), 5);
    setLoading(true);  // the field with the focus is not what the user has to see to now
    edit(u"Edt_path"_s)->setFocus();
    setLoading(false);
    return;
  }
  lostRow_.reset();
  result_->clear();
  QString failure;
  {
    const Busy busy(*this, 0);
    try {
      readFile(path);
    } catch (const EAbort&) {
      D_MAIN.clear();
      result_->setText(tr("已取消读取"));
    } catch (const std::exception& error) {
      failure = QString::fromUtf8(error.what());
    }
  }
  if (!failure.isEmpty()) plainBox(failure, tr("提示"));
}

void TF2101_IMP::readFile(const QString& path) {
  const auto pause = [this] {
    if (!goesOn()) throw EAbort();
  };
  const auto book = openSheets(path, {.columns = fileColumns, .pause = pause});
  const auto rows = book->rows(0);
  D_MAIN.clear();
  int next = firstRow;
  {
    const QuietRows quiet(&D_MAIN);
    SheetRow row;
    while (rows->next(row)) {
      if (row.number < next) continue;
      if (row.number > next || row.cells.front().isEmpty()) break;
      for (QString& cell : row.cells) cell = importText(cell);
      addRow(row.cells);
      ++next;
      if (sinceEvents_.elapsed() < betweenEventsMs) continue;
      lab_hint->setText(QString::number(next));
      pause();
    }
    D_MAIN.first();
  }
  if (next == firstRow) {
    result_->setText(tr("没有读到商品：工作表第 2 行第 1 列（条码）是空的"));
  } else {
    lab_hint->setText(QString::number(next));
  }
}

void TF2101_IMP::addRow(const std::vector<QString>& cells) {
  static const std::array fields{u"COL1"_s, u"COL2"_s, u"COL3"_s, u"COL4"_s, u"COL5"_s};
  D_MAIN.append();
  for (std::size_t i = 0; i < fields.size(); ++i) D_MAIN.setValue(fields[i], cells[i]);
  D_MAIN.post();
}

void TF2101_IMP::btn_okClick() {
  TFrm_Base_Dialog::btn_okClick();
  for (const QString& name : {u"CLASS_ID"_s, u"dw_id"_s}) {
    CheckBlank(edit(name));  // only here: they can be left blank to choose the file first
    CheckId(lookupEdit(name));
  }
  if (!text(u"CK_ID1"_s).isEmpty()) CheckId(lookupEdit(u"CK_ID1"_s));
  if (!D_MAIN.isOpen() || D_MAIN.isEmpty()) return;
  if (D_MAIN.state() == RecordSet::State::Edit) D_MAIN.post();

  result_->clear();
  const Busy busy(*this, D_MAIN.rowCount());
  QString backup;
  if (isChecked(u"cb2"_s)) backup = clearProducts();
  lab_hint->setText(u"0"_s);
  ImportRun run(defaults(), AdoQry_Tmp, list_);
  const Count count = importRows(run);
  if (const int handled = count.imported + count.existing + count.failed; handled > 0)
    D_MAIN.moveTo(handled - 1);
  run.finish();
  result_->setText(endLine(count, backup));
}

ImportDefaults TF2101_IMP::defaults() const {
  return {text(u"CLASS_ID"_s), text(u"CLASS_NAME"_s), text(u"dw_id"_s), text(u"DW_NAME"_s),
          isChecked(u"cb1"_s)};
}

QString TF2101_IMP::clearProducts() {
  Session& session = Session::current();
  const QString stamp = session.desktop().now().toString(u"yyyyMMdd-HHmmss"_s);
  const auto pause = [this] { goesOn(); };
  const QString backup = session.database().backup(session.programDir(), stamp, pause);
  if (stop_) throw EAbort();
  execSqlBeside(u"101"_s, {}, u"Add"_s, u"delete from d1801dw;delete from d1801;"_s, pause);
  showCleared();
  return backup;
}

void TF2101_IMP::showCleared() {
  setChecked(u"cb2"_s, false);  // it was for this run: the next one must not take away what this one makes
  if (list_ && list_->isOpen()) list_->clear();  // nothing that it shows exists any more
}

// Only the clearing leaves this dialog in doubt: rows tell theirs in the grid. The import goes on behind it.
void TF2101_IMP::endSaved() {
  endDoubt();
  showCleared();
  btn_okClick();
}

TF2101_IMP::Count TF2101_IMP::importRows(ImportRun& run) {
  Count count{.read = D_MAIN.rowCount()};
  D_MAIN.first();
  const auto turn = [] { QApplication::processEvents(); };
  RelaxedCommits relaxed(Session::current().database());
  QuietRows grid(&D_MAIN), list(list_);
  for (int row = 0; row < count.read; ++row) note(row, {});  // of an earlier run
  for (int row = 0; row < count.read && !count.stopped; ++row) {
    if (sinceEvents_.elapsed() >= betweenEventsMs) {
      progress_->setValue(row);
      D_MAIN.moveTo(row);
      grid.show();
      list.show();
    }
    relaxed.keepUp(turn);
    count.stopped = !goesOn() || !importRow(run, row, count, grid);
  }
  relaxed.finish(turn);
  return count;
}

bool TF2101_IMP::importRow(ImportRun& run, int row, Count& count, QuietRows& grid) {
  const auto cell = [&](const QString& field) { return D_MAIN.textAt(row, D_MAIN.fieldIndex(field)); };
  const ImportRow texts{cell(u"COL1"_s), cell(u"COL2"_s), cell(u"COL3"_s), cell(u"COL4"_s), cell(u"COL5"_s)};
  try {
    const ImportRun::Outcome outcome = wasImported(row) ? ImportRun::Outcome::Imported : run.import(texts);
    const bool existing = outcome == ImportRun::Outcome::Existing;
    ++(existing ? count.existing : count.imported);
    note(row, existing ? tr("条码已存在，该商品未导入!") : QString());
    return true;
  } catch (const ESaveUnknown& error) {
    lostRow_ = LostRow{row, error.save};
    ++count.failed;
    note(row, error.text);
    grid.showNow();
    DISPINFO(error.text, 5);
    return false;
  } catch (const EDatabaseError& error) {
    note(row, importReason(texts, error.text));
    if (++count.failed > 1) return true;  // asked before
    grid.showNow();
    DISPINFO(error.text, 5);
    return DISPINFO(tr("第 %1 行导入失败，是否继续导入其余的行?").arg(row + 1), 2) == 'y';
  }
}

bool TF2101_IMP::wasImported(int row) {
  if (!lostRow_ || lostRow_->row != row) return false;
  const bool saved = Session::current().database().wasSaved(lostRow_->save);
  lostRow_.reset();
  return saved;
}

void TF2101_IMP::note(int row, const QString& text) {
  const QString column = u"COL6"_s;
  if (D_MAIN.textAt(row, D_MAIN.fieldIndex(column)) == text) return;
  D_MAIN.moveTo(row);
  D_MAIN.setValue(column, text);
  D_MAIN.post();
}

QString TF2101_IMP::endLine(const Count& count, const QString& backup) {
  QString line = tr("读取 %1 行，导入 %2，已存在 %3，失败 %4")
                     .arg(count.read)
                     .arg(count.imported)
                     .arg(count.existing)
                     .arg(count.failed);
  const int left = count.read - count.imported - count.existing - count.failed;
  if (count.stopped) line += tr("，已停止，%1 行未处理").arg(left);
  if (!backup.isEmpty()) line += tr("。清空前的备份：%1").arg(backup);
  return line;
}

bool TF2101_IMP::goesOn() {
  if (sinceEvents_.elapsed() < betweenEventsMs) return !stop_;
  QApplication::processEvents();
  sinceEvents_.start();
  return !stop_;
}

void TF2101_IMP::btn_CancelClick() {
  if (busy_) {
    stop_ = true;
  } else {
    TFrm_Base_Dialog::btn_CancelClick();
  }
}

void TF2101_IMP::FormKeyDown(QKeyEvent* event) {
  TFrm_Base_Dialog::FormKeyDown(event);
  if (event->isAccepted() || event->key() != Qt::Key_F12 || event->modifiers() != Qt::NoModifier || busy_)
    return;
  event->accept();
  guarded(this, [this] { btn_refClick(); });
}

void TF2101_IMP::FormClose() {
  storage_->SaveProperties();
  TFrm_Base_Dialog::FormClose();
}

}  // namespace goodsbook
