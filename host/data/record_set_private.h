#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "host/data/change_log.h"
#include "host/data/record_set.h"
#include "host/data/row_filter.h"
#include "host/data/row_order.h"
#include "host/data/row_table.h"

namespace goodsbook {

// What RecordSet's parts share: the rows, their orders, the place and the row that is being edited.
class RecordSet::Private {
 public:
  explicit Private(RecordSet& set) : q(set) {}

  RecordSet& q;
  State state = State::Closed;
  RowTable table;
  std::vector<Field> declared;
  quint64 epoch = 0;

  RowOrder base;                 // all rows, unsorted
  std::optional<RowOrder> view;  // what is visible, where that differs
  RowOrder baseline;             // `base` when the change log was last empty
  ChangeLog log;

  bool loading = false;
  std::uint32_t published = 0;

  int current = -1;
  bool triedBefore = false;
  bool triedBehind = false;

  QString sortField;
  bool sortDescending = false;
  QString filterText;
  bool filtered = false;
  std::optional<RowFilter> filter;

  // The row that is being edited: the current one.
  RowTable::Values buffer;
  bool touched = false;  // a value was set since the defaults
  RowRef returnTo = 0;   // where cancelling a new row goes back to
  bool hasReturn = false;

  int suspended = 0;  // by disableControls
  int resets = 0;     // those included

  RowOrder& rows() { return view ? *view : base; }
  const RowOrder& rows() const { return view ? *view : base; }
  bool isEditing() const { return state == State::Edit || state == State::Insert; }
  RowOrder postedRows() const;  // all rows but a new one that is not posted yet
  bool hasCurrent() const { return current >= 0; }
  RowRef currentRef() const { return rows().at(current); }
  int indexOf(const QString& fieldName) const;  // throws std::invalid_argument
  QVariant stored(int row, int field) const;    // of the edit buffer for the row that is being edited

  // --- signals to views
  bool tellsViews() const { return resets == 0; }
  void beginReset();
  void endReset();

  // Keeps views away while rows change altogether, also when an exception leaves the scope.
  class Reset {
   public:
    explicit Reset(Private& part) : part_(part) { part_.beginReset(); }
    ~Reset() { part_.endReset(); }
    Reset(const Reset&) = delete;
    Reset& operator=(const Reset&) = delete;

   private:
    Private& part_;
  };

  // --- structure and place; within a Reset where rows change altogether
  void drop();                          // forgets rows, edits, log; closed
  void replaceRows(RowTable newTable);  // open, at the first row
  void tellOpened();
  void resolveFilter();
  void rebuildView();
  bool passes(RowRef row) const { return !filtered || !filter || filter->accepts(table, row); }
  void rearrange();  // a Reset of its own; the current row stays current where it is still visible
  int positionOf(RowRef row, int hint) const;
  void setCurrent(int row);
  void goTo(int row);  // moves without posting; tells
  void tellScrolled();

  // --- editing
  static constexpr int nowhere = -1;
  int leaveEdit();  // posts or cancels; where the row stood when the filter took it away thereby, or
                    // `nowhere`
  void startNew(int position);
  int hideIfFilteredOut();
  void endEdit();
  void tellState();
};

}  // namespace goodsbook
