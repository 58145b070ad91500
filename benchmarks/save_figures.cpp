#include <memory>

#include "benchmarks/figure.h"
#include "benchmarks/plain_sqlite.h"
#include "benchmarks/suites.h"
#include "engine/connection.h"
#include "engine/syntax/parser.h"

namespace goodsbook::benchmarks {

std::string productSave(const std::string& code, int round) {
  const std::string price = std::to_string(round % 90 + 1) + ".50";
  return "UPDATE D1801 set WL_NAME='样例商品" + std::to_string(round) +
         "',WL_GG='500g',WL_YS='1',CHECK_KC='1',CLASS_ID='0101',NOTE='',cd='上海',USER_ID='ADMIN',dwcount='1',pym='YLSP',EDATE=GETDATE() where WL_ID='" +
         code +
         "';insert into d1801b (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, BDATE,EDATE, T, NOTE,CD) select WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, getdate(),EDATE, T, NOTE,CD from d1801 where wl_id='" +
         code + "';update d1801dw set dw_id='01',tm='6999999999999',sj='" + price + "',PFJ='" + price +
         "',VIPSJ='" + price + "',cgj='" + price + "' where t=1 and wl_id='" + code +
         "';if EXISTS( select c from ( SELECT COUNT(*) AS c FROM D1801DW WHERE (T = 1) AND (WL_ID = '" +
         code +
         "')GROUP BY T) t where c>1) RAISERROR ('当您把一个已引用的主单位替换时会出现此错误!请把主单位还原回更改前的值', 16, 1,NULL ,NULL ); update d1802 set CHECK_KC=1 where wl_id='" +
         code +
         "';UPDATE D1801 SET TMC=T.TMC FROM D1801,(SELECT D1801.WL_ID, TM.TMC FROM D1801 INNER JOIN D1801DW ON D1801.WL_ID = D1801DW.WL_ID INNER JOIN (SELECT TM, COUNT(TM) AS TMC FROM (SELECT TM  FROM D1801DW UNION ALL SELECT TM  FROM D1801DWTM) TMP GROUP BY TM) TM ON D1801DW.TM = TM.TM AND D1801DW.T = 1 ) T WHERE D1801.WL_ID=T.WL_ID and D1801.WL_ID='" +
         code + "';";
}

namespace {

// The same statements in SQLite's words, prepared once.
class PreparedSave {
 public:
  explicit PreparedSave(PlainSqlite& plain)
      : plain_(plain),
        header_(plain.prepare(
            "UPDATE D1801 SET WL_NAME=?1,WL_GG=?2,WL_YS=1,CHECK_KC=1,CLASS_ID=?3,NOTE=?4,cd=?5,USER_ID=?6,"
            "dwcount=1,pym=?7,EDATE=4000000000000 WHERE WL_ID=?8")),
        history_(plain.prepare(
            "INSERT INTO D1801B (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, "
            "BDATE,EDATE, T, NOTE,CD) SELECT WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, "
            "money, USER_ID, 4000000000000,EDATE, T, NOTE,CD FROM D1801 WHERE WL_ID=?1")),
        unit_(plain.prepare(
            "UPDATE D1801DW SET DW_ID=?1,TM=?2,SJ=CAST(?3 AS REAL),PFJ=CAST(?4 AS REAL),VIPSJ=CAST(?5 AS REAL),"
            "CGJ=CAST(?6 AS REAL) WHERE T=1 AND WL_ID=?7")),
        guard_(plain.prepare(
            "SELECT EXISTS(SELECT c FROM (SELECT COUNT(*) AS c FROM D1801DW WHERE T=1 AND WL_ID=?1 GROUP BY T) "
            "WHERE c>1)")),
        stock_(plain.prepare("UPDATE D1802 SET CHECK_KC=1 WHERE WL_ID=?1")),
        count_(plain.prepare(
            "UPDATE D1801 SET TMC=T.TMC FROM (SELECT P.WL_ID, TM.TMC FROM D1801 P INNER JOIN D1801DW ON "
            "P.WL_ID = D1801DW.WL_ID INNER JOIN (SELECT TM, COUNT(TM) AS TMC FROM (SELECT TM FROM D1801DW "
            "UNION ALL SELECT TM FROM D1801DWTM) GROUP BY TM) TM ON D1801DW.TM = TM.TM AND D1801DW.T = 1) T "
            "WHERE D1801.WL_ID=T.WL_ID AND D1801.WL_ID=?1")) {}

  void save(const std::string& code, int round) {
    const std::string price = std::to_string(round % 90 + 1) + ".50";
    const std::string name = "样例商品" + std::to_string(round);
    plain_.run("BEGIN IMMEDIATE");
    plain_.runPrepared(header_, {name, "500g", "0101", "", "上海", "ADMIN", "YLSP", code});
    plain_.runPrepared(history_, {code});
    plain_.runPrepared(unit_, {"01", "6999999999999", price, price, price, price, code});
    plain_.runPrepared(guard_, {code});
    plain_.runPrepared(stock_, {code});
    plain_.runPrepared(count_, {code});
    plain_.run("COMMIT");
  }

 private:
  PlainSqlite& plain_;
  sqlite3_stmt *header_, *history_, *unit_, *guard_, *stock_, *count_;
};

}  // namespace

int saveFigures(const std::string& databaseFile) {
  constexpr int saves = 100;
  int missed = 0;
  {
    const auto connection = engine::Connection::open(databaseFile);
    PlainSqlite plain(databaseFile);
    PreparedSave prepared(plain);
    std::string code;
    {
      sqlite3_stmt* first = plain.prepare("SELECT WL_ID FROM D1801 ORDER BY WL_ID LIMIT 1 OFFSET 100");
      sqlite3_step(first);
      code = reinterpret_cast<const char*>(sqlite3_column_text(first, 0));
      sqlite3_reset(first);
    }
    Ignore ignore;
    int round = 0;
    const Pair pair = sideBySide(
        5,
        [&] {
          for (int i = 0; i < saves; ++i) connection->execute(productSave(code, ++round), ignore);
        },
        [&] {
          for (int i = 0; i < saves; ++i) prepared.save(code, ++round);
        });
    missed += !print(
        {"translate and run one product save batch", "ms", pair.ours / saves, pair.floor / saves, 1.5});
  }
  constexpr int parses = 2000;
  const std::string batch = productSave("0001", 1);
  const double total = milliseconds([&] {
    for (int i = 0; i < parses; ++i) engine::parse(batch);
  });
  missed += !print({"read that batch into a syntax tree", "ms", total / parses, 0, 0.2});
  return missed;
}

}  // namespace goodsbook::benchmarks
