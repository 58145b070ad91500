#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

#include "host/controls/TDBGridEh.h"
#include "host/controls/cell_text.h"

namespace goodsbook {

class GridModel;
class GridPicks;

// Paints the cells of a grid and makes their editors.
class GridDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  GridDelegate(TDBGridEh* grid, GridModel* model, const GridPicks* picks);

  void setDraw(TDBGridEh::DrawColumnCell draw) { draw_ = std::move(draw); }
  QLineEdit* editor() const { return editor_; }  // null when no cell is edited
  bool hasInput() const;                         // the text of the editor is not what it began with
  // Puts the editor's text into the record set; false when it was refused and the user was told: the editor
  // has the focus then, if it is still there.
  bool commit(QLineEdit* editor);
  void close(QLineEdit* editor);
  // When the focus has just left this editor and its text was refused: gives it the focus back; true then.
  bool takeBackFocus(const QWidget* editor);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void destroyEditor(QWidget* editor, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;  // the whole text of a cell that is too narrow for it
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 Q_SIGNALS:
  void ellipsisClicked(int row, const QString& field) const;
  void enterPressed();  // after the cell was committed

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool read(QLineEdit* editor);       // commit() without its focus
  bool staysOpen(QLineEdit* editor);  // asked as the focus leaves it
  void paintFocus(QPainter* painter, const QStyleOptionViewItem& option) const;
  void paintCheckBox(QPainter* painter, QStyleOptionViewItem& option) const;
  void paintButton(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

  TDBGridEh* grid_;
  GridModel* model_;
  const GridPicks* picks_;
  TDBGridEh::DrawColumnCell draw_;
  mutable CellText texts_;
  mutable QPointer<QLineEdit> editor_;
  mutable QString shown_;  // what the editor began with: a text that was not touched is not written back
  mutable bool refused_ = false;
  QPointer<QLineEdit> leftRefused_;  // the focus left it although its text was refused
};

}  // namespace goodsbook
