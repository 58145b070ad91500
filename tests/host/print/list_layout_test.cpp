#include "host/print/list_layout.h"

#include <gtest/gtest.h>

#include <QImage>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

// 72 dots an inch: a unit is a point.
class Paper {
 public:
  Paper() : image_(100, 100, QImage::Format_Mono) {
    image_.setDotsPerMeterX(2835);
    image_.setDotsPerMeterY(2835);
    font_.setPointSizeF(9);
  }
  ListLayout layout(const std::vector<PrintColumn>& columns, QSizeF body) {
    return {columns, body, font_, &image_};
  }
  double lineHeight() const { return QFontMetricsF(font_, &image_).height(); }

 private:
  QImage image_;
  QFont font_;
};

const std::vector<PrintColumn> threeColumns{
    {u"编号"_s, 60}, {u"名称"_s, 120}, {u"数量"_s, 60, Qt::AlignRight}};

TEST(ListLayout, ColumnsShareThePageInProportion) {
  Paper paper;
  const ListLayout layout = paper.layout({{u"a"_s, 400}, {u"b"_s, 800}, {u"c"_s, 400}}, {480, 700});
  EXPECT_DOUBLE_EQ(layout.totalWidth(), 480);
  EXPECT_DOUBLE_EQ(layout.width(0), 120);
  EXPECT_DOUBLE_EQ(layout.width(1), 240);
  EXPECT_DOUBLE_EQ(layout.left(2), 360);
}

TEST(ListLayout, FewNarrowColumnsAreNotStretchedOverTheWholePage) {
  Paper paper;
  const ListLayout layout = paper.layout(threeColumns, {500, 700});
  EXPECT_LT(layout.totalWidth(), 320);
  EXPECT_GT(layout.totalWidth(), 240 * 0.75);
}

TEST(ListLayout, WideListsLieAcross) {
  EXPECT_FALSE(ListLayout::wantsLandscape(threeColumns, 500));
  EXPECT_TRUE(ListLayout::wantsLandscape({{u"a"_s, 500}, {u"b"_s, 600}}, 500));
}

TEST(ListLayout, AListWithoutRowsHasOnePage) {
  Paper paper;
  const ListLayout layout = paper.layout(threeColumns, {500, 700});
  EXPECT_EQ(layout.pageCount(), 1);
  EXPECT_EQ(layout.rowsOf(0), std::pair(0, 0));
}

TEST(ListLayout, AFullPageGivesWayToTheNext) {
  Paper paper;
  ListLayout probe = paper.layout(threeColumns, {500, 700});
  const double rowHeight = probe.heightOf({u"1"_s, u"x"_s, u"2"_s});
  ListLayout layout = paper.layout(threeColumns, {500, rowHeight * 10.5});
  for (int i = 0; i < 25; ++i) layout.addRow({QString::number(i), u"名称"_s, u"1"_s});
  EXPECT_EQ(layout.pageCount(), 3);
  EXPECT_EQ(layout.rowsOf(0), std::pair(0, 10));
  EXPECT_EQ(layout.rowsOf(1), std::pair(10, 20));
  EXPECT_EQ(layout.rowsOf(2), std::pair(20, 25));
}

TEST(ListLayout, LongTextsAreWrappedWithBlanksOrWithout) {
  Paper paper;
  const ListLayout layout = paper.layout(threeColumns, {240, 700});
  const double one = layout.heightOf({u"A"_s, u"短"_s, {}});
  EXPECT_NEAR(one, paper.lineHeight() + 2 * layout.padding(), 1);
  EXPECT_GT(layout.heightOf({u"A"_s, QString(40, u'长'), {}}), one + 2 * paper.lineHeight());
  EXPECT_GT(layout.heightOf({u"A"_s, QString(80, u'W'), {}}), one + 2 * paper.lineHeight());
  EXPECT_GT(layout.heightOf({u"A"_s, u"zwei\nZeilen"_s, {}}), one);
}

TEST(ListLayout, ARowIsNeverSplitAndOneTallerThanAPageIsCut) {
  Paper paper;
  const ListLayout measured = paper.layout(threeColumns, {240, 100});
  ListLayout layout = measured;
  layout.addRow({u"1"_s, u"x"_s, {}});
  layout.addRow({u"2"_s, QString(2000, u'长'), {}});
  layout.addRow({u"3"_s, u"x"_s, {}});
  EXPECT_EQ(layout.pageCount(), 3);
  EXPECT_NEAR(layout.height(1), 100, 0.01);
  EXPECT_EQ(layout.rowsOf(1), std::pair(1, 2));
}

}  // namespace
}  // namespace goodsbook
