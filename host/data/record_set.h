#pragma once

#include <QObject>
#include <QString>
#include <QVariant>
#include <memory>
#include <span>
#include <vector>

#include "engine/row.h"
#include "host/data/field.h"
#include "host/export.h"

namespace goodsbook {

// The in-memory table of all screens: rows with named, typed fields, a current row, an edit state and a
// change log. Loaded rows lie in typed columns, edits over them row by row; sorting and filtering are
// permutations, so that a million rows cost little more than their values.
//
// "Row" numbers are positions in the visible order (after filter and sort), 0-based. A bookmark names a row
// for as long as the set is open, whatever the order. Values are QVariant: null (invalid), QString,
// qlonglong, double, bool, QDateTime or QByteArray by the field's type; setValue converts and throws
// EDatabaseError (number 245) with a text for the user when it cannot. A field's size limits what is typed,
// not what the program puts there. A number that was set as text keeps that text ("0.50") for textAt and for
// newValues of the change log until the log is merged. Unknown field names throw std::invalid_argument.
//
// Signals come in two kinds. Events (beforeScroll, afterScroll, newRecord, beforePost, afterPost,
// validateField, opened, closed) always reach screens; handlers may throw EAbort. View signals (aboutToReset,
// wasReset, the row signals, currentRowChanged, stateChanged) are held back while controls are disabled.
class GOODSBOOKHOST_EXPORT RecordSet : public QObject {
  Q_OBJECT

 public:
  enum class State { Closed, Browse, Edit, Insert };
  using Bookmark = qint64;

  // One row of the change log, oldest first. Values are by field index.
  struct Change {
    enum class Kind { Inserted, Updated, Deleted } kind;
    std::vector<QVariant> oldValues;  // as loaded; empty for Inserted
    std::vector<QVariant>
        newValues;                // Updated: only the changed fields are valid-or-null set, others !isChanged
    std::vector<bool> isChanged;  // Updated and Inserted: which of newValues were set
  };

  explicit RecordSet(QObject* parent = nullptr);
  ~RecordSet() override;

  // --- structure
  void create(std::vector<Field> fields);  // opens it empty
  void close();
  bool isOpen() const;  // "active"
  State state() const;
  int fieldCount() const;
  int fieldIndex(const QString& name) const;  // -1 when there is none; ignores case
  bool hasField(const QString& name) const { return fieldIndex(name) >= 0; }
  const Field& field(int index) const;
  void setFieldFormat(const QString& name, const QString& displayFormat);

  // Fields declared by a screen before a select is opened: label, format, size are kept for columns of the
  // same name.
  void declareFields(std::vector<Field> fields);
  const std::vector<Field>& declaredFields() const;

  // --- loading (used by opensql and the progressive loader)
  void beginLoad(std::span<const engine::Column> columns);
  void appendLoaded(const engine::Row& row);
  void publishLoaded();  // shows the rows that came since; opens the set, at the first row, where it is not
                         // open yet
  void endLoad();        // publishes the rest and, where a sort is set, applies it
  bool isLoading() const;
  quint64 loadEpoch() const;      // another number for every new contents, so that a stale load can tell
  Q_SIGNAL void waitRequested();  // whoever loads in slices brings all remaining rows before it returns
  void waitForAll();              // returns when every row is there

  // --- navigation
  int rowCount() const;  // visible rows
  bool isEmpty() const { return rowCount() == 0; }
  int currentRow() const;  // -1 when there is none
  bool bof() const;        // the last move tried to go before the first row, or the set is empty
  bool eof() const;        // the last move tried to go behind the last row, or the set is empty
  void first();
  void last();
  void next();
  void prior();
  void moveTo(int row);  // clamped
  bool locate(const QString& fieldName,
              const QVariant& value);  // without regard to case; the current row stays if not found
  Bookmark bookmark() const;
  Bookmark bookmarkAt(int row) const;
  bool gotoBookmark(Bookmark bookmark);  // false when that row is gone
  // -1 when it is gone or not visible. Looked for at the current row first, then everywhere.
  int rowOf(Bookmark bookmark) const;

