// Writes and reads the persisted fields of a body; the body only forwards to it.
#pragma once

#include "torvi/host/association.h"

class ZnDbTorviActionBodyBase;

class ZnDbTorviActionBodyBaseFiler {
public:
  explicit ZnDbTorviActionBodyBaseFiler(ZnDbTorviActionBodyBase* body)
      : body_(body) {}
  virtual ~ZnDbTorviActionBodyBaseFiler() = default;

  // eNewerVersion for a version above 0; eUnexpectedGroupCode where the text format has something else in
  // the version's place. A text without the section is no error.
  virtual Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const;
  virtual Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer);
  virtual Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const;
  virtual Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer);

private:
  ZnDbTorviActionBodyBase* body_; // not owned
};
