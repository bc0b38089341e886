// What a pattern without its edges still is: what its block shows, and what it remembers of its ring. It goes
// on drawing the mark on the pitch center, whose lengths can be set, and the marks of the members on its
// arms, which are a part of it. All the rest stays as it stands, in the coordinates of the block: place, size
// and side are what the reference makes of it.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "torvi/pattern/analysis.h"
#include "torvi/pattern/object_wrapper.h"

class ZnPatternRemains {
public:
  explicit ZnPatternRemains(const ZnDbCenterMarkPatternObjectWrapper& pattern);

  // Appends a curve for each entity that is there, in the order of the keys: null for one that stays as it
  // is.
  void appendChanges(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const;
  // The same, with what is there in its place.
  void appendAll(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const;

private:
  using Curves = std::vector<std::unique_ptr<ZnGeCurve3d>>; // null for an entity that is not drawn
  using Outputs = std::map<ZnString, Curves>;               // by key

  void readOutputs();
  void readOutput(const ZnString& key);
  bool isFlat() const;
  void drawRing();
  ZnPatternAnalysis recallRing() const;
  ZnGePoint3d centerOfMember(int index, const ZnGePoint3d& otherwise) const;
  const ZnGeCurve3d* redrawn(const ZnString& key, size_t index, const ZnGeCurve3d* present) const;
  void append(bool alsoUnchanged, ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const;

  const ZnDbCenterMarkPatternObjectWrapper& pattern_;
  Outputs present_, drawn_;
};
