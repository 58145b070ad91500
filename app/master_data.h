#pragma once

#include <QLibrary>
#include <QString>

#include "host/U_glo.h"

class QWidget;

namespace goodsbook {

// The plug-in with the screens of the master data, loaded when it is first needed from the lib folder beside
// the program's; what it publishes (host/published_screens.h) is there from then on. Loading never throws:
// what failed is kept and can be shown.
class MasterData {
 public:
  // `folder`: where the plug-in lies; empty for ../lib beside the program.
  explicit MasterData(const QString& folder = {});

  bool load();                              // false: see error()
  QString error() const { return error_; }  // file and reason, for the user
  QString fileName() const { return library_.fileName(); }

  // Opens the screen of the record's module number, owned by `owner`. Whatever the entry raises passes
  // through; std::logic_error when the plug-in is not loaded.
  void open(const Trecord& record, QWidget* owner);

 private:
  using Entry = void (*)(const Trecord&, QWidget*);

  QLibrary library_;
  Entry entry_ = nullptr;
  QString error_;
};

}  // namespace goodsbook
