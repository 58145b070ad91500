#include "reference/quick_filter.h"

#include <QKeyEvent>
#include <QPushButton>

#include "host/forms/form_builder.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QuickFilterDialog::QuickFilterDialog(const QuickFilter& filter, QWidget* owner)
    : TFrm_Sys_Filter(owner), filter_(filter) {
  setWindowTitle(filter.caption);
  FormBuilder(*this).fields(
      {{.name = u"GYS_NAME"_s, .label = filter.label, .limit = 20, .width = 200, .labelName = u"Label1"_s}});
  FormCreate();
}

void QuickFilterDialog::btn_okClick() {
  TFrm_Sys_Filter::btn_okClick();
  resetCondition();
  const QString typed = text(u"GYS_NAME"_s);
  if (!typed.isEmpty()) {
    const QString like = u"like '%"_s + typed + u"%'"_s;
    QStringList parts;
    for (const QString& column : filter_.columns) parts << u'(' + column + u' ' + like + u')';
    conditionText = u'(' + parts.join(u" or"_s) + u')';
    displayText = filter_.label + u"    包含   "_s + typed;
  }
  setModalResult(QDialog::Accepted);
}

void QuickFilterDialog::FormKeyDown(QKeyEvent* event) {
  if (event->key() >= Qt::Key_F2 && event->key() <= Qt::Key_F4) {
    event->accept();
    btn_ok->click();
    return;
  }
  TFrm_Sys_Filter::FormKeyDown(event);
}

}  // namespace goodsbook
