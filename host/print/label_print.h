#pragma once

#include <QString>

#include "host/data/record_set.h"
#include "host/export.h"
#include "host/print/label_pages.h"
#include "host/print/print_job.h"

class QWidget;

namespace goodsbook {

// Prints a set of labels, a row a label, with bar codes: fields WL_ID, TM, WL_NAME, WL_GG, DW_NAME, SJ,
// VIPSJ, CD. A dialog lets the user choose the layout and the printer and shows the pages before; where
// Desktop::takePrintTarget() names a PDF, the last choice prints there without it. An empty set is told, and
// so is what could not be printed as it should.
GOODSBOOKHOST_EXPORT void printLabels(QWidget* parent, const RecordSet& rows, const QString& title);

// The labels of a record set, for a job. The set has to outlive it.
GOODSBOOKHOST_EXPORT std::function<LabelRow(int)> labelRowsOf(const RecordSet& rows);

// Prints a job and gives what there is to say about it. Memory does not grow with the number of labels.
GOODSBOOKHOST_EXPORT LabelWarnings printLabelJob(QWidget* over, const QString& title, const LabelJob& job,
                                                 PrintPlace place);
void printTestPage(QWidget* over, const LabelJob& job, PrintPlace place);

}  // namespace goodsbook
