#include "quorl/db/entity/polyline.h"

#include <algorithm>

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/entity/plane_image.h"
#include "quorl/ge/bulge.h"
#include "quorl/ge/line_seg3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbPolyline, ZnDbCurve, L"POLYLINE")

bool ZnDbPolyline::Shape::hasUsableIds() const {
  std::vector<std::int32_t> ids;
  for (const Vertex& vertex : vertices) {
    if (vertex.id < 0 || vertex.id >= nextId) return false;
    ids.push_back(vertex.id);
  }
  std::sort(ids.begin(), ids.end());
  return nextId >= 0 && std::adjacent_find(ids.begin(), ids.end()) == ids.end();
}

ErrorStatus ZnDbPolyline::addVertexAt(int index, const ZnGePoint2d& point, double bulge) {
  assertWriteEnabled();
  if (index < 0 || index > vertexCount()) return Quorl::eOutOfRange;
  if (!Quorl::isFinite(point) || !Quorl::isFinite(bulge)) return Quorl::eInvalidInput;
  shape_.vertices.insert(shape_.vertices.begin() + index, Vertex{point, bulge, shape_.nextId++});
  return Quorl::eOk;
}

ErrorStatus ZnDbPolyline::removeVertexAt(int index) {
  assertWriteEnabled();
  if (!has(index)) return Quorl::eOutOfRange;
  shape_.vertices.erase(shape_.vertices.begin() + index);
  return Quorl::eOk;
}

ErrorStatus ZnDbPolyline::getPointAt(int index, ZnGePoint2d& point) const {
  if (!has(index)) return Quorl::eOutOfRange;
  point = shape_.vertices[static_cast<size_t>(index)].point;
  return Quorl::eOk;
}

ErrorStatus ZnDbPolyline::getPointAt(int index, ZnGePoint3d& point) const {
  if (!has(index)) return Quorl::eOutOfRange;
  point = inSpace(index, ZnGeMatrix3d::planeToWorld(shape_.normal));
  return Quorl::eOk;
}

ErrorStatus ZnDbPolyline::setPointAt(int index, const ZnGePoint2d& point) {
  assertWriteEnabled();
  if (!has(index)) return Quorl::eOutOfRange;
  if (!Quorl::isFinite(point)) return Quorl::eInvalidInput;
  shape_.vertices[static_cast<size_t>(index)].point = point;
  return Quorl::eOk;
}

ErrorStatus ZnDbPolyline::getBulgeAt(int index, double& bulge) const {
  if (!has(index)) return Quorl::eOutOfRange;
  bulge = shape_.vertices[static_cast<size_t>(index)].bulge;
  return Quorl::eOk;
}

ErrorStatus ZnDbPolyline::setBulgeAt(int index, double bulge) {
  assertWriteEnabled();
  if (!has(index)) return Quorl::eOutOfRange;
  if (!Quorl::isFinite(bulge)) return Quorl::eInvalidInput;
  shape_.vertices[static_cast<size_t>(index)].bulge = bulge;
  return Quorl::eOk;
}

std::int64_t ZnDbPolyline::subentIndexAt(int index) const {
  return has(index) ? shape_.vertices[static_cast<size_t>(index)].id : -1;
}

int ZnDbPolyline::segmentCount() const {
  if (vertexCount() < 2) return 0;
  return shape_.closed ? vertexCount() : vertexCount() - 1;
}

void ZnDbPolyline::setClosed(bool closed) {
  assertWriteEnabled();
  shape_.closed = closed;
}

ErrorStatus ZnDbPolyline::setElevation(double elevation) {
  assertWriteEnabled();
  if (!Quorl::isFinite(elevation)) return Quorl::eInvalidInput;
  shape_.elevation = elevation;
  return Quorl::eOk;
}

ErrorStatus ZnDbPolyline::setNormal(const ZnGeVector3d& normal) {
  assertWriteEnabled();
  return Quorl::takeNormal(normal, shape_.normal);
}

int ZnDbPolyline::placeOf(std::int64_t id) const {
  for (int i = 0; i < vertexCount(); ++i)
    if (shape_.vertices[static_cast<size_t>(i)].id == id) return i;
  return -1;
}

ZnGePoint3d ZnDbPolyline::inSpace(int index, const ZnGeMatrix3d& toWorld) const {
  const ZnGePoint2d& point = shape_.vertices[static_cast<size_t>(index)].point;
  return toWorld * ZnGePoint3d(point.x, point.y, shape_.elevation);
}

