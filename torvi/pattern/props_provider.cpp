#include "torvi/pattern/props_provider.h"

#include "torvi/core/navigation.h"
#include "torvi/drawing/ask.h"
#include "torvi/pattern/action_body.h"

using Body = ZnDbCenterMarkPatternActionBody;

double ZnPatternPropsProvider::refCircleRadius() const {
  return torvi::ask<Body>(torvi::bodyOfReference(objectId()), 0.0, &Body::pitchRadius);
}

double ZnPatternPropsProvider::extension(ZnCenterMarkSubEntType type) const {
  return torvi::ask<Body>(torvi::bodyOfReference(objectId()), 0.0, &Body::storedExtension, type);
}
