#include "products/import_run.h"

#include <QCoreApplication>
#include <algorithm>

#include "host/U_glo.h"
#include "host/Zpy.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(TF2101_IMP)
};

const QString moduleCode = u"101"_s;

QString unquoted(QString text) {
  return text.remove(u'\'');
}

QString notANumber(const QString& caption, const QString& price) {
  return Texts::tr("%1“%2”不是数字").arg(caption, price);
}

// Prices go into the statement as they are. A text that is no number makes the statement fail; one that could
// end the statement and begin another must not even get there.
void refuseStatements(const QString& price, const QString& caption) {
  const bool harmless = !price.contains(u';') && !price.contains(u'(') && !price.contains(u')') &&
                        !price.contains("--"_L1) && !price.contains("/*"_L1);
  if (harmless) return;
  constexpr int conversionError = 8114, severity = 16;
  throw EDatabaseError(conversionError, severity, 1, 1, notANumber(caption, price));
}

bool isControl(QChar sign) {
  return sign.category() == QChar::Other_Control;
}

}  // namespace

QString importText(const QString& cell) {
  QString text = cell;
  text.replace(u'\'', u'"');
  if (std::none_of(text.cbegin(), text.cend(), isControl)) return text;
  qsizetype from = 0, to = text.size();
  while (from < to && isControl(text.at(from))) ++from;
  while (to > from && isControl(text.at(to - 1))) --to;
  QString clean;
  for (const QChar sign : QStringView(text).mid(from, to - from)) {
    if (!isControl(sign)) {
      clean += sign;
    } else if (!clean.endsWith(u' ')) {
      clean += u' ';
    }
  }
  return clean;
}

QString importReason(const ImportRow& row, const QString& error) {
  for (const auto& [caption, price] :
       {std::pair(Texts::tr("零售价"), row.price), std::pair(Texts::tr("会员价"), row.memberPrice)}) {
    bool isNumber = false;
    price.toDouble(&isNumber);
    if (price.trimmed().isEmpty()) return Texts::tr("%1是空的：%2").arg(caption, error);
    const QString wrong = notANumber(caption, price);
    if (!isNumber) return error == wrong ? error : wrong + u'：' + error;
  }
  return error;
}

ImportRun::ImportRun(ImportDefaults defaults, RecordSet& scratch, RecordSet* list)
    : defaults_(std::move(defaults)), scratch_(scratch), list_(list) {}

ImportRun::Outcome ImportRun::import(const ImportRow& row) {
  if (!defaults_.duplicatesToo && exists(row.barcode)) return Outcome::Existing;
  refuseStatements(row.price, Texts::tr("零售价"));
  refuseStatements(row.memberPrice, Texts::tr("会员价"));
  const QString code = GetNOID(moduleCode, GPARAM1 ? defaults_.category : QString(), GPARAM2);
  ExecSql(moduleCode, code, u"Add"_s, statements(code, row), 65535, false, true, false, true);
  addToList(code, row);
  return Outcome::Imported;
}

void ImportRun::finish() {
  if (list_ && (list_->state() == RecordSet::State::Edit || list_->state() == RecordSet::State::Insert))
    list_->post();
}

bool ImportRun::exists(const QString& barcode) {
  opensql(scratch_, moduleCode, u"SELECT TM FROM D1801DW WHERE TM='"_s + unquoted(barcode) + u'\'');
  return !scratch_.isEmpty();
}

QString ImportRun::statements(const QString& code, const ImportRow& row) const {
  const QString name = unquoted(row.name);
  const QString price = unquoted(row.price);
  QString batch =
      u"insert into D1801 (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, DJ,MONEY,KC,USER_ID,BDATE, T, NOTE,cd,PYM,DW_ZH,DW_J_NAME)  ValueS('"_s +
      code + u"','"_s + name + u"','"_s + unquoted(row.specification) + u"',1,1,'"_s + defaults_.category +
      u"',0,0,0,'"_s + G_UserId + u"',GETDATE(),1,'','','"_s + Zpy::GetPY(name) + u"','1','');"_s;
  batch += u"insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,cgj) values (1,'"_s + code + u"','"_s +
           defaults_.unit + u"','"_s + unquoted(row.barcode) + u"',1,"_s + price + u","_s +
           unquoted(row.memberPrice) + u","_s + price + u",0);"_s;
  if (G_CKCOUNT_C)
    batch +=
        u"INSERT INTO D1802 (WL_ID, CHECK_KC, CK_ID) select top 1 '"_s + code + u"',1,ck_id from d1007;"_s;
  return batch;
}

void ImportRun::addToList(const QString& code, const ImportRow& row) {
  if (!list_ || !list_->isOpen()) return;
  const auto put = [this](const QString& field, const QVariant& value) {
    if (!list_->hasField(field)) return;
    try {
      list_->setValue(field, value);
    } catch (const EDatabaseError&) {
      list_->setValue(field, {});  // an expression that only the database could read
    }
  };
  list_->append();
  put(u"WL_ID"_s, code);
  put(u"WL_NAME"_s, row.name);
  put(u"WL_GG"_s, row.specification);
  put(u"CLASS_ID"_s, defaults_.category);
  put(u"CLASS_NAME"_s, defaults_.categoryName);
  put(u"USER_ID"_s, G_UserId);
  put(u"USER_NAME"_s, G_UserName);
  put(u"NOTE"_s, QString(u""_s));
  put(u"cd"_s, QString(u""_s));
  put(u"WL_YS"_s, true);
  put(u"CHECK_KC"_s, true);
  put(u"DJ"_s, u"0"_s);
  put(u"dw_id"_s, defaults_.unit);
  put(u"DW_NAME"_s, defaults_.unitName);
  put(u"SJ"_s, row.price);
  put(u"vipSJ"_s, row.memberPrice);
  put(u"CGJ"_s, u"0"_s);
  put(u"pfj"_s, row.price);
  put(u"TM"_s, row.barcode);
  put(u"DW_zh"_s, u"1"_s);
  list_->post();
}

}  // namespace goodsbook
