#pragma once

#include "host/controls/edits.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace goodsbook {

// Finds nodes of a tree by code, name or the name's initials. Typing goes to the node that answers best, Down
// and Up to the next one and the one before, Esc back to the tree.
class TreeFind : public TCustomDBEditEh {
  Q_OBJECT

 public:
  TreeFind(QTreeWidget& tree, QWidget* parent);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  std::vector<QTreeWidgetItem*> matches() const;  // best first
  void findBest();
  void step(int by);
  void go(QTreeWidgetItem* node);

  QTreeWidget& tree_;
};

}  // namespace goodsbook
