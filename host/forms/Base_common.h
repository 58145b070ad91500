#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <functional>
#include <map>
#include <stdexcept>

#include "host/U_glo.h"
#include "host/controls/edits.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/data/record_set.h"
#include "host/export.h"
#include "host/forms/Base.h"
#include "host/forms/body_params.h"
#include "host/forms/field_set.h"

class QKeyEvent;

namespace goodsbook {

// What all data screens share: parameters, settings, field checks, and the rules for leaving a field.
//
// A screen builds its elements in its constructor, through FormBuilder, and calls FormCreate() last there.
// Protected members with contract names are those that screens read and set directly.
class GOODSBOOKHOST_EXPORT TFrm_Base_Common : public TFrm_Base {
  Q_OBJECT

 public:
  explicit TFrm_Base_Common(QWidget* owner = nullptr);
  ~TFrm_Base_Common() override;

  // The 17 texts of body_params.h; std::invalid_argument for another number of them.
  virtual void SetBodyParam(const QStringList& texts);
  void SetFormParam(const QString& moduleCode);  // "101": first argument of the data operations
  void SetUserParam(const Trecord& record);      // keeps the user's rights
  const QString& moduleCode() const { return moduleCode_; }
  const Trecord& record() const { return record_; }
  bool hasRight(Trecord::RightByte right) const { return record_.right(right); }
  const QStringList& bodyParams() const { return bodyParams_; }
  QString bodyParam(bodyparam::Position position) const { return bodyParams_.at(position); }
  QString costRight() const { return bodyParam(bodyparam::costRight); }  // "1": costs may be seen

  // A host setting by name: a global of U_glo, else the value in SYS_SETTING, else empty.
  QString Getsysinfo(const QString& name) const;

  // Checks on one edit. Each shows its message (kind 5) with the field's label, puts the focus into it and
  // throws EAbort.
  void CheckBlank(QLineEdit* edit);  // not empty, blanks do not count
  void CheckId(
      QLineEdit* edit);  // empty only where not required, else a code of the edit's table; shows its name
  void CheckFloat(QLineEdit* edit);         // a number
  void CheckFloatCanZero(QLineEdit* edit);  // a number, zero is an answer too
  void CheckDate(TDBDateTimeEditEh* edit);  // empty or a date, which takes its usual form
  // What OK makes sure of: required fields are filled, dates are dates, codes have passed their check.
  void CheckAll();

  // Page pageNo (from 1) of a select, ordered by the key field. As opensql.
  bool OpenSqlPage(RecordSet& rows, const QString& sql, int pageSize, int pageNo);

  // --- elements by name; std::logic_error for one that is not there
  template <class Element>
  Element* element(const QString& name) const;
  QWidget* elementNamed(const QString& name) const;
  TCustomDBEditEh* edit(const QString& name) const { return element<TCustomDBEditEh>(name); }
  TDBNumberEditEh* numberEdit(const QString& name) const { return element<TDBNumberEditEh>(name); }
  TDBDateTimeEditEh* dateEdit(const QString& name) const { return element<TDBDateTimeEditEh>(name); }
  TExtEdit* lookupEdit(const QString& name) const { return element<TExtEdit>(name); }
  QCheckBox* checkBox(const QString& name) const { return element<QCheckBox>(name); }
  QLabel* label(const QString& name) const { return element<QLabel>(name); }
  QString text(const QString& name) const { return elementText(elementNamed(name)); }  // boxes: "1" or "0"
  void setText(const QString& name, const QString& value) { setElementText(elementNamed(name), value); }
  void setFieldVisible(const QString& name, bool visible);  // with its label and name label
  bool isChecked(const QString& name) const;
  void setChecked(const QString& name, bool on);
  QString labelOf(
      const QWidget* field) const;  // the label before a field without blanks and colon, as messages name it

  RecordSet AdoQry_Tmp;  // for the screen's own look-ups

  FieldSet& fields() { return fields_; }
  QWidget* body() const { return body_; }  // where the screen's elements go

  // --- leaving a field
  // `check` runs when the focus goes from `field` to another element of this screen, except to btn_Cancel;
  // not when the window loses the focus, a box opens or a menu drops. EAbort, or any other error (which is
  // shown), puts the focus back and ends what the user had started: the click, the key, the OK. Checks never
  // nest.
  void setExitCheck(QWidget* field, std::function<void()> check);
  // While an exit check runs: the element that takes the focus; else null.
  QWidget* focusTarget() const { return focusTarget_; }
  // Moves the focus to `target`, as a user would; false when an exit check kept it.
  bool leaveFor(QWidget* target);

  // While true the program itself fills the fields: AllChange does not count, and no exit check runs.
  bool loading() const { return loading_; }

  void done(int result) override;  // FormClose, then as QDialog

  // A user changed a field. Connected to every declared field.
  virtual void AllChange();

 protected:
  // Set-up after the elements are there; calling it again does no harm.
  virtual void FormCreate();
  // Every key typed in this screen, before the element with the focus has it; an accepted event goes no
  // further. Here: Enter goes to the next field, and presses the button that has the focus.
  virtual void FormKeyDown(QKeyEvent* event);
  virtual void FormClose();  // it is being closed

  // False puts off the checks of code fields until OK, which makes up for them in CheckAll.
  virtual bool looksUpCodes() const { return true; }

  void setLoading(bool on) { loading_ = on; }
  void focusFirst(QWidget* field);  // focus and select all
  void focusFirstField();           // the first one that can be changed
  void focusNextField();            // in tab order; of the buttons only btn_ok
  void onClick(QAbstractButton* button, std::function<void()> handler);  // guarded
  QPushButton* makeButton(const QString& name, const QString& caption);

  QString moduleCode_ = QStringLiteral("101");
  bool loading_ = false;

 private:
  friend class ScreenEvents;
  QWidget* nextField(const QWidget* start) const;
  bool focusMoved(QWidget* from, QWidget* to);  // false: a check kept the focus in `from`
  bool runExitCheck(QWidget* field, QWidget* target);

  QWidget* body_;
  Trecord record_;
  QStringList bodyParams_;
  FieldSet fields_;
  std::map<const QWidget*, std::function<void()>> exitChecks_;
  QPointer<QWidget> focusTarget_;
  bool checking_ = false;
};

template <class Element>
Element* TFrm_Base_Common::element(const QString& name) const {
  auto* found = qobject_cast<Element*>(elementNamed(name));
  if (!found) throw std::logic_error("element of another kind: " + name.toStdString());
  return found;
}

}  // namespace goodsbook
