#include "app/appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFontDatabase>
#include <QFontInfo>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QTranslator>

using namespace Qt::StringLiterals;

// Resources of a static library have to be asked for, outside of any namespace.
static void useResources() {
  Q_INIT_RESOURCE(app);
}

namespace goodsbook {

namespace {

// Simplified shapes of the characters even where the system prefers another language's.
void preferChineseFont() {
  const QString chinese = u"Noto Sans CJK SC"_s;
  QFont font = QApplication::font();
  QStringList families = font.families();
  if (!QFontDatabase::families().contains(chinese) || families.contains(chinese)) return;
  const bool covered =
      QFontDatabase::families(QFontDatabase::SimplifiedChinese).contains(QFontInfo(font).family());
  if (covered) return;
  families << chinese;
  font.setFamilies(families);
  QApplication::setFont(font);
}

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < 128;
}

void useIcons() {
  QStringList paths = QIcon::themeSearchPaths();
  if (!paths.contains(u"/usr/share/icons"_s)) QIcon::setThemeSearchPaths(paths << u"/usr/share/icons"_s);
  QIcon::setThemeName(isDark(QApplication::palette()) ? u"breeze-dark"_s : u"breeze"_s);
  QIcon::setFallbackThemeName(u"breeze"_s);
}

QPalette darkPalette() {
  QPalette palette;
  const QColor window(42, 46, 50), base(27, 30, 32), text(252, 252, 252), accent(61, 174, 233);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, QColor(35, 38, 41));
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::Button, QColor(49, 54, 59));
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::ToolTipBase, QColor(49, 54, 59));
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, QColor(161, 169, 177));
  palette.setColor(QPalette::Link, accent);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::Light, QColor(70, 76, 82));
  palette.setColor(QPalette::Midlight, QColor(58, 63, 68));
  palette.setColor(QPalette::Mid, QColor(36, 40, 43));
  palette.setColor(QPalette::Dark, QColor(24, 27, 29));
  palette.setColor(QPalette::Shadow, QColor(10, 11, 12));
  palette.setColor(QPalette::HighlightedText, base);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(110, 117, 123));
  }
  return palette;
}

// Whether the desktop prefers dark windows; desktops tell it under a name that they have in common.
bool systemIsDark() {
  constexpr int patienceMs = 300;
  constexpr uint preferDark = 1;
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return false;
  QDBusMessage question = QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s,
                                                         u"/org/freedesktop/portal/desktop"_s,
                                                         u"org.freedesktop.portal.Settings"_s, u"Read"_s);
  question << u"org.freedesktop.appearance"_s << u"color-scheme"_s;
  const QDBusMessage reply = bus.call(question, QDBus::Block, patienceMs);
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return false;
  QVariant value = reply.arguments().constFirst();
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toUInt() == preferDark;
}

QtMessageHandler formerHandler = nullptr;

// Without a display Qt tells of every window call that has no meaning there; nobody can act on it.
void tellWhatMatters(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.startsWith("This plugin does not support"_L1)) return;
  if (message.startsWith("QStandardPaths: XDG_RUNTIME_DIR not set"_L1)) return;
  formerHandler(type, context, message);
}

}  // namespace

void choosePlatform() {
  const bool chosen = !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
  const bool display =
      !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
  if (!chosen && !display) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (qEnvironmentVariable("QT_QPA_PLATFORM") == "offscreen"_L1) {
    formerHandler = qInstallMessageHandler(tellWhatMatters);
  }
}

void useChineseTexts() {
  auto* texts = new QTranslator(QCoreApplication::instance());
  if (texts->load(u"qtbase_zh_CN"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(texts);
  }
}

void setUpAppearance() {
  useResources();
  QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
  QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
  preferChineseFont();
  useIcons();
  useChineseTexts();
  QApplication::setWindowIcon(QIcon(u":/goodsbook.svg"_s));
}

void setColours(const QString& scheme) {
  const bool follows = scheme.isEmpty() && !isDark(QApplication::palette());
  if (scheme == "dark"_L1 || (follows && systemIsDark())) {
    QApplication::setPalette(darkPalette());
  } else if (scheme == "light"_L1) {
    QApplication::setPalette(QStyleFactory::create(u"Fusion"_s)->standardPalette());
  } else {
    QApplication::setPalette(QPalette());
  }
  useIcons();
}

}  // namespace goodsbook
