#pragma once

#include <vector>

#include "host/export.h"
#include "host/forms/field_set.h"

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLayout;
class QWidget;

namespace goodsbook {

class TFrm_Base_Common;

// Lays declared fields out: labels right-aligned in one column, fields in the next, further fields of the
// same row in columns of their own. Makes each element, binds it to the screen (exit check, limits, changes)
// and gives it its name.
//
//   FormBuilder(*this).fields({
//       {.name = u"Edit1"_s, .label = tr("单位编号"), .limit = 2, .upper = true, .exit = [this] {
//       Edit1Exit(); },
//        .code = true, .column = u"dw_id"_s},
//       {.name = u"Edit2"_s, .label = tr("单位名称"), .limit = 6, .required = true, .column = u"dw_name"_s},
//   });
class GOODSBOOKHOST_EXPORT FormBuilder {
 public:
  explicit FormBuilder(TFrm_Base_Common& screen);        // into the screen's body, below what is there
  FormBuilder(TFrm_Base_Common& screen, QWidget* area);  // into a part of its own, whose layout it becomes

  FormBuilder& fields(std::vector<FieldSpec> specs);  // in tab order
  QWidget* field(FieldSpec spec);
  QLabel* note(const QString& name, const QString& text);  // a line of explanation over the whole width
  void wide(QWidget* widget, int stretch = 0);             // any element over the whole width
  void wide(QLayout* layout);

 private:
  void prepareGrid();
  void bind(const FieldSpec& spec, QWidget* element);
  QHBoxLayout* cellFor(const FieldSpec& spec, QWidget* element);
  void addLabel(const FieldSpec& spec, QWidget* buddy);

  TFrm_Base_Common& screen_;
  QWidget* area_;
  QGridLayout* grid_;
  QHBoxLayout* cell_ = nullptr;  // of the field before
  int row_ = -1;
  int column_ = 0;
};

}  // namespace goodsbook
