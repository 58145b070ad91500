#pragma once

#include <QLabel>
#include <QTimer>

#include "host/controls/TDBGridEh.h"

namespace goodsbook {

class GridModel;

// Finding a row by typing in the current column of a grid that is not edited there. What was typed stands in
// a small hint until the user goes on to something else.
class GridSearch : public QObject {
  Q_OBJECT

 public:
  GridSearch(TDBGridEh* grid, GridModel* model);

  bool isActive() const { return !typed_.isEmpty(); }
  bool isPossible() const;  // the current cell is not edited by typing
  bool isOwnKey(const QKeyEvent& event) const;
  void setKeyField(const QString& field) { keyField_ = field; }
  int keyColumn() const;                   // -1: none, or not shown
  bool handleKey(const QKeyEvent& event);  // true when the key belonged to the search
  void type(const QString& text);          // of an input method, too
  bool begin(const QString& text);         // behind the current row
  void stop();

 private:
  bool isSearched(int column) const;
  int searchColumn() const;  // the current one, else the key's, else the first that can be; -1: none
  bool find(const QString& text, int from, int step);
  void showHint(bool found);

  TDBGridEh* grid_;
  GridModel* model_;
  QLabel* hint_;
  QTimer timeout_;
  QString typed_, keyField_;
  bool isMoving_ = false;
};

}  // namespace goodsbook
