// Patterns in every state that a user brings them into: with their holes, with some of them, without them,
// wherever, however large and however turned they stand.
#include <algorithm>
#include <cstdlib>
#include <random>

#include "quorl/file/drawing_file.h"
#include "torvi_lives/portrait.h"
#include "torvi_pattern/pattern_fixture.h"

namespace {

const ZnGeVector3d kUp(0, 0, 1);
const ZnGeMatrix3d kTiltedPlace = ZnGeMatrix3d::rotation(1.0, {0, 1, 0});
const ZnGeMatrix3d kFacingDown = ZnGeMatrix3d::rotation(ZnGe::kPi, {1, 0, 0});

class PatternStates : public PatternTest {
protected:
  struct Sample {
    const char* name;
    Holes holes;
    Wish wish;
    ZnGeMatrix3d place = {};
  };
  static std::vector<Sample> samples() {
    const Holes open = onArc({5, 5}, 30, 0, 45, 5, 2), around = onArc({5, 5}, 30, 0, 60, 6, 2);
    const Holes grid = with(row(4), with(row(3, 7), {{2, 20, 3}}));
    return {{"open ring", open, {kRing}},
            {"open ring with its mark", open, {kRing, false, true}},
            {"closed ring with its mark", around, {kRing, true, true}},
            {"ring that faces down", open, {kRing, false, true}, kFacingDown},
            {"tilted ring", open, {kRing, false, true}, kTiltedPlace},
            {"row", row(4), {kRow}},
            {"tilted row", row(3), {kRow}, kTiltedPlace},
            {"grid", grid, {kRow}},
            {"single hole", row(1), {kRow}}};
  }

