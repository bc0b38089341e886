// From two segments to one, without any drawing: which handler takes a case, and what it makes of it.
#include <gtest/gtest.h>

#include <memory>

#include "support/drawing_fixture.h"
#include "support/point_text.h"
#include "torvi/centerline/geometry_generator.h"
#include "torvi/centerline/geometry_handler_manager.h"
#include "torvi/centerline/handlers.h"

namespace {

using Edges = ZnDbCenterLineGeometryHandler::Edges;
using Endings = ZnDbCenterLineGeometryHandler::Endings;
using Manager = ZnDbCenterLineGeometryHandlerManager;
using Seg = ZnGeLineSeg3d;
using P3 = ZnGePoint3d;
enum { kPointOnLine, kPoint, kPoints, kIntersect, kParallel, kColinear, kError };

// The chain's status and line. The handler is the first that says yes.
struct ChainRun {
  ChainRun(const Seg& first, const Seg& second, const Endings& endings) {
    ZnGeLineSeg3d* out = nullptr;
    const Edges edges{&first, &second};
    status = Manager::generateCenterLine(edges, endings, out);
    line.reset(out);
    while (!Manager::handlers()[handler]->canHandle(edges, endings, nullptr)) ++handler;
  }
  bool runs(const P3& from, const P3& to, double tolerance = 1e-8) const {
    return line && near(line->startPoint(), from, tolerance) && near(line->endPoint(), to, tolerance);
  }
  Quorl::ErrorStatus status;
  std::unique_ptr<ZnGeLineSeg3d> line;
  int handler = 0;
};

TEST(CenterLineHandlers, CaseByCaseWhereverItStands) {
  struct {
    const char *name, *first, *second;
    Endings endings;
    int handler;
    const char* line; // empty for none
  } const cases[] = {
      {"V", "0,0 4,3", "0,0 4,-3", {1, 1}, kIntersect, "0,0 4,0"},
      {"V, starts chosen", "0,0 4,3", "4,-3 0,0", {0, 1}, kIntersect, "0,0 4,0"},
      {"wedge", "4,3 8,6", "8,-6 4,-3", {1, 0}, kIntersect, "4,0 8,0"},
      {"cross", "-4,-3 4,3", "-4,3 4,-3", {1, 1}, kIntersect, "-4,0 4,0"},
      {"other bisector", "-4,-3 4,3", "-4,3 4,-3", {1, 0}, kIntersect, "0,-3 0,3"},
      {"no endings", "-4,-3 4,3", "-4,3 4,-3", {}, kIntersect, "-4,0 4,0"},
      {"near chord beside", "-4,-3 4,3", "8,-6 4,-3", {0, 0}, kIntersect, "0,0 0,-4"},
      {"alike", "0,0 10,0", "0,4 10,4", {}, kParallel, "0,2 10,2"},
      {"opposite", "0,0 10,0", "10,4 0,4", {0, 0}, kParallel, "0,2 10,2"},
      {"backwards", "10,0 0,0", "10,4 0,4", {1, 0}, kParallel, "10,2 0,2"},
      {"averaged", "0,0 10,0", "30,4 26,4", {}, kParallel, "13,2 20,2"},
      {"parallel by a hair", "0,0 1,0", "0,4 1,4.000000005", {}, kParallel, "0,2 1,2.0000000025"},
      {"in a row", "0,0 2,0", "9,0 5,0", {}, kColinear, "1,0 7,0"},
      {"one upon the other", "0,0 8,0", "6,0 2,0", {}, kColinear, ""},
      {"point beside", "5,5 5,5", "0,0 8,0", {}, kPoint, "2.5,2.5 6.5,2.5"},
      {"beside point", "0,0 8,0", "5,5,2 5,5,2", {}, kPoint, "2.5,2.5,1 6.5,2.5,1"},
      {"point ahead", "0,0 8,0", "12,0 12,0", {}, kPointOnLine, "12,0 4,0"},
      {"point within", "1,0 1,0", "0,0 8,0", {}, kPointOnLine, "1,0 4,0"},
      {"point halfway", "4,0 4,0", "0,0 8,0", {}, kPointOnLine, ""},
      {"one place", "4,1 4,1", "4,1 4,1", {}, kPoints, ""},
      {"skew", "0,0 8,0", "0,5,1 3,0,1", {1, 1}, kError, ""}};
  const ZnGeMatrix3d maps[] = {ZnGeMatrix3d(), ZnGeMatrix3d::translation({5e5, -3e6, 7}),
                               ZnGeMatrix3d::rotation(1.2, {1, 2, 2}, {4, 4, 0}),
                               ZnGeMatrix3d::mirroring(ZnGePlane({1, 0, 0}, {1, 0.5, 0.2})),
                               // Where rounding alone is wider than the tolerances.
                               ZnGeMatrix3d::rotation(0.7, {2, -1, 3}) *
                                   ZnGeMatrix3d::scaling(1e6, {4, 1, 1}),
                               ZnGeMatrix3d::translation({9e7, -8e7, 7e7}) *
                                   ZnGeMatrix3d::rotation(2.3, {1, -1, 3}) * ZnGeMatrix3d::scaling(0.1, {})};
  for (const auto& c : cases)
    for (const ZnGeMatrix3d& map : maps) {
      SCOPED_TRACE(c.name);
      Seg first = segmentOf(c.first), second = segmentOf(c.second);
      const ChainRun run(first.transformBy(map), second.transformBy(map), c.endings);
      const std::vector<P3> line = pointsOf(c.line);
      EXPECT_EQ(run.handler, c.handler);
      EXPECT_EQ(run.status, line.empty() ? Quorl::eInvalidInput : Quorl::eOk);
      EXPECT_EQ(run.line == nullptr, line.empty());
      const double slack = 1e-8 + 1e-14 * std::fabs(first.startPoint().x);
      EXPECT_TRUE(line.empty() || run.runs(map * line[0], map * line[1], slack));
    }
}

// A mark of place and direction, no longer than it must be.
TEST(CenterLineHandlers, TwoPointsGiveAMinuteLineSquareToThem) {
  for (const P3& to : {P3(4, 0, 0), P3(1, 7, 0), P3(1, 2, 5)}) {
    const ChainRun run(Seg(P3(1, 2, 0), P3(1, 2, 0)), Seg(to, to), {});
    ASSERT_EQ(run.status, Quorl::eOk);
    EXPECT_EQ(run.handler, kPoints);
    EXPECT_TRUE(near(run.line->startPoint(), P3(1, 2, 0) + (to - P3(1, 2, 0)) * 0.5, 1e-12));
    EXPECT_NEAR(run.line->length(), 1e-9, 1e-14);
    EXPECT_NEAR(run.line->span().dotProduct(to - P3(1, 2, 0)), 0.0, 1e-13);
  }
}

TEST(CenterLineHandlers, RaysStartWhereTheLinesMeetAndElseAtTheOrigin) {
  struct {
    const char *first, *second;
    Endings endings;
    const char* rays;
  } const rows[] = {{"2,0 6,0", "0,1 0,5", {1, 0}, "6,0 0,1"},
                    {"3,1 6,1", "3,1 3,9", {0, 0}, "3,0 0,8"},
                    {"1,0 6,0", "2,1,5 2,5,5", {1, 0}, "6,0 2,1,5"},
                    {"0,0 6,0", "2,1,5 2,5,5", {0, 1}, "6,0 2,5,5"}};
  for (const auto& row : rows) {
    const Seg first = segmentOf(row.first), second = segmentOf(row.second);
    ZnGeVector3d rays[2];
    ZnDbCenterLineIntersectHandler::rayDirections({&first, &second}, row.endings, rays);
    for (const size_t i : {0, 1}) EXPECT_TRUE(near(P3() + rays[i], pointsOf(row.rays)[i])) << row.rays;
  }
}

// What only a direct caller sees: five handlers leave a line that is there, two replace it, the last judges
// it.
TEST(CenterLineHandlers, ALineThatIsThereStaysOrIsReplaced) {
  const Seg real = segmentOf("0,0 8,0"), other = segmentOf("0,2 8,3"), point = segmentOf("4,4 4,4");
  struct {
    int handler;
    const Seg *first, *second;
    bool replaces;
  } const rows[] = {{kPointOnLine, &point, &real, true}, {kPoint, &point, &real, false},
                    {kPoints, &point, &point, false},    {kIntersect, &real, &other, false},
                    {kParallel, &real, &real, false},    {kColinear, &real, &real, true},
                    {kError, &real, &other, false}};
  for (const auto& row : rows) {
    Seg there(real);
    Seg* out = &there;
    EXPECT_EQ(Manager::handlers()[row.handler]->calculate({row.first, row.second}, {1, 1}, out), Quorl::eOk);
    EXPECT_EQ(out != &there, row.replaces) << row.handler;
    if (out != &there) delete out;
  }
  const auto* last = Manager::handlers().last();
  for (Seg* out : {static_cast<Seg*>(nullptr), new Seg(point)}) {
    EXPECT_EQ(last->calculate({&real, &other}, {}, out), Quorl::eInvalidInput);
    EXPECT_EQ(last->validate(out), Quorl::eInvalidInput);
    EXPECT_EQ(out, nullptr) << "a line without length is thrown away";
    Seg there(real);
    for (Seg* line : {out, &there}) {
      int index = Manager::handlers().length() - 1;
      const ZnDbCenterLineNextHandler behind(Manager::handlers(), index);
      EXPECT_EQ(behind({&real, &other}, {}, line), line ? Quorl::eOk : Quorl::eInvalidInput);
    }
  }
}

TEST(CenterLineGenerator, TakesTwoSegmentsAndReplacesTheResults) {
  const Seg a = segmentOf("0,0 8,0"), b = segmentOf("0,2 8,2"), up = segmentOf("3,0,5 3,1,5");
  const ZnGeCircArc3d arc(P3(0, 0, 0), ZnGeVector3d::kZAxis, 2.0);
  const ZnGeLine3d line;
  struct {
    ZnArray<const ZnGeCurve3d*> inputs;
    Quorl::ErrorStatus status;
    int left; // of one result that was there
  } const rows[] = {{{&a, &b}, Quorl::eOk, 1},
                    {{&a, &up}, Quorl::eInvalidInput, 0},
                    {{&a}, Quorl::eInvalidInput, 1},
                    {{&a, &arc}, Quorl::eInvalidInput, 1},
                    {{&line, &b}, Quorl::eInvalidInput, 1},
                    {{nullptr, &b}, Quorl::eInvalidInput, 1},
                    {{&a, &b, &a, &b}, Quorl::eInvalidInput, 1}};
  for (const auto& row : rows) {
    ZnArray<ZnGeCurve3d*> results{new ZnGeLine3d};
    EXPECT_EQ(ZnDbCenterLineGeometryGenerator({1, 1}).generateGeometry(results, row.inputs), row.status);
    ASSERT_EQ(results.length(), row.left);
    if (row.status == Quorl::eOk) EXPECT_EQ(results[0]->type(), ZnGe::kLineSeg3d);
    for (const ZnGeCurve3d* curve : results) delete curve;
  }
}

} // namespace
