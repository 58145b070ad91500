#pragma once

#include "host/controls/TDBGridEh.h"
#include "host/controls/grid_delegate.h"
#include "host/controls/grid_footer.h"
#include "host/controls/grid_model.h"
#include "host/controls/grid_picks.h"
#include "host/controls/grid_search.h"

namespace goodsbook {

class TDBGridEh::Private {
 public:
  explicit Private(TDBGridEh* grid);
  void setUp();

  // grid and record set
  void setRecordSet(RecordSet* rows);
  void followRecordSet();       // the record set's current row becomes the grid's
  void leadRecordSet(int row);  // the other way round; a row that cannot be posted stays current
  void afterReset();

  // columns
  void applyColumns();
  void applyRowHeight();
  void applyHidden();
  void placeFooter();
  int defaultWidth(int column) const;
  int firstShown() const;
  int firstCurrent() const;       // where a list that was opened begins: the key's column if shown
  int entryColumn() const;        // where filling in a new row begins; -1 when nothing is edited
  bool isStop(int column) const;  // Tab goes there: it can be edited, or is a button
  QModelIndex nextStop(const QModelIndex& cell, bool next) const;  // behind it or before it; invalid: none
  int nextEditable(int column) const;  // behind it in visual order; -1 when there is none
  void showHeaderMenu(QPoint place);
  void sortBy(int column);
  void sort(const QString& field, bool descending);
  void showSort();
  void applyEvenRowColor();
  QByteArray layout() const;
  void applyLayout(const QByteArray& layout);

  // cells
  bool isToggled(int column) const {
    return column >= 0 && model->column(column).checkBox && model->canEdit(column);
  }
  void toggle(int row, int column);
  void pressButton(int row, int column);
  void goOnFromCell();
  bool handleCellKey(const QKeyEvent& event);

  // rows
  void showPicks();
  void pickRange(int from, int to);
  void pickByMouse(int row, int before, Qt::KeyboardModifiers modifiers);
  bool handleRowKey(const QKeyEvent& event);
  bool appendAtEnd();
  bool dropEmptyRow();  // the new row at the end that nothing was typed into
  bool leaveByTab(const QKeyEvent& event);

  TDBGridEh* const q;
  GridModel* const model;
  GridPicks picks;
  GridDelegate* const delegate;
  GridFooter* footer = nullptr;
  GridSearch* search = nullptr;
  std::vector<bool> programHidden, userHidden;
  QStringList appliedFields;  // what the columns were laid out for
  QByteArray pendingLayout;
  int rowHeight = 0;  // as last reckoned from the font
  int anchor = -1;
  int pressedRow = -1, pressedColumn = -1;
  QColor evenRow;
  QString emptyText;
  bool readOnly = false, allowAppend = false, sortable = true, footerShown = false, pressedCurrent = false;
  bool following = false, placingFooter = false, colouring = false;
};

}  // namespace goodsbook
