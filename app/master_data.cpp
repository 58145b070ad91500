#include "app/master_data.h"

#include <QCoreApplication>
#include <QDir>
#include <stdexcept>

#include "host/published_screens.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
struct Texts {
  Q_DECLARE_TR_FUNCTIONS(MasterData)
};
}  // namespace

MasterData::MasterData(const QString& folder) {
  const QString base = folder.isEmpty() ? QCoreApplication::applicationDirPath() + u"/../lib"_s : folder;
  library_.setFileName(QDir::cleanPath(base + u"/libmasterdata.so"_s));
}

bool MasterData::load() {
  if (entry_) return true;
  if (!library_.load()) {
    error_ = Texts::tr("不能装入模块 %1：%2").arg(library_.fileName(), library_.errorString());
    return false;
  }
  entry_ = reinterpret_cast<Entry>(library_.resolve("ProcDLL1"));
  if (!entry_) error_ = Texts::tr("模块 %1 没有入口 ProcDLL1").arg(library_.fileName());
  if (entry_) publishScreensOf(library_.fileName());
  return entry_ != nullptr;
}

void MasterData::open(const Trecord& record, QWidget* owner) {
  if (!entry_) throw std::logic_error("the plug-in is not loaded");
  entry_(record, owner);
}

}  // namespace goodsbook
