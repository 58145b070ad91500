// The list of labels: its file, its flag, its actions.
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QSet>
#include <QSettings>

#include "host/controls/TDBGridEh.h"
#include "host/data/record_set.h"
#include "tests/labels/label_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class LabelList : public LabelScreen {
 protected:
  QString flag() {
    return QSettings(file(u"MOXEL.DLL"_s), QSettings::IniFormat).value(u"sys/tmbq"_s).toString();
  }
  const QJsonValue action(const QString& name) {
    const QJsonArray all = done({{u"cmd"_s, u"actions"_s}})["actions"_L1].toArray();
    for (const QJsonValue& one : all) {
      if (one["name"_L1] == name) return one;
    }
    return {};
  }
  QString count() { return text(u"RecordCount"_s); }
};

TEST_F(LabelList, OpensWithItsDialogItsHeadAndItsColumns) {
  EXPECT_EQ(open(102)["class"_L1].toString(), u"TF2102"_s);
  EXPECT_EQ(frontClass(), u"TF2102F"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2102"_s);
  const QJsonArray screens = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  EXPECT_EQ(screens.last()["caption"_L1].toString(), u"商品标签"_s);
  EXPECT_EQ(screens.last()["tag"_L1].toInt(), 102);
  EXPECT_EQ(text(u"ConditionTitle"_s),
            u"系统提示：系统仅在<本机>保留最近一次生成的标签，如无需保留请点击 "_s);
  EXPECT_EQ(text(u"Label1"_s), u"清空表格暂存标签"_s);
  const QJsonArray columns = table(u"DBGridEh"_s)["columns"_L1].toArray();
  QStringList shown, hidden;
  for (const QJsonValue& column : columns) {
    (column["visible"_L1].toBool() ? shown : hidden)
        << column["field"_L1].toString() + u' ' + column["title"_L1].toString();
  }
  EXPECT_EQ(
      shown.join(u',').toStdString(),
      "WL_ID 商品编号,TM 主条码,WL_NAME 商品名称,WL_GG 规格,CLASS_NAME 类型,DW_NAME 主单位,SJ 售价,VIPSJ "
      "会员价,CD 产地,WL_YS 有效,CK_NAME 仓库");
  EXPECT_EQ(hidden.join(u',').toStdString(), "CLASS_ID 类型代号,DW_ID 单位代号");
}

TEST_F(LabelList, HasItsActions) {
  openList();
  const QJsonValue generate = action(u"Act_Locate"_s);
  EXPECT_EQ(generate["caption"_L1].toString() + generate["hint"_L1].toString(), u"生成条码生成"_s);
  const QJsonValue remove = action(u"Act_Delete"_s);
  EXPECT_EQ(remove["caption"_L1].toString() + remove["hint"_L1].toString(), u"删除删除"_s);
  EXPECT_EQ(remove["shortcut"_L1].toString(), u"Del"_s);
  for (const QString& name : {u"Act_Add"_s, u"Act_Edit"_s, u"Act_Refresh"_s, u"Act_Other"_s})
    EXPECT_TRUE(action(name).isUndefined() || action(name).isNull()) << name.toStdString();
  onGui([] {
    for (QWidget* window : QApplication::allWidgets()) {
      if (window->objectName() == "Label1"_L1 && window->parentWidget()->inherits("goodsbook::TF2102")) {
        EXPECT_EQ(window->cursor().shape(), Qt::PointingHandCursor);
      }
    }
  });
}

TEST_F(LabelList, SendsNothingItself) {
  open(102);
  const Lines sent = statements();
  for (const QString& one : sent) EXPECT_FALSE(one.contains(u"FKW"_s)) << one.toStdString();
  press(u"Esc"_s);
  closeFront();
  EXPECT_EQ(statements(), Lines());
}

TEST_F(LabelList, WithoutAFileAnEmptySetIsWrittenAtOnce) {
  openList();
  EXPECT_TRUE(content(u"KRTZ"_s).startsWith("GBRS"));
  EXPECT_EQ(QDir(folder()).entryList({u"KRTZ*"_s}), QStringList{u"KRTZ"_s});
  EXPECT_EQ(count(), u"共 0 行"_s);
  EXPECT_EQ(messages(), Lines());
}

TEST_F(LabelList, TheSetLivesFromOneOpeningToTheNext) {
  openList();
  make({u"100"_s, u"200"_s}, 2);
  EXPECT_EQ(codes(), (QStringList{u"100"_s, u"100"_s, u"200"_s, u"200"_s}));
  EXPECT_EQ(count(), u"共 4 行"_s);
  closeFront();
  openList();
  const QJsonArray kept = rows(u"DBGridEh"_s);
  ASSERT_EQ(kept.size(), 4);
  QStringList values;
  for (const char* field : {"WL_ID", "WL_NAME", "WL_GG", "CLASS_NAME", "DW_NAME", "SJ", "VIPSJ", "TM", "CD"})
    values << kept[3][QLatin1String(field)].toString();
  EXPECT_EQ(values.join(u'|').toStdString(), "200|自编商品|500ml||瓶|5|4.5|200|上海");
  EXPECT_EQ(table(u"DBGridEh"_s)["columns"_L1][1]["title"_L1].toString(), u"主条码"_s);
}

TEST_F(LabelList, AFileThatCannotBeReadIsKeptUnderAnotherName) {
  put(u"KRTZ"_s, "damaged");
  openList();
  EXPECT_EQ(count(), u"共 0 行"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(content(u"KRTZ.broken"_s), "damaged");
  EXPECT_TRUE(content(u"KRTZ"_s).startsWith("GBRS"));
  closeFront();
  put(u"KRTZ"_s, "damaged again");
  openList();
  EXPECT_EQ(content(u"KRTZ.broken"_s), "damaged");
  EXPECT_EQ(content(u"KRTZ.broken-2"_s), "damaged again");
}

TEST_F(LabelList, ACutFileIsKeptToo) {
  openList();
  make({u"100"_s});
  closeFront();
  const QByteArray whole = content(u"KRTZ"_s);
  put(u"KRTZ"_s, whole.chopped(7));
  openList();
  EXPECT_EQ(codes(), QStringList());
  EXPECT_EQ(content(u"KRTZ.broken"_s), whole.chopped(7));
}

TEST_F(LabelList, AFileOfOtherRowsIsForeign) {
  onGui([this] {
    RecordSet other;
    other.create({{.name = u"A"_s}, {.name = u"B"_s}});
    other.append();
    other.setValue(u"A"_s, u"x"_s);
    other.post();
    other.saveToFile(file(u"KRTZ"_s));
  });
  const QByteArray foreign = content(u"KRTZ"_s);
  openList();
  EXPECT_EQ(count(), u"共 0 行"_s);
  EXPECT_EQ(content(u"KRTZ.broken"_s), foreign);
  make({u"100"_s});
  EXPECT_EQ(codes(), QStringList{u"100"_s});
}

TEST_F(LabelList, AFolderInItsPlaceIsMovedAside) {
  QDir(folder()).mkdir(u"KRTZ"_s);
  openList();
  EXPECT_TRUE(QDir(file(u"KRTZ.broken"_s)).exists());
  EXPECT_TRUE(content(u"KRTZ"_s).startsWith("GBRS"));
}

TEST_F(LabelList, EachGenerationInvertsTheFlagOpeningIncluded) {
  openList();
  closeFront();
  EXPECT_EQ(flag(), u"1"_s);
  openList();
  act(u"Act_Locate"_s);
  press(u"Esc"_s);
  closeFront();
  EXPECT_EQ(flag(), u"1"_s);
  openList();
  closeFront();
  EXPECT_EQ(flag(), u"0"_s);
}

TEST_F(LabelList, OtherSettingsBesideTheFlagStay) {
  put(u"MOXEL.DLL"_s, "[sys]\ntmbq=1\nother=5\n[more]\nkey=text\n");
  openList();
  closeFront();
  EXPECT_EQ(flag(), u"0"_s);
  const QSettings settings(file(u"MOXEL.DLL"_s), QSettings::IniFormat);
  EXPECT_EQ(settings.value(u"sys/other"_s).toString() + settings.value(u"more/key"_s).toString(), u"5text"_s);
}

TEST_F(LabelList, DeleteTakesTheCurrentRowWithoutAQuestion) {
  openList();
  make({u"100"_s, u"200"_s, u"300"_s});
  goTo(u"DBGridEh"_s, 1);
  act(u"Act_Delete"_s);
  EXPECT_EQ(codes(), (QStringList{u"100"_s, u"300"_s}));
  EXPECT_EQ(count(), u"共 2 行"_s);
  focus(u"DBGridEh"_s);
  press(u"Del"_s);
  press(u"Del"_s);
  press(u"Del"_s);
  EXPECT_EQ(codes(), QStringList());
  EXPECT_EQ(messages(), Lines());
}

TEST_F(LabelList, PickedRowsAreDeletedAfterOneQuestion) {
  openList();
  make({u"100"_s, u"200"_s, u"300"_s, u"100"_s});
  select(u"DBGridEh"_s, {3, 0});
  answer({u"n"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(messages(), Lines{u"是否删除所选记录"_s});
  EXPECT_EQ(codes().size(), 4);
  select(u"DBGridEh"_s, {3, 0});
  answer({u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(messages(), Lines{u"是否删除所选记录"_s});
  EXPECT_EQ(codes(), (QStringList{u"200"_s, u"300"_s}));
  EXPECT_EQ(count(), u"共 2 行"_s);
  act(u"Act_Delete"_s);  // the picks are gone: one row, no question
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(codes().size(), 1);
}

TEST_F(LabelList, TheLinkAndTheFilterActionClearWithoutAQuestion) {
  openList();
  make({u"100"_s}, 3);
  click(u"Label1"_s);
  EXPECT_EQ(codes(), QStringList());
  EXPECT_EQ(count(), u"共 0 行"_s);
  make({u"200"_s}, 2);
  act(u"Act_Filter"_s);
  EXPECT_EQ(codes(), QStringList());
  EXPECT_EQ(messages(), Lines());
  closeFront();
  openList();
  EXPECT_EQ(codes(), QStringList());
}

TEST_F(LabelList, ABarcodeLikeTheOneAboveIsNotPaintedAgain) {
  openList();
  make({u"100"_s}, 2);
  make({u"200"_s});
  goTo(u"DBGridEh"_s, 1);  // in the current row neither
  onGui([] {
    TDBGridEh* grid = nullptr;
    for (QWidget* widget : QApplication::allWidgets()) {
      if (widget->objectName() == "DBGridEh"_L1 && widget->window()->inherits("goodsbook::TF2102"))
        grid = qobject_cast<TDBGridEh*>(widget);
    }
    ASSERT_NE(grid, nullptr);
    const QImage seen = grid->viewport()->grab().toImage();
    const auto isBlank = [&](int row, const QString& field) {
      const QRect cell =
          grid->visualRect(grid->model()->index(row, grid->columnOf(field))).adjusted(2, 2, -3, -3);
      QSet<QRgb> colours;
      for (int y = cell.top(); y <= cell.bottom(); ++y) {
        for (int x = cell.left(); x <= cell.right(); ++x) colours.insert(seen.pixel(x, y));
      }
      return colours.size() == 1;
    };
    EXPECT_FALSE(isBlank(0, u"TM"_s));
    EXPECT_TRUE(isBlank(1, u"TM"_s));
    EXPECT_FALSE(isBlank(2, u"TM"_s));
    EXPECT_FALSE(isBlank(1, u"WL_ID"_s));
  });
  EXPECT_EQ(column(u"DBGridEh"_s, u"TM"_s)[1], u"6901234567892"_s);
}

TEST_F(LabelList, ManyLabelsAreMadeAndClearedAtOnce) {
  openList();
  make({u"100"_s}, 20000);
  EXPECT_EQ(count(), u"共 20,000 行"_s);
  click(u"Label1"_s);
  EXPECT_EQ(count(), u"共 0 行"_s);
}

}  // namespace
}  // namespace goodsbook
