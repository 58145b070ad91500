#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <optional>
#include <stdexcept>
#include <vector>

namespace goodsbook {

// A command cannot be done. Its text is the reply's `error` and names what is wrong.
class CommandError : public std::runtime_error {
 public:
  explicit CommandError(const QString& text, QJsonObject details = {})
      : std::runtime_error(text.toStdString()), text_(text), details_(std::move(details)) {}
  const QString& text() const { return text_; }
  const QJsonObject& details() const { return details_; }  // further fields of the reply

 private:
  QString text_;
  QJsonObject details_;
};

// The fields of one command. Every accessor throws a CommandError that names the field when it is missing or
// of another kind than asked for.
class Arguments {
 public:
  explicit Arguments(QJsonObject fields) : fields_(std::move(fields)) {}

  bool has(const char* name) const;  // present, null included
  bool isNull(const char* name) const;

  QString text(const char* name) const;
  std::optional<QString> optionalText(const char* name) const;
  int integer(const char* name) const;
  std::optional<int> optionalInteger(const char* name) const;
  bool flag(const char* name) const;
  bool flag(const char* name, bool missing) const;
  QStringList texts(const char* name) const;
  std::vector<int> integers(const char* name) const;
  QJsonObject object(const char* name) const;  // empty when missing

 private:
  QJsonValue required(const char* name) const;

  QJsonObject fields_;
};

}  // namespace goodsbook
