#include "labels/U2102f.h"

#include <QKeyEvent>
#include <QScopeGuard>
#include <QScopedValueRollback>

#include "host/U_function.h"
#include "host/data/U_dataop.h"
#include "labels/label_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QPointer<TF2102F> F2102F;

namespace {

// The five latest receipts; receipts of warehouses without a right are listed, too.
const QString receipts =
    u" SELECT TOP 5 d8202.noid,d1103.kh_gys_id,d1103.kg_name,d1007.ck_id, d1007.ck_name,d8202.bdate,d8202.edate,d1011.send_id, d1011.send_name, sys_user.user_id,sys_user.user_name, D1101.YW_ID, D1101.YW_NAME, D1010.JY_ID, D1010.JY_NAME,d8202.note,d8202.t,sk,sdate FROM d8202 INNER JOIN d1103 ON d8202.kh_gys_id = d1103.kh_gys_id INNER JOIN sys_user ON d8202.user_id = sys_user.user_id INNER JOIN d1007 ON d8202.ck_id = d1007.ck_id INNER JOIN d1011 ON d8202.send_id = d1011.send_id INNER JOIN   D1101 ON D8202.YW_ID = D1101.YW_ID INNER JOIN   D1010 ON D8202.JY_ID = D1010.JY_ID"_s;
const QString latestFirst = u" order by d8202.noid desc "_s;

int wholeNumber(const QString& text, int otherwise) {
  bool isNumber = false;
  const int number = text.trimmed().toInt(&isNumber);
  return isNumber ? number : otherwise;
}

}  // namespace

TF2102F::TF2102F(QWidget* owner) : TFrm_Sys_Filter(owner) {
  setWindowTitle(tr("从现款采购进货单 制作标签"));
  resize(1000, 680);
  AdoQry_Main.setObjectName(u"AdoQry_Main"_s);
  AdoQry_Main.setParent(this);
  buildSingle();
  buildReceipts();
  btn_ok->hide();
  btn_ok->setEnabled(false);
  btn_Cancel->hide();
  FormCreate();
  const auto loadLines = [this] {
    if (!opening_) guarded(this, [this] { openLines(); });
  };
  connect(&AdoQry_Main, &RecordSet::beforeScroll, this, loadLines);
  connect(&AdoQry_Main, &RecordSet::afterScroll, this, loadLines);
  openHeads({});
}

void TF2102F::openHeads(const QString& condition) {
  {
    const QScopedValueRollback quiet(opening_, true);
    opensql(AdoQry_Main, moduleCode_, receipts + condition + latestFirst);
  }
  openLines();
}

void TF2102F::btn_refClick() {
  const QString number = text(u"NOID"_s);
  openHeads(number.trimmed().isEmpty() ? QString() : u" where d8202.noid='"_s + number + u'\'');
}

void TF2102F::openLines() {
  const QString receipt =
      AdoQry_Main.isOpen() && !AdoQry_Main.isEmpty() ? AdoQry_Main.text(u"noid"_s) : QString();
  const QString count = QString::number(wholeNumber(text(u"J"_s), 1));
  opensql(
      AdoQry_Tmp, moduleCode_,
      u" SELECT d8202a.noid,d8202a.id,d1801.wl_id,d1801.wl_name,d1801.wl_gg, d1003.dw_name,d8202a.sl,"_s +
          count +
          u" as tmsl,d8202a.dj,d8202a.money,D8202A.sl_return, D8202A.DW_J, D8202A.DW_L,D8202A.DW_ZH, D1801.CD,  D1801DW.SJ, D1801DW.VIPSJ, d8202a.note,d1003.dw_id, d8202a.d8201aid,d8202a.adw,D1801DW.TM,d8202a.jdate FROM d1801dw INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id INNER JOIN d1801 INNER JOIN d8202a ON d1801.wl_id = d8202a.wl_id ON d1801dw.adw = d8202a.adw  WHERE (d8202a.NOID  = '"_s +
          receipt + u"')"_s);
}

void TF2102F::CB1Click() {
  const bool on = isChecked(u"CB1"_s);
  AdoQry_Tmp.setFilter(on ? u"wl_id=tm"_s : QString());
  AdoQry_Tmp.setFiltered(on);
}

void TF2102F::setCountOfAll(int count) {
  AdoQry_Tmp.disableControls();
  const auto shown = qScopeGuard([this] { AdoQry_Tmp.enableControls(); });
  for (AdoQry_Tmp.first(); !AdoQry_Tmp.eof(); AdoQry_Tmp.next()) AdoQry_Tmp.setValue(u"tmsl"_s, count);
  if (AdoQry_Tmp.state() == RecordSet::State::Edit) AdoQry_Tmp.post();
}

void TF2102F::DBGridEhKeyPress(QKeyEvent* event) {
  const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::ShiftModifier;  // "C" as well as "c"
  if (AdoQry_Tmp.isEmpty() || modifiers != Qt::NoModifier) return;
  if (event->key() == Qt::Key_Space) {
    AdoQry_Tmp.setValue(u"tmsl"_s, 0);
    AdoQry_Tmp.post();
  } else if (event->key() == Qt::Key_C) {
    setCountOfAll(0);
  } else {
    return;
  }
  event->accept();
}

