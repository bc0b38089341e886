// What a member tells about itself beyond its value: names, place and unit in a property palette.
#pragma once

#include <memory>
#include <vector>

#include "quorl/rx/class_members.h"

class ZnRxAttribute : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxAttribute)
};

// The number of a text in the resources of the member's collection.
class ZnRxLocalizedNameAttribute : public ZnRxAttribute {
  ZNRX_DECLARE_MEMBERS(ZnRxLocalizedNameAttribute)

public:
  explicit ZnRxLocalizedNameAttribute(unsigned textNumber)
      : number_(textNumber) {}
  unsigned textNumber() const { return number_; }

private:
  unsigned number_;
};

class ZnRxDescriptionAttribute : public ZnRxAttribute {
  ZNRX_DECLARE_MEMBERS(ZnRxDescriptionAttribute)

public:
  explicit ZnRxDescriptionAttribute(unsigned textNumber)
      : number_(textNumber) {}
  unsigned textNumber() const { return number_; }

private:
  unsigned number_;
};

// The category that the member is shown under; lighter members come first.
class ZnRxUiPlacementAttribute : public ZnRxAttribute {
  ZNRX_DECLARE_MEMBERS(ZnRxUiPlacementAttribute)

public:
  ZnRxUiPlacementAttribute(const ZnString& category, double weight)
      : category_(category)
      , weight_(weight) {}
  const ZnString& category() const { return category_; }
  double weight() const { return weight_; }

private:
  ZnString category_;
  double weight_;
};

class ZnRxUnitTypeAttribute : public ZnRxAttribute {
  ZNRX_DECLARE_MEMBERS(ZnRxUnitTypeAttribute)

public:
  enum UnitType : int { kDistance = 0, kArea = 1, kAngle = 2 }; // drawing units, their square, radians
  explicit ZnRxUnitTypeAttribute(UnitType unit)
      : unit_(unit) {}
  UnitType unitType() const { return unit_; }

private:
  UnitType unit_;
};

// The member is offered as a property of its own, to palettes and scripts.
class ZnRxGenerateDynamicPropertiesAttribute : public ZnRxAttribute {
  ZNRX_DECLARE_MEMBERS(ZnRxGenerateDynamicPropertiesAttribute)
};

class ZnRxAttributeCollection {
public:
  // At most one attribute a class; a second one displaces the first.
  void add(std::unique_ptr<ZnRxAttribute> attribute);
  // Takes over the attribute; the spelling of modules that make attributes with new.
  void add(ZnRxAttribute* attribute) { add(std::unique_ptr<ZnRxAttribute>(attribute)); }
  // Null when there is none.
  const ZnRxAttribute* get(const ZnRxClass* attributeClass) const;
  template<class Attribute> const Attribute* get() const { return Attribute::cast(get(Attribute::desc())); }

private:
  std::vector<std::unique_ptr<ZnRxAttribute>> attributes_;
};
