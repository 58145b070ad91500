#pragma once

#include <sql.h>
#include <sqlext.h>

#include <span>
#include <string>

namespace goodsbook {

// Replaces `text` by UTF-16 as UTF-8. A half of a pair without its other half becomes U+FFFD.
void toUtf8(std::span<const SQLWCHAR> wide, std::string& text);

}  // namespace goodsbook
