#include "app/starting_set.h"

#include <QCoreApplication>

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

QString inWords(sample::StartingPart part) {
  using enum sample::StartingPart;
  switch (part) {
    case Accounts:
      return Texts::tr("会计科目（1001 库存现金、1002 银行存款）");
    case Currency:
      return Texts::tr("本位币人民币");
    case Units:
      return Texts::tr("常用计量单位");
    case DeliveryMethods:
      return Texts::tr("送货方式");
    case PaymentMethods:
      return Texts::tr("付款方式");
    case Region:
      return Texts::tr("地区“01 本市”");
  }
  return {};
}

bool hasRows(Database& database, const QString& from) {
  return !readSql(database, u"select top 1 1 as n from "_s + from).rows.empty();
}

}  // namespace

sample::Tools sampleTools(Database& database) {
  return {
      .execute =
          [&database](std::string_view batch) {
            runSql(database, QString::fromUtf8(batch), Database::Permission::Owner);
          },
      .initials = [](std::string_view name) { return Zpy::GetPY(QString::fromUtf8(name)).toStdString(); }};
}

std::vector<sample::StartingPart> missingStartingParts(Database& database) {
  std::vector<sample::StartingPart> missing;
  for (const sample::StartingPart part : sample::allStartingParts) {
    const std::string_view table = sample::tableOf(part);
    if (!hasRows(database, QString::fromUtf8(table.data(), static_cast<qsizetype>(table.size()))))
      missing.push_back(part);
  }
  return missing;
}

bool offerStartingSet(Database& database) {
  const std::vector<sample::StartingPart> missing = missingStartingParts(database);
  if (missing.empty()) return false;
  QStringList words;
  for (const sample::StartingPart part : missing) words << inWords(part);
  const QString question = Texts::tr(
      "是否建立新店常用的基本资料?\r\n\r\n"
      "%1。\r\n\r\n"
      "只建立还没有记录的资料，以后可以随时修改和删除。现在不建立，以后可以在“系统”菜单里建立。");
  if (DISPINFO(question.arg(words.join(u'、')), 2) == 'y')
    sample::startingSet(sampleTools(database), missing);
  return true;
}

void offerStartingSetOnFirstStart(Database& database) {
  if (hasRows(database, u"SYS_SETTING where NAME='STARTING_SET_ASKED'"_s)) return;
  if (!offerStartingSet(database)) return;
  runSql(database, u"insert into SYS_SETTING (NAME, VALUE) values ('STARTING_SET_ASKED','1')"_s,
         Database::Permission::Owner);
}

}  // namespace goodsbook
