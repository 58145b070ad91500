#pragma once

#include <QDateTime>
#include <QString>

#include "host/export.h"

class QWidget;
class QPrinter;

namespace goodsbook {

// What a screen asks of the person and the system around it. The program shows real boxes; a driver answers
// itself.
class GOODSBOOKHOST_EXPORT Desktop {
 public:
  virtual ~Desktop();

  // kind 5: warning; 2: question, 'y' for yes ('n' is the default answer); 0: plain box with `caption`.
  virtual char message(QWidget* parent, const QString& text, int kind, const QString& caption = {}) = 0;

  // A chosen path, empty when cancelled; to save, with a suffix of `filter`, which is as QFileDialog has it.
  virtual QString openFile(QWidget* parent, const QString& title, const QString& filter) = 0;
  virtual QString saveFile(QWidget* parent, const QString& title, const QString& suggested,
                           const QString& filter) = 0;

  virtual void openUrl(const QString& url) = 0;

  // The PDF that the next print goes to without a preview; empty: show the preview.
  virtual QString takePrintTarget() = 0;

  virtual QDateTime now() = 0;
};

}  // namespace goodsbook
