// The protocol by which properties of one object are matched to another.
#pragma once

#include <cstdint>

#include "quorl/rx/class_members.h"

class ZnDbObject;

// Asked of the target's class. The host has its own for all entities, which copies the traits.
class ZnDbMatchProperties : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbMatchProperties)

public:
  enum Flags : std::uint32_t {
    kColor = 1u << 0,
    kLayer = 1u << 1,
    kLinetype = 1u << 2,
    kLinetypeScale = 1u << 3,
    kLineWeight = 1u << 4,
    kTransparency = 1u << 5,
    kCenterObject = 1u << 17, // what center objects have of their own
    kAllFlags = 0xffffffffu,
  };

  // Copies what flags name. source is open for read and may be null, target is open for write; of another
  // drawing than the source's, a target takes what needs no id.
  virtual void copyProperties(const ZnDbObject* source, ZnDbObject* target, std::uint32_t flags) const = 0;
};
