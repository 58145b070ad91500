#include "reference/U2114f.h"

#include "reference/U2114_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
const QuickFilter& filter() {
  static const QuickFilter filter = partnerFilter(u"F2114F"_s, TF2114_1::partner());
  return filter;
}
}  // namespace

TF2114F::TF2114F(QWidget* owner) : QuickFilterDialog(filter(), owner) {}

}  // namespace goodsbook
