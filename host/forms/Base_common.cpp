#include "host/forms/Base_common.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include "host/U_function.h"
#include "host/controls/TDBGridEh.h"
#include "host/data/sql_sets.h"
#include "host/forms/screen_events.h"
#include "host/lookup/lookup_table.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

[[noreturn]] void refuse(QLineEdit* edit, const QString& text) {
  DISPINFO(text, 5);
  edit->setFocus();
  edit->selectAll();
  throw EAbort();
}

bool isEnter(const QKeyEvent* event) {
  return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

bool isNumber(const QString& text) {
  if (text.contains(u'n', Qt::CaseInsensitive)) return false;  // "nan" and "inf" are numbers to a converter
  bool ok = false;
  text.toDouble(&ok);
  return ok;
}

// Can the user change something there now?
bool isOpen(const QWidget* element) {
  if (!element->isEnabled()) return false;
  if (const auto* edit = qobject_cast<const QLineEdit*>(element)) return !edit->isReadOnly();
  if (const auto* memo = qobject_cast<const QPlainTextEdit*>(element)) return !memo->isReadOnly();
  return true;
}

}  // namespace

TFrm_Base_Common::TFrm_Base_Common(QWidget* owner)
    : TFrm_Base(owner), body_(new QWidget(this)), bodyParams_(bodyparam::make({})) {
  ScreenEvents::watch();
  AdoQry_Tmp.setObjectName(u"AdoQry_Tmp"_s);
  AdoQry_Tmp.setParent(this);
  auto* layout = new QVBoxLayout(body_);
  layout->setContentsMargins(0, 0, 0, 0);
}

TFrm_Base_Common::~TFrm_Base_Common() = default;

void TFrm_Base_Common::SetBodyParam(const QStringList& texts) {
  if (texts.size() != bodyparam::count) throw std::invalid_argument("a screen takes 17 body parameters");
  bodyParams_ = texts;
}

void TFrm_Base_Common::SetFormParam(const QString& moduleCode) {
  moduleCode_ = moduleCode;
}

void TFrm_Base_Common::SetUserParam(const Trecord& record) {
  record_ = record;
}

QString TFrm_Base_Common::Getsysinfo(const QString& name) const {
  if (const std::optional<QString> global = globalText(name)) return *global;
  const QString select = u"select VALUE from SYS_SETTING where NAME="_s + QuotedStr(name);
  const SqlSet found = readSql(Session::current().database(), select);
  return found.rows.empty() ? QString() : found.rows.front().front().value_or(QString());
}

void TFrm_Base_Common::CheckBlank(QLineEdit* edit) {
  if (edit->text().trimmed().isEmpty()) refuse(edit, tr("%1不能为空!").arg(labelOf(edit)));
}

void TFrm_Base_Common::CheckId(QLineEdit* edit) {
  auto* lookup = qobject_cast<TExtEdit*>(edit);
  QLabel* nameLabel = lookup ? lookup->nameLabel() : nullptr;
  const QString code = edit->text().trimmed();
  const QString nameBefore = nameLabel ? nameLabel->text() : QString();
  if (nameLabel) nameLabel->clear();  // a refused code has no other code's name beside it
  if (code.isEmpty()) {
    const FieldSet::Bound* field = fields_.find(edit);
    if (field && field->spec.required) CheckBlank(edit);
    return;
  }
  CheckText(edit, labelOf(edit));
  if (!lookup || !lookup->lookup()) {
    if (nameLabel) nameLabel->setText(nameBefore);
    return;
  }
  const std::optional<QString> name = lookup->lookup()->nameOf(code);
  if (nameLabel) nameLabel->setText(name.value_or(QString()));
  if (!name) refuse(edit, tr("%1【%2】不存在!").arg(labelOf(edit), code));
}

void TFrm_Base_Common::CheckFloat(QLineEdit* edit) {
  const QString number = edit->text().trimmed();
  if (!isNumber(number)) refuse(edit, tr("%1应输入数字!").arg(labelOf(edit)));
}

void TFrm_Base_Common::CheckFloatCanZero(QLineEdit* edit) {
  CheckFloat(edit);
}

