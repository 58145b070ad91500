#include "host/forms/form_builder.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "host/controls/name_label.h"
#include "host/forms/Base_common.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int lastRow = 999;   // takes the height that the fields leave
constexpr int columnGap = 18;  // between a field and the label of the next one in its row

bool isBox(FieldKind kind) {
  return kind == FieldKind::Check || kind == FieldKind::Option;
}

QWidget* makeElement(const FieldSpec& spec, QWidget* parent) {
  switch (spec.kind) {
    case FieldKind::Number:
      return new TDBNumberEditEh(parent);
    case FieldKind::Date:
      return new TDBDateTimeEditEh(parent);
    case FieldKind::Lookup:
      return new TExtEdit(parent);
    case FieldKind::Check:
      return new QCheckBox(spec.label, parent);
    case FieldKind::Option:
      return new QRadioButton(spec.label, parent);
    case FieldKind::Memo:
      return new QPlainTextEdit(parent);
    case FieldKind::Value: {
      auto* label = new QLabel(parent);
      label->setTextFormat(Qt::PlainText);
      label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
      return label;
    }
    case FieldKind::Text:
      break;
  }
  return new TCustomDBEditEh(parent);
}

// Signs that should be seen at once: codes are narrow, names may be Chinese and twice as wide.
int visibleSigns(const FieldSpec& spec) {
  switch (spec.kind) {
    case FieldKind::Number:
      return 12;
    case FieldKind::Date:
      return 21;
    case FieldKind::Lookup:
      return std::max(spec.limit, 6) + 4;
    default:
      return spec.upper ? std::max(spec.limit, 6) : std::max(2 * spec.limit, 8);
  }
}

void sizeElement(const FieldSpec& spec, QWidget* element) {
  if (spec.kind == FieldKind::Value || spec.kind == FieldKind::Memo || isBox(spec.kind)) return;
  constexpr int most = 44;
  constexpr int frame = 16;
  const int sign = element->fontMetrics().horizontalAdvance(u'0');
  const bool open = spec.kind == FieldKind::Text && (spec.limit == 0 || visibleSigns(spec) >= most);
  const int width =
      spec.width > 0 ? spec.width : std::min(visibleSigns(spec), open ? 24 : most) * sign + frame;
  if (open && spec.width == 0) {
    element->setMinimumWidth(width);
  } else {
    element->setFixedWidth(width);
  }
}

QLabel* greyLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  label->setForegroundRole(QPalette::PlaceholderText);
  return label;
}

void applyNumber(const FieldSpec& spec, QWidget* element) {
  auto* number = qobject_cast<TDBNumberEditEh*>(element);
  if (!number) return;
  if (!spec.format.isEmpty()) number->setDisplayFormat(spec.format);
  if (spec.places >= 0) number->setDecimalPlaces(spec.places);
  if (spec.maximum) number->setMaximum(*spec.maximum);
}

}  // namespace

FormBuilder::FormBuilder(TFrm_Base_Common& screen)
    : screen_(screen), area_(screen.body()), grid_(new QGridLayout) {
  static_cast<QBoxLayout*>(area_->layout())->addLayout(grid_);
  prepareGrid();
}

FormBuilder::FormBuilder(TFrm_Base_Common& screen, QWidget* area)
    : screen_(screen), area_(area), grid_(new QGridLayout(area)) {
  prepareGrid();
}

void FormBuilder::prepareGrid() {
  grid_->setHorizontalSpacing(8);
  grid_->setRowStretch(lastRow, 1);
}

FormBuilder& FormBuilder::fields(std::vector<FieldSpec> specs) {
  for (FieldSpec& spec : specs) field(std::move(spec));
  return *this;
}

QWidget* FormBuilder::field(FieldSpec spec) {
  QWidget* element = makeElement(spec, area_);
  element->setObjectName(spec.name);
  if (spec.large) {
    QFont font = element->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    element->setFont(font);
  }
  sizeElement(spec, element);
  applyNumber(spec, element);
  QHBoxLayout* cell = cellFor(spec, element);
  const bool fills = element->maximumWidth() == QWIDGETSIZE_MAX && !isBox(spec.kind);
  cell->insertWidget(cell->count() - 1, element, fills ? 1 : 0);
  if (fills && spec.kind != FieldKind::Value) cell->setStretch(cell->count() - 1, 0);
  if (!spec.nameLabel.isEmpty()) {
    auto* name = new NameLabel(area_);
    name->setObjectName(spec.nameLabel);
    name->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    name->setMinimumWidth(name->fontMetrics().horizontalAdvance(u'字') * 6);
    cell->insertWidget(cell->count() - 1, name);
    if (auto* lookup = qobject_cast<TExtEdit*>(element)) lookup->setNameLabel(name);
  }
  if (!spec.hint.isEmpty()) cell->insertWidget(cell->count() - 1, greyLabel(spec.hint, area_));
  bind(spec, element);
  if (spec.readOnly) setElementReadOnly(element, true);
  return element;
}

