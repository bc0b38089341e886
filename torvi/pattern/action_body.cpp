#include "torvi/pattern/action_body.h"

#include <algorithm>
#include <cwchar>
#include <memory>
#include <string>

#include "torvi/centermark/size_calculator.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/core/tolerance.h"
#include "torvi/drawing/blocks.h"
#include "torvi/host/class_registration.h"
#include "torvi/pattern/layout.h"
#include "torvi/pattern/props_provider.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

TORVI_DEFINE_BODY_CLASS(ZnDbCenterMarkPatternActionBody, ZnDbCenterMarkActionBody)

namespace {

// Built once: a name that keeps its buffer is looked up without making text.
const ZnString kPatternType(L"CenterMarkPatternType");
const ZnString kFullPcd(L"FullPCD");
const ZnString kShowCenterMark(L"ShowCenterMark");
const ZnString kReferencePick(L"ReferenceEdgePickPointParam");
const ZnString kMemberOvershoot(L"MemberOvershoot");
const ZnString kAxisIndices[] = {L"InputEdgeIndexOnMajorAxis-0", L"InputEdgeIndexOnMajorAxis-1",
                                 L"InputEdgeIndexOnMajorAxis-2", L"InputEdgeIndexOnMajorAxis-3"};
const ZnString kAxisRadii[] = {L"InputEdgeRadiusOnMajorAxis-0", L"InputEdgeRadiusOnMajorAxis-1",
                               L"InputEdgeRadiusOnMajorAxis-2", L"InputEdgeRadiusOnMajorAxis-3"};

constexpr double kNoPick = -1.0;
constexpr int kNoMember = -1;

} // namespace

const ZnString& ZnDbCenterMarkPatternActionBody::referenceEdgeParamName() {
  static const ZnString name(L"ReferenceEdge");
  return name;
}

const ZnString& ZnDbCenterMarkPatternActionBody::majorAxisKey() {
  static const ZnString key(L"MajorAxis");
  return key;
}

const ZnString& ZnDbCenterMarkPatternActionBody::centerLineDependencyKey() {
  static const ZnString key(L"CenterLine");
  return key;
}

const ZnString& ZnDbCenterMarkPatternActionBody::startOvershootParamPrefix() {
  static const ZnString prefix(L"StartOvershoot-");
  return prefix;
}

const ZnString& ZnDbCenterMarkPatternActionBody::endOvershootParamPrefix() {
  static const ZnString prefix(L"EndOvershoot-");
  return prefix;
}

ZnString ZnDbCenterMarkPatternActionBody::dependencyKey(int first, int second, bool keepOrder) {
  if (second < 0) return std::to_wstring(first);
  if (!keepOrder && second < first) std::swap(first, second);
  return std::to_wstring(first) + L'-' + std::to_wstring(second);
}

ZnString ZnDbCenterMarkPatternActionBody::centerLineDependencyKey(ZnArray<int> indices) {
  std::wstring key(centerLineDependencyKey().view());
  for (const int index : indices) key += L'-' + std::to_wstring(index);
  return key;
}

bool ZnDbCenterMarkPatternActionBody::getEdgeIndicesOnCenterLine(const ZnString& key, ZnArray<int>& indices) {
  indices.removeAll();
  std::wstring_view rest = key.view();
  if (!rest.starts_with(centerLineDependencyKey().view())) return false;
  rest.remove_prefix(centerLineDependencyKey().view().size());
  for (;;) {
    const size_t begin = rest.find_first_not_of(L'-');
    if (begin == std::wstring_view::npos) return !indices.isEmpty();
    const std::wstring part(rest.substr(begin, rest.find(L'-', begin) - begin));
    indices.append(static_cast<int>(std::wcstol(part.c_str(), nullptr, 10)));
    rest.remove_prefix(begin + part.size());
  }
}

CenterMarkPatternType ZnDbCenterMarkPatternActionBody::getCenterPatternType() const {
  return static_cast<CenterMarkPatternType>(getIntParam(kPatternType, kCenterPatternNone));
}

ErrorStatus ZnDbCenterMarkPatternActionBody::setCenterPatternType(CenterMarkPatternType type) {
  return storeValue(kPatternType, ZnDbEvalVariant(static_cast<int>(type)));
}

bool ZnDbCenterMarkPatternActionBody::isFullPCD() const { return getBoolParam(kFullPcd, false); }

ErrorStatus ZnDbCenterMarkPatternActionBody::setIsFullPCD(bool full) { return setBoolParam(kFullPcd, full); }

