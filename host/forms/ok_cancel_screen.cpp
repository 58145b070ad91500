#include "host/forms/ok_cancel_screen.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <algorithm>

#include "host/U_function.h"
#include "host/controls/TDBGridEh.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// Whether the focus is in a cell's editor, or in a grid whose row is being changed.
bool isInGridEdit(const QWidget* focus) {
  for (const QWidget* widget = focus; widget && !widget->isWindow(); widget = widget->parentWidget()) {
    const auto* grid = qobject_cast<const TDBGridEh*>(widget);
    if (!grid) continue;
    const RecordSet* rows = grid->recordSet();
    return !grid->isReadOnly() && rows &&
           (widget != focus || rows->state() == RecordSet::State::Edit ||
            rows->state() == RecordSet::State::Insert);
  }
  return false;
}

constexpr const char* placeProperty = "placeBefore";  // of btn_ok: where the user was before

void keepPlace(QPushButton* ok, QWidget* focus) {
  const QWidget* screen = ok->window();
  if (!focus || focus == screen || focus->window() != screen || qobject_cast<QPushButton*>(focus)) return;
  QWidget* place = focus;
  // A cell's editor goes when it loses the focus; its grid keeps the cell.
  for (QWidget* widget = focus; widget != screen; widget = widget->parentWidget()) {
    if (qobject_cast<TDBGridEh*>(widget)) place = widget;
  }
  ok->setProperty(placeProperty, QVariant::fromValue(QPointer<QWidget>(place)));
}

void backToPlace(const QPushButton* ok) {
  const auto place = ok->property(placeProperty).value<QPointer<QWidget>>();
  if (place && place->isVisibleTo(ok->window()) && place->isEnabled()) place->setFocus(Qt::OtherFocusReason);
}

}  // namespace

OkCancelScreen::OkCancelScreen(QWidget* owner)
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
  connect(btn_ok, &QPushButton::clicked, this, &OkCancelScreen::pressOk);
  // A click gives OK the focus before it presses it.
  // In the button's life, not the screen's: a window that is being destroyed still gives up the focus.
  connect(qApp, &QApplication::focusChanged, btn_ok, [ok = btn_ok](QWidget* from, const QWidget* to) {
    if (to == ok) keepPlace(ok, from);
  });
  onClick(btn_Cancel, [this] { discard(); });
}

bool OkCancelScreen::okAllowed() const {
  return btn_ok->isVisibleTo(this) && btn_ok->isEnabled();
}

void OkCancelScreen::pressOk() {
  if (pressing_ || !okAllowed()) return;
  pressing_ = true;
  const QPointer<OkCancelScreen> self = this;
  keepPlace(btn_ok, focusWidget());
  const bool ended = guarded(this, [this] {
    if (takeCells() && leaveFor(btn_ok)) runOk();
  });
  if (!self) return;
  pressing_ = false;
  // Unless whatever refused it put the focus elsewhere, the user goes on where he was.
  if (!ended && focusWidget() == btn_ok) backToPlace(btn_ok);
}

void OkCancelScreen::runOk() {
  const QPointer<OkCancelScreen> self = this;
  const bool saved = wasSaved();
  try {
    if (saved) {
      endSaved();
    } else {
      endDoubt();
      btn_okClick();
    }
  } catch (const ESaveUnknown& unknown) {
    if (self) doubt_ = Doubt{.save = unknown.save};
    throw;
  }
}

bool OkCancelScreen::wasSaved() const {
  if (!doubt_) return false;
  if (!doubt_->save.isEmpty() && !Session::current().database().wasSaved(doubt_->save)) return false;
  if (!wasChangedSince()) return true;
  throw EDatabaseError(50000, 16, 1, 1,
                       tr("上一次其实已经保存，之后又改了内容，这一次没有保存。请关闭后重新打开再修改。"));
}

bool OkCancelScreen::wasChangedSince() const {
  return doubt_->changedSince || std::ranges::any_of(grids(), [](const TDBGridEh* grid) {
           return !grid->isReadOnly() && grid->recordSet() && grid->recordSet()->isModified();
         });
}

void OkCancelScreen::endSaved() {
  done(QDialog::Accepted);
}

void OkCancelScreen::AllChange() {
  if (doubt_) doubt_->changedSince = true;
}

void OkCancelScreen::endDoubt() {
  if (doubt_ && !doubt_->save.isEmpty()) Session::current().database().forgetDoubt();
  doubt_.reset();
}

void OkCancelScreen::done(int result) {
  endDoubt();
  TFrm_Base_Common::done(result);
}

void OkCancelScreen::reject() {
  guarded(this, [this] {
    if (hasUnsavedInput() && isVisible() && DISPINFO(tr("资料已更改，是否保存?"), 2) == 'y') {
      pressOk();
    } else {
      discard();
    }
  });
}

QList<TDBGridEh*> OkCancelScreen::grids() const {
  QList<TDBGridEh*> own = findChildren<TDBGridEh*>();
  own.removeIf([this](const TDBGridEh* grid) { return grid->window() != window(); });
  return own;
}

bool OkCancelScreen::hasOpenCell() const {
  return std::ranges::any_of(grids(), &TDBGridEh::hasOpenInput);
}

bool OkCancelScreen::takeCells() {
  return std::ranges::all_of(grids(), &TDBGridEh::takeCell);
}

void OkCancelScreen::discard() {
  for (TDBGridEh* grid : grids()) grid->dropCell();
  btn_CancelClick();
}

void OkCancelScreen::setCloseOnly() {
  btn_ok->hide();
  btn_Cancel->setText(tr("关闭"));
  btn_Cancel->setToolTip(tr("关闭 (Esc)"));
}

void OkCancelScreen::FormKeyDown(QKeyEvent* event) {
  // Esc first leaves the cell, then the row, then the screen.
  if (event->key() == Qt::Key_Escape && isInGridEdit(focusWidget())) return;
  const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_Escape) {
    event->accept();
    reject();
  } else if ((event->key() == Qt::Key_F9 && modifiers == Qt::NoModifier) ||
             (enter && modifiers == Qt::ControlModifier && !qobject_cast<QPlainTextEdit*>(focusWidget()))) {
    event->accept();
    pressOk();
  } else {
    TFrm_Base_Common::FormKeyDown(event);
  }
}

}  // namespace goodsbook
