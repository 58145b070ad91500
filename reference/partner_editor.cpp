#include <QHBoxLayout>
#include <QLabel>

#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/Zpy.h"
#include "host/controls/link_label.h"
#include "host/data/U_dataop.h"
#include "host/forms/form_builder.h"
#include "host/lookup/pickers.h"
#include "host/session.h"
#include "reference/composed.h"
#include "reference/partner.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

PartnerEditor::PartnerEditor(const Partner& partner, QWidget* owner)
    : TFrm_Base_Detail(owner), partner_(partner) {
  setWindowTitle(partner.caption);
  if (const auto* list = qobject_cast<const TFrm_Base_Common*>(owner)) SetFormParam(list->moduleCode());
  declareFields();
  (new LookupPicker(lookup::regions(), this))->attach(lookupEdit(u"addr_id"_s));
  (new LookupPicker(lookup::deliveryMethods(), this))->attach(lookupEdit(u"SEND_ID"_s));
  if (partner.hasSalesperson) (new TFrm_Sys_LINK_YW(this))->init(lookupEdit(u"YW_ID"_s));
  opensql(AdoQry_Tmp, moduleCode_, u"select top 1 send_id from D1011 order by send_id"_s);
  if (!AdoQry_Tmp.isEmpty()) defaultDelivery_ = AdoQry_Tmp.text(u"send_id"_s);
  FormCreate();
}

void PartnerEditor::declareFields() {
  FormBuilder form(*this);
  form.fields({
      {.name = u"Edit1"_s,
       .label = tr("代    号"),
       .limit = 10,
       .exit = [this] { Edit1Exit(); },
       .code = true,
       .column = u"KH_GYS_ID"_s},
      {.name = u"Edit2"_s,
       .label = tr("简    称"),
       .limit = 40,
       .required = true,
       .column = u"KG_NAME"_s,
       .sameRow = true},
      {.name = u"FULL_NAME"_s, .label = tr("全  称"), .limit = 40, .column = u"FULL_NAME"_s},
      {.name = u"GRADE"_s, .label = tr("等级"), .limit = 2, .column = u"GRADE"_s, .sameRow = true},
      {.name = u"addr_id"_s,
       .label = tr("所属地区"),
       .kind = FieldKind::Lookup,
       .limit = 6,
       .required = true,
       .check = FieldCheck::Id,
       .column = u"ADDR_ID"_s,
       .nameLabel = u"ADDR_NAME"_s,
       .nameColumn = u"ADDR_NAME"_s},
      {.name = u"SEND_ID"_s,
       .label = tr("送货方式"),
       .kind = FieldKind::Lookup,
       .limit = 2,
       .required = true,
       .check = FieldCheck::Id,
       .column = u"SEND_ID"_s,
       .nameLabel = u"SEND_NAME"_s,
       .nameColumn = u"SEND_NAME"_s,
       .sameRow = true},
  });
  if (partner_.hasSalesperson) {
    form.field({.name = u"YW_ID"_s,
                .label = tr("业务员"),
                .kind = FieldKind::Lookup,
                .limit = 4,
                .check = FieldCheck::Id,
                .column = u"YW_ID"_s,
                .stored = u"KM_IDA"_s,
                .nameLabel = u"YW_NAME"_s,
                .nameColumn = u"YW_NAME"_s});
  }
  form.fields({
      {.name = u"Edit3"_s,
       .label = tr("联 系 人"),
       .limit = 20,
       .column = u"FZR"_s,
       .sameRow = partner_.hasSalesperson},
      {.name = u"Edit4"_s, .label = tr("电 话 一"), .limit = 50, .column = u"TEL"_s},
      {.name = u"Edit5"_s, .label = tr("电 话 二"), .limit = 50, .column = u"TEL1"_s, .sameRow = true},
      {.name = u"Edit6"_s, .label = tr("传    真"), .limit = 30, .column = u"FAX"_s},
      {.name = u"Edit7"_s, .label = tr("地    址"), .limit = 100, .column = u"ADDR"_s},
      {.name = u"Edit8"_s, .label = u"EMAIL"_s, .limit = 100, .column = u"EMAIL"_s},
      {.name = u"Edit9"_s, .label = tr("备    注"), .limit = 100, .column = u"NOTE"_s},
      {.name = u"web"_s, .label = tr("网    址"), .limit = 100, .column = u"WEB"_s},
  });
  OPENURL = new LinkLabel(tr("打开该网站"), body());
  OPENURL->setObjectName(u"OPENURL"_s);
  const QWidget* address = elementNamed(u"web"_s);
  for (QHBoxLayout* row : body()->findChildren<QHBoxLayout*>()) {
    if (const int at = row->indexOf(address); at >= 0) row->insertWidget(at + 1, OPENURL);
  }
  connect(OPENURL, &LinkLabel::clicked, this, [this] { guarded(this, [this] { OPENURLClick(); }); });
}

