#include "quorl/rx/overrule.h"

#include <gtest/gtest.h>

#include "quorl/rx/query_overrule.h"

class TPlain : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(TPlain)
};
class TSpecial : public TPlain {
  ZNRX_DECLARE_MEMBERS(TSpecial)
};
ZNRX_DEFINE_CLASS(TPlain, ZnRxObject)
ZNRX_DEFINE_CLASS(TSpecial, TPlain)

namespace {

std::string asked;

// Notes that it was asked, then goes on.
struct Noting : ZnRxQueryXOverrule {
  explicit Noting(const char* name, const ZnRxObject* only = nullptr)
      : name_(name)
      , only_(only) {}
  bool isApplicable(const ZnRxObject* object) const override { return !only_ || object == only_; }
  ZnRxObject* queryX(const ZnRxObject* object, const ZnRxClass* protocol) const override {
    asked += name_;
    return ZnRxQueryXOverrule::queryX(object, protocol);
  }
  std::string name_;
  const ZnRxObject* only_;
};

// Answers by itself.
struct Answering : ZnRxQueryXOverrule {
  bool isApplicable(const ZnRxObject*) const override { return true; }
  ZnRxObject* queryX(const ZnRxObject*, const ZnRxClass*) const override {
    return const_cast<Answering*>(this);
  }
};

struct OverruleOrder : testing::Test {
  void SetUp() override { TPlain::desc()->addX(ZnRxObject::desc(), &extension); }
  void TearDown() override { TPlain::desc()->delX(ZnRxObject::desc()); }
  std::string query(const ZnRxObject& object, const ZnRxObject* expected) {
    asked.clear();
    EXPECT_EQ(object.queryX(ZnRxObject::desc()), expected);
    return asked;
  }
  TPlain plain, extension;
  TSpecial special, otherSpecial;
};

TEST_F(OverruleOrder, NearestClassFirstThenTheOrderOfAdding) {
  Noting a("a"), b("b"), c("c"), d("d", &special);
  EXPECT_FALSE(TSpecial::desc()->hasOverrules());
  EXPECT_EQ(ZnRxOverrule::addOverrule(TPlain::desc(), &a, true), Quorl::eOk);
  EXPECT_TRUE(TSpecial::desc()->hasOverrules());
  EXPECT_EQ(ZnRxOverrule::addOverrule(TPlain::desc(), &b, true), Quorl::eOk);
  EXPECT_EQ(ZnRxOverrule::addOverrule(TPlain::desc(), &c, false), Quorl::eOk);
  EXPECT_EQ(ZnRxOverrule::addOverrule(TSpecial::desc(), &d, true), Quorl::eOk);
  EXPECT_EQ(query(plain, &extension), "cab");
  EXPECT_EQ(query(special, &extension), "dcab");
  EXPECT_EQ(query(otherSpecial, &extension), "cab");

  ZnRxOverrule::setIsOverruling(false);
  EXPECT_EQ(query(special, &extension), "");
  ZnRxOverrule::setIsOverruling(true);

  EXPECT_EQ(ZnRxOverrule::removeOverrule(TPlain::desc(), &a), Quorl::eOk);
  EXPECT_EQ(query(special, &extension), "dcb");
  for (Noting* overrule : {&b, &c}) ZnRxOverrule::removeOverrule(TPlain::desc(), overrule);
  EXPECT_FALSE(TPlain::desc()->hasOverrules());
  EXPECT_TRUE(TSpecial::desc()->hasOverrules());
  ZnRxOverrule::removeOverrule(TSpecial::desc(), &d);
  EXPECT_FALSE(TSpecial::desc()->hasOverrules());
}

TEST_F(OverruleOrder, AnAnswerEndsTheLine) {
  Noting before("a"), after("b");
  Answering answering;
  for (ZnRxOverrule* overrule : std::initializer_list<ZnRxOverrule*>{&before, &answering, &after})
    EXPECT_EQ(ZnRxOverrule::addOverrule(TPlain::desc(), overrule, true), Quorl::eOk);
  EXPECT_EQ(query(plain, &answering), "a");
  for (ZnRxOverrule* overrule : std::initializer_list<ZnRxOverrule*>{&before, &answering, &after})
    EXPECT_EQ(ZnRxOverrule::removeOverrule(TPlain::desc(), overrule), Quorl::eOk);
  EXPECT_EQ(query(plain, &extension), "");
}

TEST_F(OverruleOrder, MistakesHaveTheirStatus) {
  Noting a("a");
  EXPECT_EQ(ZnRxOverrule::addOverrule(nullptr, &a), Quorl::eInvalidInput);
  EXPECT_EQ(ZnRxOverrule::addOverrule(TPlain::desc(), nullptr), Quorl::eInvalidInput);
  EXPECT_EQ(ZnRxOverrule::removeOverrule(TPlain::desc(), &a), Quorl::eKeyNotFound);
  EXPECT_EQ(ZnRxOverrule::addOverrule(TPlain::desc(), &a), Quorl::eOk);
  EXPECT_EQ(ZnRxOverrule::addOverrule(TPlain::desc(), &a), Quorl::eDuplicateKey);
  EXPECT_EQ(ZnRxOverrule::removeOverrule(TPlain::desc(), &a), Quorl::eOk);
}

} // namespace
