#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <vector>

#include "host/data/errors.h"
#include "host/data/sql_sets.h"

inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

namespace goodsbook::test {

using Rows = std::vector<std::vector<QString>>;  // "NULL" for NULL

// The rows of the last set.
inline Rows texts(const SqlSets& answer) {
  Rows result;
  if (answer.sets.empty()) return result;
  for (const auto& row : answer.sets.back().rows) {
    auto& line = result.emplace_back();
    for (const auto& value : row) line.push_back(value.value_or(QStringLiteral("NULL")));
  }
  return result;
}

// The error that a piece of work has to end with.
template <typename Work>
EDatabaseError failure(Work&& work) {
  try {
    work();
  } catch (const EDatabaseError& error) {
    return error;
  }
  ADD_FAILURE() << "no error";
  return {0, 0, 0, 0, {}};
}

}  // namespace goodsbook::test
