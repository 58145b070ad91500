#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <optional>

namespace goodsbook {

void printLine(const QString& text);   // standard output, UTF-8
void printError(const QString& text);  // standard error

// Exit statuses of the sub-commands.
inline constexpr int commandDone = 0;
inline constexpr int commandFailed = 1;
inline constexpr int unusableArguments = 2;

// Reads a sub-command's arguments (without its name). Prints what is wrong with them, or the help that was
// asked for, and gives the exit status to end with; nothing when the command can go on.
std::optional<int> readArguments(QCommandLineParser& parser, const QStringList& arguments);

}  // namespace goodsbook