bool ZnDbCenterMarkPatternActionBody::showCenterMark() const { return getBoolParam(kShowCenterMark, false); }

ErrorStatus ZnDbCenterMarkPatternActionBody::setShowCenterMark(bool show) {
  return setBoolParam(kShowCenterMark, show);
}

bool ZnDbCenterMarkPatternActionBody::getReferenceEdge(ZnDbEdgeRef& edge, double& pickParam) const {
  pickParam = kNoPick;
  const ZnDbObjectId paramId = paramAtName(referenceEdgeParamName());
  if (paramId.isNull()) return false;
  edge = getEdgeRef(paramId);
  pickParam = valueOf(kReferencePick, kNoPick);
  return !edge.isEmpty();
}

ErrorStatus ZnDbCenterMarkPatternActionBody::setReferenceEdge(const ZnDbEdgeRef& edge, double pickParam) {
  ZnDbObjectId paramId = paramAtName(referenceEdgeParamName());
  if (paramId.isNull()) {
    int index = 0;
    const ErrorStatus added =
        addParam(referenceEdgeParamName(), ZnDbAssocEdgeActionParam::desc(), paramId, index);
    if (added != Quorl::eOk) return added;
  }
  ZnDbHolder<ZnDbAssocEdgeActionParam> param;
  ErrorStatus status = param.openForWrite(paramId);
  if (status == Quorl::eOk) status = param->setEdgeRef(edge, true, false, 0);
  if (status != Quorl::eOk) return status;
  return pickParam >= 0.0 ? setDoubleParam(kReferencePick, pickParam) : Quorl::eOk;
}

void ZnDbCenterMarkPatternActionBody::forgetReferencePick() { removeValueParam(kReferencePick); }

// The pick stays behind: it is only read together with an edge.
bool ZnDbCenterMarkPatternActionBody::clearReferenceEdge() {
  const ZnDbObjectId paramId = paramAtName(referenceEdgeParamName());
  return !paramId.isNull() && removeParam(paramId, true) == Quorl::eOk;
}

bool ZnDbCenterMarkPatternActionBody::getCachedInputEdgeOnMajorAxis(ZnCenterMarkSubEntType type, int& index,
                                                                    double& radius) const {
  if (!torvi::isExtensionLine(type)) return false;
  const int heldIndex = getIntParam(kAxisIndices[type - eLeftLine], kNoMember);
  const double heldRadius = valueOf(kAxisRadii[type - eLeftLine], 0.0);
  if (heldIndex < 0 || !(heldRadius > 0.0)) return false;
  index = heldIndex;
  radius = heldRadius;
  return true;
}

ErrorStatus ZnDbCenterMarkPatternActionBody::cacheInputEdgesOnMajorAxis(const int (&indices)[4],
                                                                        const double (&radii)[4]) {
  for (int arm = 0; arm < 4; ++arm) {
    ErrorStatus status = storeValue(kAxisIndices[arm], ZnDbEvalVariant(indices[arm]));
    if (status == Quorl::eOk) status = storeValue(kAxisRadii[arm], ZnDbEvalVariant(radii[arm]));
    if (status != Quorl::eOk) return status;
  }
  return Quorl::eOk;
}

double ZnDbCenterMarkPatternActionBody::startOvershoot(const ZnString& key) const {
  return getDoubleParam(startOvershootParamPrefix() + key, ZnTorviStyle::getCenterOvershoot());
}

double ZnDbCenterMarkPatternActionBody::endOvershoot(const ZnString& key) const {
  return getDoubleParam(endOvershootParamPrefix() + key, ZnTorviStyle::getCenterOvershoot());
}

ErrorStatus ZnDbCenterMarkPatternActionBody::setStartOvershoot(const ZnString& key, double value,
                                                               bool validate) {
  if (validate && (value < 0.0 || !isOutputEdgeKeyValid(key))) return Quorl::eInvalidInput;
  return storeValue(startOvershootParamPrefix() + key, ZnDbEvalVariant(value));
}

ErrorStatus ZnDbCenterMarkPatternActionBody::setEndOvershoot(const ZnString& key, double value,
                                                             bool validate) {
  if (validate && (value < 0.0 || !isOutputEdgeKeyValid(key))) return Quorl::eInvalidInput;
  return storeValue(endOvershootParamPrefix() + key, ZnDbEvalVariant(value));
}

