#include "host/forms/Base_outer.h"

#include <QAction>
#include <QToolBar>

#include "host/U_function.h"
#include "host/forms/Base_detail.h"
#include "host/forms/row_delete.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

TFrm_Base_Outer::TFrm_Base_Outer(QWidget* owner) : ListScreen(owner) {
  addEditActions({.add = [this] { Act_AddExecute(); },
                  .copyAdd = [this] { Act_CopyAddExecute(); },
                  .edit = [this] { Act_EditExecute(); },
                  .view = [this] { Act_ViewExecute(); },
                  .remove = [this] { Act_DeleteExecute(); }});
}

void TFrm_Base_Outer::InitForm(const Trecord& record) {
  ListScreen::InitForm(record);
  setEmptyText(hasRight(Trecord::addRight) ? tr("还没有记录。按 Ins 增加第一条。") : tr("还没有记录。"));
}

void TFrm_Base_Outer::setEditor(TFrm_Base_Detail* editor) {
  editor_ = editor;
  editor->SetFormParam(moduleCode());
  editor->SetUserParam(record());
  editor->SetBodyParam(bodyParams());
}

void TFrm_Base_Outer::updateActions() {
  ListScreen::updateActions();
  const bool open = AdoQry_Main.isOpen();
  const bool hasRow = open && AdoQry_Main.currentRow() >= 0;
  enableAction(u"Act_Add"_s, open && hasRight(Trecord::addRight));
  enableAction(u"Act_CopyAdd"_s, hasRow && hasRight(Trecord::addRight));
  enableAction(u"Act_Edit"_s, hasRow && hasRight(Trecord::editRight));
  enableAction(u"Act_View"_s, hasRow);
  enableAction(u"Act_Delete"_s, hasRow && hasRight(Trecord::deleteRight));
}

void TFrm_Base_Outer::openEditor(const QString& mode) {
  if (!editor_) return;
  if (mode != "Add"_L1 && AdoQry_Main.currentRow() < 0) return;
  const QPointer<TFrm_Base_Outer> self = this;
  editor_->InitForm(mode, AdoQry_Main);
  if (self) DBGridEh->setFocus();
}

void TFrm_Base_Outer::Act_AddExecute() {
  openEditor(u"Add"_s);
}

void TFrm_Base_Outer::Act_CopyAddExecute() {
  openEditor(u"CopyAdd"_s);
}

void TFrm_Base_Outer::Act_EditExecute() {
  openEditor(u"Edit"_s);
}

void TFrm_Base_Outer::Act_ViewExecute() {
  openEditor(u"ReadOnly"_s);
}

void TFrm_Base_Outer::Act_DeleteExecute() {
  if (AdoQry_Main.currentRow() < 0) return;
  const QString key = AdoQry_Main.text(bodyParam(bodyparam::keyField));
  if (DISPINFO(tr("是否删除【%1】?").arg(rowName(*this, AdoQry_Main)), 2) != 'y') return;
  deleteByTemplate(*this, key);
  AdoQry_Main.remove();
}

void TFrm_Base_Outer::DBGridEhDblClick() {
  const QAction* edits = action(u"Act_Edit"_s);
  if (edits && edits->isEnabled()) {
    Act_EditExecute();
  } else if (const QAction* views = action(u"Act_View"_s); views && views->isEnabled()) {
    Act_ViewExecute();
  }
}

}  // namespace goodsbook
