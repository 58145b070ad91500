#include "reference/U2112f.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
const QuickFilter& filter() {
  static const QuickFilter filter{
      .caption = u"F2112F"_s,
      .label = QuickFilterDialog::tr("编号/名称/拼音码"),
      .columns = {u"D1101.YW_ID"_s, u"D1101.YW_NAME"_s, u"D1101.TEL"_s, u"D1101.PYM"_s}};
  return filter;
}
}  // namespace

TF2112F::TF2112F(QWidget* owner) : QuickFilterDialog(filter(), owner) {}

}  // namespace goodsbook
