// The dialog that prints labels.
#include <QProcess>

#include "tests/labels/label_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class LabelPrinting : public LabelScreen {
 protected:
  void openPrinting(const QStringList& products = {u"100"_s, u"200"_s}, int count = 1) {
    openList();
    make(products, count);
    act(u"Act_Print"_s);
    ASSERT_EQ(frontClass(), u"LabelDialog"_s);
  }
  void printTo(const QString& name) { done({{u"cmd"_s, u"printto"_s}, {u"path"_s, file(name)}}); }
  // Pages of a PDF, and their text.
  QStringList pages(const QString& name) {
    QProcess process;
    process.start(u"pdftotext"_s, {u"-layout"_s, file(name), u"-"_s});
    EXPECT_TRUE(process.waitForFinished());
    QStringList texts = QString::fromUtf8(process.readAllStandardOutput()).split(u'\f');
    texts.removeLast();
    return texts;
  }
};

TEST_F(LabelPrinting, AnEmptySetIsTold) {
  openList();
  act(u"Act_Print"_s);
  EXPECT_EQ(frontClass(), u"TF2102"_s);
  EXPECT_EQ(messages(), Lines{u"没有标签可以打印，请先点击【生成】。"_s});
}

TEST_F(LabelPrinting, APrintTargetNeedsNoDialog) {
  onGui([] { setGlobal(u"G_CoName"_s, u"样例商店"_s); });
  openList();
  make({u"100"_s}, 25);
  printTo(u"direct.pdf"_s);
  act(u"Act_Print"_s);
  EXPECT_EQ(frontClass(), u"TF2102"_s);
  EXPECT_EQ(messages(), Lines());
  const QStringList printed = pages(u"direct.pdf"_s);
  ASSERT_EQ(printed.size(), 2);
  EXPECT_EQ(printed[0].count(u"6901234567892"_s), 24);
  EXPECT_EQ(printed[1].count(u"6901234567892"_s), 1);
  EXPECT_TRUE(printed[1].contains(u"矿泉水"_s));
  EXPECT_TRUE(printed[1].contains(u"5.00"_s));
}

TEST_F(LabelPrinting, WhatIsWrongIsToldAfterADirectPrint) {
  product(u"500"_s, u"错码商品"_s, u"6901234567899"_s);
  openList();
  make({u"500"_s}, 2);
  printTo(u"direct.pdf"_s);
  act(u"Act_Print"_s);
  EXPECT_EQ(
      messages(),
      Lines{u"标签已印出，请注意：\n错码商品：条码 6901234567899 的校验位应为 2，已按 Code 128 打印"_s});
}

