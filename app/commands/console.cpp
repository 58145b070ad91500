#include "app/commands/console.h"

#include <cstdio>

namespace goodsbook {
namespace {

void print(std::FILE* stream, const QString& text) {
  const QByteArray bytes = text.toUtf8() + '\n';
  std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

}  // namespace

void printLine(const QString& text) {
  print(stdout, text);
}

void printError(const QString& text) {
  print(stderr, text);
}

std::optional<int> readArguments(QCommandLineParser& parser, const QStringList& arguments) {
  const QCommandLineOption help = parser.addHelpOption();
  if (!parser.parse(QStringList(QStringLiteral("goodsbook")) + arguments)) {
    printError(parser.errorText());
    return unusableArguments;
  }
  if (!parser.isSet(help)) return std::nullopt;
  printLine(parser.helpText());
  return commandDone;
}

}  // namespace goodsbook
