// The root of all bodies of center objects: named, typed values and named edges kept in the host's action,
// and the one persisted format that all kinds share.
#pragma once

#include <memory>

#include "torvi/host/association.h"
#include "torvi/host/export.h"

class ZnDbTorviActionBodyBaseFiler;

class TORVI_EXPORT ZnDbTorviActionBodyBase : public ZnDbAssocActionBody {
  ZNRX_DECLARE_MEMBERS(ZnDbTorviActionBodyBase)

public:
  ZnDbTorviActionBodyBase();
  ~ZnDbTorviActionBodyBase() override;

  static const ZnString& inputEdgeParamName();  // all input edges stand under this one name
  static const ZnString& outputEdgeParamName(); // prefix of every output edge's name

  // Typed values. A getter gives its default for an absent value or one of another type; a setter gives the
  // host's status. All but the object id's setter assert that the body is open for write, unless the value is
  // what stands: then nothing is written.
  int getIntParam(const ZnString& name, int defaultValue) const;
  Quorl::ErrorStatus setIntParam(const ZnString& name, int value);
  double getDoubleParam(const ZnString& name, double defaultValue) const;
  Quorl::ErrorStatus setDoubleParam(const ZnString& name, double value);
  bool getBoolParam(const ZnString& name, bool defaultValue) const; // stored as 1.0 and 0.0
  Quorl::ErrorStatus setBoolParam(const ZnString& name, bool value);
  ZnDbObjectId getObjectIdParam(const ZnString& name) const;
  Quorl::ErrorStatus setObjectIdParam(const ZnString& name, ZnDbObjectId value);
  Quorl::ErrorStatus getPoint3dParam(const ZnString& name, ZnGePoint3d& value) const;
  Quorl::ErrorStatus setPoint3dParam(const ZnString& name, const ZnGePoint3d& value);

  // Input edges. An edge of which anything on its path is gone reads as an empty reference at its
  // place.
  int edgeRefCount() const;
  Quorl::ErrorStatus getEdgeRefs(ZnArray<ZnDbEdgeRef>& edges) const; // eNothingToDo without any
  ZnDbEdgeRef getInputEdge(int index) const;                         // counts the input edges
  Quorl::ErrorStatus setEdgeRef(int index, const ZnDbEdgeRef& edge); // counts all parameters of the body

  // Output edges tie a key to a generated entity or nested reference.
  ZnDbObjectId getOutputEdge(const ZnString& key) const;
  Quorl::ErrorStatus setOutputEdge(const ZnString& key, ZnDbObjectId id);
  // eInvalidInput when the old key has no entry; an empty new key removes the entry.
  Quorl::ErrorStatus renameOutputEdgeKey(const ZnString& oldKey, const ZnString& newKey);
  // Appended in the host's order of names. A key loses leading letters that occur in the prefix.
  void getOutputEdgeKeys(ZnArray<ZnString>& keys) const;

  void evaluateOverride() override {}
  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;

protected:
  ZnDbEdgeRef getEdgeRef(ZnDbObjectId edgeParamId) const;
  // Stores without asserting that the body is open for write: the host's own guard decides.
  Quorl::ErrorStatus storeValue(const ZnString& name, const ZnDbEvalVariant& value);

private:
  friend class ZnDbTorviActionBodyBaseFiler;
  Quorl::ErrorStatus changeValue(const ZnString& name, const ZnDbEvalVariant& value);
  std::unique_ptr<ZnDbTorviActionBodyBaseFiler> filer_;
};
