#pragma once

#include <QDateTime>
#include <QLineEdit>
#include <QPointer>
#include <limits>

#include "host/export.h"

class QLabel;
class QToolButton;

namespace goodsbook {

class TFrm_Base;
struct LookupTable;

// A text edit. Its limit holds for typing, pasting and input methods, not for what the program puts there.
// The keyboard focus selects the whole text.
class GOODSBOOKHOST_EXPORT TCustomDBEditEh : public QLineEdit {
  Q_OBJECT
  Q_PROPERTY(int typingLimit READ typingLimit WRITE setTypingLimit)
  Q_PROPERTY(bool upperCase READ isUpperCase WRITE setUpperCase)

 public:
  explicit TCustomDBEditEh(QWidget* parent = nullptr);
  ~TCustomDBEditEh() override;
  void setTypingLimit(int characters) { limit_ = characters; }  // 0: none
  int typingLimit() const { return limit_; }
  void setUpperCase(bool on) { upper_ = on; }
  bool isUpperCase() const { return upper_; }

  // Puts `typed` at the cursor, in place of the selection, as if the user had typed it.
  void insertTyped(const QString& typed);

 protected:
  // What of `typed` may stand between `before` and `after`, before the limit is applied. More than one
  // character comes from the clipboard or an input method.
  virtual QString accepted(const QString& typed, const QString& before, const QString& after) const;

  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  QString fitting(const QString& typed, int from, int to) const;  // in place of the characters from..to

  int limit_ = 0;
  bool upper_ = false;
};

// A number edit. It keeps the text as typed, an empty one stays empty, nothing is clamped; only characters of
// a number can be typed (full-width ones become plain). A pasted amount may have digit groups and a currency
// sign; a text that is no number, or has more decimals than may be typed, is refused whole with a tool tip,
// so that no other number comes of it. The edit's text is what goes into statements.
class GOODSBOOKHOST_EXPORT TDBNumberEditEh : public TCustomDBEditEh {
  Q_OBJECT
  Q_PROPERTY(QString displayFormat READ displayFormat WRITE setDisplayFormat)
  Q_PROPERTY(double maximum READ maximum WRITE setMaximum)

 public:
  explicit TDBNumberEditEh(QWidget* parent = nullptr);
  void setDisplayFormat(const QString& format) { format_ = format; }  // for values put there by the program
  QString displayFormat() const { return format_; }
  void setDecimalPlaces(int places) { places_ = places; }  // most digits behind the point that can be typed
  int decimalPlaces() const { return places_; }
  void setMaximum(double most) { maximum_ = most; }  // for exit checks: a greater number can be typed
  double maximum() const { return maximum_; }        // infinite unless set
  bool exceedsMaximum() const { return value() > maximum_; }
  void setValue(double value);  // shown by the format, without digit groups
  double value() const;         // 0 for an empty or unreadable text

 protected:
  QString accepted(const QString& typed, const QString& before, const QString& after) const override;

 private:
  bool fits(QChar sign, const QString& before, const QString& after) const;

  QString format_;
  int places_ = 4;
  double maximum_ = std::numeric_limits<double>::infinity();
};

// An edit with a small button inside at its right end. The button is an element of its own, named
// OBJECTNAME.button; F4, Alt+Down and a double click press it.
class GOODSBOOKHOST_EXPORT ButtonEdit : public TCustomDBEditEh {
  Q_OBJECT

 public:
  explicit ButtonEdit(QWidget* parent = nullptr);
  QToolButton* button() const { return button_; }

 Q_SIGNALS:
  void ButtonClick();

 protected:
  virtual void buttonPressed() = 0;  // before ButtonClick is told
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void press();
  void placeButton();

  QToolButton* button_;
};

// A date edit: a text "yyyy-MM-dd" or "yyyy-MM-dd HH:mm:ss" with a calendar behind its button; may be empty.
// Other usual spellings ("2026/1/5", "20260105", "260105") are put into this form when the focus leaves. What
// the user types or picks has a time only when it was typed.
class GOODSBOOKHOST_EXPORT TDBDateTimeEditEh : public ButtonEdit {
  Q_OBJECT

 public:
  explicit TDBDateTimeEditEh(QWidget* parent = nullptr);
  void setDateTime(const QDateTime& value, bool withTime);
  QDateTime dateTime() const;  // invalid when empty or unreadable
  bool isReadable() const;     // empty or a date that the database can hold
  void takeUsualForm();        // another spelling of a date becomes the usual one

 protected:
  QString accepted(const QString& typed, const QString& before, const QString& after) const override;
  void buttonPressed() override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void takeDate(QDate date);
};

// A lookup edit: a code with a button that opens the attached picker. Beside it a label shows the name of the
// code.
class GOODSBOOKHOST_EXPORT TExtEdit : public ButtonEdit {
  Q_OBJECT

 public:
  explicit TExtEdit(QWidget* parent = nullptr);
  ~TExtEdit() override;
  void setPicker(TFrm_Base* picker);  // not owned; a picker's init does this
  TFrm_Base* picker() const;
  void openPicker();  // nothing without a picker, in a read-only edit or when it shows already
  void setNameLabel(QLabel* label);
  QLabel* nameLabel() const;
  // The table whose codes are allowed here; CheckId looks them up in it. A picker's init sets it. Lives
  // longer than the edit.
  void setLookup(const LookupTable* table) { lookup_ = table; }
  const LookupTable* lookup() const { return lookup_; }

 protected:
  void buttonPressed() override { openPicker(); }

 private:
  QPointer<QWidget> picker_;
  QPointer<QWidget> nameLabel_;
  const LookupTable* lookup_ = nullptr;
};

}  // namespace goodsbook
