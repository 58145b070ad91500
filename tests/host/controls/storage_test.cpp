#include "host/controls/storage.h"

#include <QFile>
#include <QTemporaryDir>

#include "host/controls/edits.h"
#include "host/session.h"
#include "tests/host/controls/grid_fixture.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class StorageTest : public testing::Test {
 protected:
  QTemporaryDir folder;
  Session session{nullptr, nullptr, folder.path()};
  TIniPropStorageManEh manager{u"shop.ini"_s};
};

TEST_F(StorageTest, TextsOfElementsComeBack) {
  TCustomDBEditEh edit;
  edit.setObjectName(u"Edt_path"_s);
  edit.setText(u"C:/进货/新品, 一月.xlsx"_s);
  TPropStorageEh store(u"TF2101_IMP"_s, &manager);
  store.addProperty(&edit, "text");
  EXPECT_TRUE(store.SaveProperties());
  edit.clear();
  store.LoadProperties();
  EXPECT_EQ(edit.text(), u"C:/进货/新品, 一月.xlsx"_s);
  EXPECT_TRUE(QFile::exists(folder.filePath(u"shop.ini"_s)));
}

TEST_F(StorageTest, GridLayoutAndWindowComeBack) {
  QWidget window;
  window.resize(640, 480);
  TDBGridEh grid;
  grid.setObjectName(u"DBGridEh"_s);
  grid.setColumns({{.field = u"A"_s, .width = 50}, {.field = u"B"_s, .width = 60}});
  grid.setColumnWidth(1, 133);
  TPropStorageEh store(u"TF2103"_s, &manager);
  store.addGrid(&grid);
  store.addWindow(&window);
  EXPECT_TRUE(store.SaveProperties());
  grid.setColumnWidth(1, 20);
  window.resize(320, 200);
  store.LoadProperties();
  EXPECT_EQ(grid.columnWidth(1), 133);
  EXPECT_EQ(window.size(), QSize(640, 480));
}

TEST_F(StorageTest, NothingStoredChangesNothing) {
  TCustomDBEditEh edit;
  edit.setObjectName(u"Edit1"_s);
  edit.setText(u"x"_s);
  TPropStorageEh store(u"TF"_s, &manager);
  store.addProperty(&edit, "text");
  store.LoadProperties();
  EXPECT_EQ(edit.text(), u"x"_s);
  store.setActive(false);
  EXPECT_FALSE(store.SaveProperties());
  EXPECT_FALSE(QFile::exists(manager.path()));
}

TEST_F(StorageTest, ADamagedFileIsReadAsFarAsItGoesAndWrittenAnew) {
  const auto damage = [this] {
    QFile file(manager.path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Kept]\nk=7\n[Login\nBA001 = \n=]\x01\x02");
  };
  damage();
  EXPECT_TRUE(manager.write(u"Login"_s, {{u"BA001"_s, false}}));
  EXPECT_EQ(manager.read(u"Login"_s, u"BA001"_s, true).toBool(), false);
  EXPECT_EQ(manager.read(u"Kept"_s, u"k"_s).toInt(), 7);
  manager.setIniFileName(u"other.ini"_s);
  damage();
  EXPECT_EQ(manager.read(u"Login"_s, u"BA002"_s, true).toBool(), true);
  EXPECT_EQ(manager.read(u"Kept"_s, u"k"_s).toInt(), 7);
}

TEST_F(StorageTest, OtherSectionsStay) {
  EXPECT_TRUE(manager.write(u"Login"_s, {{u"BA001"_s, true}}));
  EXPECT_TRUE(manager.write(u"TF2101"_s, {{u"DBGridEh.layout"_s, QByteArray("{}")}}));
  EXPECT_EQ(manager.read(u"Login"_s, u"BA001"_s).toBool(), true);
  EXPECT_EQ(manager.read(u"TF2101"_s, u"DBGridEh.layout"_s).toByteArray(), QByteArray("{}"));
}

TEST_F(StorageTest, AnyCompanyNameIsAFileOfTheFolder) {
  manager.setIniFileName(u"../甲/乙:丙"_s);
  EXPECT_EQ(manager.path(), folder.filePath(u".._甲_乙_丙"_s));
  EXPECT_TRUE(manager.write(u"S"_s, {{u"k"_s, 1}}));
  manager.setIniFileName(QString());
  EXPECT_EQ(manager.path(), folder.filePath(u"settings.ini"_s));
}

}  // namespace
}  // namespace goodsbook
