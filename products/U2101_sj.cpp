#include "products/U2101_sj.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "host/U_function.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/forms/form_builder.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

TF2101_SJ::TF2101_SJ(QWidget* owner) : TFrm_Base_Dialog(owner), DBGridEh(new TDBGridEh(body())) {
  setWindowTitle(tr("区域售价设定"));
  resize(480, 420);
  AdoQry_Main.setObjectName(u"AdoQry_Main"_s);
  DBGridEh->setObjectName(u"DBGridEh"_s);
  DBGridEh->setColumns({
      {.field = u"CK_ID"_s, .title = tr("库号"), .width = 60},
      {.field = u"CK_NAME"_s, .title = tr("仓库名称"), .width = 200},
      {.field = u"SJ"_s,
       .title = tr("零售价"),
       .width = 90,
       .alignment = Qt::AlignRight,
       .readOnly = false,
       .numberEdit = true},
      {.field = u"VIPSJ"_s,
       .title = tr("会员价"),
       .width = 90,
       .alignment = Qt::AlignRight,
       .readOnly = false,
       .numberEdit = true},
  });
  DBGridEh->setEmptyText(tr("还没有仓库，请先在【仓库基本资料】中增加"));
  DBGridEh->setRecordSet(&AdoQry_Main);
  connect(DBGridEh, &TDBGridEh::enteredBehindLast, this, &TF2101_SJ::focusNextField);
  connect(&AdoQry_Main, &RecordSet::afterPost, this, &TF2101_SJ::AllChange);
  FormBuilder form(*this);
  form.wide(DBGridEh, 1);
  form.note(u"Label1"_s, tr("系统提示：价格为0或空白将不被保存。本模块确定后即保存。"));
  QPushButton* clear = makeButton(u"bsSkinButton1"_s, tr("清空"));
  buttonRow()->insertWidget(0, clear);
  onClick(clear, [this] { bsSkinButton1Click(); });
  FormCreate();
}

void TF2101_SJ::init(const QString& adw) {
  adw_ = adw;
  guard_.watchRows(u"select adw from D1801DW where adw="_s + adw,
                   u"select * from D1801DWSJ where ADW="_s + adw, u"CK_ID"_s, tr("区域售价"));
  opensql(
      AdoQry_Tmp, moduleCode_,
      u"SELECT D1007.CK_ID, D1007.CK_NAME, D1801DWSJ.SJ, D1801DWSJ.VIPSJ FROM D1007 LEFT OUTER JOIN D1801DWSJ ON D1801DWSJ.CK_ID = D1007.CK_ID AND D1801DWSJ.ADW ="_s +
          adw);
  const QStringList names{u"CK_ID"_s, u"CK_NAME"_s, u"SJ"_s, u"VIPSJ"_s};
  AdoQry_Main.disableControls();
  AdoQry_Main.create({{.name = names[0]}, {.name = names[1]}, {.name = names[2]}, {.name = names[3]}});
  for (AdoQry_Tmp.first(); !AdoQry_Tmp.eof(); AdoQry_Tmp.next()) {
    AdoQry_Main.append();
    for (const QString& name : names) AdoQry_Main.setValue(name, AdoQry_Tmp.text(name));
    AdoQry_Main.post();
  }
  AdoQry_Main.mergeChangeLog();
  AdoQry_Main.first();
  AdoQry_Main.enableControls();
  DBGridEh->setSelectedField(u"SJ"_s);  // the warehouses before it are not typed into
}

bool TF2101_SJ::hasUnsavedInput() const {
  return !DBGridEh->isReadOnly() && (AdoQry_Main.hasChanges() || AdoQry_Main.isModified() || hasOpenCell());
}

void TF2101_SJ::showOnly() {
  DBGridEh->setReadOnly(true);
  for (const QString& name : {u"Label1"_s, u"bsSkinButton1"_s}) elementNamed(name)->hide();
  setCloseOnly();
}

void TF2101_SJ::bsSkinButton1Click() {
  AdoQry_Main.disableControls();
  for (AdoQry_Main.first(); !AdoQry_Main.eof(); AdoQry_Main.next()) {
    AdoQry_Main.edit();
    AdoQry_Main.setValue(u"SJ"_s, QString());
    AdoQry_Main.setValue(u"VIPSJ"_s, QString());
    AdoQry_Main.post();
  }
  AdoQry_Main.first();
  AdoQry_Main.enableControls();
}

void TF2101_SJ::requirePrice(int row, const QString& field) {
  const QString price = AdoQry_Main.textAt(row, AdoQry_Main.fieldIndex(field));
  bool isNumber = false;
  price.toDouble(&isNumber);
  if (isNumber || price.isEmpty()) return;
  AdoQry_Main.moveTo(row);
  DBGridEh->setSelectedField(field);
  DBGridEh->setFocus(Qt::OtherFocusReason);
  DISPINFO(tr("【%1】的价格应输入数字!").arg(AdoQry_Main.text(u"CK_NAME"_s)), 5);
  throw EAbort();
}

void TF2101_SJ::btn_okClick() {
  TFrm_Base_Dialog::btn_okClick();
  if (AdoQry_Main.state() != RecordSet::State::Browse) AdoQry_Main.post();
  const auto counts = [](const QString& price) { return !price.isEmpty() && price != "0"_L1; };
  const auto textAt = [this](int row, const QString& field) {
    return AdoQry_Main.textAt(row, AdoQry_Main.fieldIndex(field));
  };
  // The first insert follows the number without a separator: a statement begins at its keyword.
  QString batch = u"delete from D1801DWsj where adw="_s + adw_;
  for (int row = 0; row < AdoQry_Main.rowCount(); ++row) {
    for (const QString& field : {u"SJ"_s, u"VIPSJ"_s}) requirePrice(row, field);
    const QString retail = textAt(row, u"SJ"_s);
    const QString member = textAt(row, u"VIPSJ"_s);
    if (!counts(retail) || !counts(member)) continue;
    batch += u"insert into  D1801DWSJ (ADW,CK_ID,  SJ, VIPSJ) values("_s + adw_ + u",'"_s +
             textAt(row, u"CK_ID"_s) + u"','"_s + retail + u"','"_s + member + u"');"_s;
  }
  guard_.confirmSave(*this, tr("商品单位"));
  ExecSql(u"101"_s, adw_, u"Edit"_s, batch);
  setModalResult(QDialog::Accepted);
}

}  // namespace goodsbook
