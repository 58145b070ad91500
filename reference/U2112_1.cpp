#include "reference/U2112_1.h"

#include <QCheckBox>
#include <QLabel>

#include "host/U_function.h"
#include "host/Zpy.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/forms/form_builder.h"
#include "host/lookup/pickers.h"
#include "host/session.h"
#include "reference/composed.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
const QString insertStatement =
    u"INSERT INTO D1101(YW_ID, YW_NAME,PYM,BM_ID, TEL, FAX, EMAIL, ADDR, TC, BDATE, EDATE, T, NOTE) ValueS('{Edit1}','{Edit2}','{pym}','{BM_ID}','{Edit3}','{Edit4}','{Edit6}','{Edit5}',{tc},'{BDATE}','{EDATE}',{chk1},'{Edit7}')"_s;
const QString updateStatement =
    u"update d1101 set YW_NAME='{Edit2}',PYM='{pym}',TEL='{Edit3}',BM_ID='{BM_ID}',FAX='{Edit4}',EMAIL='{Edit6}',ADDR='{Edit5}',NOTE='{Edit7}',tc='{tc}',bdate='{BDATE}',edate='{EDATE}',t={chk1} where yw_id='{Edit1}'"_s;
}  // namespace

TF2112_1::TF2112_1(QWidget* owner) : TFrm_Base_Detail(owner) {
  setWindowTitle(tr("公司职员"));
  FormBuilder(*this).fields({
      {.name = u"Edit1"_s,
       .label = tr("代    号"),
       .limit = 4,
       .upper = true,
       .exit = [this] { Edit1Exit(); },
       .code = true,
       .column = u"yw_id"_s},
      {.name = u"Edit2"_s, .label = tr("名    称"), .limit = 20, .required = true, .column = u"yw_name"_s},
      {.name = u"BM_ID"_s,
       .label = tr("部    门"),
       .kind = FieldKind::Lookup,
       .limit = 4,
       .required = true,
       .check = FieldCheck::Id,
       .column = u"BM_ID"_s,
       .nameLabel = u"bm_NAME"_s,
       .nameColumn = u"BM_NAME"_s},
      {.name = u"Edit3"_s, .label = tr("电 话 一"), .limit = 40, .column = u"tel"_s},
      {.name = u"Edit4"_s, .label = tr("传    真"), .limit = 40, .column = u"fax"_s},
      {.name = u"Edit5"_s, .label = tr("地    址"), .limit = 60, .column = u"addr"_s},
      {.name = u"Edit6"_s, .label = u"EMAIL"_s, .limit = 40, .column = u"email"_s},
      {.name = u"tc"_s,
       .label = tr("提 成 比"),
       .kind = FieldKind::Number,
       .exit = [this] { tcExit(); },
       .column = u"tc"_s,
       .places = 6,
       .maximum = 1,
       .width = 80,
       .hint = tr("格式：0.01~1.00 ")},
      {.name = u"BDATE"_s, .label = tr("合同日期"), .kind = FieldKind::Date, .column = u"bdate"_s},
      {.name = u"EDATE"_s,
       .label = tr("结束日期"),
       .kind = FieldKind::Date,
       .column = u"edate"_s,
       .sameRow = true},
      {.name = u"chk1"_s, .label = tr("离职否"), .kind = FieldKind::Check, .column = u"t"_s},
      {.name = u"Edit7"_s, .label = tr("备    注"), .limit = 100, .column = u"note"_s},
  });
  (new TFrm_sys_LINK_BM(this))->init(lookupEdit(u"BM_ID"_s));
  FormCreate();
}

void TF2112_1::RefreshData() {
  setLoading(true);
  const bool adds = isAdding();
  firstFocus = adds ? u"Edit1"_s : u"Edit2"_s;
  lockedFields = mode() == "Edit"_L1 ? u"EDIT1"_s : QString();
  loadFields();
  if (mode() == "Add"_L1) {
    const QDateTime now = Session::current().desktop().now();
    dateEdit(u"BDATE"_s)->setDateTime(now, true);
    dateEdit(u"EDATE"_s)->setDateTime(now, true);
    setText(u"tc"_s, u"0"_s);
  } else {
    // Both dates start from the contract's: an edit that leaves the end alone makes it end on its first day.
    const QDateTime contract = listRows().value(u"BDATE"_s).toDateTime();
    dateEdit(u"BDATE"_s)->setDateTime(contract, false);
    dateEdit(u"EDATE"_s)->setDateTime(contract, false);
  }
  TFrm_Base_Detail::RefreshData();
}

void TF2112_1::Edit1Exit() {
  reference::checkNewCode(*this, AdoQry_Tmp, u"Edit1"_s, tr("职员代号"),
                          u"select * from d1101 where yw_id='"_s, tr("职员代号已登记!"));
}

void TF2112_1::tcExit() {
  TDBNumberEditEh* ratio = numberEdit(u"tc"_s);
  CheckFloat(ratio);
  if (!ratio->exceedsMaximum()) return;
  DISPINFO(tr("提成比不能大于1!应该在0.01~1.00之间"), 5);
  throw EAbort();
}

void TF2112_1::SaveData() {
  const QString ratio = text(u"tc"_s).trimmed();
  const reference::Values values{{u"pym"_s, Zpy::GetPY(text(u"Edit2"_s).trimmed())},
                                 {u"tc"_s, ratio.isEmpty() ? u"0"_s : ratio}};  // it stands unquoted
  ExecSql(moduleCode_, text(u"Edit1"_s), mode(),
          reference::composed(isAdding() ? insertStatement : updateStatement, *this, values), 0, false, true,
          false, true);
}

}  // namespace goodsbook
