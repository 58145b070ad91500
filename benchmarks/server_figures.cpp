#include <chrono>
#include <cstdio>
#include <memory>

#include "benchmarks/figure.h"
#include "benchmarks/plain_odbc.h"
#include "benchmarks/suites.h"
#include "host/data/odbc/connection_text.h"
#include "host/data/record_set.h"
#include "host/data/server_database.h"
#include "tests/odbc/postgres_server.h"

using namespace Qt::StringLiterals;

namespace goodsbook::benchmarks {
namespace {

// As a list screen does it, but in one go.
void load(Database& database, const QString& select, RecordSet& rows) {
  const auto cursor = database.openCursorBeside(select, [] { return true; });
  rows.beginLoad(cursor->columns());
  while (cursor->ready(std::chrono::hours(1)) && cursor->next()) rows.appendLoaded(cursor->row());
  rows.endLoad();
}

// A list of the shape of the product list.
QString makeList(int products) {
  return u"create table list as select i as id, ('P'||i)::varchar(20) as wl_id, ('商品名称'||i)::varchar(80) as name, "
         "('规格'||i%50)::varchar(40) as gg, ('C'||i%30)::varchar(4) as class_id, '日用百货'::varchar(40) as class_name, "
         "(i%3)::int as dwcount, '01'::varchar(2) as dw_id, '瓶'::varchar(6) as dw_name, null::varchar(50) as cd, "
         "i/7.0::float as dj, i/8.0::float as cgj, i/9.0::float as sj, i/10.0::float as vipsj, i/11.0::float as pfj, "
         "0::float as pfj1, 0::float as pfj2, (6900000000000+i)::varchar(30) as tm, ('SPMC'||i)::varchar(80) as pym, "
         "'ADMIN'::varchar(10) as user_id, '系统管理员'::varchar(20) as user_name, "
         "timestamp '2026-11-20 10:11:12' + i * interval '1 second' as bdate, null::timestamp as edate, "
         "''::varchar(100) as note, 1::int as t from generate_series(1,%1) i"_s.arg(products);
}

}  // namespace

int serverFigures(int products) {
  std::unique_ptr<test::PostgresServer> server;
  try {
    server = std::make_unique<test::PostgresServer>();
    server->psql(makeList(products));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "left out: opening a list through ODBC; no PostgreSQL server can be had here: %s\n",
                 error.what());
    return 0;
  }
  const QString select = u"select * from list"_s;
  const auto database = openServerDatabase(server->address(), server->login());
  PlainOdbc plain(connectionText(server->address(), server->login()).toStdU16String());
  const Pair pair = sideBySide(
      5,
      [&] {
        RecordSet rows;
        load(*database, select, rows);
      },
      [&] { plain.readAll(select.toStdU16String()); });
  return print({"open a list of a server's through ODBC into a record set", "ms", pair.ours, pair.floor, 1.3})
             ? 0
             : 1;
}

}  // namespace goodsbook::benchmarks
