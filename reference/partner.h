#pragma once

#include <QString>
#include <vector>

#include "host/forms/Base_detail.h"
#include "reference/flat_list.h"
#include "reference/quick_filter.h"

namespace goodsbook {

class LinkLabel;

// What customers and suppliers differ in.
struct Partner {
  QString caption;
  QString table;  // "d1102"
  QString listStatement;
  QString codeTitle;    // heading of the code's column
  QString codeCaption;  // how messages name the code
  QString taken;        // the message for a code that is there already
  QString accountHead;  // "2131"
  bool hasSalesperson = false;

  QString deleteStatement() const;
  QString uniqueness() const;  // a select; the code and a quote follow
  // In `insert`, besides the elements' names, "{pym}" stands for the initials of the short name, "{number}"
  // for the number drawn for the partner's account and "{account}" for the account itself; in `update`,
  // "{row}" for the code of the list's current row.
  QString insert() const;
  QString update() const;
};

QuickFilter partnerFilter(const QString& caption, const Partner& partner);

class PartnerList : public FlatList {
  Q_OBJECT

 public:
  void InitForm(const Trecord& record) override;

 protected:
  PartnerList(const Partner& partner, QWidget* owner);
  void Act_DeleteExecute() override;
  virtual TFrm_Base_Detail* createEditor() = 0;
  virtual TFrm_Sys_Filter* createFilter() = 0;

 private:
  const Partner& partner_;
};

class PartnerEditor : public TFrm_Base_Detail {
  Q_OBJECT

 protected:
  PartnerEditor(const Partner& partner, QWidget* owner);
  void RefreshData() override;
  void SaveData() override;
  void showSaved() override;

 private:
  void declareFields();
  void Edit1Exit();
  void OPENURLClick();
  bool drawsNumber() const;  // codes are numbered, and this one is new
  void nameCodes();          // names the codes that the user has not passed

  const Partner& partner_;
  LinkLabel* OPENURL = nullptr;
  QString defaultDelivery_;
  QStringList missingCodes_;  // that do not exist, though the partner was saved with them
};

}  // namespace goodsbook
