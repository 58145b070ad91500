#include "reference/U2107_2.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QStyleOptionViewItem>

#include "host/data/U_dataop.h"
#include "host/forms/form_builder.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

TF2107_2::TF2107_2(QWidget* owner)
    : TFrm_Base_Dialog(owner),
      DBGridEh1(new TDBGridEh(body())),
      bsSkinButton1(makeButton(u"bsSkinButton1"_s, tr("清空"))) {
  setWindowTitle(tr("仓库权限设定"));
  DBGridEh1->setObjectName(u"DBGridEh1"_s);
  DBGridEh1->setColumns(
      {{.field = u"G"_s, .title = tr("组"), .width = 40, .hideRepeats = true},
       {.field = u"USER_ID"_s, .title = tr("用户号"), .width = 100},
       {.field = u"USER_NAME"_s, .title = tr("名称"), .width = 200},
       {.field = u"R"_s, .title = tr("读"), .width = 44, .readOnly = false, .checkBox = true},
       {.field = u"W"_s, .title = tr("写"), .width = 44, .readOnly = false, .checkBox = true}});
  DBGridEh1->setRecordSet(&AdoQry_Tmp);
  DBGridEh1->setEmptyText(tr("没有启用的用户"));
  FormBuilder form(*this);
  form.wide(DBGridEh1, 1);
  form.note(u"Label1"_s, tr("系统提示：拥有写权限，系统自动赋于读权限。"));
  buttonRow()->insertWidget(0, bsSkinButton1);
  btn_Cancel->setText(tr("取消 ESC"));
  onClick(bsSkinButton1, [this] { bsSkinButton1Click(); });
  connect(DBGridEh1, &TDBGridEh::enteredBehindLast, this, &TF2107_2::focusNextField);
  connect(&AdoQry_Tmp, &RecordSet::validateField, this, [this](const QString& field) {
    if (field.compare("W"_L1, Qt::CaseInsensitive) == 0) AdoQry_TmpWValidate();
  });
  DBGridEh1->setDrawColumnCell([this](int /*row*/, const QString& /*field*/, QStyleOptionViewItem& cell) {
    DBGridEh1DrawColumnCell(cell);
  });
  FormCreate();
}

void TF2107_2::init(const QString& warehouse, bool readOnly) {
  setFixedSize(QSize(460, 420).expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize()));
  bsSkinButton1->setVisible(!readOnly);
  btn_ok->setVisible(!readOnly);
  DBGridEh1->setReadOnly(readOnly);
  if (warehouse == warehouse_ && AdoQry_Tmp.isOpen() && !AdoQry_Tmp.isEmpty()) return;
  closeado();  // should the look-up fail, another warehouse's rows must not stand under this code
  initwl(warehouse);
  opensql(
      AdoQry_Tmp, moduleCode_,
      u"SELECT LEFT(U.USER_ID,2) AS G,U.USER_ID, U.USER_NAME, case WHEN(K.W >= 0) then convert(bit,1)  ELSE convert(bit,0) end as R,case WHEN K.W = 1 then convert(bit,1)  ELSE convert(bit,0) end as W FROM SYS_USER U LEFT OUTER JOIN SYS_USER_CK K on K.USER_ID = U.USER_ID and K.CK_ID = '"_s +
          warehouse + u"' WHERE (U.T = 1)"_s);
}

void TF2107_2::closeado() {
  AdoQry_Tmp.close();
}

void TF2107_2::DBGridEh1DrawColumnCell(QStyleOptionViewItem& cell) const {
  if (!cell.state.testFlag(QStyle::State_Selected) || DBGridEh1->hasFocus()) return;
  cell.palette.setBrush(QPalette::Highlight, cell.palette.brush(QPalette::Midlight));
  cell.palette.setBrush(QPalette::HighlightedText, cell.palette.brush(QPalette::Text));
}

void TF2107_2::AdoQry_TmpWValidate() {
  if (AdoQry_Tmp.flag(u"W"_s)) AdoQry_Tmp.setValue(u"R"_s, true);
}

void TF2107_2::bsSkinButton1Click() {
  if (!AdoQry_Tmp.isOpen()) return;
  AdoQry_Tmp.disableControls();
  for (AdoQry_Tmp.first(); !AdoQry_Tmp.eof(); AdoQry_Tmp.next()) {
    AdoQry_Tmp.edit();
    AdoQry_Tmp.setValue(u"r"_s, false);
    AdoQry_Tmp.setValue(u"w"_s, false);
    AdoQry_Tmp.post();
  }
  AdoQry_Tmp.first();
  AdoQry_Tmp.enableControls();
}

void TF2107_2::btn_okClick() {
  TFrm_Base_Dialog::btn_okClick();
  if (AdoQry_Tmp.isOpen()) {
    if (AdoQry_Tmp.state() != RecordSet::State::Browse) AdoQry_Tmp.post();
    AdoQry_Tmp.mergeChangeLog();
  }
  refresqltext(warehouse_);
  setModalResult(QDialog::Accepted);
}

void TF2107_2::btn_CancelClick() {
  if (AdoQry_Tmp.isOpen()) AdoQry_Tmp.CancelUpdates();
  TFrm_Base_Dialog::btn_CancelClick();
}

void TF2107_2::refresqltext(const QString& warehouse) {
  if (!AdoQry_Tmp.isOpen() || warehouse.trimmed().toUpper() != warehouse_.trimmed().toUpper()) return;
  batch_ = u"delete from SYS_USER_CK where ck_id='"_s + warehouse_ + u"';"_s;
  const int user = AdoQry_Tmp.fieldIndex(u"USER_ID"_s);
  const int read = AdoQry_Tmp.fieldIndex(u"R"_s);
  const int write = AdoQry_Tmp.fieldIndex(u"W"_s);
  for (int row = 0; row < AdoQry_Tmp.rowCount(); ++row) {
    const bool writes = AdoQry_Tmp.valueAt(row, write).toBool();
    if (!writes && !AdoQry_Tmp.valueAt(row, read).toBool()) continue;
    batch_ += u"insert into SYS_USER_CK values('"_s + AdoQry_Tmp.textAt(row, user) + u"','"_s + warehouse_ +
              u"',"_s + (writes ? u'1' : u'0') + u");"_s;
  }
}

}  // namespace goodsbook
