// Makes and edits center mark patterns: keeps the user's edges and options, tells after each pick what the
// pattern has become, and in auto fill mode adds the other circles of the block that belong to it.
#pragma once

#include <map>
#include <memory>

#include "torvi/core/builder.h"
#include "torvi/core/id_order.h"
#include "torvi/drawing/types.h"

class ZnDbCenterMarkPatternTransientLayout;

class TORVI_EXPORT ZnCenterMarkPatternBuilder : public ZnTorviBuilder {
public:
  // A null database means the working one. Only builders made here hear of a change of the auto fill mode,
  // copies don't.
  explicit ZnCenterMarkPatternBuilder(ZnDbDatabase* database = nullptr);
  ZnCenterMarkPatternBuilder(const ZnCenterMarkPatternBuilder&) = default;
  ZnCenterMarkPatternBuilder& operator=(const ZnCenterMarkPatternBuilder&) = default;
  ~ZnCenterMarkPatternBuilder() override;

  // Edges. Every change takes back what auto fill has added, and fills anew.
  void setInputEdges(const ZnArray<ZnDbEdgeRef>& edges) override; // all of them the user's
  void addInputEdge(const ZnDbEdgeRef& edge) override;
  bool removeInputEdge(const ZnDbEdgeRef& edge) override;
  void clearInput() override;
  int inputEdgeCount() const { return userEdgeCount_; } // the user's own; those behind it are auto fill's
  // Whether the edge may join the user's edges: all of them have to lie on one curve. False for one that is
  // among them already, and for a first edge, which makes no curve.
  bool isValidInputEdge(const ZnDbEdgeRef& edge) const;

  // What the pattern is. Edges decide the type of a new pattern; three circles, or two and a fitting
  // reference edge. The pitch circle's closedness follows the edges while it is automatic.
  CenterMarkPatternType patternType() const { return patternType_; }
  void setPatternType(CenterMarkPatternType type) { patternType_ = type; }
  bool isFullPCD() const { return patternType_ == kCenterPatternPolar && isFullPitchCircle_; }
  void setIsFullPCD(bool full) { isFullPitchCircle_ = full; }
  bool isAutoFullPCD() const { return isAutoFullPitchCircle_; }
  void setAutoFullPCD(bool automatic) { isAutoFullPitchCircle_ = automatic; }
  bool showCenterMark() const { return showCenterMark_; }
  void setShowCentermark(bool show) { showCenterMark_ = show; }

  // The reference edge; param is an offset in radians from a reference arc's start, negative for none. A pick
  // beyond the arc's ends is refused, as is an edge without a curve. A pattern whose type stays undecided
  // drops the edge again.
  bool hasReferenceEdge() const { return !referenceEdge_.isEmpty(); }
  bool getReferenceEdge(ZnDbEdgeRef& edge, double& param) const;
  void setReferenceEdge(const ZnDbEdgeRef& edge, double param);
  bool setReferenceEdge(const ZnDbEdgeRef& edge, const ZnGePoint3d& pick);
  void clearReferenceEdge();
  bool isValidRefEdge(const ZnDbEdgeRef& edge) const;

  // Whether the loaded object would become another one; other is the builder as it was after loading.
  bool hasEditChanges(const ZnCenterMarkPatternBuilder& other) const;

  // Auto fill: searches the block that holds the first edge for circles of the same pattern. False, with the
  // edges as they were, where there is nothing to add; an edge that no block holds has no such block.
  bool autoFillPattern();
  void undoAutoFillPattern();
  bool autoFillMode() const { return autoFillMode_ && !autoFillSuppressed_; }
  // For this builder alone, and only while the mode is on. Lifting it fills at the next change.
  void suppressAutoFill(bool suppress);

  // In documents that hold drawing views: narrower candidates, candidates that the caller knows already (of
  // one block), and the removal of edges that a broken view does not show.
  bool considerEqualDiametersOnly() const { return considerEqualDiametersOnly_; }
  void considerEqualDiametersOnly(bool equalOnly) { considerEqualDiametersOnly_ = equalOnly; }
  bool filterOpenArcs() const { return filterOpenArcs_; }
  void filterOpenArcs(bool closedOnly) { filterOpenArcs_ = closedOnly; }
  void setCandidateEdgeRefs(const ZnArray<ZnDbEdgeRef>& edges);
  void modifyEdgeRefsAsPerBrokenView(ZnArray<ZnDbEdgeRef>& edges) const;

  // The class of the bodies, found by name once; the module clears it when it goes.
  static ZnRxClass* gpDesc;

protected:
  ZnDbTorviLayout* getLayout() const override;
  Quorl::ErrorStatus initValuesInBody(ZnDbObjectId bodyId) const override;
  Quorl::ErrorStatus subLoadTorvi(ZnDbTorviObjectWrapper* wrapper) override;
  Quorl::ErrorStatus subModifyTorvi(ZnDbObjectId bodyId) const override;
  // Takes over what the edges now make.
  void updateBuilderFromLayout();

private:
  friend class ZnRxVariableAutoCMPReactor;

  // For all builders at once; those that live fill, or drop what was filled.
  static void setAutoFillMode(bool on);
  static bool autoFillMode_;
  static ZnArray<ZnCenterMarkPatternBuilder*> instances_;

  // A layout with another type and reference edge than the builder has.
  std::unique_ptr<ZnDbCenterMarkPatternTransientLayout> makeLayout(CenterMarkPatternType type,
                                                                   const ZnDbEdgeRef& referenceEdge) const;
  ZnArray<ZnDbEdgeRef> userEdges() const;
  void endAutoFill();
  bool getCandidates(ZnArray<ZnDbEdgeRef>& candidates);
  bool narrowCandidates(ZnArray<ZnDbEdgeRef>& candidates) const;
  bool getEdgeRefsInBlock(const ZnArray<ZnDbObjectId>& path, ZnArray<ZnDbEdgeRef>& edges);

  CenterMarkPatternType patternType_ = kCenterPatternNone;
  ZnDbEdgeRef referenceEdge_;
  double referencePickParam_ = -1.0;
  bool showCenterMark_ = false;
  bool isFullPitchCircle_ = false;
  bool isAutoFullPitchCircle_ = true;
  bool considerEqualDiametersOnly_ = false;
  bool filterOpenArcs_ = false;
  CenterMarkPatternType autoFillTypeBefore_ = kCenterPatternNone;
  int userEdgeCount_ = 0;
  bool autoFillSuppressed_ = false;
  // By the block reference that holds them.
  std::map<ZnDbObjectId, ZnArray<ZnDbEdgeRef>, torvi::ByIdentity> candidateEdges_;
};
