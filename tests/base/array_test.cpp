#include "quorl/base/array.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Long enough to live on the heap, so that a read of freed memory shows.
std::string word(int number) { return "an element of some length " + std::to_string(number); }

TEST(Array, AppendingAnElementOfItselfKeepsItsValue) {
  ZnArray<std::string> words(0, 1);
  words.append(word(0));
  for (int i = 1; i < 100; ++i) {
    EXPECT_EQ(words.append(words[0]), i);
    EXPECT_EQ(words[i], word(0));
    EXPECT_EQ(words[0], word(0));
  }
}

TEST(Array, AppendingItselfDoublesIt) {
  ZnArray<std::string> words{word(1), word(2), word(3)};
  words.append(words);
  EXPECT_EQ(words, (ZnArray<std::string>{word(1), word(2), word(3), word(1), word(2), word(3)}));
}

TEST(Array, GrowsByItsStepAtLeast) {
  ZnArray<int> usual, wide(0, 100);
  usual.append(1);
  wide.append(1);
  EXPECT_GE(usual.physicalLength(), 8);
  EXPECT_GE(wide.physicalLength(), 100);
}

TEST(Array, SearchAndRemoval) {
  struct Case {
    int wanted;
    int from;
    int found;
  };
  const ZnArray<int> numbers{5, 7, 5, 9};
  for (const Case& c : {Case{5, 0, 0}, Case{5, 1, 2}, Case{9, 0, 3}, Case{9, 4, -1}, Case{1, 0, -1}})
    EXPECT_EQ(numbers.find(c.wanted, c.from), c.found) << c.wanted << " from " << c.from;

  ZnArray<int> changed(numbers);
  EXPECT_TRUE(changed.remove(5));
  EXPECT_FALSE(changed.remove(6));
  changed.insertAt(0, 1);
  changed.insertAt(changed.length(), 2);
  EXPECT_EQ(changed, (ZnArray<int>{1, 7, 5, 9, 2}));
  changed.removeFirst();
  changed.removeLast();
  changed.reverse();
  EXPECT_EQ(changed, (ZnArray<int>{9, 5, 7}));
}

TEST(ArrayDeathTest, IndicesOutsideAreBugs) {
  ZnArray<int> numbers{1, 2};
  EXPECT_DEATH(numbers[2], "index");
  EXPECT_DEATH(numbers[-1], "index");
  EXPECT_DEATH(numbers.insertAt(3, 0), "index");
  EXPECT_DEATH(ZnArray<int>().last(), "index");
}

} // namespace
