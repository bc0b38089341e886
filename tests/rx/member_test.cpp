#include <gtest/gtest.h>

#include "quorl/rx/member_collection.h"
#include "quorl/rx/member_query_engine.h"
#include "quorl/rx/property.h"
#include "quorl/rx/property_overrule.h"

class TThing : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(TThing)

public:
  double size = 1.0;
  bool faceted = false;
};
class TRoundThing : public TThing {
  ZNRX_DECLARE_MEMBERS(TRoundThing)
};
class TFacet : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(TFacet)
};
ZNRX_DEFINE_CLASS(TThing, ZnRxObject)
ZNRX_DEFINE_CLASS(TRoundThing, TThing)
ZNRX_DEFINE_CLASS(TFacet, ZnRxObject)

namespace {

int collectionsBuilt = 0;

struct SizeProperty : ZnRxProperty {
  SizeProperty()
      : ZnRxProperty(L"Size", ZnRxValueType::Desc<double>::value()) {}
  Quorl::ErrorStatus subGetValue(const ZnRxObject* object, ZnRxValue& value) const override {
    const TThing* thing = TThing::cast(object);
    value = thing ? thing->size : -1.0;
    return thing ? Quorl::eOk : Quorl::eWrongObjectClass;
  }
  Quorl::ErrorStatus subSetValue(ZnRxObject* object, const ZnRxValue& value) const override {
    const double* size = znrxValueCast<double>(&value);
    TThing* thing = TThing::cast(object);
    if (!size || !thing) return Quorl::eInvalidInput;
    thing->size = *size;
    return Quorl::eOk;
  }
};

// Answers with a text of its own.
struct FixedProperty : ZnRxProperty {
  FixedProperty(const wchar_t* name, const wchar_t* text)
      : ZnRxProperty(name, ZnRxValueType::Desc<ZnString>::value())
      , text_(text) {}
  Quorl::ErrorStatus subGetValue(const ZnRxObject*, ZnRxValue& value) const override {
    value = text_;
    return Quorl::eOk;
  }
  ZnString text_;
};

void buildThing(ZnRxMemberCollectionBuilder& builder) {
  ++collectionsBuilt;
  EXPECT_EQ(builder.add(new SizeProperty), Quorl::eOk);
  EXPECT_EQ(builder.add(new FixedProperty(L"Kind", L"thing")), Quorl::eOk);
  EXPECT_EQ(builder.add(new FixedProperty(L"Kind", L"twice")), Quorl::eDuplicateKey);
  // A builder may look at the class it is building.
  EXPECT_NE(ZnRxMemberQueryEngine::theEngine()->findInClass(builder.owner(), L"Size"), nullptr);
}

void buildRound(ZnRxMemberCollectionBuilder& builder) {
  builder.add(new FixedProperty(L"Kind", L"round"));
  builder.add(new FixedProperty(L"Radius", L"r"));
}

void buildFacet(ZnRxMemberCollectionBuilder& builder) {
  builder.add(new FixedProperty(L"Kind", L"facet"));
  builder.add(new FixedProperty(L"Extra", L"e"));
}

struct FacetProvider : ZnRxFacetProvider {
  void getFacets(const ZnRxObject* object, const ZnRxMemberQueryContext* context,
                 ZnArray<ZnRxClass*>& classes) override {
    EXPECT_NE(context, nullptr);
    const TThing* thing = TThing::cast(object);
    if (thing && thing->faceted) classes.append(TFacet::desc());
  }
};

struct Members : testing::Test {
  void SetUp() override {
    TThing::desc()->setMemberBuilder(buildThing);
    TRoundThing::desc()->setMemberBuilder(buildRound);
    TFacet::desc()->setMemberBuilder(buildFacet);
    EXPECT_EQ(engine.addFacetProvider(&provider), Quorl::eOk);
    facetedRound.faceted = true;
  }
  void TearDown() override { EXPECT_EQ(engine.removeFacetProvider(&provider), Quorl::eOk); }
  ZnRxProperty* property(const ZnRxObject& object, const wchar_t* name,
                         const ZnRxMemberQueryContext* context = nullptr) {
    return ZnRxProperty::cast(engine.find(&object, name, context));
  }
  std::string names(const ZnRxObject& object, const ZnRxMemberQueryContext* context) {
    std::string all;
    for (const ZnRxMember* member : engine.members(&object, context))
      all += member->owner()->name().utf8() + "." + member->name().utf8() + ";";
    return all;
  }
  ZnRxMemberQueryEngine& engine = *ZnRxMemberQueryEngine::theEngine();
  FacetProvider provider;
  ZnRxObject plain;
  TThing thing;
  TRoundThing round, facetedRound;
};

TEST_F(Members, ClassesThenAncestorsThenFacetsUnlessPromoted) {
  struct Case {
    const ZnRxObject& object;
    const ZnRxMemberQueryContext* context;
    const char* names;
  };
  const Case cases[] = {
      {thing, nullptr, "TThing.Size;TThing.Kind;"},
      {round, nullptr, "TRoundThing.Kind;TRoundThing.Radius;TThing.Size;"},
      {facetedRound, engine.defaultContext(),
       "TRoundThing.Kind;TRoundThing.Radius;TThing.Size;TFacet.Extra;"},
      {facetedRound, engine.promotingContext(), "TFacet.Kind;TFacet.Extra;TRoundThing.Radius;TThing.Size;"},
      {plain, nullptr, ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(names(c.object, c.context), c.names);
    for (ZnRxMember* member : engine.members(&c.object, c.context))
      EXPECT_EQ(engine.find(&c.object, member->name(), c.context), member);
  }
  EXPECT_EQ(engine.find(&round, L"Extra"), nullptr);
  EXPECT_EQ(engine.find(&round, L"size"), nullptr);
  EXPECT_EQ(engine.find(nullptr, L"Size"), nullptr);
  EXPECT_EQ(engine.findInClass(TRoundThing::desc(), L"Extra"), nullptr);
  EXPECT_TRUE(engine.members(nullptr).empty());
}

TEST_F(Members, ACollectionIsBuiltOnceWhenAsked) {
  collectionsBuilt = 0;
  EXPECT_NE(property(thing, L"Size"), nullptr);
  EXPECT_NE(property(round, L"Size"), nullptr);
  EXPECT_EQ(collectionsBuilt, 1);
  TThing::desc()->setMemberBuilder(nullptr);
  EXPECT_EQ(property(thing, L"Size"), nullptr);
  EXPECT_EQ(engine.addFacetProvider(&provider), Quorl::eDuplicateKey);
}

// Refuses marked objects and notes the others.
struct NotingOverrule : ZnRxPropertyOverrule {
  NotingOverrule(std::string& noted, const char* name)
      : log(noted)
      , mark(name) {}
  Quorl::ErrorStatus getValue(const ZnRxProperty* property, const ZnRxObject* object,
                              ZnRxValue& value) const override {
    log += mark;
    if (object == hidden) return Quorl::eNothingToDo;
    return ZnRxPropertyOverrule::getValue(property, object, value);
  }
  Quorl::ErrorStatus setValue(const ZnRxProperty* property, ZnRxObject* object,
                              const ZnRxValue& value) const override {
    log += mark;
    if (value.isVaries()) return Quorl::eInvalidInput;
    return ZnRxPropertyOverrule::setValue(property, object, value);
  }
  std::string& log;
  std::string mark;
  const ZnRxObject* hidden = nullptr;
};

TEST_F(Members, OverrulesStepInFrontOfAProperty) {
  ZnRxProperty* size = property(thing, L"Size");
  std::string log;
  NotingOverrule a(log, "a"), b(log, "b");
  a.hidden = &round;
  EXPECT_EQ(ZnRxMemberOverrule::addOverrule(size, &a), Quorl::eOk);
  EXPECT_EQ(ZnRxMemberOverrule::addOverrule(size, &b), Quorl::eOk);
  EXPECT_EQ(ZnRxMemberOverrule::addOverrule(size, &b), Quorl::eDuplicateKey);
  EXPECT_EQ(ZnRxMemberOverrule::addOverrule(nullptr, &b), Quorl::eInvalidInput);

  ZnRxValue value;
  EXPECT_EQ(size->getValue(&thing, value), Quorl::eOk);
  EXPECT_EQ(log, "ba");
  EXPECT_TRUE(value == ZnRxValue(1.0));
  EXPECT_EQ(size->getValue(&round, value), Quorl::eNothingToDo);
  EXPECT_EQ(size->setValue(&round, ZnRxValue::varies()), Quorl::eInvalidInput);
  EXPECT_EQ(size->setValue(&round, 3.0), Quorl::eOk);
  EXPECT_EQ(round.size, 3.0);
  EXPECT_EQ(log, "ba"
                 "ba"
                 "b"
                 "ba");

  ZnRxOverrule::setIsOverruling(false);
  EXPECT_EQ(size->getValue(&round, value), Quorl::eOk);
  ZnRxOverrule::setIsOverruling(true);
  EXPECT_EQ(log, "bababba");

  EXPECT_EQ(ZnRxMemberOverrule::removeOverrules({{size, &b}, {size, &b}, {size, &a}}), Quorl::eKeyNotFound);
  EXPECT_TRUE(size->overrules().empty());
  EXPECT_EQ(size->getValue(&round, value), Quorl::eOk);
  EXPECT_EQ(log, "bababba");
  value = ZnRxValue::varies();
  EXPECT_EQ(size->getValue(&plain, value), Quorl::eWrongObjectClass);
  EXPECT_TRUE(value.isVaries()) << "a failure leaves what the caller has";
}

TEST_F(Members, AttributesTellNamePlaceAndUnit) {
  ZnRxMember* size = property(thing, L"Size");
  ZnRxAttributeCollection& attributes = size->attributes();
  EXPECT_EQ(attributes.get<ZnRxUiPlacementAttribute>(), nullptr);
  attributes.add(new ZnRxUiPlacementAttribute(L"Misc", 1.0));
  attributes.add(new ZnRxUiPlacementAttribute(L"Geometry", 2.0));
  attributes.add(new ZnRxUnitTypeAttribute(ZnRxUnitTypeAttribute::kAngle));
  attributes.add(new ZnRxLocalizedNameAttribute(7));
  EXPECT_EQ(attributes.get<ZnRxUnitTypeAttribute>()->unitType(), ZnRxUnitTypeAttribute::kAngle);
  ASSERT_NE(attributes.get<ZnRxUiPlacementAttribute>(), nullptr);
  EXPECT_EQ(attributes.get<ZnRxUiPlacementAttribute>()->category(), L"Geometry");
  EXPECT_EQ(attributes.get<ZnRxDescriptionAttribute>(), nullptr);
  // A number without text falls back on the name.
  EXPECT_EQ(size->localizedName(), L"Size");
}

TEST_F(Members, TextNumbersAreLookedUpInTheCollectionsResources) {
  static ZnUtResource::Handle texts;
  texts = ZnUtResource::loadDll(ZnString::fromUtf8(QUORL_BIN_DIR "/base_resources/base_texts.dll"));
  ASSERT_NE(texts, nullptr);
  TFacet::desc()->setMemberBuilder([](ZnRxMemberCollectionBuilder& builder) {
    builder.setResources(ZnRxResourceInstance(texts));
    auto member = std::make_unique<FixedProperty>(L"Extra", L"e");
    member->attributes().add(new ZnRxLocalizedNameAttribute(7));
    member->attributes().add(new ZnRxDescriptionAttribute(2040));
    builder.add(std::move(member));
  });
  const ZnRxMember* extra = property(facetedRound, L"Extra");
  ASSERT_NE(extra, nullptr);
  EXPECT_EQ(extra->localizedName(), L"seven");
  EXPECT_EQ(extra->description(), L"Ø %s");
  TFacet::desc()->setMemberBuilder(nullptr);
  EXPECT_TRUE(ZnUtResource::freeDll(texts));
}

} // namespace
