#include "host/lookup/pickers.h"

namespace goodsbook {

void TFrm_Sys_LINK_DW::init(RecordSet* rows, QLabel* nameLabel, TExtEdit* edit, TExtEdit* nameEdit,
                            const QString& codeField, const QString& nameField, const QString& condition) {
  attach(edit, condition);
  setTarget({rows, codeField, nameField, nameLabel, nameEdit});
}

void TFrm_Sys_LINK_CK::init(RecordSet* rows, TExtEdit* edit, TExtEdit* nameEdit, const QString& codeField,
                            const QString& nameField, const QString& condition) {
  attach(edit, condition);
  setTarget({rows, codeField, nameField, nullptr, nameEdit});
}

}  // namespace goodsbook
