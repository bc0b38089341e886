// Lineweights in hundredths of a millimetre, and the three special values.
#pragma once

#include <cstdint>

namespace ZnDb {

enum LineWeight : std::int16_t {
  kLnWtByDefault = -3,
  kLnWtByBlock = -2,
  kLnWtByLayer = -1,
  kLnWt000 = 0,
  kLnWt005 = 5,
  kLnWt009 = 9,
  kLnWt013 = 13,
  kLnWt015 = 15,
  kLnWt018 = 18,
  kLnWt020 = 20,
  kLnWt025 = 25,
  kLnWt030 = 30,
  kLnWt035 = 35,
  kLnWt040 = 40,
  kLnWt050 = 50,
  kLnWt053 = 53,
  kLnWt060 = 60,
  kLnWt070 = 70,
  kLnWt080 = 80,
  kLnWt090 = 90,
  kLnWt100 = 100,
  kLnWt106 = 106,
  kLnWt120 = 120,
  kLnWt140 = 140,
  kLnWt158 = 158,
  kLnWt200 = 200,
  kLnWt211 = 211,
};

enum Visibility : std::uint8_t { kVisible = 0, kInvisible = 1 };

enum SubentType : std::uint8_t {
  kNullSubentType = 0,
  kFaceSubentType = 1,
  kEdgeSubentType = 2,
  kVertexSubentType = 3
};

enum OsnapMode : std::uint8_t {
  kOsModeEnd = 1,
  kOsModeMid = 2,
  kOsModeCen = 3,
  kOsModeNode = 4,
  kOsModeQuad = 5,
  kOsModeIns = 7,
  kOsModePerp = 8,
  kOsModeTan = 9,
  kOsModeNear = 10,
};

// The contexts in which objects are cloned; reactors decide by the number.
enum DeepCloneContext : std::uint8_t {
  kDcCopy = 0,
  kDcExplode = 1,
  kDcBlock = 2,
  kDcXrefBind = 3,
  kDcInsert = 6,
  kDcWblock = 7,
  kDcObjects = 8,
  kDcWblkObjects = 10,
};

} // namespace ZnDb
