#include "host/forms/Base_detail.h"

#include <QScopeGuard>

#include "host/U_function.h"
#include "host/forms/row_delete.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

bool isEditing(const RecordSet& rows) {
  return rows.state() == RecordSet::State::Edit || rows.state() == RecordSet::State::Insert;
}

}  // namespace

TFrm_Base_Detail::TFrm_Base_Detail(QWidget* owner)
    : OkCancelScreen(owner), ContinueAdd(new QCheckBox(tr("保存后继续增加(&N)"), this)) {
  setModal(true);
  btn_ok->setToolTip(tr("保存 (F9)"));
  ContinueAdd->setObjectName(u"ContinueAdd"_s);
  ContinueAdd->setFocusPolicy(Qt::NoFocus);  // Enter on the last field leads to OK
  buttonRow()->insertWidget(0, ContinueAdd);
}

bool TFrm_Base_Detail::InitForm(const QString& mode, RecordSet& listRows) {
  const QPointer<TFrm_Base_Detail> self = this;
  mode_ = mode;
  listRows_ = &listRows;
  saved_ = false;
  ContinueAdd->setChecked(false);
  watchRow();
  openFilled();
  exec();
  return self && saved_;
}

void TFrm_Base_Detail::SetStatus(RecordSet& rows) {
  mode_ = u"Add"_s;
  listRows_ = &rows;
  appendsRow = false;
  addsOn = false;
  saved_ = false;
  rowGuard_.forget();
  openFilled();
  show();
}

void TFrm_Base_Detail::watchRow() {
  rowGuard_.forget();
  const QString key = bodyParam(bodyparam::keyField);
  if (mode_ == "Add"_L1 || !listRows().hasField(key)) return;
  rowGuard_.watch(*this, listRows().text(key));
  if (fillsFromList) rowGuard_.bringUpToDate(listRows(), listStatement_, fields());
}

void TFrm_Base_Detail::openFilled() {
  endDoubt();
  loading_ = true;
  const auto ended = qScopeGuard([this] { loading_ = false; });
  firstFocus.clear();
  lockedFields.clear();
  for (FieldSet::Bound& field : fields().all()) field.passed = false;
  RefreshData();
  modified_ = false;
}

void TFrm_Base_Detail::RefreshData() {
  if (isReadOnly()) {
    fields().setReadOnly(true);
  } else {
    fields().lock(lockedFields);
  }
  btn_ok->setVisible(!isReadOnly());
  btn_ok->setEnabled(!isReadOnly());
  btn_Cancel->setText(isReadOnly() ? tr("关闭") : tr("取消"));
  btn_Cancel->setToolTip(isReadOnly() ? tr("关闭 (Esc)") : tr("不保存，返回 (Esc)"));
  ContinueAdd->setVisible(isAdding() && addsOn);
  if (firstFocus.isEmpty()) {
    focusFirstField();
  } else {
    focusFirst(elementNamed(firstFocus));
  }
  setLoading(false);
  modified_ = false;
}

void TFrm_Base_Detail::loadFields() {
  if (mode_ == "Add"_L1) {
    fields().clear();
  } else {
    fields().load(listRows());
  }
}

void TFrm_Base_Detail::storeFields() {
  fields().store(listRows());
  listRows().post();
}

QString TFrm_Base_Detail::rowCaption() const {
  return rowName(*this, listRows());
}

void TFrm_Base_Detail::AllChange() {
  if (loading()) return;
  modified_ = true;
  OkCancelScreen::AllChange();
}

void TFrm_Base_Detail::enableOk() {
  if (!isReadOnly()) btn_ok->setEnabled(true);
  AllChange();
}

bool TFrm_Base_Detail::okAllowed() const {
  return !isReadOnly() && btn_ok->isEnabled();
}

void TFrm_Base_Detail::btn_okClick() {
  CheckAll();
  if (mode_ == "Edit"_L1 && listRows().hasField(bodyParam(bodyparam::keyField)))
    rowGuard_.confirmSave(*this, rowCaption());
  withRow([this] {
    SaveData();
    markSaved();
    showSaved();
  });
  closeSaved();
}

void TFrm_Base_Detail::endSaved() {
  withRow([this] { showSaved(); });
  closeSaved();
}

void TFrm_Base_Detail::closeSaved() {
  saved_ = true;
  modified_ = false;
  if (isAdding() && addsOn && ContinueAdd->isChecked()) {
    mode_ = u"Add"_s;
    openFilled();
  } else {
    done(QDialog::Accepted);
  }
}

// Does `work` on the row that is edited or, for a new one, appended.
void TFrm_Base_Detail::withRow(const std::function<void()>& work) {
  RecordSet& rows = listRows();
  const bool appends = isAdding() && appendsRow;
  if (appends) rows.waitForAll();
  const int countBefore = rows.rowCount();
  const bool hadRow = rows.currentRow() >= 0;
  const RecordSet::Bookmark before = hadRow ? rows.bookmark() : RecordSet::Bookmark();
  if (appends) rows.append();
  try {
    work();
    if (isEditing(rows)) rows.post();
  } catch (...) {
    if (isEditing(rows)) rows.cancel();
    if (appends && rows.rowCount() > countBefore) rows.remove();  // posted before it failed
    if (hadRow) rows.gotoBookmark(before);
    throw;
  }
}

void TFrm_Base_Detail::btn_CancelClick() {
  done(QDialog::Rejected);
}

QString TFrm_Base_Detail::helpText() const {
  return tr("%1\n\nEnter  下一项\nF9、Ctrl+Enter  保存\nEsc  返回\nF4  打开选择窗口")
      .arg(windowTitle().trimmed());
}

}  // namespace goodsbook
