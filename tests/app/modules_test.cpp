#include "app/modules.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

std::vector<int> numbers(const QString& text) {
  std::vector<int> found;
  for (const Module* module : findModules(text)) found.push_back(module->number);
  return found;
}

TEST(Modules, AreFoundByNumberNameAndInitials) {
  EXPECT_EQ(numbers(u"103"_s), (std::vector<int>{103}));
  EXPECT_EQ(numbers(u"jldw"_s), (std::vector<int>{103}));
  EXPECT_EQ(numbers(u"仓库"_s), (std::vector<int>{107}));
  EXPECT_EQ(numbers(u" 货币 "_s), (std::vector<int>{125}));
  EXPECT_TRUE(numbers(u"没有这个"_s).empty());
}

TEST(Modules, WhatBeginsWithTheTextComesFirst) {
  const std::vector<int> found = numbers(u"gys"_s);
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found.front(), 114);
}

TEST(Modules, AllAreFoundForAnEmptyText) {
  EXPECT_EQ(numbers({}).size(), 14U);
}

}  // namespace
}  // namespace goodsbook