QHBoxLayout* FormBuilder::cellFor(const FieldSpec& spec, QWidget* element) {
  const bool hasLabel = isBox(spec.kind) ? !spec.rowLabel.isEmpty() : !spec.label.isEmpty();
  if (spec.sameRow && cell_ && !hasLabel) return cell_;
  if (spec.sameRow && row_ >= 0) {
    // The field before filled the row as long as it stood there alone.
    if (column_ == 0 && cell_) {
      grid_->removeItem(cell_);
      grid_->addLayout(cell_, row_, column_ + 1);
    }
    column_ += 2;
  } else {
    ++row_;
    column_ = 0;
  }
  cell_ = new QHBoxLayout;
  cell_->setSpacing(6);
  cell_->addStretch(1);
  grid_->addLayout(cell_, row_, column_ + 1, 1, column_ == 0 ? -1 : 1);
  grid_->setColumnStretch(column_ + 1, 1);
  if (hasLabel) addLabel(spec, element);
  return cell_;
}

void FormBuilder::addLabel(const FieldSpec& spec, QWidget* buddy) {
  auto* label = new QLabel(isBox(spec.kind) ? spec.rowLabel : spec.label, area_);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  if (!spec.labelName.isEmpty()) label->setObjectName(spec.labelName);
  label->setBuddy(buddy);
  if (column_ > 0) label->setContentsMargins(columnGap, 0, 0, 0);
  const bool top = spec.kind == FieldKind::Memo;
  grid_->addWidget(label, row_, column_, top ? Qt::AlignRight | Qt::AlignTop : Qt::Alignment());
}

void FormBuilder::bind(const FieldSpec& spec, QWidget* element) {
  TFrm_Base_Common& screen = screen_;
  screen.fields().add(spec, element);
  const auto changed = [&screen, element] {
    if (FieldSet::Bound* field = screen.fields().find(element)) field->passed = false;
    if (!screen.loading()) guarded(&screen, [&screen] { screen.AllChange(); });
  };
  if (auto* asEdit = qobject_cast<TCustomDBEditEh*>(element)) {
    asEdit->setTypingLimit(spec.limit);
    asEdit->setUpperCase(spec.upper);
    QObject::connect(asEdit, &QLineEdit::textChanged, &screen, changed);
    if (auto* lookup = qobject_cast<TExtEdit*>(asEdit); lookup && spec.lookup) lookup->setLookup(spec.lookup);
    if (spec.exit) {
      screen.setExitCheck(element, spec.exit);
    } else if (spec.required || spec.check != FieldCheck::None || spec.kind == FieldKind::Date) {
      screen.setExitCheck(element, [&screen, asEdit, required = spec.required, check = spec.check] {
        if (required) screen.CheckBlank(asEdit);
        if (check == FieldCheck::Id) screen.CheckId(asEdit);
        if (check == FieldCheck::Float) screen.CheckFloat(asEdit);
        // What came empty from the row and was not touched does not hold the user fast.
        const bool cameEmpty = asEdit->text().isEmpty() && !asEdit->isModified();
        if (check == FieldCheck::FloatCanZero && !cameEmpty) screen.CheckFloatCanZero(asEdit);
        if (auto* date = qobject_cast<TDBDateTimeEditEh*>(asEdit)) screen.CheckDate(date);
      });
    }
    return;
  }
  if (auto* button = qobject_cast<QAbstractButton*>(element))
    QObject::connect(button, &QAbstractButton::toggled, &screen, changed);
  if (auto* memo = qobject_cast<QPlainTextEdit*>(element))
    QObject::connect(memo, &QPlainTextEdit::textChanged, &screen, changed);
  if (spec.exit) screen.setExitCheck(element, spec.exit);
}

QLabel* FormBuilder::note(const QString& name, const QString& text) {
  QLabel* label = greyLabel(text, area_);
  label->setObjectName(name);
  label->setWordWrap(true);
  wide(label);
  return label;
}

void FormBuilder::wide(QWidget* widget, int stretch) {
  ++row_;
  column_ = 0;
  cell_ = nullptr;
  grid_->addWidget(widget, row_, 0, 1, -1);
  grid_->setRowStretch(row_, stretch);
  if (stretch > 0) grid_->setRowStretch(lastRow, 0);
}

void FormBuilder::wide(QLayout* layout) {
  ++row_;
  column_ = 0;
  cell_ = nullptr;
  grid_->addLayout(layout, row_, 0, 1, -1);
}

}  // namespace goodsbook
