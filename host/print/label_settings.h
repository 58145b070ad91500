#pragma once

#include <QString>

#include "host/print/label_painter.h"

namespace goodsbook {

// What is remembered of label printing, in "label_print.ini" of the program's folder: the layout and the
// printer used last, and for each printer its dots, offset and scale.
namespace labelsettings {

// What a printer can be set to: millimetres in any direction, and times the size.
constexpr double farthest = 100, smallest = 0.5, largest = 2;

struct Choice {
  QString layout;   // file name of the layout
  QString printer;  // empty: a PDF
};

Choice lastChoice();
void rememberChoice(const Choice& choice);

LabelPrinter printerNamed(const QString& name);  // defaults for one that is not known yet
void rememberPrinter(const QString& name, const LabelPrinter& printer);

}  // namespace labelsettings

}  // namespace goodsbook
