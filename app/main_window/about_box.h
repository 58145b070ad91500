#pragma once

#include <QDialog>

namespace goodsbook {

// Which program this is, in which version, on which database, and what it is made with.
class AboutBox : public QDialog {
  Q_OBJECT

 public:
  AboutBox(const QString& database, QWidget* parent);
};

}  // namespace goodsbook
