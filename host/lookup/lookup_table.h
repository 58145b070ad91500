#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "host/export.h"

namespace goodsbook {

// A table of short codes and names that lookup edits choose from.
struct GOODSBOOKHOST_EXPORT LookupTable {
  QString caption = {};        // "商品类别"
  QString table = {};          // "D1004"
  QString idField = {};        // "CLASS_ID"
  QString nameField = {};      // "CLASS_NAME"
  QString initialsField = {};  // "PYM"; empty where the table has none
  QString parentField = {};    // "OID" of a tree, top level "Z"; empty for a flat table
  QString offered = {};        // condition of the rows that a picker offers; empty for all
  QString idTitle = QStringLiteral("代号");
  QString nameTitle = QStringLiteral("名称");

  // The name that belongs to a code, without regard to case and blanks around it; nothing when no row has it.
  // Rows that are no longer offered count: they stand in records that already exist. Raises EDatabaseError.
  std::optional<QString> nameOf(const QString& code) const;

  struct Row {
    QString id, name, initials;
    int level = 0;  // depth in a tree
  };
  // The rows that a picker offers, narrowed by a further condition; trees from the top down, others by code.
  // Raises EDatabaseError.
  std::vector<Row> rows(const QString& condition = {}) const;
};

// The tables that lookup edits stand on.
namespace lookup {
GOODSBOOKHOST_EXPORT const LookupTable& categories();       // D1004
GOODSBOOKHOST_EXPORT const LookupTable& units();            // D1003
GOODSBOOKHOST_EXPORT const LookupTable& warehouses();       // D1007
GOODSBOOKHOST_EXPORT const LookupTable& departments();      // D1008
GOODSBOOKHOST_EXPORT const LookupTable& salespeople();      // D1101, those still with the company
GOODSBOOKHOST_EXPORT const LookupTable& regions();          // D1002
GOODSBOOKHOST_EXPORT const LookupTable& deliveryMethods();  // D1011
}  // namespace lookup

}  // namespace goodsbook
