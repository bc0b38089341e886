#include "torvi/centerline/action_body.h"

#include "torvi/centerline/layout.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/shapes.h"
#include "torvi/host/class_registration.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

TORVI_DEFINE_BODY_CLASS(ZnDbCenterLineActionBody, ZnDbTorviActionBody)

namespace {

// Names of values, built once: a name that keeps its buffer is looked up without making text.
const ZnString kStartExtension(L"StartExtLength");
const ZnString kEndExtension(L"EndExtLength");
const ZnString kStartOvershoot(L"StartOvershoot");
const ZnString kEndOvershoot(L"EndOvershoot");
const ZnString kEdgeRefDirEndings(L"EdgeRefDirectionEnding");
const ZnString kCachedLength(L"CachedCenterLineLength");
const ZnString kCachedDirectionX(L"CachedCenterLineDirectionX");
const ZnString kCachedDirectionY(L"CachedCenterLineDirectionY");
const ZnString kCachedDirectionZ(L"CachedCenterLineDirectionZ");

constexpr int kEdges = 2;
constexpr int kUsualEnding = 1;

bool isEdgeIndex(int index) { return index >= 0 && index < kEdges; }

} // namespace

ZnDbCenterLineActionBody::ZnDbCenterLineActionBody()
    : endings_{kUsualEnding, kUsualEnding} {}

ZnDbTorviLayout* ZnDbCenterLineActionBody::getLayout() const {
  return new ZnDbCenterLineLayout(centerObjectId());
}

double ZnDbCenterLineActionBody::getResolvedExtensionLength(double stored) const {
  return isAutoMatchExtension(stored) ? cachedCenterLineLength() * 0.5 : stored;
}

double ZnDbCenterLineActionBody::startExtension() const {
  return getResolvedExtensionLength(valueOf(kStartExtension, 0.0));
}

double ZnDbCenterLineActionBody::endExtension() const {
  return getResolvedExtensionLength(valueOf(kEndExtension, 0.0));
}

ErrorStatus ZnDbCenterLineActionBody::setStartExtension(double value) {
  return storeValue(kStartExtension, ZnDbEvalVariant(value));
}

ErrorStatus ZnDbCenterLineActionBody::setEndExtension(double value) {
  return storeValue(kEndExtension, ZnDbEvalVariant(value));
}

ErrorStatus ZnDbCenterLineActionBody::resetExtensions() {
  setStartExtension(kAutoMatchExtension);
  setEndExtension(kAutoMatchExtension);
  return Quorl::eOk;
}

double ZnDbCenterLineActionBody::startOvershoot() const { return valueOf(kStartOvershoot, 0.0); }
double ZnDbCenterLineActionBody::endOvershoot() const { return valueOf(kEndOvershoot, 0.0); }

ErrorStatus ZnDbCenterLineActionBody::setStartOvershoot(double value) {
  return storeValue(kStartOvershoot, ZnDbEvalVariant(value));
}

ErrorStatus ZnDbCenterLineActionBody::setEndOvershoot(double value) {
  return storeValue(kEndOvershoot, ZnDbEvalVariant(value));
}

ErrorStatus ZnDbCenterLineActionBody::resetOvershoots() {
  const double overshoot = ZnTorviStyle::getCenterOvershoot();
  setStartOvershoot(overshoot);
  setEndOvershoot(overshoot);
  return Quorl::eOk;
}

double ZnDbCenterLineActionBody::cachedCenterLineLength() const { return valueOf(kCachedLength, 0.0); }

ErrorStatus ZnDbCenterLineActionBody::setCachedCenterLineLength(double length) {
  return storeValue(kCachedLength, ZnDbEvalVariant(length));
}

ZnGeVector3d ZnDbCenterLineActionBody::cachedCenterLineDirection() const {
  return {valueOf(kCachedDirectionX, 0.0), valueOf(kCachedDirectionY, 0.0), valueOf(kCachedDirectionZ, 0.0)};
}

ErrorStatus ZnDbCenterLineActionBody::setCachedCenterLineDirection(const ZnGeVector3d& direction) {
  setDoubleParam(kCachedDirectionX, direction.x);
  setDoubleParam(kCachedDirectionY, direction.y);
  return setDoubleParam(kCachedDirectionZ, direction.z);
}

// What stood in the copy must not outlive an undo of the first storing.
void ZnDbCenterLineActionBody::refreshEndings() {
  ZnArray<ZnString> expressions, evaluatorIds;
  if (getValueParamArray(kEdgeRefDirEndings, endings_, expressions, evaluatorIds) != Quorl::eOk)
    endings_ = {kUsualEnding, kUsualEnding};
}

ErrorStatus ZnDbCenterLineActionBody::storeEndings() {
  ZnArray<ZnString> noTexts, errorMessages;
  noTexts.setLogicalLength(endings_.length());
  return setValueParamArray(kEdgeRefDirEndings, endings_, noTexts, noTexts, errorMessages, true);
}

int ZnDbCenterLineActionBody::endingAt(int index) const {
  int ending = kUsualEnding;
  if (index < endings_.length()) endings_[index].getValue(ending);
  return ending;
}

int ZnDbCenterLineActionBody::edgeRefDirEnding(int index) {
  if (!isEdgeIndex(index)) return Quorl::eInvalidInput;
  refreshEndings();
  return endingAt(index);
}

ErrorStatus ZnDbCenterLineActionBody::setEdgeRefDirEnding(int index, int value) {
  if (!isEdgeIndex(index)) return Quorl::eInvalidInput;
  while (endings_.length() < kEdges) endings_.append(ZnDbEvalVariant(kUsualEnding));
  endings_[index] = ZnDbEvalVariant(value);
  return storeEndings();
}

ErrorStatus ZnDbCenterLineActionBody::edgeRefDirEndingArray(ZnArray<int>& endings) {
  endings.removeAll();
  refreshEndings();
  for (int i = 0; i < endings_.length(); ++i) endings.append(endingAt(i));
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterLineActionBody::setEdgeRefDirEndingArray(const ZnArray<int>& endings) {
  endings_.removeAll();
  for (const int ending : endings) endings_.append(ZnDbEvalVariant(ending));
  storeEndings();
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterLineActionBody::getCenterLineGeometry(ZnGeLineSeg3d& line,
                                                            bool includeOvershoot) const {
  const ZnDbObjectId centerId = centerObjectId();
  ZnArray<ZnDbObjectId> ids;
  if (torvi::curvesOfReference(centerId, ids, false) != Quorl::eOk) return Quorl::eInvalidInput;
  ZnArray<ZnGeCurve3d*> curves;
  const ErrorStatus status = getCenterObjGeometry(ids, curves);
  if (curves.isEmpty()) return Quorl::eInvalidInput;
  // A line that has shrunk to nothing stands at the block's origin.
  line =
      curves[0]->isKindOf(ZnGe::kLineSeg3d) ? static_cast<const ZnGeLineSeg3d&>(*curves[0]) : ZnGeLineSeg3d();
  ZnDbTorviActionBodyUtils::deleteCurves(curves);
  ZnDbHolder<ZnDbBlockReference> reference(centerId);
  if (reference.isOpen()) line.transformBy(reference->blockTransform());
  if (!includeOvershoot) torvi::extendLine(line, -startOvershoot(), -endOvershoot());
  return status;
}
