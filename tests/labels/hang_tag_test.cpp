// The dialog that makes labels: single products, and the lines of purchase receipts.
#include <QHeaderView>
#include <QImage>
#include <QLayout>
#include <QLineEdit>
#include <QSet>
#include <QTest>

#include "host/controls/TDBGridEh.h"
#include "host/forms/Base_common.h"
#include "tests/labels/label_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

const QString heads =
    u" SELECT TOP 5 d8202.noid,d1103.kh_gys_id,d1103.kg_name,d1007.ck_id, d1007.ck_name,d8202.bdate,d8202.edate,d1011.send_id, d1011.send_name, sys_user.user_id,sys_user.user_name, D1101.YW_ID, D1101.YW_NAME, D1010.JY_ID, D1010.JY_NAME,d8202.note,d8202.t,sk,sdate FROM d8202 INNER JOIN d1103 ON d8202.kh_gys_id = d1103.kh_gys_id INNER JOIN sys_user ON d8202.user_id = sys_user.user_id INNER JOIN d1007 ON d8202.ck_id = d1007.ck_id INNER JOIN d1011 ON d8202.send_id = d1011.send_id INNER JOIN   D1101 ON D8202.YW_ID = D1101.YW_ID INNER JOIN   D1010 ON D8202.JY_ID = D1010.JY_ID"_s;

QString linesOf(const QString& receipt, int count = 1) {
  return u" SELECT d8202a.noid,d8202a.id,d1801.wl_id,d1801.wl_name,d1801.wl_gg, d1003.dw_name,d8202a.sl,%1 as tmsl,d8202a.dj,d8202a.money,D8202A.sl_return, D8202A.DW_J, D8202A.DW_L,D8202A.DW_ZH, D1801.CD,  D1801DW.SJ, D1801DW.VIPSJ, d8202a.note,d1003.dw_id, d8202a.d8201aid,d8202a.adw,D1801DW.TM,d8202a.jdate FROM d1801dw INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id INNER JOIN d1801 INNER JOIN d8202a ON d1801.wl_id = d8202a.wl_id ON d1801dw.adw = d8202a.adw  WHERE (d8202a.NOID  = '%2')"_s
      .arg(count)
      .arg(receipt);
}

QString single(const QString& typed) {
  return u"SELECT D1801.WL_ID, D1801.WL_NAME, D1801.WL_GG, D1004.CLASS_ID, D1004.CLASS_NAME, D1801.DWCOUNT, D1003.DW_ID, D1003.DW_NAME, D1801.CD, D1801.WL_YS, D1801.CHECK_KC, D1801.DJ, D1801DW.SJ, D1801DW.VIPSJ, D1801DW.PFJ, D1801DW.PFJ1, D1801DW.PFJ2, D1801DW.PFJ3, D1801DW.PFJ4, D1801DW.CGJ, D1801DW.TM, D1801.PYM, SYS_USER.USER_ID, SYS_USER.USER_NAME, D1801.BDATE, D1801.EDATE, D1801.NOTE, D1801.DW_ZH, D1801.DW_J_NAME, D1801.TMC FROM D1801 INNER JOIN D1004 ON D1801.CLASS_ID = D1004.CLASS_ID INNER JOIN SYS_USER ON D1801.USER_ID = SYS_USER.USER_ID INNER JOIN D1801DW ON D1801.WL_ID = D1801DW.WL_ID INNER JOIN D1003 ON D1801DW.DW_ID = D1003.DW_ID AND D1801DW.T = 1 WHERE (D1801DW.TM='%1') OR (D1801.WL_ID='%1')"_s
      .arg(typed);
}

// To be called on the user-interface thread.
TFrm_Base_Common& dialog() {
  for (TFrm_Base* screen : TFrm_Base::all()) {
    if (screen->inherits("goodsbook::TF2102F")) return static_cast<TFrm_Base_Common&>(*screen);
  }
  throw std::logic_error("the dialog is not there");
}

