#pragma once

#include <string>

#include "tests/engine/support/cases.h"
#include "tests/engine/support/session.h"

// Whether an answer is the recorded one; differences are failures of the running test.
namespace goodsbook::engine::test {

void compareSet(const ResultSet& set, const CaseSet& recorded, const Case& test);
void compareError(const Diagnostic& error, const Case& test);

// Counts of batches with conditions and procedures are not recorded.
bool countsAreRecorded(const Case& test, const std::string& batch);

}  // namespace goodsbook::engine::test
