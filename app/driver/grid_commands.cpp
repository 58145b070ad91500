#include <QHeaderView>
#include <QJsonArray>
#include <QPointer>
#include <QTreeView>
#include <algorithm>

#include "app/driver/driver.h"
#include "app/driver/elements.h"
#include "app/driver/input.h"
#include "app/driver/table.h"
#include "app/driver/tree_nodes.h"
#include "host/controls/TDBGridEh.h"
#include "host/data/record_set.h"
#include "host/forms/Base.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

void requireRow(RecordSet& set, int row) {
  set.waitForAll();
  if (row < 0 || row >= set.rowCount()) throw CommandError(DriverTexts::tr("没有第 %1 行").arg(row));
}

void requireColumn(const TDBGridEh& grid, const QString& field) {
  if (grid.columnOf(field) < 0) throw CommandError(DriverTexts::tr("没有列 %1").arg(field));
}

QString titleOf(const GridColumn& column, const RecordSet& set) {
  if (!column.title.isEmpty()) return column.title;
  const int index = set.fieldIndex(column.field);
  return index >= 0 && !set.field(index).label.isEmpty() ? set.field(index).label : column.field;
}

QJsonArray columnsOf(const TDBGridEh& grid) {
  QJsonArray columns;
  for (const GridColumn& column : grid.columns()) {
    const int index = grid.columnOf(column.field);
    const bool visible = !grid.isColumnHidden(index);
    columns.append(QJsonObject{{u"field"_s, column.field},
                               {u"title"_s, titleOf(column, *grid.recordSet())},
                               {u"width"_s, visible ? grid.columnWidth(index) : column.width},
                               {u"visible"_s, visible},
                               {u"readonly"_s, column.readOnly || grid.isReadOnly()}});
  }
  return columns;
}

// Without a grid every field counts as a column that is not shown.
QJsonArray columnsOf(const RecordSet& set) {
  QJsonArray columns;
  for (int i = 0; i < set.fieldCount(); ++i) {
    const Field& field = set.field(i);
    columns.append(QJsonObject{{u"field"_s, field.name},
                               {u"title"_s, field.label.isEmpty() ? field.name : field.label},
                               {u"width"_s, 0},
                               {u"visible"_s, false},
                               {u"readonly"_s, true}});
  }
  return columns;
}

// Fields in upper case and how their values are shown: a column's own format goes before the field's.
struct ShownField {
  QString name;
  int field = 0;
  int column = -1;  // of the grid, when that formats the value itself
};

std::vector<ShownField> shownFields(const Rows& rows) {
  std::vector<ShownField> fields;
  for (int i = 0; i < rows.set->fieldCount(); ++i) {
    ShownField shown{rows.set->field(i).name.toUpper(), i, -1};
    if (rows.grid) {
      const int column = rows.grid->columnOf(rows.set->field(i).name);
      const bool formats =
          column >= 0 && !rows.grid->columns()[static_cast<std::size_t>(column)].displayFormat.isEmpty();
      if (formats) shown.column = column;
    }
    fields.push_back(shown);
  }
  return fields;
}

QJsonObject rowObject(const Rows& rows, const std::vector<ShownField>& fields, int row) {
  QJsonObject object;
  for (const ShownField& shown : fields) {
    QString text = rows.set->textAt(row, shown.field);
    if (shown.column >= 0) {
      const QAbstractItemModel* model = rows.grid->model();
      text = model->data(model->index(row, shown.column), Qt::DisplayRole).toString();
    }
    object.insert(shown.name, text);
  }
  return object;
}

// A record set that belongs to no window is read without one, too.
Rows readableRows(Driver& driver, const QString& name) {
  if (!driver.addressing().foremost() && driver.kept(name)) return {driver.kept(name), nullptr};
  return findRows(driver, driver.addressing().addressed(), name);
}

bool hasTree(Driver& driver, const QString& name) {
  if (!driver.addressing().foremost()) return false;
  const std::vector<QWidget*> elements = namedElements(driver.addressing().addressed());
  return std::ranges::any_of(elements, [&](const QWidget* element) {
    return element->objectName().compare(name, Qt::CaseInsensitive) == 0 &&
           qobject_cast<const QTreeView*>(element);
  });
}

