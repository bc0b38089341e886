#include "quorl/base/array.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

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
  struct Case {
    int step;
    int least;
  };
  for (const Case& c : {Case{8, 8}, Case{100, 100}}) {
    ZnArray<int> numbers(0, c.step);
    numbers.append(1);
    EXPECT_GE(numbers.physicalLength(), c.least);
    EXPECT_EQ(numbers.length(), 1);
  }
  EXPECT_EQ(ZnArray<int>().growLength(), 8);
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

RC_GTEST_PROP(Array, InsertingAndRemovingAgreesWithAPlainVector, (const std::vector<int>& values)) {
  ZnArray<int> array;
  std::vector<int> plain;
  for (const int value : values) {
    const int at = plain.empty() ? 0 : static_cast<int>(static_cast<unsigned>(value) % (plain.size() + 1));
    if (value % 3 == 0 && at < array.length()) {
      array.removeAt(at);
      plain.erase(plain.begin() + at);
    } else {
      array.insertAt(at, value);
      plain.insert(plain.begin() + at, value);
    }
  }
  RC_ASSERT(std::vector<int>(array.begin(), array.end()) == plain);
}

} // namespace