// A bulge over a chord without length shapes nothing.
std::unique_ptr<ZnGeCurve3d> ZnDbPolyline::segment(int index, const ZnGeMatrix3d& toWorld) const {
  const ZnGePoint3d start = inSpace(index, toWorld);
  const ZnGePoint3d end = inSpace((index + 1) % vertexCount(), toWorld);
  ZnGeCircArc3d arc;
  if (ZnGe::arcFromBulge(start, end, shape_.vertices[static_cast<size_t>(index)].bulge, shape_.normal, arc))
    return std::make_unique<ZnGeCircArc3d>(arc);
  return std::make_unique<ZnGeLineSeg3d>(start, end);
}

void ZnDbPolyline::appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const {
  const ZnGeMatrix3d toWorld = ZnGeMatrix3d::planeToWorld(shape_.normal);
  for (int i = 0; i < segmentCount(); ++i) pieces.push_back(segment(i, toWorld));
}

ErrorStatus ZnDbPolyline::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  ZnDbPlaneImage image;
  const ErrorStatus status = zndbPlaneImage(shape_.normal, transform, image);
  if (status != Quorl::eOk) return status;
  const auto isArc = [](const Vertex& vertex) { return vertex.bulge != 0.0; };
  if (!image.isUniform && std::any_of(shape_.vertices.begin(), shape_.vertices.end(), isArc))
    return Quorl::eNonUniformScale;

  const ZnGeMatrix3d planeToPlane =
      ZnGeMatrix3d::worldToPlane(image.normal) * transform * ZnGeMatrix3d::planeToWorld(shape_.normal);
  const double elevation = shape_.elevation;
  for (Vertex& vertex : shape_.vertices) {
    const ZnGePoint3d moved = planeToPlane * ZnGePoint3d(vertex.point.x, vertex.point.y, elevation);
    vertex.point = ZnGePoint2d(moved.x, moved.y);
  }
  shape_.elevation = (planeToPlane * ZnGePoint3d(0.0, 0.0, elevation)).z;
  shape_.normal = image.normal;
  return Quorl::eOk;
}

ErrorStatus ZnDbPolyline::getPlane(ZnGePlane& plane) const {
  plane.set(ZnGeMatrix3d::planeToWorld(shape_.normal) * ZnGePoint3d(0.0, 0.0, shape_.elevation),
            shape_.normal);
  return Quorl::eOk;
}

ErrorStatus ZnDbPolyline::explode(std::vector<std::unique_ptr<ZnDbEntity>>& pieces) const {
  if (segmentCount() == 0) return Quorl::eDegenerateGeometry;
  for (int i = 0; i < segmentCount(); ++i)
    pieces.push_back(subentEntity(ZnDbSubentId(ZnDb::kEdgeSubentType, subentIndexAt(i))));
  return Quorl::eOk;
}

void ZnDbPolyline::getSubentIds(ZnDb::SubentType type, ZnArray<ZnDbSubentId>& ids) const {
  const int count = type == ZnDb::kEdgeSubentType     ? segmentCount()
                    : type == ZnDb::kVertexSubentType ? vertexCount()
                                                      : 0;
  for (int i = 0; i < count; ++i) ids.append(ZnDbSubentId(type, subentIndexAt(i)));
}

std::unique_ptr<ZnGeCurve3d> ZnDbPolyline::subentCurve(const ZnDbSubentId& id) const {
  const int index = id.type() == ZnDb::kEdgeSubentType ? placeOf(id.index()) : -1;
  if (index < 0 || index >= segmentCount()) return nullptr;
  return segment(index, ZnGeMatrix3d::planeToWorld(shape_.normal));
}

bool ZnDbPolyline::subentPoint(const ZnDbSubentId& id, ZnGePoint3d& point) const {
  return id.type() == ZnDb::kVertexSubentType && getPointAt(placeOf(id.index()), point) == Quorl::eOk;
}

template<class Walk> void ZnDbPolyline::describe(Walk& walk) {
  walk.section(className(), 1);
  const auto vertexFields = [](auto& inner, Vertex& vertex) {
    inner.field(10, L"vertex", vertex.point);
    inner.field(41, L"bulge", vertex.bulge);
    inner.field(91, L"vertex id", vertex.id);
  };
  const auto fields = [&](auto& inner, Shape& shape) {
    inner.field(290, L"closed", shape.closed);
    inner.field(40, L"elevation", shape.elevation);
    inner.field(11, L"normal", shape.normal, ZnDbRule::unit());
    inner.field(90, L"next vertex id", shape.nextId);
    inner.list(10, L"vertices", shape.vertices, vertexFields);
  };
  walk.whole(L"shape", shape_, fields, [](const Shape& shape) { return shape.hasUsableIds(); });
}

ZNDB_DEFINE_FIELDS(ZnDbPolyline, ZnDbCurve)