bool PartnerEditor::drawsNumber() const {
  return GPARAM6 > 0 && mode() != "Edit"_L1;
}

void PartnerEditor::RefreshData() {
  setLoading(true);
  const bool numbered = GPARAM6 > 0 && isAdding();
  firstFocus = isAdding() && !numbered ? u"Edit1"_s : u"Edit2"_s;
  lockedFields = mode() == "Edit"_L1 ? u"EDIT1"_s : QString();
  loadFields();
  if (mode() == "Add"_L1) {
    setText(u"addr_id"_s, u"01"_s);
    setText(u"SEND_ID"_s, defaultDelivery_);
    setText(u"GRADE"_s, u"1"_s);
  }
  // Without numbering a new partner starts from the current one's code, which the check refuses until it is
  // changed.
  setText(u"Edit1"_s, numbered                       ? tr("自动编号")
                      : listRows().currentRow() >= 0 ? listRows().text(u"KH_GYS_ID"_s)
                                                     : QString());
  TFrm_Base_Detail::RefreshData();
  OPENURL->setEnabled(true);
  edit(u"Edit1"_s)->setEnabled(GPARAM6 <= 0);
}

void PartnerEditor::Edit1Exit() {
  if (drawsNumber()) {
    edit(u"Edit1"_s)->clear();
    setText(u"Edit1"_s, GetNOID(moduleCode_, {}, GPARAM6));
  }
  reference::checkNewCode(*this, AdoQry_Tmp, u"Edit1"_s, partner_.codeCaption, partner_.uniqueness(),
                          partner_.taken);
}

void PartnerEditor::SaveData() {
  if (drawsNumber()) Edit1Exit();
  nameCodes();
  reference::Values values{{u"pym"_s, Zpy::GetPY(text(u"Edit2"_s).trimmed())}};
  if (isAdding()) {
    // The account number's first four characters are year and month; the account goes on counting behind its
    // head.
    const QString number = GetNOID(moduleCode_, {}, 0);
    values[u"number"_s] = number;
    values[u"account"_s] = partner_.accountHead + number.mid(4);
  } else {
    values[u"row"_s] = listRows().text(u"KH_GYS_ID"_s);
  }
  ExecSql(moduleCode_, text(u"Edit1"_s), mode(),
          reference::composed(isAdding() ? partner_.insert() : partner_.update(), *this, values), 65535,
          false, true, false, true);
}

void PartnerEditor::showSaved() {
  if (partner_.hasSalesperson) listRows().setValue(u"KM_IDA"_s, text(u"YW_ID"_s));
  TFrm_Base_Detail::showSaved();
  if (missingCodes_.isEmpty()) return;
  DISPINFO(tr("已保存，但%1不存在：建立之前，刷新后的列表中看不到它。").arg(missingCodes_.join(u"、"_s)), 5);
}

// The list joins regions and delivery methods. A new partner starts with codes that need not be there.
void PartnerEditor::nameCodes() {
  missingCodes_.clear();
  for (const QString& element : {u"addr_id"_s, u"SEND_ID"_s}) {
    const TExtEdit* edit = lookupEdit(element);
    const std::optional<QString> name = edit->lookup()->nameOf(edit->text());
    edit->nameLabel()->setText(name.value_or(QString()));
    if (!name) missingCodes_ << labelOf(edit) + u"【"_s + edit->text().trimmed() + u'】';
  }
}

void PartnerEditor::OPENURLClick() {
  QString address = text(u"web"_s).trimmed();
  if (address.isEmpty()) return;
  if (!address.startsWith("WWW."_L1, Qt::CaseInsensitive) &&
      !address.startsWith("HTTP://"_L1, Qt::CaseInsensitive)) {
    address.prepend(u"www."_s);
  }
  Session::current().desktop().openUrl(address);
}

}  // namespace goodsbook
