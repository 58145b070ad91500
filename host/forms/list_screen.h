#pragma once

#include <QKeySequence>
#include <functional>
#include <memory>
#include <vector>

#include "host/controls/TDBGridEh.h"
#include "host/export.h"
#include "host/forms/Base_common.h"

class QAction;
class QHBoxLayout;
class QLabel;
class QMenu;
class QSplitter;
class QToolBar;
class QToolButton;

namespace goodsbook {

class TFrm_Sys_Filter;

// The statement of a list with a condition: " Where " and the condition behind it, or in front of its GROUP
// BY or ORDER BY; " and " and the condition in parentheses where it has a WHERE already. An empty condition
// changes nothing.
GOODSBOOKHOST_EXPORT QString withCondition(const QString& statement, const QString& condition);

// One action of a list's tool bar and menu.
struct ActionSpec {
  QString name;     // "Act_imp"
  QString caption;  // "导入"
  QString hint = {};
  QKeySequence shortcut = {};
  QString icon = {};                   // name in the icon theme
  std::function<void()> execute = {};  // guarded
  bool onToolBar = true;
  bool inMenu = true;
};

// What list, query and tree screens share: tool bar, grid, status line, loading, filter, print, export.
class GOODSBOOKHOST_EXPORT ListScreen : public TFrm_Base_Common {
  Q_OBJECT

 public:
  explicit ListScreen(QWidget* owner = nullptr);
  ~ListScreen() override;

  // Keeps the record and the rights, shows the screen, and loads the rows (GetData) once the caller is
  // through with its own set-up.
  virtual void InitForm(const Trecord& record);

  RecordSet AdoQry_Main;
  TDBGridEh* DBGridEh;

  QAction* action(const QString& name) const;  // null when there is none
  void refresh();                              // loads again; the current row stays current by its key
  QString filterText() const { return displayText_; }
  const QString& conditionText() const { return conditionText_; }

 protected:
  // Opens the list statement with the filter's condition. An override sets the statement first
  // (setListStatement).
  virtual void GetData();
  void setListStatement(const QString& select) { listStatement_ = select; }
  QString listStatement() const;  // the one set, else the body parameter's
  void setColumns(std::vector<GridColumn> columns, std::vector<Field> fields = {});
  void hideColumns(const QString& names);  // comma list: not shown, and not to be shown by the user either
  void setFilterDialog(TFrm_Sys_Filter* filter);  // what Act_Filter shows; not owned here
  void setCondition(const QString& condition, const QString& displayText);
  void setEmptyText(const QString& text);

  QAction* addScreenAction(ActionSpec spec);  // behind the base's own; before Act_Close
  void removeScreenAction(const QString& name);
  void setActionShown(const QString& name, bool shown);  // shown and usable, or neither

  virtual void Act_FilterExecute();
  virtual void Act_RefreshExecute();
  virtual void Act_PrintExecute();
  virtual void Act_ExportExecute();
  virtual void Act_LocateExecute();  // search in the current column
  virtual void Act_OtherExecute();   // hidden until a screen shows it
  virtual void Act_CloseExecute();
  virtual void DBGridEhDblClick() {}  // and Enter on a row

  virtual void updateActions();  // after a move, a load, a change of rights
  void showCount();
  void FormCreate() override;
  void FormKeyDown(QKeyEvent* event) override;
  void FormClose() override;
  void reject() override;  // Esc and the close button: closes the screen
  void Help() override;
  void showEvent(QShowEvent* event) override;

  QToolBar* ToolBar;
  QMenu* PopupMenu;
  QSplitter* Splitter;        // the grid; trees stand left of it
  QHBoxLayout* headRow;       // above the grid: ConditionTitle and what a screen adds
  QLabel* ConditionTitle;     // hidden while empty
  QString listTitle() const;  // of print-outs and files

 private:
  void buildBaseActions();
  void buildStatusLine();
  void clearFilter();
  void loadingAdvanced();

  class Loader;
  std::unique_ptr<Loader> loader_;
  QString listStatement_, conditionText_, displayText_;
  TFrm_Sys_Filter* filter_ = nullptr;
  QLabel* countLabel_ = nullptr;
  QLabel* filterLabel_ = nullptr;
  QToolButton* clearFilter_ = nullptr;
  QAction* closeSeparator_ = nullptr;
};

}  // namespace goodsbook
