// The module's one entry, as the host calls it.
#include "examples/purchase/purchase_screen.h"
#include "host/U_glo.h"

extern "C" Q_DECL_EXPORT void ProcDLL1(const goodsbook::Trecord& record, QWidget* owner);

void ProcDLL1(const goodsbook::Trecord& record, QWidget* owner) {
  auto* screen = new example::PurchaseScreen(owner);
  screen->setAttribute(Qt::WA_DeleteOnClose);
  screen->Tag = record.module();
  screen->SetUserParam(record);
  screen->show();
}
