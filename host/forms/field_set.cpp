#include "host/forms/field_set.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDateTime>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <algorithm>

#include "host/controls/edits.h"
#include "host/data/display_format.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

bool isBox(const QWidget* element) {
  return qobject_cast<const QCheckBox*>(element) || qobject_cast<const QRadioButton*>(element);
}

bool takesValues(const FieldSet::Bound& field) {
  return !field.spec.column.isEmpty();
}

QLabel* nameLabelOf(const QWidget* widget) {
  const auto* lookup = qobject_cast<const TExtEdit*>(widget);
  return lookup ? lookup->nameLabel() : nullptr;
}

QString shown(const FieldSet::Bound& field, const RecordSet& rows) {
  const FieldSpec& spec = field.spec;
  const QVariant value = rows.value(spec.column);
  const QString& format = rows.field(rows.fieldIndex(spec.column)).displayFormat;
  // What stands in an edit is saved: no decimal may get lost on the way there.
  if (value.typeId() == QMetaType::Double && !format.isEmpty() && qobject_cast<QLineEdit*>(field.widget))
    return editableNumber(value.toDouble(), format);
  if (!spec.format.isEmpty() && value.typeId() == QMetaType::QDateTime)
    return value.toDateTime().toString(spec.format);
  return rows.text(spec.column);
}

void loadField(const FieldSet::Bound& field, const RecordSet& rows) {
  if (isBox(field.widget)) {
    static_cast<QAbstractButton*>(field.widget)->setChecked(rows.flag(field.spec.column));
  } else if (auto* number = qobject_cast<TDBNumberEditEh*>(field.widget);
             number && !number->displayFormat().isEmpty() && !rows.isNull(field.spec.column)) {
    number->setValue(rows.number(field.spec.column));
  } else {
    setElementText(field.widget, shown(field, rows));
  }
}

QVariant storedValue(const FieldSet::Bound& field, FieldType type) {
  if (isBox(field.widget)) return static_cast<const QAbstractButton*>(field.widget)->isChecked();
  const auto* number = qobject_cast<const TDBNumberEditEh*>(field.widget);
  // Read back, the column has the number, not the way it was typed (".5").
  if (number && type == FieldType::Float && !number->text().trimmed().isEmpty()) return number->value();
  const QString text = elementText(field.widget);
  const bool mayBeNull = field.spec.kind == FieldKind::Number || field.spec.kind == FieldKind::Date;
  return mayBeNull && text.isEmpty() ? QVariant() : QVariant(text);
}

}  // namespace

FieldSet::Bound* FieldSet::find(const QWidget* widget) {
  const auto found = std::find_if(fields_.begin(), fields_.end(),
                                  [widget](const Bound& field) { return field.widget == widget; });
  return found == fields_.end() ? nullptr : &*found;
}

void FieldSet::clear() {
  for (const Bound& field : fields_) {
    if (!takesValues(field)) continue;
    setElementText(field.widget, isBox(field.widget) ? u"0"_s : QString());
    if (QLabel* name = nameLabelOf(field.widget)) name->clear();
  }
}

void FieldSet::load(const RecordSet& rows) {
  for (const Bound& field : fields_) {
    if (takesValues(field) && rows.hasField(field.spec.column)) loadField(field, rows);
    QLabel* name = nameLabelOf(field.widget);
    if (name && rows.hasField(field.spec.nameColumn)) name->setText(rows.text(field.spec.nameColumn));
  }
}

void FieldSet::store(RecordSet& rows) const {
  for (const Bound& field : fields_) {
    if (field.spec.kind == FieldKind::Value) continue;
    if (takesValues(field) && rows.hasField(field.spec.column))
      rows.setValue(field.spec.column,
                    storedValue(field, rows.field(rows.fieldIndex(field.spec.column)).type));
    const QLabel* name = nameLabelOf(field.widget);
    if (name && rows.hasField(field.spec.nameColumn)) rows.setValue(field.spec.nameColumn, name->text());
  }
}

void FieldSet::setReadOnly(bool readOnly) {
  for (const Bound& field : fields_) setElementReadOnly(field.widget, readOnly || field.spec.readOnly);
}

void FieldSet::lock(const QString& names) {
  QStringList locked;
  for (const QString& name : names.split(u',', Qt::SkipEmptyParts)) locked << name.trimmed();
  for (const Bound& field : fields_) {
    setElementReadOnly(field.widget,
                       field.spec.readOnly || locked.contains(field.spec.name, Qt::CaseInsensitive));
  }
}

QString elementText(const QWidget* element) {
  if (isBox(element)) return static_cast<const QAbstractButton*>(element)->isChecked() ? u"1"_s : u"0"_s;
  if (const auto* edit = qobject_cast<const QLineEdit*>(element)) return edit->text();
  if (const auto* label = qobject_cast<const QLabel*>(element)) return label->text();
  if (const auto* memo = qobject_cast<const QPlainTextEdit*>(element)) return memo->toPlainText();
  if (const auto* button = qobject_cast<const QAbstractButton*>(element)) return button->text();
  return {};
}

void setElementText(QWidget* element, const QString& text) {
  if (isBox(element)) {
    static_cast<QAbstractButton*>(element)->setChecked(text == "1"_L1 ||
                                                       text.compare("true"_L1, Qt::CaseInsensitive) == 0);
  } else if (auto* edit = qobject_cast<QLineEdit*>(element)) {
    edit->setText(text);
    edit->setCursorPosition(0);
  } else if (auto* label = qobject_cast<QLabel*>(element)) {
    label->setText(text);
  } else if (auto* memo = qobject_cast<QPlainTextEdit*>(element)) {
    memo->setPlainText(text);
  } else if (auto* button = qobject_cast<QAbstractButton*>(element)) {
    button->setText(text);
  }
}

void setElementReadOnly(QWidget* element, bool readOnly) {
  if (qobject_cast<QLabel*>(element)) return;
  QPalette look;  // what cannot be changed lies flat on its window
  if (readOnly) look.setColor(QPalette::Base, QApplication::palette().color(QPalette::Window));
  if (auto* edit = qobject_cast<QLineEdit*>(element)) {
    edit->setReadOnly(readOnly);
    edit->setPalette(look);
  } else if (auto* memo = qobject_cast<QPlainTextEdit*>(element)) {
    memo->setReadOnly(readOnly);
    memo->setPalette(look);
  } else {
    element->setEnabled(!readOnly);
    return;
  }
  element->setFocusPolicy(readOnly ? Qt::ClickFocus : Qt::StrongFocus);
}

}  // namespace goodsbook
