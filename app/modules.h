#pragma once

#include <QString>
#include <span>
#include <vector>

namespace goodsbook {

// One entry of the menu and the navigation pane.
struct Module {
  int number = 0;
  QString caption;
  QString icon;  // name in the icon theme
};

struct ModuleGroup {
  QString caption;
  std::vector<Module> modules;
};

const std::vector<ModuleGroup>& moduleGroups();
const Module* findModule(int number);  // null when the menu has none of this number

// Modules that a search text means, best first: by number, by words of the name, by the initials of its
// pinyin. All of them for an empty text.
std::vector<const Module*> findModules(const QString& text);

}  // namespace goodsbook
