#include "host/controls/edits.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

#include "host/controls/name_label.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

void commit(QWidget& edit, const QString& text) {
  QInputMethodEvent event;
  event.setCommitString(text);
  QApplication::sendEvent(&edit, &event);
}

void paste(QWidget& edit, const QString& text) {
  QGuiApplication::clipboard()->setText(text);
  QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
}

TEST(Edit, LimitCutsWhatIsTyped) {
  TCustomDBEditEh edit;
  edit.setTypingLimit(4);
  QTest::keyClicks(&edit, u"123456"_s);
  EXPECT_EQ(edit.text(), u"1234"_s);
  edit.setSelection(1, 2);
  QTest::keyClicks(&edit, u"xyz"_s);
  EXPECT_EQ(edit.text(), u"1xy4"_s);
}

TEST(Edit, LimitCutsWhatIsPasted) {
  TCustomDBEditEh edit;
  edit.setTypingLimit(5);
  edit.setText(u"ab"_s);
  edit.end(false);
  paste(edit, u"12345\n"_s);
  EXPECT_EQ(edit.text(), u"ab123"_s);
}

TEST(Edit, LimitCountsCharactersOfAnInputMethod) {
  TCustomDBEditEh edit;
  edit.setTypingLimit(3);
  commit(edit, u"计量单位"_s);
  EXPECT_EQ(edit.text(), u"计量单"_s);
  commit(edit, u"位"_s);
  EXPECT_EQ(edit.text(), u"计量单"_s);
}

TEST(Edit, LimitNeverCutsACharacterInTwo) {
  TCustomDBEditEh edit;
  edit.setTypingLimit(3);
  commit(edit, u"ab𠮷"_s);
  EXPECT_EQ(edit.text(), u"ab"_s);
}

TEST(Edit, LimitLeavesTextsOfTheProgramAlone) {
  TCustomDBEditEh edit;
  edit.setTypingLimit(4);
  edit.setText(u"C:/pictures/long-name.jpg"_s);
  EXPECT_EQ(edit.text(), u"C:/pictures/long-name.jpg"_s);
  edit.end(false);
  QTest::keyClicks(&edit, u"x"_s);
  EXPECT_EQ(edit.text(), u"C:/pictures/long-name.jpg"_s);
  QTest::keyClick(&edit, Qt::Key_Backspace);
  EXPECT_EQ(edit.text(), u"C:/pictures/long-name.jp"_s);
}

TEST(Edit, UpperCaseWhileTypingPastingAndComposing) {
  TCustomDBEditEh edit;
  edit.setUpperCase(true);
  QTest::keyClicks(&edit, u"kg"_s);
  paste(edit, u"ab"_s);
  commit(edit, u"é斤"_s);
  EXPECT_EQ(edit.text(), u"KGABÉ斤"_s);
  edit.setText(u"kg"_s);
  EXPECT_EQ(edit.text(), u"kg"_s);
}

TEST(Edit, TypingTellsThatItWasEditedOnceAKey) {
  TCustomDBEditEh edit;
  edit.setUpperCase(true);
  QSignalSpy edited(&edit, &QLineEdit::textEdited);
  QTest::keyClicks(&edit, u"abc"_s);
  EXPECT_EQ(edited.count(), 3);
  edit.undo();
  EXPECT_NE(edit.text(), u"ABC"_s);
}

TEST(Edit, ReadOnlyTakesNothing) {
  TCustomDBEditEh edit;
  edit.setText(u"x"_s);
  edit.setReadOnly(true);
  QTest::keyClicks(&edit, u"abc"_s);
  paste(edit, u"abc"_s);
  commit(edit, u"公"_s);
  EXPECT_EQ(edit.text(), u"x"_s);
}

TEST(NumberEdit, TakesOnlyCharactersOfANumber) {
  TDBNumberEditEh edit;
  QTest::keyClicks(&edit, u"-1a2.3.4e5-6789"_s);
  EXPECT_EQ(edit.text(), u"-12.3456"_s);
}

TEST(NumberEdit, PointAndDigitsOfAChineseInputMethodBecomePlain) {
  TDBNumberEditEh edit;
  commit(edit, u"１２。５"_s);
  EXPECT_EQ(edit.text(), u"12.5"_s);
}

TEST(NumberEdit, PastesAmountsWithDigitGroups) {
  TDBNumberEditEh edit;
  edit.setDecimalPlaces(2);
  for (const QString& amount : {u" 1,234.56 "_s, u"￥1,234.56"_s, u"1，234.56元"_s, u"１２３４．５６"_s}) {
    edit.selectAll();
    paste(edit, amount);
    EXPECT_EQ(edit.text(), u"1234.56"_s) << amount.toStdString();
    edit.clear();
  }
}

