#include "reference/U2113f.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
const QuickFilter& filter() {
  static const QuickFilter filter{
      .caption = u"F2113F"_s,
      .label = QuickFilterDialog::tr("客户代号/名称/联系人/电话/拼音码"),
      .columns = {u"d1102.KH_GYS_ID"_s, u"d1102.KG_NAME"_s, u"d1102.FZR"_s, u"d1102.pym"_s, u"d1102.TEL"_s}};
  return filter;
}
}  // namespace

TF2113F::TF2113F(QWidget* owner) : QuickFilterDialog(filter(), owner) {}

}  // namespace goodsbook
