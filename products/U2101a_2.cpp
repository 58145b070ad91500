#include "products/U2101a_2.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "host/U_glo.h"
#include "host/controls/link_label.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/forms/form_builder.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

TF2101A_2::TF2101A_2(QWidget* owner)
    : TFrm_Base_Dialog(owner),
      library_(BarcodeLibrary::fileIn(Session::current().programDir())),
      DBGridEh(new TDBGridEh(body())),
      Label1(new LinkLabel(tr("当增加新商品条码检查重复时会出现此提示,请按以下步骤进行操作："), body())) {
  setWindowTitle(tr("重复条码提示"));
  setMinimumSize(460, 260);
  resize(754, 383);
  buildGrid();
  FormBuilder form(*this);
  form.wide(DBGridEh, 1);
  form.wide(buildPanel());
  btn_ok->hide();
  btn_ok->setEnabled(false);
  setEnterAccepts(true);
  FormCreate();
}

void TF2101A_2::buildGrid() {
  const QString time = u"yyyy-MM-dd HH:mm"_s;
  DBGridEh->setObjectName(u"DBGridEh"_s);
  DBGridEh->setColumns({{.field = u"C"_s, .title = tr("类型"), .width = 56},
                        {.field = u"TM"_s, .title = tr("条码"), .width = 110},
                        {.field = u"WL_NAME"_s, .title = tr("品名"), .width = 190},
                        {.field = u"WL_GG"_s, .title = tr("规格"), .width = 70},
                        {.field = u"DW_NAME"_s, .title = tr("单位"), .width = 44},
                        {.field = u"CD"_s, .title = tr("产地"), .width = 80},
                        {.field = u"SJ"_s, .title = tr("零售价"), .width = 60},
                        {.field = u"CGJ"_s, .title = tr("进货价"), .width = 60},
                        {.field = u"BDATE"_s, .title = tr("登录日期"), .width = 110, .displayFormat = time},
                        {.field = u"EDATE"_s, .title = tr("最后更改"), .width = 110, .displayFormat = time},
                        {.field = u"WL_ID"_s, .title = tr("商品编号"), .width = 90}});
  DBGridEh->setReadOnly(true);
  DBGridEh->setRowNumbers(true);
  DBGridEh->setEvenRowColor(QColor(0xF0, 0xF1, 0xF4));
  DBGridEh->setRecordSet(&AdoQry_Tmp);
  connect(DBGridEh, &TDBGridEh::rowDoubleClicked, this, [this] { setModalResult(QDialog::Accepted); });
}

QWidget* TF2101A_2::buildPanel() {
  auto* panel = new QWidget(body());
  panel->setObjectName(u"Panel1"_s);
  panel->setAutoFillBackground(true);
  QPalette colours = panel->palette();  // whole, so that the text stays readable in a dark window
  colours.setColor(QPalette::Window, QColor(0xDF, 0xFF, 0xEF));
  colours.setColor(QPalette::WindowText, Qt::black);
  colours.setColor(QPalette::Link, QColor(0x00, 0x4A, 0x99));
  panel->setPalette(colours);
  auto* Label3 = new LinkLabel(
      tr("[回车]键  继续当新商品条码（会出现不同商品相同条码）    [ESC]键  返回更改条码"), panel);
  Label3->setObjectName(u"Label3"_s);
  Label1->setObjectName(u"Label1"_s);
  auto* lines = new QVBoxLayout(panel);
  for (LinkLabel* label : {Label1, Label3}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    lines->addWidget(label);
    connect(label, &LinkLabel::clicked, this, [this] { guarded(this, [this] { Label1Click(); }); });
  }
  return panel;
}

void TF2101A_2::FormCreate() {
  TFrm_Base_Dialog::FormCreate();
  Label1->setLink(false);
  Label1->setAutoFillBackground(true);
  offlineAvailable_ = false;
  if (!library_.exists()) return;
  try {
    library_.open();
    Label1->setText(tr("  本地离线条码库共：") + QString::number(library_.count()));
    offlineAvailable_ = true;
  } catch (const EDatabaseError&) {
    offerDownload();
  }
}

// Without the library the prompt still knows the shop's own products.
void TF2101A_2::offerDownload() {
  offlineAvailable_ = false;
  Label1->setText(tr("  离线条码库不存在,离线库存在可从条码选择品名,省去录入中文。点击从官网下载") +
                  downloadPage());
  Label1->setLink(true);
}

QString TF2101A_2::downloadPage() const {
  const QString page = Getsysinfo(u"BarcodeLibraryPage"_s);
  return page.isEmpty() ? u"https://goodsbook.example/barcodes"_s : page;
}

void TF2101A_2::Label1Click() {
  Session::current().desktop().openUrl(downloadPage());
}

void TF2101A_2::init(const QString& barcode) {
  opensql(
      AdoQry_Tmp, u"101"_s,
      u"SELECT '本地库' as C,D1801DW.TM, D1801.WL_NAME, D1801.WL_GG, D1003.DW_NAME, D1801.CD,D1801DW.SJ, D1801DW.CGJ, D1801.BDATE, D1801.EDATE, D1801.WL_ID FROM D1801 INNER JOIN D1801DW ON D1801.WL_ID = D1801DW.WL_ID INNER JOIN D1003 ON D1801DW.DW_ID = D1003.DW_ID where D1801DW.tm='"_s +
          barcode + u'\'');
  for (const QString& price : {u"SJ"_s, u"CGJ"_s}) AdoQry_Tmp.setFieldFormat(price, G_PriceFormat);
  if (offlineAvailable_) appendOffline(barcode);
  AdoQry_Tmp.first();
}

void TF2101A_2::appendOffline(const QString& barcode) {
  std::vector<KnownBarcode> found;
  try {
    found = library_.find(barcode);
  } catch (const EDatabaseError&) {
    offerDownload();  // damaged, or gone since
  }
  for (const KnownBarcode& known : found) {
    AdoQry_Tmp.append();
    AdoQry_Tmp.setValue(u"C"_s, tr("离线库"));
    AdoQry_Tmp.setValue(u"tm"_s, barcode);
    AdoQry_Tmp.setValue(u"WL_NAME"_s, known.name);
    AdoQry_Tmp.setValue(u"WL_GG"_s, known.specification);
    AdoQry_Tmp.setValue(u"cd"_s, known.origin);
    AdoQry_Tmp.post();
  }
}

}  // namespace goodsbook
