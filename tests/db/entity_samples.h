// One or more entities of every kind, in plain and in tilted planes, with what the tests need to know of
// each.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "quorl/db/entity/entity.h"

namespace dbTest {

// Rounding of a few operations on coordinates of up to a hundred units.
inline constexpr double kRounding = 1e-9;

struct EntitySample {
  std::string name;
  std::function<std::unique_ptr<ZnDbEntity>()> make;
  // Which transforms its class can't show.
  bool refusesStretch = false; // uneven scale or skew
  bool refusesTurn = false;    // anything but moving and scaling
  bool isFlat = true;          // has a plane of its own
};
inline std::ostream& operator<<(std::ostream& out, const EntitySample& sample) { return out << sample.name; }

const std::vector<EntitySample>& entitySamples();

// The fields as bytes; equal bytes are equal entities.
std::string fieldsOf(const ZnDbEntity& entity);
// A new entity of the same class; read tells the status with which it took the bytes.
std::unique_ptr<ZnDbEntity> readFrom(const ZnDbEntity& like, const std::string& bytes,
                                     Quorl::ErrorStatus& read);

// Moving, turning, mirroring, scaling, stretching and skewing; the names tell which.
struct NamedTransform {
  std::string name;
  ZnGeMatrix3d matrix;
  bool turns = false;     // rotates or mirrors
  bool stretches = false; // not uniform
};
const std::vector<NamedTransform>& transforms();

// What is drawn, as points: curves sampled finely, the corners of outlines and texts, all in world
// coordinates.
std::vector<ZnGePoint3d> drawnPoints(const ZnDbEntity& entity, double chordHeight);
// The largest distance of a point of the first list from the polyline points of the second.
double farthest(const std::vector<ZnGePoint3d>& points, const std::vector<ZnGePoint3d>& from);

} // namespace dbTest

inline std::ostream& operator<<(std::ostream& out, const ZnGePoint3d& p) {
  return out << '(' << p.x << ", " << p.y << ", " << p.z << ')';
}
