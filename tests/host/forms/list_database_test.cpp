#include <QAction>

#include "host/U_function.h"
#include "host/forms/Base_detail.h"
#include "host/forms/Base_outer.h"
#include "host/forms/Sys_filter.h"
#include "host/forms/form_builder.h"
#include "host/lookup/lookup_table.h"
#include "tests/host/data/test_session.h"
#include "tests/host/forms/form_world.h"

using namespace Qt::StringLiterals;

// Lists and editors over a real database: units of measure.

namespace goodsbook {
namespace {

class UnitEditor : public TFrm_Base_Detail {
 public:
  explicit UnitEditor(QWidget* owner) : TFrm_Base_Detail(owner) {
    FormBuilder(*this).fields({
        {.name = u"Edit1"_s, .label = u"单位编号"_s, .limit = 2, .upper = true, .column = u"dw_id"_s},
        {.name = u"Edit2"_s, .label = u"单位名称"_s, .limit = 6, .column = u"dw_name"_s},
        {.name = u"class"_s,
         .label = u"商品分类"_s,
         .kind = FieldKind::Lookup,
         .limit = 4,
         .check = FieldCheck::Id,
         .nameLabel = u"CLASS_NAME"_s,
         .lookup = &lookup::categories()},
    });
    FormCreate();
  }
  void RefreshData() override {
    setLoading(true);
    loadFields();
    TFrm_Base_Detail::RefreshData();
  }
  void SaveData() override {
    const QString code = text(u"Edit1"_s);
    const QString name = text(u"Edit2"_s);
    ExecSql(moduleCode(), code, mode(),
            isAdding() ? u"insert into D1003 (dw_id,dw_name)ValueS('"_s + code + u"','"_s + name + u"')"_s
                       : u"update D1003 set dw_name='"_s + name + u"' where dw_id='"_s + code + u"'"_s,
            0);
  }
};

class UnitFilter : public TFrm_Sys_Filter {
 public:
  explicit UnitFilter(QWidget* owner) : TFrm_Sys_Filter(owner) {
    FormBuilder(*this).fields({{.name = u"Edit1"_s, .label = u"名称"_s}});
    FormCreate();
  }
  void btn_okClick() override {
    TFrm_Sys_Filter::btn_okClick();
    resetCondition();
    Condition_t(u"LIKE"_s, u"dw_name"_s, text(u"Edit1"_s));
    displayText = text(u"Edit1"_s);
    setModalResult(1);
  }
};

class Units : public TFrm_Base_Outer {
 public:
  Units() {
    setColumns({{.field = u"dw_id"_s}, {.field = u"dw_name"_s}});
    FormCreate();
  }
  void InitForm(const Trecord& record) override {
    TFrm_Base_Outer::InitForm(record);
    SetBodyParam(bodyparam::make({{bodyparam::keyField, u"DW_id"_s},
                                  {bodyparam::deleteStatement, u"delete from D1003 Where dw_id=%S"_s},
                                  {bodyparam::listStatement, u"select * From D1003"_s}}));
    setEditor(editor = new UnitEditor(this));
    setFilterDialog(filter = new UnitFilter(this));
  }
  UnitEditor* editor = nullptr;
  UnitFilter* filter = nullptr;
};

class ListsOnDatabase : public testing::Test {
 protected:
  ListsOnDatabase() {
    shop.run(u"insert into D1003 (dw_id,dw_name) values ('KG','公斤'),('PC','个'),('BX','箱')"_s);
    Trecord record;
    record.setModule(103);
    for (const auto right : {Trecord::addRight, Trecord::editRight, Trecord::deleteRight})
      record.setRight(right, true);
    list = new Units;
    list->InitForm(record);
    shop.session().takeStatements();
    (void)QTest::qWaitFor([this] { return list->AdoQry_Main.isOpen(); });
    list->AdoQry_Main.waitForAll();
    QCoreApplication::processEvents();
  }
  ~ListsOnDatabase() override { delete list; }

