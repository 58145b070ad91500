#include "engine/compile/emitter.h"

#include <span>

#include "engine/runtime/collation.h"
#include "engine/runtime/failure.h"

namespace goodsbook::engine {
namespace {

std::string quoted(std::string_view text, char mark) {
  std::string result(1, mark);
  for (const char c : text) {
    if (c == mark) result.push_back(mark);
    result.push_back(c);
  }
  result.push_back(mark);
  return result;
}

// Owns the text, its blanks and its parentheses.
class Emitter {
 public:
  std::string take() { return std::move(text_); }

  void node(const Node& node) {
    std::visit([this](const auto& content) { write(content); }, node.content);
  }

  void query(const BoundQuery& query, bool nameColumns) {
    const bool single = query.terms.size() == 1;
    for (std::size_t i = 0; i < query.terms.size(); ++i) {
      if (i > 0) put(query.terms[i].all ? " UNION ALL " : " UNION ");
      term(query.terms[i], single, nameColumns);
    }
    if (!query.orderBy.empty()) {
      put(" ORDER BY ");
      list(query.orderBy, [this](const BoundOrder& order) {
        node(*order.node);
        if (order.descending) put(" DESC");
      });
    }
    const auto* select = single ? std::get_if<BoundSelect>(&query.terms.front().content) : nullptr;
    if (select != nullptr && select->limit) limit(*select);
  }

  void rows(std::span<const std::vector<NodePtr>> rows) {
    list(rows, [this](const std::vector<NodePtr>& row) {
      put("(");
      nodes(row);
      put(")");
    });
  }

 private:
  void put(std::string_view piece) { text_.append(piece); }

  template <typename Range, typename Write>
  void list(const Range& range, Write writeOne, std::string_view separator = ", ") {
    bool first = true;
    for (const auto& one : range) {
      if (!first) put(separator);
      first = false;
      writeOne(one);
    }
  }
  void nodes(std::span<const NodePtr> all, std::string_view separator = ", ") {
    list(
        all, [this](const NodePtr& one) { node(*one); }, separator);
  }

  void limit(const BoundSelect& select) {
    put(" LIMIT ");
    node(*select.limit);
  }

  // A part of a compound may have neither a limit nor parentheses: it becomes a derived table where it needs
  // them.
  void term(const BoundTerm& term, bool single, bool nameColumns) {
    if (const auto* nested = std::get_if<BoundQueryPtr>(&term.content)) {
      put("SELECT * FROM (");
      query(**nested, nameColumns);
      put(")");
      return;
    }
    const auto& select = std::get<BoundSelect>(term.content);
    const bool wrapped = !single && select.limit;
    if (wrapped) put("SELECT * FROM (");
    this->select(select, nameColumns);
    if (!wrapped) return;
    limit(select);
    put(")");
  }

  void select(const BoundSelect& select, bool nameColumns) {
    put(select.distinct ? "SELECT DISTINCT " : "SELECT ");
    std::size_t column = 0;
    list(select.items, [&](const BoundItem& item) {
      node(*item.node);
      if (nameColumns) put(concat(" AS ", derivedColumn(column)));
      ++column;
    });
    if (!select.from.empty()) {
      put(" FROM ");
      list(select.from, [this](const BoundFromPtr& part) { from(*part, needsParentheses(*part)); });
    }
    if (select.where) {
      put(" WHERE ");
      node(*select.where);
    }
    if (!select.groupBy.empty()) {
      put(" GROUP BY ");
      nodes(select.groupBy);
    }
    if (select.having) {
      put(" HAVING ");
      node(*select.having);
    }
  }

  // SQLite reads commas and joins from left to right with one rank, which matters to joins that keep their
  // right side.
  static bool needsParentheses(const BoundFrom& part) {
    const auto* join = std::get_if<BoundJoin>(&part.content);
    if (join == nullptr) return false;
    return join->kind == "RIGHT JOIN" || join->kind == "FULL JOIN" || needsParentheses(*join->left);
  }

  void from(const BoundFrom& part, bool parentheses) {
    if (parentheses) put("(");
    std::visit([this](const auto& content) { write(content); }, part.content);
    if (parentheses) put(")");
  }

