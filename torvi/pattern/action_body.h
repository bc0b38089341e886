// The body of a center mark pattern: circles and arcs that share a pitch circle or a straight line, each with
// a mark of its own, joined by center lines. The center mark's own values stay in force: they shape the mark
// on the pitch center and the cross of every member.
#pragma once

#include "torvi/centermark/action_body.h"

class TORVI_EXPORT ZnDbCenterMarkPatternActionBody : public ZnDbCenterMarkActionBody {
  ZNRX_DECLARE_MEMBERS(ZnDbCenterMarkPatternActionBody)

public:
  ZnDbCenterMarkPatternActionBody() = default;

  // Names of values, and the keys of generated entities. An index is a position among the input edges.
  static const ZnString& referenceEdgeParamName();
  static const ZnString& majorAxisKey(); // of the mark on the pitch center
  static const ZnString& centerLineDependencyKey();
  static const ZnString& startOvershootParamPrefix();
  static const ZnString& endOvershootParamPrefix();
  // "3" for a member (second index negative), "1-3" for the piece between two members, smaller index first
  // unless the order is kept: the two pieces of a closed pattern of two members differ in nothing else.
  static ZnString dependencyKey(int first, int second, bool keepOrder = false);
  // "CenterLine-0-2-3", in the given order: the whole curve through the members.
  static ZnString centerLineDependencyKey(ZnArray<int> indices);
  // Takes such a key apart; false without any index.
  static bool getEdgeIndicesOnCenterLine(const ZnString& key, ZnArray<int>& indices);

  // What the pattern is
  CenterMarkPatternType getCenterPatternType() const;
  Quorl::ErrorStatus setCenterPatternType(CenterMarkPatternType type);
  bool isFullPCD() const; // the pitch circle is closed
  Quorl::ErrorStatus setIsFullPCD(bool full);
  bool showCenterMark() const; // on the pitch center
  Quorl::ErrorStatus setShowCenterMark(bool show);
  // An arc fixes the pitch center, a line the direction. The pick is an offset in radians from the arc's
  // start; a negative one is none and leaves that of an edge before, which stays stored until it is
  // forgotten. False without an edge.
  bool getReferenceEdge(ZnDbEdgeRef& edge, double& pickParam) const;
  Quorl::ErrorStatus setReferenceEdge(const ZnDbEdgeRef& edge, double pickParam);
  bool clearReferenceEdge();
  void forgetReferencePick();

  // The members on the four arms of the pitch center's mark, arms in the order left, right, bottom, top, so
  // that a pattern without its edges can still draw them. False, and nothing written, without a member.
  bool getCachedInputEdgeOnMajorAxis(ZnCenterMarkSubEntType type, int& index, double& radius) const;
  Quorl::ErrorStatus cacheInputEdgesOnMajorAxis(const int (&indices)[4], const double (&radii)[4]);

  // Overshoots of a center line, drawing units. Validating refuses lengths below zero and keys of no output
  // edge with eInvalidInput.
  double startOvershoot(const ZnString& key) const;
  double endOvershoot(const ZnString& key) const;
  Quorl::ErrorStatus setStartOvershoot(const ZnString& key, double value, bool validate);
  Quorl::ErrorStatus setEndOvershoot(const ZnString& key, double value, bool validate);
  bool getCenterLineDependencyKeys(ZnArray<ZnString>& keys) const; // replaced; true when there is one
  // Entity and overshoots follow the center line to its new key; with an empty one all go.
  Quorl::ErrorStatus renameCenterLineKey(const ZnString& oldKey, const ZnString& newKey);
  // The same, and the two overshoots change places: each stays with its member.
  Quorl::ErrorStatus reverseCenterLineKey(const ZnString& oldKey, const ZnString& newKey);
  // Gives a new center line the overshoots that the pattern had at its making.
  Quorl::ErrorStatus startCenterLine(const ZnString& key);
  // What members' arms reach beyond their circles: the style's at the making, and that of today for a pattern
  // that was made when it was not kept.
  double memberOvershoot() const;

  // Lengths of the mark on the pitch center, those of the block. They don't ask how large its cross is, so
  // that its size may follow from them. 0 where there is no such mark, and no such arm.
  double pitchRadius() const;
  double storedExtension(ZnCenterMarkSubEntType type) const;

  // Center mark behaviour that a pattern changes. There is a reference circle, the pitch circle, only where
  // the mark on the pitch center shows: eNothingToDo else.
  Quorl::ErrorStatus getRefCircle(ZnGeCircArc3d& circle) const override;
  ZnGeLineSeg3d getSubentLineGeometry(ZnCenterMarkSubEntType type, bool includeOvershoot) const override;
  double getMinExtension(ZnCenterMarkSubEntType type) const override;
  Quorl::ErrorStatus getCrossLengthAndGap(double& length, double& gap) const override;
  double getResolvedExtensionLength(double stored, ZnCenterMarkSubEntType type, double radius) const override;
  Quorl::ErrorStatus resetOvershoots() override;

  // Linear center lines of an earlier version ended in the centers of their outer members: moves such ends
  // out to where they are drawn today.
  void fixCenterLineEndPointsForLegayObj(const ZnString& key, ZnGePoint3d& start, ZnGePoint3d& end) const;

protected:
  ZnDbTorviLayout* getLayout() const override;
  double getResolvedExtensionLength(double stored, ZnCenterMarkSubEntType type) const override;
  bool isOutputEdgeKeyValid(const ZnString& key) const;

private:
  Quorl::ErrorStatus moveCenterLine(const ZnString& oldKey, const ZnString& newKey, bool reversed);
  double reachOfUnsetArm(ZnCenterMarkSubEntType type) const;
};
