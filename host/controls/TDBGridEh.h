#pragma once

#include <QTableView>
#include <functional>
#include <memory>
#include <vector>

#include "host/data/record_set.h"
#include "host/export.h"

namespace goodsbook {

struct GridColumn {
  QString field = {};
  QString title = {};            // empty: the field's label, else its name
  int width = 0;                 // pixels at 100 %; 0: by the field
  Qt::Alignment alignment = {};  // none: text left, numbers right, flags centred
  bool visible = true;
  bool readOnly = true;
  bool checkBox = false;     // flags shown and set as boxes
  bool button = false;       // a button that reports columnButtonClicked
  bool hideRepeats = false;  // a value equal to the one above is not painted again
  bool sum = false;          // summed in the footer
  // How a cell is edited where the column is not read-only.
  int typingLimit = 0;     // characters; 0: the field's size
  bool upperCase = false;  // while typing
  bool numberEdit =
      false;  // only characters of a number, also where the field is a text; fields of numbers always
  int decimalPlaces = 4;  // most digits behind the point that can be typed
  bool ellipsis = false;  // the editor has a button that reports columnButtonClicked, as do F4 and Alt+Down
  QString displayFormat = {};  // overrides the field's
};

// The grid of all screens over a record set: title click sorts, typing searches in the current column, rows
// can be picked in order, cells edited where the column allows it, columns moved, sized and hidden by the
// user. The current row of the record set and of the grid are one.
class GOODSBOOKHOST_EXPORT TDBGridEh : public QTableView {
  Q_OBJECT

 public:
  explicit TDBGridEh(QWidget* parent = nullptr);
  ~TDBGridEh() override;

  void setRecordSet(RecordSet* rows);
  RecordSet* recordSet() const;
  void setColumns(std::vector<GridColumn> columns);
  const std::vector<GridColumn>& columns() const;  // in the declared order
  int columnOf(const QString& field) const;        // -1 when there is none
  void setColumnVisible(const QString& field, bool visible);

  void setReadOnly(bool readOnly);  // no cell can be changed
  bool isReadOnly() const;
  void setAllowAppend(bool on);  // Down and Enter behind the last row append one
  bool appendRow();              // as these keys do; false when it may not be or an empty new row waits
  void setRowNumbers(bool on);
  void setSortable(bool on);
  void setEvenRowColor(const QColor& color);       // none: the palette's alternate colour
  void setEmptyText(const QString& text);          // what an empty list says to do next
  void setFooterVisible(bool on);                  // sums of columns that ask for one
  QString footerText(const QString& field) const;  // the sum shown under a column

  // Makes the next row current whose text in the current column begins with `text`, behind the current row
  // and around; the same search goes on by typing and F3. False when there is none.
  bool findText(const QString& text);
  // The column that is current when a list opens, and searched where the current one shows boxes only.
  void setKeyField(const QString& field);
  bool isSearchKey(const QKeyEvent& event) const;  // Esc, F3, Shift+F3 while a search is going on

  // Rows picked by the user, in the order of picking; none picked is empty (the current row does not count).
  std::vector<RecordSet::Bookmark> selectedRows() const;
  int selectedRowCount() const;
  void selectRow(int row, bool on = true);
  void clearSelectedRows();

  // Called before a cell is painted: colours, font, text and background of `option` can be changed.
  using DrawColumnCell = std::function<void(int row, const QString& field, QStyleOptionViewItem& option)>;
  void setDrawColumnCell(DrawColumnCell draw);

  QString selectedField() const;  // field of the current cell
  void setSelectedField(const QString& field);
  // Puts `text` into a cell through its real editor and commits it; false when the cell cannot be edited.
  bool editCell(int row, const QString& field, const QString& text);
  void clickCell(int row, const QString& field, bool doubleClick = false);

  // The cell that is being typed into, if any. A text that cannot be read is told to the user; the cell stays
  // open with it then, and keeps the focus.
  bool hasOpenInput() const;                  // something was typed into it
  bool takeCell();                            // reads it and closes it; false when it was refused
  void dropCell();                            // closes it unread
  bool takeBackFocus(const QWidget* editor);  // back into a cell that was refused as the focus left it

  void copyToClipboard();  // throws EAbort when the user cancels; picked rows or the current one,
                           // tab-separated, with headings

  // Order, widths and visibility of the columns and the sort, as one text for layout storage.
  QByteArray saveLayout() const;
  void restoreLayout(const QByteArray& layout);

 Q_SIGNALS:
  void columnButtonClicked(int row, const QString& field);
  void rowDoubleClicked(int row);
  void titleClicked(const QString& field);
  void columnEntered(const QString& field);
  void picksChanged();
  void enteredBehindLast();           // Enter where no further cell is to be filled in
  void keyPressed(QKeyEvent* event);  // before the grid handles it; accepted events go no further

 protected:
  bool event(QEvent* event) override;
  bool focusNextPrevChild(
      bool next) override;  // behind the last cell and before the first one out of the grid
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void updateGeometries() override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace goodsbook
