#include "products/merge.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace goodsbook::merge {

namespace {

// Documents that move stock. Orders (D8101A, D8201A) move none and are left out.
const QStringList stockDocuments{u"D712A"_s,  u"D713A"_s,  u"D704A"_s,  u"D8401A"_s, u"D8402A"_s,
                                 u"D8403A"_s, u"D8300A"_s, u"D8301A"_s, u"D8302A"_s, u"D8303A"_s,
                                 u"D8102A"_s, u"D8103A"_s, u"D8202A"_s, u"D8203A"_s};

// Every document, orders included.
const QStringList allDocuments{u"D712A"_s,  u"D713A"_s,  u"D704A"_s,  u"d8401A"_s, u"d8402A"_s, u"d8403A"_s,
                               u"d8300A"_s, u"d8301A"_s, u"d8302A"_s, u"d8303A"_s, u"d8101A"_s, u"d8102A"_s,
                               u"d8103A"_s, u"d8201A"_s, u"d8202A"_s, u"d8203A"_s};

QString stockRows(const QString& kept, const QString& folded) {
  QStringList sources;
  for (const QString& table : stockDocuments) sources << u"SELECT CK_ID,WL_ID FROM "_s + table;
  return u"INSERT INTO D1802 (WL_ID, CK_ID, KC, DJ, CK_KW, CK_ACCL, BDATE, BEGIN_SL, BEGIN_MONEY, CHECK_KC) SELECT '"_s +
         kept + u"',B.*,0,0,NULL,0,GETDATE(),0,0,(SELECT CHECK_KC FROM D1801 WHERE WL_ID='"_s + kept +
         u"') FROM (SELECT A.CK_ID FROM ("_s + sources.join(u" UNION ALL "_s) + u" ) A WHERE A.WL_ID='"_s +
         folded + u"' GROUP BY A.CK_ID) B LEFT JOIN (SELECT CK_ID FROM D1802 WHERE WL_ID='"_s + kept +
         u"') C ON B.CK_ID=C.CK_ID WHERE C.CK_ID IS NULL; "_s;
}

QString sharedDocuments(const QString& kept, const QString& folded) {
  const QString either = u"(WL_ID='"_s + kept + u"') OR (WL_ID='"_s + folded + u"')"_s;
  const QString both =
      u"(SELECT NOID FROM D8301A WHERE "_s + either + u" GROUP BY NOID HAVING COUNT(*)>1) B"_s;
  return u"update d8301a set sl=a.sl,money=a.money,kc=a.kc,sl1=a.sl1,sl2=a.sl2,sl3=a.sl3 from (SELECT  I.NOID, I.CK_ID, SUM(I.SL) AS sl, SUM(I.MONEY) AS money, SUM(I.KC) AS kc, SUM(I.SL1) AS sl1, SUM(I.SL2) AS sl2, SUM(I.SL3) AS sl3 FROM D8301A I INNER JOIN "_s +
         both + u" ON I.NOID=B.NOID WHERE "_s + either +
         u" GROUP BY I.NOID, I.CK_ID) a where d8301a.noid=a.noid and (WL_ID='"_s + kept +
         u"');delete from d8301a from "_s + both + u" where d8301a.noid=b.noid and (WL_ID='"_s + folded +
         u"');"_s;
}

}  // namespace

QString statements(const QString& kept, const QString& keptUnit, const QString& folded) {
  QString batch = stockRows(kept, folded) + sharedDocuments(kept, folded);
  for (const QString& table : allDocuments) {
    batch += u"update  "_s + table + u" set wl_id='"_s + kept + u"',adw="_s + keptUnit + u" where wl_id='"_s +
             folded + u"';"_s;
  }
  return batch + u"delete from d1801 where wl_id='"_s + folded + u"';"_s;
}

}  // namespace goodsbook::merge
