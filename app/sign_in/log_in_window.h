#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "host/data/odbc/server_address.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace goodsbook {

class Desktop;
class Session;

// Chooses a database and a user. Accepted: session() works and the user is signed in.
class LogInWindow : public QDialog {
  Q_OBJECT

 public:
  using DesktopMaker = std::function<std::unique_ptr<Desktop>()>;

  // `programDir`: where the last choices are kept. `makeDesktop` gives the desktop of the session.
  LogInWindow(QString programDir, DesktopMaker makeDesktop, QWidget* parent = nullptr);
  ~LogInWindow() override;

  // Offers this database and lists its users; what is wrong with it is shown in the window. Waiting for a
  // server can be given up.
  // A server is tried only when it is known who the program is towards it.
  void chooseDatabase(const QString& database);
  // The same at the start of the program: the window stands there before a server is asked, which may take a
  // while or not answer.
  void begin(const QString& database);
  void chooseUser(const QString& id);

  // Signs in without showing the window when the chosen user needs no password; false when it has to be
  // shown.
  bool trySigningIn();

  std::unique_ptr<Session> takeSession();

 private:
  void build();
  int listed(const QString& database);  // its place in the list, in front where it is new
  QString chosen() const;               // the file or the server's address
  void browse();
  void chooseServer();
  void listUsers();
  void logIn();
  void showProblem(const QString& text);
  void remember();

  QString programDir_;
  DesktopMaker makeDesktop_;
  ServerLogin serverLogin_;
  std::unique_ptr<Session> session_;
  QComboBox* database_;
  QComboBox* user_;
  QLineEdit* password_;
  QLabel* problem_;
  QPushButton* ok_;
};

}  // namespace goodsbook
