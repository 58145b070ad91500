#include "app/modules.h"

#include <QCoreApplication>
#include <algorithm>

#include "host/Zpy.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(Modules)
};

// How well the text means the module: 0 best, -1 not at all.
int rank(const Module& module, const QString& text) {
  const QString number = QString::number(module.number);
  const QString initials = Zpy::GetPY(module.caption);
  if (number == text || module.caption == text) return 0;
  if (number.startsWith(text)) return 1;
  if (initials.startsWith(text, Qt::CaseInsensitive)) return 2;
  if (module.caption.startsWith(text)) return 2;
  if (module.caption.contains(text)) return 3;
  return initials.contains(text, Qt::CaseInsensitive) ? 4 : -1;
}

}  // namespace

const std::vector<ModuleGroup>& moduleGroups() {
  static const std::vector<ModuleGroup> groups{
      {Texts::tr("商品"),
       {{101, Texts::tr("商品基本资料"), u"package"_s},
        {102, Texts::tr("商品标签"), u"view-barcode"_s},
        {103, Texts::tr("计量单位资料"), u"measure"_s},
        {104, Texts::tr("类别资料设定"), u"view-list-tree"_s}}},
      {Texts::tr("基础资料"),
       {{107, Texts::tr("仓库基本资料"), u"archive-insert"_s},
        {108, Texts::tr("部门基本资料"), u"group"_s},
        {111, Texts::tr("区域详细划分"), u"map-flat"_s},
        {112, Texts::tr("公司职员"), u"user"_s}}},
      {Texts::tr("往来"),
       {{113, Texts::tr("客户基本资料"), u"user-identity"_s},
        {114, Texts::tr("供应商基本资料"), u"view-pim-contacts"_s},
        {123, Texts::tr("送货方式资料"), u"mail-send"_s}}},
      {Texts::tr("资金"),
       {{122, Texts::tr("现金银行"), u"view-bank"_s},
        {124, Texts::tr("付款方式"), u"wallet-open"_s},
        {125, Texts::tr("货币基本资料"), u"view-currency-list"_s}}},
  };
  return groups;
}

const Module* findModule(int number) {
  for (const ModuleGroup& group : moduleGroups()) {
    for (const Module& module : group.modules) {
      if (module.number == number) return &module;
    }
  }
  return nullptr;
}

std::vector<const Module*> findModules(const QString& text) {
  const QString wanted = text.trimmed();
  std::vector<std::pair<int, const Module*>> found;
  for (const ModuleGroup& group : moduleGroups()) {
    for (const Module& module : group.modules) {
      const int place = wanted.isEmpty() ? 0 : rank(module, wanted);
      if (place >= 0) found.emplace_back(place, &module);
    }
  }
  std::ranges::stable_sort(found, {}, [](const auto& entry) { return entry.first; });
  std::vector<const Module*> modules;
  for (const auto& entry : found) modules.push_back(entry.second);
  return modules;
}

}  // namespace goodsbook
