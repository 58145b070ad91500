#include "host/data/odbc/server_address.h"

#include <gtest/gtest.h>

#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook::test {
namespace {

QString errorOf(const QString& text) {
  try {
    ServerAddress::parse(text);
  } catch (const EDatabaseError& error) {
    return error.text;
  }
  return {};
}

TEST(ServerAddress, IsReadWordByWord) {
  const auto address = ServerAddress::parse(
      u"driver={FreeTDS};Server=192.168.0.5; Port=1433 ;Database={a;b}}c};TDS_Version=7.4;"_s);
  EXPECT_EQ(address.driver(), u"FreeTDS"_s);
  EXPECT_EQ(address.server(), u"192.168.0.5"_s);
  EXPECT_EQ(address.port(), 1433);
  EXPECT_EQ(address.database(), u"a;b}c"_s);
  EXPECT_EQ(address.value(u"tds_version"_s), u"7.4"_s);
  EXPECT_EQ(address.displayName(), u"a;b}c @ 192.168.0.5"_s);
  EXPECT_EQ(ServerAddress::parse(address.text()).database(), u"a;b}c"_s);
}

TEST(ServerAddress, HoldsNoSecretsAndRepeatsNone) {
  for (const auto* word : {u"UID", u"PWD", u"Password", u"user id"}) {
    const QString error =
        errorOf(u"Driver=FreeTDS;Server=a;"_s + QString::fromUtf16(word) + u"=geheim;Database=b"_s);
    EXPECT_TRUE(error.contains(u"GOODSBOOK_SERVER_PASSWORD"_s)) << error.toStdString();
    EXPECT_FALSE(error.contains(u"geheim"_s)) << error.toStdString();
  }
}

TEST(ServerAddress, RefusesWhatIsNone) {
  EXPECT_FALSE(errorOf(u""_s).isEmpty());
  EXPECT_FALSE(errorOf(u"Server=a;Database=b"_s).isEmpty());
  EXPECT_FALSE(errorOf(u"Driver=FreeTDS;Server"_s).isEmpty());
  EXPECT_FALSE(errorOf(u"Driver={FreeTDS;Server=a"_s).isEmpty());
}

TEST(ServerAddress, IsToldFromAFile) {
  EXPECT_TRUE(ServerAddress::isAddress(u"Driver=FreeTDS;Server=a"_s));
  EXPECT_FALSE(ServerAddress::isAddress(u"/home/shop/driver.db"_s));
}

}  // namespace
}  // namespace goodsbook::test