void TF2102F::BTN_TMClick() {
  for (AdoQry_Tmp.first(); !AdoQry_Tmp.eof(); AdoQry_Tmp.next()) {
    labelrows::append(*labels_, AdoQry_Tmp, static_cast<int>(AdoQry_Tmp.integer(u"tmsl"_s)));
  }
}

void TF2102F::Edit1Exit() {
  const QStringList shown{u"wl_id"_s, u"tm"_s, u"wl_name"_s, u"wl_gg"_s, u"cd"_s, u"sj"_s, u"vipsj"_s};
  const auto labelName = [](qsizetype index) { return u'L' + QString::number(index + 1); };
  for (qsizetype i = 0; i < shown.size(); ++i) setText(labelName(i), {});
  const QString typed = text(u"Edit1"_s);
  if (typed.trimmed().isEmpty()) return;
  opensql(
      single_, moduleCode_,
      u"SELECT D1801.WL_ID, D1801.WL_NAME, D1801.WL_GG, D1004.CLASS_ID, D1004.CLASS_NAME, D1801.DWCOUNT, D1003.DW_ID, D1003.DW_NAME, D1801.CD, D1801.WL_YS, D1801.CHECK_KC, D1801.DJ, D1801DW.SJ, D1801DW.VIPSJ, D1801DW.PFJ, D1801DW.PFJ1, D1801DW.PFJ2, D1801DW.PFJ3, D1801DW.PFJ4, D1801DW.CGJ, D1801DW.TM, D1801.PYM, SYS_USER.USER_ID, SYS_USER.USER_NAME, D1801.BDATE, D1801.EDATE, D1801.NOTE, D1801.DW_ZH, D1801.DW_J_NAME, D1801.TMC FROM D1801 INNER JOIN D1004 ON D1801.CLASS_ID = D1004.CLASS_ID INNER JOIN SYS_USER ON D1801.USER_ID = SYS_USER.USER_ID INNER JOIN D1801DW ON D1801.WL_ID = D1801DW.WL_ID INNER JOIN D1003 ON D1801DW.DW_ID = D1003.DW_ID AND D1801DW.T = 1 WHERE (D1801DW.TM='"_s +
          typed + u"') OR (D1801.WL_ID='"_s + typed + u"')"_s);
  if (single_.isEmpty()) return;
  for (qsizetype i = 0; i < shown.size(); ++i) setText(labelName(i), single_.text(shown[i]));
}

void TF2102F::BTN_1Click() {
  if (text(u"L1"_s).isEmpty() || !single_.isOpen()) {
    DISPINFO(tr("录入的商品编码 / 条码 不存在!请重新录入!"), 5);
    focusFirst(edit(u"Edit1"_s));
    return;
  }
  single_.first();
  labelrows::append(*labels_, single_, wholeNumber(text(u"tn"_s), 1));
}

void TF2102F::Act_DeleteExecute() {
  labelrows::removePicked(*DBGridEh, AdoQry_Tmp);
}

void TF2102F::Button1Click() {
  labelrows::clear(*labels_);
}

// What is being typed counts for a key as it does for a click, which leaves the field first.
void TF2102F::finishTyping() {
  const QWidget* focus = focusWidget();
  if (focus == edit(u"Edit1"_s)) Edit1Exit();
  if (focus != DBGridEh && DBGridEh->isAncestorOf(focus)) DBGridEh->setFocus();
}

void TF2102F::FormKeyDown(QKeyEvent* event) {
  const bool inCell = focusWidget() != DBGridEh && DBGridEh->isAncestorOf(focusWidget());
  if (inCell && (event->key() == Qt::Key_Space || event->key() == Qt::Key_C)) {
    finishTyping();
    DBGridEhKeyPress(event);
    return;
  }
  const auto runs = [event](int key) {
    return event->key() == key && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  };
  if (runs(Qt::Key_Home)) {
    event->accept();
    finishTyping();
    BTN_1Click();
  } else if (runs(Qt::Key_Insert)) {
    event->accept();
    finishTyping();
    BTN_TMClick();
  } else if (runs(Qt::Key_F5)) {
    event->accept();
    btn_refClick();
  } else {
    TFrm_Sys_Filter::FormKeyDown(event);
  }
}

QString TF2102F::helpText() const {
  return windowTitle() + u"\n\n"_s +
         tr("Home  生成单个条码\nIns  按进货单生成条码\nF5  刷新进货单\n空格  当前行数量清0\nC  全部数量清0\nDel  "
            "删除一行\n双击空白处  最大化 / 还原\nEsc  关闭");
}

void TF2102F::mouseDoubleClickEvent(QMouseEvent*) {
  Label6DblClick();
}

void TF2102F::Label6DblClick() {
  setWindowState(windowState() ^ Qt::WindowMaximized);
}

}  // namespace goodsbook
