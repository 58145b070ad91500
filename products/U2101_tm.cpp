#include "products/U2101_tm.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>

#include "host/U_function.h"
#include "host/data/U_dataop.h"
#include "host/forms/form_builder.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

constexpr int longestBarcode = 30;

void showLine(QPlainTextEdit& memo, int line) {
  QTextCursor cursor(memo.document()->findBlockByNumber(line));
  // The line break before it stays out: what is typed over the line must not join the one above.
  cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  memo.setTextCursor(cursor);
  memo.setFocus();
}

}  // namespace

TF2101_TM::TF2101_TM(QWidget* owner) : TFrm_Base_Dialog(owner) {
  setWindowTitle(tr("一品多码设定"));
  resize(420, 360);
  FormBuilder form(*this);
  auto* barcodes = new QPlainTextEdit(body());
  barcodes->setObjectName(u"Memo1"_s);
  barcodes->setTabChangesFocus(true);
  connect(barcodes, &QPlainTextEdit::textChanged, this, &TF2101_TM::AllChange);
  form.wide(barcodes, 1);
  form.note(u"Label1"_s, tr("系统提示：换行请按 【CTRL+回车】，本模块点击【确定】后即保存。"));
  QPushButton* clear = makeButton(u"bsSkinButton1"_s, tr("清空"));
  buttonRow()->insertWidget(0, clear);
  onClick(clear, [this, barcodes] {
    if (barcodes->document()->isEmpty()) return;
    setText(u"Memo1"_s, {});
    barcodes->document()->setModified();
  });
  FormCreate();
}

void TF2101_TM::init(const QString& adw) {
  adw_ = adw;
  guard_.watchRows(u"select adw from D1801DW where adw="_s + adw,
                   u"select * from D1801DWTM where ADW="_s + adw, u"TM"_s, tr("条码"));
  opensql(AdoQry_Tmp, moduleCode_, u"select * from D1801DWTM where ADW="_s + adw);
  QStringList lines;
  for (AdoQry_Tmp.first(); !AdoQry_Tmp.eof(); AdoQry_Tmp.next()) lines << AdoQry_Tmp.text(u"tm"_s);
  setText(u"Memo1"_s, lines.join(u'\n'));
}

bool TF2101_TM::hasUnsavedInput() const {
  const auto* barcodes = element<QPlainTextEdit>(u"Memo1"_s);
  return !barcodes->isReadOnly() && barcodes->document()->isModified();
}

void TF2101_TM::showOnly() {
  setElementReadOnly(elementNamed(u"Memo1"_s), true);
  for (const QString& name : {u"Label1"_s, u"bsSkinButton1"_s}) elementNamed(name)->hide();
  setCloseOnly();
}

void TF2101_TM::btn_okClick() {
  TFrm_Base_Dialog::btn_okClick();
  // The first insert follows the number without a separator: a statement begins at its keyword.
  QString batch = u"delete from D1801DWTM where adw="_s + adw_;
  const QStringList lines = text(u"Memo1"_s).split(u'\n');
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const QString barcode = lines[i].trimmed();
    if (barcode.size() > longestBarcode) {
      DISPINFO(tr("条码长度不可超过30位!"), 5);
      showLine(*element<QPlainTextEdit>(u"Memo1"_s), static_cast<int>(i));
      return;
    }
    if (!barcode.isEmpty()) batch += u"insert into D1801DWTM values("_s + adw_ + u",'"_s + barcode + u"');"_s;
  }
  guard_.confirmSave(*this, tr("商品单位"));
  ExecSql(u"101"_s, adw_, u"Edit"_s, batch);
  setModalResult(QDialog::Accepted);
}

}  // namespace goodsbook
