#pragma once

#include <QElapsedTimer>
#include <optional>

#include "host/controls/TDBGridEh.h"
#include "host/forms/Base_dialog.h"
#include "products/string_list.h"

class QProgressBar;

namespace goodsbook {

class ImportRun;
class QuietRows;
class TIniPropStorageManEh;
class TPropStorageEh;
struct ImportDefaults;

// Products: new ones from a spreadsheet. The file's rows are shown in a grid first; OK makes a product of
// each. The dialog stays open, and its Cancel ends a run between two rows.
class TF2101_IMP : public TFrm_Base_Dialog {
  Q_OBJECT

 public:
  explicit TF2101_IMP(QWidget* owner = nullptr);
  ~TF2101_IMP() override;
  void InitForm(RecordSet* list);  // takes the products made; not owned

  RecordSet D_MAIN;  // COL1 to COL9, COL0: what stands in the file, and what became of the row

 protected:
  void FormCreate() override;
  void btn_okClick() override;
  void endSaved() override;
  void btn_CancelClick() override;
  void FormKeyDown(QKeyEvent* event) override;
  void FormClose() override;
  QString helpText() const override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // What a run comes to.
  struct Count {
    int read = 0, imported = 0, existing = 0, failed = 0;
    bool stopped = false;
  };
  class Busy;

  void buildHead();
  void buildGrid();
  void buildFoot();
  void fitReason();
  void Edt_pathButtonClick();
  void btn_refClick();
  void readFile(const QString& path);
  void addRow(const std::vector<QString>& cells);
  QString clearProducts();  // the path of the backup
  void showCleared();
  Count importRows(ImportRun& run);
  // False when the user does not want to go on behind a failed row.
  bool importRow(ImportRun& run, int row, Count& count, QuietRows& grid);
  bool wasImported(int row);                // by the run before, which did not hear of it
  void note(int row, const QString& text);  // in the row's sixth column
  ImportDefaults defaults() const;
  static QString endLine(const Count& count, const QString& backup);
  // Lets events through when it is time; false once the user has pressed Cancel.
  bool goesOn();

  RecordSet* list_ = nullptr;
  TDBGridEh* GRID1 = nullptr;
  QWidget* head_ = nullptr;
  QWidget* foot_ = nullptr;
  QPushButton* btn_ref = nullptr;
  QLabel* lab_hint = nullptr;
  QLabel* result_ = nullptr;
  QProgressBar* progress_ = nullptr;
  TIniPropStorageManEh* manager_ = nullptr;
  TPropStorageEh* storage_ = nullptr;
  QElapsedTimer sinceEvents_;
  bool busy_ = false;
  bool stop_ = false;
  // The row whose answer was lost; the next run asks about it before it sends it again.
  struct LostRow {
    int row = 0;
    QString save;
  };
  std::optional<LostRow> lostRow_;
};

}  // namespace goodsbook
