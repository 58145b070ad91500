#pragma once

#include <string>
#include <string_view>

// Text as the database compares it: without regard to case and to full or half width, blanks at the end do
// not count. All texts are UTF-8.
namespace goodsbook {

// Key bytes of a text: comparing keys byte by byte is comparing texts. Appends to `key`.
void foldText(std::string_view text, std::string& key);

int compareFolded(std::string_view a, std::string_view b);  // < 0, 0, > 0
inline bool equalFolded(std::string_view a, std::string_view b) {
  return compareFolded(a, b) == 0;
}

// Whether a text has the form of a pattern already folded, in which % stands for any text and _ for one
// character.
bool likeFolded(std::string_view text, std::string_view foldedPattern);

}  // namespace goodsbook
