#pragma once

#include <QtGlobal>

// Classes that other modules of the host create by name. All else of the plug-in stays inside.
#define GOODSBOOK_PUBLISHED Q_DECL_EXPORT
