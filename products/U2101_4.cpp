#include "products/U2101_4.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

#include "host/U_function.h"
#include "host/data/U_dataop.h"
#include "host/forms/form_builder.h"
#include "products/U2101_4p.h"
#include "products/caption_label.h"
#include "products/picture.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
constexpr int shortestPicture = 100;  // bytes; anything shorter is no picture
}

tF2101_4::tF2101_4(QWidget* owner)
    : TFrm_Base_Dialog(owner),
      caption_(new CaptionLabel(body())),
      picture_(new PictureLabel(body())),
      position_(new QLabel(body())) {
  setWindowTitle(tr("商品图片"));
  resize(640, 560);
  FormBuilder form(*this);
  auto* heading = new QLabel(tr("商 品 图 片 浏 览"), body());
  heading->setObjectName(u"Label1"_s);
  QFont large = heading->font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  large.setBold(true);
  heading->setFont(large);
  heading->setAlignment(Qt::AlignCenter);
  form.wide(heading);
  caption_->setObjectName(u"Label2"_s);
  form.wide(caption_);
  picture_->setObjectName(u"DBImage1"_s);
  picture_->setEmptyText(tr("没有图片"));
  form.wide(picture_, 1);
  position_->setObjectName(u"Label3"_s);

  auto* moves = new QHBoxLayout;
  moves->setSpacing(8);
  const auto addMove = [&](const QString& name, const QString& text, const QString& hint, int key) {
    QPushButton* button = makeButton(name, text);
    button->setToolTip(hint);
    button->setAutoRepeat(true);
    onClick(button, [this, key] { move(key); });
    moves->addWidget(button);
  };
  moves->addStretch(1);
  addMove(u"BtnFirst"_s, tr("首张"), tr("第一张 (Home)"), Qt::Key_Home);
  addMove(u"BtnPrior"_s, tr("上一张"), tr("上一张 (PageUp)"), Qt::Key_PageUp);
  moves->addWidget(position_);
  addMove(u"BtnNext"_s, tr("下一张"), tr("下一张 (PageDown)"), Qt::Key_PageDown);
  addMove(u"BtnLast"_s, tr("末张"), tr("最后一张 (End)"), Qt::Key_End);
  moves->addStretch(1);
  form.wide(moves);

  QPushButton* print = makeButton(u"BtnPrint"_s, tr("预览/打印 F2"));
  buttonRow()->insertWidget(0, print);
  onClick(print, [this] { BtnPrintClick(); });
  setCloseOnly();
  connect(&AdoQry_Tmp, &RecordSet::afterScroll, this, &tF2101_4::showCurrent);
  FormCreate();
}

void tF2101_4::InitForm(const QString& sql, int pageSize, int pageNo) {
  pageSize_ = pageSize;
  pageNo_ = pageNo;
  opensql(AdoQry_Tmp, moduleCode_, u"select id as pict_id,co as pict_name, mod_pict as pict from sys_co"_s);
  const QVariant standBy = AdoQry_Tmp.isEmpty() ? QVariant() : AdoQry_Tmp.value(u"pict"_s);
  opensql(AdoQry_Tmp, moduleCode_, sql, pageSize_, pageNo_, u"WL_ID"_s);
  AdoQry_Tmp.disableControls();
  for (AdoQry_Tmp.first(); !AdoQry_Tmp.eof(); AdoQry_Tmp.next()) {
    if (AdoQry_Tmp.value(u"pict"_s).toByteArray().size() >= shortestPicture) continue;
    AdoQry_Tmp.edit();
    AdoQry_Tmp.setValue(u"pict"_s, standBy);
    AdoQry_Tmp.post();
  }
  AdoQry_Tmp.first();
  AdoQry_Tmp.enableControls();
  showCurrent();
}

void tF2101_4::showCurrent() {
  if (!AdoQry_Tmp.isOpen() || !AdoQry_Tmp.hasField(u"WL_ID"_s)) return;
  const bool any = !AdoQry_Tmp.isEmpty();
  caption_->setText(any ? AdoQry_Tmp.text(u"WL_ID"_s) + u"      "_s + AdoQry_Tmp.text(u"WL_NAME"_s)
                        : QString());
  position_->setText(QString::number(AdoQry_Tmp.currentRow() + 1) + u'/' +
                     QString::number(AdoQry_Tmp.rowCount()));
  picture_->setPicture(any ? AdoQry_Tmp.value(u"pict"_s).toByteArray() : QByteArray());
}

void tF2101_4::move(int key) {
  switch (key) {
    case Qt::Key_Home:
      AdoQry_Tmp.first();
      break;
    case Qt::Key_End:
      AdoQry_Tmp.last();
      break;
    case Qt::Key_PageUp:
    case Qt::Key_Left:
    case Qt::Key_Up:
      AdoQry_Tmp.prior();
      break;
    default:
      AdoQry_Tmp.next();
      break;
  }
}

void tF2101_4::FormKeyDown(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_F2:
      event->accept();
      BtnPrintClick();
      return;
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Down:
      event->accept();
      move(event->key());
      return;
    default:
      TFrm_Base_Dialog::FormKeyDown(event);
  }
}

void tF2101_4::BtnPrintClick() {
  if (AdoQry_Tmp.isEmpty()) {
    DISPINFO(tr("没有可打印的图片"), 5);
    return;
  }
  tF2101_4P report(this);
  report.init(AdoQry_Tmp);
}

}  // namespace goodsbook
