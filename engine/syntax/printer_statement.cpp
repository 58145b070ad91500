#include "engine/syntax/printer_impl.h"

namespace goodsbook::engine {

void Printer::print(const Script& script) {
  bool first = true;
  for (const Statement& statement : script.statements) {
    if (!first) writer_.newLine();
    first = false;
    print(statement);
    writer_.semicolon();
  }
}

void Printer::print(const Statement& statement) {
  std::visit(*this, statement.node);
}

void Printer::printStatements(const std::vector<Statement>& statements) {
  for (const Statement& statement : statements) {
    print(statement);
    writer_.semicolon();
  }
}

void Printer::operator()(const SelectStatement& node) {
  print(*node.query);
}

void Printer::operator()(const ValueRows& node) {
  writer_.word("VALUES");
  Commas commas(writer_);
  for (const std::vector<ExpressionPtr>& row : node.rows) {
    commas.next();
    writer_.open();
    printList(row);
    writer_.close();
  }
}

void Printer::operator()(const DefaultValues&) {
  writer_.word("DEFAULT VALUES");
}

void Printer::operator()(const Insert& node) {
  writer_.word("INSERT INTO");
  writer_.object(node.table);
  if (!node.columns.empty()) printNames(node.columns);
  if (const auto* query = std::get_if<QueryPtr>(&node.source)) {
    print(**query);
  } else if (const auto* rows = std::get_if<ValueRows>(&node.source)) {
    (*this)(*rows);
  } else {
    (*this)(std::get<DefaultValues>(node.source));
  }
}

void Printer::operator()(const Update& node) {
  writer_.word("UPDATE");
  writer_.object(node.target);
  writer_.word("SET");
  Commas commas(writer_);
  for (const Assignment& assignment : node.assignments) {
    commas.next();
    (*this)(ColumnRef{assignment.qualifier, assignment.column});
    writer_.word("=");
    printValue(*assignment.value);
  }
  printFrom(node.from);
  printWhere(node.where);
}

void Printer::operator()(const Delete& node) {
  writer_.word("DELETE FROM");
  writer_.object(node.target);
  printFrom(node.from);
  printWhere(node.where);
}

void Printer::operator()(const If& node) {
  writer_.word("IF");
  printCondition(*node.condition);
  print(*node.then);
  if (!node.otherwise) return;
  writer_.word("ELSE");
  print(*node.otherwise);
}

void Printer::operator()(const Block& node) {
  writer_.word("BEGIN");
  printStatements(node.statements);
  writer_.word("END");
}

void Printer::operator()(const RaiseError& node) {
  writer_.word("RAISERROR");
  writer_.open();
  printValue(*node.message);
  writer_.comma();
  printValue(*node.severity);
  writer_.comma();
  printValue(*node.state);
  for (const ExpressionPtr& argument : node.arguments) {
    writer_.comma();
    printValue(*argument);
  }
  writer_.close();
}

void Printer::operator()(const Print& node) {
  writer_.word("PRINT");
  printValue(*node.message);
}

void Printer::operator()(const Execute& node) {
  writer_.word("EXEC");
  writer_.object(node.procedure);
  Commas commas(writer_);
  for (const Argument& argument : node.arguments) {
    commas.next();
    if (!argument.parameter.empty()) {
      writer_.word(argument.parameter.text);
      writer_.word("=");
    }
    printValue(*argument.value);
  }
}

void Printer::operator()(const SetOption& node) {
  writer_.word("SET");
  if (node.table.empty()) {
    writer_.name(node.option.text);
  } else {
    writer_.word(node.option.text);
    writer_.object(node.table);
  }
  writer_.word(node.on ? "ON" : "OFF");
}

void Printer::operator()(const CreateTable& node) {
  writer_.word("CREATE TABLE");
  writer_.object(node.table);
  writer_.open();
  Commas commas(writer_);
  printElements(commas, node.columns, node.constraints);
  writer_.close();
}

void Printer::operator()(const CreateIndex& node) {
  writer_.word(node.unique ? "CREATE UNIQUE INDEX" : "CREATE INDEX");
  writer_.name(node.name.text);
  writer_.word("ON");
  writer_.object(node.table);
  printIndexColumns(node.columns);
}

void Printer::operator()(const AlterTableAdd& node) {
  writer_.word("ALTER TABLE");
  writer_.object(node.table);
  writer_.word("ADD");
  Commas commas(writer_);
  printElements(commas, node.columns, node.constraints);
  for (const ColumnDefault& added : node.defaults) {
    commas.next();
    printConstraintName(added.name);
    writer_.word("DEFAULT");
    printValue(*added.value);
    writer_.word("FOR");
    writer_.name(added.column.text);
  }
}

void Printer::operator()(const Drop& node) {
  writer_.word("DROP");
  writer_.word(node.kind == DropKind::Table ? "TABLE" : node.kind == DropKind::Index ? "INDEX" : "PROCEDURE");
  if (node.ifExists) writer_.word("IF EXISTS");
  Commas commas(writer_);
  for (const DropItem& item : node.items) {
    commas.next();
    writer_.object(item.name);
    if (item.table.empty()) continue;
    writer_.word("ON");
    writer_.object(item.table);
  }
}

void Printer::operator()(const CreateProcedure& node) {
  writer_.word("CREATE PROCEDURE");
  writer_.object(node.name);
  Commas commas(writer_);
  for (const ProcedureParameter& parameter : node.parameters) {
    commas.next();
    printParameter(parameter);
  }
  writer_.word("AS");
  printStatements(node.body);
}

void Printer::printParameter(const ProcedureParameter& parameter) {
  writer_.word(parameter.name.text);
  printType(parameter.type);
  if (!parameter.defaultValue) return;
  writer_.word("=");
  printValue(*parameter.defaultValue);
}

void Printer::printElements(Commas& commas, const std::vector<ColumnDefinition>& columns,
                            const std::vector<TableConstraint>& constraints) {
  for (const ColumnDefinition& column : columns) {
    commas.next();
    printColumn(column);
  }
  for (const TableConstraint& constraint : constraints) {
    commas.next();
    printConstraint(constraint);
  }
}

void Printer::printConstraintName(const Name& name) {
  if (name.empty()) return;
  writer_.word("CONSTRAINT");
  writer_.name(name.text);
}

void Printer::printColumn(const ColumnDefinition& column) {
  writer_.name(column.name.text);
  printType(column.type);
  if (column.hasIdentity) {
    writer_.word("IDENTITY");
    writer_.open();
    writer_.word(std::to_string(column.identity.seed));
    writer_.comma();
    writer_.word(std::to_string(column.identity.increment));
    writer_.close();
  }
  if (column.nullability != Nullability::NotGiven) {
    writer_.word(column.nullability == Nullability::Null ? "NULL" : "NOT NULL");
  }
  if (column.defaultValue) {
    printConstraintName(column.defaultName);
    writer_.word("DEFAULT");
    printValue(*column.defaultValue);
  }
  if (column.key != KeyKind::None) {
    printConstraintName(column.keyName);
    writer_.word(column.key == KeyKind::PrimaryKey ? "PRIMARY KEY" : "UNIQUE");
  }
}

void Printer::printConstraint(const TableConstraint& constraint) {
  printConstraintName(constraint.name);
  writer_.word(constraint.kind == KeyKind::PrimaryKey ? "PRIMARY KEY" : "UNIQUE");
  printIndexColumns(constraint.columns);
}

void Printer::printIndexColumns(const std::vector<IndexColumn>& columns) {
  writer_.open();
  Commas commas(writer_);
  for (const IndexColumn& column : columns) {
    commas.next();
    writer_.name(column.name.text);
    if (column.descending) writer_.word("DESC");
  }
  writer_.close();
}

}  // namespace goodsbook::engine
