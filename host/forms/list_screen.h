#pragma once

#include <QHBoxLayout>
#include <QKeySequence>
#include <functional>
#include <vector>

#include "host/controls/TDBGridEh.h"
#include "host/export.h"
#include "host/forms/Base_common.h"

class QAction;
class QLabel;
class QMenu;
class QSplitter;
class QToolBar;
class QToolButton;

namespace goodsbook {

class ProgressiveLoad;
class TFrm_Sys_Filter;
class TIniPropStorageManEh;
class TPropStorageEh;

// One action of a list's tool bar and menu.
struct ActionSpec {
  QString name;     // "Act_imp"
  QString caption;  // "导入"
  QString hint = {};
  QKeySequence shortcut = {};
  QString icon = {};                   // name in the icon theme
  std::function<void()> execute = {};  // guarded
  QString before = {};                 // name of the action that it stands before; empty: Act_Close
  int left = 0;  // where its button starts at the earliest, from the tool bar's left edge
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

  void done(int result) override;

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

  QAction* addScreenAction(ActionSpec spec);
  // Act_Add, Act_CopyAdd, Act_Edit, Act_View, Act_Delete, at the head of the tool bar.
  struct EditHandlers {
    std::function<void()> add, copyAdd, edit, view, remove;
  };
  void addEditActions(const EditHandlers& handlers);
  void removeScreenAction(const QString& name);
  void enableAction(const QString& name, bool enabled);
  static void setActionHint(QAction* shown, const QString& hint);  // with the shortcut named
  void setActionShown(const QString& name, bool shown);            // shown and usable, or neither

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
  void FormKeyDown(QKeyEvent* event) override;
  void FormClose() override;
  QString helpText() const override;
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
  void loadLayout();
  void offerCancel();  // while something waits for all rows
  void showEmptyText();
  void clearFilter();
  void reload();  // loads again, from the first row
  void narrow(const QString& condition, const QString& displayText);
  void applyMoneyFormats();
  void rowsMoved();
  void openRows(const QString& select);
  void findKeyAgain();
  bool findLoaded(const QString& field, const QVariant& value);

  QString listStatement_, conditionText_, displayText_, emptyText_;
  TFrm_Sys_Filter* filter_ = nullptr;
  QLabel* countLabel_ = nullptr;
  QLabel* filterLabel_ = nullptr;
  QToolButton* clearFilter_ = nullptr;
  TIniPropStorageManEh* manager_ = nullptr;
  TPropStorageEh* layout_ = nullptr;
  ProgressiveLoad* load_;
  QVariant keyToFind_;  // of the row that was current before a refresh
  bool movedPending_ = false;
};

}  // namespace goodsbook