TEST(NumberEdit, APastedTextDoesNotBecomeAnotherNumber) {
  TDBNumberEditEh edit;
  edit.setDecimalPlaces(2);
  edit.setText(u"7"_s);
  for (const QString& other : {u"0.055"_s, u"1e5"_s, u"1,5"_s, u"12-3"_s, u"3箱"_s, u"1.2.3"_s, u"abc"_s}) {
    edit.selectAll();
    paste(edit, other);
    EXPECT_EQ(edit.text(), u"7"_s) << other.toStdString();
    EXPECT_TRUE(QToolTip::text().contains(other)) << other.toStdString();
  }
  edit.setText(u"1.2"_s);
  paste(edit, u"34"_s);
  EXPECT_EQ(edit.text(), u"1.2"_s) << "not a part of it either";
}

TEST(NumberEdit, KeepsTheTextAsTypedAndEmptyStaysEmpty) {
  TDBNumberEditEh edit;
  edit.setDisplayFormat(u"0.00"_s);
  QTest::keyClicks(&edit, u"007.5"_s);
  EXPECT_EQ(edit.text(), u"007.5"_s);
  edit.selectAll();
  QTest::keyClick(&edit, Qt::Key_Delete);
  EXPECT_EQ(edit.text(), QString());
  EXPECT_EQ(edit.value(), 0.0);
}

TEST(NumberEdit, AMaximumIsForChecksAndClampsNothing) {
  TDBNumberEditEh edit;
  edit.setText(u"1000000"_s);
  EXPECT_FALSE(edit.exceedsMaximum()) << "there is none";
  edit.setMaximum(1);
  EXPECT_TRUE(edit.exceedsMaximum());
  EXPECT_EQ(edit.text(), u"1000000"_s);
  edit.clear();
  edit.insertTyped(u"1.01"_s);
  EXPECT_EQ(edit.text(), u"1.01"_s);
  EXPECT_TRUE(edit.exceedsMaximum());
  edit.setValue(1);
  EXPECT_FALSE(edit.exceedsMaximum());
}

TEST(NumberEdit, DigitsBeforeThePointAreFreeWhenThePlacesAreFull) {
  TDBNumberEditEh edit;
  edit.setDecimalPlaces(2);
  edit.setText(u"1.25"_s);
  edit.end(false);
  QTest::keyClicks(&edit, u"9"_s);
  EXPECT_EQ(edit.text(), u"1.25"_s);
  edit.home(false);
  QTest::keyClicks(&edit, u"9"_s);
  EXPECT_EQ(edit.text(), u"91.25"_s);
}

struct ShownNumber {
  const char* name;
  double value;
  QString format, text;
};

class NumberFormat : public testing::TestWithParam<ShownNumber> {};

