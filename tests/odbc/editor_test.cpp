#include <QAction>
#include <QProgressDialog>
#include <QPushButton>

#include "host/controls/window_attendant.h"
#include "host/forms/Base_detail.h"
#include "host/forms/Base_outer.h"
#include "host/forms/form_builder.h"
#include "tests/host/data/test_session.h"
#include "tests/host/forms/form_world.h"
#include "tests/odbc/relay.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// A list and its editor on a server whose connection goes away.
namespace goodsbook::test {
namespace {

class UnitEditor : public TFrm_Base_Detail {
 public:
  explicit UnitEditor(QWidget* owner) : TFrm_Base_Detail(owner) {
    FormBuilder(*this).fields(
        {{.name = u"Edit1"_s, .label = u"单位编号"_s, .limit = 2, .upper = true, .column = u"dw_id"_s},
         {.name = u"Edit2"_s, .label = u"单位名称"_s, .limit = 6, .column = u"dw_name"_s}});
    FormCreate();
  }
  void SaveData() override {
    ExecSql(moduleCode(), text(u"Edit1"_s), mode(),
            u"insert into D1003 (dw_id,dw_name) values ('%1','%2')"_s.arg(text(u"Edit1"_s), text(u"Edit2"_s)),
            0);
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
    SetBodyParam(bodyparam::make(
        {{bodyparam::keyField, u"dw_id"_s}, {bodyparam::listStatement, u"select * from D1003"_s}}));
    setEditor(editor = new UnitEditor(this));
  }
  UnitEditor* editor = nullptr;
};

class EditorTest : public ServerTest, protected FormWorldSteps {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    server().psql(
        u"create function getdate() returns timestamp language sql as 'select localtimestamp::timestamp(3)';"
        "create table D1003 (dw_id varchar(2) primary key, dw_name varchar(6));"
        "create table SYS_AUDIT (AUDIT_ID serial, AUDIT_TIME timestamp, USER_ID varchar(10), MODULE varchar(10), "
        "KEY_VALUE varchar(100), OPERATION varchar(20), STATEMENT text, TOKEN varchar(36))"_s);
    relay_ = std::make_unique<Relay>(server().port());
    auto desktop = std::make_unique<QuietDesktop>(QDateTime(QDate(2026, 11, 20), QTime(10, 11, 12)));
    desktop_ = desktop.get();
    session_ =
        std::make_unique<Session>(openServerDatabase(server().address(relay_->port()), server().login(),
                                                     {.connectSeconds = 5, .attend = attendInWindow()}),
                                  std::move(desktop), folder_.path());
    Trecord record;
    record.setModule(103);
    record.setRight(Trecord::addRight, true);
    list_ = std::make_unique<Units>();
    list_->InitForm(record);
    list_->setAttribute(Qt::WA_DeleteOnClose, false);
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return list_->AdoQry_Main.isOpen() && list_->action(u"Act_Add"_s)->isEnabled(); }));
  }
  void TearDown() override {
    list_.reset();
    session_.reset();
    relay_.reset();
    ServerTest::TearDown();
  }

  static void pressOk() { QTest::keyClick(QApplication::activeModalWidget()->focusWidget(), Qt::Key_F9); }
  QString units() const { return server().psql(u"select dw_id||dw_name from D1003"_s); }

  QTemporaryDir folder_;
  std::unique_ptr<Relay> relay_;
  QuietDesktop* desktop_ = nullptr;
  std::unique_ptr<Session> session_;
  std::unique_ptr<Units> list_;
};

TEST_F(EditorTest, ALossIsToldOnceTheInputStaysAndTheNextSaveConnectsAgain) {
  whileModal([this] { list_->action(u"Act_Add"_s)->trigger(); },
             [this] {
               UnitEditor& editor = *list_->editor;
               editor.setText(u"Edit1"_s, u"KG"_s);
               editor.setText(u"Edit2"_s, u"公斤"_s);
               relay_->breakAll();
               pressOk();
               ASSERT_EQ(desktop_->messages.size(), 1) << desktop_->messages.join(u'|').toStdString();
               EXPECT_TRUE(desktop_->messages.front().contains(u"连接断开"_s));
               EXPECT_TRUE(editor.isVisible());
               EXPECT_EQ(editor.text(u"Edit2"_s), u"公斤"_s);
               EXPECT_EQ(list_->AdoQry_Main.rowCount(), 0);
               EXPECT_EQ(units(), u""_s);
               pressOk();
             });
  EXPECT_EQ(desktop_->messages.size(), 1) << desktop_->messages.join(u'|').toStdString();
  EXPECT_EQ(units(), u"KG公斤"_s);
  EXPECT_EQ(list_->AdoQry_Main.rowCount(), 1);
}

TEST_F(EditorTest, ASaveWhoseAnswerIsLostIsSavedOnceAndNotToldAsAnError) {
  whileModal([this] { list_->action(u"Act_Add"_s)->trigger(); },
             [this] {
               list_->editor->setText(u"Edit1"_s, u"KG"_s);
               list_->editor->setText(u"Edit2"_s, u"公斤"_s);
               relay_->breakAt("COMMIT", Relay::Moment::BeforeAnswer);
               pressOk();
             });
  EXPECT_TRUE(desktop_->messages.isEmpty()) << desktop_->messages.join(u'|').toStdString();
  EXPECT_EQ(units(), u"KG公斤"_s);
  EXPECT_EQ(list_->AdoQry_Main.rowCount(), 1);
}

