#include "host/published_screens.h"

#include <QLibrary>
#include <QStringList>

#include "host/forms/Base.h"

namespace goodsbook {

namespace {

QStringList& plugins() {
  static QStringList files;
  return files;
}

}  // namespace

void publishScreensOf(const QString& pluginFile) {
  if (!plugins().contains(pluginFile)) plugins() << pluginFile;
}

TFrm_Base* createPublished(const QString& className, QWidget* owner) {
  // A published class is found by its meta-object, which carries its constructor.
  const QByteArray name = className.toLatin1();
  const QByteArray symbol = "_ZN9goodsbook" + QByteArray::number(name.size()) + name + "16staticMetaObjectE";
  for (const QString& file : plugins()) {
    const auto* type = reinterpret_cast<const QMetaObject*>(QLibrary(file).resolve(symbol.constData()));
    if (type) return qobject_cast<TFrm_Base*>(type->newInstance(Q_ARG(QWidget*, owner)));
  }
  return nullptr;
}

}  // namespace goodsbook
