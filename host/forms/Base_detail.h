#pragma once

#include <functional>

#include "host/export.h"
#include "host/forms/ok_cancel_screen.h"
#include "host/forms/row_guard.h"

namespace goodsbook {

// The editor of one row of a list. Modes are the texts "Add", "CopyAdd", "Edit", "ReadOnly".
//
// OK runs the exit check of the field that has the focus, then CheckAll, then SaveData and showSaved. For
// "Add" and "CopyAdd" it appends a row to the list's record set before SaveData, so that "the current row" is
// the one to fill; when they do not come to their end that row is gone again, an edited row is as it was, and
// the editor stays open with its input.
//
// In "Edit" the row as another program left it meanwhile is told before the save (RowGuard).
class GOODSBOOKHOST_EXPORT TFrm_Base_Detail : public OkCancelScreen {
  Q_OBJECT

 public:
  explicit TFrm_Base_Detail(QWidget* owner = nullptr);

  // Fills the screen by RefreshData and shows it modally over the list's rows. True when something was saved.
  // When RefreshData aborts, the editor does not open.
  virtual bool InitForm(const QString& mode, RecordSet& listRows);

  // How the list reads its rows: in "Edit" its row is read again before the editor fills itself from it.
  void setListStatement(const QString& select) { listStatement_ = select; }

  // The way in for documents: opens in "Add" over rows that are not a list of this kind. No row is appended
  // for it: the screen's SaveData does what is wanted. Returns at once, with the screen shown modally.
  virtual void SetStatus(RecordSet& rows);

  const QString& mode() const { return mode_; }
  bool isAdding() const { return mode_ == QLatin1String("Add") || mode_ == QLatin1String("CopyAdd"); }
  bool isReadOnly() const { return mode_ == QLatin1String("ReadOnly"); }
  bool isModified() const { return modified_; }

  void AllChange() override;

 protected:
  // Fills the fields. An override starts with setLoading(true), sets firstFocus and lockedFields, fills its
  // elements and calls this, which applies the mode and the locks, gives the focus and ends loading. Here,
  // too: the declared columns are filled by loadFields().
  virtual void RefreshData();
  // Writes the database. EAbort and database errors leave the editor open.
  virtual void SaveData() = 0;
  // Writes what was saved into the list's current row: here, the declared columns. Where the answer to a save
  // was lost it comes at a later OK, with nothing before it and the elements as SaveData left them.
  virtual void showSaved() { storeFields(); }

  void loadFields();   // "Add": empties the declared fields; else takes them from the list's current row
  void storeFields();  // declared columns into the list's current row, and posts it
  virtual QString rowCaption() const;  // what questions call the row: key and name
  RecordSet& listRows() const { return *listRows_; }
  void setMode(const QString& mode) { mode_ = mode; }

  QString firstFocus;    // element name; empty: the first field that can be changed
  QString lockedFields;  // comma list of element names, case ignored: shown, not changed

  void btn_okClick() override;
  void endSaved() override;
  void btn_CancelClick() override;
  bool okAllowed() const override;
  bool hasUnsavedInput() const override { return (modified_ || hasOpenCell()) && !isReadOnly(); }
  QString helpText() const override;

  void enableOk();            // what every editor does when its data change by another way than its fields
  QCheckBox* ContinueAdd;     // "保存后继续增加"; shown while adding, off at every opening
  bool addsOn = true;         // false: one row an opening, ContinueAdd is not shown
  bool appendsRow = true;     // a row for "Add" and "CopyAdd" is this class's business
  bool fillsFromList = true;  // false: the editor reads its row itself, a list may show it in other words

 private:
  void watchRow();
  void withRow(const std::function<void()>& work);
  void closeSaved();
  void openFilled();

  RecordSet* listRows_ = nullptr;
  QString mode_, listStatement_;
  RowGuard rowGuard_;
  bool modified_ = false;
  bool saved_ = false;
};

}  // namespace goodsbook
