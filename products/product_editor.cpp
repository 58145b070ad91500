#include "products/product_editor.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <algorithm>
#include <stdexcept>

#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/data/sql_sets.h"
#include "host/lookup/pickers.h"
#include "host/session.h"
#include "products/U2101_2.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

ProductEditor::ProductEditor(QWidget* owner) : TFrm_Base_Detail(owner) {
  setWindowTitle(tr("商品基本资料"));
}

FieldSpec ProductEditor::productField(const QString& name, bool sameRow) {
  const FieldSpec all[] = {
      {.name = u"Edit1"_s,
       .label = tr("商品编号"),
       .limit = 20,
       .upper = true,
       .exit = [this] { Edit1Exit(); },
       .code = true,
       .column = u"WL_ID"_s},
      {.name = u"Edit2"_s, .label = tr("商品名称"), .limit = 80, .column = u"WL_NAME"_s},
      {.name = u"Edit3"_s, .label = tr("规    格"), .limit = 40, .column = u"WL_GG"_s},
      {.name = u"CD"_s, .label = tr("产    地"), .limit = 50, .column = u"CD"_s},
      {.name = u"CLASS_ID"_s,
       .label = tr("商品分类"),
       .kind = FieldKind::Lookup,
       .limit = 4,
       .check = FieldCheck::Id,
       .column = u"CLASS_ID"_s,
       .nameLabel = u"CLASS_NAME"_s,
       .nameColumn = u"CLASS_NAME"_s},
      {.name = u"dw_id"_s,
       .label = tr("单    位"),
       .kind = FieldKind::Lookup,
       .limit = 2,
       .check = FieldCheck::Id,
       .column = u"DW_ID"_s,
       .nameLabel = u"DW_NAME"_s,
       .nameColumn = u"DW_NAME"_s},
      {.name = u"TM"_s, .label = tr("条    码"), .limit = 30, .column = u"TM"_s},
      {.name = u"YS"_s, .label = tr("有效"), .kind = FieldKind::Check, .column = u"WL_YS"_s},
      {.name = u"check_kc"_s,
       .label = tr("允许该商品为负库存"),
       .kind = FieldKind::Check,
       .column = u"CHECK_KC"_s},
      {.name = u"NOTE"_s, .label = tr("备    注"), .limit = 100, .column = u"NOTE"_s},
  };
  const FieldSpec* found =
      std::ranges::find_if(all, [&](const FieldSpec& field) { return field.name == name; });
  if (found == std::end(all)) throw std::logic_error("no field " + name.toStdString());
  FieldSpec field = *found;
  field.sameRow = sameRow;
  return field;
}

void ProductEditor::attachPickers() {
  (new TFrm_Sys_LINK_CL(this))->init(lookupEdit(u"CLASS_ID"_s));
  (new TFrm_Sys_LINK_DW(this))->init(nullptr, nullptr, lookupEdit(u"dw_id"_s), nullptr, {}, {}, {});
}

void ProductEditor::makeChangeButton() {
  BTN_CHANGE = makeButton(u"BTN_CHANGE"_s, tr("更改记录(F11)"));
  buttonRow()->insertWidget(0, BTN_CHANGE);
  onClick(BTN_CHANGE, [this] { BTN_CHANGEClick(); });
}

void ProductEditor::Edit1Exit() {
  TCustomDBEditEh* code = edit(u"Edit1"_s);
  if (GPARAM0 && code->text().trimmed().isEmpty()) {
    if (GPARAM1 && text(u"CLASS_ID"_s).trimmed().isEmpty()) return;
    setText(u"Edit1"_s, GetNOID(moduleCode_, GPARAM1 ? text(u"CLASS_ID"_s) : QString(), GPARAM2));
  }
  CheckBlankInstr(code, tr("商品编号"));
  CheckText(code, tr("商品编号"));
  CheckBlank(code);
  opensql(AdoQry_Tmp, moduleCode_, u"select wl_id from D1801 where wl_id='"_s + code->text() + u'\'');
  if (!AdoQry_Tmp.isEmpty()) {
    DISPINFO(tr("商品编号已登记!"), 5);
    throw EAbort();
  }
  if (isAdding()) refuseCodeWithUnits();
}