  struct Made {
    Ids holes;
    ZnDbObjectId id;
  };
  Made make(const Sample& sample) {
    Made made{addHoles(sample.holes), {}};
    for (const ZnDbObjectId hole : made.holes) transform(hole, sample.place);
    made.id = addPattern(made.holes, sample.wish);
    return made;
  }
  std::string bytes() const {
    std::string text;
    ZnFileError error;
    EXPECT_EQ(zndbDrawingToBytes(*db_, ZnDrawingFormat::kText, text, error), Quorl::eOk);
    return text;
  }
  // It shows that and nothing else, says that it is up to date, and another evaluation leaves every byte.
  void expectSettled(ZnDbObjectId id, const Portrait& look) {
    evaluate(id);
    EXPECT_TRUE(looksLike(id, {look.curves, portraitOf(id).object}));
    EXPECT_EQ(statusOf(id), kIsUpToDateAssocStatus);
    EXPECT_TRUE(Wrapper(id).doesActionMatchCurrentGeometry());
    const std::string before = bytes();
    evaluate(id);
    EXPECT_TRUE(bytes() == before) << "a second evaluation";
  }
  // All of it but the crosses.
  void expectShownIn(ZnDbObjectId id, ZnDbObjectId linetype) {
    std::vector<bool> areCrosses;
    for (const SeenCurve& curve : portraitOf(id).curves)
      areCrosses.push_back(curve.traits.starts_with("CONTINUOUS"));
    change<ZnDbEntity>(id, [&](ZnDbEntity& reference) { reference.setLinetype(linetype); });
    evaluate(id);
    const std::vector<SeenCurve> curves = portraitOf(id).curves;
    ASSERT_EQ(curves.size(), areCrosses.size());
    for (size_t i = 0; i < curves.size(); ++i)
      EXPECT_TRUE(curves[i].traits.starts_with(areCrosses[i] ? "CONTINUOUS" : "Dots")) << curves[i].traits;
  }
};

TEST_F(PatternStates, WithoutItsHolesItStaysAsTheUserLeftIt) {
  const ZnGePoint3d pivot(7, -3, 0);
  const auto mirror = [](double x, double y) {
    return ZnGeMatrix3d::mirroring(ZnGePlane({1, 2, 0}, ZnGeVector3d(x, y, 0).normal()));
  };
  const std::pair<const char*, ZnGeMatrix3d> deeds[] = {
      {"nothing", {}},
      {"moved", ZnGeMatrix3d::translation({40, -7, 2})},
      {"turned by 45 degrees", ZnGeMatrix3d::rotation(ZnGe::kPi / 4, kUp, pivot)},
      {"turned by half a turn", ZnGeMatrix3d::rotation(ZnGe::kPi, kUp, pivot)},
      {"turned", ZnGeMatrix3d::rotation(2.3, kUp, pivot)},
      {"doubled", ZnGeMatrix3d::scaling(2.0, pivot)},
      {"made small", ZnGeMatrix3d::scaling(0.1, pivot)},
      {"mirrored in x", mirror(1, 0)},
      {"mirrored in y", mirror(0, 1)},
      {"mirrored across", mirror(1, 1)},
      {"mirrored somehow", mirror(-0.3, 2)},
      {"tilted", ZnGeMatrix3d::rotation(0.7, ZnGeVector3d(1, 1, 0).normal(), pivot)},
  };
  for (const Sample& sample : samples()) {
    for (const bool erased : {true, false}) {
      SCOPED_TRACE(std::string(sample.name) + (erased ? ", holes erased" : ", let go"));
      const Made made = make(sample);
      const Portrait look = portraitOf(made.id);
      if (erased)
        for (const ZnDbObjectId hole : made.holes) erase(hole);
      else
        EXPECT_EQ(Wrapper(made.id).breakAssociativity(), Quorl::eOk);
      evaluateChanges();
      Portrait expected = look;
      for (const auto& [name, deed] : deeds) {
        SCOPED_TRACE(name);
        transform(made.id, deed);
        expected = expected.moved(deed);
        expectSettled(made.id, expected);
      }
      expectShownIn(made.id, addLinetype(ZnString(L"Dots") + handleText(db_->nextHandle()), {1, -1}, false));
      erase(made.id);
    }
  }
}

// ---- analysis ----

struct Reading {
  bool isPattern = false, closed = false;
  CenterMarkPatternType type = kCenterPatternNone;
  std::vector<int> chain;
  bool operator==(const Reading&) const = default;
};

Reading readingOf(const ZnPatternAnalysis& found) {
  Reading reading{found.isPattern, found.fullPcd, found.patternType, {}};
  for (const int index : found.memberChain) reading.chain.push_back(index);
  return reading;
}

ZnPatternQuestion ask(const std::vector<Hole>& holes, CenterMarkPatternType type,
                      const ZnGeMatrix3d& place = {}, double tolerance = kPatternTolerance) {
  ZnPatternQuestion question;
  question.patternType = type;
  question.autoFullPcd = true;
  question.tolerance = tolerance;
  const double scale = place.scale();
  for (const Hole& hole : holes)
    question.circles.append(
        ZnGeCircArc3d(place * ZnGePoint3d(hole.x, hole.y, 0.0), kUp, hole.radius * scale));
  return question;
}

// Rings with and without gaps, rows beside rows, grids, and strays among them; holes of the size of a unit.
std::vector<Hole> someHoles(std::mt19937& random) {
  const auto number = [&](int from, int to) { return std::uniform_int_distribution<>(from, to)(random); };
  std::vector<Hole> holes;
  const int places = number(3, 12), left = number(std::min(places, 3), places);
  const double radius = 0.5 * number(14, 60);
  const auto addRow = [&](int count, double y) {
    for (int i = 0; i < count; ++i) holes.push_back({5.0 * i, y});
  };
  switch (number(0, 3)) {
  case 0: // a ring, whole or in part
    for (int i = 0; i < left; ++i)
      holes.push_back(
          {radius * std::cos(i * 2.0 * ZnGe::kPi / places), radius * std::sin(i * 2.0 * ZnGe::kPi / places)});
    break;
  case 1: // rows, of which one is longer
    addRow(number(2, 4), 0.0);
    addRow(number(4, 6), 7.0 + number(0, 3));
    break;
  case 2: // a grid
    for (int line = 0; line < number(2, 4); ++line) addRow(3, 6.0 * line);
    break;
  default:
    addRow(number(1, 7), 0.0);
  }
  for (int i = number(0, 3); i > 0; --i) holes.push_back({0.37 * number(-99, 99), 0.41 * number(-99, 99)});
  std::shuffle(holes.begin(), holes.end(), random);
  return holes;
}

// The same holes elsewhere, turned, mirrored, as large as a site or as small as a chip, make the same
// pattern.
TEST(PatternAnalysisEverywhere, DoesNotDependOnPlaceTurnSideAndSize) {
  const char* const wanted = std::getenv("PATTERN_CASES");
  const unsigned cases = wanted ? static_cast<unsigned>(std::atoi(wanted)) : 1000;
  unsigned asked = 0, differing = 0;
  for (unsigned seed = 0; seed < cases; ++seed) {
    std::mt19937 random(seed);
    const auto uniform = [&](double from, double to) {
      return std::uniform_real_distribution<>(from, to)(random);
    };
    const std::vector<Hole> holes = someHoles(random);
    const auto type = static_cast<CenterMarkPatternType>(seed % 3);
    const Reading reading = readingOf(analysePattern(ask(holes, type)));
    // Where strays lie so that a little tolerance takes them in, the size decides.
    const auto isSameWithin = [&](double tolerance) {
      return readingOf(analysePattern(ask(holes, type, {}, tolerance))) == reading;
    };
    if (!isSameWithin(1e-2) || !isSameWithin(1e-9)) continue;
    ++asked;
    const double scale = std::pow(10.0, uniform(-3.0, 7.0)), far = std::pow(10.0, uniform(0.0, 8.0));
    const bool mirrored = seed % 2 == 1;
    ZnGeMatrix3d place = ZnGeMatrix3d::translation({uniform(-far, far), uniform(-far, far), 0.0}) *
                         ZnGeMatrix3d::rotation(uniform(0.0, 7.0), kUp) * ZnGeMatrix3d::scaling(scale);
    if (mirrored) place = place * ZnGeMatrix3d::mirroring(ZnGePlane({0, 0, 0}, {1, 0, 0}));
    Reading moved = readingOf(analysePattern(ask(holes, type, place)));
    // A ring runs about its normal, a row to the right.
    const bool runsBack = reading.type == kCenterPatternPolar
                              ? mirrored
                              : !moved.chain.empty() && moved.chain.front() != reading.chain.front();
    if (runsBack) std::reverse(moved.chain.begin(), moved.chain.end());
    if (moved == reading) continue;
    ++differing;
    ADD_FAILURE() << "seed " << seed << ", scale " << scale << ", far " << far << ": "
                  << testing::PrintToString(moved.chain) << " instead of "
                  << testing::PrintToString(reading.chain);
  }
  EXPECT_GT(asked, cases / 2);
  EXPECT_EQ(differing, 0u);
}

// Three equal gaps close a ring as far as the decimals of a file tell that they are equal.
TEST(PatternAnalysisEverywhere, ARingOfThreeClosesWithRoundedCoordinates) {
  for (const double decimals : {4.0, 5.0, 6.0, 12.0}) {
    const double unit = std::pow(10.0, -decimals);
    for (int turn = 0; turn < 120; ++turn) {
      for (const double radius : {2.0, 7.3, 30.0, 412.5}) {
        std::vector<Hole> holes, wider;
        for (const double degrees : {0.0, 120.0, 240.0, 60.0}) {
          if (degrees == 60.0 && turn % 2 == 0) continue; // a fourth hole within a gap
          const auto at = [&](double more) {
            const double angle = (degrees + more + turn) * ZnGe::kPi / 180.0;
            return Hole{std::round(radius * std::cos(angle) / unit) * unit,
                        std::round(radius * std::sin(angle) / unit) * unit, 0.3};
          };
          holes.push_back(at(0.0));
          wider.push_back(at(degrees == 240.0 ? -0.1 : 0.0));
        }
        ASSERT_TRUE(analysePattern(ask(holes, kCenterPatternPolar)).fullPcd) << decimals << " " << turn;
        ASSERT_FALSE(analysePattern(ask(wider, kCenterPatternPolar)).fullPcd) << decimals << " " << turn;
      }
    }
  }
}

// Drawn by hand, a column leans a little, and its holes stand a little beside it.
TEST(PatternAnalysisEverywhere, ARowMayBeALittleOff) {
  const std::pair<const char*, std::vector<Hole>> rows[] = {
      {"leaning column", {{0, 0}, {4e-6, 10}, {8e-6, 20}, {1.2e-5, 30}, {9, 4}}},
      {"column to five decimals", {{0, 0}, {1e-5, 10}, {-1e-5, 20}, {1e-5, 30}, {9, 4}}},
      {"slanted to five decimals",
       {{0, 0}, {7.07107, 7.07106}, {14.14213, 14.14214}, {21.21321, 21.2132}, {9, 4}}}};
  for (const auto& [what, holes] : rows)
    EXPECT_EQ(readingOf(analysePattern(ask(holes, kCenterPatternLinear))).chain, (std::vector{0, 1, 2, 3}))
        << what;
}

// ---- objects ----

TEST_F(PatternStates, StandsWhereItsHolesAreInEverySize) {
  for (const double size : {1e-3, 1.0, 1e7})
    for (const double far : {0.0, 1e8}) {
      SCOPED_TRACE(testing::Message() << size << " at " << far);
      const ZnGeMatrix3d place = ZnGeMatrix3d::translation({far, -far, 0.0}) * ZnGeMatrix3d::scaling(size);
      for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.name);
        const Made plain = make(sample), made = make({"", sample.holes, sample.wish, place * sample.place});
        EXPECT_EQ(Wrapper(made.id).getCenterPatternType(), sample.wish.type);
        EXPECT_EQ(keysOf(made.id), keysOf(plain.id));
        expectSettled(made.id, portraitOf(made.id));
        moveHole(made.holes[0], far + 3.0 * size, -far - 2.0 * size);
        expectSettled(made.id, portraitOf(made.id));
        for (const ZnDbObjectId id : {plain.id, made.id}) erase(id);
      }
    }
}

