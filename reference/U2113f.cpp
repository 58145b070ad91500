#include "reference/U2113f.h"

#include "reference/U2113_1.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
const QuickFilter& filter() {
  static const QuickFilter filter = partnerFilter(u"F2113F"_s, TF2113_1::partner());
  return filter;
}
}  // namespace

TF2113F::TF2113F(QWidget* owner) : QuickFilterDialog(filter(), owner) {}

}  // namespace goodsbook