// Deleting a product leaves its units, which documents name. Under the same code they would be the new
// product's.
void ProductEditor::refuseCodeWithUnits() {
  const QString code = text(u"Edit1"_s);
  const SqlSet units = readSql(Session::current().database(),
                               u"select top 1 adw from D1801DW where WL_ID="_s + QuotedStr(code));
  if (units.rows.empty()) return;
  DISPINFO(tr("编号【%1】属于已删除的商品，其单位资料仍在，请换一个编号!").arg(code), 5);
  throw EAbort();
}

void ProductEditor::BTN_CHANGEClick() {
  if (isAdding()) {
    DISPINFO(tr("【增加】的状态下无更改记录,您应该在【修改/查看】状态下浏览更改记录!"), 5);
    return;
  }
  TF2101_2 history(this);
  history.init(text(u"Edit1"_s));
  history.exec();
}

void ProductEditor::FormKeyDown(QKeyEvent* event) {
  if (event->key() == Qt::Key_F11) {
    event->accept();
    BTN_CHANGEClick();
  } else {
    TFrm_Base_Detail::FormKeyDown(event);
  }
}

void ProductEditor::showNew() {
  setText(u"user_name"_s, G_UserName);
  setText(u"BDATE"_s, Session::current().desktop().now().toString(u"yyyy-MM-dd HH:mm:ss "_s));
  setText(u"EDATE"_s, {});
  setChecked(u"YS"_s, true);
  setChecked(u"check_kc"_s, true);
}

void ProductEditor::showDates(bool withLastChange) {
  const QString day = u"yyyy-MM-dd"_s;
  const QDateTime changed = listRows().value(u"EDATE"_s).toDateTime();
  setText(u"BDATE"_s, listRows().value(u"BDATE"_s).toDateTime().toString(day));
  setText(u"EDATE"_s, withLastChange && changed.isValid() ? changed.toString(day) : QString());
}

void ProductEditor::refuseWithdrawnNegativeStock(const QString& message) {
  if (mode() != "Edit"_L1 || isChecked(u"check_kc"_s)) return;
  opensql(AdoQry_Tmp, moduleCode_,
          u"select wl_id from D1802 where wl_id='"_s + text(u"Edit1"_s) + u"' and kc<0"_s);
  if (AdoQry_Tmp.isEmpty()) return;
  DISPINFO(message, 5);
  throw EAbort();
}

QString ProductEditor::historyStatement(const QString& code) {
  return u"insert into d1801b (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, BDATE,EDATE, T, NOTE,CD) select WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, getdate(),EDATE, T, NOTE,CD from d1801 where wl_id='"_s +
         code + u"';"_s;
}

QString ProductEditor::stockStatement() const {
  const QString code = text(u"Edit1"_s);
  const QString flag = text(u"check_kc"_s);
  if (mode() == "Edit"_L1)
    return u"update d1802 set CHECK_KC="_s + flag + u" where wl_id='"_s + code + u"';"_s;
  if (!G_CKCOUNT_C) return {};
  return u"INSERT INTO D1802 (WL_ID, CHECK_KC, CK_ID) select top 1 '"_s + code + u"',"_s + flag +
         u",ck_id from d1007;"_s;
}

QVariant ProductEditor::savedNumber(const QString& element) const {
  const QString typed = text(element).trimmed();
  if (typed.isEmpty() && isAdding()) return {};
  return typed.toDouble();
}

void ProductEditor::storeHeader() {
  RecordSet& row = listRows();
  for (const auto& [field, element] : {std::pair{u"WL_ID"_s, u"Edit1"_s},
                                       {u"WL_NAME"_s, u"Edit2"_s},
                                       {u"WL_GG"_s, u"Edit3"_s},
                                       {u"CLASS_ID"_s, u"CLASS_ID"_s},
                                       {u"CLASS_NAME"_s, u"CLASS_NAME"_s},
                                       {u"NOTE"_s, u"NOTE"_s},
                                       {u"CD"_s, u"CD"_s}}) {
    row.setValue(field, text(element));
  }
  if (isAdding()) row.setValue(u"DJ"_s, 0);  // else it stays: the screen shows it rounded
  row.setValue(u"USER_ID"_s, G_UserId);
  row.setValue(u"USER_NAME"_s, G_UserName);
  row.setValue(u"WL_YS"_s, isChecked(u"YS"_s));
  row.setValue(u"CHECK_KC"_s, isChecked(u"check_kc"_s));
}

}  // namespace goodsbook
