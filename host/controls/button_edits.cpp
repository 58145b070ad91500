#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include "host/controls/drop_place.h"
#include "host/controls/edits.h"
#include "host/forms/Base.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

ButtonEdit::ButtonEdit(QWidget* parent) : TCustomDBEditEh(parent), button_(new QToolButton(this)) {
  button_->setText(u"…"_s);
  button_->setFocusPolicy(Qt::NoFocus);
  button_->setCursor(Qt::ArrowCursor);
  button_->setToolTip(tr("选择 (F4)"));
  connect(button_, &QToolButton::clicked, this, [this] { press(); });
  connect(this, &QObject::objectNameChanged, button_, [this](const QString& name) {
    button_->setObjectName(name.isEmpty() ? name : name + u".button"_s);
  });
}

void ButtonEdit::press() {
  if (!hasFocus()) setFocus(Qt::MouseFocusReason);
  if (window()->focusWidget() != this) return;  // the field that had it was not let go
  buttonPressed();
  Q_EMIT ButtonClick();
}

void ButtonEdit::keyPressEvent(QKeyEvent* event) {
  const bool opens = event->key() == Qt::Key_F4
                         ? event->modifiers() == Qt::NoModifier
                         : event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier;
  if (!opens) {
    TCustomDBEditEh::keyPressEvent(event);
  } else if (button_->isEnabled()) {
    button_->click();
  }
}

void ButtonEdit::mouseDoubleClickEvent(QMouseEvent* event) {
  TCustomDBEditEh::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && button_->isEnabled()) button_->click();
}

void ButtonEdit::resizeEvent(QResizeEvent* event) {
  TCustomDBEditEh::resizeEvent(event);
  placeButton();
}

void ButtonEdit::changeEvent(QEvent* event) {
  TCustomDBEditEh::changeEvent(event);
  if (event->type() == QEvent::ReadOnlyChange || event->type() == QEvent::EnabledChange) {
    button_->setEnabled(isEnabled() && !isReadOnly());
  } else if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange) {
    placeButton();
  }
}

void ButtonEdit::placeButton() {
  const int frame = 2;
  const int side = height() - 2 * frame;
  button_->setGeometry(width() - side - frame, frame, side, side);
  setTextMargins(0, 0, side, 0);
}

namespace {

constexpr int firstYear = 1753;  // of a datetime

QDate dateOf(const QString& year, const QString& month, const QString& day) {
  const QDate date(year.size() == 2 ? 2000 + year.toInt() : year.toInt(), month.toInt(), day.toInt());
  return date.year() >= firstYear ? date : QDate();
}

// Without separators every part has all its digits: fewer could be read in several ways.
QDateTime readDate(const QString& text, bool* hasTime) {
  static const QRegularExpression usual(
      u"^(?:(\\d{4}|\\d{2})(\\d{2})(\\d{2})|(\\d{4})[-/.年](\\d{1,2})[-/.月](\\d{1,2})日?)"
      "(?:[ T]+(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2})(?:\\.\\d+)?)?)?$"_s);
  const QRegularExpressionMatch match = usual.match(text.trimmed());
  if (!match.hasMatch()) return {};
  const int first = match.hasCaptured(1) ? 1 : 4;
  const QDate date = dateOf(match.captured(first), match.captured(first + 1), match.captured(first + 2));
  const QTime time(match.captured(7).toInt(), match.captured(8).toInt(), match.captured(9).toInt());
  *hasTime = !match.captured(7).isEmpty();
  if (!date.isValid() || !time.isValid()) return {};
  return {date, time};
}

QDate today() {
  return Session::exists() ? Session::current().desktop().now().date() : QDate::currentDate();
}

QString dateText(const QDateTime& value, bool withTime) {
  return value.toString(withTime ? u"yyyy-MM-dd HH:mm:ss"_s : u"yyyy-MM-dd"_s);
}

}  // namespace

TDBDateTimeEditEh::TDBDateTimeEditEh(QWidget* parent) : ButtonEdit(parent) {
  button()->setText(u"▾"_s);
}

