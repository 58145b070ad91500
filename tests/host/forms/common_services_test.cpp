#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>

#include "host/data/errors.h"
#include "host/forms/Base_panel.h"
#include "host/forms/Base_qry.h"
#include "host/forms/form_builder.h"
#include "tests/host/data/test_session.h"
#include "tests/host/forms/form_world.h"

using namespace Qt::StringLiterals;

// What every screen has from its base: values on a panel, pages of a list, last words, waiting for all rows.

namespace goodsbook {
namespace {

class Panel : public TFrm_Base_Panel {
 public:
  Panel() {
    FormBuilder(*this).fields(
        {{.name = u"Edit1"_s, .label = u"售价"_s},
         {.name = u"SJ"_s, .label = u"零售价"_s, .kind = FieldKind::Value, .column = u"SJ"_s}});
    FormCreate();
  }
};

class Panels : public FormWorld {
 protected:
  ~Panels() override { resetGlobals(); }
};

TEST_F(Panels, NumbersStandInThePriceFormat) {
  Panel panel;
  panel.SetFloatText(u"Edit1"_s, u"2.5"_s);
  EXPECT_EQ(panel.text(u"Edit1"_s), u"2.50"_s);
  panel.SetFloatText(u"SJ"_s, u"1e3"_s);
  EXPECT_EQ(panel.text(u"SJ"_s), u"1000.00"_s);
  G_PriceFormat = u"0.0000"_s;
  panel.SetFloatText(u"Edit1"_s, u"-0.12345"_s);
  EXPECT_EQ(panel.text(u"Edit1"_s), u"-0.1235"_s);
}

TEST_F(Panels, WhatIsNoNumberStaysAsItIs) {
  Panel panel;
  for (const QString& text : {u"无权查看"_s, u""_s, u"1,5"_s}) {
    panel.SetFloatText(u"Edit1"_s, text);
    EXPECT_EQ(panel.text(u"Edit1"_s), text);
  }
  EXPECT_THROW(panel.SetFloatText(u"Nothing"_s, u"1"_s), std::logic_error);
}

// Says when it goes.
class Speaker : public TFrm_Base_Common {
 public:
  Speaker(QWidget* owner, int& spoken) : TFrm_Base_Common(owner), spoken_(spoken) {}
  ~Speaker() override { lastWords(); }
  void FormDestroy() override { ++spoken_; }

 private:
  int& spoken_;
};

class LastWords : public FormWorld {
 protected:
  int spoken = 0;
};

TEST_F(LastWords, AreSpokenOnceByAScreenThatIsClosedForGood) {
  QPointer<Speaker> screen = new Speaker(nullptr, spoken);
  screen->setAttribute(Qt::WA_DeleteOnClose);
  screen->show();
  screen->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(screen);
  EXPECT_EQ(spoken, 1);
}

TEST_F(LastWords, AreSpokenByAScreenThatItsOwnerTakesAlong) {
  {
    QWidget owner;
    new Speaker(&owner, spoken);
    EXPECT_EQ(spoken, 0);
  }
  EXPECT_EQ(spoken, 1);
}

TEST_F(LastWords, AScreenThatIsOnlyHiddenKeepsThem) {
  Speaker screen(nullptr, spoken);
  screen.show();
  screen.close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(spoken, 0);
}

class PaymentList : public TFrm_Base_Qry {
 public:
  PaymentList() {
    setColumns({{.field = u"FF_ID"_s}, {.field = u"FF_NAME"_s}});
    FormCreate();
    SetFormParam(u"124"_s);
    SetBodyParam(bodyparam::make({{bodyparam::keyField, u"FF_id"_s}}));
  }
  void fill(const QString& select) {
    loadsOnOpen = true;
    setListStatement(select);
    GetData();
  }
};

class Services : public testing::Test {
 protected:
  Services() {
    QString batch;
    for (int i = 0; i < 500; ++i)
      batch += u"insert into D1012 (FF_ID,FF_NAME) values ('%1','x');"_s.arg(i, 2, 36, QChar(u'0'));
    shop.run(batch);
  }
  test::TestSession shop;
};

QString codes(RecordSet& rows) {
  QStringList list;
  for (rows.first(); !rows.eof(); rows.next()) list << rows.text(u"FF_ID"_s);
  return list.join(u',');
}

TEST_F(Services, AListIsReadByPagesInTheOrderOfItsKey) {
  PaymentList screen;
  shop.session().takeStatements();
  RecordSet page;
  const QString select = u"select * from D1012 where FF_ID<'05'"_s;
  EXPECT_TRUE(screen.OpenSqlPage(page, select, 2, 1));
  EXPECT_EQ(codes(page), u"00,01"_s);
  EXPECT_TRUE(screen.OpenSqlPage(page, select, 2, 3));
  EXPECT_EQ(codes(page), u"04"_s) << "the last page is what is left";
  EXPECT_TRUE(screen.OpenSqlPage(page, select, 2, 4));
  EXPECT_TRUE(page.isEmpty());
  EXPECT_TRUE(screen.OpenSqlPage(page, select + u" order by FF_ID desc"_s, 2, 1));
  EXPECT_EQ(codes(page), u"04,03"_s) << "an order of its own goes before the key";
  const std::vector<SentStatement> sent = shop.session().takeStatements();
  ASSERT_EQ(sent.size(), 4U);
  EXPECT_EQ(sent[0].module, u"124"_s);
  EXPECT_EQ(sent[0].sql, select);
}

TEST_F(Services, APageThatCannotBeReadLeavesTheRows) {
  PaymentList screen;
  RecordSet page;
  screen.OpenSqlPage(page, u"select * from D1012"_s, 3, 1);
  EXPECT_THROW(screen.OpenSqlPage(page, u"select * from D9999"_s, 3, 1), EDatabaseError);
  EXPECT_EQ(page.rowCount(), 3);
}

// More rows than anybody waits for.
const QString endless = u"select a.FF_ID,b.FF_NAME from D1012 a,D1012 b,D1012 c,D1012 d"_s;

class Waiting : public Services {
 protected:
  Waiting() {
    presser.setInterval(10);
    QObject::connect(&presser, &QTimer::timeout, &presser, [this] {
      auto* box = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
      if (!box || !box->isVisible()) return;
      ++boxes;
      box->findChild<QPushButton*>()->click();
    });
    presser.start();
    screen.show();
    screen.fill(endless);
  }
  PaymentList screen;
  QTimer presser;
  int boxes = 0;
};

TEST_F(Waiting, ForAllRowsCanBeCancelledAndTheyGoOnComing) {
  EXPECT_THROW(screen.AdoQry_Main.waitForAll(), EAbort);
  EXPECT_EQ(boxes, 1);
  EXPECT_TRUE(screen.AdoQry_Main.isLoading());
  const int before = screen.AdoQry_Main.rowCount();
  EXPECT_TRUE(QTest::qWaitFor([&] { return screen.AdoQry_Main.rowCount() > before; }));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Waiting, AKeyThatNeedsAllRowsDoesNothingThen) {
  screen.DBGridEh->setFocus();
  QTest::keyClick(screen.DBGridEh, Qt::Key_End);
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(screen.AdoQry_Main.currentRow(), 0);
  EXPECT_TRUE(shop.desktop().messages.isEmpty());
}

}  // namespace
}  // namespace goodsbook