bool ZnDbCenterMarkPatternActionBody::getCenterLineDependencyKeys(ZnArray<ZnString>& keys) const {
  ZnArray<ZnString> all;
  getOutputEdgeKeys(all);
  keys.removeAll();
  for (const ZnString& key : all)
    if (key.view().starts_with(centerLineDependencyKey().view())) keys.append(key);
  return !keys.isEmpty();
}

ErrorStatus ZnDbCenterMarkPatternActionBody::renameCenterLineKey(const ZnString& oldKey,
                                                                 const ZnString& newKey) {
  return moveCenterLine(oldKey, newKey, false);
}

ErrorStatus ZnDbCenterMarkPatternActionBody::reverseCenterLineKey(const ZnString& oldKey,
                                                                  const ZnString& newKey) {
  return moveCenterLine(oldKey, newKey, true);
}

ErrorStatus ZnDbCenterMarkPatternActionBody::moveCenterLine(const ZnString& oldKey, const ZnString& newKey,
                                                            bool reversed) {
  if (oldKey == newKey) return Quorl::eOk;
  const ZnDbObjectId line = getOutputEdge(oldKey);
  if (const ErrorStatus status = renameOutputEdgeKey(oldKey, newKey); status != Quorl::eOk) return status;
  double start = startOvershoot(oldKey), end = endOvershoot(oldKey);
  removeValueParam(startOvershootParamPrefix() + oldKey);
  removeValueParam(endOvershootParamPrefix() + oldKey);
  if (newKey.isEmpty()) {
    // Nothing names it any more, and nobody sees it.
    ZnDbHolder<ZnDbEntity> gone;
    if (gone.openForWrite(line, false, true) == Quorl::eOk) gone->erase();
    return Quorl::eOk;
  }
  if (reversed) std::swap(start, end);
  setStartOvershoot(newKey, start, false);
  setEndOvershoot(newKey, end, false);
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkPatternActionBody::startCenterLine(const ZnString& key) {
  const double overshoot = memberOvershoot();
  const ErrorStatus status = setStartOvershoot(key, overshoot, false);
  return status == Quorl::eOk ? setEndOvershoot(key, overshoot, false) : status;
}

double ZnDbCenterMarkPatternActionBody::memberOvershoot() const {
  return getDoubleParam(kMemberOvershoot, ZnTorviStyle::getCenterOvershoot());
}

bool ZnDbCenterMarkPatternActionBody::isOutputEdgeKeyValid(const ZnString& key) const {
  ZnArray<ZnString> keys;
  getOutputEdgeKeys(keys);
  return keys.contains(key);
}

// The radius is kept in the size of the block, which a reference without edges may show in another.
ErrorStatus ZnDbCenterMarkPatternActionBody::getRefCircle(ZnGeCircArc3d& circle) const {
  if (getCenterPatternType() != kCenterPatternPolar || !showCenterMark()) return Quorl::eNothingToDo;
  circle = getCachedRefCircle();
  if (!isAssociative(false)) circle.setRadius(circle.radius() * getSubentDirection(eRightLine).length());
  return Quorl::eOk;
}

double ZnDbCenterMarkPatternActionBody::pitchRadius() const {
  return getCenterPatternType() == kCenterPatternPolar && showCenterMark() ? cachedCircleRadius() : 0.0;
}

// An arm that ends in a member is drawn as the outward arm of that member's mark, which always runs away from
// the pitch center; the arms of a mark of its own run from left to right and from bottom to top.
ZnGeLineSeg3d ZnDbCenterMarkPatternActionBody::getSubentLineGeometry(ZnCenterMarkSubEntType type,
                                                                     bool includeOvershoot) const {
  ZnString key = majorAxisKey();
  ZnCenterMarkSubEntType arm = type;
  bool reversed = false;
  int index = kNoMember;
  double radius = 0.0;
  if (type >= eLeftLine && getCachedInputEdgeOnMajorAxis(type, index, radius)) {
    key = dependencyKey(index, kNoMember);
    arm = eTopLine;
    reversed = type == eLeftLine || type == eBottomLine;
  }
  const ZnDbObjectId outputId = getOutputEdge(key);
  if (outputId.isNull() || !outputId.isDerivedFrom(ZnDbBlockReference::desc())) return {};
  ZnArray<ZnDbObjectId> ids;
  ZnArray<ZnGeCurve3d*> curves;
  ZnGeLineSeg3d line;
  if (torvi::curvesOfReference(outputId, ids, false) == Quorl::eOk &&
      getCenterObjGeometry(ids, curves) == Quorl::eOk)
    line = ZnDbCenterMarkActionBody::getSubentLineGeometry(curves, arm, includeOvershoot);
  ZnDbTorviActionBodyUtils::deleteCurves(curves);
  return reversed ? ZnGeLineSeg3d(line.endPoint(), line.startPoint()) : line;
}

ErrorStatus ZnDbCenterMarkPatternActionBody::getCrossLengthAndGap(double& length, double& gap) const {
  return getCrossLengthAndGapFromProvider(ZnPatternPropsProvider(centerObjectId()), length, gap, 0.0);
}

double ZnDbCenterMarkPatternActionBody::getMinExtension(ZnCenterMarkSubEntType type) const {
  int index = kNoMember;
  double radius = 0.0;
  const bool hasMember = getCachedInputEdgeOnMajorAxis(type, index, radius);
  const ZnPatternPropsProvider provider(centerObjectId());
  double length = 0.0, gap = 0.0;
  if (getCrossLengthAndGapFromProvider(provider, length, gap, radius) != Quorl::eOk) return 0.0;
  return length * 0.5 + (hasMember ? cachedCircleRadius() : 0.0);
}

double ZnDbCenterMarkPatternActionBody::reachOfUnsetArm(ZnCenterMarkSubEntType type) const {
  int index = kNoMember;
  double radius = 0.0;
  return cachedCircleRadius() + (getCachedInputEdgeOnMajorAxis(type, index, radius) ? radius : 0.0);
}

double ZnDbCenterMarkPatternActionBody::getResolvedExtensionLength(double stored,
                                                                   ZnCenterMarkSubEntType type) const {
  if (getCenterPatternType() != kCenterPatternPolar || type < eLeftLine) return 0.0;
  return isAutoMatchExtension(stored) ? reachOfUnsetArm(type) : std::max(stored, getMinExtension(type));
}

double ZnDbCenterMarkPatternActionBody::storedExtension(ZnCenterMarkSubEntType type) const {
  if (getCenterPatternType() != kCenterPatternPolar || !torvi::isExtensionLine(type)) return 0.0;
  const double stored = getDoubleParam(extensionParamName(type), 0.0);
  return isAutoMatchExtension(stored) ? reachOfUnsetArm(type) : stored;
}

double ZnDbCenterMarkPatternActionBody::getResolvedExtensionLength(double stored, ZnCenterMarkSubEntType type,
                                                                   double /*radius*/) const {
  return getResolvedExtensionLength(stored, type);
}

ErrorStatus ZnDbCenterMarkPatternActionBody::resetOvershoots() {
  ZnArray<ZnString> keys;
  const double overshoot = ZnTorviStyle::getCenterOvershoot();
  storeValue(kMemberOvershoot, ZnDbEvalVariant(overshoot));
  if (getCenterLineDependencyKeys(keys)) {
    for (const ZnString& key : keys) {
      setStartOvershoot(key, overshoot, false);
      setEndOvershoot(key, overshoot, false);
    }
  }
  ZnDbCenterMarkActionBody::resetOvershoots();
  return Quorl::eOk;
}

void ZnDbCenterMarkPatternActionBody::fixCenterLineEndPointsForLegayObj(const ZnString& key,
                                                                        ZnGePoint3d& start,
                                                                        ZnGePoint3d& end) const {
  ZnArray<int> indices;
  if (getCenterPatternType() != kCenterPatternLinear || !getEdgeIndicesOnCenterLine(key, indices)) return;
  ZnArray<ZnDbEdgeRef> edges;
  getEdgeRefs(edges);
  ZnDbCenterMarkPatternLayout layout(centerObjectId());
  layout.loadCircles(edges);
  double startRadius = 0.0, endRadius = 0.0;
  for (const ZnGeCircArc3d& circle : layout.circles()) {
    if (circle.radius() == 0.0) continue;
    // Of circles round one center the first is the member.
    const auto note = [&circle](double& radius) {
      if (radius == 0.0) radius = circle.radius();
    };
    if (circle.center().distanceTo(start) < kLegacyEndTolerance)
      note(startRadius);
    else if (circle.center().distanceTo(end) < kLegacyEndTolerance)
      note(endRadius);
  }
  if (startRadius == 0.0 || endRadius == 0.0) return;
  const double overshoot = ZnTorviStyle::getCenterOvershoot();
  const ZnGeVector3d direction = (end - start).normal();
  start -= direction * (overshoot + startRadius);
  end += direction * (overshoot + endRadius);
}

ZnDbTorviLayout* ZnDbCenterMarkPatternActionBody::getLayout() const {
  return new ZnDbCenterMarkPatternLayout(centerObjectId());
}
