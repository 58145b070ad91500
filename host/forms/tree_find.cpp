#include "host/forms/tree_find.h"

#include <QKeyEvent>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <algorithm>

#include "host/Zpy.h"
#include "host/forms/tree_node.h"
#include "host/lookup/match.h"

namespace goodsbook {

TreeFind::TreeFind(QTreeWidget& tree, QWidget* parent) : TCustomDBEditEh(parent), tree_(tree) {
  setPlaceholderText(tr("查找 (Ctrl+L)"));
  setToolTip(tr("查找代号、名称或拼音首字母，↑ ↓ 到上一个、下一个"));
  setClearButtonEnabled(true);
  connect(this, &QLineEdit::textChanged, this, &TreeFind::findBest);
}

std::vector<QTreeWidgetItem*> TreeFind::matches() const {
  const QString typed = text().trimmed();
  std::vector<std::pair<int, QTreeWidgetItem*>> ranked;
  for (QTreeWidgetItemIterator it(&tree_); *it && !typed.isEmpty(); ++it) {
    const QString code = treenode::code(*it);
    if (code.isEmpty()) continue;
    const QString name = treenode::name(*it);
    if (const int rank = matchRank(code, name, Zpy::GetPY(name), typed); rank >= 0)
      ranked.emplace_back(rank, *it);
  }
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<QTreeWidgetItem*> nodes;
  for (const auto& [rank, node] : ranked) nodes.push_back(node);
  return nodes;
}

void TreeFind::findBest() {
  const std::vector<QTreeWidgetItem*> found = matches();
  QPalette colours;
  if (found.empty() && !text().trimmed().isEmpty())
    colours.setColor(QPalette::Text, QColor(0xc0, 0x39, 0x2b));
  setPalette(colours);
  if (!found.empty()) go(found.front());
}

void TreeFind::step(int by) {
  const std::vector<QTreeWidgetItem*> found = matches();
  if (found.empty()) return;
  const auto present = std::find(found.begin(), found.end(), treenode::selected(tree_));
  const auto count = static_cast<int>(found.size());
  const auto at = static_cast<int>(present - found.begin());
  go(found[static_cast<std::size_t>(present == found.end() ? 0 : (at + by + count) % count)]);
}

void TreeFind::go(QTreeWidgetItem* node) {
  tree_.setCurrentItem(node);
  tree_.scrollToItem(node);
}

bool TreeFind::event(QEvent* event) {
  // Esc would close the screen.
  if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    event->accept();
    return true;
  }
  return TCustomDBEditEh::event(event);
}

void TreeFind::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Down:
      step(1);
      break;
    case Qt::Key_Up:
      step(-1);
      break;
    case Qt::Key_Escape:
      tree_.setFocus();
      break;
    default:
      TCustomDBEditEh::keyPressEvent(event);
      return;
  }
  event->accept();
}

}  // namespace goodsbook
