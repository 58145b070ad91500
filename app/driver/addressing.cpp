#include "app/driver/addressing.h"

#include <QApplication>
#include <QDialog>
#include <algorithm>
#include <utility>

#include "app/driver/command.h"
#include "app/driver/opening_order.h"
#include "host/forms/Base.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// Dialogs that are no screens, a print preview for example, get numbers of their own far above those of the
// screens.
constexpr int firstForeignId = 1'000'000;

bool isPicker(const QWidget& window) {
  const Qt::WindowType type = window.windowType();
  return window.isWindow() && (type == Qt::Popup || type == Qt::Tool || type == Qt::ToolTip);
}

// A screen that was made but is not shown is not open; a page of the main window is, also behind another tab.
bool isOpen(const TFrm_Base& screen) {
  return screen.isVisible() || (!screen.isWindow() && frameOf(screen.parentWidget()) != nullptr);
}

QString classOf(const QWidget& window) {
  const QString name = QString::fromLatin1(window.metaObject()->className());
  return name.mid(name.lastIndexOf(u':') + 1);
}

// The dialog that takes all input, unless it only asks for a moment (a menu).
QWidget* activeModal() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal && modal->isVisible() ? modal : nullptr;
}

}  // namespace

int Addressing::idOf(const QWidget& window) {
  if (const auto* screen = qobject_cast<const TFrm_Base*>(&window)) return screen->screenId();
  static int next = firstForeignId;
  const char* property = "goodsbook.driver.id";
  if (!window.property(property).isValid()) const_cast<QWidget&>(window).setProperty(property, next++);
  return window.property(property).toInt();
}

std::vector<QWidget*> Addressing::windows() const {
  std::vector<QWidget*> open;
  for (TFrm_Base* screen : TFrm_Base::all()) {
    if (isOpen(*screen)) open.push_back(screen);
  }
  const QWidgetList all = QApplication::topLevelWidgets();
  for (QWidget* widget : all) {
    if (widget->isVisible() && qobject_cast<QDialog*>(widget) && !qobject_cast<TFrm_Base*>(widget))
      open.push_back(widget);
  }
  std::ranges::sort(open, {}, [](const QWidget* window) {
    return std::pair(OpeningOrder::placeOf(*window), idOf(*window));
  });
  return open;
}

QWidget* Addressing::foremost() const {
  const std::vector<QWidget*> open = windows();
  const auto picker = std::ranges::find_if(open.rbegin(), open.rend(),
                                           [](const QWidget* window) { return isPicker(*window); });
  if (picker != open.rend()) return *picker;
  if (QWidget* modal = activeModal(); modal && std::ranges::find(open, modal) != open.end()) return modal;
  const auto visible = std::ranges::find_if(open.rbegin(), open.rend(),
                                            [](const QWidget* window) { return window->isVisible(); });
  if (visible != open.rend()) return *visible;
  return open.empty() ? nullptr : open.back();
}

void Addressing::use(int id) {
  used_ = &byId(id);
  modalWhenUsed_ = activeModal();
}

QWidget& Addressing::byId(int id) const {
  for (QWidget* window : windows()) {
    if (idOf(*window) == id) return *window;
  }
  throw CommandError(DriverTexts::tr("没有窗口 %1").arg(id));
}

QWidget& Addressing::addressed() {
  QWidget* front = foremost();
  if (!front) throw CommandError(DriverTexts::tr("没有打开的窗口"));
  if (front != used_ && isPicker(*front)) return *front;
  QWidget* modal = activeModal();
  if (modalWhenUsed_ && modal != modalWhenUsed_) modalWhenUsed_ = nullptr;
  const std::vector<QWidget*> open = windows();
  const bool stillOpen = used_ && std::ranges::find(open, used_.data()) != open.end();
  if (!stillOpen) used_ = nullptr;
  const bool dialogCameUp = modal && modal != modalWhenUsed_ && modal != used_;
  return stillOpen && !dialogCameUp ? *used_ : *front;
}

QWidget& Addressing::reachable() {
  QWidget& window = addressed();
  const QWidget* modal = activeModal();
  const bool blocked = modal && modal != &window && !modal->isAncestorOf(&window) && !isPicker(window);
  if (blocked) {
    throw CommandError(DriverTexts::tr("窗口 %1 前面有对话框 %2").arg(classOf(window), classOf(*modal)));
  }
  return window;
}

QJsonObject Addressing::describe(const QWidget& window) {
  const auto* screen = qobject_cast<const TFrm_Base*>(&window);
  return {{u"class"_s, classOf(window)},        {u"caption"_s, window.windowTitle()},
          {u"tag"_s, screen ? screen->Tag : 0}, {u"modal"_s, window.isModal() && window.isVisible()},
          {u"visible"_s, window.isVisible()},   {u"id"_s, idOf(window)}};
}

}  // namespace goodsbook
