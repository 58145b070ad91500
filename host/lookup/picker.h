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

  LookupPicker(const LookupTable& table, QWidget* owner);
  ~LookupPicker() override;

  // Makes this the picker of `edit`; `condition` (T-SQL) narrows the rows offered.
  void attach(QLineEdit* edit, const QString& condition = {});
  void setTarget(Target target) { target_ = std::move(target); }
  void setCondition(const QString& condition) { condition_ = condition; }

  void setVisible(bool visible) override;
  QLineEdit* edit() const { return edit_; }

 Q_SIGNALS:
  void picked(const QString& code, const QString& name);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildWindow();
  void load();
  void narrow();
  void preselect();
  void place();
  void take();
  void leave(bool onward);

  LookupTable table_;
  QString condition_;
  Target target_;
  QPointer<QLineEdit> edit_;
  TCustomDBEditEh* search_ = nullptr;
  TDBGridEh* grid_ = nullptr;
  RecordSet* rows_ = nullptr;
  std::vector<LookupTable::Row> all_;
};

}  // namespace goodsbook
