#include "host/forms/Base_qry.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace goodsbook {

TFrm_Base_Qry::TFrm_Base_Qry(QWidget* owner) : ListScreen(owner) {
  setActionShown(u"Act_Locate"_s, true);
  setActionShown(u"Act_Filter"_s, true);
}

void TFrm_Base_Qry::GetData() {
  if (loadsOnOpen) ListScreen::GetData();
}

void TFrm_Base_Qry::showCondition(const QString& title) {
  ConditionTitle->setText(title);
  ConditionTitle->setVisible(!title.isEmpty());
}

}  // namespace goodsbook
