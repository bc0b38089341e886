// A circle or a circular arc in a plane.
#pragma once

#include "quorl/ge/angles.h"
#include "quorl/ge/curve2d.h"

// The parameter is the angle from the reference vector in the sense of the arc: counterclockwise, or
// clockwise for an arc that was made or mirrored so.
class ZnGeCircArc2d : public ZnGeCurve2d {
public:
  // The circle of radius 1 about the origin.
  ZnGeCircArc2d() = default;
  // A full counterclockwise circle from the x axis on. A negative radius counts as positive.
  ZnGeCircArc2d(const ZnGePoint2d& center, double radius);
  // The arc from the first point through the second to the third. The reference vector points to the first
  // point, so the arc runs from the angle 0 to endAng. Points on one line (their chords parallel by
  // equalVector of gTol), two equal ones among them, give a degenerate arc of radius 0 at the first point.
  ZnGeCircArc2d(const ZnGePoint2d& first, const ZnGePoint2d& second, const ZnGePoint2d& third);

  const ZnGePoint2d& center() const { return center_; }
  double radius() const { return radius_; }
  double startAng() const { return start_; }
  double endAng() const { return end_; }
  const ZnGeVector2d& referenceVector() const { return reference_; }
  bool isClockwise() const { return isClockwise_; }
  ZnGePoint2d startPoint() const { return evalPoint(start_); }
  ZnGePoint2d endPoint() const { return evalPoint(end_); }

  ZnGe::EntityId type() const override { return ZnGe::kCircularArc2d; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kCircularArc2d || ZnGeCurve2d::isKindOf(id);
  }
  ZnGeCircArc2d* copy() const override { return new ZnGeCircArc2d(*this); }
  // Angles stay; mirroring changes the sense. A map that isn't uniform leaves a circle with the scale of the
  // more stretched axis.
  ZnGeCircArc2d& transformBy(const ZnGeMatrix2d& matrix) override;
  // Closed circles are compared without regard to where they start.
  bool isEqualTo(const ZnGeEntity2d& other, const ZnGeTol& tol = ZnGeContext::gTol) const override;

  void getInterval(ZnGeInterval& interval) const override { interval = ZnGeInterval(start_, end_); }
  ZnGePoint2d evalPoint(double param) const override;
  using ZnGeCurve2d::isDegenerate;
  // A radius or an arc length no greater than equalPoint is a point; an arc that
  // departs from its chord by no more than that is a line.
  bool isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol = ZnGeContext::gTol) const override;

protected:
  double nearestParam(const ZnGePoint2d& point) const override;

private:
  bool isFull() const;
  // The direction at the angle pi/2.
  ZnGeVector2d secondAxis() const {
    return isClockwise_ ? -reference_.perpVector() : reference_.perpVector();
  }

  ZnGePoint2d center_;
  ZnGeVector2d reference_{1.0, 0.0};
  double radius_ = 1.0;
  double start_ = 0.0;
  double end_ = ZnGe::kTwoPi;
  bool isClockwise_ = false;
};
