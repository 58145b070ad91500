#pragma once

#include "host/export.h"
#include "host/forms/list_screen.h"

namespace goodsbook {

// A list without an editor: what is shown comes from a query or from the screen itself. Act_Locate starts the
// query.
class GOODSBOOKHOST_EXPORT TFrm_Base_Qry : public ListScreen {
  Q_OBJECT

 public:
  explicit TFrm_Base_Qry(QWidget* owner = nullptr);

 protected:
  void GetData() override;                   // as the base, where loadsOnOpen is set
  void showCondition(const QString& title);  // the line above the grid

  int pageNo = 0;
  bool loadsOnOpen = false;
};

}  // namespace goodsbook
