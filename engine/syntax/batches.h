#pragma once

#include <string_view>
#include <vector>

namespace goodsbook::engine {

// One batch of a script file.
struct BatchText {
  std::string_view text;
  int line = 1;  // 1-based line of the script at which it starts
};

// Splits a script at the lines that hold nothing but GO (any case, blanks around it). Batches without a word
// are left out. A GO inside a text, a bracketed name or a comment does not split. LF and CR LF are line ends.
std::vector<BatchText> splitBatches(std::string_view script);

}  // namespace goodsbook::engine
