// Value types: run-time classes of plain values, so that values of any kind can travel in one holder and
// have members and protocol extensions like objects.
#pragma once

#include <concepts>
#include <new>

#include "quorl/rx/class_members.h"

class ZnRxValueType : public ZnRxClass {
  ZNRX_DECLARE_MEMBERS(ZnRxValueType)

public:
  ~ZnRxValueType() override;

  // The type of T, made and registered on first use; release unregisters and deletes it, when no value of
  // it is left. A type is declared beside T with ZNRX_DECLARE_VALUE_TYPE and defined in one source with
  // ZNRX_DEFINE_VALUE_TYPE.
  template<class T> struct Desc {
    static ZnRxValueType& value();
    static void release();
  };

  size_t size() const { return size_; }
  virtual void copyConstruct(void* at, const void* source) const = 0;
  virtual void destroy(void* instance) const = 0;
  virtual bool equals(const void* a, const void* b) const = 0;
  // How the value is shown to users and written by scripts.
  virtual ZnString toString(const void* instance) const = 0;

protected:
  // Registers under the name, which must be free: two types of one name in a process are two builds of
  // one module.
  ZnRxValueType(const wchar_t* name, const wchar_t* parentName, size_t size, ZnRxMemberBuild buildMembers);

private:
  size_t size_ = 0;
};

// The type of values that know how to copy and destroy themselves. Values compare by their own
// equality, objects by isEqualTo; what has neither is equal to itself alone.
template<class T> class ZnRxNonBlittableType : public ZnRxValueType {
public:
  using ToString = ZnString (*)(const T&);
  ZnRxNonBlittableType(const wchar_t* name, const wchar_t* parentName, ToString textOf,
                       ZnRxMemberBuild buildMembers = nullptr)
      : ZnRxValueType(name, parentName, sizeof(T), buildMembers)
      , toString_(textOf) {}

  void copyConstruct(void* at, const void* source) const override { new (at) T(of(source)); }
  void destroy(void* instance) const override { static_cast<T*>(instance)->~T(); }
  bool equals(const void* a, const void* b) const override {
    if constexpr (std::equality_comparable<T>)
      return of(a) == of(b);
    else if constexpr (std::derived_from<T, ZnRxObject>)
      return of(a).isEqualTo(&of(b));
    else
      return a == b;
  }
  ZnString toString(const void* instance) const override { return toString_(of(instance)); }

private:
  static const T& of(const void* instance) { return *static_cast<const T*>(instance); }
  ToString toString_;
};

// Beside the declaration of T, at global scope.
#define ZNRX_DECLARE_VALUE_TYPE(T)                                                                           \
  template<> ZnRxValueType& ZnRxValueType::Desc<T>::value();                                                 \
  template<> void ZnRxValueType::Desc<T>::release();

// In one source, at global scope: the type's name, its parent's name or null, and the callbacks.
#define ZNRX_DEFINE_VALUE_TYPE(T, NAME, PARENT, TO_STRING, BUILD_MEMBERS)                                    \
  static ZnRxValueType*& slotOf(const T*) {                                                                  \
    static ZnRxValueType* slot = nullptr;                                                                    \
    return slot;                                                                                             \
  }                                                                                                          \
  template<> ZnRxValueType& ZnRxValueType::Desc<T>::value() {                                                \
    ZnRxValueType*& slot = slotOf(static_cast<const T*>(nullptr));                                           \
    if (!slot) slot = new ZnRxNonBlittableType<T>(NAME, PARENT, TO_STRING, BUILD_MEMBERS);                   \
    return *slot;                                                                                            \
  }                                                                                                          \
  template<> void ZnRxValueType::Desc<T>::release() {                                                        \
    ZnRxValueType*& slot = slotOf(static_cast<const T*>(nullptr));                                           \
    deleteZnRxClass(slot);                                                                                   \
    slot = nullptr;                                                                                          \
  }

ZNRX_DECLARE_VALUE_TYPE(bool)
ZNRX_DECLARE_VALUE_TYPE(short)
ZNRX_DECLARE_VALUE_TYPE(int)
ZNRX_DECLARE_VALUE_TYPE(double)
ZNRX_DECLARE_VALUE_TYPE(ZnString)
