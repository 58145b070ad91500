// The file chooser of a person at the screen.
#include "app/real_desktop.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QTimer>

#include "app/driver/screen_test.h"
#include "host/saved_path.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class RealDesktopFiles : public ScreenTest {
 protected:
  const QString sheets = u"电子表格 (*.xlsx);;CSV 文本 (*.csv)"_s;

  QString existing(const QString& name) {
    QFile file(folder() + u'/' + name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    return file.fileName();
  }
  // Opens the chooser, which stays while the test goes on.
  void save(const QString& suggested, const QString& filter) {
    onGui([&] {
      QTimer::singleShot(0, qApp, [this, suggested, filter] {
        saved_ = desktop_.saveFile(nullptr, u"另存图片"_s, suggested, filter);
      });
    });
    done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
    ASSERT_EQ(frontClass(), u"QFileDialog"_s);
  }
  void name(const QString& typed) {
    type(u"fileNameEdit"_s, typed);
    press(u"Return"_s);
  }
  void sayYes() {
    onGui([] {
      const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_TRUE(box);
      for (QAbstractButton* button : box->buttons()) {
        if (box->buttonRole(button) == QMessageBox::YesRole) button->click();
      }
    });
    done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  }
  QString saved() {
    QString path;
    onGui([&] { path = saved_; });
    return path;
  }

 private:
  RealDesktop desktop_;
  QString saved_ = u"none yet"_s;
};

TEST_F(RealDesktopFiles, ASuffixThatIsAddedOverwritesNothingUnasked) {
  const QString taken = existing(u"copy.jpg"_s);
  save(folder() + u"/P1.jpg"_s, u"图片 (*.jpg *.jpeg)"_s);
  name(folder() + u"/copy"_s);
  ASSERT_EQ(frontClass(), u"QMessageBox"_s);
  EXPECT_EQ(saved(), u"none yet"_s);
  press(u"Esc"_s);
  ASSERT_EQ(frontClass(), u"QFileDialog"_s) << "No asks for another name";
  name(folder() + u"/copy"_s);
  sayYes();
  EXPECT_EQ(saved(), taken);
}

TEST_F(RealDesktopFiles, AWholeNameIsAskedAboutOnce) {
  const QString taken = existing(u"copy.jpg"_s);
  save(folder() + u"/P1.jpg"_s, u"图片 (*.jpg *.jpeg)"_s);
  name(taken);
  ASSERT_EQ(frontClass(), u"QMessageBox"_s);
  sayYes();
  EXPECT_EQ(saved(), taken);
}

TEST_F(RealDesktopFiles, AFreeNameGetsItsSuffix) {
  save(folder() + u"/list.xlsx"_s, sheets);
  name(folder() + u"/other"_s);
  EXPECT_EQ(saved(), folder() + u"/other.xlsx"_s);
}

TEST_F(RealDesktopFiles, CancellingSavesNothing) {
  save(folder() + u"/list.xlsx"_s, sheets);
  press(u"Esc"_s);
  EXPECT_EQ(saved(), u""_s);
}

TEST_F(RealDesktopFiles, ASuffixIsOneOfTheFilters) {
  const QString csv = u"CSV 文本 (*.csv)"_s;
  const QString picture = u"图片 (*.jpg *.jpeg)"_s;
  EXPECT_EQ(withSuffix(u"/a"_s, sheets), u"/a.xlsx"_s);
  EXPECT_EQ(withSuffix(u"/a"_s, sheets, csv), u"/a.csv"_s) << "the one that was chosen";
  EXPECT_EQ(withSuffix(u"/a.CSV"_s, sheets), u"/a.CSV"_s);
  EXPECT_EQ(withSuffix(u"/a.xlsx"_s, sheets, csv), u"/a.xlsx"_s) << "what was typed goes before";
  EXPECT_EQ(withSuffix(u"/a.jpeg"_s, picture), u"/a.jpeg"_s);
  EXPECT_EQ(withSuffix(u"/a.v2"_s, picture), u"/a.v2.jpg"_s);
  EXPECT_EQ(withSuffix(u"/a"_s, u"所有文件 (*)"_s), u"/a"_s);
}

}  // namespace
}  // namespace goodsbook
