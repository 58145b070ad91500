#include "host/data/odbc/server_address.h"

#include <gtest/gtest.h>

#include "host/data/errors.h"
#include "host/data/odbc/connection_text.h"

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

TEST(ServerAddress, AnyValueComesBackAsItWent) {
  for (const QString& value : {u"a}b"_s, u"}"_s, u"}}"_s, u"{"_s, u"{}"_s, u"{a}"_s, u"a;b"_s, u"a=b"_s,
                               u";"_s, u"="_s, u" blanks  "_s, u" "_s, u"商店{一}；=数据库"_s,
                               u"a}};Server=other"_s, u"[x],?*!@"_s, u"'\""_s, u""_s}) {
    const auto made = ServerAddress::of({{u"Server"_s, value},
                                         {u"Driver"_s, u"Driver } of ;{"_s + value},
                                         {u"Database"_s, value},
                                         {u"Encrypt"_s, u"yes"_s}});
    const auto read = ServerAddress::parse(made.text());
    EXPECT_EQ(read.words(), made.words()) << made.text().toStdString();
    EXPECT_EQ(read.database(), value);
    EXPECT_EQ(read.value(u"Encrypt"_s), u"yes"_s);
    EXPECT_TRUE(ServerAddress::isAddress(made.text())) << made.text().toStdString();
  }
}

TEST(ServerAddress, TheDriverMayStandAnywhere) {
  const auto address = ServerAddress::parse(u"Server=a;Driver=FreeTDS;Database=b"_s);
  EXPECT_EQ(address.text(), u"Driver=FreeTDS;Server=a;Database=b"_s);
}

TEST(ServerAddress, KnowsTheSystemsAccount) {
  EXPECT_TRUE(ServerAddress::parse(u"Driver=x;Server=a;trusted_connection=Yes"_s).usesSystemAccount());
  EXPECT_FALSE(ServerAddress::parse(u"Driver=x;Server=a;Trusted_Connection=no"_s).usesSystemAccount());
  EXPECT_FALSE(ServerAddress::parse(u"Driver=x;Server=a"_s).usesSystemAccount());
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

TEST(ServerAddress, UserAndPasswordOfAnyKindFitIntoWhatTheDriverIsGiven) {
  const auto address = ServerAddress::parse(u"Driver=x;Server=a"_s);
  EXPECT_EQ(connectionText(address, {u"a;b"_s, u"}{=; "_s}), u"Driver=x;Server=a;UID={a;b};PWD={}}{=; }"_s);
  const auto own = ServerAddress::parse(u"Driver=x;Server=a;Trusted_Connection=yes"_s);
  EXPECT_EQ(connectionText(own, {u"a"_s, u"b"_s}), u"Driver=x;Server=a;Trusted_Connection=yes"_s);
}

TEST(ServerAddress, FreeTdsIsToldWhatItWouldOtherwiseGuess) {
  EXPECT_EQ(connectionText(ServerAddress::parse(u"Driver=FreeTDS;Server=a"_s), {}),
            u"Driver=FreeTDS;Server=a;ClientCharset=UTF-8;TDS_Version=7.4"_s);
  const QString given = u"Driver=FreeTDS;Server=a;TDS_Version=7.1;ClientCharset=GB18030"_s;
  EXPECT_EQ(connectionText(ServerAddress::parse(given), {}), given);
}

TEST(ServerAddress, IsToldFromAFile) {
  EXPECT_TRUE(ServerAddress::isAddress(u"Driver=FreeTDS;Server=a"_s));
  EXPECT_FALSE(ServerAddress::isAddress(u"/home/shop/driver.db"_s));
}

}  // namespace
}  // namespace goodsbook::test
