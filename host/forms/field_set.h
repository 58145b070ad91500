#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "host/data/record_set.h"
#include "host/export.h"

class QWidget;

namespace goodsbook {

struct LookupTable;

enum class FieldKind {
  Text,    // TCustomDBEditEh
  Number,  // TDBNumberEditEh
  Date,    // TDBDateTimeEditEh
  Lookup,  // TExtEdit
  Check,   // QCheckBox; the label is its caption
  Option,  // QRadioButton; the label is its caption
  Memo,    // QPlainTextEdit
  Value,   // QLabel that shows a value
};

enum class FieldCheck { None, Id, Float, FloatCanZero };

// One element of a screen, declared once: what it is, what may be typed, what is checked, which column it
// shows.
struct FieldSpec {
  QString name = {};   // the element's object name
  QString label = {};  // inner blanks count; becomes the buddy label before it
  FieldKind kind = FieldKind::Text;
  int limit = 0;                        // characters that can be typed, 0: none
  bool upper = false;                   // typed letters become upper case
  bool required = false;                // refused when blank, on leaving it and at OK
  FieldCheck check = FieldCheck::None;  // on leaving it
  // On leaving it towards anything but btn_Cancel, in place of `required` and `check` (those that it wants,
  // it calls itself). EAbort keeps the focus.
  std::function<void()> exit = {};
  bool code = false;       // OK runs `exit` first if the text has not passed it since it was changed
  QString column = {};     // field of the record set that it shows
  QString stored = {};     // column of the table that it is saved into, where that has another name
  QString nameLabel = {};  // lookups: element name of the label with the code's name
  QString nameColumn = {};
  const LookupTable* lookup = nullptr;  // lookups: where the codes come from (a picker's init sets it too)
  QString format = {};                  // numbers, and date columns of any kind: display format
  int places = -1;                      // numbers: decimal places that can be typed, -1: the edit's own
  std::optional<double> maximum = {};   // numbers: what `exit` refuses more than
  int width = 0;                        // pixels at 100 %, 0: by the limit
  bool sameRow = false;                 // stands behind the field before it
  bool readOnly = false;                // shown only, in every mode
  bool large = false;                   // in large type
  QString hint = {};                    // grey text behind it
  QString rowLabel = {};                // boxes: the label before them
  QString labelName = {};               // element name of the label, where it has one
};

// The declared fields of a screen: values to and from a record set, locks, required fields.
class GOODSBOOKHOST_EXPORT FieldSet {
 public:
  struct Bound {
    FieldSpec spec;
    QWidget* widget;
    bool passed = false;  // `exit` has been passed since the last change
  };

  void add(FieldSpec spec, QWidget* widget) { fields_.push_back({std::move(spec), widget}); }
  std::vector<Bound>& all() { return fields_; }
  const std::vector<Bound>& all() const { return fields_; }
  Bound* find(const QWidget* widget);

  void clear();  // empties every field and name label that has a column; boxes unchecked
  void load(
      const RecordSet& rows);  // from the current row; columns that the set does not have are left alone
  void store(RecordSet& rows) const;  // into the current row, without posting; likewise
  void setReadOnly(bool readOnly);    // all of them
  void lock(
      const QString& names);  // comma list, case ignored: read-only and out of the tab order; all others free

 private:
  std::vector<Bound> fields_;
};

// Text of an edit, label, box ("1"/"0") or memo; what kind of element it is does not matter to the caller.
GOODSBOOKHOST_EXPORT QString elementText(const QWidget* element);
GOODSBOOKHOST_EXPORT void setElementText(QWidget* element, const QString& text);
// Keeps its text from being changed by the user; such an element can be clicked but is not reached by Tab or
// Enter.
GOODSBOOKHOST_EXPORT void setElementReadOnly(QWidget* element, bool readOnly);

}  // namespace goodsbook
