// The random editor: whatever is done to drawings, in whatever order, they are sound after each step, the
// step is undone and done again exactly, a file holds all of it, and what is derived is what deriving it anew
// gives. A story that breaks a law is shrunk to its shortest form. RC_PARAMS="max_success=10000 seed=..."
// goes further.
#include <rapidcheck.h>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "editor/deeds.h"
#include "torvi/host/association.h"

namespace {

class Editor : public testing::Test {
protected:
  void SetUp() override {
    usualSink_ = znutSetPrintSink([](const ZnString&) {});
    ASSERT_EQ(znrxLoadModule(kModule), Quorl::eOk) << ZnRxDynamicLinker::instance().lastError().utf8();
  }
  void TearDown() override {
    znrxUnloadAllModules();
    znutSetPrintSink(usualSink_);
  }
  const ZnString kModule = ZnString::fromUtf8(QUORL_BIN_DIR "/ZnDbTorvi.lyx");
  ZnPrintSink usualSink_;
};

TEST_F(Editor, KeepsEveryDrawingWhole) {
  std::size_t steps = 0;
  EXPECT_TRUE(rc::check("no story breaks a drawing", [&] {
    // Numbers of the whole range in stories of any length; shorter ones find as much in less time.
    const auto story = *rc::gen::scale(0.5, rc::gen::container<std::vector<std::uint32_t>>(
                                                rc::gen::resize(100, rc::gen::arbitrary<std::uint32_t>())));
    Desk desk;
    for (const std::uint32_t number : story) {
      ++steps;
      if (const std::string fault = desk.step(number); !fault.empty()) RC_FAIL(desk.story() + fault);
    }
  }));
  RecordProperty("steps", static_cast<int>(steps));
  EXPECT_GT(steps, 100u) << "hardly anything was done";
}

} // namespace
