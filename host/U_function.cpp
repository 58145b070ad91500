#include "host/U_function.h"

#include <QApplication>
#include <QCoreApplication>
#include <QLineEdit>
#include <algorithm>

#include "host/data/errors.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

QWidget* activeScreen() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return QApplication::activeWindow();
}

QString translated(const char* text) {
  return QCoreApplication::translate("goodsbook::U_function", text);
}

[[noreturn]] void refuse(QLineEdit* edit, const QString& text) {
  DISPINFO(text, 5);
  edit->setFocus();
  edit->selectAll();
  throw EAbort();
}

bool isControl(QChar sign) {
  return sign.category() == QChar::Other_Control || sign.category() == QChar::Other_Format ||
         sign.category() == QChar::Separator_Line || sign.category() == QChar::Separator_Paragraph;
}

}  // namespace

char DISPINFO(const QString& text, int kind) {
  return Session::current().desktop().message(activeScreen(), text, kind);
}

void plainBox(const QString& text, const QString& caption) {
  Session::current().desktop().message(activeScreen(), text, 0, caption);
}

void CheckBlankInstr(QLineEdit* edit, const QString& caption) {
  const QString text = edit->text();
  if (text.trimmed().isEmpty()) refuse(edit, translated("%1不能为空!").arg(caption));
  if (std::any_of(text.begin(), text.end(), [](QChar sign) { return sign.isSpace(); })) {
    refuse(edit, translated("%1中不能有空格!").arg(caption));
  }
}

void CheckText(QLineEdit* edit, const QString& caption) {
  for (const QChar sign : edit->text()) {
    if (sign == u'\'' || sign == u'"') refuse(edit, translated("%1中不能有引号!").arg(caption));
    if (isControl(sign)) refuse(edit, translated("%1中不能有控制字符!").arg(caption));
    if (sign.isSpace()) refuse(edit, translated("%1中不能有空格!").arg(caption));
  }
}

QString GETCODE(const QString& nodeText) {
  return nodeText.section(u' ', 0, 0);
}

QString boltos(bool value) {
  return value ? u"1"_s : u"0"_s;
}

QString QuotedStr(const QString& text) {
  QString inner = text;
  inner.replace(u'\'', u"''"_s);
  return u'\'' + inner + u'\'';
}

}  // namespace goodsbook
