#pragma once

#include <QPointer>

#include "host/forms/Base_qry.h"

namespace goodsbook {

class LinkLabel;
class TF2102F;

// Product labels: the set to print, one row a label. It is kept on this machine, from one opening to the
// next.
class TF2102 : public TFrm_Base_Qry {
  Q_OBJECT

 public:
  explicit TF2102(QWidget* owner = nullptr);
  ~TF2102() override;
  void InitForm(const Trecord& record) override;

 protected:
  void Act_LocateExecute() override;  // generate: the hang-tag dialog fills the set
  void Act_FilterExecute() override;  // empties the set
  void Act_PrintExecute() override;   // on labels, not as a list
  void FormClose() override;
  void FormDestroy() override;

 private:
  void Act_DeleteExecute();
  void AdoQry_MainAfterPost();  // a label is about to be posted
  void loadSet();
  void saveSet();
  void makeTags();
  void clearSet();

  LinkLabel* Label1;
  TF2102F* tags_ = nullptr;
  bool generation_ = false;  // "tmbq" of the settings: inverted each time labels are generated
};

extern QPointer<TF2102> F2102;  // the last one opened

}  // namespace goodsbook
