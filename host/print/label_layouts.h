#pragma once

#include <QString>
#include <vector>

#include "host/export.h"
#include "host/print/label_layout.h"

namespace goodsbook {

// A file with a layout, in the program or in its folder.
struct LabelLayoutFile {
  QString path;
  QString name;         // what the user chooses by: of a wrong one its file name
  bool shipped = true;  // false: the user's own
  LabelLayout layout;
  QString error;  // of a file that cannot be read or is wrong; the layout is empty then
};

// The shipped layouts, then those in the program's folder (*.label). A file there that has the name of a
// shipped one takes its place.
GOODSBOOKHOST_EXPORT std::vector<LabelLayoutFile> labelLayouts(const QString& programDir);

// Copies a layout into the program's folder, where the user can change it, and gives the new file; a file
// that is there already stays, the copy gets a number. std::runtime_error with a Chinese text on failure.
GOODSBOOKHOST_EXPORT QString copyLabelLayout(const LabelLayoutFile& layout, const QString& programDir);

}  // namespace goodsbook
