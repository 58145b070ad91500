#include "labels/U2102.h"

#include <QAction>
#include <QFile>
#include <QHBoxLayout>
#include <QSettings>
#include <stdexcept>

#include "host/controls/link_label.h"
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
  generate->setToolTip(tr("条码生成"));
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
  connect(&AdoQry_Main, &RecordSet::afterPost, this, [this] { showCount(); });
  generation_ = localSettings().value(generationKey, false).toBool();
}

TF2102::~TF2102() {
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
  tags_ = new TF2102F(this);
  F2102F = tags_;
  tags_->InitA(AdoQry_Main);
  // Whoever opens the labels wants to make some.
  QMetaObject::invokeMethod(
      this, [this] { guarded(this, [this] { Act_LocateExecute(); }); }, Qt::QueuedConnection);
}

void TF2102::loadSet() {
  try {
    AdoQry_Main.loadFromFile(setFile());
  } catch (const std::exception&) {
    // A set that cannot be read is put aside, so that nothing is destroyed, and an empty one takes its place.
    const QString aside = setFile() + u".broken"_s;
    if (QFile::exists(setFile())) {
      QFile::remove(aside);
      QFile::rename(setFile(), aside);
    }
    AdoQry_Main.create(labelrows::fields());
    AdoQry_Main.saveToFile(setFile());
  }
  showCount();
}

void TF2102::clearSet() {
  labelrows::clear(AdoQry_Main);
  showCount();
}

void TF2102::Act_LocateExecute() {
  generation_ = !generation_;
  const QPointer<TF2102> self = this;
  tags_->exec();
  if (self) showCount();  // the list may have been closed under its dialog
}

void TF2102::Act_FilterExecute() {
  clearSet();
}

void TF2102::Act_DeleteExecute() {
  labelrows::removePicked(*DBGridEh, AdoQry_Main);
  showCount();
}

void TF2102::FormClose() {
  try {
    AdoQry_Main.saveToFile(setFile());
  } catch (const std::exception&) {
    // A disk that is full must not keep the screen open: the set is lost, the shop's data are not concerned.
  }
  TFrm_Base_Qry::FormClose();
}

}  // namespace goodsbook
