#include "host/controls/edits.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QRegularExpression>
#include <QToolTip>
#include <algorithm>

#include "host/data/display_format.h"
#include "host/data/value_text.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

bool isTypedText(const QKeyEvent& event) {
  if (event.text().isEmpty() || !event.text().at(0).isPrint()) return false;
  const Qt::KeyboardModifiers command =
      event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  return command == Qt::NoModifier || command == (Qt::ControlModifier | Qt::AltModifier);  // AltGr
}

QString inUpperCase(QString text) {
  // Sign by sign: a text must not grow while it is typed ("ß" stays).
  for (QChar& sign : text) sign = sign.toUpper();
  return text;
}

QString firstOf(const QString& text, int count) {
  if (text.size() <= count) return text;
  if (count > 0 && text.at(count - 1).isHighSurrogate()) --count;
  return text.left(count);
}

QString inOneLine(QString text) {
  while (text.endsWith(u'\n') || text.endsWith(u'\r'))
    text.chop(1);  // a copied spreadsheet cell ends with one
  for (QChar& sign : text) {
    if (sign.category() == QChar::Other_Control) sign = u' ';
  }
  return text;
}

QString inPlainSigns(QString text) {
  for (QChar& sign : text) {
    if (sign >= u'０' && sign <= u'９') sign = QChar(sign.unicode() - u'０' + u'0');
    if (sign == u'。' || sign == u'．') sign = u'.';
    if (sign == u'－') sign = u'-';
    if (sign == u'，') sign = u',';
    if (sign == u'￥') sign = u'¥';
  }
  return text;
}

// The digits, sign and point of an amount as other programs write it; nothing for a text that is none. A
// comma is taken for the end of a group of digits only where it can be nothing else.
QString amountIn(const QString& text) {
  static const QRegularExpression amount(
      u"^\\s*[¥$]?\\s*(-?(?:\\d{1,3}(?:,\\d{3})+|\\d*)\\.?\\d*)\\s*元?\\s*$"_s);
  return amount.match(inPlainSigns(text)).captured(1).remove(u',');
}

}  // namespace

TCustomDBEditEh::TCustomDBEditEh(QWidget* parent) : QLineEdit(parent) {}
TCustomDBEditEh::~TCustomDBEditEh() = default;

QString TCustomDBEditEh::accepted(const QString& typed, const QString& before, const QString& after) const {
  (void)before;
  (void)after;
  return typed;
}

QString TCustomDBEditEh::fitting(const QString& typed, int from, int to) const {
  const QString whole = text();
  QString wanted = accepted(inOneLine(typed), whole.left(from), whole.mid(to));
  if (upper_) wanted = inUpperCase(wanted);
  if (limit_ > 0)
    wanted = firstOf(wanted, std::max(0, limit_ - static_cast<int>(whole.size()) + (to - from)));
  return wanted;
}

void TCustomDBEditEh::insertTyped(const QString& typed) {
  if (isReadOnly()) return;
  const int from = hasSelectedText() ? selectionStart() : cursorPosition();
  const int to = hasSelectedText() ? selectionEnd() : from;
  const QString wanted = fitting(typed, from, to);
  if (!wanted.isEmpty()) insert(wanted);
}

void TCustomDBEditEh::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste)) {
    insertTyped(QGuiApplication::clipboard()->text());
    event->accept();
  } else if (!isReadOnly() && isTypedText(*event)) {
    insertTyped(event->text());
    event->accept();
  } else {
    QLineEdit::keyPressEvent(event);
  }
}

