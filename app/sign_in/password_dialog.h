#pragma once

#include <QDialog>
#include <QString>

class QLabel;
class QLineEdit;

namespace goodsbook {

class Database;

// Sets a user's password. Asks for the present one when there is one.
class PasswordDialog : public QDialog {
  Q_OBJECT

 public:
  // `reason` stands above the fields; `later` is the caption of the button that leaves everything as it is.
  PasswordDialog(Database& database, QString user, const QString& reason, const QString& later,
                 QWidget* parent = nullptr);

  // On the first start: asks once for the administrator's password.
  static bool isFirstStart(Database& database);
  static void askOnFirstStart(Database& database, QWidget* parent);

 private:
  void save();

  Database& database_;
  QString user_;
  QLineEdit* present_ = nullptr;  // null when there is no password yet
  QLineEdit* wanted_;
  QLineEdit* again_;
  QLabel* problem_;
};

}  // namespace goodsbook
