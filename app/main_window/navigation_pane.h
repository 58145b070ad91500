#pragma once

#include <QWidget>
#include <functional>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace goodsbook {

// The modules in groups, with a search field above them: number, part of the name, or pinyin initials. Enter
// opens the best match, Down goes into the list, Esc clears.
class NavigationPane : public QWidget {
  Q_OBJECT

 public:
  // Modules for which `allowed` is false are shown grey.
  explicit NavigationPane(const std::function<bool(int)>& allowed, QWidget* parent = nullptr);

  void startSearch();  // the focus goes to the search field

 Q_SIGNALS:
  void chosen(int module, bool inNewTab);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void narrow(const QString& text);
  void choose(QTreeWidgetItem* item, bool inNewTab);
  void showMenu(const QPoint& position);

  QLineEdit* search_;
  QTreeWidget* tree_;
};

}  // namespace goodsbook
