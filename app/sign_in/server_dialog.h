#pragma once

#include <QDialog>

#include "host/data/server_database.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace goodsbook {

// Asks for a server, the database on it and who the program is towards it, and tries them on request.
class ServerDialog : public QDialog {
  Q_OBJECT

 public:
  // Begins with what is known; `address` may be empty.
  ServerDialog(const ServerAddress& address, const ServerLogin& login, QWidget* parent = nullptr);

  ServerAddress address() const;
  ServerLogin login() const;

 private:
  void build();
  void test();
  void tell(const ServerCheck& checked);
  void updateButtons();

  QComboBox* driver_;
  QLineEdit* server_;
  QLineEdit* port_;
  QLineEdit* database_;
  QLineEdit* options_;
  QCheckBox* systemAccount_;
  QLineEdit* user_;
  QLineEdit* password_;
  QLabel* result_;
  QPushButton* test_;
  QPushButton* ok_;
};

}  // namespace goodsbook
