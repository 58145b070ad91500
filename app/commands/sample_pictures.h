#pragma once

#include <string>
#include <string_view>

namespace goodsbook {

// A small JPEG that shows the text, in a colour that follows from the index. Needs a QGuiApplication.
std::string samplePicture(int index, std::string_view text);

}  // namespace goodsbook
