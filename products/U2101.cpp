#include "products/U2101.h"

#include <QAction>
#include <QMenu>
#include <QToolBar>

#include "host/U_function.h"
#include "host/data/U_dataop.h"
#include "products/U2101_1.h"
#include "products/U2101_4.h"
#include "products/U2101_imp.h"
#include "products/U2101a_1.h"
#include "products/U2101a_3.h"
#include "products/U2101f.h"
#include "products/merge.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QPointer<TF2101> F2101;

namespace {

constexpr int mostPictures = 300;

std::vector<GridColumn> gridColumns() {
  const auto tr = [](const char* text) { return TF2101::tr(text); };
  const QString time = u"yyyy-MM-dd HH:mm"_s;
  return {
      {.field = u"WL_YS"_s, .title = tr("有效"), .width = 37, .checkBox = true},
      {.field = u"WL_ID"_s, .title = tr("商品编号"), .width = 83, .alignment = Qt::AlignCenter},
      {.field = u"TMC"_s, .title = tr("重码"), .width = 30, .alignment = Qt::AlignCenter},
      {.field = u"TM"_s, .title = tr("条码"), .width = 106, .alignment = Qt::AlignCenter},
      {.field = u"WL_NAME"_s, .title = tr("商品名称"), .width = 204},
      {.field = u"WL_GG"_s, .title = tr("规格"), .width = 80, .alignment = Qt::AlignCenter},
      {.field = u"CLASS_ID"_s, .title = tr("分类代号"), .width = 60, .visible = false},
      {.field = u"CLASS_NAME"_s, .title = tr("商品分类"), .width = 72, .alignment = Qt::AlignCenter},
      {.field = u"DW_ID"_s, .title = tr("单位代号"), .width = 60, .visible = false},
      {.field = u"DW_NAME"_s, .title = tr("单位"), .width = 44, .alignment = Qt::AlignCenter},
      {.field = u"DWCOUNT"_s, .title = tr("单位数"), .width = 58},
      {.field = u"SJ"_s, .title = tr("零售价"), .width = 70},
      {.field = u"VIPSJ"_s, .title = tr("会员价"), .width = 70},
      {.field = u"PFJ"_s, .title = tr("批发价"), .width = 70},
      {.field = u"PFJ1"_s, .title = tr("参考售价1"), .width = 70},
      {.field = u"PFJ2"_s, .title = tr("参考售价2"), .width = 70},
      {.field = u"PFJ3"_s, .title = tr("参考售价3"), .width = 70},
      {.field = u"PFJ4"_s, .title = tr("参考售价4"), .width = 70},
      {.field = u"CGJ"_s, .title = tr("采购价"), .width = 70},
      {.field = u"DJ"_s, .title = tr("加权价"), .width = 70},
      {.field = u"CHECK_KC"_s, .title = tr("负库存"), .width = 50, .checkBox = true},
      {.field = u"CD"_s, .title = tr("产地"), .width = 90},
      {.field = u"BDATE"_s, .title = tr("登录时间"), .width = 118, .displayFormat = time},
      {.field = u"EDATE"_s, .title = tr("最后更改"), .width = 118, .displayFormat = time},
      {.field = u"USER_ID"_s, .title = tr("用户代号"), .width = 60, .visible = false},
      {.field = u"USER_NAME"_s, .title = tr("登录用户"), .width = 80},
      {.field = u"NOTE"_s, .title = tr("备注"), .width = 140},
      {.field = u"PYM"_s, .title = tr("拼音码"), .width = 80, .visible = false},
  };
}

// What lists and counts products: joins to category, user, main unit row and unit. A product without one of
// them is not listed.
const QString picturesOfListed =
    u" SELECT d1801.wl_id,d1801.wl_name,D1801.PICT FROM d1801 INNER JOIN d1004 ON d1801.class_id = d1004.class_id INNER JOIN sys_user ON d1801.user_id = sys_user.user_id INNER JOIN d1801dw ON d1801.wl_id = d1801dw.wl_id INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id INNER JOIN (select TM,COUNT(TM) AS TMC FROM (SELECT TM from d1801dw union all SELECT TM from D1801DWTM) TMP GROUP BY TM) TM ON D1801DW.TM=TM.TM AND (D1801DW.T = 1)  "_s;

}  // namespace

TF2101::TF2101(QWidget* owner) : TFrm_Base_Outer(owner) {
  setWindowTitle(tr("商品基本资料 "));
  DBGridEh->setRowNumbers(true);
  setColumns(gridColumns(), {{.name = u"dw_zh"_s, .type = FieldType::Float, .label = tr("转换率")},
                             {.name = u"DW_J_NAME"_s, .size = 10}});
  FormCreate();
  QAction* pictures = action(u"Act_Other"_s);
  pictures->setText(tr("图片"));
  setActionHint(pictures, tr("图片浏览"));
  QAction* imports = addScreenAction({.name = u"Act_imp"_s,
                                      .caption = tr("导入"),
                                      .hint = tr("新品批量导入"),
                                      .shortcut = QKeySequence(Qt::CTRL | Qt::Key_I),
                                      .icon = u"document-import"_s,
                                      .execute = [this] { Act_impExecute(); },
                                      .before = u"Act_Filter"_s,
                                      .left = 215});
  ToolBar->widgetForAction(imports)->setObjectName(u"TlBtn_IMP"_s);
  setActionShown(u"Act_imp"_s, false);
  QAction* merges = addScreenAction({.name = u"Act_hb"_s,
                                     .caption = tr("合并"),
                                     .hint = tr("将重复录入的商品合并成一个商品"),
                                     .shortcut = QKeySequence(Qt::CTRL | Qt::Key_M),
                                     .icon = u"merge"_s,
                                     .execute = [this] { Act_hbExecute(); },
                                     .onToolBar = false,
                                     .inMenu = false});
  QAction* item = PopupMenu->addAction(merges->icon(), merges->text());
  item->setObjectName(u"N1"_s);
  item->setToolTip(merges->toolTip());
  connect(item, &QAction::triggered, merges, &QAction::trigger);
}