void TFrm_Base_Common::CheckDate(TDBDateTimeEditEh* edit) {
  if (!edit->isReadable()) refuse(edit, tr("%1应输入日期!").arg(labelOf(edit)));
  edit->takeUsualForm();
}

void TFrm_Base_Common::CheckAll() {
  for (std::size_t i = 0; i < fields_.all().size(); ++i) {
    const FieldSet::Bound& field = fields_.all()[i];
    if (!field.widget->isVisibleTo(this) || !isOpen(field.widget)) continue;
    auto* asEdit = qobject_cast<QLineEdit*>(field.widget);
    if (field.spec.required && asEdit) CheckBlank(asEdit);
    if (auto* date = qobject_cast<TDBDateTimeEditEh*>(asEdit)) CheckDate(date);
    if (field.spec.code && !field.passed && !runExitCheck(field.widget, focusWidget())) throw EAbort();
  }
}

bool TFrm_Base_Common::OpenSqlPage(RecordSet& rows, const QString& sql, int pageSize, int pageNo) {
  return opensql(rows, moduleCode_, sql, pageSize, pageNo, bodyParam(bodyparam::keyField));
}

QWidget* TFrm_Base_Common::elementNamed(const QString& name) const {
  if (auto* found = findChild<QWidget*>(name)) return found;
  for (const FieldSet::Bound& field : fields_.all()) {
    if (field.spec.name.compare(name, Qt::CaseInsensitive) == 0) return field.widget;
  }
  throw std::logic_error("no element " + name.toStdString());
}

bool TFrm_Base_Common::isChecked(const QString& name) const {
  return element<QAbstractButton>(name)->isChecked();
}

void TFrm_Base_Common::setChecked(const QString& name, bool on) {
  element<QAbstractButton>(name)->setChecked(on);
}

void TFrm_Base_Common::setFieldVisible(const QString& name, bool visible) {
  QWidget* field = elementNamed(name);
  field->setVisible(visible);
  for (QLabel* candidate : findChildren<QLabel*>()) {
    if (candidate->buddy() == field) candidate->setVisible(visible);
  }
  const auto* lookup = qobject_cast<TExtEdit*>(field);
  if (lookup && lookup->nameLabel()) lookup->nameLabel()->setVisible(visible);
}

QString TFrm_Base_Common::labelOf(const QWidget* field) const {
  QString name = field->accessibleName();  // given where the label stands for several fields
  for (const QLabel* candidate : findChildren<QLabel*>()) {
    if (name.isEmpty() && candidate->buddy() == field) name = candidate->text();
  }
  if (name.isEmpty()) return field->objectName();
  name.remove(u' ').remove(u'\u3000');
  while (name.endsWith(u':') || name.endsWith(u'：')) name.chop(1);
  return name;
}

void TFrm_Base_Common::setExitCheck(QWidget* field, std::function<void()> check) {
  exitChecks_[field] = std::move(check);
}

bool TFrm_Base_Common::leaveFor(QWidget* target) {
  QWidget* from = focusWidget();
  if (from == target) return true;
  if (!isActiveWindow() && from && !focusMoved(from, target)) return false;
  target->setFocus(Qt::OtherFocusReason);
  return focusWidget() == target;
}

bool TFrm_Base_Common::focusMoved(QWidget* from, QWidget* to) {
  for (QWidget* widget = from; widget && widget != this; widget = widget->parentWidget()) {
    auto* grid = qobject_cast<TDBGridEh*>(widget);
    if (grid && grid->takeBackFocus(from)) return false;
  }
  if (loading_ || checking_ || isCancel(to)) return true;
  QWidget* field = from;
  while (field != this && !exitChecks_.contains(field)) field = field->parentWidget();
  if (field == this || field == to || field->isAncestorOf(to)) return true;
  if (!field->isVisible() || !isOpen(field)) return true;
  FieldSet::Bound* bound = fields_.find(field);
  if (bound && bound->spec.code && !looksUpCodes()) {
    bound->passed = false;
    return true;
  }
  return runExitCheck(field, to);
}

