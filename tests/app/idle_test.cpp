// When a command is answered: the program is idle again, or waits for its user.
#include <QApplication>
#include <QEventLoop>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include "tests/app/sample_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using Idle = SampleScreenTest;

TEST_F(Idle, WorkThatLetsEventsThroughIsWaitedFor) {
  bool finished = false;
  onGui([&] {
    QObject::connect(screen->askButton, &QPushButton::clicked, screen, [&finished] {
      for (int i = 0; i < 200; ++i) QApplication::processEvents();
      finished = true;
    });
  });
  click(u"btn_ask"_s);
  onGui([&] { EXPECT_TRUE(finished); });
}

TEST_F(Idle, ABoxThatTellsOfProgressIsWaitedFor) {
  bool finished = false;
  onGui([&] {
    QObject::connect(screen->askButton, &QPushButton::clicked, screen, [&finished, this] {
      QProgressDialog box(u"正在读取…"_s, u"取消"_s, 0, 0, screen);
      box.setWindowModality(Qt::ApplicationModal);
      box.show();
      QEventLoop rows;
      QTimer turns;
      int left = 500;
      QObject::connect(&turns, &QTimer::timeout, &rows, [&] {
        if (--left == 0) rows.quit();
      });
      turns.start(0);
      rows.exec();
      finished = true;
    });
  });
  click(u"btn_ask"_s);
  onGui([&] { EXPECT_TRUE(finished); });
}

TEST_F(Idle, WhatAnActionPostsIsDoneBeforeTheAnswer) {
  int rounds = 0;
  onGui([&] {
    QObject::connect(screen->askButton, &QPushButton::clicked, screen, [&rounds, this] {
      QTimer::singleShot(0, screen, [&rounds, this] {
        ++rounds;
        QMetaObject::invokeMethod(
            screen, [&rounds] { ++rounds; }, Qt::QueuedConnection);
      });
    });
  });
  click(u"btn_ask"_s);
  EXPECT_EQ(rounds, 2);
}

TEST_F(Idle, ADialogThatOpensAnotherWhenItClosesIsFollowed) {
  onGui([&] {
    QObject::connect(screen->askButton, &QPushButton::clicked, screen, [this] {
      screen->dialog->exec();
      screen->dialog->setWindowTitle(u"第二次"_s);
      screen->dialog->exec();
    });
  });
  click(u"btn_ask"_s);
  click(u"btn_ok"_s);
  const QJsonArray open = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  ASSERT_EQ(open.size(), 2);
  EXPECT_EQ(open[1]["caption"_L1], u"第二次"_s);
  EXPECT_EQ(open[1]["modal"_L1], true);
}

TEST_F(Idle, CommandsAreAnsweredInTheirOrder) {
  QStringList order;
  onGui([&] {
    for (int i = 0; i < 5; ++i) {
      driver().submit({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 5 * (5 - i)}},
                      [&order, i](const QJsonObject&) { order << QString::number(i); });
    }
  });
  done({{u"cmd"_s, u"screens"_s}});
  onGui([&] { EXPECT_EQ(order.join(u','), u"0,1,2,3,4"_s); });
}

TEST_F(Idle, UnknownCommandsAndMissingFieldsAreNamed) {
  EXPECT_TRUE(refused({{u"cmd"_s, u"dance"_s}}).contains(u"dance"_s));
  EXPECT_TRUE(refused({}).contains(u"cmd"_s));
  EXPECT_TRUE(refused({{u"cmd"_s, 7}}).contains(u"cmd"_s));
  EXPECT_TRUE(refused({{u"cmd"_s, u"type"_s}, {u"element"_s, u"Edit1"_s}}).contains(u"text"_s));
  EXPECT_TRUE(refused({{u"cmd"_s, u"use"_s}, {u"id"_s, u"one"_s}}).contains(u"id"_s));
}

}  // namespace
}  // namespace goodsbook
