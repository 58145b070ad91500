#pragma once

#include <QString>

#include "host/export.h"

namespace goodsbook {

// Makes the Chinese text of a PDF that Qt wrote readable for searching and copying. Fonts draw a character
// like 米 and the dictionary radical ⽶ with one glyph, and Qt notes the radical as the glyph's text; this
// puts the character there. The file keeps its size and everything else. False when the file cannot be read
// or written.
GOODSBOOKHOST_EXPORT bool makeTextSearchable(const QString& pdf);

}  // namespace goodsbook
