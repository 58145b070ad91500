#pragma once

#include <QHash>
#include <QJsonObject>
#include <QPointer>
#include <QWidget>
#include <vector>

namespace goodsbook {

// Which windows are open, and which of them a command is meant for: a picker or hint list while it shows,
// else the window that was chosen with `use`, else the visible modal dialog, else the newest window. A dialog
// that comes up after the choice goes before it until it is closed.
class Addressing {
 public:
  // Open windows, oldest first.
  std::vector<QWidget*> windows() const;
  QWidget* foremost() const;  // what is addressed when nothing was chosen; null when no window is open

  void use(int id);      // CommandError when no open window has this id
  QWidget& addressed();  // CommandError when no window is open
  QWidget& reachable();  // the same for a user's doing; CommandError when a modal dialog stands before it
  QWidget& byId(int id) const;

  static int idOf(const QWidget& window);
  static QJsonObject describe(const QWidget& window);  // as `screens` tells it

 private:
  QPointer<QWidget> used_;
  QPointer<QWidget> modalWhenUsed_;
};

}  // namespace goodsbook
