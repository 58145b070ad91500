#include "host/forms/edit_list_screen.h"

#include <QAction>

#include "host/forms/Base_detail.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

EditListScreen::EditListScreen(QWidget* owner) : ListScreen(owner) {
  addEditActions({.add = [this] { Act_AddExecute(); },
                  .copyAdd = [this] { Act_CopyAddExecute(); },
                  .edit = [this] { Act_EditExecute(); },
                  .view = [this] { Act_ViewExecute(); },
                  .remove = [this] { Act_DeleteExecute(); }});
}

void EditListScreen::InitForm(const Trecord& record) {
  ListScreen::InitForm(record);
  if (editor_) setEditor(editor_);  // made before the record was known
  setEmptyText(hasRight(Trecord::addRight) ? tr("还没有记录。按 Ins 增加第一条。") : tr("还没有记录。"));
}

void EditListScreen::setEditor(TFrm_Base_Detail* editor) {
  editor_ = editor;
  editor->SetFormParam(moduleCode());
  editor->SetUserParam(record());
  editor->SetBodyParam(bodyParams());
}

void EditListScreen::updateActions() {
  ListScreen::updateActions();
  const bool open = AdoQry_Main.isOpen();
  const bool row = open && onRow();
  enableAction(u"Act_Add"_s, open && hasRight(Trecord::addRight));
  enableAction(u"Act_CopyAdd"_s, row && hasRight(Trecord::addRight));
  enableAction(u"Act_Edit"_s, row && hasRight(Trecord::editRight));
  enableAction(u"Act_View"_s, row);
  enableAction(u"Act_Delete"_s, row && hasRight(Trecord::deleteRight));
}

void EditListScreen::Act_AddExecute() {
  openEditor(u"Add"_s);
}

void EditListScreen::Act_CopyAddExecute() {
  openEditor(u"CopyAdd"_s);
}

void EditListScreen::Act_EditExecute() {
  openEditor(u"Edit"_s);
}

void EditListScreen::Act_ViewExecute() {
  openEditor(u"ReadOnly"_s);
}

void EditListScreen::DBGridEhDblClick() {
  const QAction* edits = action(u"Act_Edit"_s);
  if (edits && edits->isEnabled()) {
    Act_EditExecute();
  } else if (const QAction* views = action(u"Act_View"_s); views && views->isEnabled()) {
    Act_ViewExecute();
  }
}

}  // namespace goodsbook