  void write(const BoundSource& source) {
    if (source.query) {
      put("(");
      query(*source.query, true);
      put(")");
    } else {
      put(quotedName(source.table));
    }
    put(concat(" AS ", sourceName(source.id)));
  }

  void write(const BoundJoin& join) {
    from(*join.left, false);
    put(concat(" ", join.kind, " "));
    from(*join.right, std::holds_alternative<BoundJoin>(join.right->content));
    if (!join.on) return;
    put(" ON ");
    node(*join.on);
  }

  void write(const ParameterNode& parameter) { put(concat("?", std::to_string(parameter.index + 1))); }
  void write(const ColumnNode& column) {
    put(concat(sourceName(column.source), ".", quotedName(column.column)));
  }
  void write(const ConstantNode& constant) { put(constant.sql); }
  void write(const CallNode& call) {
    put(call.name);
    put(call.distinct ? "(DISTINCT " : "(");
    if (call.star) put("*");
    nodes(call.arguments);
    put(")");
  }
  void write(const InfixNode& infix) { chain(infix.operands, concat(" ", infix.op, " ")); }
  // Long chains of AND and OR are written as a balanced tree: SQLite limits how deep an expression may be.
  void chain(std::span<const NodePtr> operands, const std::string& op) {
    constexpr std::size_t shortChain = 16;
    put("(");
    if (operands.size() <= shortChain) {
      nodes(operands, op);
    } else {
      const std::size_t half = operands.size() / 2;
      chain(operands.first(half), op);
      put(op);
      chain(operands.subspan(half), op);
    }
    put(")");
  }
  void write(const PrefixNode& prefix) {
    put(concat("(", prefix.op, " "));
    node(*prefix.operand);
    put(")");
  }
  void write(const NullTestNode& test) {
    put("(");
    node(*test.operand);
    put(test.negated ? " IS NOT NULL)" : " IS NULL)");
  }
  void write(const CollateNode& collate) {
    node(*collate.operand);
    put(concat(" COLLATE ", collationName));
  }
  void write(const StorageCastNode& cast) {
    put("CAST(");
    node(*cast.operand);
    put(concat(" AS ", cast.type, ")"));
  }
  void write(const CaseNode& caseNode) {
    put("CASE");
    for (const CaseNode::Branch& branch : caseNode.branches) {
      put(" WHEN ");
      node(*branch.when);
      put(" THEN ");
      node(*branch.then);
    }
    if (caseNode.otherwise) {
      put(" ELSE ");
      node(*caseNode.otherwise);
    }
    put(" END");
  }
  void write(const InListNode& in) {
    put("(");
    node(*in.operand);
    put(in.negated ? " NOT IN (" : " IN (");
    nodes(in.items);
    put("))");
  }
  void write(const InQueryNode& in) {
    put("(");
    node(*in.operand);
    put(in.negated ? " NOT IN (" : " IN (");
    query(*in.query, false);
    put("))");
  }
  void write(const ExistsNode& exists) {
    put("EXISTS (");
    query(*exists.query, false);
    put(")");
  }
  void write(const SubqueryNode& subquery) {
    put("(");
    query(*subquery.query, false);
    put(")");
  }

  std::string text_;
};

}  // namespace

std::string quotedName(std::string_view name) {
  return quoted(name, '"');
}
std::string quotedText(std::string_view text) {
  return quoted(text, '\'');
}
std::string derivedColumn(std::size_t index) {
  return concat("c", std::to_string(index + 1));
}
std::string sourceName(int id) {
  return concat("t", std::to_string(id));
}

std::string emitQuery(const BoundQuery& query, bool nameColumns) {
  Emitter emitter;
  emitter.query(query, nameColumns);
  return emitter.take();
}

std::string emitNode(const Node& node) {
  Emitter emitter;
  emitter.node(node);
  return emitter.take();
}

std::string emitRows(std::span<const std::vector<NodePtr>> rows) {
  Emitter emitter;
  emitter.rows(rows);
  return emitter.take();
}

}  // namespace goodsbook::engine
