#pragma once

#include "entry/export.h"
#include "host/U_glo.h"

class QWidget;

// The module's one entry: opens the screen of the record's module number (101 to 125) under `owner`. A number
// without a screen gives a message and nothing else. What the screen throws while it opens passes through.
extern "C" MASTERDATA_EXPORT void ProcDLL1(const goodsbook::Trecord& rec, QWidget* owner);
