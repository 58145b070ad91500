#include "host/controls/storage.h"

#include <QSettings>
#include <QWidget>

#include "host/controls/TDBGridEh.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

TIniPropStorageManEh::TIniPropStorageManEh(const QString& iniFileName, QObject* parent)
    : QObject(parent), name_(iniFileName) {}

QString TIniPropStorageManEh::path() const {
  QString name = name_.trimmed();
  for (QChar& sign : name) {
    if (u"/\\:*?\"<>|"_s.contains(sign) || sign.category() == QChar::Other_Control) sign = u'_';
  }
  if (name.isEmpty() || name == u"."_s || name == u".."_s) name = u"settings.ini"_s;
  return Session::current().programFile(name);
}

QVariant TIniPropStorageManEh::read(const QString& section, const QString& key,
                                    const QVariant& fallback) const {
  const QSettings file(path(), QSettings::IniFormat);
  return file.value(section + u'/' + key, fallback);
}

bool TIniPropStorageManEh::write(const QString& section, const QMap<QString, QVariant>& values) {
  QSettings file(path(), QSettings::IniFormat);
  for (auto value = values.begin(); value != values.end(); ++value) {
    file.setValue(section + u'/' + value.key(), value.value());
  }
  file.sync();
  return file.status() != QSettings::AccessError;
}

TPropStorageEh::TPropStorageEh(const QString& section, TIniPropStorageManEh* manager, QObject* parent)
    : QObject(parent), section_(section), manager_(manager) {}

void TPropStorageEh::addProperty(QObject* object, const char* property, const QString& key) {
  items_.push_back({Item::Kind::Property, object, property,
                    key.isEmpty() ? object->objectName() + u'.' + QString::fromLatin1(property) : key});
}

void TPropStorageEh::addGrid(TDBGridEh* grid) {
  items_.push_back({Item::Kind::Grid, grid, {}, grid->objectName() + u".layout"_s});
}

void TPropStorageEh::addWindow(QWidget* window) {
  items_.push_back({Item::Kind::Window, window, {}, u"window"_s});
}

void TPropStorageEh::LoadProperties() {
  if (!active_ || manager_ == nullptr) return;
  for (const Item& item : items_) {
    if (item.object == nullptr) continue;
    const QVariant value = manager_->read(section_, item.key);
    if (!value.isValid()) continue;
    switch (item.kind) {
      case Item::Kind::Property:
        item.object->setProperty(item.property.constData(), value);
        break;
      case Item::Kind::Grid:
        static_cast<TDBGridEh*>(item.object.data())->restoreLayout(value.toByteArray());
        break;
      case Item::Kind::Window:
        static_cast<QWidget*>(item.object.data())->restoreGeometry(value.toByteArray());
        break;
    }
  }
}

bool TPropStorageEh::SaveProperties() {
  if (!active_ || manager_ == nullptr) return false;
  QMap<QString, QVariant> values;
  for (const Item& item : items_) {
    if (item.object == nullptr) continue;
    switch (item.kind) {
      case Item::Kind::Property:
        values.insert(item.key, item.object->property(item.property.constData()));
        break;
      case Item::Kind::Grid:
        values.insert(item.key, static_cast<TDBGridEh*>(item.object.data())->saveLayout());
        break;
      case Item::Kind::Window:
        values.insert(item.key, static_cast<QWidget*>(item.object.data())->saveGeometry());
        break;
    }
  }
  return manager_->write(section_, values);
}

}  // namespace goodsbook
