#pragma once

#include <QString>

class QCoreApplication;

namespace goodsbook {

// Has to run before the application object is made: without a display Qt's offscreen platform is taken.
void choosePlatform();

// The texts of Qt itself are Chinese from now on.
void useChineseTexts();

// Style, icons, fonts and the Chinese texts of Qt itself, for every part of the program that shows windows.
void setUpAppearance();

// Light or dark colours whatever the system says; empty: as the system prefers. Values "light", "dark".
void setColours(const QString& scheme);

}  // namespace goodsbook
