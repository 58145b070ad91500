#include "host/data/filter_parser.h"

#include <QDateTime>
#include <algorithm>
#include <array>
#include <utility>

#include "host/data/errors.h"
#include "host/data/field_value.h"
#include "host/data/text_fold.h"
#include "host/data/value_text.h"

namespace goodsbook {
namespace {

using namespace Qt::StringLiterals;

constexpr int deepest = 100;  // parentheses within parentheses

constexpr std::array<std::pair<const char16_t*, FilterNode::Order>, 6> signs = {{
    {u"=", FilterNode::Order::Equal},
    {u"<>", FilterNode::Order::Unequal},
    {u"<=", FilterNode::Order::LessOrEqual},
    {u">=", FilterNode::Order::GreaterOrEqual},
    {u"<", FilterNode::Order::Less},
    {u">", FilterNode::Order::Greater},
}};

bool isNumber(FieldType type) {
  return type == FieldType::Integer || type == FieldType::Float || type == FieldType::Boolean;
}

bool isWordCharacter(QChar c) {
  return c.isLetterOrNumber() || c == u'_' || c == u'.' || c == u'@' || c == u'#';
}

std::unique_ptr<FilterNode> join(FilterNode::Kind kind, std::unique_ptr<FilterNode> left,
                                 std::unique_ptr<FilterNode> right) {
  auto node = std::make_unique<FilterNode>();
  node->kind = kind;
  node->left = std::move(left);
  node->right = std::move(right);
  return node;
}

}  // namespace

FilterParser::FilterParser(const QString& text, const std::vector<Field>& fields)
    : fields_(fields), readable_(split(text)) {}

// Cuts the text into words; quoted texts keep their first quote and have inner ones undoubled.
bool FilterParser::split(const QString& text) {
  for (qsizetype i = 0; i < text.size();) {
    const QChar c = text[i];
    if (c.isSpace()) {
      ++i;
    } else if (c == u'\'') {
      QString word(c);
      for (++i;; ++i) {
        if (i >= text.size()) return false;
        if (text[i] == u'\'') {
          if (i + 1 >= text.size() || text[i + 1] != u'\'') break;
          ++i;
        }
        word += text[i];
      }
      ++i;
      words_ += word;
    } else if (c == u'[') {
      const qsizetype end = text.indexOf(u']', i);
      if (end < 0) return false;
      words_ += text.mid(i, end - i);
      i = end + 1;
    } else if (isWordCharacter(c) ||
               ((c == u'-' || c == u'+') && i + 1 < text.size() && isWordCharacter(text[i + 1]))) {
      qsizetype end = i + 1;
      while (end < text.size() && isWordCharacter(text[end])) ++end;
      words_ += text.mid(i, end - i);
      i = end;
    } else {
      const qsizetype length = (c == u'<' && (text.mid(i + 1, 1) == u">" || text.mid(i + 1, 1) == u"=")) ||
                                       (c == u'>' && text.mid(i + 1, 1) == u"=")
                                   ? 2
                                   : 1;
      words_ += text.mid(i, length);
      i += length;
    }
  }
  return true;
}

std::unique_ptr<FilterNode> FilterParser::parse() {
  if (!readable_) return nullptr;
  Node node = anyOf();
  return at_ == words_.size() ? std::move(node) : nullptr;
}

bool FilterParser::take(const QString& word) {
  if (at_ >= words_.size() || words_[at_].compare(word, Qt::CaseInsensitive) != 0) return false;
  ++at_;
  return true;
}

FilterParser::Node FilterParser::anyOf() {
  Node node = allOf();
  while (node && take(u"or"_s)) {
    Node right = allOf();
    if (!right) return nullptr;
    node = join(FilterNode::Kind::Or, std::move(node), std::move(right));
  }
  return node;
}

FilterParser::Node FilterParser::allOf() {
  Node node = single();
  while (node && take(u"and"_s)) {
    Node right = single();
    if (!right) return nullptr;
    node = join(FilterNode::Kind::And, std::move(node), std::move(right));
  }
  return node;
}

FilterParser::Node FilterParser::single() {
  if (++depth_ > deepest) return nullptr;
  Node node;
  if (take(u"not"_s)) {
    node = single();
    if (node) node = join(FilterNode::Kind::Not, std::move(node), nullptr);
  } else if (take(u"("_s)) {
    node = anyOf();
    if (!take(u")"_s)) node.reset();
  } else {
    node = condition();
  }
  --depth_;
  return node;
}

FilterParser::Node FilterParser::condition() {
  auto node = std::make_unique<FilterNode>();
  if (!operand(node->a)) return nullptr;
  if (take(u"is"_s)) {
    const bool negated = take(u"not"_s);
    if (!take(u"null"_s) || node->a.field < 0) return nullptr;
    node->kind = FilterNode::Kind::IsNull;
    return negated ? join(FilterNode::Kind::Not, std::move(node), nullptr) : std::move(node);
  }
  const bool negated = take(u"not"_s);
  if (take(u"like"_s)) {
    node->kind = FilterNode::Kind::Like;
    if (!operand(node->b) || node->b.field >= 0 || node->b.type != FieldType::Text) return nullptr;
    if (node->a.field < 0 || node->a.type != FieldType::Text) return nullptr;
    std::string folded;
    foldText(node->b.text, folded);
    node->b.text = std::move(folded);
    return negated ? join(FilterNode::Kind::Not, std::move(node), nullptr) : std::move(node);
  }
  if (negated) return nullptr;
  node->kind = FilterNode::Kind::Compare;
  const auto sign = std::find_if(signs.begin(), signs.end(),
                                 [this](const auto& entry) { return take(QString::fromUtf16(entry.first)); });
  if (sign == signs.end() || !operand(node->b)) return nullptr;
  node->order = sign->second;
  FilterOperand& value = node->a.field < 0 ? node->a : node->b;
  const FilterOperand& other = node->a.field < 0 ? node->b : node->a;
  if (value.field < 0 && !makeComparable(value, other.type)) return nullptr;
  const bool comparable = node->a.type == node->b.type || (isNumber(node->a.type) && isNumber(node->b.type));
  return comparable && node->a.type != FieldType::Blob ? std::move(node) : nullptr;
}

bool FilterParser::operand(FilterOperand& result) {
  if (at_ >= words_.size()) return false;
  const QString word = words_[at_++];
  if (word.startsWith(u'\'')) {
    result.text = word.mid(1).toStdString();
    return true;
  }
  bool isNumeric = false;
  result.number = word.toDouble(&isNumeric);
  if (isNumeric) {
    result.type = FieldType::Float;
    result.text = word.toStdString();
    return true;
  }
  const QString name = word.startsWith(u'[') ? word.mid(1) : word;
  const auto field = std::find_if(fields_.begin(), fields_.end(), [&](const Field& candidate) {
    return candidate.name.compare(name, Qt::CaseInsensitive) == 0;
  });
  if (field == fields_.end()) return false;
  result.field = static_cast<int>(field - fields_.begin());
  result.type = field->type;
  return true;
}

// Turns a value as written into one of the other side's type.
bool FilterParser::makeComparable(FilterOperand& value, FieldType type) const {
  if (value.type == type || (isNumber(value.type) && isNumber(type))) return true;
  try {
    const QString written = QString::fromStdString(value.text);
    Field target;
    target.type = type == FieldType::Integer ? FieldType::Float : type;
    const QVariant stored = toStored(target, written);
    if (!stored.isValid()) return false;
    if (isNumber(type)) value.number = stored.toDouble();
    if (type == FieldType::DateTime) value.moment = fromDateTime(stored.toDateTime());
    value.type = type;
    return true;
  } catch (const EDatabaseError&) {
    return false;
  }
}

}  // namespace goodsbook
