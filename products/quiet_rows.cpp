#include "products/quiet_rows.h"

#include <algorithm>

namespace goodsbook {
namespace {

constexpr qint64 soonestMs = 200;
constexpr qint64 share = 20;

}  // namespace

QuietRows::QuietRows(RecordSet* rows) : rows_(rows) {
  if (rows_) rows_->disableControls();
  sinceShown_.start();
}

QuietRows::~QuietRows() {
  if (rows_) rows_->enableControls();
}

void QuietRows::show() {
  if (sinceShown_.elapsed() >= std::max(soonestMs, costMs_ * share)) showNow();
}

void QuietRows::showNow() {
  if (!rows_) return;
  sinceShown_.start();
  rows_->enableControls();
  rows_->disableControls();
  costMs_ = sinceShown_.restart();
}

}  // namespace goodsbook