TEST_F(PatternStates, IsUpToDateAlsoWithoutSomeOfItsHoles) {
  for (const Sample& sample : samples()) {
    SCOPED_TRACE(sample.name);
    const Made made = make(sample);
    erase(made.holes.back());
    EXPECT_FALSE(Wrapper(made.id).doesActionMatchCurrentGeometry());
    evaluateChanges();
    expectSettled(made.id, portraitOf(made.id));
  }
}

// Each overshoot stays with its member, however the holes are brought elsewhere.
TEST_F(PatternStates, OvershootsStayWithTheirMembers) {
  const ZnGeMatrix3d deeds[] = {ZnGeMatrix3d::rotation(ZnGe::kPi, kUp), ZnGeMatrix3d::rotation(2.0, kUp),
                                ZnGeMatrix3d::mirroring(ZnGePlane({0, 0, 0}, {1, 0, 0})),
                                ZnGeMatrix3d::mirroring(ZnGePlane({1, 2, 0}, {0, 1, 0}))};
  for (const Sample& sample : samples()) {
    // What the drawing's axes rule would not go along: the middle's mark, and marks beside a row.
    if (sample.wish.show || sample.holes.size() < 3 || sample.name == std::string("grid")) continue;
    SCOPED_TRACE(sample.name);
    const Made made = make(sample);
    Wrapper wrapper(made.id);
    const ZnString key = ZnString::fromUtf8(centerLine(made.id));
    EXPECT_EQ(wrapper.setStartOvershoot(key, 3.0), Quorl::eOk);
    EXPECT_EQ(wrapper.setEndOvershoot(key, 1.25), Quorl::eOk);
    evaluate(made.id);
    Portrait look = portraitOf(made.id);
    for (const ZnGeMatrix3d& deed : deeds) {
      for (const ZnDbObjectId hole : made.holes) transform(hole, deed);
      evaluateChanges();
      look = look.moved(deed);
      EXPECT_TRUE(looksLike(made.id, look));
    }
  }
}

