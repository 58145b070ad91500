#include "host/forms/Base.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QScreen>
#include <algorithm>

#include "host/data/errors.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

std::vector<TFrm_Base*>& living() {
  static std::vector<TFrm_Base*> screens;
  return screens;
}

int nextId() {
  static int last = 0;
  return ++last;
}

void showError(QWidget* parent, const QString& text) {
  if (!Session::exists()) {
    qWarning("%s", qPrintable(text));
    return;
  }
  Session::current().desktop().message(parent, text, 5);
}

}  // namespace

bool guarded(QWidget* parent, const std::function<void()>& action) {
  QString text;
  try {
    action();
    return true;
  } catch (const EAbort&) {
    return false;
  } catch (const EDatabaseError& error) {
    text = error.text;
  } catch (const std::exception& error) {
    text = QString::fromUtf8(error.what());
  } catch (...) {
    text = QCoreApplication::translate("goodsbook::TFrm_Base", "发生未知错误。");
  }
  showError(parent, text);
  return false;
}

TFrm_Base::TFrm_Base(QWidget* owner) : QDialog(owner), id_(nextId()) {
  living().push_back(this);
}

TFrm_Base::~TFrm_Base() {
  std::erase(living(), this);
}

const std::vector<TFrm_Base*>& TFrm_Base::all() {
  return living();
}

void TFrm_Base::Help() {
  if (!Session::exists()) return;
  const QString text = helpText();
  Session::current().desktop().message(this, text.isEmpty() ? windowTitle().trimmed() : text, 0,
                                       tr("帮助") + u" - "_s + windowTitle().trimmed());
}

QString TFrm_Base::helpText() const {
  return {};
}

void TFrm_Base::FormDestroy() {}

void TFrm_Base::lastWords() {
  if (!spoken_) {
    spoken_ = true;
    guarded(nullptr, [this] { FormDestroy(); });
  }
}

bool TFrm_Base::event(QEvent* event) {
  if (event->type() == QEvent::DeferredDelete) lastWords();
  if (event->type() == QEvent::Show && !event->spontaneous() && isWindow()) {
    resize(size().boundedTo(screen()->availableSize()));  // a shop's till may have a small screen
  }
  return QDialog::event(event);
}

void TFrm_Base::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1 && event->modifiers() == Qt::NoModifier) {
    guarded(this, [this] { Help(); });
    return;
  }
  QDialog::keyPressEvent(event);
}

ScreenFrame::~ScreenFrame() = default;

ScreenFrame* frameOf(QWidget* owner) {
  for (QWidget* widget = owner; widget; widget = widget->parentWidget()) {
    if (auto* frame = dynamic_cast<ScreenFrame*>(widget)) return frame;
  }
  return nullptr;
}

}  // namespace goodsbook
