#include "entry/U2100.h"

#include <QCoreApplication>
#include <QPointer>
#include <algorithm>
#include <array>
#include <memory>

#include "host/U_function.h"
#include "labels/U2102.h"
#include "products/U2101.h"
#include "reference/U2103.h"
#include "reference/U2104.h"
#include "reference/U2107.h"
#include "reference/U2108.h"
#include "reference/U2111.h"
#include "reference/U2112.h"
#include "reference/U2113.h"
#include "reference/U2114.h"
#include "reference/U2122.h"
#include "reference/U2123.h"
#include "reference/U2124.h"
#include "reference/U2125.h"

namespace goodsbook {
namespace {

// A screen that fails while it opens goes again, and the variable names the one before it; the host gets the
// exception.
template <class Screen>
void open(QPointer<Screen>& variable, const Trecord& record, QWidget* owner) {
  const QPointer<Screen> before = variable;
  auto screen = std::make_unique<Screen>(owner);
  variable = screen.get();
  screen->Tag = record.module();
  try {
    screen->InitForm(record);
  } catch (...) {
    variable = before;
    throw;
  }
  static_cast<void>(screen.release());  // it is its owner's now
}

struct Row {
  int module;
  void (*open)(const Trecord& record, QWidget* owner);
};

constexpr auto screens = std::to_array<Row>({
    {101, [](const Trecord& record, QWidget* owner) { open(F2101, record, owner); }},
    {102, [](const Trecord& record, QWidget* owner) { open(F2102, record, owner); }},
    {103, [](const Trecord& record, QWidget* owner) { open(F2103, record, owner); }},
    {104, [](const Trecord& record, QWidget* owner) { open(F2104, record, owner); }},
    {107, [](const Trecord& record, QWidget* owner) { open(F2107, record, owner); }},
    {108, [](const Trecord& record, QWidget* owner) { open(F2108, record, owner); }},
    {111, [](const Trecord& record, QWidget* owner) { open(F2111, record, owner); }},
    {112, [](const Trecord& record, QWidget* owner) { open(F2112, record, owner); }},
    {113, [](const Trecord& record, QWidget* owner) { open(F2113, record, owner); }},
    {114, [](const Trecord& record, QWidget* owner) { open(F2114, record, owner); }},
    {122, [](const Trecord& record, QWidget* owner) { open(F2122, record, owner); }},
    {123, [](const Trecord& record, QWidget* owner) { open(F2123, record, owner); }},
    {124, [](const Trecord& record, QWidget* owner) { open(F2124, record, owner); }},
    {125, [](const Trecord& record, QWidget* owner) { open(F2125, record, owner); }},
});

}  // namespace
}  // namespace goodsbook

void ProcDLL1(const goodsbook::Trecord& rec, QWidget* owner) {
  using namespace goodsbook;
  const Trecord record = rec;
  const auto row = std::ranges::find(screens, record.module(), &Row::module);
  if (row == screens.end()) {
    plainBox(QCoreApplication::translate("ProcDLL1", "模块未制作") + QString::number(record.module()));
    return;
  }
  row->open(record, owner);
}
