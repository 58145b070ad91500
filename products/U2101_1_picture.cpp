#include <QVBoxLayout>

#include "host/session.h"
#include "products/U2101_1.h"
#include "products/picture.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

void TF2101_1::setPicture(const QVariant& bytes) {
  if (AdoQry_Pict.isEmpty()) {
    AdoQry_Pict.append();
  } else {
    AdoQry_Pict.edit();
  }
  AdoQry_Pict.setValue(u"pict"_s, bytes);
  Image1->setPicture(bytes.toByteArray());
  AllChange();
}

void TF2101_1::openPicture() {
  if (isReadOnly()) return;
  const QString path =
      Session::current().desktop().openFile(this, tr("打开图片"), tr("图片 (*.jpg *.jpeg *.png)"));
  if (!path.isEmpty()) setPicture(picture::fromFile(path));
}

void TF2101_1::clearPicture() {
  if (isReadOnly() || Image1->bytes().isEmpty()) return;
  setPicture(QVariant());
}

void TF2101_1::savePicture() {
  if (Image1->bytes().isEmpty()) return;
  const QString path = Session::current().desktop().saveFile(
      this, tr("另存图片"), text(u"Edit1"_s) + u".jpg"_s, tr("图片 (*.jpg *.jpeg)"));
  if (!path.isEmpty()) picture::toFile(Image1->bytes(), path);
}

void TF2101_1::showPicture() {
  if (Image1->bytes().isEmpty()) return;
  TFrm_Base whole(this);
  whole.setWindowTitle(text(u"Edit2"_s));
  auto* picture = new PictureLabel(&whole);
  picture->setPicture(Image1->bytes());
  (new QVBoxLayout(&whole))->addWidget(picture);
  whole.resize(720, 720);
  whole.exec();
}

}  // namespace goodsbook
