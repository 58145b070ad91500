#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/Zpy.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/session.h"
#include "products/U2101_1.h"
#include "products/picture.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

bool isPrice(const QString& field) {
  return QStringList{u"SJ"_s, u"VIPSJ"_s, u"PFJ"_s, u"CGJ"_s}.contains(field);
}

}  // namespace

void TF2101_1::SaveData() {
  refuseWithdrawnNegativeStock(tr("该商品有负库存,不能取消该商品的负库存状态!"));
  if (!singleUnit_) checkUnits();
  CheckBlank(edit(u"Edit2"_s));
  // Lists join to category and unit: without them a product would be lost. A copy brings codes that were
  // never left as fields, and another program may have deleted them meanwhile.
  CheckBlank(edit(u"CLASS_ID"_s));
  CheckId(edit(u"CLASS_ID"_s));
  if (singleUnit_) checkSingleUnit();
  confirmOtherStyle();
  drawNumber();  // last of all, so that a save that is refused uses up none
  save(headerStatements() + unitStatements() + closingStatements());
}

// F6 and a copied product bring here what was never left as a field.
void TF2101_1::checkSingleUnit() {
  CheckBlank(edit(u"dw_id"_s));
  CheckId(edit(u"dw_id"_s));
  for (const QString& price : {u"SJ"_s, u"VIPSJ"_s, u"pfj"_s, u"CGJ"_s}) {
    // A new product's prices are numbers of its statement; what is changed goes there as a text, as does
    // none.
    const bool mayBeEmpty = !isAdding() || price == "pfj"_L1;
    if (!mayBeEmpty || !text(price).isEmpty()) CheckFloatCanZero(edit(price));
  }
}

void TF2101_1::confirmOtherStyle() {
  const bool typed = singleUnit_ ? typedInGrid_ || DataSetDJ.isModified() : typedSingle_;
  if (!typed) return;
  const QString question = singleUnit_
                               ? tr("在【多种单位】表格中输入的内容不会保存(F6可切换查看)，是否继续保存?")
                               : tr("在【一种单位】中输入的内容不会保存(F6可切换查看)，是否继续保存?");
  if (DISPINFO(question, 2) != 'y') throw EAbort();
}

void TF2101_1::drawNumber() {
  const QString typed = text(u"Edit1"_s);
  if (!GPARAM0 || !isAdding() || (typed != tr("自动编号") && !typed.trimmed().isEmpty())) return;
  setText(u"Edit1"_s, {});
  Edit1Exit();
}

QString TF2101_1::headerStatements() const {
  const QString code = text(u"Edit1"_s);
  const QString name = text(u"Edit2"_s);
  const QString unitCount = singleUnit_ ? u"1"_s : QString::number(DataSetDJ.rowCount());
  if (isAdding()) {
    return u"insert into D1801 (WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,DJ,MONEY,KC,USER_ID,BDATE,T,NOTE,cd,dwcount,PYM) ValueS('"_s +
           code + u"','"_s + name + u"','"_s + text(u"Edit3"_s) + u"','"_s + text(u"YS"_s) + u"','"_s +
           text(u"check_kc"_s) + u"','"_s + text(u"CLASS_ID"_s) + u"',0,0,0,'"_s + G_UserId +
           u"',GETDATE(),1,'"_s + text(u"NOTE"_s) + u"','"_s + text(u"CD"_s) + u"','"_s + unitCount +
           u"','"_s + Zpy::GetPY(name) + u"');"_s;
  }
  return u"UPDATE D1801 set WL_NAME='"_s + name + u"',WL_GG='"_s + text(u"Edit3"_s) + u"',WL_YS='"_s +
         text(u"YS"_s) + u"',CHECK_KC='"_s + text(u"check_kc"_s) + u"',CLASS_ID='"_s + text(u"CLASS_ID"_s) +
         u"',NOTE='"_s + text(u"NOTE"_s) + u"',cd='"_s + text(u"CD"_s) + u"',USER_ID='"_s + G_UserId +
         u"',dwcount='"_s + unitCount + u"',pym='"_s + Zpy::GetPY(name) +
         u"',EDATE=GETDATE() where WL_ID='"_s + code + u"';"_s + historyStatement(code);
}

void TF2101_1::checkUnits() {
  units_.check([this](const QString& field) {
    DBGridEh1->setSelectedField(field);
    DBGridEh1->setFocus();
  });
}

