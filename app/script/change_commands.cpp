// Script commands that change entities: each takes entities first, then what is to happen to them.
#include "app/script/script_command.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/edit/explode.h"
#include "quorl/ge/angles.h"
#include "quorl/ge/plane.h"

namespace app {

namespace {

bool transform(ScriptArguments& arguments, const std::vector<ZnDbObjectId>& ids, const ZnGeMatrix3d& matrix) {
  for (const ZnDbObjectId id : ids) {
    ZnDbHolder<ZnDbEntity> entity;
    Quorl::ErrorStatus status = entity.openForWrite(id);
    if (status == Quorl::eOk) status = entity->transformBy(matrix);
    if (status == Quorl::eOk && !ScriptSession::isInRange(*entity)) status = Quorl::eOutOfRange;
    if (status != Quorl::eOk) return arguments.fail(status, describeEntity(id));
  }
  return true;
}

bool move(ScriptSession&, ScriptArguments& arguments) {
  std::vector<ZnDbObjectId> ids;
  ZnGePoint3d by;
  if (!arguments.entities(ids, 1) || !arguments.point(by, "the way dx,dy")) return false;
  return transform(arguments, ids, ZnGeMatrix3d::translation(by.asVector()));
}

bool rotate(ScriptSession&, ScriptArguments& arguments) {
  std::vector<ZnDbObjectId> ids;
  ZnGePoint3d center;
  double degrees = 0.0;
  if (!arguments.entities(ids, 2) || !arguments.point(center, "the center x,y") ||
      !arguments.number(degrees, "the angle in degrees"))
    return false;
  const double angle = degrees / 180.0 * ZnGe::kPi;
  return transform(arguments, ids, ZnGeMatrix3d::rotation(angle, ZnGeVector3d::kZAxis, center));
}

bool scale(ScriptSession&, ScriptArguments& arguments) {
  std::vector<ZnDbObjectId> ids;
  ZnGePoint3d center;
  double factor = 1.0;
  if (!arguments.entities(ids, 2) || !arguments.point(center, "the center x,y") ||
      !arguments.positive(factor, "a factor above 0"))
    return false;
  return transform(arguments, ids, ZnGeMatrix3d::scaling(factor, center));
}

bool mirror(ScriptSession&, ScriptArguments& arguments) {
  std::vector<ZnDbObjectId> ids;
  ZnGePoint3d first, second;
  if (!arguments.entities(ids, 2) || !arguments.point(first, "a point of the mirror line") ||
      !arguments.point(second, "another point of the mirror line"))
    return false;
  if (first.isEqualTo(second)) return arguments.fail("both points of the mirror line are one", "two points");
  const ZnGeVector3d normal = (second - first).crossProduct(ZnGeVector3d::kZAxis);
  return transform(arguments, ids, ZnGeMatrix3d::mirroring(ZnGePlane(first, normal)));
}

Quorl::ErrorStatus moveVertex(ZnDbLine& line, const ZnGePoint3d& from, const ZnGePoint3d& to) {
  return from.distanceTo(line.startPoint()) <= from.distanceTo(line.endPoint()) ? line.setStartPoint(to)
                                                                                : line.setEndPoint(to);
}

// Vertices stand in the polyline's own plane; one that is turned out of the drawing's is not stretched.
Quorl::ErrorStatus moveVertex(ZnDbPolyline& polyline, const ZnGePoint3d& from, const ZnGePoint3d& to) {
  if (!polyline.normal().isEqualTo(ZnGeVector3d::kZAxis)) return Quorl::eNotProvided;
  int nearest = 0;
  double least = 0.0;
  for (int i = 0; i < polyline.vertexCount(); ++i) {
    ZnGePoint3d vertex;
    polyline.getPointAt(i, vertex);
    const double distance = vertex.distanceTo(from);
    if (i == 0 || distance < least) nearest = i, least = distance;
  }
  return polyline.setPointAt(nearest, {to.x, to.y});
}

// Also down to a point: what follows such a line has to live with it.
bool stretch(ScriptSession&, ScriptArguments& arguments) {
  ZnDbObjectId id;
  ZnGePoint3d from, to;
  if (!arguments.entity(id) || !arguments.point(from, "the vertex x,y") ||
      !arguments.point(to, "its new place x,y") || !arguments.end())
    return false;
  ZnDbHolder<ZnDbEntity> entity;
  Quorl::ErrorStatus status = entity.openForWrite(id);
  if (status != Quorl::eOk) return arguments.fail(status, describeEntity(id));
  if (auto* line = ZnDbLine::cast(entity.object()))
    status = moveVertex(*line, from, to);
  else if (auto* polyline = ZnDbPolyline::cast(entity.object()))
    status = moveVertex(*polyline, from, to);
  else
    return arguments.fail(describeEntity(id) + " has no vertices to move", "a line or a polyline");
  return arguments.check(status, describeEntity(id));
}

bool copy(ScriptSession& session, ScriptArguments& arguments) {
  std::vector<ZnDbObjectId> ids;
  ZnGePoint3d by;
  if (!arguments.entities(ids, 1) || !arguments.point(by, "the way dx,dy")) return false;
  ZnDbDatabase& database = session.database();
  ZnDbIdMapping mapping(ZnDb::kCopyContext, &database, &database);
  ZnArray<ZnDbObjectId> originals;
  for (const ZnDbObjectId id : ids) originals.append(id);
  if (!arguments.check(database.deepCloneObjects(originals, database.currentSpaceId(), mapping)))
    return false;
  std::vector<ZnDbObjectId> copies;
  for (const ZnDbObjectId id : ids) {
    ZnDbIdPair pair(id);
    if (!mapping.compute(pair) || !pair.isCloned())
      return arguments.fail(describeEntity(id) + " can't be copied");
    copies.push_back(pair.value());
    session.noteMade(pair.value());
  }
  return transform(arguments, copies, ZnGeMatrix3d::translation(by.asVector()));
}

bool explode(ScriptSession& session, ScriptArguments& arguments) {
  std::vector<ZnDbObjectId> ids;
  if (!arguments.entities(ids)) return false;
  for (const ZnDbObjectId id : ids) {
    ZnArray<ZnDbObjectId> made;
    const Quorl::ErrorStatus status = zndbExplode(id, made);
    if (status == Quorl::eNotProvided)
      return arguments.fail(describeEntity(id) + " consists of nothing else",
                            "a block reference, a polyline or a dimension");
    if (status != Quorl::eOk) return arguments.fail(status, describeEntity(id));
    for (const ZnDbObjectId piece : made) session.noteMade(piece);
  }
  return true;
}

bool erase(ScriptSession&, ScriptArguments& arguments) {
  std::vector<ZnDbObjectId> ids;
  if (!arguments.entities(ids)) return false;
  for (const ZnDbObjectId id : ids) {
    ZnDbHolder<ZnDbEntity> entity;
    Quorl::ErrorStatus status = entity.openForWrite(id);
    if (status == Quorl::eOk) status = entity->erase();
    if (status != Quorl::eOk) return arguments.fail(status, describeEntity(id));
  }
  return true;
}

constexpr ScriptCommand kCommands[] = {
    {"MOVE", "ENTITY... dx,dy", move},
    {"ROTATE", "ENTITY... CENTER DEGREES", rotate},
    {"SCALE", "ENTITY... CENTER FACTOR", scale},
    {"MIRROR", "ENTITY... x,y x,y    across the line through two points", mirror},
    {"STRETCH", "ENTITY x,y x,y    moves the vertex of a line or polyline nearest to the first point",
     stretch},
    {"COPY", "ENTITY... dx,dy", copy},
    {"ERASE", "ENTITY...", erase},
    {"EXPLODE", "ENTITY...    what they consist of takes their place, blocks one level deep", explode},
};

} // namespace

std::span<const ScriptCommand> changeCommands() { return kCommands; }

} // namespace app
