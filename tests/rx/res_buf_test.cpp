#include "quorl/rx/res_buf.h"

#include <gtest/gtest.h>

namespace {

std::string described(const resbuf* list) {
  std::string text;
  for (; list; list = list->next.get()) {
    text += std::to_string(list->restype);
    if (list->restype == kResReal) text += "=" + std::to_string(list->real);
    if (list->restype == kResShort) text += "=" + std::to_string(list->shortInt);
    if (list->restype == kResLong) text += "=" + std::to_string(list->longInt);
    if (list->restype == kResString) text += "=" + list->text.utf8();
    text += ";";
  }
  return text;
}

TEST(ResBuf, ListsAreBuiltInOrderWithTheirEnd) {
  const ZnResBufList list(znutBuildList(kResShort, 1, kResReal, 2.5, kResString, L"Ø", kResLong, 100000,
                                        kResShort, -7, kResNone));
  EXPECT_EQ(described(list.get()), "5003=1;5001=2.500000;5005=Ø;5010=100000;5003=-7;5000;");
  const ZnResBufList end(znutBuildList(kResNone));
  EXPECT_EQ(described(end.get()), "5000;");
}

TEST(ResBuf, AnUnknownTypeGivesNoList) {
  EXPECT_EQ(znutBuildList(4711, kResNone), nullptr);
  EXPECT_EQ(znutBuildList(kResShort, 1, 0, kResNone), nullptr);
}

TEST(ResBuf, ALongListDoesNotUseUpTheStack) {
  ZnResBufList list(znutBuildList(kResNone));
  for (int i = 0; i < 1000000; ++i) {
    auto first = std::make_unique<resbuf>(resbuf::ofLong(i));
    first->next = std::move(list);
    list = std::move(first);
  }
  EXPECT_EQ(list->longInt, 999999);
}

} // namespace
