#pragma once

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <vector>

#include "host/export.h"

class QWidget;

namespace goodsbook {

class TDBGridEh;

// The keeper of layouts and small choices: an ini file of sections and keys in the program's folder. Files
// are written whole or not at all; of a damaged one counts what can be read.
class GOODSBOOKHOST_EXPORT TIniPropStorageManEh : public QObject {
  Q_OBJECT

 public:
  explicit TIniPropStorageManEh(const QString& iniFileName, QObject* parent = nullptr);
  // A plain name in the program's folder; signs that no file name can hold become "_".
  void setIniFileName(const QString& name) { name_ = name; }
  QString iniFileName() const { return name_; }
  QString path() const;

  QVariant read(const QString& section, const QString& key, const QVariant& fallback = {}) const;
  // False when the file could not be written (a read-only folder): layouts are never worth an error to the
  // user.
  bool write(const QString& section, const QMap<QString, QVariant>& values);

 private:
  QString name_;
};

// What one screen remembers: properties of elements, grid layouts, the window's size, under the screen's
// section.
class GOODSBOOKHOST_EXPORT TPropStorageEh : public QObject {
  Q_OBJECT

 public:
  explicit TPropStorageEh(const QString& section, TIniPropStorageManEh* manager, QObject* parent = nullptr);
  void setSection(const QString& section) { section_ = section; }
  void setStorageManager(TIniPropStorageManEh* manager) { manager_ = manager; }
  void setActive(bool on) { active_ = on; }  // an inactive store neither loads nor saves
  bool isActive() const { return active_; }

  // Kept under "OBJECTNAME.property" unless a key is given.
  void addProperty(QObject* object, const char* property, const QString& key = {});
  void addGrid(TDBGridEh* grid);
  void addWindow(QWidget* window);

  void LoadProperties();
  bool SaveProperties();

 private:
  struct Item {
    enum class Kind { Property, Grid, Window } kind;
    QPointer<QObject> object;
    QByteArray property;
    QString key;
  };

  QString section_;
  QPointer<TIniPropStorageManEh> manager_;
  std::vector<Item> items_;
  bool active_ = true;
};

}  // namespace goodsbook