TEST_F(EditorTest, ARefreshOverALostConnectionIsToldOnceAndTheRowsStay) {
  server().psql(u"insert into D1003 values ('KG','公斤')"_s);
  list_->refresh();
  relay_->breakAll();
  list_->action(u"Act_Refresh"_s)->trigger();
  EXPECT_EQ(desktop_->messages.size(), 1) << desktop_->messages.join(u'|').toStdString();
  EXPECT_EQ(list_->AdoQry_Main.rowCount(), 1);
  server().psql(u"insert into D1003 values ('PC','个')"_s);
  list_->action(u"Act_Refresh"_s)->trigger();
  EXPECT_EQ(desktop_->messages.size(), 1);
  EXPECT_EQ(list_->AdoQry_Main.rowCount(), 2);
}

QProgressDialog* waitBox() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* box = qobject_cast<QProgressDialog*>(widget);
    if (box && box->isVisible() && box->objectName() == "ServerWait"_L1) return box;
  }
  return nullptr;
}

TEST_F(EditorTest, ASaveThatTakesLongShowsABoxThatNothingClosesAndTheInputWaits) {
  bool seen = false;
  whileModal([this] { list_->action(u"Act_Add"_s)->trigger(); },
             [&] {
               UnitEditor& editor = *list_->editor;
               editor.setText(u"Edit1"_s, u"KG"_s);
               QTimer look;
               QObject::connect(&look, &QTimer::timeout, &editor, [&] {
                 QProgressDialog* box = waitBox();
                 if (!box || seen) return;
                 seen = true;
                 EXPECT_FALSE(box->findChild<QPushButton*>());
                 EXPECT_EQ(QApplication::activeModalWidget(), box);
                 QTest::keyClick(box, Qt::Key_Escape);
                 box->close();
                 EXPECT_TRUE(box->isVisible());
                 ASSERT_TRUE(QApplication::overrideCursor());
                 EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
                 relay_->freeze(false);
               });
               look.start(10);
               relay_->freezeAt("insert into D1003");
               pressOk();
             });
  EXPECT_TRUE(seen);
  EXPECT_FALSE(waitBox());
  EXPECT_FALSE(QApplication::overrideCursor());
  EXPECT_TRUE(desktop_->messages.isEmpty()) << desktop_->messages.join(u'|').toStdString();
  EXPECT_EQ(units(), u"KG"_s);
  EXPECT_EQ(list_->AdoQry_Main.rowCount(), 1);
}

TEST_F(EditorTest, ConnectingAgainForASaveCanBeGivenUpAndTheInputStays) {
  whileModal([this] { list_->action(u"Act_Add"_s)->trigger(); },
             [&] {
               UnitEditor& editor = *list_->editor;
               editor.setText(u"Edit1"_s, u"KG"_s);
               relay_->breakAll();
               pressOk();
               desktop_->messages.clear();
               relay_->freeze(true);
               QTimer look;
               QObject::connect(&look, &QTimer::timeout, &editor, [] {
                 if (QProgressDialog* box = waitBox()) box->findChild<QPushButton*>()->click();
               });
               look.start(10);
               QElapsedTimer clock;
               clock.start();
               pressOk();
               EXPECT_LT(clock.elapsed(), 4'000);
               EXPECT_TRUE(desktop_->messages.isEmpty()) << desktop_->messages.join(u'|').toStdString();
               EXPECT_TRUE(editor.isVisible());
               EXPECT_EQ(editor.text(u"Edit1"_s), u"KG"_s);
               relay_->freeze(false);
               pressOk();
             });
  EXPECT_EQ(units(), u"KG"_s);
}

TEST_F(EditorTest, ASlowListShowsProgressThatCancels) {
  list_->SetBodyParam(
      bodyparam::make({{bodyparam::keyField, u"dw_id"_s},
                       {bodyparam::listStatement, u"select varchar(2) 'XX' as dw_id from pg_sleep(30)"_s}}));
  QTimer look;
  bool seen = false;
  QObject::connect(&look, &QTimer::timeout, list_.get(), [&] {
    auto* dialog = list_->findChild<QProgressDialog*>();
    if (!dialog || !dialog->isVisible() || seen) return;
    seen = true;
    dialog->findChild<QPushButton*>()->click();
  });
  look.start(10);
  QElapsedTimer clock;
  clock.start();
  list_->action(u"Act_Refresh"_s)->trigger();
  EXPECT_TRUE(seen);
  EXPECT_LT(clock.elapsed(), 10'000);
  EXPECT_TRUE(desktop_->messages.isEmpty()) << desktop_->messages.join(u'|').toStdString();
  EXPECT_FALSE(list_->findChild<QProgressDialog*>());
}

}  // namespace
}  // namespace goodsbook::test
