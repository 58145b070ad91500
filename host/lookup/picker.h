#pragma once

#include <QPointer>
#include <memory>

#include "host/controls/edits.h"
#include "host/data/record_set.h"
#include "host/export.h"
#include "host/forms/Base.h"
#include "host/lookup/lookup_table.h"

namespace goodsbook {

class TDBGridEh;

// A small window below an edit that offers the rows of a table: a search field `Edit1` and the list
// `DBGridEh`. Typing narrows the list over code, name and initials, Up and Down move in it, Return or a
// double click takes the current row, Esc closes. show() drops it below its edit with the edit's code
// preselected; a row that is taken goes into the edit, its name into the edit's label, and the focus goes on
// behind the edit. It closes by itself when the user goes elsewhere.
class GOODSBOOKHOST_EXPORT LookupPicker : public TFrm_Base {
  Q_OBJECT

 public:
  // Where a taken row goes besides the edit; what is null or empty is left alone.
  struct Target {
    RecordSet* rows = nullptr;  // its current row is edited
    QString codeField, nameField;
    QLabel* nameLabel = nullptr;  // instead of the edit's own
    QLineEdit* nameEdit = nullptr;
  };

  // `rows` is the list's record set, one of its own when there is none; its fields are named as in the table.
  LookupPicker(const LookupTable& table, QWidget* owner, RecordSet* rows = nullptr);
  ~LookupPicker() override;

  // Makes this the picker of `edit`; `condition` (T-SQL) narrows the rows offered.
  void attach(TExtEdit* edit, const QString& condition = {});
  // The same for an edit that does not learn of it: show() drops the list below it.
  void dropBelow(QLineEdit* edit, const QString& condition = {});
  // For a cell of a grid: shows below the current cell, the row taken goes into these fields of the current
  // row.
  void showForCell(TDBGridEh* grid, const QString& codeField, const QString& nameField,
                   const QString& condition = {});
  void setTarget(Target target) { target_ = std::move(target); }

  void setVisible(bool visible) override;
  QLineEdit* edit() const;  // null for a cell of a grid

 Q_SIGNALS:
  void picked(const QString& code, const QString& name);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  QString helpText() const override;

 private:
  void build();
  void prepare();
  void preselect(const QString& code);
  void narrow(const QString& text);
  void fill(const std::vector<const LookupTable::Row*>& chosen);
  void step(int key);
  void take();
  void leave(bool onward);
  void goOn();
  void focusWent(const QWidget* now);
  QString code() const;  // that stands there

  LookupTable table_;
  QString condition_;
  Target target_;
  QPointer<QWidget> anchor_;  // the edit or the grid that it drops below
  QPointer<RecordSet> rows_;
  TCustomDBEditEh* search_;
  TDBGridEh* grid_;
  std::vector<LookupTable::Row> all_;
  std::vector<int> levels_;  // of the rows shown; empty while a search narrows them
};

}  // namespace goodsbook