  // --- values of the current row (of the edit buffer while editing)
  QVariant value(const QString& fieldName) const;
  QString text(const QString& fieldName) const;    // by the display format; empty for null
  qint64 integer(const QString& fieldName) const;  // 0 for null
  double number(const QString& fieldName) const;   // 0 for null
  bool flag(const QString& fieldName) const;       // false for null
  bool isNull(const QString& fieldName) const;
  // --- values of any row
  QVariant valueAt(int row, int fieldIndex) const;
  QString textAt(int row, int fieldIndex,
                 const QString& format = {}) const;  // a format given here goes before the field's

  // --- editing; moving away from a row that is being edited posts it, unless nothing was changed: then it is
  // left as it was, and a new row into which nothing was put but its defaults vanishes
  void append();                                                   // a new row behind the last
  void insert();                                                   // a new row before the current one
  void edit();                                                     // on an empty set appends
  void setValue(const QString& fieldName, const QVariant& value);  // calls edit() when browsing
  void post();
  void cancel();
  void remove();            // the current row; the next one becomes current
  void clear();             // removes all rows, change log included
  bool isModified() const;  // the edit buffer differs from the row; for a new row, from its defaults

  // --- change log
  bool hasChanges() const;  // posted changes since loading or merging
  // Several edits of one row are one change; a row added and removed again is none, nor is one that came back
  // to what it was.
  std::vector<Change> changes() const;
  void mergeChangeLog();  // posts first; what is there now is what CancelUpdates returns to
  void CancelUpdates();   // an edit that is under way included

  // --- order and choice. Both outlast a new load as far as its fields allow; the current row stays current
  // where it can. The sort is stable and is done once: a row that is edited or added later stays where it is
  // until the next setSort. The filter is applied to every row that is posted.
  void setSort(const QString& fieldName, bool descending);  // empty name: the loaded order
  QString sortField() const;
  bool sortDescending() const;
  // "field=field", "field='text'", "field<>number", < > <= >= like, is null; joined by and, or, not and
  // parentheses; false and nothing changed when it cannot be read. An empty text takes the filter away.
  bool setFilter(const QString& filter);
  QString filter() const;
  void setFiltered(bool on);
  bool isFiltered() const;

  // While updates are suspended no signal reaches the views; resuming resets them. Calls nest.
  void disableControls();
  void enableControls();
  bool controlsDisabled() const;

  // --- files: versioned, checksummed, written atomically; loading refuses damaged input and changes nothing
  // then. Both throw std::runtime_error with a Chinese text.
  void saveToFile(const QString& path) const;
  void loadFromFile(const QString& path);

  // A deep copy of structure and rows, all of them in their unsorted order, without change log, sort and
  // filter.
  void assignFrom(const RecordSet& other);
  // Takes structure and rows out of a set that was loaded aside, as if they had been loaded here; `loaded` is
  // closed.
  void adopt(RecordSet& loaded);

  double sum(const QString& fieldName) const;  // over the visible rows; nulls count nothing
  qint64 memoryBytes() const;                  // held for rows

  int tag = 0;  // free for screens and host checks

 Q_SIGNALS:
  void aboutToReset();  // structure, rows or order are about to change altogether
  void wasReset();      // ... and have changed; views start anew, at currentRow()
  void opened();        // new structure or new rows
  void aboutToInsertRows(int first, int last);
  void rowsInserted();
  void aboutToRemoveRows(int first, int last);
  void rowsRemoved();
  void rowChanged(int row);
  void orderChanged();  // sort or filter changed, after wasReset
  void beforeScroll();
  void afterScroll(int row);        // another row became current; -1 when there is none any more
  void currentRowChanged(int row);  // the same for views
  void stateChanged();
  void newRecord();   // handlers set defaults with setValue
  void beforePost();  // handlers may throw EAbort
  void afterPost();
  void validateField(const QString& fieldName);  // after a value was set in the edit buffer
  void closed();

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace goodsbook
