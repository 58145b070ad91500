#pragma once

#include <QString>

#include "host/export.h"

class QWidget;

namespace goodsbook {

class TFrm_Base;

// Screens that one module of the program makes available to the others, by class name. A published class is
// exported by its plug-in and its constructor, which takes the owner, is Q_INVOKABLE.

// Whoever loads a plug-in calls this with its file: what it publishes can be made from then on. Telling a
// file twice does no harm.
GOODSBOOKHOST_EXPORT void publishScreensOf(const QString& pluginFile);

// A new screen of this class, owned by `owner` and not yet shown; null when no loaded plug-in publishes such
// a class.
GOODSBOOKHOST_EXPORT TFrm_Base* createPublished(const QString& className, QWidget* owner);

}  // namespace goodsbook
