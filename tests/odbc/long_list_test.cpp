#include <QCoreApplication>

#include "host/data/errors.h"
#include "host/data/progressive_load.h"
#include "host/data/record_set.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// A long list comes from the server while the program goes on.
namespace goodsbook::test {
namespace {

constexpr int products = 100'000;

class LongListTest : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    server().psql(
        u"create table list as select i as id, ('商品'||i)::varchar(80) as name, i/7.0::float as price "
        "from generate_series(1,%1) i"_s.arg(products));
    // Rows as the server makes them, not all of them first.
    database_ = openServerDatabase(
        ServerAddress::parse(server().address().text() + u";UseDeclareFetch=1;Fetch=500"_s),
        server().login());
  }

  RecordSet rows_;
};

TEST_F(LongListTest, TheFirstRowsAreThereAtOnceAndTheRestFollowsInSlices) {
  ProgressiveLoad load(rows_);
  int slices = 0;
  QObject::connect(&load, &ProgressiveLoad::progress, &load, [&](int) { ++slices; });
  load.start(database(), u"select * from list"_s);
  EXPECT_GE(load.count(), 200);
  EXPECT_LT(load.count(), products / 10);
  while (load.isRunning()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  EXPECT_EQ(rows_.rowCount(), products);
  EXPECT_GT(slices, 10);
  EXPECT_EQ(rows_.textAt(products - 1, rows_.fieldIndex(u"name"_s)), u"商品%1"_s.arg(products));
}

TEST_F(LongListTest, ACancelledListKeepsWhatIsThereAndTheServerIsFreeAgain) {
  ProgressiveLoad load(rows_);
  load.start(database(), u"select * from list"_s);
  load.cancel();
  EXPECT_FALSE(load.isRunning());
  EXPECT_GE(rows_.rowCount(), 200);
  EXPECT_LT(rows_.rowCount(), products);
  load.start(database(), u"select * from list where id<=5"_s);
  EXPECT_EQ(rows_.rowCount(), 5);
}

TEST_F(LongListTest, SavesRunBesideAListThatIsComing) {
  ProgressiveLoad load(rows_);
  load.start(database(), u"select * from list"_s);
  run(u"update list set name='x'"_s);
  load.waitForAll();
  EXPECT_EQ(rows_.rowCount(), products);
  EXPECT_EQ(rows_.textAt(products - 1, rows_.fieldIndex(u"name"_s)), u"商品%1"_s.arg(products));
}

}  // namespace
}  // namespace goodsbook::test
