// Lineweights in hundredths of a millimetre, and the three special values.
#pragma once

#include <cstdint>

namespace ZnDb {

enum LineWeight : std::int16_t {
  kLineWeightByDefault = -3,
  kLineWeightByBlock = -2,
  kLineWeightByLayer = -1,
  kLineWeight000 = 0,
  kLineWeight005 = 5,
  kLineWeight009 = 9,
  kLineWeight013 = 13,
  kLineWeight015 = 15,
  kLineWeight018 = 18,
  kLineWeight020 = 20,
  kLineWeight025 = 25,
  kLineWeight030 = 30,
  kLineWeight035 = 35,
  kLineWeight040 = 40,
  kLineWeight050 = 50,
  kLineWeight053 = 53,
  kLineWeight060 = 60,
  kLineWeight070 = 70,
  kLineWeight080 = 80,
  kLineWeight090 = 90,
  kLineWeight100 = 100,
  kLineWeight106 = 106,
  kLineWeight120 = 120,
  kLineWeight140 = 140,
  kLineWeight158 = 158,
  kLineWeight200 = 200,
  kLineWeight211 = 211,
};

enum Visibility : std::uint8_t { kVisible = 0, kInvisible = 1 };

enum SubentType : std::uint8_t {
  kNullSubentType = 0,
  kFaceSubentType = 1,
  kEdgeSubentType = 2,
  kVertexSubentType = 3
};

enum ObjectSnapMode : std::uint8_t {
  kSnapEnd = 1,
  kSnapMiddle = 2,
  kSnapCenter = 3,
  kSnapNode = 4,
  kSnapQuadrant = 5,
  kSnapInsertion = 7,
  kSnapPerpendicular = 8,
  kSnapTangent = 9,
  kSnapNearest = 10,
};

// The contexts in which objects are cloned; reactors decide by the number.
enum DeepCloneContext : std::uint8_t {
  kCopyContext = 0,
  kExplodeContext = 1,
  kBlockContext = 2,
  kBindContext = 3,
  kInsertContext = 6,
  kWholeDrawingContext = 7,
  kCopyOutContext = 8,
  kCopyInContext = 10,
};

} // namespace ZnDb
