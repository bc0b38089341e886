// Named values of an action: a small flat list, searched by comparing interned names.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "quorl/assoc/eval_variant.h"
#include "quorl/db/core/object_pool.h"

// One value with the text from which it was computed, if any.
struct ZnDbAssocValue {
  ZnDbEvalVariant value;
  ZnString expression;
  ZnString evaluatorId;
  friend bool operator==(const ZnDbAssocValue&, const ZnDbAssocValue&) = default;
};

// A name with one value, or an array of them. The first stands in place: most names have one.
class ZnDbAssocValueParam {
public:
  explicit ZnDbAssocValueParam(ZnAtom name = {})
      : name_(name) {}
  ZnDbAssocValueParam(const ZnDbAssocValueParam& other)
      : name_(other.name_)
      , first_(other.first_)
      , more_(other.more_ ? std::make_unique<Values>(*other.more_) : nullptr)
      , count_(other.count_) {}
  ZnDbAssocValueParam(ZnDbAssocValueParam&&) noexcept = default;
  ZnDbAssocValueParam& operator=(ZnDbAssocValueParam other) noexcept {
    std::swap(name_, other.name_);
    std::swap(first_, other.first_);
    std::swap(more_, other.more_);
    std::swap(count_, other.count_);
    return *this;
  }
  ZnAtom name() const { return name_; }
  int count() const { return count_; }
  const ZnDbAssocValue& at(int index) const {
    return index == 0 ? first_ : (*more_)[static_cast<size_t>(index - 1)];
  }
  // An index equal to the count appends.
  void put(int index, const ZnDbAssocValue& value);
  void truncate(int count);

private:
  using Values = std::vector<ZnDbAssocValue>;

  ZnAtom name_;
  ZnDbAssocValue first_;
  std::unique_ptr<Values> more_; // null for none
  int count_ = 0;
};

class ZnDbTdocItems;

class ZnDbAssocValueParamList {
public:
  // Null when there is no parameter of that name; allocates nothing.
  const ZnDbAssocValueParam* find(ZnAtom name) const {
    for (const ZnDbAssocValueParam& param : params_)
      if (param.name() == name) return &param;
    return nullptr;
  }
  // Null with the status set to eKeyNotFound (no such name) or eOutOfRange (no such index).
  const ZnDbAssocValue* at(ZnAtom name, int index, Quorl::ErrorStatus& status) const;
  // eInvalidInput for an empty name, eOutOfRange for an index below 0 or above the count of values.
  Quorl::ErrorStatus checkPut(ZnAtom name, int index) const;
  void put(ZnAtom name, int index, const ZnDbAssocValue& value);
  void putArray(ZnAtom name, const std::vector<ZnDbAssocValue>& values);
  bool remove(ZnAtom name);
  // In order of first writing.
  using Params = std::vector<ZnDbAssocValueParam, ZnDbPoolAllocator<ZnDbAssocValueParam>>;
  const Params& params() const { return params_; }

  // Fields; the filer is a ZnDbFiler or, inlined, a ZnDbMemoryFiler. Two parameters of one name, or one
  // without a value, are damage. In text each name is followed by its values, which their codes tell from
  // texts.
  template<class Filer> void bdocOut(Filer& filer) const;
  template<class Filer> Quorl::ErrorStatus bdocIn(Filer& filer);
  void tdocOut(ZnDbTdocFiler& filer) const;
  bool tdocIn(ZnDbTdocItems& items); // false where there are none
  static constexpr int kNameCode = 300;

private:
  ZnDbAssocValueParam& made(ZnAtom name);
  Params params_;
};

template<class T> struct ZnDbFieldCodec;
template<> struct ZnDbFieldCodec<ZnDbAssocValueParamList> {
  using Raw = ZnDbAssocValueParamList;
  static const Raw& get(const Raw& value) { return value; }
  static void set(Raw& value, Raw&& raw) { value = std::move(raw); }
  template<class F> static void write(F& filer, const Raw& list) { list.bdocOut(filer); }
  template<class F> static void read(F& filer, Raw& list) { list.bdocIn(filer); }
  static void writeText(ZnDbTdocFiler& filer, int, const Raw& list) { list.tdocOut(filer); }
  static bool readText(ZnDbTdocItems& items, int, Raw& list) { return list.tdocIn(items); }
  // Each value under its own name.
  static void show(class ZnDbFieldVisitor& visitor, const struct ZnDbField& field, const Raw& list);
};
