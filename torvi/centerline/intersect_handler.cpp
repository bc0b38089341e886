#include <utility>

#include "torvi/centerline/handlers.h"
#include "torvi/core/edge_relations.h"

using Quorl::ErrorStatus;
using torvi::EdgeMeeting;
using ZnGe::DoubleDouble;
using ZnGe::DoubleDoubleVector;

namespace {

using Endings = ZnDbCenterLineGeometryHandler::Endings;

bool pointsToEnd(const Endings& endings, int edge) { return edge >= endings.length() || endings[edge] != 0; }

// Whether a ray from the meeting point to the chosen end runs the way its edge does. Where the chosen end is
// the meeting point itself, the ray goes to the other end.
bool runsAlongEdge(double meetingParam, bool toEnd) {
  return toEnd ? meetingParam < 1.0 : meetingParam <= 0.0;
}

// An end of an edge: where it is, from the meeting's base, and how far along the ray from the meeting point.
struct EdgeEnd {
  DoubleDoubleVector place;
  DoubleDouble way;
};

// The ends of an edge, in the order in which its ray runs.
struct OrderedEnds {
  OrderedEnds(const ZnGeLineSeg3d& edge, const EdgeMeeting& meeting, int index, bool toEnd) {
    const DoubleDouble param = meeting.param(index);
    const DoubleDouble size = length(DoubleDoubleVector::between(edge.startPoint(), edge.endPoint()));
    near = {DoubleDoubleVector::between(meeting.base(), edge.startPoint()), -param * size};
    far = {DoubleDoubleVector::between(meeting.base(), edge.endPoint()), (1.0 - param) * size};
    if (runsAlongEdge(meeting.settledParam(index), toEnd)) return;
    std::swap(near, far);
    near.way = -near.way;
    far.way = -far.way;
  }
  EdgeEnd near, far;
};

// Where the bisector crosses the chord between two ends: it divides the chord as the ways to its ends, like
// the bisector of an angle in a triangle, and passes beside it when one of them lies behind the meeting
// point. The meeting point stands in then, and where the ends are one point and so have no chord.
DoubleDoubleVector crossingWithChord(const EdgeEnd& from, const EdgeEnd& to,
                                     const DoubleDoubleVector& meeting) {
  const DoubleDoubleVector chord = to.place - from.place;
  if (length(chord).high <= ZnGeContext::gTol.equalPoint()) return meeting;
  if (from.way.high * to.way.high < 0.0 || from.way + to.way == 0.0) return meeting;
  return from.place + chord * (from.way / (from.way + to.way));
}

} // namespace

bool ZnDbCenterLineIntersectHandler::canHandle(const Edges& edges, const Endings&,
                                               const ZnGeLineSeg3d*) const {
  return !hasPoint(edges) && EdgeMeeting::of(*edges[0], *edges[1]);
}

void ZnDbCenterLineIntersectHandler::rayDirections(const Edges& edges, const Endings& endings,
                                                   ZnGeVector3d (&rays)[2]) {
  const std::optional<EdgeMeeting> meeting = EdgeMeeting::of(*edges[0], *edges[1]);
  for (int i = 0; i < 2; ++i) {
    const ZnGePoint3d start = edges[i]->startPoint(), end = edges[i]->endPoint();
    bool toEnd = pointsToEnd(endings, i);
    if (meeting) {
      toEnd = meeting->settledParam(i) == (toEnd ? 1.0 : 0.0) ? !toEnd : toEnd;
      rays[i] = -meeting->wayFrom(toEnd ? end : start);
      continue;
    }
    if ((toEnd ? end : start).isEqualTo(ZnGePoint3d::kOrigin, ZnGeContext::gTol))
      toEnd = start.asVector().length() <= end.asVector().length();
    rays[i] = (toEnd ? end : start).asVector();
  }
}

// A bisector is known by its chords alone: its direction is never asked for, which for rays that run nearly
// against each other has few digits left. Whether the lines meet is asked before; who comes here with skew
// edges gets a line without length at the origin.
ErrorStatus ZnDbCenterLineIntersectHandler::calculate(const Edges& edges, const Endings& endings,
                                                      ZnGeLineSeg3d*& out) const {
  if (out) return Quorl::eOk;
  out = new ZnGeLineSeg3d;
  const std::optional<EdgeMeeting> meeting = EdgeMeeting::of(*edges[0], *edges[1]);
  if (!meeting) return Quorl::eOk;
  const OrderedEnds ends0(*edges[0], *meeting, 0, pointsToEnd(endings, 0));
  const OrderedEnds ends1(*edges[1], *meeting, 1, pointsToEnd(endings, 1));
  out->set(meeting->base() + crossingWithChord(ends0.near, ends1.near, meeting->fromBase()),
           meeting->base() + crossingWithChord(ends0.far, ends1.far, meeting->fromBase()));
  return Quorl::eOk;
}
