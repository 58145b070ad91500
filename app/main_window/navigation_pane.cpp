#include "app/main_window/navigation_pane.h"

#include <QApplication>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <algorithm>

#include "app/modules.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

constexpr int numberRole = Qt::UserRole;

int numberOf(const QTreeWidgetItem* item) {
  return item ? item->data(0, numberRole).toInt() : 0;
}

bool isChoosable(const QTreeWidgetItem* item) {
  return numberOf(item) != 0 && !item->isDisabled();
}

}  // namespace

NavigationPane::NavigationPane(const std::function<bool(int)>& allowed, QWidget* parent)
    : QWidget(parent), search_(new QLineEdit(this)), tree_(new QTreeWidget(this)) {
  search_->setObjectName(u"Search"_s);
  search_->setPlaceholderText(tr("编号、名称或拼音首字母 (Ctrl+K)"));
  search_->setClearButtonEnabled(true);
  search_->addAction(QIcon::fromTheme(u"edit-find"_s), QLineEdit::LeadingPosition);
  tree_->setObjectName(u"Modules"_s);
  tree_->setHeaderHidden(true);
  tree_->setRootIsDecorated(true);
  tree_->setIndentation(14);
  tree_->setContextMenuPolicy(Qt::CustomContextMenu);
  for (const ModuleGroup& group : moduleGroups()) {
    auto* head = new QTreeWidgetItem(tree_, {group.caption});
    QFont bold = head->font(0);
    bold.setBold(true);
    head->setFont(0, bold);
    head->setFlags(Qt::ItemIsEnabled);
    for (const Module& module : group.modules) {
      auto* item = new QTreeWidgetItem(head, {module.caption});
      item->setIcon(0, QIcon::fromTheme(module.icon));
      item->setData(0, numberRole, module.number);
      item->setToolTip(0, tr("%1  %2").arg(module.number).arg(module.caption));
      item->setDisabled(!allowed(module.number));
    }
  }
  tree_->expandAll();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  layout->addWidget(search_);
  layout->addWidget(tree_, 1);

  search_->installEventFilter(this);
  tree_->installEventFilter(this);
  connect(search_, &QLineEdit::textChanged, this, &NavigationPane::narrow);
  connect(tree_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
    choose(item, QApplication::keyboardModifiers() & Qt::ControlModifier);
  });
  // The second press has given the tree the focus again; what the first one opened comes to the front.
  connect(tree_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
    if (!(QApplication::keyboardModifiers() & Qt::ControlModifier)) choose(item, false);
  });
  connect(tree_, &QTreeWidget::customContextMenuRequested, this, &NavigationPane::showMenu);
}

void NavigationPane::startSearch() {
  search_->setFocus(Qt::ShortcutFocusReason);
  search_->selectAll();
}

void NavigationPane::narrow(const QString& text) {
  const std::vector<const Module*> found = findModules(text);
  QTreeWidgetItem* best = nullptr;
  for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
    QTreeWidgetItem* head = tree_->topLevelItem(i);
    bool any = false;
    for (int j = 0; j < head->childCount(); ++j) {
      QTreeWidgetItem* item = head->child(j);
      const bool shown =
          std::ranges::any_of(found, [&](const Module* module) { return module->number == numberOf(item); });
      item->setHidden(!shown);
      any = any || shown;
      if (!found.empty() && found.front()->number == numberOf(item)) best = item;
    }
    head->setHidden(!any);
  }
  tree_->setCurrentItem(text.trimmed().isEmpty() ? nullptr : best);
}

void NavigationPane::choose(QTreeWidgetItem* item, bool inNewTab) {
  if (!isChoosable(item)) return;
  search_->clear();
  Q_EMIT chosen(numberOf(item), inNewTab);
}

void NavigationPane::showMenu(const QPoint& position) {
  QTreeWidgetItem* item = tree_->itemAt(position);
  if (!isChoosable(item)) return;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(tr("打开"), this, [this, item] { choose(item, false); });
  menu->addAction(tr("在新标签中打开"), this, [this, item] { choose(item, true); });
  menu->popup(tree_->viewport()->mapToGlobal(position));
}

bool NavigationPane::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
  if (enter) {
    choose(tree_->currentItem(), key->modifiers() & Qt::ControlModifier);
    return true;
  }
  if (watched == search_ && key->key() == Qt::Key_Down) {
    if (!tree_->currentItem()) tree_->setCurrentItem(tree_->topLevelItem(0)->child(0));
    tree_->setFocus();
    return true;
  }
  if (key->key() == Qt::Key_Escape) {
    search_->clear();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace goodsbook
