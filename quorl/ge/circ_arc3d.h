// A circle or a circular arc in space.
#pragma once

#include "quorl/ge/angles.h"
#include "quorl/ge/curve3d.h"

class ZnGePlane;

// The parameter is the angle from the reference vector, counterclockwise about the normal. The start angle
// lies in [0, 2 pi), the end angle above it by the span of the arc, so it may exceed 2 pi. A span of 2 pi is
// a closed circle, a span of 0 a single point.
class ZnGeCircArc3d : public ZnGeCurve3d {
public:
  // The circle of radius 1 about the origin, with normal z and reference x.
  ZnGeCircArc3d() = default;
  // A full circle from the normal's perpVector on. A zero normal counts as z, a negative radius as positive.
  ZnGeCircArc3d(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius);
  // The reference vector is made perpendicular to the normal; one along the normal is replaced by perpVector.
  // The angles are those of setAngles.
  ZnGeCircArc3d(const ZnGePoint3d& center, const ZnGeVector3d& normal, const ZnGeVector3d& reference,
                double radius, double startAng, double endAng);

  // Shape
  const ZnGePoint3d& center() const { return center_; }
  double radius() const { return radius_; }
  const ZnGeVector3d& normal() const { return normal_; }
  const ZnGeVector3d& referenceVector() const { return reference_; }
  double startAng() const { return start_; }
  double endAng() const { return end_; }
  ZnGePoint3d startPoint() const { return evalPoint(start_); }
  ZnGePoint3d endPoint() const { return evalPoint(end_); }
  // The plane through the center with this normal; its axes follow from the normal alone, not from
  // referenceVector.
  void getPlane(ZnGePlane& plane) const;

  ZnGeCircArc3d& setCenter(const ZnGePoint3d& center);
  ZnGeCircArc3d& setRadius(double radius);
  // Counterclockwise from start to end: an end below the start is raised by full turns, equal angles give an
  // empty span, and a difference of 2 pi or more the whole circle.
  ZnGeCircArc3d& setAngles(double startAng, double endAng);

  ZnGe::EntityId type() const override { return ZnGe::kCircularArc3d; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kCircularArc3d || ZnGeCurve3d::isKindOf(id);
  }
  ZnGeCircArc3d* copy() const override { return new ZnGeCircArc3d(*this); }
  // The sense of the arc and its angles stay; a mirrored arc gets the normal that makes this true. A map that
  // is not uniform in the arc's plane would make an ellipse: the arc stays circular, with the scale of the
  // more stretched of its two axes; ask isUniformlyScaled, and use ZnGeEllipticalArc3d, where that matters.
  ZnGeCircArc3d& transformBy(const ZnGeMatrix3d& matrix) override;
  // Closed circles are compared without regard to where they start.
  bool isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const override;

  void getInterval(ZnGeInterval& interval) const override { interval = ZnGeInterval(start_, end_); }
  // Any angle gives a point of the circle.
  ZnGePoint3d evalPoint(double param) const override;
  ZnGeVector3d evaluateDerivative(double param) const override;
  // Turns the normal round and keeps the reference vector.
  ZnGeCircArc3d& reverseParam() override;
  using ZnGeCurve3d::isDegenerate;
  // A radius or an arc length no greater than equalPoint is a point.
  bool isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol = ZnGeContext::gTol) const override;
  double length() const override { return radius_ * (end_ - start_); }
  // Exact.
  ZnGeBoundBlock3d boundBox() const override;
  void appendSamplePoints(double chordHeight, std::vector<ZnGePoint3d>& points) const override;

protected:
  // The center is as near to every point of the circle: its parameter is the start.
  double nearestParam(const ZnGePoint3d& point) const override;

private:
  ZnGePoint3d center_;
  ZnGeVector3d normal_{0.0, 0.0, 1.0};
  ZnGeVector3d reference_{1.0, 0.0, 0.0};
  double radius_ = 1.0;
  double start_ = 0.0;
  double end_ = ZnGe::kTwoPi;
};
