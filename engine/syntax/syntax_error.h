#pragma once

#include <cstdint>
#include <string_view>

#include "engine/syntax/token.h"

// The messages of the front end. All throw SqlError of severity 15 with the line of `place`.
namespace goodsbook::engine {

// 102, or 156 where the word is a reserved one, or what the lexer found where it is an Invalid one.
[[noreturn]] void throwSyntaxError(const Token& near);

// 40510: `what` is T-SQL that this engine does not do.
[[noreturn]] void throwNotSupported(const Token& place, std::string_view what);

// 191.
[[noreturn]] void throwTooDeep(const Token& place);

// 4145: a value stands where a condition is needed.
[[noreturn]] void throwConditionNeeded(const Token& near);

// 111: CREATE PROCEDURE is not the first statement of its batch.
[[noreturn]] void throwNotFirst(const Token& place, std::string_view statement);

// 1001 and others whose text is all there is to say.
[[noreturn]] void throwAt(const Token& place, int number, std::string_view text);

}  // namespace goodsbook::engine
