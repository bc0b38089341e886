#include "quorl/rx/registry.h"

#include <gtest/gtest.h>

#include "quorl/rx/class_dictionary.h"

namespace {

// Counts those that live.
struct Counted : ZnRxObject {
  explicit Counted(int& living)
      : living_(living) {
    ++living_;
  }
  ~Counted() override { --living_; }
  int& living_;
};

TEST(Dictionary, OwnershipDecidesWhoDeletes) {
  for (const bool owns : {true, false}) {
    int living = 0;
    auto* first = new Counted(living);
    auto* second = new Counted(living);
    {
      ZnRxDictionary dictionary(owns);
      EXPECT_EQ(dictionary.put(L"a", first), Quorl::eOk);
      EXPECT_EQ(dictionary.put(L"a", first), Quorl::eOk);
      EXPECT_EQ(living, 2);
      EXPECT_EQ(dictionary.put(L"a", second), Quorl::eOk);
      EXPECT_EQ(living, owns ? 1 : 2);
      EXPECT_EQ(dictionary.put(L"b", new Counted(living)), Quorl::eOk);
      delete dictionary.remove(L"b");
      EXPECT_EQ(dictionary.entryCount(), 1);
    }
    EXPECT_EQ(living, owns ? 0 : 2);
    if (owns) continue;
    delete first;
    delete second;
  }
}

TEST(Dictionary, KeepsTheOrderOfInsertion) {
  ZnRxObject x, y, z;
  ZnRxDictionary dictionary;
  dictionary.put(L"zeta", &x);
  dictionary.put(L"alpha", &y);
  dictionary.put(L"mid", &z);
  dictionary.put(L"zeta", &z);
  dictionary.remove(L"alpha");
  dictionary.put(L"alpha", &x);
  std::string walk;
  for (const auto& [name, object] : dictionary.entries())
    walk += name.utf8() + (object == &x ? "=x;" : object == &y ? "=y;" : "=z;");
  EXPECT_EQ(walk, "zeta=z;mid=z;alpha=x;");
  EXPECT_EQ(dictionary.at(L"Zeta"), nullptr);
  EXPECT_EQ(dictionary.remove(L"absent"), nullptr);
  EXPECT_EQ(dictionary.put(L"", &x), Quorl::eInvalidInput);
  EXPECT_EQ(dictionary.put(L"null", nullptr), Quorl::eInvalidInput);
  EXPECT_FALSE(dictionary.has(L"null"));
}

TEST(Registry, TheClassDictionaryIsAViewOnTheClasses) {
  auto* classes = ZnRxDictionary::cast(znrxSysRegistry()->at(L"ClassDictionary"));
  const int before = classes->entryCount();
  ZnRxClass* cls = newZnRxClass(L"TViewed", L"ZnRxObject");
  EXPECT_EQ(classes->at(L"TViewed"), cls);
  EXPECT_EQ(classes->entryCount(), before + 1);
  EXPECT_EQ(classes->entries().back().second, cls);
  EXPECT_EQ(classes->put(L"TOther", cls), Quorl::eNotProvided);
  EXPECT_EQ(classes->remove(L"TViewed"), cls);
  EXPECT_EQ(znrxFindZnRxClass(L"TViewed"), nullptr);
  EXPECT_EQ(classes->remove(L"TViewed"), nullptr);
  delete cls;
}

} // namespace
