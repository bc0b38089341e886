// The sink into which drawables draw: traits, then geometry, under a stack of transforms.
#pragma once

#include <vector>

#include "quorl/db/core/color.h"
#include "quorl/db/core/line_weight.h"
#include "quorl/db/core/object_id.h"
#include "quorl/ge/curve3d.h"
#include "quorl/ge/matrix3d.h"

class ZnGiDrawable;

// Traits of what is drawn next, as the entity states them: by layer and by block are resolved by the sink,
// which knows the references on the way.
struct ZnGiSubEntityTraits {
  ZnDbObjectId layerId;
  ZnCmColor color;
  ZnDbObjectId linetypeId;
  double linetypeScale = 1.0;
  ZnDb::LineWeight lineWeight = ZnDb::kLineWeightByLayer;
  ZnCmTransparency transparency;
  bool filled = false;
};

class ZnGiWorldDraw {
public:
  virtual ~ZnGiWorldDraw() = default;

  virtual void setTraits(const ZnGiSubEntityTraits& traits) = 0;
  virtual const ZnGiSubEntityTraits& traits() const = 0;

  // Geometry in the coordinates of the innermost pushed transform. Curves are not kept.
  virtual void curve(const ZnGeCurve3d& curve) = 0;
  virtual void polyline(const std::vector<ZnGePoint3d>& points, bool closed) = 0;
  // A chain of pieces drawn as one stroke, so that dashes run on across them.
  virtual void chain(const std::vector<const ZnGeCurve3d*>& pieces, bool closed) = 0;
  // Baseline from position along direction; up is normal cross direction; height of capitals.
  virtual void text(const ZnGePoint3d& position, const ZnGeVector3d& normal, const ZnGeVector3d& direction,
                    double height, double widthFactor, const ZnString& text, int horizontalAlign) = 0;
  virtual void point(const ZnGePoint3d& position) = 0;

  // A nested drawable under a transform; the reference whose content it is resolves "by block".
  virtual void pushReference(const ZnGeMatrix3d& transform, const ZnGiSubEntityTraits& reference) = 0;
  virtual void popReference() = 0;
  // Whether content on that layer shows; a reference's content is asked entity by entity.
  virtual bool isLayerShown(ZnDbObjectId layerId) const = 0;
};
