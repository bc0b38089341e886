// The ways of turning two edges into a center line, in the order in which the chain asks them. Unless it says
// otherwise, a handler leaves a line that is there already.
#pragma once

#include "torvi/centerline/geometry_handler.h"

// A point on the line of a real edge: the center line runs from the point to the middle of the edge.
class TORVI_EXPORT ZnDbCenterLineOnePointAndColinearHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  // Replaces what out holds without looking.
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};

// A point beside a real edge: the center line is parallel to the edge, halfway to the point and half as long.
class TORVI_EXPORT ZnDbCenterLineOnePointHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};

// Two points: the center line stands at their middle, square to the way between them. It has next to no
// length of its own; extensions and overshoots give it one.
class TORVI_EXPORT ZnDbCenterLineTwoPointHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  // eInvalidInput for equal points.
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};

// Two edges whose lines meet: the center line is a piece of the bisector of two rays, one along each edge,
// from the chord through the near ends of the edges to the chord through their far ends.
class TORVI_EXPORT ZnDbCenterLineIntersectHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;

  // From the meeting point along each edge, to the end that its ending chooses; where that end is the meeting
  // point itself, to the farther end. Not normalised. The meeting point is the origin for skew edges.
  static void rayDirections(const Edges& edges, const Endings& endings, ZnGeVector3d (&rays)[2]);
};

// Two parallel edges: the center line joins the middles of the ends that belong together and runs as the
// first edge does.
class TORVI_EXPORT ZnDbCenterLineParallelHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};

// Two edges on one line: the center line runs from the middle of the first to the middle of the second.
class TORVI_EXPORT ZnDbCenterLineColinearHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  // Replaces what out holds without looking.
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};

// The end of the chain: takes what nobody else could, such as skew edges, and says that there is no line.
class TORVI_EXPORT ZnDbCenterLineGeometryErrorHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  // eInvalidInput unless out holds a line with length.
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};
