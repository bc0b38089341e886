// The binary filer: through one description of an object's fields, objects are saved, kept for undo,
// cloned and compared. What a filer is for is told by its kind.
#pragma once

#include <cstdint>
#include <string_view>

#include "quorl/base/error_status.h"
#include "quorl/base/string.h"
#include "quorl/db/core/object_id.h"
#include "quorl/ge/point3d.h"
#include "quorl/ge/vector3d.h"

class ZnDbMemoryFiler;

// How an object refers to another one; the numbers stand in files. Ownership ids name what the object owns,
// pointer ids what it refers to; hard ones keep the target alive when unused objects are purged, and pull it
// along in a deep clone.
enum class ZnReferenceKind : std::uint8_t { kSoftPointer, kHardPointer, kSoftOwner, kHardOwner };
constexpr int kReferenceKinds = 4;

class ZnDbFiler {
public:
  // kFile: the drawing's file. kUndo: an object's own state for undo; containers leave their member lists
  // out, since a member's own record undoes its coming and going. kClone: a copy in this or another
  // drawing, ids translated afterwards. kIds: only the ids matter, a walk over references.
  enum Kind { kFile, kUndo, kClone, kIds };

  ZnDbFiler() = default;
  virtual ~ZnDbFiler() = default;
  // The filer itself where it works in memory, so that many small calls can be inlined; else null.
  ZnDbMemoryFiler* inMemory() const { return memory_; }
  virtual Kind kind() const = 0;
  // Sticky: after the first failure every read leaves its target alone and gives the failure.
  virtual Quorl::ErrorStatus status() const = 0;
  virtual void setStatus(Quorl::ErrorStatus status) = 0;
  // The drawing in which ids that are read are looked up; null where there is none.
  virtual ZnDbDatabase* database() const = 0;

  virtual void writeBool(bool value) = 0;
  virtual void writeInt8(std::int8_t value) = 0;
  virtual void writeInt16(std::int16_t value) = 0;
  virtual void writeInt32(std::int32_t value) = 0;
  virtual void writeInt64(std::int64_t value) = 0;
  virtual void writeDouble(double value) = 0;
  virtual void writeString(const ZnString& value) = 0;
  virtual void writeAtom(ZnAtom value) = 0;
  virtual void writeBytes(const void* bytes, size_t count) = 0; // the length is written with them
  virtual void writeSoftPointerId(ZnDbObjectId id) = 0;
  virtual void writeHardPointerId(ZnDbObjectId id) = 0;
  virtual void writeSoftOwnershipId(ZnDbObjectId id) = 0;
  virtual void writeHardOwnershipId(ZnDbObjectId id) = 0;

  virtual bool readBool() = 0;
  virtual std::int8_t readInt8() = 0;
  virtual std::int16_t readInt16() = 0;
  virtual std::int32_t readInt32() = 0;
  virtual std::int64_t readInt64() = 0;
  virtual double readDouble() = 0;
  virtual ZnString readString() = 0;
  virtual ZnAtom readAtom() = 0;
  virtual std::string readBytes() = 0;
  virtual ZnDbObjectId readSoftPointerId() = 0;
  virtual ZnDbObjectId readHardPointerId() = 0;
  virtual ZnDbObjectId readSoftOwnershipId() = 0;
  virtual ZnDbObjectId readHardOwnershipId() = 0;
  // Bytes not yet read, where the source knows; a count that could not fit in them is damage.
  virtual size_t remaining() const = 0;

  // Composed of the above
  void writePoint3d(const ZnGePoint3d& p) {
    writeDouble(p.x);
    writeDouble(p.y);
    writeDouble(p.z);
  }
  void writeVector3d(const ZnGeVector3d& v) {
    writeDouble(v.x);
    writeDouble(v.y);
    writeDouble(v.z);
  }
  void writeId(ZnReferenceKind kind, ZnDbObjectId id);
  ZnDbObjectId readId(ZnReferenceKind kind);
  ZnGePoint3d readPoint3d();
  ZnGeVector3d readVector3d();
  // A count of elements of at least that many bytes each; a negative or impossible one sets eFileDamaged
  // and gives 0.
  int readCount(size_t leastBytesEach = 1);

protected:
  explicit ZnDbFiler(ZnDbMemoryFiler* self)
      : memory_(self) {}

private:
  ZnDbMemoryFiler* memory_ = nullptr;
};