QString TF2101_1::unitStatements() const {
  const QString code = text(u"Edit1"_s);
  if (!singleUnit_) return units_.statements(code);
  const QString unit = text(u"dw_id"_s);
  const QString barcode = text(u"TM"_s);
  if (!isAdding()) {
    return u"update d1801dw set dw_id='"_s + unit + u"',tm='"_s + barcode + u"',sj='"_s + text(u"SJ"_s) +
           u"',PFJ='"_s + text(u"pfj"_s) + u"',VIPSJ='"_s + text(u"VIPSJ"_s) + u"',cgj='"_s + text(u"CGJ"_s) +
           u"' where t=1 and wl_id='"_s + code + u"';"_s;
  }
  return u"insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,cgj) values (1,'"_s + code + u"','"_s + unit +
         u"','"_s + barcode + u"',1,"_s + text(u"SJ"_s) + u',' + text(u"VIPSJ"_s) + u',' + text(u"CGJ"_s) +
         u");"_s;
}

QString TF2101_1::closingStatements() const {
  const QString code = text(u"Edit1"_s);
  return u"if EXISTS( select c from ( SELECT COUNT(*) AS c FROM D1801DW WHERE (T = 1) AND (WL_ID = '"_s +
         code +
         u"')GROUP BY T) t where c>1) RAISERROR ('当您把一个已引用的主单位替换时会出现此错误!请把主单位还原回更改前的值', 16, 1,NULL ,NULL ); "_s +
         stockStatement() +
         u"UPDATE D1801 SET TMC=T.TMC FROM D1801,(SELECT D1801.WL_ID, TM.TMC FROM D1801 INNER JOIN D1801DW ON D1801.WL_ID = D1801DW.WL_ID INNER JOIN (SELECT TM, COUNT(TM) AS TMC FROM (SELECT TM  FROM D1801DW UNION ALL SELECT TM  FROM D1801DWTM) TMP GROUP BY TM) TM ON D1801DW.TM = TM.TM AND D1801DW.T = 1 ) T WHERE D1801.WL_ID=T.WL_ID and D1801.WL_ID='"_s +
         code + u"';"_s;
}

void TF2101_1::save(const QString& batch) {
  const QString code = text(u"Edit1"_s);
  const bool changed =
      AdoQry_Pict.state() == RecordSet::State::Edit || AdoQry_Pict.state() == RecordSet::State::Insert;
  const bool stores = mode() == "Add"_L1 || (mode() == "CopyAdd"_L1 ? !Image1->bytes().isEmpty() : changed);
  if (!stores) {
    ExecSql(moduleCode_, code, mode(), batch);
    return;
  }
  if (AdoQry_Pict.isEmpty()) AdoQry_Pict.append();
  execSqlWithPicture(moduleCode_, code, mode(), batch,
                     {AdoQry_Pict, u"D1801"_s, u"WL_ID"_s, code, u"pict"_s});
}

void TF2101_1::showSaved() {
  if (AdoQry_Pict.state() != RecordSet::State::Browse) AdoQry_Pict.post();
  RecordSet& list = listRows();
  storeHeader();
  list.setValue(u"PYM"_s, Zpy::GetPY(text(u"Edit2"_s)));
  list.setValue(isAdding() ? u"BDATE"_s : u"EDATE"_s, Session::current().desktop().now());
  const QStringList unitFields{u"DW_ID"_s, u"DW_NAME"_s, u"SJ"_s, u"VIPSJ"_s, u"PFJ"_s, u"CGJ"_s, u"TM"_s};
  if (singleUnit_) {
    const QStringList elements{u"dw_id"_s, u"DW_NAME"_s, u"SJ"_s, u"VIPSJ"_s, u"pfj"_s, u"CGJ"_s, u"TM"_s};
    for (qsizetype i = 0; i < unitFields.size(); ++i)
      list.setValue(unitFields[i],
                    isPrice(unitFields[i]) ? savedNumber(elements[i]) : QVariant(text(elements[i])));
  } else if (units_.moveToMain()) {
    for (const QString& field : unitFields) list.setValue(field, units_.savedValue(field));
  }
  list.setValue(u"DWCOUNT"_s, singleUnit_ ? 1 : DataSetDJ.rowCount());
  list.post();
}

}  // namespace goodsbook
