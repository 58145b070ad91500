#pragma once

#include "host/export.h"
#include "host/lookup/picker.h"

// The pickers that screens name. `condition` narrows the rows offered (T-SQL, empty for all); a record set
// given takes code and name into its fields as well.
namespace goodsbook {

class GOODSBOOKHOST_EXPORT TFrm_Sys_LINK_CL : public LookupPicker {
  Q_OBJECT

 public:
  explicit TFrm_Sys_LINK_CL(QWidget* owner) : LookupPicker(lookup::categories(), owner) {}
  void init(TExtEdit* edit, const QString& condition = {}) { attach(edit, condition); }
};

class GOODSBOOKHOST_EXPORT TFrm_sys_LINK_BM : public LookupPicker {
  Q_OBJECT

 public:
  explicit TFrm_sys_LINK_BM(QWidget* owner) : LookupPicker(lookup::departments(), owner) {}
  void init(TExtEdit* edit, const QString& condition = {}) { attach(edit, condition); }
};

class GOODSBOOKHOST_EXPORT TFrm_Sys_LINK_YW : public LookupPicker {
  Q_OBJECT

 public:
  explicit TFrm_Sys_LINK_YW(QWidget* owner) : LookupPicker(lookup::salespeople(), owner) {}
  void init(TExtEdit* edit, const QString& condition = {}) { attach(edit, condition); }
};

class GOODSBOOKHOST_EXPORT TFrm_Sys_LINK_DW : public LookupPicker {
  Q_OBJECT

 public:
  explicit TFrm_Sys_LINK_DW(QWidget* owner) : LookupPicker(lookup::units(), owner) {}
  void init(RecordSet* rows, QLabel* nameLabel, TExtEdit* edit, TExtEdit* nameEdit, const QString& codeField,
            const QString& nameField, const QString& condition);
};

class GOODSBOOKHOST_EXPORT TFrm_Sys_LINK_CK : public LookupPicker {
  Q_OBJECT

 public:
  explicit TFrm_Sys_LINK_CK(QWidget* owner) : LookupPicker(lookup::warehouses(), owner) {}
  void init(RecordSet* rows, TExtEdit* edit, TExtEdit* nameEdit, const QString& codeField,
            const QString& nameField, const QString& condition);
};

}  // namespace goodsbook
