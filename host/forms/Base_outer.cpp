#include "host/forms/Base_outer.h"

#include "host/U_function.h"
#include "host/forms/Base_detail.h"
#include "host/forms/row_delete.h"
#include "host/forms/row_uses.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

bool TFrm_Base_Outer::onRow() const {
  return AdoQry_Main.currentRow() >= 0;
}

void TFrm_Base_Outer::openEditor(const QString& mode) {
  if (!editor() || (mode != "Add"_L1 && !onRow())) return;
  const QPointer<TFrm_Base_Outer> self = this;
  editor()->setListStatement(listStatement());
  editor()->InitForm(mode, AdoQry_Main);
  if (self) DBGridEh->setFocus();
}

void TFrm_Base_Outer::Act_DeleteExecute() {
  if (!onRow()) return;
  const QString key = AdoQry_Main.text(bodyParam(bodyparam::keyField));
  const QString question = tr("是否删除【%1】?").arg(rowName(*this, AdoQry_Main));
  if (DISPINFO(question + usesLine(*this, key), 2) != 'y') return;
  deleteByTemplate(*this, key);
  AdoQry_Main.remove();
}

}  // namespace goodsbook
