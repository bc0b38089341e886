#include "torvi_lives/portrait.h"

#include <fmt/format.h>

#include "torvi/core/action_body.h"
#include "torvi/core/object_wrapper.h"

namespace {

constexpr double kSame = 1e-7;

bool near(const ZnGePoint3d& a, const ZnGePoint3d& b) { return a.distanceTo(b) <= kSame; }

bool isSame(const SeenCurve& a, const SeenCurve& b, PortraitPart part) {
  const bool alike = near(a.start, b.start) && near(a.end, b.end);
  const bool reversed = near(a.start, b.end) && near(a.end, b.start);
  return near(a.middle, b.middle) && (alike || reversed) &&
         (part == PortraitPart::kPlaces || a.traits == b.traits);
}

std::string text(const SeenCurve& curve) {
  return fmt::format("{},{},{} to {},{},{}: {}", curve.start.x, curve.start.y, curve.start.z, curve.end.x,
                     curve.end.y, curve.end.z, curve.traits);
}

SeenCurve seen(const ZnDbCurve& entity, const ZnGeMatrix3d& toSpace) {
  ZnGeCurve3d* whole = nullptr;
  EXPECT_EQ(entity.getZnGeCurve(whole, ZnGeContext::gTol), Quorl::eOk);
  const std::unique_ptr<ZnGeCurve3d> curve(whole);
  if (!curve) return {};
  ZnGeInterval range;
  curve->getInterval(range);
  const double from = range.lowerBound(), to = range.upperBound();
  return {toSpace * curve->evalPoint(from), toSpace * curve->evalPoint((from + to) / 2.0),
          toSpace * curve->evalPoint(to),
          fmt::format("{} {} {} on {}", entity.linetype().utf8(), int{entity.lineWeight()},
                      entity.linetypeScale(), entity.layer().utf8())};
}

} // namespace

Portrait Portrait::moved(const ZnGeMatrix3d& by) const {
  Portrait moved = *this;
  for (SeenCurve& curve : moved.curves)
    curve = {by * curve.start, by * curve.middle, by * curve.end, curve.traits};
  return moved;
}

Portrait portraitOf(ZnDbObjectId center) {
  const ZnDbTorviObjectWrapper wrapper(center);
  ZnArray<ZnDbObjectId> ids;
  EXPECT_EQ(wrapper.getCenterEntitesIds(ids), Quorl::eOk);
  Portrait portrait;
  for (const ZnDbObjectId id : ids)
    if (ZnDbHolder<ZnDbEntity>(id)->visibility() == ZnDb::kVisible)
      portrait.curves.push_back(seen(*ZnDbHolder<ZnDbCurve>(id), wrapper.blockTransform()));
  portrait.object = fmt::format(
      "{} follows {} edges, matches {}; {} {} {} copied as {} {} {}", wrapper.isFullyAssociative(),
      wrapper.edgeRefCount(), wrapper.doesActionMatchCurrentGeometry(), wrapper.linetype().utf8(),
      wrapper.lineWeight(), wrapper.linetypeScale(), wrapper.subentLineType().utf8(),
      wrapper.subentLineWeight(), wrapper.subentLinetypeScale());
  return portrait;
}

testing::AssertionResult looksLike(ZnDbObjectId center, const Portrait& expected, PortraitPart part) {
  if (expected.curves.empty()) return testing::AssertionFailure() << "nothing is expected";
  const Portrait actual = portraitOf(center);
  if (actual.object != expected.object)
    return testing::AssertionFailure() << actual.object << "\ninstead of\n" << expected.object;
  std::vector<SeenCurve> left = actual.curves;
  for (const SeenCurve& wanted : expected.curves) {
    const auto found = std::find_if(left.begin(), left.end(),
                                    [&](const SeenCurve& curve) { return isSame(curve, wanted, part); });
    if (found == left.end()) return testing::AssertionFailure() << "not there: " << text(wanted);
    left.erase(found);
  }
  if (!left.empty()) return testing::AssertionFailure() << "too much: " << text(left.front());
  return testing::AssertionSuccess();
}

std::string valuesOf(ZnDbObjectId center) {
  ZnDbHolder<ZnDbTorviActionBody> body(ZnDbTorviObjectWrapper(center).actionBody());
  if (!body.isOpen()) return "no body";
  ZnArray<ZnString> names;
  body->ownedValueParamNames(names);
  std::string lines;
  for (const ZnString& name : names) {
    double number = 0.0;
    ZnDbEvalVariant value;
    if (body->getValueParam(name, value) == Quorl::eOk && value.getValue(number) == Quorl::eOk)
      lines += fmt::format("{} {}\n", name.utf8(), number);
  }
  return lines;
}
