#pragma once

#include <QCommandLineParser>
#include <QString>

#include "host/data/server_database.h"

namespace goodsbook {

// The options --database FILE and --server "Driver=…;Server=…;Port=…;Database=…" of a sub-command: one of
// them.
class DatabaseChoice {
 public:
  explicit DatabaseChoice(QCommandLineParser& parser, const QString& fileHelp);

  // The file, or the server's address; empty when none was given. EDatabaseError for both at once and for a
  // text that is no address.
  QString chosen() const;

 private:
  QCommandLineParser& parser_;
  QCommandLineOption file_;
  QCommandLineOption server_;
};

// Who the program is towards a server: from the environment; where that says nothing and somebody sits at the
// terminal, asked there, the password without echo. Empty where the system's account logs in.
ServerLogin serverLoginForCommand(const ServerAddress& address);
// The same for what was chosen; empty for a file.
ServerLogin loginForChosen(const QString& chosen);

// Opens what was chosen; a missing file is made where `create` says so. EDatabaseError.
std::unique_ptr<Database> openChosen(const QString& chosen, bool create);

}  // namespace goodsbook