TEST_F(PatternStates, KeepsTheSizesOfItsMaking) {
  for (const Sample& sample : samples()) {
    SCOPED_TRACE(sample.name);
    const Made made = make(sample);
    const Portrait look = portraitOf(made.id);
    put(L"CENTEREXE", ZnRxVariableValue::ofDouble(3.0));
    put(L"CENTERCROSSSIZE", L"0.4x");
    put(L"CENTERCROSSGAP", L"0.3x");
    const ZnGeMatrix3d away = ZnGeMatrix3d::translation({2, 50, 0});
    for (const ZnDbObjectId hole : made.holes) transform(hole, away);
    evaluateChanges();
    expectSettled(made.id, look.moved(away));
    put(L"CENTEREXE", ZnRxVariableValue::ofDouble(0.5));
    put(L"CENTERCROSSSIZE", L"0.1x");
    put(L"CENTERCROSSGAP", L"0.05x");
  }
}

TEST_F(PatternStates, ARowOfOneLeavesNothingBehind) {
  const Ids holes = addHoles(row(2));
  const ZnDbObjectId pattern = addPattern(holes);
  const auto entities = [&] {
    ZnArray<ZnDbObjectId> ids;
    EXPECT_EQ(Wrapper(pattern).getCenterEntitesIds(ids), Quorl::eOk);
    return ids.length();
  };
  const int whole = entities();
  for (int i = 0; i < 3; ++i) {
    moveHole(holes[1], 0, 0); // into the other, which is one hole then
    EXPECT_EQ(keysOf(pattern), "0");
    EXPECT_EQ(entities(), 6);
    moveHole(holes[1], 5, 0);
    EXPECT_EQ(entities(), whole);
  }
}