void TF2101::InitForm(const Trecord& record) {
  TFrm_Base_Outer::InitForm(record);
  setActionShown(u"Act_Other"_s, true);
  setActionShown(u"Act_imp"_s, record.right(Trecord::importRight));
  showsCosts_ = record.right(Trecord::costRight);
  SetBodyParam(bodyparam::make({{bodyparam::keyField, u"wl_id"_s},
                                {bodyparam::deleteStatement, u"delete from D1801 Where WL_ID=%S"_s},
                                {bodyparam::moneyColumns, u"pfj1,pfj2,pfj3,pfj4,dj,sj,vipsj,pfj,cgj"_s},
                                {bodyparam::priceColumns, u"pfj1,pfj2,pfj3,pfj4,sj,vipsj"_s},
                                {bodyparam::costRight, boltos(showsCosts_)}}));
  if (GPARAM23 == "0"_L1) {
    setEditor(new TF2101A_1(this));
  } else if (GPARAM23 == "1"_L1) {
    setEditor(new TF2101_1(this));
  } else {
    setEditor(new TF2101A_3(this));
  }
  auto* filter = new TF2101F(this);
  filter->InitForm();
  setFilterDialog(filter);
}

void TF2101::GetData() {
  setListStatement(
      u" SELECT d1801.wl_id,d1801.wl_name,d1801.wl_gg,d1004.class_id, d1004.class_name,D1801.dwcount,d1003.dw_id,d1003.dw_name,d1801.cd, d1801.wl_ys,d1801.CHECK_KC,"_s +
      (showsCosts_ ? u"d1801.dj,d1801dw.cgj,"_s : u"0.0 as dj,d1801dw.cgj,"_s) +
      u"d1801dw.sj,d1801dw.vipsj,d1801dw.pfj,d1801dw.pfj1,d1801dw.pfj2,d1801dw.pfj3,d1801dw.pfj4,d1801dw.tm,d1801.pym, sys_user.user_id,sys_user.user_name,d1801.bdate,d1801.edate,d1801.note,d1801.dw_zh,d1801.DW_J_NAME,d1801.TMC FROM d1801 INNER JOIN d1004 ON d1801.class_id = d1004.class_id INNER JOIN sys_user ON d1801.user_id = sys_user.user_id INNER JOIN d1801dw ON d1801.wl_id = d1801dw.wl_id INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id  AND (D1801DW.T = 1)  "_s);
  TFrm_Base_Outer::GetData();
}

void TF2101::Act_OtherExecute() {
  TFrm_Base_Outer::Act_OtherExecute();
  AdoQry_Main.waitForAll();
  if (AdoQry_Main.rowCount() > mostPictures) {
    DISPINFO(tr("记录大于300会造成大量数据,请更改检索条件!"), 5);
    return;
  }
  tF2101_4 viewer;
  viewer.InitForm(picturesOfListed + (conditionText().isEmpty() ? QString() : u" Where "_s + conditionText()),
                  0, 0);
  viewer.exec();
}

void TF2101::Act_impExecute() {
  const QPointer<TF2101_IMP> import = new TF2101_IMP(this);
  import->InitForm(&AdoQry_Main);
  import->exec();
  delete import.data();
}

void TF2101::Act_hbExecute() {
  if (!hasRight(Trecord::addRight)) {
    DISPINFO(tr("您必须有增加的权限，才可以使用合并商品功能!"), 5);
    return;
  }
  const std::vector<RecordSet::Bookmark> picked = DBGridEh->selectedRows();
  if (picked.empty()) {
    DISPINFO(tr("合并功能必须选定两行以上!"), 5);
    return;
  }
  const QString question = tr(
      "特别提示:\r\n合并功能是将重复录入的商品合并成一个商品，合并后仅保留选择的第一行，其他行删除，\r\n合并后所删除的数据不可找回,如不清楚请在工程师指导下进行，是否继续进行合并选择的商品?");
  if (DISPINFO(question, 2) != 'y') return;

  QStringList codes;
  const int code = AdoQry_Main.fieldIndex(u"WL_ID"_s);
  for (const RecordSet::Bookmark row : picked) codes << AdoQry_Main.textAt(AdoQry_Main.rowOf(row), code);
  AdoQry_Main.gotoBookmark(picked.front());
  const QString kept = codes.takeFirst();
  opensql(AdoQry_Tmp, moduleCode_, u"select adw from D1801dw where wl_id='"_s + kept + u'\'');
  const QString keptUnit = AdoQry_Tmp.isEmpty() ? QString() : AdoQry_Tmp.text(u"adw"_s);
  QString batch;
  for (const QString& folded : codes) batch += merge::statements(kept, keptUnit, folded);
  const QString result = ExecSql(moduleCode_, kept, u"D"_s, batch, 65535, false, true, false, true);
  DISPINFO(result == "Y"_L1
               ? tr("合并完成，请刷新查看，再到[进销存]->[月底结帐]->库存数量平衡检查，修正最终库存数!")
               : result,
           5);
}

}  // namespace goodsbook
