// Ties a dimension to the points and edges that it measures; lives in the dimension's extension dictionary.
#pragma once

#include <memory>
#include <vector>

#include "quorl/db/core/object.h"
#include "quorl/db/core/watch_link.h"
#include "quorl/db/entity/subent.h"

class ZnDbDimension;

class ZnDbDimAssoc : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbDimAssoc)

public:
  // What the dimension follows: an edge gives its circle, a vertex the dimension's point of that index.
  struct Reference {
    int pointIndex = 0;
    ZnDbCompoundObjectId path;
    ZnDbSubentId subent;
    friend bool operator==(const Reference&, const Reference&) = default;
  };

  ZnDbDimAssoc();
  ~ZnDbDimAssoc() override;

  static const wchar_t* dictionaryKey() { return L"QUORL_DIMASSOC"; }
  // Puts an association with these references into the dimension's extension dictionary, in place of one that
  // is there, and brings the dimension up to date.
  static Quorl::ErrorStatus post(ZnDbObjectId dimension, const std::vector<Reference>& references,
                                 ZnDbObjectId& id);
  // Null id for a dimension without one.
  static ZnDbObjectId of(const ZnDbDimension& dimension);

  ZnDbObjectId dimensionId() const { return dimensionId_; }
  const std::vector<Reference>& references() const { return references_; }
  Quorl::ErrorStatus setReferences(const std::vector<Reference>& references);

  // The first id of each reference's path, without duplicates; replaces ids.
  Quorl::ErrorStatus getDimAssocGeomIds(ZnArray<ZnDbObjectId>& ids) const;
  // Whether something is measured in model space through a viewport.
  bool isTransSpatial() const;
  // Moves the dimension to where its geometry is. With skipErased a reference whose geometry is gone, or
  // is no point or circle any more, is passed over, else eWasErased and the like. With onlyIfChanged a
  // dimension that fits already is not written.
  Quorl::ErrorStatus updateDimension(bool skipErased, bool onlyIfChanged);
  // Takes references whose path begins with an erased object, when the rest of the path still stands in this
  // drawing, to that rest; eNothingToDo when there is none.
  Quorl::ErrorStatus updateXrefSubentPath();

  ZNDB_DECLARE_FIELDS
  void attachLinks() override;
  void detachLinks() override;
  void watchedModified(const ZnDbObject* object) override;
  Quorl::ErrorStatus postProcessAfterDeepClone(ZnDbIdMapping& mapping) override;
  // Brings those dimensions up to date that somebody held when their geometry changed.
  static void followWhatWaits(const ZnDbDatabase* drawing);

private:
  struct Target;
  static Quorl::ErrorStatus targetOf(const Reference& reference, Target& target);
  Quorl::ErrorStatus collectTargets(bool skipErased, std::vector<Target>& targets) const;

  ZnDbObjectId dimensionId_;
  std::vector<Reference> references_;
  std::vector<std::unique_ptr<ZnDbWatchLink>> links_;
  bool updating_ = false;
};