// The cross takes its size from the arms, and a set arm is at least as long as the cross.
TEST_F(PatternStates, ACrossFittedToItsLinetypeMayHaveArmsOfSetLength) {
  addLinetype(L"Fit", {1.25, -0.25, 0.25, -0.25}, true);
  put(L"CENTERLTYPE", L"Fit");
  put(L"CENTERCROSSSIZE", L"ByLinetype");
  const Made made = make(samples()[1]);
  change<Body>(bodyOf(made.id), [](Body& body) {
    body.setVerticalStartExtension(41.0);
    body.setHorizontalStartExtension(1e-3);
  });
  evaluate(made.id);
  EXPECT_EQ(drawn(made.id, "MajorAxis")[4].substr(0, 12), "line 5,-36.5");
  ask(made.id, [](const Body& body) {
    EXPECT_EQ(body.horizontalStartExtension(), body.getMinExtension(eLeftLine));
    EXPECT_GT(body.getMinExtension(eLeftLine), 0.0);
  });
  expectSettled(made.id, portraitOf(made.id));
}

// What is set without edges is drawn, in the size of the block.
TEST_F(PatternStates, LengthsSetWithoutHolesAreDrawn) {
  const Made made = make(samples()[1]);
  EXPECT_EQ(Wrapper(made.id).breakAssociativity(), Quorl::eOk);
  const double cross = Wrapper(made.id).crossHairLength();
  transform(made.id, ZnGeMatrix3d::scaling(2.0, {5, 5, 0}));
  EXPECT_EQ(Wrapper(made.id).crossHairLength(), cross) << "in the size of the block, as all lengths are";
  change<Body>(bodyOf(made.id), [](Body& body) {
    body.setVerticalStartExtension(40.0);
    body.setHorizontalEndExtension(37.0);
  });
  EXPECT_FALSE(Wrapper(made.id).doesActionMatchCurrentGeometry());
  evaluate(made.id);
  EXPECT_EQ(drawn(made.id, "MajorAxis")[4], "line 5,-76 5,-7");
  EXPECT_EQ(drawn(made.id, "0")[5], "line 65.8,5 80,5");
  ask(made.id, [](const Body& body) {
    ZnGeCircArc3d circle;
    EXPECT_EQ(body.getRefCircle(circle), Quorl::eOk);
    EXPECT_TRUE(near(circle.center(), {5, 5, 0}) && std::fabs(circle.radius() - 60.0) < 1e-9);
  });
  expectSettled(made.id, portraitOf(made.id));
}

TEST_F(PatternStates, OfAnEditedRingWithItsMarkThePreviewEndsAtTheCursor) {
  const ZnDbObjectId id = addPattern(addHoles(ring(4, 8)), {kRing, false, true});
  ZnCenterMarkPatternBuilder builder(db_.get());
  ASSERT_EQ(builder.loadTorvi(id), Quorl::eOk);
  const ZnGePoint3d cursor = at(10.4, 180.0);
  ZnArray<ZnDbCurve*> preview;
  ASSERT_EQ(builder.createTorviTransients(&cursor, preview), Quorl::eOk);
  std::multiset<std::string> texts;
  for (const ZnDbCurve* curve : preview) {
    texts.insert(textOf(*curve));
    delete curve;
  }
  EXPECT_TRUE(texts.contains("arc -7.2111,6.9282 -10,0"));
}

} // namespace
