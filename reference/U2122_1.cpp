#include "reference/U2122_1.h"

#include <QAbstractButton>

#include "host/U_function.h"
#include "host/U_linkedit.h"
#include "host/Zpy.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/forms/form_builder.h"
#include "reference/composed.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
const QString insertStatement =
    u"insert into D1010 (jy_id,jy_name,PYM,CLASSID, YH_NUM, YH_NAME, KM_ID,QCMONEY)ValueS('{Edit1}','{Edit2}','{pym}','{type}','{Edit3}','{Edit4}','{KM_ID}','{QCMONEY}')"_s;
const QString updateStatement =
    u"update D1010 set jy_name='{Edit2}',PYM='{pym}',CLASSID='{type}',YH_NUM='{Edit3}',YH_NAME='{Edit4}',km_id='{KM_ID}',QCMONEY='{QCMONEY}' where jy_id='{row}'"_s;
}  // namespace

TF2122_1::TF2122_1(QWidget* owner) : TFrm_Base_Detail(owner) {
  setWindowTitle(tr("现金银行"));
  FormBuilder(*this).fields({
      {.name = u"Edit1"_s,
       .label = tr("帐户编号"),
       .limit = 2,
       .exit = [this] { Edit1Exit(); },
       .code = true,
       .column = u"jy_id"_s},
      {.name = u"Edit2"_s, .label = tr("帐户名称"), .limit = 50, .required = true, .column = u"jy_name"_s},
      {.name = u"RB1"_s,
       .label = tr("银行存款"),
       .kind = FieldKind::Option,
       .stored = u"CLASSID"_s,
       .rowLabel = tr("类    型")},
      {.name = u"RB2"_s, .label = tr("现金"), .kind = FieldKind::Option, .sameRow = true},
      {.name = u"Edit3"_s, .label = tr("银行帐号"), .limit = 25, .column = u"yh_num"_s},
      {.name = u"Edit4"_s, .label = tr("银行全称"), .limit = 50, .column = u"yh_name"_s},
      {.name = u"KM_ID"_s,
       .label = tr("会计科目"),
       .kind = FieldKind::Lookup,
       .limit = 18,
       .exit =
           [this] { KM_IDExit(); },  // on leaving it only: a type changed afterwards is not held against it
       .column = u"km_id"_s},
      {.name = u"QCMONEY"_s,
       .label = tr("期初余额"),
       .kind = FieldKind::Number,
       .check = FieldCheck::FloatCanZero,
       .column = u"QCMONEY"_s},
  });
  elementNamed(u"RB2"_s)->setToolTip(tr("类    型"));
  // A click switches the type and leaves the focus where it is: an account of the other type's branch, held
  // fast by its check, is put right by it.
  // Tab comes to the ticked one only: Space would switch the other.
  const auto giveFocusToTicked = [this] {
    elementNamed(u"RB1"_s)->setFocusPolicy(isBank() ? Qt::TabFocus : Qt::NoFocus);
    elementNamed(u"RB2"_s)->setFocusPolicy(isBank() ? Qt::NoFocus : Qt::TabFocus);
  };
  connect(element<QAbstractButton>(u"RB1"_s), &QAbstractButton::toggled, this, giveFocusToTicked);
  giveFocusToTicked();
  body()->setMinimumWidth(360);
  TExtEdit* ledger = lookupEdit(u"KM_ID"_s);
  connect(ledger, &TExtEdit::ButtonClick, this, [this] { guarded(this, [this] { KM_IDButtonClick(); }); });
  FormCreate();
}

bool TF2122_1::isBank() const {
  return isChecked(u"RB1"_s);
}

QString TF2122_1::accountHead() const {
  return isBank() ? u"1002"_s : u"1001"_s;
}

void TF2122_1::RefreshData() {
  setLoading(true);
  firstFocus = isAdding() ? u"Edit1"_s : u"Edit2"_s;
  lockedFields = mode() == "Edit"_L1 ? u"EDIT1"_s : QString();
  loadFields();
  if (mode() == "Add"_L1) setText(u"QCMONEY"_s, u"0"_s);
  const bool bank = mode() == "Add"_L1 || listRows().integer(u"CLASSID"_s) != 0;
  setChecked(bank ? u"RB1"_s : u"RB2"_s, true);
  TFrm_Base_Detail::RefreshData();
}

void TF2122_1::Edit1Exit() {
  reference::checkNewCode(*this, AdoQry_Tmp, u"Edit1"_s, tr("帐户编号"),
                          u"select jy_id from D1010 where jy_id='"_s, tr("帐户编号已登记!"));
}

void TF2122_1::KM_IDButtonClick() {
  CommonHint(edit(u"KM_ID"_s), ledgerAccounts_, u"km_name"_s, u" km_id like '"_s + accountHead() + u"%'"_s,
             u"d6801"_s, tr("科目"), u"km_id"_s, tr("科目编号"));
}

void TF2122_1::KM_IDExit() {
  opensql(AdoQry_Tmp, moduleCode_,
          u"select km_id from d6801 where (km_id='"_s + text(u"KM_ID"_s) + u"') and (km_id like '"_s +
              accountHead() + u"%')"_s);
  if (!AdoQry_Tmp.isEmpty()) return;
  DISPINFO(tr("该类的科目不存在!"), 5);
  throw EAbort();
}

void TF2122_1::SaveData() {
  const bool bank = isBank();
  if (!bank) {
    setText(u"Edit3"_s, {});
    setText(u"Edit4"_s, {});
  }
  reference::Values values{{u"pym"_s, Zpy::GetPY(text(u"Edit2"_s).trimmed())},
                           {u"type"_s, bank ? u"1"_s : u"0"_s}};
  if (!isAdding()) values[u"row"_s] = listRows().text(u"jy_id"_s);
  ExecSql(moduleCode_, text(u"Edit1"_s), mode(),
          reference::composed(isAdding() ? insertStatement : updateStatement, *this, values), 0, false, true,
          false, true);
}

void TF2122_1::showSaved() {
  const bool bank = isBank();
  listRows().setValue(u"classid"_s, bank ? 1 : 0);
  listRows().setValue(u"clsname"_s, bank ? tr("银行存款") : tr("现金"));
  TFrm_Base_Detail::showSaved();
}

}  // namespace goodsbook
