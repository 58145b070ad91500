#pragma once

#include <string>

namespace goodsbook::schema {

inline constexpr const char* roleName = "goodsbook_user";

// T-SQL for a server: makes the role, or brings it up to date, that the program needs there. It may read and
// write the rows of the program's tables and run SYS_DW; the record of changes it may add to but not change.
std::string roleScript();

}  // namespace goodsbook::schema
