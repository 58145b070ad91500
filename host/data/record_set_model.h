#pragma once

#include <QAbstractTableModel>
#include <QPointer>
#include <vector>

#include "host/data/record_set.h"
#include "host/export.h"

namespace goodsbook {

struct RecordSetColumn {
  QString field;                 // a name the set does not have shows empty cells
  QString title;                 // empty: the field's label, else its name
  QString format;                // empty: the field's display format
  Qt::Alignment alignment = {};  // none: text left, numbers right, flags centred
  bool editable = false;
  bool checkBox = false;  // shows a flag as a box instead of text
};

// Shows a record set to views. Texts are made when a cell is painted. Model row and row of the set are the
// same number. The set must outlive the model or the model be given another one.
class GOODSBOOKHOST_EXPORT RecordSetModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit RecordSetModel(QObject* parent = nullptr);
  ~RecordSetModel() override;

  void setRecordSet(RecordSet* rows);
  RecordSet* recordSet() const { return rows_; }
  void setColumns(std::vector<RecordSetColumn> columns);
  const std::vector<RecordSetColumn>& columns() const { return columns_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // Makes the row current and puts the value into its edit buffer; posting is the set's business. False,
  // after editRefused where there is something to say, when the value is refused.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

 Q_SIGNALS:
  void editRefused(const QString& text);

 private:
  int fieldOf(int column) const;
  void resolveFields();

  QPointer<RecordSet> rows_;
  std::vector<RecordSetColumn> columns_;
  std::vector<int> fields_;  // index in the set, by column
};

}  // namespace goodsbook