void TDBDateTimeEditEh::setDateTime(const QDateTime& value, bool withTime) {
  setText(value.isValid() ? dateText(value, withTime) : QString());
}

QDateTime TDBDateTimeEditEh::dateTime() const {
  bool hasTime = false;
  return readDate(text(), &hasTime);
}

bool TDBDateTimeEditEh::isReadable() const {
  return text().trimmed().isEmpty() || dateTime().isValid();
}

QString TDBDateTimeEditEh::accepted(const QString& typed, const QString& before, const QString& after) const {
  (void)before;
  (void)after;
  QString taken;
  for (QChar sign : typed) {
    if (sign >= u'０' && sign <= u'９') sign = QChar(sign.unicode() - u'０' + u'0');
    if (sign == u'：') sign = u':';
    if (sign == u'。' || sign == u'．') sign = u'.';
    if (sign == u'－') sign = u'-';
    if (sign == u'／') sign = u'/';
    if ((sign >= u'0' && sign <= u'9') || u"-/.: 年月日"_s.contains(sign)) taken += sign;
  }
  return taken;
}

void TDBDateTimeEditEh::takeUsualForm() {
  bool hasTime = false;
  const QDateTime value = readDate(text(), &hasTime);
  if (!value.isValid() || isReadOnly()) return;
  const QString usual = dateText(value, hasTime);
  if (usual != text()) setText(usual);
}

void TDBDateTimeEditEh::focusOutEvent(QFocusEvent* event) {
  takeUsualForm();
  ButtonEdit::focusOutEvent(event);
}

void TDBDateTimeEditEh::takeDate(QDate date) {
  setDateTime(date.startOfDay(), false);
  setModified(true);
  Q_EMIT textEdited(text());
  setFocus(Qt::PopupFocusReason);
}

void TDBDateTimeEditEh::buttonPressed() {
  auto* popup = new QFrame(this, Qt::Popup);
  popup->setAttribute(Qt::WA_DeleteOnClose);
  popup->setFrameShape(QFrame::StyledPanel);
  auto* calendar = new QCalendarWidget(popup);
  calendar->setLocale(QLocale(QLocale::Chinese, QLocale::China));
  calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  calendar->setSelectedDate(dateTime().isValid() ? dateTime().date() : goodsbook::today());
  auto* today = new QPushButton(tr("今天"), popup);
  auto* none = new QPushButton(tr("清空"), popup);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(today);
  buttons->addWidget(none);
  auto* column = new QVBoxLayout(popup);
  column->setContentsMargins(4, 4, 4, 4);
  column->addWidget(calendar);
  column->addLayout(buttons);
  const auto take = [this, popup](QDate date) {
    popup->close();
    takeDate(date);
  };
  connect(calendar, &QCalendarWidget::clicked, this, take);
  connect(calendar, &QCalendarWidget::activated, this, take);
  connect(today, &QPushButton::clicked, this, [take] { take(goodsbook::today()); });
  connect(none, &QPushButton::clicked, this, [take] { take({}); });
  popup->adjustSize();
  popup->move(dropPlace(*this, popup->size()));
  popup->show();
  calendar->setFocus();
}

TExtEdit::TExtEdit(QWidget* parent) : ButtonEdit(parent) {}
TExtEdit::~TExtEdit() = default;

void TExtEdit::openPicker() {
  if (picker_ == nullptr || isReadOnly() || !isEnabled() || picker_->isVisible()) return;
  picker_->show();
}

TFrm_Base* TExtEdit::picker() const {
  return static_cast<TFrm_Base*>(picker_.data());
}
void TExtEdit::setPicker(TFrm_Base* picker) {
  picker_ = picker;
}
void TExtEdit::setNameLabel(QLabel* label) {
  nameLabel_ = label;
}
QLabel* TExtEdit::nameLabel() const {
  return static_cast<QLabel*>(nameLabel_.data());
}

}  // namespace goodsbook