TEST_P(NumberFormat, ShowsAValue) {
  TDBNumberEditEh edit;
  edit.setDisplayFormat(GetParam().format);
  edit.setValue(GetParam().value);
  EXPECT_EQ(edit.text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, NumberFormat,
    testing::Values(ShownNumber{"FixedPlaces", 3.5, u"0.00"_s, u"3.50"_s},
                    ShownNumber{"DecimalsBeyondTheFormatStay", 1.005, u"0.00"_s, u"1.005"_s},
                    ShownNumber{"OfNegativeNumbersToo", -2.675, u"0.00"_s, u"-2.675"_s},
                    ShownNumber{"SmallNumbersAreNoZero", -0.001, u"0.00"_s, u"-0.001"_s},
                    ShownNumber{"GroupsAreNotForStatements", 12345.6, u"#,##0.00"_s, u"12345.60"_s},
                    ShownNumber{"OptionalPlaces", 0.5, u"0.####"_s, u"0.5"_s},
                    ShownNumber{"WholeWithOptionalPlaces", 3, u"0.##"_s, u"3"_s},
                    ShownNumber{"WithoutFormatTheShortestText", 0.1, QString(), u"0.1"_s},
                    ShownNumber{"NeverAnExponent", 1e15, QString(), u"1000000000000000"_s}),
    [](const auto& row) { return row.param.name; });

TEST(DateEdit, ReadsUsualSpellingsAndMayBeEmpty) {
  TDBDateTimeEditEh edit;
  EXPECT_TRUE(edit.isReadable());
  for (const QString& spelling : {u"2026-11-05"_s, u"2026/11/5"_s, u"20261105"_s, u"2026.11.05"_s,
                                  u"2026年11月5日"_s, u"261105"_s, u"20261105 10:11"_s}) {
    edit.setText(spelling);
    EXPECT_EQ(edit.dateTime().date(), QDate(2026, 11, 5)) << spelling.toStdString();
  }
}

TEST(DateEdit, DoesNotGuess) {
  TDBDateTimeEditEh edit;
  for (const QString& text :
       {u"2026-02-30"_s, u"202612"_s, u"2026111"_s, u"2026-111"_s, u"202611-1"_s, u"2026"_s, u"10:30"_s,
        u"26-1-5"_s, u"1752-12-31"_s, u"0026-01-05"_s, u"2026-01-05 25:00"_s}) {
    edit.setText(text);
    EXPECT_FALSE(edit.isReadable()) << text.toStdString();
    edit.takeUsualForm();
    EXPECT_EQ(edit.text(), text);
  }
}

TEST(DateEdit, TakesTheUsualFormWhenTheFocusLeaves) {
  QWidget window;
  QVBoxLayout column(&window);
  auto* date = new TDBDateTimeEditEh;
  auto* next = new TCustomDBEditEh;
  column.addWidget(date);
  column.addWidget(next);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  date->setFocus();
  QTest::keyClicks(date, u"2026/1/5x"_s);
  next->setFocus();
  EXPECT_EQ(date->text(), u"2026-01-05"_s);
}

TEST(DateEdit, CalendarOpensAndEscClosesIt) {
  TDBDateTimeEditEh edit;
  edit.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&edit));
  QTest::keyClick(&edit, Qt::Key_F4);
  QPointer<QWidget> popup = QApplication::activePopupWidget();
  ASSERT_NE(popup, nullptr);
  QTest::keyClick(popup, Qt::Key_Escape);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST(NameLabel, ALongNameEndsWithDotsAndStandsInTheToolTip) {
  NameLabel label;
  label.resize(label.fontMetrics().horizontalAdvance(u'字') * 6, 24);
  const auto shownTip = [&label] {
    QToolTip::hideText();
    QHelpEvent asked(QEvent::ToolTip, QPoint(2, 2), label.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&label, &asked);
    return QToolTip::text();
  };
  label.setText(u"华东"_s);
  EXPECT_EQ(label.shownText(), u"华东"_s);
  EXPECT_EQ(shownTip(), QString());
  label.setText(u"华东地区浙江省杭州市余杭区西溪街"_s);
  EXPECT_TRUE(label.shownText().endsWith(u'…'));
  EXPECT_EQ(shownTip(), label.text());
}

TEST(LookupEdit, ButtonFollowsTheName) {
  TExtEdit edit;
  edit.setObjectName(u"CLASS_ID"_s);
  EXPECT_EQ(edit.findChild<QToolButton*>(u"CLASS_ID.button"_s), edit.button());
  edit.setObjectName(u"dw_id"_s);
  EXPECT_EQ(edit.button()->objectName(), u"dw_id.button"_s);
}

TEST(LookupEdit, ButtonKeysAndDoubleClickAskForThePicker) {
  TExtEdit edit;
  edit.resize(120, 24);
  edit.show();
  QSignalSpy clicks(&edit, &TExtEdit::ButtonClick);
  QTest::mouseClick(edit.button(), Qt::LeftButton);
  QTest::keyClick(&edit, Qt::Key_F4);
  QTest::keyClick(&edit, Qt::Key_Down, Qt::AltModifier);
  QTest::mouseDClick(&edit, Qt::LeftButton, {}, QPoint(10, 10));
  EXPECT_EQ(clicks.count(), 4);
  edit.setReadOnly(true);
  QTest::keyClick(&edit, Qt::Key_F4);
  QTest::mouseClick(edit.button(), Qt::LeftButton);
  EXPECT_EQ(clicks.count(), 4);
}

TEST(Edit, KeyboardFocusSelectsAll) {
  QWidget window;
  QVBoxLayout column(&window);
  auto* first = new TCustomDBEditEh;
  auto* second = new TDBNumberEditEh;
  column.addWidget(first);
  column.addWidget(second);
  second->setText(u"12"_s);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  first->setFocus();
  second->setFocus();
  EXPECT_EQ(second->selectedText(), u"12"_s);
  QTest::keyClicks(second, u"7"_s);
  EXPECT_EQ(second->text(), u"7"_s);
}

}  // namespace
}  // namespace goodsbook
