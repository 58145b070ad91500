#pragma once

#include <QDateTime>
#include <QLineEdit>

#include "host/export.h"

class QLabel;
class QToolButton;

namespace goodsbook {

class TFrm_Base;

// A text edit. Its limit holds for typing and pasting, not for what the program puts there.
class GOODSBOOKHOST_EXPORT TCustomDBEditEh : public QLineEdit {
  Q_OBJECT

 public:
  explicit TCustomDBEditEh(QWidget* parent = nullptr);
  ~TCustomDBEditEh() override;
  void setTypingLimit(int characters);  // 0: none
  int typingLimit() const { return limit_; }
  void setUpperCase(bool on) { upper_ = on; }
  bool isUpperCase() const { return upper_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;

 private:
  int limit_ = 0;
  bool upper_ = false;
};

// A number edit. It keeps the text as typed, an empty one stays empty, nothing is clamped; only characters of a number can
// be typed. Its text is what goes into statements.
class GOODSBOOKHOST_EXPORT TDBNumberEditEh : public TCustomDBEditEh {
  Q_OBJECT
  Q_PROPERTY(QString displayFormat READ displayFormat WRITE setDisplayFormat)

 public:
  explicit TDBNumberEditEh(QWidget* parent = nullptr);
  void setDisplayFormat(const QString& format) { format_ = format; }  // for values put there by the program
  QString displayFormat() const { return format_; }
  void setDecimalPlaces(int places) { places_ = places; }  // most digits behind the point that can be typed
  int decimalPlaces() const { return places_; }
  void setValue(double value);  // shown by the format
  double value() const;         // 0 for an empty or unreadable text

 private:
  QString format_;
  int places_ = 4;
};

// A date edit: a text "yyyy-MM-dd" or "yyyy-MM-dd HH:mm:ss" with a calendar behind its button; may be empty.
class GOODSBOOKHOST_EXPORT TDBDateTimeEditEh : public TCustomDBEditEh {
  Q_OBJECT

 public:
  explicit TDBDateTimeEditEh(QWidget* parent = nullptr);
  void setDateTime(const QDateTime& value, bool withTime);
  QDateTime dateTime() const;  // invalid when empty or unreadable
};

// A lookup edit: a code with a button that opens the attached picker; F4, Alt+Down or a double click do the same. The
// button is an element of its own named OBJECTNAME.button. Beside it a label shows the name of the code.
class GOODSBOOKHOST_EXPORT TExtEdit : public TCustomDBEditEh {
  Q_OBJECT

 public:
  explicit TExtEdit(QWidget* parent = nullptr);
  ~TExtEdit() override;
  QToolButton* button() const { return button_; }
  void setPicker(TFrm_Base* picker) { picker_ = picker; }  // not owned
  TFrm_Base* picker() const { return picker_; }
  void setNameLabel(QLabel* label) { nameLabel_ = label; }
  QLabel* nameLabel() const { return nameLabel_; }

 Q_SIGNALS:
  void ButtonClick();

 private:
  QToolButton* button_;
  TFrm_Base* picker_ = nullptr;
  QLabel* nameLabel_ = nullptr;
};

}  // namespace goodsbook
