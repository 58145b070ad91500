#pragma once

#include "reference/tree_table.h"

namespace goodsbook {

class TF2107_2;

// Warehouses: the editor. The users' rights on the warehouse are saved in the same batch as its row.
class TF2107_1 : public TreeTableEditor {
  Q_OBJECT

 public:
  explicit TF2107_1(QWidget* owner = nullptr);

  static const TreeTable& table();

 protected:
  QString furtherStatements() override;

 private:
  void BTN_QSClick();

  TF2107_2* rights_;  // lives as long as the editor: ticks survive until another warehouse is opened
  QPushButton* BTN_QS;
};

}  // namespace goodsbook
