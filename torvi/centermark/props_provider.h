// Answers for a stored center mark or pattern, and with the current style where there is none.
#pragma once

#include <memory>
#include <optional>

#include "torvi/centermark/object_wrapper.h"
#include "torvi/centermark/props_provider_interface.h"
#include "torvi/core/object_pointer.h"

class TORVI_EXPORT ZnDbCenterMarkPropsProvider : public IZnDbCenterMarkPropsProvider {
public:
  // A null id gives the values that a new mark of the working database would get.
  explicit ZnDbCenterMarkPropsProvider(ZnDbObjectId centerObject);
  // For a caller who has looked at the mark's circle already: reading it is a good part of the work.
  ZnDbCenterMarkPropsProvider(ZnDbObjectId centerObject, double refCircleRadius);

  ZnDbObjectId objectId() const override { return centerObject_; }
  bool hasStoredObject() const override { return true; }
  ZnDbDatabase* database() const override { return database_; }
  ZnDbObjectId linetypeId() const override;
  double linetypeScale() const override;
  ZnDbObjectId layerId() const override;
  ZnString crossHairLengthExpression() const override;
  ZnString crossHairGapExpression() const override;
  double refCircleRadius() const override;
  double extensionLength(ZnCenterMarkSubEntType type, double radius) const override;
  double extension(ZnCenterMarkSubEntType type) const override;
  double overshoot(ZnCenterMarkSubEntType type) const override;

private:
  // The mark's wrapper, or null where there is none or it is erased; made when first asked for, since one
  // provider answers many questions about one mark.
  const ZnDbCenterMarkObjectWrapper* mark() const;

  mutable std::unique_ptr<ZnDbTorviObjectPointer<ZnDbCenterMarkObjectWrapper>> mark_;
  ZnDbObjectId centerObject_;
  ZnDbDatabase* database_ = nullptr; // not owned
  std::optional<double> refCircleRadius_;
};
