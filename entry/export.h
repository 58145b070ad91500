#pragma once

#include <QtGlobal>

// The entry and the screens that other modules of the host use by name. All else stays inside.
#define MASTERDATA_EXPORT Q_DECL_EXPORT
