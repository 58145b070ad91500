#include "engine/compile/scope.h"

#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

// The column in one select: nothing, or the only one of that name.
std::optional<FoundColumn> findIn(const Scope& scope, const ColumnRef& reference, bool& tableKnown) {
  std::optional<FoundColumn> found;
  const std::string_view table = reference.qualifier.name.text;
  for (std::size_t i = scope.firstVisible; i < scope.sources.size(); ++i) {
    const Source& source = scope.sources[i];
    if (!reference.qualifier.empty() && !sameName(source.name, table)) continue;
    if (!reference.qualifier.empty()) tableKnown = true;
    for (const SourceColumn& column : source.columns) {
      if (!sameName(column.name, reference.column.text)) continue;
      if (found) fail(209, concat("列名 '", reference.column.text, "' 不明确。"));
      found = FoundColumn{&source, &column, false};
    }
  }
  return found;
}

}  // namespace

FoundColumn findColumn(const Scope& scope, const ColumnRef& reference) {
  bool tableKnown = false;
  for (const Scope* level = &scope; level != nullptr; level = level->outer) {
    if (auto found = findIn(*level, reference, tableKnown)) {
      found->outer = level != &scope;
      return *found;
    }
    if (tableKnown) break;
  }
  if (!reference.qualifier.empty() && !tableKnown)
    fail(4104, concat("无法绑定由多个部分组成的标识符 \"",
                      writtenName(reference.qualifier, reference.column.text), "\"。"));
  fail(207, concat("列名 '", reference.column.text, "' 无效。"));
}

std::string writtenName(const ObjectName& qualifier, std::string_view last) {
  std::string text;
  for (const Name* part : {&qualifier.database, &qualifier.schema, &qualifier.name})
    if (!part->empty()) text += concat(part->text, ".");
  return text.append(last);
}

std::string_view plainName(const ObjectName& name) {
  if (!name.database.empty()) failUnsupported(concat("其他数据库 ", name.database.text));
  if (!name.schema.empty() && !sameName(name.schema.text, "dbo"))
    failUnsupported(concat("架构 ", name.schema.text));
  return name.name.text;
}

}  // namespace goodsbook::engine
