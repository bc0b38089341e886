// A sink that turns what is drawn into points.
#pragma once

#include "quorl/db/entity/curve_transform.h"
#include "quorl/db/entity/text_metrics.h"
#include "quorl/db/entity/world_draw.h"

namespace dbTest {

class SamplingDraw : public ZnGiWorldDraw {
public:
  explicit SamplingDraw(double height)
      : chordHeight(height) {}

  double chordHeight;
  std::vector<ZnGePoint3d> points;
  std::vector<std::string> calls; // the names of the operations in order
  std::vector<ZnGiSubEntityTraits> traitsSet;

  void setTraits(const ZnGiSubEntityTraits& traits) override { traitsSet.push_back(traits); }
  const ZnGiSubEntityTraits& traits() const override { return traitsSet.back(); }
  void curve(const ZnGeCurve3d& curve) override {
    calls.push_back("curve");
    zndbTransformedCurve(curve, current())->appendSamplePoints(chordHeight, points);
  }
  void polyline(const std::vector<ZnGePoint3d>& corners, bool) override {
    calls.push_back("polyline");
    for (const ZnGePoint3d& corner : corners) points.push_back(current() * corner);
  }
  void chain(const std::vector<const ZnGeCurve3d*>& pieces, bool) override {
    calls.push_back("chain");
    for (const ZnGeCurve3d* piece : pieces)
      zndbTransformedCurve(*piece, current())->appendSamplePoints(chordHeight, points);
  }
  void text(const ZnGePoint3d& position, const ZnGeVector3d& normal, const ZnGeVector3d& direction,
            double height, double widthFactor, const ZnString& text, int align) override {
    calls.push_back("text");
    for (const ZnGePoint3d& corner : zndbTextCorners(position, normal, direction, height, widthFactor,
                                                     text.view(), static_cast<ZnDb::TextAlign>(align)))
      points.push_back(current() * corner);
  }
  void point(const ZnGePoint3d& position) override {
    calls.push_back("point");
    points.push_back(current() * position);
  }
  void pushReference(const ZnGeMatrix3d& transform, const ZnGiSubEntityTraits&) override {
    stack_.push_back(current() * transform);
  }
  void popReference() override { stack_.pop_back(); }
  bool isLayerShown(ZnDbObjectId layer) const override { return layer.isNull() || layer != hiddenLayer; }

  ZnDbObjectId hiddenLayer;

private:
  ZnGeMatrix3d current() const { return stack_.empty() ? ZnGeMatrix3d() : stack_.back(); }
  std::vector<ZnGeMatrix3d> stack_;
};

} // namespace dbTest
