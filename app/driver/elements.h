#pragma once

#include <QJsonObject>
#include <QString>
#include <vector>

class QAction;
class QObject;
class QTreeView;
class QWidget;

namespace goodsbook {

class Driver;
class RecordSet;
class TDBGridEh;

// Finding and describing what a window is made of. Elements of other windows that the window owns (its
// editor, its pickers) do not belong to it; those of parts embedded in it do. A name is taken as written,
// else without regard to case when that names one element only. What is not found is a CommandError that
// names it.
QWidget& findElement(const QWidget& window, const QString& name);
std::vector<QWidget*> namedElements(const QWidget& window);
QJsonObject describeElement(const QWidget& element, const QWidget& window);
QString textOf(const QWidget& element);  // caption or edited text

QAction& findAction(const QWidget& window, const QString& name);
std::vector<QAction*> namedActions(const QWidget& window);

// A grid, or a record set of the window or one that the driver keeps; `grid` is null when no grid of the
// window shows it.
struct Rows {
  RecordSet* set = nullptr;
  TDBGridEh* grid = nullptr;
};
Rows findRows(const Driver& driver, const QWidget& window, const QString& name);
TDBGridEh& findGrid(const QWidget& window, const QString& name);
QTreeView& findTree(const QWidget& window, const QString& name);  // the window's first one for an empty name

QString classNameOf(const QObject& object);  // without its namespace

// The named element that has the keyboard, itself or through an unnamed part of it; empty when none has.
QString focusedElement(const QWidget& window);

}  // namespace goodsbook
