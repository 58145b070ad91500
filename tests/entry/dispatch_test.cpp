// The entry as the host calls it, with the screens' variables in reach.
#include <QWidget>
#include <memory>
#include <stdexcept>

#include "app/driver/screen_test.h"
#include "entry/U2100.h"
#include "products/U2101.h"
#include "products/U2101_1.h"
#include "reference/U2103.h"
#include "reference/U2113.h"
#include "reference/U2125.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

Trecord recordOf(int module) {
  Trecord record;
  for (std::size_t i = 0; i < record.words.size(); ++i)
    record.words[i] = static_cast<std::int32_t>(0x01010101 * i);
  record.setModule(module);
  return record;
}

class Dispatch : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    onGui([this] { owner_ = std::make_unique<QWidget>(); });
  }
  void TearDown() override {
    onGui([this] { owner_.reset(); });
    ScreenTest::TearDown();
  }

  void call(int module) {
    onGui([&] { ProcDLL1(recordOf(module), owner_.get()); });
  }

  std::unique_ptr<QWidget> owner_;
};

TEST_F(Dispatch, TheScreenGetsItsTagAndTheWholeRecord) {
  onGui([this] {
    const Trecord given = recordOf(103);
    ProcDLL1(given, owner_.get());
    ASSERT_NE(F2103, nullptr);
    EXPECT_EQ(F2103->Tag, 103);
    EXPECT_EQ(F2103->record(), given);
    EXPECT_EQ(given, recordOf(103));
    EXPECT_EQ(F2103->moduleCode(), u"103"_s);
    EXPECT_EQ(F2103->parentWidget(), owner_.get());
    EXPECT_TRUE(F2103->isVisible());
  });
}

TEST_F(Dispatch, TheVariableHoldsTheLastOneAndBothStay) {
  call(103);
  const QPointer<TF2103> first = F2103;
  call(103);
  onGui([&] {
    ASSERT_NE(first, nullptr);
    ASSERT_NE(F2103, nullptr);
    EXPECT_NE(F2103, first);
    EXPECT_TRUE(first->isVisible());
    EXPECT_TRUE(F2103->isVisible());
  });
}

TEST_F(Dispatch, TheProductListIsInitialisedOnceWithTheWholeRecord) {
  onGui([this] {
    const Trecord given = recordOf(101);
    ProcDLL1(given, owner_.get());
    ASSERT_NE(F2101, nullptr);
    EXPECT_EQ(F2101->Tag, 101);
    EXPECT_EQ(F2101->record().words, given.words);
    EXPECT_EQ(F2101->findChildren<TF2101_1*>().size(), 1) << "the editor that each InitForm makes";
  });
}

TEST_F(Dispatch, CustomersCalledTwiceAreTwoScreens) {
  call(113);
  const QPointer<TF2113> first = F2113;
  call(113);
  onGui([&] {
    EXPECT_EQ(owner_->findChildren<TF2113*>().size(), 2);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(F2113, nullptr);
    EXPECT_NE(F2113, first);
  });
}

TEST_F(Dispatch, ScreensGoWithTheirOwner) {
  call(125);
  onGui([this] {
    ASSERT_NE(F2125, nullptr);
    owner_.reset();
    EXPECT_EQ(F2125, nullptr);
  });
}

// A host that has no room for a screen.
class FullFrame : public QWidget, public ScreenFrame {
 public:
  void place(TFrm_Base*) override { throw std::runtime_error("no room"); }
  void remove(TFrm_Base*) override {}
};

TEST_F(Dispatch, AFailureWhileOpeningReachesTheHostAndLeavesNoScreen) {
  onGui([] {
    FullFrame frame;
    EXPECT_THROW(ProcDLL1(recordOf(103), &frame), std::runtime_error);
    EXPECT_EQ(F2103, nullptr);
    EXPECT_TRUE(frame.findChildren<TFrm_Base*>().isEmpty());
  });
}

TEST_F(Dispatch, AfterAFailureTheVariableNamesTheScreenThatIsOpen) {
  call(103);
  onGui([] {
    const QPointer<TF2103> opened = F2103;
    FullFrame frame;
    EXPECT_THROW(ProcDLL1(recordOf(103), &frame), std::runtime_error);
    EXPECT_NE(opened, nullptr);
    EXPECT_EQ(F2103, opened);
  });
}

}  // namespace
}  // namespace goodsbook
