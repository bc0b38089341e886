// The binary filer: through one description of an object's fields, objects are saved, kept for undo,
// cloned and compared. What a filer is for is told by its kind.
#pragma once

#include <cstdint>
#include <string_view>

#include "quorl/base/error_status.h"
#include "quorl/base/string.h"
#include "quorl/db/object_id.h"
#include "quorl/ge/point3d.h"
#include "quorl/ge/vector3d.h"

class ZnDbFiler {
public:
  // kFile: the drawing's file. kUndo: an object's own state for undo; containers leave their member lists
  // out, since a member's own record undoes its coming and going. kClone: a copy in this or another
  // drawing, ids translated afterwards. kIds: only the ids matter, a walk over references.
  enum Kind { kFile, kUndo, kClone, kIds };

  virtual ~ZnDbFiler() = default;
  virtual Kind kind() const = 0;
  // Sticky: after the first failure every read leaves its target alone and gives the failure.
  virtual Quorl::ErrorStatus status() const = 0;
  virtual void setStatus(Quorl::ErrorStatus status) = 0;
  // The drawing in which ids that are read are looked up; null where there is none.
  virtual ZnDbDatabase* database() const = 0;

  virtual void wrBool(bool value) = 0;
  virtual void wrInt8(std::int8_t value) = 0;
  virtual void wrInt16(std::int16_t value) = 0;
  virtual void wrInt32(std::int32_t value) = 0;
  virtual void wrInt64(std::int64_t value) = 0;
  virtual void wrDouble(double value) = 0;
  virtual void wrString(const ZnString& value) = 0;
  virtual void wrAtom(ZnAtom value) = 0;
  virtual void wrBytes(const void* bytes, size_t count) = 0; // the length is written with them
  // Ownership ids name what the object owns, pointer ids what it refers to; hard ones keep the target
  // alive when unused objects are purged, and pull it along in a deep clone.
  virtual void wrSoftPointerId(ZnDbObjectId id) = 0;
  virtual void wrHardPointerId(ZnDbObjectId id) = 0;
  virtual void wrSoftOwnershipId(ZnDbObjectId id) = 0;
  virtual void wrHardOwnershipId(ZnDbObjectId id) = 0;

  virtual bool rdBool() = 0;
  virtual std::int8_t rdInt8() = 0;
  virtual std::int16_t rdInt16() = 0;
  virtual std::int32_t rdInt32() = 0;
  virtual std::int64_t rdInt64() = 0;
  virtual double rdDouble() = 0;
  virtual ZnString rdString() = 0;
  virtual ZnAtom rdAtom() = 0;
  virtual std::string rdBytes() = 0;
  virtual ZnDbObjectId rdSoftPointerId() = 0;
  virtual ZnDbObjectId rdHardPointerId() = 0;
  virtual ZnDbObjectId rdSoftOwnershipId() = 0;
  virtual ZnDbObjectId rdHardOwnershipId() = 0;
  // Bytes not yet read, where the source knows; a count that could not fit in them is damage.
  virtual size_t remaining() const = 0;

  // Composed of the above
  void wrPoint3d(const ZnGePoint3d& p) {
    wrDouble(p.x);
    wrDouble(p.y);
    wrDouble(p.z);
  }
  void wrVector3d(const ZnGeVector3d& v) {
    wrDouble(v.x);
    wrDouble(v.y);
    wrDouble(v.z);
  }
  ZnGePoint3d rdPoint3d();
  ZnGeVector3d rdVector3d();
  // A count of elements of at least that many bytes each; a negative or impossible one sets eFileDamaged
  // and gives 0.
  int rdCount(size_t leastBytesEach = 1);
};
