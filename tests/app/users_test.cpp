#include "app/sign_in/users.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "app/driver/drive_desktop.h"
#include "app/start.h"
#include "host/data/sql_sets.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class UsersTest : public ::testing::Test {
 protected:
  void run(const QString& batch) { runSql(session_->database(), batch, Database::Permission::Owner); }
  Users users() { return Users(session_->database()); }

  QTemporaryDir folder_;
  std::unique_ptr<Session> session_ = openSession(
      folder_.filePath(u"test.db"_s), folder_.filePath(u"new/program"_s), std::make_unique<DriveDesktop>());
};

TEST_F(UsersTest, AFreshDatabaseHasTheAdministratorWithoutPassword) {
  const std::vector<User> active = users().active();
  ASSERT_EQ(active.size(), 1U);
  EXPECT_EQ(active[0].id, u"ADMIN"_s);
  EXPECT_EQ(active[0].name, u"系统管理员"_s);
  EXPECT_TRUE(users().isPassword(u"ADMIN"_s, {}));
  EXPECT_FALSE(users().isPassword(u"ADMIN"_s, u"x"_s));
  EXPECT_TRUE(QDir(folder_.filePath(u"new/program"_s)).exists());
}

TEST_F(UsersTest, APasswordIsKeptAsAHashAndCanBeTakenAway) {
  users().setPassword(u"ADMIN"_s, u"密码'1"_s);
  EXPECT_TRUE(users().isPassword(u"ADMIN"_s, u"密码'1"_s));
  EXPECT_FALSE(users().isPassword(u"ADMIN"_s, {}));
  const SqlSets stored =
      runSql(session_->database(), u"select HASH from SYS_PASSWORD"_s, Database::Permission::Owner);
  EXPECT_TRUE(stored.sets[0].rows[0][0]->startsWith(u"$argon2"_s));
  users().setPassword(u"ADMIN"_s, {});
  EXPECT_TRUE(users().isPassword(u"ADMIN"_s, {}));
}

TEST_F(UsersTest, SigningInSetsTheGlobalsOfTheHost) {
  run(u"insert into SYS_SETTING (NAME, VALUE) values ('GPARAM23','0'),('G_CHKCK','1'),('G_CoName',N'样例商店'),"
      "('G_ckid','01'),('UNKNOWN','x'); insert into D1007 (CK_ID, CK_NAME, OID) values ('01',N'总仓','Z')"_s);
  signIn(*session_, u"admin"_s, {});
  EXPECT_EQ(G_UserId, u"ADMIN"_s);
  EXPECT_EQ(G_UserName, u"系统管理员"_s);
  EXPECT_EQ(GPARAM23, u"0"_s);
  EXPECT_TRUE(G_CHKCK);
  EXPECT_EQ(G_CoName, u"样例商店"_s);
  EXPECT_EQ(G_CkName, u"总仓"_s);
}

TEST_F(UsersTest, AUserWithoutAWarehouseOfHisSettingsTakesTheFirstOfHisOwn) {
  run(u"insert into D1007 (CK_ID, CK_NAME, OID) values ('01',N'总仓','Z'),('02',N'分仓','Z'),('03',N'门店','Z')"_s);
  signIn(*session_, u"ADMIN"_s, {});
  EXPECT_EQ(G_ckid, QString());
  takeFirstWarehouse(*session_);
  EXPECT_EQ(G_CkName, u"总仓"_s);
  run(u"insert into SYS_USER_CK (USER_ID, CK_ID) values ('ADMIN','03'),('ADMIN','02'),('OTHER','01')"_s);
  signIn(*session_, u"ADMIN"_s, {});
  takeFirstWarehouse(*session_);
  EXPECT_EQ(G_ckid, u"02"_s);
  EXPECT_EQ(G_CkName, u"分仓"_s);
}

TEST_F(UsersTest, WrongPasswordsUnknownAndInactiveUsersStayOutside) {
  run(u"insert into SYS_USER (USER_ID, USER_NAME, T) values ('OLD',N'离职',0)"_s);
  users().setPassword(u"ADMIN"_s, u"right"_s);
  EXPECT_THROW(signIn(*session_, u"ADMIN"_s, u"wrong"_s), StartError);
  EXPECT_THROW(signIn(*session_, u"ADMIN"_s, {}), StartError);
  EXPECT_THROW(signIn(*session_, u"NOBODY"_s, {}), StartError);
  EXPECT_THROW(signIn(*session_, u"OLD"_s, {}), StartError);
  EXPECT_NO_THROW(signIn(*session_, u"ADMIN"_s, u"right"_s));
}

TEST_F(UsersTest, TheAdministratorMayDoEverything) {
  const auto record = users().callRecord(u"ADMIN"_s, 101);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->module(), 101);
  for (const auto right : {Trecord::importRight, Trecord::addRight, Trecord::editRight, Trecord::deleteRight,
                           Trecord::printRight, Trecord::exportRight, Trecord::costRight}) {
    EXPECT_TRUE(record->right(right)) << right;
  }
}

TEST_F(UsersTest, AModulesOwnRightsGoBeforeThoseForAllModules) {
  run(u"insert into SYS_RIGHT (USER_ID, MODULE, R_ADD, R_COST) values ('U1','103',1,0),('U1','*',0,1);"
      "insert into SYS_RIGHT (USER_ID, MODULE, R_EDIT) values ('U2','104',1)"_s);
  const auto own = users().callRecord(u"U1"_s, 103);
  ASSERT_TRUE(own);
  EXPECT_TRUE(own->right(Trecord::addRight));
  EXPECT_FALSE(own->right(Trecord::costRight));
  const auto all = users().callRecord(u"U1"_s, 101);
  ASSERT_TRUE(all);
  EXPECT_FALSE(all->right(Trecord::addRight));
  EXPECT_TRUE(all->right(Trecord::costRight));
  EXPECT_TRUE(users().callRecord(u"U2"_s, 104));
  EXPECT_FALSE(users().callRecord(u"U2"_s, 101)) << "no row, no way in";
}

}  // namespace
}  // namespace goodsbook