TEST_F(LabelPrinting, TheRightToPrintIsNeeded) {
  open(102, {{u"print"_s, false}});
  press(u"Esc"_s);
  make({u"100"_s});
  EXPECT_FALSE(refused({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_Print"_s}}).isEmpty());
}

TEST_F(LabelPrinting, LayoutsAreChosenWithThePagesCounted) {
  openPrinting({u"100"_s}, 30);
  EXPECT_EQ(table(u"LayoutGrid"_s)["count"_L1].toInt(), 6);
  EXPECT_EQ(text(u"PageNumber"_s), u"第 1 页 / 共 2 页，30 个标签"_s);
  press(u"PgDown"_s);
  EXPECT_EQ(text(u"PageNumber"_s), u"第 2 页 / 共 2 页，30 个标签"_s);
  click(u"btn_Next"_s);
  EXPECT_EQ(text(u"PageNumber"_s), u"第 2 页 / 共 2 页，30 个标签"_s);
  type(u"StartAt"_s, u"20"_s);
  EXPECT_EQ(text(u"PageNumber"_s), u"第 2 页 / 共 3 页，30 个标签"_s);
  goTo(u"LayoutGrid"_s, 2);
  EXPECT_FALSE(get(u"StartAt"_s)["enabled"_L1].toBool());
  EXPECT_EQ(text(u"PageNumber"_s), u"第 2 页 / 共 30 页，30 个标签"_s);
  EXPECT_EQ(text(u"Warnings"_s), u"没有问题"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(LabelPrinting, WarningsStandInTheDialogBeforePrinting) {
  product(u"500"_s, u"无码商品"_s, {});
  openPrinting({u"100"_s, u"500"_s});
  EXPECT_EQ(text(u"Warnings"_s), u"无码商品：没有条码"_s);
  printTo(u"told.pdf"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());  // known already
}

TEST_F(LabelPrinting, ChoicesAreRemembered) {
  openPrinting();
  goTo(u"LayoutGrid"_s, 4);
  focus(u"Resolution"_s);
  press(u"Home"_s);
  type(u"OffsetX"_s, u"1.5"_s);
  type(u"OffsetY"_s, u"-0.5"_s);
  type(u"ScaleX"_s, u"99.5"_s);
  printTo(u"a.pdf"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(pages(u"a.pdf"_s).size(), 2);
  act(u"Act_Print"_s);
  EXPECT_EQ(table(u"LayoutGrid"_s)["current"_L1].toInt(), 4);
  EXPECT_EQ(text(u"Resolution"_s), u"203 dpi"_s);
  EXPECT_EQ(
      text(u"OffsetX"_s) + u' ' + text(u"OffsetY"_s) + u' ' + text(u"ScaleX"_s) + u' ' + text(u"ScaleY"_s),
      u"1.5 -0.5 99.5 100"_s);
  press(u"Esc"_s);
  closeFront();
  openList();
  printTo(u"b.pdf"_s);
  act(u"Act_Print"_s);  // without the dialog: the layout used last
  EXPECT_EQ(pages(u"b.pdf"_s).size(), 2);
}

TEST_F(LabelPrinting, AFileIsAskedForWhenNoPrinterIsChosen) {
  openPrinting();
  click(u"btn_ok"_s);  // nothing chosen: stays
  EXPECT_EQ(frontClass(), u"LabelDialog"_s);
  done({{u"cmd"_s, u"pickfile"_s}, {u"path"_s, file(u"chosen.pdf"_s)}});
  click(u"btn_ok"_s);
  EXPECT_EQ(frontClass(), u"TF2102"_s);
  EXPECT_EQ(pages(u"chosen.pdf"_s).size(), 1);
}

TEST_F(LabelPrinting, AFileThatCannotBeWrittenIsTold) {
  openPrinting();
  done({{u"cmd"_s, u"printto"_s}, {u"path"_s, u"/nonexistent/labels.pdf"_s}});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"打印不能开始：打印机或文件 /nonexistent/labels.pdf 写不进去。"_s});
  EXPECT_EQ(frontClass(), u"LabelDialog"_s);
}

TEST_F(LabelPrinting, ATestPageLeavesTheDialogOpen) {
  openPrinting();
  printTo(u"test.pdf"_s);
  click(u"btn_Test"_s);
  EXPECT_EQ(frontClass(), u"LabelDialog"_s);
  const QStringList printed = pages(u"test.pdf"_s);
  ASSERT_EQ(printed.size(), 1);
  EXPECT_TRUE(printed[0].contains(u"24"_s));
  EXPECT_TRUE(printed[0].contains(u"300 dpi"_s)) << printed[0].toStdString();
}

TEST_F(LabelPrinting, ALayoutIsCopiedAndChanged) {
  openPrinting();
  goTo(u"LayoutGrid"_s, 2);
  click(u"btn_Copy"_s);
  EXPECT_EQ(messages(), Lines{u"已复制到 %1，可用文本编辑器修改。"_s.arg(file(u"roll-40x30.label"_s))});
  EXPECT_EQ(column(u"LayoutGrid"_s, u"ORIGIN"_s).count(u"自定"_s), 1);
  EXPECT_EQ(rows(u"LayoutGrid"_s).last()["NAME"_L1].toString(), u"卷筒 40 × 30 毫米"_s);
  press(u"Esc"_s);
  put(u"roll-40x30.label"_s, content(u"roll-40x30.label"_s).replace("卷筒 40 × 30 毫米", "我的卷筒"));
  act(u"Act_Print"_s);
  EXPECT_EQ(rows(u"LayoutGrid"_s).last()["NAME"_L1].toString(), u"我的卷筒"_s);
  EXPECT_EQ(table(u"LayoutGrid"_s)["current"_L1].toInt(), 5);
  press(u"Esc"_s);
}

TEST_F(LabelPrinting, AWrongLayoutIsToldWithFileAndLine) {
  put(u"wrong.label"_s, "名称 \"我的\"\n纸张 A4\n标签 300 37\n文字 1 1 20 5 \"{名称}\"\n");
  openPrinting();
  const QJsonValue last = rows(u"LayoutGrid"_s).last();
  EXPECT_EQ(last["NAME"_L1].toString() + last["ORIGIN"_L1].toString(), u"wrong.label有错误"_s);
  goTo(u"LayoutGrid"_s, 6);
  const QString error =
      u"标签样式 %1 第 3 行：标签共宽 300 毫米，纸宽只有 210 毫米。"_s.arg(file(u"wrong.label"_s));
  EXPECT_EQ(text(u"Warnings"_s), error);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{error});
  EXPECT_EQ(frontClass(), u"LabelDialog"_s);
  press(u"Esc"_s);
  printTo(u"x.pdf"_s);
  act(u"Act_Print"_s);
  EXPECT_EQ(messages(), Lines{error});
}

TEST_F(LabelPrinting, LabelsPushedOverTheEdgeOfThePaperAreTold) {
  openPrinting({u"100"_s}, 14);
  type(u"StartAt"_s, u"11"_s);
  type(u"ScaleY"_s, u"150"_s);
  EXPECT_EQ(text(u"Warnings"_s),
            u"纸上第 16–24 个位置的标签超出纸边（下边 142.5 毫米），9 个标签印不全：请改小偏移或缩放"_s);
  type(u"ScaleY"_s, u"100"_s);
  type(u"OffsetX"_s, u"90"_s);
  EXPECT_EQ(
      text(u"Warnings"_s),
      u"纸上第 11–12、14–15、17–18、20–21、23–24 个位置的标签超出纸边（右边 86.0 毫米），10 个标签印不全：请改小偏移或缩放"_s);
  type(u"OffsetX"_s, u"2"_s);
  type(u"OffsetY"_s, u"-2"_s);
  EXPECT_EQ(text(u"Warnings"_s), u"没有问题"_s);
  goTo(u"LayoutGrid"_s, 2);
  type(u"OffsetX"_s, u"-3"_s);
  EXPECT_EQ(text(u"Warnings"_s),
            u"标签超出纸边（左边 2.0 毫米、上边 0.5 毫米），14 个标签印不全：请改小偏移或缩放"_s);
  printTo(u"over.pdf"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());  // known already
}

TEST_F(LabelPrinting, EveryLabelIsLookedAtBeforePrinting) {
  product(u"500"_s, u"无码商品"_s, {});
  openList();
  make({u"100"_s}, 5000);
  make({u"500"_s});
  act(u"Act_Print"_s);
  for (int turn = 0; turn < 200 && text(u"WarningTitle"_s) != u"请注意："_s; ++turn)
    done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 20}});
  EXPECT_EQ(text(u"WarningTitle"_s), u"请注意："_s);
  EXPECT_EQ(text(u"Warnings"_s), u"无码商品：没有条码"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(LabelPrinting, AllWarningsCanBeRead) {
  QStringList products, told;
  for (int i = 0; i < 20; ++i) {
    products << u"N%1"_s.arg(i);
    product(products.last(), u"商品%1"_s.arg(i), {});
    told << u"商品%1：没有条码"_s.arg(i);
  }
  openPrinting(products);
  EXPECT_EQ(text(u"Warnings"_s).toStdString(), told.join(u'\n').toStdString());
  click(u"btn_Cancel"_s);
}

TEST_F(LabelPrinting, NumbersOutOfRangeAreToldAndNothingIsPrinted) {
  openPrinting();
  const std::pair<QString, QString> cases[] = {{u"StartAt"_s, u"从第几个标签开始应在 1 到 24 之间!"_s},
                                               {u"OffsetX"_s, u"向右偏移(毫米)应在 -100 到 100 之间!"_s},
                                               {u"OffsetY"_s, u"向下偏移(毫米)应在 -100 到 100 之间!"_s},
                                               {u"ScaleX"_s, u"横向缩放(%)应在 50 到 200 之间!"_s},
                                               {u"ScaleY"_s, u"纵向缩放(%)应在 50 到 200 之间!"_s}};
  for (const auto& [field, error] : cases) {
    const QString usual = text(field);
    type(field, u"500"_s);
    EXPECT_EQ(text(u"Warnings"_s), error);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines{error});
    EXPECT_EQ(frontClass(), u"LabelDialog"_s);
    EXPECT_EQ(text(field), u"500"_s);
    type(field, usual);
  }
  type(u"StartAt"_s, u"24"_s);
  EXPECT_EQ(text(u"Warnings"_s), u"没有问题"_s);
  goTo(u"LayoutGrid"_s, 2);  // where it is not asked for
  EXPECT_EQ(text(u"Warnings"_s), u"没有问题"_s);
  goTo(u"LayoutGrid"_s, 0);
  type(u"ScaleX"_s, u"500"_s);
  press(u"Esc"_s);
  act(u"Act_Print"_s);
  EXPECT_EQ(text(u"ScaleX"_s), u"100"_s);
  press(u"Esc"_s);
  messages();
}

}  // namespace
}  // namespace goodsbook
