// The text filer: a sequence of items, each a group code and a value on lines of their own.
#pragma once

#include <cstdint>
#include <string>

#include "quorl/base/error_status.h"
#include "quorl/base/string.h"
#include "quorl/db/core/object_id.h"
#include "quorl/ge/point3d.h"
#include "quorl/ge/vector3d.h"

// Group codes say the value's type:
//   1..9 text   10..39 double (x 10.., y 20.., z 30.. of one point)   40..59 double   60..79 16-bit integer
//   90..99 32-bit integer   100 subclass marker   140..149 double   160..169 64-bit integer   290..299 bool
//   300..309 text   310..319 bytes (hexadecimal)   330..339 soft pointer   340..349 hard pointer
//   350..359 soft owner   360..369 hard owner   5 handle   0 start of an object
struct ZnDbTdocItem {
  int code = 0;
  std::int64_t integer = 0;
  double real = 0.0;
  ZnGePoint3d point; // codes 10..19: the whole point, its y and z items read along
  ZnString text;     // texts, and bytes as they stand in hexadecimal
  ZnDbObjectId id;   // codes 330..369
};

class ZnDbTdocFiler {
public:
  virtual ~ZnDbTdocFiler() = default;
  virtual Quorl::ErrorStatus status() const = 0; // sticky
  virtual void setStatus(Quorl::ErrorStatus status) = 0;
  virtual ZnDbDatabase* database() const = 0;

  // Writing. A value is written by its group code; numbers come back exactly.
  virtual void writeSubclassMarker(const wchar_t* name) = 0;
  virtual void writeBool(int code, bool value) = 0;
  virtual void writeInteger(int code, std::int64_t value) = 0;
  virtual void writeDouble(int code, double value) = 0;
  virtual void writeString(int code, const ZnString& value) = 0;
  virtual void writePoint3d(int code, const ZnGePoint3d& value) = 0; // code 10..19
  virtual void writeVector3d(int code, const ZnGeVector3d& value) = 0;
  virtual void writeBytes(int code, const void* bytes, size_t count) = 0;
  virtual void writeId(int code, ZnDbObjectId id) = 0;

  // Reading. At the end of the object's data atEndOfObject is true and readItem gives eFilerError.
  virtual bool atEndOfObject() = 0;
  virtual bool atSubclassData(const wchar_t* name) = 0; // true: the marker is consumed
  virtual Quorl::ErrorStatus readItem(ZnDbTdocItem& item) = 0;
  virtual void pushBackItem() = 0; // the item last read is read again
};
