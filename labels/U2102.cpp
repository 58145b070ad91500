#include "labels/U2102.h"

#include <QAction>
#include <QFile>
#include <QHBoxLayout>
#include <QIcon>
#include <QSettings>
#include <stdexcept>

#include "host/controls/link_label.h"
#include "host/print/label_print.h"
#include "host/session.h"
#include "labels/U2102f.h"
#include "labels/label_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QPointer<TF2102> F2102;

namespace {

QString setFile() {
  return Session::current().programFile(u"KRTZ"_s);
}

QSettings localSettings() {
  return QSettings(Session::current().programFile(u"MOXEL.DLL"_s), QSettings::IniFormat);
}

const QString generationKey = u"sys/tmbq"_s;

// A set that cannot be read stays beside the new one, under a name that no earlier one has.
void putAside(const QString& file) {
  for (int number = 1; QFile::exists(file); ++number) {
    QString aside = file + u".broken"_s;
    if (number > 1) aside += u'-' + QString::number(number);
    if (!QFile::exists(aside) && !QFile::rename(file, aside)) return;
  }
}

}  // namespace

TF2102::TF2102(QWidget* owner) : TFrm_Base_Qry(owner), Label1(new LinkLabel(tr("清空表格暂存标签"), this)) {
  setWindowTitle(tr("商品标签"));
  setColumns({{.field = u"WL_ID"_s, .width = 90, .alignment = Qt::AlignCenter},
              {.field = u"TM"_s, .width = 120, .alignment = Qt::AlignCenter, .hideRepeats = true},
              {.field = u"WL_NAME"_s, .width = 220},
              {.field = u"WL_GG"_s, .width = 80},
              {.field = u"CLASS_ID"_s, .visible = false},
              {.field = u"CLASS_NAME"_s, .width = 80},
              {.field = u"DW_ID"_s, .visible = false},
              {.field = u"DW_NAME"_s, .width = 54, .alignment = Qt::AlignCenter},
              {.field = u"SJ"_s, .width = 70},
              {.field = u"VIPSJ"_s, .width = 70},
              {.field = u"CD"_s, .width = 90},
              {.field = u"WL_YS"_s, .width = 44, .checkBox = true},
              {.field = u"CK_NAME"_s, .width = 90}},
             labelrows::fields());
  FormCreate();
  AdoQry_Main.create(labelrows::fields());
  for (const QString& name : {u"Act_Other"_s, u"Act_Refresh"_s}) removeScreenAction(name);
  QAction* generate = action(u"Act_Locate"_s);
  generate->setText(tr("生成"));
  generate->setIcon(QIcon::fromTheme(u"view-barcode"_s));
  setActionHint(generate, tr("条码生成"));
  QAction* empty = action(u"Act_Filter"_s);  // nothing is filtered here: the set is emptied
  empty->setText(tr("清空"));
  empty->setIcon(QIcon::fromTheme(u"edit-clear-all"_s));
  setActionHint(empty, tr("清空表格暂存标签"));
  setActionHint(action(u"Act_Print"_s), tr("按标签纸打印，带条码"));
  addScreenAction({.name = u"Act_Delete"_s,
                   .caption = tr("删除"),
                   .hint = tr("删除"),
                   .shortcut = QKeySequence(Qt::Key_Delete),
                   .icon = u"edit-delete"_s,
                   .execute = [this] { Act_DeleteExecute(); }});
  setEmptyText(tr("还没有标签：点击【生成】从进货单或条码生成"));
  Label1->setObjectName(u"Label1"_s);
  headRow->addWidget(Label1);
  headRow->addStretch(1);
  connect(Label1, &LinkLabel::clicked, this, [this] { guarded(this, [this] { clearSet(); }); });
  connect(&AdoQry_Main, &RecordSet::beforePost, this, [this] { AdoQry_MainAfterPost(); });
  generation_ = localSettings().value(generationKey, false).toBool();
}

TF2102::~TF2102() {
  lastWords();
}

void TF2102::FormDestroy() {
  TFrm_Base_Qry::FormDestroy();
  if (Session::exists()) localSettings().setValue(generationKey, generation_ ? 1 : 0);
}

void TF2102::InitForm(const Trecord& record) {
  TFrm_Base_Qry::InitForm(record);
  pageNo = 0;
  loadSet();
  setCondition({}, {});
  SetBodyParam(bodyparam::make({{bodyparam::keyField, u"k_id"_s}}));
  setListStatement(
      u"SELECT FKW.COL_ID, FKW.M_INDEX, D1800.K_ID, D1800.WL_NAME, D1800.DW_NAME,  D1800.PP, D1800.PFJ, FKW.M FROM FKW INNER JOIN D1800 ON FKW.K_ID = D1800.K_ID "_s);
  showCondition(tr("系统提示：系统仅在<本机>保留最近一次生成的标签，如无需保留请点击 "));
  makeTags();
  // Whoever opens the labels wants to make some.
  QMetaObject::invokeMethod(
      this, [this] { guarded(this, [this] { Act_LocateExecute(); }); }, Qt::QueuedConnection);
}

void TF2102::loadSet() {
  try {
    AdoQry_Main.loadFromFile(setFile());
    if (!labelrows::isSet(AdoQry_Main)) throw std::runtime_error("a file of other rows");
  } catch (const std::exception&) {
    putAside(setFile());
    AdoQry_Main.create(labelrows::fields());
    saveSet();
  }
  showCount();
}

// A folder that cannot be written to must keep nobody from making labels or from closing the list: what is
// lost is the set, the shop's data are not concerned.
void TF2102::saveSet() {
  try {
    AdoQry_Main.saveToFile(setFile());
  } catch (const std::exception&) {
  }
}

void TF2102::makeTags() {
  tags_ = new TF2102F(this);
  F2102F = tags_;
  tags_->InitA(AdoQry_Main);
}

void TF2102::clearSet() {
  labelrows::clear(AdoQry_Main);
  showCount();
}

void TF2102::Act_LocateExecute() {
  generation_ = !generation_;
  if (tags_ == nullptr) makeTags();  // the receipts could not be read when the list was opened
  const QPointer<TF2102> self = this;
  tags_->exec();
  if (self) showCount();  // the list may have been closed under its dialog
}

void TF2102::Act_PrintExecute() {
  printLabels(this, AdoQry_Main, listTitle());
}

void TF2102::Act_FilterExecute() {
  clearSet();
}

void TF2102::Act_DeleteExecute() {
  labelrows::removePicked(*DBGridEh, AdoQry_Main);
  showCount();
}

void TF2102::AdoQry_MainAfterPost() {
  showCount();  // the row to be posted is counted already
}

void TF2102::FormClose() {
  saveSet();
  TFrm_Base_Qry::FormClose();
}

}  // namespace goodsbook
