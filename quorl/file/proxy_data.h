// What a proxy keeps of an object whose class is not loaded.
#pragma once

#include "quorl/db/core/object.h"
#include "quorl/file/class_record.h"
#include "quorl/file/object_record.h"

// The fields of the host's own levels live in the proxy itself, where they can be asked and changed like
// those of any object; this is what the unknown class wrote after them.
struct ZnDbProxyData {
  const ZnDbProxyClass* cls = nullptr;
  ZnDbObjectRecord rest;
  bool isText = false; // read from the text format: the bytes are lines, their references apart
};

// What the two classes of proxies have in common.
class ZnDbProxy {
public:
  virtual ~ZnDbProxy() = default;
  // The fields of the host's level alone.
  virtual Quorl::ErrorStatus baseOut(ZnDbFiler& filer) const = 0;
  virtual Quorl::ErrorStatus baseIn(ZnDbFiler& filer) = 0;
  virtual Quorl::ErrorStatus baseTextOut(ZnDbTdocFiler& filer) const = 0;
  virtual Quorl::ErrorStatus baseTextIn(ZnDbTdocFiler& filer) = 0;

  ZnDbProxyData data;
};

// The object as a proxy, or null when it is itself.
const ZnDbProxy* zndbProxy(const ZnDbObject* object);
inline const ZnDbProxyData* zndbProxyData(const ZnDbObject* object) {
  const ZnDbProxy* proxy = zndbProxy(object);
  return proxy ? &proxy->data : nullptr;
}

// Undo, clones and walks over ids see a proxy's data through these.
Quorl::ErrorStatus zndbWriteProxyData(ZnDbFiler& filer, const ZnDbProxyData& data);
Quorl::ErrorStatus zndbReadProxyData(ZnDbFiler& filer, ZnDbProxyData& data);

// In place of the host's level `Base`.
template<class Base> class ZnDbProxyOf : public Base, public ZnDbProxy {
public:
  Quorl::ErrorStatus baseOut(ZnDbFiler& filer) const override { return Base::bdocOutFields(filer); }
  Quorl::ErrorStatus baseIn(ZnDbFiler& filer) override { return Base::bdocInFields(filer); }
  Quorl::ErrorStatus baseTextOut(ZnDbTdocFiler& filer) const override { return Base::tdocOutFields(filer); }
  Quorl::ErrorStatus baseTextIn(ZnDbTdocFiler& filer) override { return Base::tdocInFields(filer); }

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override {
    const Quorl::ErrorStatus status = Base::bdocOutFields(filer);
    return status == Quorl::eOk ? zndbWriteProxyData(filer, data) : status;
  }
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override {
    const Quorl::ErrorStatus status = Base::bdocInFields(filer);
    return status == Quorl::eOk ? zndbReadProxyData(filer, data) : status;
  }
  // A clone or an object brought back must be found when its class comes.
  void attachLinks() override;
};
