// What the size rule and the generator need to know of a center mark: they ask here, never the database, and
// so work for a mark that does not exist yet, or with another one's properties.
#pragma once

#include "torvi/drawing/types.h"
#include "torvi/host/database.h"
#include "torvi/host/export.h"

class TORVI_EXPORT IZnDbCenterMarkPropsProvider {
public:
  virtual ~IZnDbCenterMarkPropsProvider() = default;
  virtual ZnDbObjectId objectId() const = 0; // null for a mark that does not exist yet
  virtual bool hasStoredObject() const = 0;
  virtual ZnDbDatabase* database() const = 0; // may be null

  virtual ZnDbObjectId linetypeId() const = 0;
  virtual double linetypeScale() const = 0;
  virtual ZnDbObjectId layerId() const = 0;
  virtual ZnString crossHairLengthExpression() const = 0;
  virtual ZnString crossHairGapExpression() const = 0;

  // Lengths in drawing units; 0 for what is not known and, with a type, for the arms of the cross.
  virtual double refCircleRadius() const = 0;
  // One that follows the circle takes the given radius for the circle's.
  virtual double extensionLength(ZnCenterMarkSubEntType type, double radius) const = 0;
  virtual double extension(ZnCenterMarkSubEntType type) const = 0;
  virtual double overshoot(ZnCenterMarkSubEntType type) const = 0;
};