Step listRows(Driver& driver, const Arguments& arguments) {
  const QString name = arguments.text("element");
  const int offset = arguments.optionalInteger("offset").value_or(0);
  const int limit = arguments.optionalInteger("limit").value_or(std::numeric_limits<int>::max());
  if (offset < 0 || limit < 0) throw CommandError(DriverTexts::tr("offset 和 limit 不能为负数"));
  if (hasTree(driver, name)) {
    return {.actions = {}, .answer = [&driver, name, offset, limit] {
              return treeRows(findTree(driver.addressing().addressed(), name), offset, limit);
            }};
  }
  const Rows found = readableRows(driver, name);
  return {.actions = {[set = QPointer(found.set)] {
            if (set) set->waitForAll();
          }},
          .answer = [&driver, name, offset, limit] {
            const Rows rows = readableRows(driver, name);
            const std::vector<ShownField> fields = shownFields(rows);
            const int count = rows.set->rowCount();
            const int end = limit < count - std::min(offset, count) ? offset + limit : count;
            QJsonArray list;
            for (int row = offset; row < end; ++row) list.append(rowObject(rows, fields, row));
            return QJsonObject{{u"count"_s, count},
                               {u"current"_s, rows.set->currentRow()},
                               {u"columns"_s, rows.grid ? columnsOf(*rows.grid) : columnsOf(*rows.set)},
                               {u"rows"_s, list}};
          }};
}

Step goToRow(Driver& driver, const Arguments& arguments) {
  QWidget& window = driver.addressing().reachable();
  const int row = arguments.integer("index");
  const Rows rows = findRows(driver, window, arguments.text("element"));
  requireRow(*rows.set, row);
  return {.actions = {[set = QPointer(rows.set), window = QPointer(&window), row] {
            guarded(window, [&] {
              if (set) set->moveTo(row);
            });
          }},
          .answer = [set = QPointer(rows.set), row] {
            if (set && set->currentRow() != row)
              throw CommandError(DriverTexts::tr("不能到第 %1 行").arg(row));
            return QJsonObject();
          }};
}

Step selectRows(Driver& driver, const Arguments& arguments) {
  TDBGridEh& grid = findGrid(driver.addressing().reachable(), arguments.text("element"));
  const std::vector<int> rows = arguments.integers("rows");
  if (!grid.recordSet()) throw CommandError(DriverTexts::tr("表格 %1 没有数据").arg(grid.objectName()));
  for (const int row : rows) requireRow(*grid.recordSet(), row);
  return {.actions = {[target = QPointer(&grid), rows] {
            if (!target) return;
            target->clearSelectedRows();
            for (const int row : rows) target->selectRow(row);
          }}};
}

struct Cell {
  TDBGridEh* grid = nullptr;
  int row = 0;
  QString field;
};

Cell findCell(Driver& driver, const Arguments& arguments) {
  const Cell cell{&findGrid(driver.addressing().reachable(), arguments.text("element")),
                  arguments.integer("row"), arguments.text("field")};
  requireUsable(*cell.grid);
  requireColumn(*cell.grid, cell.field);
  if (!cell.grid->recordSet())
    throw CommandError(DriverTexts::tr("表格 %1 没有数据").arg(cell.grid->objectName()));
  requireRow(*cell.grid->recordSet(), cell.row);
  return cell;
}

Step editCell(Driver& driver, const Arguments& arguments) {
  const Cell cell = findCell(driver, arguments);
  return {.actions = {[grid = QPointer(cell.grid), cell, text = arguments.text("text")] {
            if (!grid) return;
            giveFocus(*grid);
            if (!grid->editCell(cell.row, cell.field, text)) {
              throw CommandError(DriverTexts::tr("第 %1 行的列 %2 不能修改").arg(cell.row).arg(cell.field));
            }
          }}};
}

Step clickCell(Driver& driver, const Arguments& arguments) {
  const Cell cell = findCell(driver, arguments);
  return {.actions = {[grid = QPointer(cell.grid), cell, twice = arguments.flag("double", false)] {
            if (!grid) return;
            giveFocus(*grid);
            grid->clickCell(cell.row, cell.field, twice);
          }}};
}

constexpr Command commands[] = {{"rows", listRows},
                                {"row", goToRow},
                                {"select", selectRows},
                                {"cell", editCell},
                                {"cellclick", clickCell}};

}  // namespace

std::span<const Command> gridCommands() {
  return commands;
}

}  // namespace goodsbook
