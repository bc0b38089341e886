// One way of turning two edges into a center line, and the chain in which the ways are tried. Handlers keep
// no state: an edge that moves may come to another handler at the next evaluation.
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

class ZnDbCenterLineNextHandler;

class TORVI_EXPORT ZnDbCenterLineGeometryHandler {
public:
  // Two edges in one coordinate system, and for each the end to which its ray points: 0 the start, else the
  // end.
  using Edges = ZnArray<const ZnGeLineSeg3d*>;
  using Endings = ZnArray<int>;

  virtual ~ZnDbCenterLineGeometryHandler() = default;

  // Makes the line, new and the caller's, when the case is this handler's, else hands on to the next. A
  // handler that says yes ends the search even when it fails.
  virtual Quorl::ErrorStatus handle(const Edges& edges, const Endings& endings, ZnGeLineSeg3d*& out,
                                    ZnDbCenterLineNextHandler next) const;
  virtual bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const = 0;
  virtual Quorl::ErrorStatus prepare(const Edges& edges, const Endings& endings) const;
  virtual Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                                       ZnGeLineSeg3d*& out) const = 0;
  // eInvalidInput without a line, and for one without length, which is deleted.
  virtual Quorl::ErrorStatus validate(ZnGeLineSeg3d*& out) const;

protected:
  // An edge whose ends are equal stands for a point.
  static bool isPoint(const ZnGeLineSeg3d& edge);
  static bool hasPoint(const Edges& edges) { return isPoint(*edges[0]) || isPoint(*edges[1]); }
  // Which of the two is the only point; -1 for none and for both.
  static int indexOfOnlyPoint(const Edges& edges);
  // Without length when the two have one middle up to rounding, which tells no direction.
  static ZnGeLineSeg3d betweenMiddles(const ZnGeLineSeg3d& from, const ZnGeLineSeg3d& to);
  static ZnGePoint3d midway(const ZnGePoint3d& a, const ZnGePoint3d& b) { return a + (b - a) * 0.5; }
};

// What comes after a handler: its copies share the place in the chain that a run has reached.
class TORVI_EXPORT ZnDbCenterLineNextHandler {
public:
  using Handlers = ZnArray<ZnDbCenterLineGeometryHandler*>;

  // Both outlive the run; the index starts at -1.
  ZnDbCenterLineNextHandler(const Handlers& handlers, int& index)
      : handlers_(&handlers)
      , index_(&index) {}
  // Behind the last handler: eOk with a line, eInvalidInput without.
  Quorl::ErrorStatus operator()(const ZnDbCenterLineGeometryHandler::Edges& edges,
                                const ZnDbCenterLineGeometryHandler::Endings& endings,
                                ZnGeLineSeg3d*& out) const;

private:
  const Handlers* handlers_;
  int* index_;
};
