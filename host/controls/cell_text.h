#pragma once

#include <QCache>
#include <QFont>
#include <QStaticText>
#include <QString>

class QPainter;

namespace goodsbook {

// Draws the one-line texts of cells. Laying a text out costs more than drawing it, and lists repeat their
// texts: those drawn lately are kept laid out.
class CellText {
 public:
  // Cut with an ellipsis at the right where it is wider than `room`.
  void draw(QPainter& painter, const QRect& room, Qt::Alignment alignment, const QString& text);

 private:
  QStaticText laidOut(const QString& text);

  QFont font_;  // that the kept texts are laid out for
  QCache<QString, QStaticText> kept_{4000};
};

}  // namespace goodsbook