class HangTags : public LabelScreen {
 protected:
  void cell(int row, const QString& field, const QString& typed) {
    done({{u"cmd"_s, u"cell"_s},
          {u"element"_s, u"DBGridEh"_s},
          {u"row"_s, row},
          {u"field"_s, field},
          {u"text"_s, typed}});
  }
  QStringList counts() { return column(u"DBGridEh"_s, u"TMSL"_s); }
  QStringList receipts() { return column(u"DBGridEh1"_s, u"NOID"_s); }
  QStringList products() { return column(u"DBGridEh"_s, u"WL_ID"_s); }
  QStringList titles(const QString& grid) {
    QStringList shown;
    const QJsonArray columns = table(grid)["columns"_L1].toArray();
    for (const QJsonValue& column : columns) {
      if (column["visible"_L1].toBool())
        shown << column["field"_L1].toString().toUpper() + u' ' + column["title"_L1].toString();
    }
    return shown;
  }
  // The labels made so far: leaves the dialog.
  QStringList made(const QString& field = u"WL_ID"_s) {
    click(u"Button3"_s);
    return column(u"AdoQry_Main"_s, field);
  }
  void typeProduct(const QString& typed) {
    type(u"Edit1"_s, typed);
    focus(u"tn"_s);
  }
  QStringList shown() {
    QStringList texts;
    for (int i = 1; i <= 7; ++i) texts << text(u"L%1"_s.arg(i));
    return texts;
  }
  QString focused() {
    const QJsonArray all = done({{u"cmd"_s, u"elements"_s}})["elements"_L1].toArray();
    for (const QJsonValue& element : all) {
      if (element["focused"_L1].toBool()) return element["name"_L1].toString();
    }
    return {};
  }
};

TEST_F(HangTags, HasItsElements) {
  openDialog();
  EXPECT_EQ(done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray().last()["caption"_L1].toString(),
            u"从现款采购进货单 制作标签"_s);
  const auto titled = [this](const QString& name, const QString& title, int limit) {
    const QJsonObject element = get(name);
    EXPECT_EQ(element["title"_L1].toString().toStdString(), title.toStdString());
    EXPECT_EQ(element["maxlength"_L1].toInt(), limit);
  };
  titled(u"Edit1"_s, u"请录入商品编码 / 条码 :"_s, 30);
  titled(u"tn"_s, u"条码数量:"_s, 0);
  titled(u"L1"_s, u"编号："_s, 0);
  titled(u"L2"_s, u"条码："_s, 0);
  titled(u"L3"_s, u"名称："_s, 0);
  titled(u"L4"_s, u"规格："_s, 0);
  titled(u"L5"_s, u"产地："_s, 0);
  titled(u"L6"_s, u"售  价："_s, 0);
  titled(u"L7"_s, u"会员价："_s, 0);
  titled(u"NOID"_s, u"只列出最近5单进货单，更早单据请输入单号："_s, 80);
  titled(u"J"_s, u"条码数量默认填写:          个"_s, 0);
  EXPECT_EQ(shown(), QStringList(7, u"*"_s));
  const QList<std::pair<QString, QString>> captions{
      {u"Label1"_s, u"1.单个条码打印："_s},
      {u"Label2"_s, u"2.从进货单条码打印："_s},
      {u"CB1"_s, u"进货单仅显示系统自动生成条码的商品 (商品编码=条码)"_s},
      {u"btn_ref"_s, u"刷新 (F5)"_s},
      {u"BTN_TM"_s, u"生成条码  (Ins)"_s},
      {u"BTN_1"_s, u"生成单个条码   (Home)"_s},
      {u"Button1"_s, u"清空上次生成暂存的标签"_s},
      {u"Button3"_s, u"关闭      (Esc)"_s},
      {u"Label6"_s, u"操作提示  [ C ]：清空   [空格]：数量清0  [DELETE]：删除一行"_s}};
  for (const auto& [name, caption] : captions) {
    EXPECT_EQ(text(name).toStdString(), caption.toStdString());
    EXPECT_TRUE(get(name)["visible"_L1].toBool()) << name.toStdString();
  }
  for (const QString& hidden : {u"btn_ok"_s, u"btn_Cancel"_s})
    EXPECT_FALSE(get(hidden)["visible"_L1].toBool());
}

