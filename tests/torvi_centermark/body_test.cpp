#include <map>
#include <numbers>

#include "rx/allocation_count.h"
#include "support/drawing_fixture.h"

namespace {

using Body = ZnDbCenterMarkActionBody;

class MarkBody : public DrawingTest {
protected:
  void SetUp() override {
    DrawingTest::SetUp();
    circle_ = addCircle({3.0, 4.0, 0.0}, 10.0);
    mark_ = addMark(circle_);
  }
  template<class Ask> auto ask(Ask&& question) {
    ZnDbHolder<Body> body(bodyOf(mark_));
    EXPECT_TRUE(body.isOpen());
    return question(const_cast<const Body&>(*body));
  }
  template<class Change> void changeBody(Change&& doIt) { change<Body>(bodyOf(mark_), doIt); }
  double stored(const wchar_t* name) {
    return ask([&](const Body& body) { return body.valueOf(name, -1.0); });
  }
  void setRadius(double radius) {
    change<ZnDbCircle>(circle_, [&](ZnDbCircle& circle) { circle.setRadius(radius); });
    evaluateChanges();
  }

  ZnDbObjectId circle_, mark_;
};

TEST_F(MarkBody, CreationStoresItsValuesUnderTheirNames) {
  const std::map<std::string, double> kNumbers = {
      {"HorizontalStartExtension", 1e60}, {"HorizontalEndExtension", 1e60},  {"VerticalStartExtension", 1e60},
      {"VerticalEndExtension", 1e60},     {"HorizontalStartOvershoot", 0.5}, {"HorizontalEndOvershoot", 0.5},
      {"VerticalStartOvershoot", 0.5},    {"VerticalEndOvershoot", 0.5},     {"CachedCircleRadius", 10.0}};
  for (const auto& [name, number] : kNumbers)
    EXPECT_EQ(stored(ZnString::fromUtf8(name).c_str()), number) << name;
  const std::map<std::string, std::string> kTexts = {{"CrossHairLengthExpression", "0.1x"},
                                                     {"CrossHairGapExpression", "0.05x"}};
  for (const auto& row : kTexts) {
    ZnDbEvalVariant value;
    ZnString held;
    ask([&](const Body& body) { return body.getValueParam(ZnString::fromUtf8(row.first), value); });
    EXPECT_EQ(value.getValue(held), Quorl::eOk) << row.first;
    EXPECT_EQ(held.utf8(), row.second);
  }
}

TEST_F(MarkBody, ExtensionsFollowTheCircleUntilTheyHaveALength) {
  EXPECT_EQ(ask([](const Body& body) { return body.horizontalStartExtension(); }), 10.0);
  changeBody([](Body& body) {
    EXPECT_EQ(body.setHorizontalStartExtension(5.0), Quorl::eOk);
    EXPECT_EQ(body.setVerticalEndExtension(2e60), Quorl::eOk);
    EXPECT_EQ(body.setVerticalStartExtension(-2.0), Quorl::eOk);
  });
  setRadius(20.0);
  ask([](const Body& body) {
    EXPECT_EQ(body.horizontalStartExtension(), 5.0);
    EXPECT_EQ(body.horizontalEndExtension(), 20.0);
    EXPECT_EQ(body.verticalStartExtension(), -2.0);
    EXPECT_EQ(body.verticalEndExtension(), 20.0);
    return 0;
  });
  EXPECT_EQ(stored(L"CachedCircleRadius"), 20.0);
  changeBody([](Body& body) { EXPECT_EQ(body.resetExtensions(), Quorl::eOk); });
  for (const ZnCenterMarkSubEntType line : {eLeftLine, eRightLine, eBottomLine, eTopLine})
    EXPECT_EQ(ask([&](const Body& body) { return body.extension(line); }), 20.0);
  EXPECT_EQ(ask([](const Body& body) { return body.extension(eCrossHairVerticalLine); }), 0.0);
}

TEST_F(MarkBody, WithoutItsCircleItKeepsTheRadiusItHad) {
  erase(circle_);
  evaluateChanges();
  ask([](const Body& body) {
    EXPECT_FALSE(body.isAssociative(false));
    EXPECT_EQ(body.horizontalStartExtension(), 10.0);
    EXPECT_EQ(body.getRefCircleRadius(), 10.0);
    ZnGeCircArc3d circle;
    EXPECT_EQ(body.getRefCircle(circle), Quorl::eOk);
    EXPECT_TRUE(near(circle.center(), {3.0, 4.0, 0.0}));
    return 0;
  });
  EXPECT_NE(printed_.find(L"center mark"), -1) << printed_.utf8();
  changeBody([](Body& body) {
    EXPECT_EQ(body.setCachedCircleRadius(7.0), Quorl::eOk);
    body.updateCachedCircleRadius();
    EXPECT_EQ(body.horizontalEndExtension(), 7.0);
  });
}

TEST_F(MarkBody, OvershootsRefuseLengthsBelowZero) {
  struct {
    double value;
    Quorl::ErrorStatus status;
  } const rows[] = {{-1.0, Quorl::eInvalidInput},
                    {-2.0 * ZnGeContext::gTol.equalPoint(), Quorl::eInvalidInput},
                    {-0.5 * ZnGeContext::gTol.equalPoint(), Quorl::eOk},
                    {0.0, Quorl::eOk},
                    {3.0, Quorl::eOk}};
  Quorl::ErrorStatus (Body::*const setters[])(double) = {
      &Body::setHorizontalStartOvershoot, &Body::setHorizontalEndOvershoot, &Body::setVerticalStartOvershoot,
      &Body::setVerticalEndOvershoot};
  double (Body::*const getters[])() const = {&Body::horizontalStartOvershoot, &Body::horizontalEndOvershoot,
                                             &Body::verticalStartOvershoot, &Body::verticalEndOvershoot};
  for (const auto& row : rows) {
    changeBody([&](Body& body) {
      body.resetOvershoots();
      for (int side = 0; side < 4; ++side) {
        EXPECT_EQ((body.*setters[side])(row.value), row.status);
        for (int other = 0; other < 4; ++other) {
          const bool taken = row.status == Quorl::eOk && other <= side;
          EXPECT_EQ((body.*getters[other])(), taken ? row.value : 0.5) << row.value << " " << side << other;
        }
      }
    });
  }
}

TEST_F(MarkBody, VisibilityOfLinesOneByOneAndTogether) {
  const auto allShown = [&] {
    return ask([](const Body& body) { return body.getExtensionLinesVisibility(); });
  };
  EXPECT_TRUE(allShown());
  for (const ZnCenterMarkSubEntType line : {eLeftLine, eRightLine, eBottomLine, eTopLine}) {
    changeBody([&](Body& body) { EXPECT_EQ(body.setSubEntVisibility(line, false), Quorl::eOk); });
    EXPECT_FALSE(allShown());
    changeBody([&](Body& body) { body.setSubEntVisibility(line, true); });
    EXPECT_TRUE(allShown());
  }
  changeBody([](Body& body) { EXPECT_EQ(body.setExtensionLinesVisibility(false), Quorl::eOk); });
  for (int line = eCrossHairHorizontalLine; line <= eTopLine; ++line)
    EXPECT_EQ(ask([&](const Body& body) {
                return body.getSubEntVisibility(static_cast<ZnCenterMarkSubEntType>(line));
              }),
              line < eLeftLine);
  EXPECT_EQ(stored(L"eTopLine_visibility"), 0.0);
  changeBody([](Body& body) { body.setSubEntVisibility(static_cast<ZnCenterMarkSubEntType>(9), false); });
  EXPECT_EQ(stored(L"undefined_visibility"), 0.0);
}

TEST_F(MarkBody, ValuesThatAreNotStoredReadAsTheyWouldBeMade) {
  changeBody([](Body& body) {
    ZnArray<ZnString> names;
    body.ownedValueParamNames(names);
    for (const ZnString& name : names)
      if (name.find(L"DepId") < 0) {
        EXPECT_EQ(body.removeValueParam(name), Quorl::eOk);
      }
  });
  put(L"CENTERCROSSSIZE", L"3");
  put(L"CENTERCROSSGAP", L"4x");
  ask([](const Body& body) {
    EXPECT_EQ(body.horizontalStartExtension(), 0.0);
    EXPECT_EQ(body.verticalEndOvershoot(), 0.0);
    EXPECT_EQ(body.cachedCircleRadius(), 0.0);
    EXPECT_EQ(body.cachedRotation(), 0.0);
    EXPECT_EQ(body.crossHairLengthExpression().utf8(), "3");
    EXPECT_EQ(body.crossHairGapExpression().utf8(), "4x");
    EXPECT_TRUE(body.getSubEntVisibility(eTopLine));
    return 0;
  });
}

TEST_F(MarkBody, ACircleNeedsExactlyOneEdgeThatIsAnArc) {
  const auto status = [&] {
    return ask([](const Body& body) {
      ZnGeCircArc3d circle;
      return body.getRefCircle(circle);
    });
  };
  EXPECT_EQ(status(), Quorl::eOk);
  const auto addEdge = [&](ZnDbObjectId entity) {
    changeBody([&](Body& body) {
      ZnDbObjectId param;
      int index = 0;
      ASSERT_EQ(body.addParam(Body::inputEdgeParamName(), ZnDbAssocEdgeActionParam::desc(), param, index),
                Quorl::eOk);
      ASSERT_EQ(body.setEdgeRef(index, edgeOf(entity)), Quorl::eOk);
    });
  };
  addEdge(addCircle({0.0, 0.0, 0.0}, 1.0));
  EXPECT_EQ(status(), Quorl::eInvalidInput);
  changeBody([](Body& body) {
    for (const ZnDbObjectId id : body.paramsAtName(Body::inputEdgeParamName())) body.removeParam(id, true);
  });
  addEdge(addLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}));
  EXPECT_EQ(status(), Quorl::eInvalidInput);
  EXPECT_EQ(ask([](const Body& body) { return body.getRefCircleRadius(); }), 0.0);
}

