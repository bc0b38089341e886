// Overrules of single members, whatever class the object is of.
#pragma once

#include "quorl/base/array.h"
#include "quorl/rx/overrule.h"

class ZnRxMember;

class ZnRxMemberOverrule : public ZnRxOverruleBase {
  ZNRX_DECLARE_MEMBERS(ZnRxMemberOverrule)

public:
  struct Attachment {
    ZnRxMember* member = nullptr;
    ZnRxMemberOverrule* overrule = nullptr;
  };

  // The overrule added last is asked first; the caller keeps it. eInvalidInput, eDuplicateKey,
  // eKeyNotFound as for overrules of classes.
  static Quorl::ErrorStatus addOverrule(ZnRxMember* member, ZnRxMemberOverrule* overrule);
  static Quorl::ErrorStatus removeOverrule(ZnRxMember* member, ZnRxMemberOverrule* overrule);
  // Removes each; the first failure is returned and stops nothing.
  static Quorl::ErrorStatus removeOverrules(const ZnArray<Attachment>& attachments);
};