TEST_F(HangTags, GridsHaveTheirColumnsAndFieldsTheirCaptions) {
  openDialog();
  EXPECT_EQ(titles(u"DBGridEh1"_s).join(u',').toStdString(),
            "NOID 单号,KG_NAME 供应商简称,YW_NAME 业务员,CK_NAME 仓库,BDATE 开单日期,EDATE 最后更改");
  EXPECT_EQ(titles(u"DBGridEh"_s).join(u',').toStdString(),
            "WL_ID 商品编号,TM 条码,WL_NAME 商品名称,WL_GG 规格,DW_NAME 位,SJ 售价,VIPSJ 会员价,SL 数量,TMSL "
            "条码数量,NOTE 备注");
  EXPECT_TRUE(get(u"DBGridEh1"_s)["readonly"_L1].toBool());
  const QJsonArray columns = table(u"DBGridEh"_s)["columns"_L1].toArray();
  for (const QJsonValue& column : columns) {
    EXPECT_EQ(column["readonly"_L1].toBool(), column["field"_L1].toString().toUpper() != "TMSL"_L1);
  }
  onGui([] {
    const auto label = [](const char* set, const QString& field) {
      const auto* rows = dialog().findChild<RecordSet*>(QLatin1String(set));
      return rows->field(rows->fieldIndex(field)).label.toStdString();
    };
    EXPECT_EQ(label("AdoQry_Main", u"SEND_ID"_s), "进货代号");
    EXPECT_EQ(label("AdoQry_Main", u"SEND_NAME"_s), "进货方式");
    EXPECT_EQ(label("AdoQry_Main", u"USER_ID"_s), "用户号");
    EXPECT_EQ(label("AdoQry_Main", u"USER_NAME"_s), "开单");
    EXPECT_EQ(label("AdoQry_Tmp", u"NOID"_s), "订单编号");
    EXPECT_EQ(label("AdoQry_Tmp", u"MONEY"_s), "金额");
    EXPECT_EQ(label("AdoQry_Tmp", u"DJ"_s), "单价");
    EXPECT_EQ(label("AdoQry_Tmp", u"SL_RETURN"_s), "退货数量");
    EXPECT_EQ(label("AdoQry_Tmp", u"DW_J"_s), "数量|件");
    EXPECT_EQ(label("AdoQry_Tmp", u"DW_L"_s), "数量|零数");
    EXPECT_EQ(label("AdoQry_Tmp", u"DW_ZH"_s), "成本金额");
    EXPECT_EQ(label("AdoQry_Tmp", u"CD"_s), "产地");
  });
}

TEST_F(HangTags, TheFiveLatestReceiptsAreListedOnceWhenItIsMade) {
  open(102);
  const Lines sent = statements();
  ASSERT_GE(sent.size(), 2U);
  EXPECT_EQ(sent.front(), heads + u" order by d8202.noid desc "_s);
  for (std::size_t i = 1; i < sent.size(); ++i) EXPECT_EQ(sent[i], linesOf(u"JH0006"_s));
  EXPECT_EQ(receipts(), (QStringList{u"JH0006"_s, u"JH0005"_s, u"JH0004"_s, u"JH0003"_s, u"JH0002"_s}));
  EXPECT_EQ(products(), (QStringList{u"100"_s, u"200"_s, u"300"_s}));
  EXPECT_EQ(column(u"DBGridEh"_s, u"TM"_s), (QStringList{u"6901234567908"_s, u"200"_s, u"96385074"_s}));
  EXPECT_EQ(column(u"DBGridEh"_s, u"DW_NAME"_s), (QStringList{u"箱"_s, u"瓶"_s, u"瓶"_s}));
  press(u"Esc"_s);
  statements();
  act(u"Act_Locate"_s);
  EXPECT_EQ(statements(), Lines());
}

TEST_F(HangTags, AMoveInTheReceiptsLoadsTheLinesBeforeAndAfterIt) {
  openDialog();
  goTo(u"DBGridEh1"_s, 1);
  EXPECT_EQ(statements(), (Lines{linesOf(u"JH0006"_s), linesOf(u"JH0005"_s)}));
  EXPECT_EQ(products(), QStringList{u"300"_s});
  goTo(u"DBGridEh1"_s, 2);
  EXPECT_EQ(products(), QStringList());
}

