// The tool bar, the menu and the status line of list screens.

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "host/forms/list_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

// The room in a tool bar that keeps the button behind it at least `left` pixels from the bar's left edge.
class ToolBarStop : public QWidget {
 public:
  ToolBarStop(int left, QWidget* button) : QWidget(button->parentWidget()), left_(left), button_(button) {
    setFixedWidth(0);
    button->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == button_ && event->type() == QEvent::Move)
      setFixedWidth(std::max(0, width() + left_ - button_->x()));
    return QWidget::eventFilter(watched, event);
  }

 private:
  int left_;
  QWidget* button_;
};

}  // namespace

void ListScreen::buildBaseActions() {
  addScreenAction({.name = u"Act_Filter"_s,
                   .caption = tr("筛选"),
                   .hint = tr("筛选"),
                   .shortcut = QKeySequence(Qt::CTRL | Qt::Key_F),
                   .icon = u"view-filter"_s,
                   .execute = [this] { Act_FilterExecute(); }});
  addScreenAction({.name = u"Act_Locate"_s,
                   .caption = tr("定位"),
                   .hint = tr("定位"),
                   .shortcut = QKeySequence(Qt::CTRL | Qt::Key_L),
                   .icon = u"edit-find"_s,
                   .execute = [this] { Act_LocateExecute(); }});
  addScreenAction({.name = u"Act_Refresh"_s,
                   .caption = tr("刷新"),
                   .hint = tr("刷新"),
                   .shortcut = QKeySequence(Qt::Key_F5),
                   .icon = u"view-refresh"_s,
                   .execute = [this] { Act_RefreshExecute(); }});
  addScreenAction({.name = u"Act_Print"_s,
                   .caption = tr("打印"),
                   .hint = tr("打印列表"),
                   .shortcut = QKeySequence(Qt::CTRL | Qt::Key_P),
                   .icon = u"document-print"_s,
                   .execute = [this] { Act_PrintExecute(); }});
  addScreenAction({.name = u"Act_Export"_s,
                   .caption = tr("导出"),
                   .hint = tr("导出到表格文件"),
                   .shortcut = QKeySequence(Qt::CTRL | Qt::Key_E),
                   .icon = u"document-export"_s,
                   .execute = [this] { Act_ExportExecute(); }});
  addScreenAction({.name = u"Act_Other"_s,
                   .caption = tr("其他"),
                   .hint = tr("其他"),
                   .shortcut = QKeySequence(Qt::Key_F8),
                   .icon = u"view-list-icons"_s,
                   .execute = [this] { Act_OtherExecute(); }});
  addScreenAction({.name = u"Act_Close"_s,
                   .caption = tr("关闭"),
                   .hint = tr("关闭"),
                   .shortcut = QKeySequence(Qt::Key_Escape),
                   .icon = u"window-close"_s,
                   .execute = [this] { Act_CloseExecute(); },
                   .inMenu = false});
  setActionShown(u"Act_Filter"_s, false);
  setActionShown(u"Act_Locate"_s, false);
  setActionShown(u"Act_Other"_s, false);
}

QAction* ListScreen::addScreenAction(ActionSpec spec) {
  auto* added = new QAction(QIcon::fromTheme(spec.icon), spec.caption, this);
  added->setObjectName(spec.name);
  added->setShortcut(spec.shortcut);
  added->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  setActionHint(added, spec.hint);
  connect(added, &QAction::triggered, this,
          [this, execute = std::move(spec.execute)] { guarded(this, execute); });
  addAction(added);
  QAction* behind = action(spec.before.isEmpty() ? u"Act_Close"_s : spec.before);
  if (behind == added) behind = nullptr;
  if (spec.onToolBar) {
    ToolBar->insertAction(behind, added);
    if (spec.left > 0) {
      QAction* stop =
          ToolBar->insertWidget(added, new ToolBarStop(spec.left, ToolBar->widgetForAction(added)));
      connect(added, &QAction::changed, stop, [added, stop] { stop->setVisible(added->isVisible()); });
    }
  }
  if (spec.inMenu) PopupMenu->insertAction(spec.before.isEmpty() ? nullptr : behind, added);
  return added;
}