void TCustomDBEditEh::inputMethodEvent(QInputMethodEvent* event) {
  if (isReadOnly()) {
    event->ignore();
    return;
  }
  if (event->commitString().isEmpty()) {
    QLineEdit::inputMethodEvent(event);
    return;
  }
  int from = cursorPosition() + event->replacementStart();
  int to = from + event->replacementLength();
  if (hasSelectedText()) {
    from = std::min(from, selectionStart());
    to = std::max(to, selectionEnd());
  }
  const int length = static_cast<int>(text().size());
  from = std::clamp(from, 0, length);
  to = std::clamp(to, from, length);
  QInputMethodEvent fitted(event->preeditString(), event->attributes());
  fitted.setCommitString(fitting(event->commitString(), from, to), event->replacementStart(),
                         event->replacementLength());
  QLineEdit::inputMethodEvent(&fitted);
  event->setAccepted(fitted.isAccepted());
}

void TCustomDBEditEh::mouseReleaseEvent(QMouseEvent* event) {
  const QClipboard* clipboard = QGuiApplication::clipboard();
  if (event->button() == Qt::MiddleButton && clipboard->supportsSelection() && !isReadOnly()) {
    deselect();
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    insertTyped(clipboard->text(QClipboard::Selection));
    event->accept();
    return;
  }
  QLineEdit::mouseReleaseEvent(event);
}

void TCustomDBEditEh::dropEvent(QDropEvent* event) {
  if (event->source() == this || isReadOnly() || !event->mimeData()->hasText()) {
    QLineEdit::dropEvent(event);
    return;
  }
  deselect();
  setCursorPosition(cursorPositionAt(event->position().toPoint()));
  insertTyped(event->mimeData()->text());
  event->acceptProposedAction();
}

void TCustomDBEditEh::contextMenuEvent(QContextMenuEvent* event) {
  QMenu* menu = createStandardContextMenu();
  menu->setAttribute(Qt::WA_DeleteOnClose);
  if (auto* paste = menu->findChild<QAction*>(u"edit-paste"_s)) {
    paste->disconnect();
    connect(paste, &QAction::triggered, this, [this] { insertTyped(QGuiApplication::clipboard()->text()); });
  }
  menu->popup(event->globalPos());
}

void TCustomDBEditEh::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  switch (event->reason()) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
    case Qt::OtherFocusReason:  // Enter went on to this field, or a check came back to it
      selectAll();
      break;
    default:
      break;
  }
}

TDBNumberEditEh::TDBNumberEditEh(QWidget* parent) : TCustomDBEditEh(parent) {
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  setInputMethodHints(Qt::ImhFormattedNumbersOnly);
}

QString TDBNumberEditEh::accepted(const QString& typed, const QString& before, const QString& after) const {
  const bool isKey = typed.size() <= 1;
  const QString wanted = isKey ? inPlainSigns(typed) : amountIn(typed);
  QString head = before;
  QString added;
  for (const QChar sign : wanted) {
    if (!fits(sign, head, after)) continue;
    head += sign;
    added += sign;
  }
  if (isKey || (!wanted.isEmpty() && added == wanted)) return added;
  QToolTip::showText(mapToGlobal(rect().bottomLeft()),
                     tr("“%1”不能作为数字输入，小数最多 %2 位").arg(typed.trimmed().left(40)).arg(places_));
  return {};
}

bool TDBNumberEditEh::fits(QChar sign, const QString& before, const QString& after) const {
  const qsizetype point = before.indexOf(u'.');
  if (sign >= u'0' && sign <= u'9') {
    const qsizetype end = after.indexOf(u'.') < 0 ? after.size() : after.indexOf(u'.');
    return !after.startsWith(u'-') && (point < 0 || before.size() - point - 1 + end < places_);
  }
  if (sign == u'.') {
    return point < 0 && !after.contains(u'.') && !after.startsWith(u'-') && places_ > 0 &&
           after.size() <= places_;
  }
  return sign == u'-' && before.isEmpty() && !after.startsWith(u'-');
}

void TDBNumberEditEh::setValue(double value) {
  setText(editableNumber(value, format_));
}

double TDBNumberEditEh::value() const {
  return text().trimmed().toDouble();
}

}  // namespace goodsbook