TEST_F(HangTags, RefreshTakesTheNumberTyped) {
  openDialog();
  type(u"NOID"_s, u"JH0001"_s);
  press(u"F5"_s);
  Lines sent = statements();
  ASSERT_FALSE(sent.empty());
  EXPECT_EQ(sent.front(), heads + u" where d8202.noid='JH0001' order by d8202.noid desc "_s);
  EXPECT_EQ(sent.back(), linesOf(u"JH0001"_s));
  EXPECT_EQ(receipts(), QStringList{u"JH0001"_s});
  EXPECT_EQ(products(), QStringList{u"200"_s});
  type(u"NOID"_s, u"  "_s);
  click(u"btn_ref"_s);
  sent = statements();
  ASSERT_FALSE(sent.empty());
  EXPECT_EQ(sent.front(), heads + u" order by d8202.noid desc "_s);
  EXPECT_EQ(receipts().size(), 5);
  type(u"NOID"_s, u" JH0002 "_s);
  click(u"btn_ref"_s);
  EXPECT_EQ(statements().front(), heads + u" where d8202.noid=' JH0002 ' order by d8202.noid desc "_s);
}

TEST_F(HangTags, AnUnknownNumberLeavesBothGridsEmpty) {
  openDialog();
  type(u"NOID"_s, u"NIX"_s);
  click(u"btn_ref"_s);
  EXPECT_EQ(receipts(), QStringList());
  EXPECT_EQ(products(), QStringList());
  click(u"BTN_TM"_s);
  press(u"Ins"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(made(), QStringList());
}

TEST_F(HangTags, AQuoteInTheNumberIsTheDatabasesToRefuse) {
  openDialog();
  type(u"NOID"_s, u"a'b"_s);
  click(u"btn_ref"_s);
  EXPECT_EQ(messages().size(), 1U);
}

TEST_F(HangTags, ReceiptsAreListedWithoutRegardToRightsOnWarehouses) {
  onGui([] { setGlobal(u"G_CHKCK"_s, u"1"_s); });
  open(102);
  EXPECT_EQ(statements().front(), heads + u" order by d8202.noid desc "_s);
  EXPECT_EQ(receipts().size(), 5);
}

TEST_F(HangTags, EveryLineStartsWithTheDefaultCount) {
  openDialog();
  EXPECT_EQ(text(u"J"_s), u"1"_s);
  EXPECT_EQ(counts(), QStringList(3, u"1"_s));
  type(u"J"_s, u"3"_s);
  EXPECT_EQ(counts(), QStringList(3, u"1"_s));  // not before the lines are loaded again
  statements();
  press(u"F5"_s);
  EXPECT_EQ(statements().back(), linesOf(u"JH0006"_s, 3));
  EXPECT_EQ(counts(), QStringList(3, u"3"_s));
  type(u"J"_s, {});
  press(u"F5"_s);
  EXPECT_EQ(counts(), QStringList(3, u"1"_s));
  type(u"J"_s, u"0"_s);
  press(u"F5"_s);
  EXPECT_EQ(counts(), QStringList(3, u"0"_s));
  click(u"BTN_TM"_s);
  cell(1, u"tmsl"_s, u"2"_s);
  click(u"BTN_TM"_s);
  EXPECT_EQ(made(), QStringList(2, u"200"_s));
}

TEST_F(HangTags, ACountThatIsNoWholeNumberIsOne) {
  openDialog();
  EXPECT_EQ(type(u"J"_s, u"2.5"_s), u"2.5"_s);
  press(u"F5"_s);
  EXPECT_EQ(statements().back(), linesOf(u"JH0006"_s, 1));
  EXPECT_EQ(counts(), QStringList(3, u"1"_s));
  typeProduct(u"300"_s);
  EXPECT_EQ(type(u"tn"_s, u"2.5"_s), u"2.5"_s);
  click(u"BTN_1"_s);
  EXPECT_EQ(made(), QStringList{u"300"_s});
}

TEST_F(HangTags, ALongSpecificationComesWhole) {
  const QString longest(40, u'规');
  sql(u"update D1801 set WL_GG=N'%1' where WL_ID='300'"_s.arg(longest));
  openDialog();
  EXPECT_EQ(column(u"DBGridEh"_s, u"WL_GG"_s).last(), longest);
  typeProduct(u"300"_s);
  click(u"BTN_1"_s);
  EXPECT_EQ(made(u"WL_GG"_s), QStringList{longest});
}

TEST_F(HangTags, AllFieldsOfTheLinesAreDeclared) {
  openDialog();
  onGui([] {
    QStringList integers;
    for (const Field& field : dialog().AdoQry_Tmp.declaredFields()) {
      if (field.type == FieldType::Integer) integers << field.name.toUpper();
    }
    EXPECT_EQ(integers, (QStringList{u"ADW"_s, u"COLORVALUE"_s, u"ID"_s, u"TMSL"_s}));
    EXPECT_EQ(dialog().AdoQry_Tmp.declaredFields().size(), 22U);
  });
}

TEST_F(HangTags, TheCountsCanBeSeenAtTheSmallestSize) {
  openDialog();
  onGui([] {
    auto* grid = dialog().findChild<TDBGridEh*>(u"DBGridEh"_s);
    const auto* count = dialog().findChild<QLineEdit*>(u"J"_s);
    EXPECT_GE(count->contentsRect().width(), count->fontMetrics().horizontalAdvance(u"8888"_s) + 8);
    const auto* single = dialog().element<QPushButton>(u"BTN_1"_s);
    const auto* title = dialog().label(u"Label2"_s);
    for (const QSize size : {dialog().minimumSizeHint(), QSize(1200, 1000)}) {
      dialog().resize(size);
      dialog().layout()->activate();
      QCoreApplication::sendPostedEvents();
      const QRect cell = grid->visualRect(grid->model()->index(0, grid->columnOf(u"tmsl"_s)));
      EXPECT_LE(cell.right(), grid->viewport()->width()) << size.width();
      const int empty =
          title->mapTo(&dialog(), QPoint()).y() - single->mapTo(&dialog(), QPoint(0, single->height())).y();
      EXPECT_LE(empty, 16) << size.height();
    }
  });
}

TEST_F(HangTags, ATitleSortsTheLinesAndRowsHaveNumbers) {
  openDialog();
  const auto clickTitle = [this](const QString& field) {
    onGui([&] {
      const auto* grid = dialog().findChild<TDBGridEh*>(u"DBGridEh"_s);
      const QHeaderView* header = grid->horizontalHeader();
      const int x = header->sectionViewportPosition(grid->columnOf(field)) + 10;
      QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
    });
  };
  statements();
  clickTitle(u"SL"_s);
  EXPECT_EQ(products(), (QStringList{u"300"_s, u"200"_s, u"100"_s}));
  clickTitle(u"SL"_s);
  EXPECT_EQ(products(), (QStringList{u"100"_s, u"200"_s, u"300"_s}));
  EXPECT_EQ(statements(), Lines());  // locally
  onGui([] {
    for (const QString& name : {u"DBGridEh"_s, u"DBGridEh1"_s}) {
      const auto* grid = dialog().findChild<TDBGridEh*>(name);
      EXPECT_TRUE(grid->verticalHeader()->isVisible());
      EXPECT_EQ(grid->model()->headerData(1, Qt::Vertical).toString(), u"2"_s);
    }
  });
}

TEST_F(HangTags, LabelsOfAReceiptTakeTheUnitsOfItsLines) {
  openDialog();
  cell(0, u"tmsl"_s, u"2"_s);
  cell(2, u"tmsl"_s, u"0"_s);
  click(u"BTN_TM"_s);
  EXPECT_EQ(frontClass(), u"TF2102F"_s);
  click(u"Button3"_s);
  QStringList labels;
  const QJsonArray all = rows(u"DBGridEh"_s);
  for (const QJsonValue& row : all) {
    QStringList values;
    for (const char* field :
         {"TM", "WL_ID", "WL_NAME", "WL_GG", "DW_NAME", "SJ", "VIPSJ", "CD", "CLASS_NAME", "CK_NAME"})
      values << row[QLatin1String(field)].toString();
    labels << values.join(u'|');
  }
  const QString box = u"6901234567908|100|矿泉水|500ml|箱|60|55.5|上海||"_s;
  EXPECT_EQ(labels, (QStringList{box, box, u"200|200|自编商品|500ml|瓶|5|4.5|上海||"_s}));
}

TEST_F(HangTags, InsertCountsWhatIsStillBeingTyped) {
  openDialog();
  done({{u"cmd"_s, u"cellclick"_s}, {u"element"_s, u"DBGridEh"_s}, {u"row"_s, 1}, {u"field"_s, u"tmsl"_s}});
  press(u"4"_s);
  press(u"Ins"_s);
  EXPECT_EQ(counts(), (QStringList{u"1"_s, u"4"_s, u"1"_s}));
  EXPECT_EQ(made().size(), 6);
}

TEST_F(HangTags, SpaceClearsTheCountOfOneLineAndCOfAll) {
  openDialog();
  goTo(u"DBGridEh"_s, 1);
  focus(u"DBGridEh"_s);
  press(u"Space"_s);
  EXPECT_EQ(counts(), (QStringList{u"1"_s, u"0"_s, u"1"_s}));
  press(u"C"_s);
  EXPECT_EQ(counts(), QStringList(3, u"0"_s));
  press(u"F5"_s);
  focus(u"DBGridEh"_s);
  press(u"Shift+C"_s);
  EXPECT_EQ(counts(), QStringList(3, u"0"_s));
  press(u"F5"_s);
  done({{u"cmd"_s, u"cellclick"_s}, {u"element"_s, u"DBGridEh"_s}, {u"row"_s, 0}, {u"field"_s, u"tmsl"_s}});
  press(u"7"_s);
  press(u"Space"_s);  // while a count is being typed
  EXPECT_EQ(counts(), (QStringList{u"0"_s, u"1"_s, u"1"_s}));
  EXPECT_EQ(made(), QStringList());
}

TEST_F(HangTags, TheBoxShowsProductsWhoseCodeIsTheirBarcode) {
  openDialog();
  done({{u"cmd"_s, u"check"_s}, {u"element"_s, u"CB1"_s}, {u"on"_s, true}});
  EXPECT_EQ(products(), QStringList{u"200"_s});
  goTo(u"DBGridEh1"_s, 1);
  EXPECT_EQ(products(), QStringList());
  goTo(u"DBGridEh1"_s, 0);
  EXPECT_EQ(products(), QStringList{u"200"_s});
  click(u"BTN_TM"_s);
  done({{u"cmd"_s, u"check"_s}, {u"element"_s, u"CB1"_s}, {u"on"_s, false}});
  EXPECT_EQ(products(), (QStringList{u"100"_s, u"200"_s, u"300"_s}));
  EXPECT_EQ(made(), QStringList{u"200"_s});
}

TEST_F(HangTags, AProductIsFoundByCodeOrBarcode) {
  openDialog();
  typeProduct(u"6901234567892"_s);
  EXPECT_EQ(statements(), Lines{single(u"6901234567892"_s)});
  EXPECT_EQ(shown(), (QStringList{u"100"_s, u"6901234567892"_s, u"矿泉水"_s, u"500ml"_s, u"上海"_s, u"5"_s,
                                  u"4.5"_s}));
  typeProduct(u"200"_s);
  EXPECT_EQ(shown().front(), u"200"_s);
  typeProduct(u"6901234567908"_s);  // of a unit that is not the main one
  EXPECT_EQ(shown(), QStringList(7, QString()));
  statements();
  typeProduct(u"  "_s);
  EXPECT_EQ(statements(), Lines());
  EXPECT_EQ(shown(), QStringList(7, QString()));
  typeProduct(u" 100"_s);  // as it was typed, blanks included
  EXPECT_EQ(statements(), Lines{single(u" 100"_s)});
}

TEST_F(HangTags, SingleLabelsComeInTheCountTyped) {
  openDialog();
  EXPECT_EQ(text(u"tn"_s), u"1"_s);
  typeProduct(u"100"_s);
  click(u"BTN_1"_s);
  type(u"tn"_s, u"2"_s);
  press(u"Home"_s);
  press(u"Home"_s);  // nothing checks for repeats
  type(u"tn"_s, {});
  click(u"BTN_1"_s);
  type(u"tn"_s, u"0"_s);
  click(u"BTN_1"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(made(), QStringList(6, u"100"_s));
}

TEST_F(HangTags, HomeLooksUpWhatHasJustBeenTyped) {
  openDialog();
  type(u"Edit1"_s, u"300"_s);
  press(u"Home"_s);
  EXPECT_EQ(statements(), Lines{single(u"300"_s)});
  EXPECT_EQ(focused(), u"Edit1"_s);
  EXPECT_EQ(made(), QStringList{u"300"_s});
}

TEST_F(HangTags, AnUnknownProductIsTold) {
  openDialog();
  const Lines unknown{u"录入的商品编码 / 条码 不存在!请重新录入!"_s};
  press(u"Home"_s);
  EXPECT_EQ(messages(), unknown);
  typeProduct(u"nix"_s);
  click(u"BTN_1"_s);
  EXPECT_EQ(messages(), unknown);
  EXPECT_EQ(focused(), u"Edit1"_s);
  onGui([] { EXPECT_EQ(dialog().edit(u"Edit1"_s)->selectedText(), u"nix"_s); });
  type(u"Edit1"_s, {});
  click(u"BTN_1"_s);
  EXPECT_EQ(messages(), unknown);
  EXPECT_EQ(made(), QStringList());
}

TEST_F(HangTags, ACodeThatIsAnothersBarcodeTakesTheFirstRow) {
  product(u"400"_s, u"别的"_s, u"100"_s);
  openDialog();
  typeProduct(u"100"_s);
  const auto answer = sql(single(u"100"_s));
  ASSERT_EQ(answer.size(), 2U);
  EXPECT_EQ(shown().front(), answer.front().front());
  click(u"BTN_1"_s);
  EXPECT_EQ(made(), QStringList{answer.front().front()});
}

TEST_F(HangTags, LinesAreRemovedFromTheGridAlone) {
  openDialog();
  goTo(u"DBGridEh"_s, 1);
  focus(u"DBGridEh"_s);
  press(u"Del"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(products(), (QStringList{u"100"_s, u"300"_s}));
  select(u"DBGridEh"_s, {0, 1});
  answer({u"n"_s, u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(products().size(), 2);
  act(u"Act_Delete"_s);
  EXPECT_EQ(messages(), Lines(2, u"是否删除所选记录"_s));
  EXPECT_EQ(products(), QStringList());
  act(u"Act_Delete"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select count(*) from D8202A where noid='JH0006'"_s).front().front(), u"3"_s);
  press(u"F5"_s);
  EXPECT_EQ(products().size(), 3);
}

TEST_F(HangTags, TheLabelsOfLastTimeAreClearedWithoutAQuestion) {
  openDialog();
  click(u"BTN_TM"_s);
  click(u"Button1"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(made(), QStringList());
}

TEST_F(HangTags, ADoubleClickBesideTheElementsMaximises) {
  openDialog();
  const auto maximised = [this] {
    bool is = false;
    onGui([&is] { is = dialog().isMaximized(); });
    return is;
  };
  const auto twice = [this](const QString& element) {
    done({{u"cmd"_s, u"click"_s}, {u"element"_s, element}, {u"double"_s, true}});
  };
  EXPECT_FALSE(maximised());
  twice(u"Label6"_s);
  EXPECT_TRUE(maximised());
  twice(u"Label6"_s);
  EXPECT_FALSE(maximised());
  twice(u"Edit1"_s);
  EXPECT_FALSE(maximised());
}

TEST_F(HangTags, ZerosAreNotPainted) {
  line(u"JH0004"_s, 1, u"200"_s, 1, 0);
  openDialog();
  goTo(u"DBGridEh1"_s, 2);
  type(u"J"_s, u"0"_s);
  press(u"F5"_s);
  goTo(u"DBGridEh1"_s, 2);
  onGui([] {
    auto* grid = dialog().findChild<TDBGridEh*>(u"DBGridEh"_s);
    grid->setSelectedField(u"tmsl"_s);
    const QImage seen = grid->viewport()->grab().toImage();
    const auto colours = [&](const QString& field) {
      QSet<QRgb> found;
      const QRect cell =
          grid->visualRect(grid->model()->index(0, grid->columnOf(field))).adjusted(2, 2, -3, -3);
      for (int y = cell.top(); y <= cell.bottom(); ++y) {
        for (int x = cell.left(); x <= cell.right(); ++x) found.insert(seen.pixel(x, y));
      }
      return found;
    };
    EXPECT_EQ(colours(u"tmsl"_s), QSet<QRgb>{qRgb(201, 208, 226)});
    EXPECT_EQ(colours(u"SL"_s).size(), 1);
    EXPECT_GT(colours(u"SJ"_s).size(), 1);
  });
}

}  // namespace
}  // namespace goodsbook
