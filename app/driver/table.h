#pragma once

#include <span>

#include "app/driver/command.h"

namespace goodsbook {

// The groups of commands, each in a unit of its own.
std::span<const Command> openCommands();      // open, purchase, close, quit
std::span<const Command> windowCommands();    // screens, use, screenshot
std::span<const Command> elementCommands();   // elements, get, focus, type, check, click, press
std::span<const Command> actionCommands();    // action, actions
std::span<const Command> gridCommands();      // rows, row, select, cell, cellclick
std::span<const Command> treeCommands();      // tree, node
std::span<const Command> desktopCommands();   // answer, pickfile, printto, messages, opened, wait
std::span<const Command> databaseCommands();  // sql, statements

Handler findHandler(const QString& name);  // null when no command has this name

}  // namespace goodsbook
