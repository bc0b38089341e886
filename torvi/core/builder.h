// Creates, loads, edits and reassociates center objects, and previews them without touching the drawing. A
// kind names its body class and supplies layout and first values; the sequences are here.
#pragma once

#include "torvi/core/action_body.h"
#include "torvi/core/layout.h"
#include "torvi/core/object_wrapper.h"

class TORVI_EXPORT ZnTorviBuilder {
public:
  ZnTorviBuilder(const ZnTorviBuilder&) = default;
  ZnTorviBuilder& operator=(const ZnTorviBuilder&) = default;
  virtual ~ZnTorviBuilder() = default;

  // Edges. While an object is loaded, additions and removals are remembered as the difference that
  // modifyTorvi writes; setInputEdges remembers none and is for creation or before reassociateTorvi.
  virtual void setInputEdges(const ZnArray<ZnDbEdgeRef>& edges);
  virtual void addInputEdge(const ZnDbEdgeRef& edge);
  virtual bool removeInputEdge(const ZnDbEdgeRef& edge); // whether it was among the input edges
  virtual void clearInput();
  const ZnArray<ZnDbEdgeRef>& inputEdges() const { return inputEdges_; }
  const ZnArray<ZnGePoint3d>& pickPoints() const { return pickPoints_; }
  void setPickPoints(const ZnArray<ZnGePoint3d>& points) { pickPoints_ = points; }

  // Nothing is rolled back on failure: the caller's transaction does that.
  Quorl::ErrorStatus createTorvi(ZnDbObjectId& centerId) const;
  // Curves in no database, owned by the caller.
  Quorl::ErrorStatus createTorviTransients(const ZnGePoint3d* pickPoint, ZnArray<ZnDbCurve*>& curves) const;
  // Forgets what was done to another one. An object without edges loads as nothing, with eOk.
  Quorl::ErrorStatus loadTorvi(ZnDbObjectId centerId);
  Quorl::ErrorStatus modifyTorvi() const;                           // eNothingToDo without a loaded object
  Quorl::ErrorStatus reassociateTorvi(ZnDbObjectId centerId) const; // eInvalidInput without a body

protected:
  ZnTorviBuilder(ZnRxClass* bodyClass, ZnDbDatabase* database);
  // Looked up once and then kept in stored, which the module clears when the class goes.
  static ZnRxClass* bodyClassNamed(const wchar_t* name, ZnRxClass*& stored);

  virtual ZnDbTorviLayout* getLayout() const = 0; // new, for the null object, owned by the caller
  virtual Quorl::ErrorStatus initValuesInBody(ZnDbObjectId bodyId) const = 0;
  virtual Quorl::ErrorStatus subAddInputEdgeToBody(ZnDbTorviActionBody* body, const ZnDbEdgeRef& edge) const;
  virtual Quorl::ErrorStatus subClearInputEdgesFromBody(ZnDbTorviActionBody* body) const;
  virtual Quorl::ErrorStatus subReassociateActionBodyToInputEdge(ZnDbObjectId bodyId) const;
  virtual Quorl::ErrorStatus subLoadTorvi(ZnDbTorviObjectWrapper* wrapper);
  virtual Quorl::ErrorStatus subModifyTorvi(ZnDbObjectId bodyId) const;

  ZnDbDatabase* database() const { return database_; }
  ZnDbObjectId centerObjId() const { return loadedObject_; }
  bool objectLoaded() const { return !loadedObject_.isNull(); }
  Quorl::ErrorStatus createActionAndActionBody(ZnDbObjectId& bodyId) const;
  Quorl::ErrorStatus createEntitiesInBTR(ZnDbObjectId bodyId, ZnDbObjectId& centerId,
                                         ZnDbDatabase* database) const;
  Quorl::ErrorStatus addInputEdgesToBody(ZnDbObjectId bodyId, const ZnArray<ZnDbEdgeRef>& edges) const;
  Quorl::ErrorStatus removeInputEdgesFromBody(ZnDbObjectId bodyId, const ZnArray<ZnDbEdgeRef>& edges) const;
  Quorl::ErrorStatus removeLoadedEmptyEdgesFromBody(ZnDbObjectId bodyId) const;
  Quorl::ErrorStatus clearInputEdgesFromBody(ZnDbObjectId bodyId) const;
  Quorl::ErrorStatus setInputEdgesToBody(ZnDbObjectId bodyId) const;
  bool hasInputEdgeChangesInEdit() const;
  Quorl::ErrorStatus reassociateActionBodyToInputEdge(ZnDbObjectId bodyId) const;
  // Brings an edge that a body holds back to the form in which the user picked it. eNothingToDo when its
  // entity can't tell.
  static Quorl::ErrorStatus convertEdgeRefToOriginalForm(ZnDbEdgeRef& edge);

private:
  ZnRxClass* bodyClass_ = nullptr;
  ZnDbDatabase* database_ = nullptr;
  ZnArray<ZnDbEdgeRef> inputEdges_;
  ZnArray<ZnGePoint3d> pickPoints_;
  ZnDbObjectId loadedObject_;
  ZnArray<ZnDbEdgeRef> addedEdges_;
  ZnArray<ZnDbEdgeRef> removedEdges_;
  ZnArray<int> emptyEdgeIndexes_;
  bool removeEmptyEdges_ = false;
};
