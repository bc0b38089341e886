#include "quorl/base/error_status.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

// Every status must be told apart in messages; those without a text of their own read "unknown status".
TEST(ErrorStatus, TextsAreDistinct) {
  std::map<std::string, int> statusOf;
  for (int number = 0; number <= Quorl::eInvalidLinetypeId; ++number) {
    const std::string text = Quorl::errorStatusText(static_cast<Quorl::ErrorStatus>(number));
    ASSERT_FALSE(text.empty());
    if (text == "unknown status") continue;
    EXPECT_TRUE(statusOf.emplace(text, number).second) << text << " stands for " << number << " too";
  }
  EXPECT_GT(statusOf.size(), 30u);
  EXPECT_EQ(statusOf.count(Quorl::errorStatusText(Quorl::eNewerVersion)), 1u);
}

} // namespace