TEST_F(MarkBody, TheShortestExtensionIsHalfTheCrossForEveryLine) {
  changeBody([](Body& body) { body.setCrossHairLengthExpression(L"3"); });
  for (int line = eCrossHairHorizontalLine; line <= eTopLine; ++line)
    EXPECT_EQ(ask([&](const Body& body) {
                return body.getMinExtension(static_cast<ZnCenterMarkSubEntType>(line));
              }),
              1.5);
}

TEST_F(MarkBody, DirectionsCarryTheReferencesTransform) {
  change<ZnDbBlockReference>(mark_, [](ZnDbBlockReference& reference) {
    reference.setBlockTransform(ZnGeMatrix3d::rotation(std::numbers::pi / 2.0, ZnGeVector3d::kZAxis) *
                                ZnGeMatrix3d::scaling(2.0));
  });
  const ZnGeVector3d kExpected[] = {{0.0, 2.0, 0.0}, {-2.0, 0.0, 0.0}, {0.0, -2.0, 0.0},
                                    {0.0, 2.0, 0.0}, {2.0, 0.0, 0.0},  {-2.0, 0.0, 0.0}};
  for (int line = eCrossHairHorizontalLine; line <= eTopLine; ++line)
    EXPECT_TRUE(ask([&](const Body& body) {
                  return body.getSubentDirection(static_cast<ZnCenterMarkSubEntType>(line));
                }).isEqualTo(kExpected[line]))
        << line;
  evaluate(mark_);
}

TEST_F(MarkBody, ReadingAValueAllocatesNothing) {
  changeBody([](Body& body) { body.setVerticalStartExtension(4.0); });
  ZnDbHolder<Body> body(bodyOf(mark_));
  const auto readAll = [&] {
    return body->verticalStartExtension() + body->horizontalEndOvershoot() + body->cachedCircleRadius() +
           body->cachedRotation() + body->getExtensionLinesVisibility() +
           body->crossHairLengthExpression().length();
  };
  const double once = readAll();
  const long before = allocationCount();
  const double again = readAll();
  EXPECT_EQ(allocationCount(), before);
  EXPECT_EQ(once, again);
}

} // namespace