  void inEditor(const char* action, const std::function<void()>& script) {
    FormWorldSteps::whileModal([&] { list->action(QString::fromLatin1(action))->trigger(); }, script);
  }
  void pressOk() { QTest::keyClick(QApplication::activeModalWidget()->focusWidget(), Qt::Key_F9); }
  std::vector<std::string> sent() {
    std::vector<std::string> texts;
    for (const SentStatement& each : shop.session().takeStatements())
      texts.push_back(
          (each.op + u'|' + each.module + u'|' + each.key + u'|' + each.operation + u'|' + each.sql)
              .toStdString());
    return texts;
  }
  QString units() { return shop.ask(u"select dw_id, dw_name from D1003 order by dw_id"_s); }
  using Texts = std::vector<std::string>;

  test::TestSession shop;
  Units* list = nullptr;
};

TEST_F(ListsOnDatabase, TheListStatementIsSentAsItIs) {
  EXPECT_EQ(sent(), Texts{"opensql|103|||select * From D1003"});
  EXPECT_EQ(list->AdoQry_Main.rowCount(), 3);
}

TEST_F(ListsOnDatabase, ASaveWritesDatabaseAndList) {
  inEditor("Act_Add", [this] {
    list->editor->setText(u"Edit1"_s, u"TO"_s);
    list->editor->setText(u"Edit2"_s, u"吨"_s);
    pressOk();
  });
  EXPECT_EQ(units(), u"BX,箱;KG,公斤;PC,个;TO,吨"_s);
  EXPECT_EQ(list->AdoQry_Main.rowCount(), 4);
  EXPECT_EQ(list->AdoQry_Main.text(u"dw_name"_s), u"吨"_s);
}

TEST_F(ListsOnDatabase, ARefusedSaveLeavesBothAndKeepsTheInput) {
  inEditor("Act_Add", [this] {
    list->editor->setText(u"Edit1"_s, u"KG"_s);
    list->editor->setText(u"Edit2"_s, u"千克"_s);
    pressOk();
    EXPECT_TRUE(list->editor->isVisible());
    EXPECT_EQ(list->editor->text(u"Edit2"_s), u"千克"_s);
    list->editor->done(0);
  });
  EXPECT_EQ(shop.desktop().messages.size(), 1);
  EXPECT_EQ(units(), u"BX,箱;KG,公斤;PC,个"_s);
  EXPECT_EQ(list->AdoQry_Main.rowCount(), 3);
}

TEST_F(ListsOnDatabase, NoIsTheAnswerToADeleteThatNobodyConfirms) {
  list->AdoQry_Main.locate(u"dw_id"_s, u"PC"_s);
  list->action(u"Act_Delete"_s)->trigger();
  EXPECT_EQ(shop.desktop().messages, QStringList{u"2 是否删除【PC 个】?"_s});
  EXPECT_EQ(units(), u"BX,箱;KG,公斤;PC,个"_s);
}

TEST_F(ListsOnDatabase, ADeleteQuotesTheKey) {
  shop.run(u"insert into D1003 (dw_id,dw_name) values ('''','x')"_s);
  list->refresh();
  list->AdoQry_Main.waitForAll();
  list->AdoQry_Main.locate(u"dw_id"_s, u"'"_s);
  shop.session().takeStatements();
  shop.desktop().answer = 'y';
  list->action(u"Act_Delete"_s)->trigger();
  EXPECT_EQ(sent(), Texts{"ExecSql|103|'|Delete|delete from D1003 Where dw_id=''''"});
  EXPECT_EQ(units(), u"BX,箱;KG,公斤;PC,个"_s);
  EXPECT_EQ(list->AdoQry_Main.rowCount(), 3);
}

TEST_F(ListsOnDatabase, AFilterThatBreaksTheStatementLeavesTheRows) {
  FormWorldSteps::whileModal([this] { list->action(u"Act_Filter"_s)->trigger(); },
                             [this] {
                               list->filter->setText(u"Edit1"_s, u"o'clock"_s);
                               pressOk();
                             });
  EXPECT_EQ(shop.desktop().messages.size(), 1);
  EXPECT_EQ(list->AdoQry_Main.rowCount(), 3);
  EXPECT_EQ(list->conditionText(), u""_s);
}

TEST_F(ListsOnDatabase, AFilterIsSentBehindTheStatement) {
  shop.session().takeStatements();
  FormWorldSteps::whileModal([this] { list->action(u"Act_Filter"_s)->trigger(); },
                             [this] {
                               list->filter->setText(u"Edit1"_s, u"公"_s);
                               pressOk();
                             });
  EXPECT_EQ(sent(), Texts{"opensql|103|||select * From D1003 Where dw_name LIKE '%公%'"});
  list->AdoQry_Main.waitForAll();
  EXPECT_EQ(list->AdoQry_Main.rowCount(), 1);
}

TEST_F(ListsOnDatabase, ARefreshFindsTheRowAmongThoseThatComeLater) {
  QString batch;
  for (int i = 0; i < 900; ++i)
    batch += u"insert into D1012 (FF_id,FF_name) values ('%1','x');"_s.arg(i + 1, 0, 36);
  shop.run(batch);
  list->SetBodyParam(bodyparam::make({{bodyparam::keyField, u"FF_id"_s},
                                      {bodyparam::listStatement, u"SELECT * FROM D1012 order by FF_id"_s}}));
  list->refresh();
  list->AdoQry_Main.waitForAll();
  list->AdoQry_Main.locate(u"FF_id"_s, u"OZ"_s);
  const int row = list->AdoQry_Main.currentRow();
  ASSERT_GT(row, 300);
  list->refresh();
  ASSERT_TRUE(QTest::qWaitFor([this] { return !list->AdoQry_Main.isLoading(); }));
  EXPECT_EQ(list->AdoQry_Main.currentRow(), row);
}

TEST_F(ListsOnDatabase, ACodeMustStandInItsTableAndShowsItsName) {
  shop.run(u"insert into D1004 values ('01','饮料','','Z','YL')"_s);
  TExtEdit* edit = list->editor->lookupEdit(u"class"_s);
  edit->setText(u"01"_s);
  list->editor->CheckId(edit);
  EXPECT_EQ(list->editor->text(u"CLASS_NAME"_s), u"饮料"_s);
  edit->setText(u"99"_s);
  EXPECT_THROW(list->editor->CheckId(edit), EAbort);
  EXPECT_EQ(shop.desktop().messages, QStringList{u"5 商品分类【99】不存在!"_s});
  EXPECT_EQ(list->editor->text(u"CLASS_NAME"_s), u""_s) << "not the name of the one before";
  edit->clear();
  list->editor->CheckId(edit);
  EXPECT_EQ(list->editor->text(u"CLASS_NAME"_s), u""_s);
}

TEST_F(ListsOnDatabase, SettingsComeFromTheGlobalsOrTheDatabase) {
  shop.run(u"insert into SYS_SETTING (NAME,VALUE) values ('日结时间','22:00')"_s);
  setGlobal(u"GPARAM2"_s, u"7"_s);
  EXPECT_EQ(list->Getsysinfo(u"gparam2"_s), u"7"_s);
  EXPECT_EQ(list->Getsysinfo(u"日结时间"_s), u"22:00"_s);
  EXPECT_EQ(list->Getsysinfo(u"unknown'"_s), u""_s);
}

TEST_F(ListsOnDatabase, NumbersAreCheckedAsTheyStand) {
  TCustomDBEditEh* edit = list->editor->edit(u"Edit2"_s);
  for (const auto& good : {u"0"_s, u"-1"_s, u"2.50"_s, u" 3 "_s, u".5"_s}) {
    edit->setText(good);
    EXPECT_NO_THROW(list->editor->CheckFloat(edit)) << good.toStdString();
  }
  for (const auto& bad : {u""_s, u"-"_s, u"nan"_s, u"inf"_s, u"1,000"_s, u"12a"_s}) {
    edit->setText(bad);
    EXPECT_THROW(list->editor->CheckFloatCanZero(edit), EAbort) << bad.toStdString();
  }
}

}  // namespace
}  // namespace goodsbook
