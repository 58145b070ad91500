#include "app/starting_set.h"

#include <QCoreApplication>
#include <algorithm>

#include "host/U_function.h"
#include "host/Zpy.h"
#include "host/data/database.h"
#include "host/data/sql_sets.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(StartingSet)
};

}  // namespace

bool isEmptyShop(Database& database) {
  const SqlSets found = runSql(database,
                               u"select top 1 1 from D1001;select top 1 1 from D1002;"
                               "select top 1 1 from D1003;select top 1 1 from D1011;"
                               "select top 1 1 from D1012;select top 1 1 from D6801"_s,
                               Database::Permission::Screens);
  return std::all_of(found.sets.begin(), found.sets.end(), [](const auto& set) { return set.rows.empty(); });
}

sample::Tools sampleTools(Database& database) {
  return {
      .execute =
          [&database](std::string_view batch) {
            runSql(database, QString::fromUtf8(batch), Database::Permission::Owner);
          },
      .initials = [](std::string_view name) { return Zpy::GetPY(QString::fromUtf8(name)).toStdString(); }};
}

void offerStartingSet(Database& database) {
  if (!isEmptyShop(database)) return;
  const QString question = Texts::tr(
      "这是一个新的数据库。是否建立新店常用的基本资料?\r\n\r\n"
      "会计科目（1001 库存现金、1002 银行存款）、本位币人民币、常用计量单位、"
      "送货方式、付款方式、地区“01 本市”。\r\n\r\n"
      "以后可以随时修改和删除。");
  if (DISPINFO(question, 2) == 'y') sample::startingSet(sampleTools(database));
}

}  // namespace goodsbook
