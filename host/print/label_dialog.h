#pragma once

#include <QTimer>
#include <memory>
#include <vector>

#include "host/controls/TDBGridEh.h"
#include "host/forms/Base_dialog.h"
#include "host/print/label_check.h"
#include "host/print/label_layouts.h"
#include "host/print/label_pages.h"
#include "host/print/print_job.h"

class QComboBox;
class QPlainTextEdit;

namespace goodsbook {

class LabelPreview;

// Choice of layout, printer and first label, with the pages as they will be and what could go wrong.
class LabelDialog : public TFrm_Base_Dialog {
  Q_OBJECT

 public:
  // `rows` outlive the dialog.
  LabelDialog(QWidget* owner, const RecordSet& rows, const QString& title);

 protected:
  void btn_okClick() override;
  void FormKeyDown(QKeyEvent* event) override;
  void FormClose() override;
  void AllChange() override;
  QString helpText() const override;

 private:
  void buildChoices();
  void buildPages();
  void readLayouts(const QString& current);
  void showPrinter();
  void choicesChanged();
  void checkAnew();
  void showFound();
  void showPage(int page);
  // What is wrong with a number typed; empty for none. All: the first that is, with its field.
  QString wrongNumber(const QString& name) const;
  QString wrongNumber(QWidget** field = nullptr) const;
  void checkNumber(const QString& name);  // on leaving it
  void copyLayout();
  void printTest();
  const LabelLayoutFile& layoutFile() const;
  LabelPrinter printer() const;
  LabelJob job();  // EAbort, told before, when the layout or a number is wrong
  void remember() const;
  QString printerName() const;  // empty: a PDF
  PrintPlace place();           // EAbort when no file was chosen
  LabelJob jobOf(const LabelLayout& layout) const;

  const RecordSet& rows_;
  QString title_;
  std::vector<LabelLayoutFile> files_;
  RecordSet layouts_;
  TDBGridEh* layoutGrid_ = nullptr;
  QComboBox* printers_ = nullptr;
  QComboBox* resolutions_ = nullptr;
  LabelPreview* preview_ = nullptr;
  QPlainTextEdit* warnings_ = nullptr;
  int page_ = 0;
  std::unique_ptr<LabelCheck> check_;  // of what is chosen now; null when that cannot be printed
  QTimer checking_;
};

}  // namespace goodsbook
