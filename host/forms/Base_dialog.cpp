#include "host/forms/Base_dialog.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace goodsbook {

void TFrm_Base_Dialog::Condition_t(const QString& op, const QString& field, const QString& value) {
  if (value.trimmed().isEmpty()) return;
  const bool like = op.compare("LIKE"_L1, Qt::CaseInsensitive) == 0;
  if (!conditionText.trimmed().isEmpty()) conditionText += u" and "_s;
  conditionText += like ? field + u" LIKE '%"_s + value + u"%'"_s : field + op + u"'"_s + value + u"'"_s;
}

void TFrm_Base_Dialog::btn_okClick() {
  CheckAll();
}

void TFrm_Base_Dialog::btn_CancelClick() {
  done(0);
}

void TFrm_Base_Dialog::FormKeyDown(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (enterAccepts_ && enter && plain && !qobject_cast<QPushButton*>(focusWidget())) {
    event->accept();
    setModalResult(1);
    return;
  }
  OkCancelScreen::FormKeyDown(event);
}

void TFrm_Base_Dialog::showEvent(QShowEvent* event) {
  OkCancelScreen::showEvent(event);
  if (event->spontaneous()) return;
  const QWidget* focus = focusWidget();
  if (!focus || focus == this || focus == btn_ok || focus == btn_Cancel) focusFirstField();
}

}  // namespace goodsbook
