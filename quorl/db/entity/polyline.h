// A chain of lines and arcs in one plane.
#pragma once

#include "quorl/db/entity/curve.h"
#include "quorl/ge/point2d.h"

// Vertices are in the entity's plane (see ZnGeMatrix3d::planeToWorld of the normal) at the elevation. The
// bulge of a vertex shapes the segment to the next one, see quorl/ge/bulge.h.
//
// Each vertex, and with it the segment that it begins, has a lasting id, the index of its sub-entities:
// adding and removing vertices leaves the ids of all others, and an id is never given twice.
class ZnDbPolyline : public ZnDbCurve {
  ZNRX_DECLARE_MEMBERS(ZnDbPolyline)

public:
  ZnDbPolyline() = default;

  // Vertices; a wrong index gives eOutOfRange, a value that is not finite eInvalidInput.
  int vertexCount() const { return static_cast<int>(shape_.vertices.size()); }
  // Puts a vertex before the one at the index (at the end for vertexCount()). A segment that is split so
  // keeps its id up to the new vertex.
  Quorl::ErrorStatus addVertexAt(int index, const ZnGePoint2d& point, double bulge = 0.0);
  // The segment before the vertex then runs to the next one and keeps its id.
  Quorl::ErrorStatus removeVertexAt(int index);
  Quorl::ErrorStatus getPointAt(int index, ZnGePoint2d& point) const;
  Quorl::ErrorStatus getPointAt(int index, ZnGePoint3d& point) const; // in the entity's coordinates
  Quorl::ErrorStatus setPointAt(int index, const ZnGePoint2d& point);
  Quorl::ErrorStatus getBulgeAt(int index, double& bulge) const;
  Quorl::ErrorStatus setBulgeAt(int index, double bulge);
  // The lasting id of the vertex at that place and of its segment; -1 for a wrong index.
  std::int64_t subentIndexAt(int index) const;

  // Segments: one less than vertices, or as many when closed; none for a single vertex.
  int segmentCount() const;
  bool isClosed() const override { return shape_.closed; }
  void setClosed(bool closed);
  double elevation() const { return shape_.elevation; }
  Quorl::ErrorStatus setElevation(double elevation);
  const ZnGeVector3d& normal() const { return shape_.normal; }
  Quorl::ErrorStatus setNormal(const ZnGeVector3d& normal); // eDegenerateGeometry for zero

  void appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const override;
  // eNonUniformScale where an arc would become elliptic, eDegenerateGeometry where the plane would be
  // flattened.
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  Quorl::ErrorStatus getPlane(ZnGePlane& plane) const override;
  Quorl::ErrorStatus explode(std::vector<std::unique_ptr<ZnDbEntity>>& pieces) const override;
  void getSubentIds(ZnDb::SubentType type, ZnArray<ZnDbSubentId>& ids) const override;
  std::unique_ptr<ZnGeCurve3d> subentCurve(const ZnDbSubentId& id) const override;
  bool subentPoint(const ZnDbSubentId& id, ZnGePoint3d& point) const override;

  ZNDB_DECLARE_FIELDS

private:
  struct Vertex {
    ZnGePoint2d point;
    double bulge = 0.0;
    std::int32_t id = 0;
  };
  struct Shape {
    std::vector<Vertex> vertices;
    std::int32_t nextId = 0;
    bool closed = false;
    double elevation = 0.0;
    ZnGeVector3d normal = ZnGeVector3d::kZAxis;
    bool hasUsableIds() const; // each vertex has one of its own, below the next
  };
  bool has(int index) const { return index >= 0 && index < vertexCount(); }
  int placeOf(std::int64_t id) const; // -1 for an id that is gone
  ZnGePoint3d inSpace(int index, const ZnGeMatrix3d& toWorld) const;
  std::unique_ptr<ZnGeCurve3d> segment(int index, const ZnGeMatrix3d& toWorld) const;

  Shape shape_;
};