bool TFrm_Base_Common::runExitCheck(QWidget* field, QWidget* target) {
  const auto check = exitChecks_.find(field);
  if (check == exitChecks_.end()) return true;
  const QPointer<TFrm_Base_Common> self = this;
  const QPointer<QWidget> kept = field;
  checking_ = true;
  focusTarget_ = target;
  const bool passed = guarded(this, check->second);
  if (!self) return false;
  focusTarget_ = nullptr;
  if (FieldSet::Bound* bound = fields_.find(field)) bound->passed = passed;
  if (!passed && kept) kept->setFocus(Qt::OtherFocusReason);
  checking_ = false;
  return passed;
}

void TFrm_Base_Common::AllChange() {}

void TFrm_Base_Common::FormCreate() {}

void TFrm_Base_Common::FormClose() {}

void TFrm_Base_Common::done(int result) {
  guarded(this, [this] { FormClose(); });
  TFrm_Base::done(result);
}

void TFrm_Base_Common::FormKeyDown(QKeyEvent* event) {
  if (!isEnter(event)) return;
  const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
  QWidget* focus = focusWidget();
  if (auto* memo = qobject_cast<QPlainTextEdit*>(focus)) {
    event->accept();
    if (modifiers == Qt::NoModifier) {
      focusNextField();
    } else if (!memo->isReadOnly()) {
      memo->insertPlainText(u"\n"_s);
    }
    return;
  }
  if (modifiers != Qt::NoModifier) return;
  if (auto* button = qobject_cast<QPushButton*>(focus)) {
    event->accept();
    button->click();
    return;
  }
  const bool isField = qobject_cast<QLineEdit*>(focus) || qobject_cast<QCheckBox*>(focus) ||
                       qobject_cast<QRadioButton*>(focus);
  bool inList = false;
  for (QWidget* widget = focus; widget && widget != this; widget = widget->parentWidget()) {
    inList = inList || qobject_cast<QAbstractItemView*>(widget);
  }
  const auto* list = qobject_cast<const QAbstractItemView*>(focus);
  const bool isEmptyList = list && list->model() && list->model()->rowCount() == 0;  // no row to open or edit
  if (!isEmptyList && (!isField || inList)) return;
  event->accept();
  focusNextField();
}

void TFrm_Base_Common::focusFirst(QWidget* field) {
  field->setFocus(Qt::OtherFocusReason);
  if (auto* asEdit = qobject_cast<QLineEdit*>(field)) asEdit->selectAll();
}

QWidget* TFrm_Base_Common::nextField(const QWidget* start) const {
  for (QWidget* next = start->nextInFocusChain(); next != start; next = next->nextInFocusChain()) {
    if (!isAncestorOf(next) || !next->isVisibleTo(this) || !isOpen(next)) continue;
    if (!(next->focusPolicy() & Qt::TabFocus) || next->focusProxy()) continue;
    if (qobject_cast<QLabel*>(next)) continue;  // links are reached by Tab
    if (qobject_cast<QPushButton*>(next) && next->objectName() != "btn_ok"_L1) continue;
    return next;
  }
  return nullptr;
}

void TFrm_Base_Common::focusNextField() {
  if (QWidget* next = nextField(focusWidget() ? focusWidget() : this)) next->setFocus(Qt::TabFocusReason);
}

void TFrm_Base_Common::focusFirstField() {
  QWidget* first = nextField(this);
  // The tab order is a ring, and OK may stand at its head.
  if (first && first->objectName() == "btn_ok"_L1) {
    if (QWidget* field = nextField(first)) first = field;
  }
  if (first) focusFirst(first);
}

void TFrm_Base_Common::onClick(QAbstractButton* button, std::function<void()> handler) {
  connect(button, &QAbstractButton::clicked, this,
          [this, handler = std::move(handler)] { guarded(this, handler); });
}

QPushButton* TFrm_Base_Common::makeButton(const QString& name, const QString& caption) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(false);  // Enter is FormKeyDown's: the next field, or the button with the focus
  return button;
}

}  // namespace goodsbook
