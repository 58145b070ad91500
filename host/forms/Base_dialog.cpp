#include "host/forms/Base_dialog.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace goodsbook {

TFrm_Base_Dialog::TFrm_Base_Dialog(QWidget* owner)
    : TFrm_Base_Common(owner),
      btn_ok(makeButton(u"btn_ok"_s, tr("确定"))),
      btn_Cancel(makeButton(u"btn_Cancel"_s, tr("取消"))),
      buttons_(new QHBoxLayout) {
  btn_ok->setToolTip(tr("确定 (F9)"));
  btn_Cancel->setToolTip(tr("取消 (Esc)"));
  buttons_->addStretch(1);
  buttons_->addWidget(btn_ok);
  buttons_->addWidget(btn_Cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(body(), 1);
  layout->addSpacing(6);
  layout->addLayout(buttons_);
  connect(btn_ok, &QPushButton::clicked, this, &TFrm_Base_Dialog::pressOk);
  onClick(btn_Cancel, [this] { btn_CancelClick(); });
}

void TFrm_Base_Dialog::FormCreate() {
  TFrm_Base_Common::FormCreate();
  // The buttons were made first and are to be reached last.
  if (previousInFocusChain() != btn_Cancel) setTabOrder(previousInFocusChain(), btn_ok);
  setTabOrder(btn_ok, btn_Cancel);
}

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

void TFrm_Base_Dialog::pressOk() {
  guarded(this, [this] {
    if (!btn_ok->isVisibleTo(this) || !btn_ok->isEnabled()) return;
    if (leaveFor(btn_ok)) btn_okClick();
  });
}

void TFrm_Base_Dialog::FormKeyDown(QKeyEvent* event) {
  const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_Escape) {
    event->accept();
    reject();
  } else if ((event->key() == Qt::Key_F9 && modifiers == Qt::NoModifier) ||
             (enter && modifiers == Qt::ControlModifier && !qobject_cast<QPlainTextEdit*>(focusWidget()))) {
    event->accept();
    pressOk();
  } else if (enter && enterAccepts_ && modifiers == Qt::NoModifier &&
             !qobject_cast<QPushButton*>(focusWidget())) {
    event->accept();
    setModalResult(1);
  } else {
    TFrm_Base_Common::FormKeyDown(event);
  }
}

void TFrm_Base_Dialog::reject() {
  guarded(this, [this] { btn_CancelClick(); });
}

void TFrm_Base_Dialog::showEvent(QShowEvent* event) {
  TFrm_Base_Common::showEvent(event);
  if (event->spontaneous()) return;
  const QWidget* focus = focusWidget();
  if (!focus || focus == this || focus == btn_ok || focus == btn_Cancel) focusFirstField();
}

}  // namespace goodsbook
