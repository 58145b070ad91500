#include "reference/U2114f.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
const QuickFilter& filter() {
  static const QuickFilter filter{
      .caption = u"F2114F"_s,
      .label = QuickFilterDialog::tr("供应商代号/名称/联系人/电话/拼音码"),
      .columns = {u"d1103.KH_GYS_ID"_s, u"d1103.KG_NAME"_s, u"d1103.FZR"_s, u"d1103.pym"_s, u"d1103.TEL"_s}};
  return filter;
}
}  // namespace

TF2114F::TF2114F(QWidget* owner) : QuickFilterDialog(filter(), owner) {}

}  // namespace goodsbook