void ListScreen::addEditActions(const EditHandlers& handlers) {
  const QString before = u"Act_Filter"_s;
  addScreenAction({.name = u"Act_Add"_s,
                   .caption = tr("增加"),
                   .hint = tr("增加一条记录"),
                   .shortcut = QKeySequence(Qt::Key_Insert),
                   .icon = u"list-add"_s,
                   .execute = handlers.add,
                   .before = before});
  addScreenAction({.name = u"Act_CopyAdd"_s,
                   .caption = tr("复制"),
                   .hint = tr("以当前记录为样本增加"),
                   .shortcut = QKeySequence(Qt::CTRL | Qt::Key_D),
                   .icon = u"edit-copy"_s,
                   .execute = handlers.copyAdd,
                   .before = before});
  addScreenAction({.name = u"Act_Edit"_s,
                   .caption = tr("修改"),
                   .hint = tr("修改当前记录"),
                   .shortcut = QKeySequence(Qt::Key_F2),
                   .icon = u"document-edit"_s,
                   .execute = handlers.edit,
                   .before = before});
  addScreenAction({.name = u"Act_View"_s,
                   .caption = tr("查看"),
                   .hint = tr("查看当前记录"),
                   .shortcut = QKeySequence(Qt::Key_F3),
                   .icon = u"view-visible"_s,
                   .execute = handlers.view,
                   .before = before});
  addScreenAction({.name = u"Act_Delete"_s,
                   .caption = tr("删除"),
                   .hint = tr("删除当前记录"),
                   .shortcut = QKeySequence(Qt::Key_Delete),
                   .icon = u"edit-delete"_s,
                   .execute = handlers.remove,
                   .before = before});
  ToolBar->insertSeparator(action(before));
  PopupMenu->insertSeparator(action(before));
}

void ListScreen::setActionHint(QAction* shown, const QString& hint) {
  const QString keys = shown->shortcut().toString(QKeySequence::NativeText);
  const QString text = hint.isEmpty() ? shown->text() : hint;
  shown->setToolTip(keys.isEmpty() ? text : text + u" ("_s + keys + u')');
  shown->setStatusTip(text);
}

QAction* ListScreen::action(const QString& name) const {
  return findChild<QAction*>(name, Qt::FindDirectChildrenOnly);
}

void ListScreen::removeScreenAction(const QString& name) {
  delete action(name);
}

void ListScreen::setActionShown(const QString& name, bool shown) {
  if (QAction* found = action(name)) {
    found->setVisible(shown);
    found->setEnabled(shown);
  }
}

void ListScreen::enableAction(const QString& name, bool enabled) {
  if (QAction* found = action(name)) found->setEnabled(enabled && found->isVisible());
}

void ListScreen::updateActions() {
  const bool open = AdoQry_Main.isOpen();
  enableAction(u"Act_Print"_s, open && hasRight(Trecord::printRight));
  enableAction(u"Act_Export"_s, open && hasRight(Trecord::exportRight));
}

void ListScreen::buildStatusLine() {
  countLabel_ = new QLabel(this);
  countLabel_->setObjectName(u"RecordCount"_s);
  filterLabel_ = new QLabel(this);
  filterLabel_->setObjectName(u"FilterText"_s);
  filterLabel_->setTextFormat(Qt::PlainText);
  filterLabel_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  filterLabel_->hide();
  clearFilter_ = new QToolButton(this);
  clearFilter_->setObjectName(u"btn_ClearFilter"_s);
  clearFilter_->setIcon(QIcon::fromTheme(u"edit-clear"_s));
  clearFilter_->setText(tr("清除筛选"));
  clearFilter_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  clearFilter_->setAutoRaise(true);
  clearFilter_->hide();
  onClick(clearFilter_, [this] { clearFilter(); });

  auto* line = new QHBoxLayout;
  line->setContentsMargins(8, 4, 8, 4);
  line->setSpacing(12);
  line->addWidget(countLabel_);
  line->addWidget(filterLabel_, 1);
  line->addWidget(clearFilter_);
  line->addStretch(0);
  static_cast<QVBoxLayout*>(layout())->addLayout(line);
}

void ListScreen::rowsMoved() {
  if (movedPending_) return;
  movedPending_ = true;
  // Loading tells of rows many times a second.
  QMetaObject::invokeMethod(
      this,
      [this] {
        movedPending_ = false;
        updateActions();
        showCount();
      },
      Qt::QueuedConnection);
}

void ListScreen::showCount() {
  const QLocale chinese(QLocale::Chinese);
  const QString count = chinese.toString(AdoQry_Main.rowCount());
  const int picked = DBGridEh->selectedRowCount();
  if (!AdoQry_Main.isOpen()) {
    countLabel_->clear();
  } else if (AdoQry_Main.isLoading()) {
    countLabel_->setText(tr("正在读取… %1 行").arg(count));
  } else if (picked > 0) {
    countLabel_->setText(tr("共 %1 行，已选 %2 行").arg(count, chinese.toString(picked)));
  } else {
    countLabel_->setText(tr("共 %1 行").arg(count));
  }
}

QString ListScreen::helpText() const {
  QString text = windowTitle().trimmed() + u"\n"_s;
  for (const QAction* each : actions()) {
    if (each->isVisible() && !each->shortcut().isEmpty())
      text += u"\n"_s + each->shortcut().toString(QKeySequence::NativeText) + u"  "_s + each->text();
  }
  text += tr("\nCtrl+T  按当前列排序：升序、降序、不排序\nCtrl+空格、Shift+↑↓、Ctrl+A  选择多行");
  return text;
}

}  // namespace goodsbook
