#include "quorl/rx/class.h"

#include <gtest/gtest.h>

#include "quorl/rx/class_members.h"

namespace {

// Classes of one test, gone at its end in the order given.
class TestClasses {
public:
  ~TestClasses() {
    for (auto name = names_.rbegin(); name != names_.rend(); ++name)
      deleteZnRxClass(znrxFindZnRxClass(*name));
  }
  ZnRxClass* add(const wchar_t* name, const wchar_t* parent) {
    names_.emplace_back(name);
    return newZnRxClass(name, parent);
  }

private:
  std::vector<ZnString> names_;
};

struct Extension : ZnRxObject {};

TEST(Class, AParentMayComeLate) {
  TestClasses classes;
  const ZnRxClass* leaf = classes.add(L"TLeaf", L"TBranch");
  const ZnRxClass* branch = classes.add(L"TBranch", L"TTrunk");
  const ZnRxClass* trunk = classes.add(L"TTrunk", L"ZnRxObject");
  EXPECT_FALSE(leaf->isDerivedFrom(trunk));
  znrxBuildClassHierarchy();
  EXPECT_EQ(leaf->parent(), branch);
  EXPECT_TRUE(leaf->isDerivedFrom(trunk));
  EXPECT_TRUE(leaf->isDerivedFrom(ZnRxObject::desc()));
  for (const auto& [cls, ancestor] : {std::pair(trunk, leaf),
                                      {leaf, classes.add(L"TStone", L"ZnRxObject")},
                                      {leaf, nullptr},
                                      {nullptr, leaf}})
    EXPECT_FALSE(ZnRxClass::isDerivedFrom(cls, ancestor));
}

TEST(Class, ADeletedParentLeavesNoTrace) {
  TestClasses classes;
  ZnRxClass* parent = newZnRxClass(L"TParent", L"ZnRxObject");
  Extension extension;
  parent->addX(ZnRxObject::desc(), &extension);
  ZnRxClass* child = classes.add(L"TChild", L"TParent");
  EXPECT_EQ(child->queryX(ZnRxObject::desc()), &extension);
  deleteZnRxClass(parent);
  EXPECT_EQ(child->parent(), nullptr);
  EXPECT_EQ(child->queryX(ZnRxObject::desc()), nullptr);
  EXPECT_EQ(znrxFindZnRxClass(L"TParent"), nullptr);

  // A class of the name comes back: the child is its child again.
  ZnRxClass* again = classes.add(L"TParent", L"ZnRxObject");
  znrxBuildClassHierarchy();
  EXPECT_TRUE(child->isDerivedFrom(again));
}

TEST(Class, NamesAreTakenOnce) {
  TestClasses classes;
  ZnRxClass* first = classes.add(L"TOnly", L"ZnRxObject");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(newZnRxClass(L"TOnly", L"ZnRxObject"), nullptr);
  EXPECT_EQ(newZnRxClass(L"", L"ZnRxObject"), nullptr);
  EXPECT_EQ(newZnRxClass(nullptr, nullptr), nullptr);
  EXPECT_EQ(znrxFindZnRxClass(ZnString(L"TOnly")), first);
  EXPECT_EQ(znrxFindZnRxClass(L"tonly"), nullptr);
}

TEST(Class, ObjectsWhoseClassDefinesNoValue) {
  Extension one, other;
  EXPECT_EQ(one.clone(), nullptr);
  EXPECT_EQ(one.copyFrom(&other), Quorl::eNotProvided);
  EXPECT_TRUE(one.isEqualTo(&one) && !one.isEqualTo(&other));
  EXPECT_EQ(one.comparedTo(&one), 0);
  EXPECT_EQ(one.comparedTo(&other), -other.comparedTo(&one));
}

TEST(Class, ExtensionsAreInheritedFromTheNearest) {
  TestClasses classes;
  ZnRxClass* protocol = classes.add(L"TProtocol", L"ZnRxObject");
  ZnRxClass* base = classes.add(L"TBase", L"ZnRxObject");
  ZnRxClass* middle = classes.add(L"TMiddle", L"TBase");
  ZnRxClass* last = classes.add(L"TLast", L"TMiddle");
  Extension ofBase, ofMiddle, other;
  EXPECT_EQ(base->addX(protocol, &ofBase), nullptr);
  EXPECT_EQ(last->queryX(protocol), &ofBase);
  EXPECT_EQ(middle->addX(protocol, &other), nullptr);
  EXPECT_EQ(middle->addX(protocol, &ofMiddle), &other);
  EXPECT_EQ(last->queryX(protocol), &ofMiddle);
  EXPECT_EQ(base->queryX(protocol), &ofBase);
  EXPECT_EQ(last->getX(protocol), nullptr);
  EXPECT_EQ(last->delX(protocol), nullptr);
  EXPECT_EQ(middle->delX(protocol), &ofMiddle);
  EXPECT_EQ(last->queryX(protocol), &ofBase);
  EXPECT_EQ(last->queryX(base), nullptr);
}

} // namespace
