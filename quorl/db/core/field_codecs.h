// How a value of each type stands in a binary record, in text, and before a visitor. A type that classes of
// higher layers have in their fields gets its codec there.
#pragma once

#include <optional>

#include "quorl/db/core/color.h"
#include "quorl/db/core/field_visitor.h"
#include "quorl/db/core/tdoc_section.h"

// A codec has:
//   Raw                              what is read before the field's rule has judged it
//   get(value), set(value, raw)      from and to the member
//   write(filer, raw), read(filer, raw)
//   writeText(filer, code, raw), readText(items, code, raw)   the latter false where there is no such item
//   Shown, shown(raw), take(shown, raw)    for visitors; take is false for what the type can't hold
// One without Shown has show(visitor, field, raw) instead, which tells its parts.
template<class T> struct ZnDbFieldCodec;

template<class T, class Seen = T> struct ZnDbPlainCodec {
  using Raw = T;
  using Shown = Seen;
  static const T& get(const T& value) { return value; }
  static void set(T& value, T&& raw) { value = std::move(raw); }
  static Seen shown(const T& raw) { return static_cast<Seen>(raw); }
  static bool take(const Seen& shown, T& raw) {
    raw = static_cast<T>(shown);
    if constexpr (std::is_same_v<T, Seen>) return true;
    return static_cast<Seen>(raw) == shown;
  }
};

template<> struct ZnDbFieldCodec<bool> : ZnDbPlainCodec<bool> {
  template<class F> static void write(F& filer, bool v) { filer.writeBool(v); }
  template<class F> static void read(F& filer, bool& v) { v = filer.readBool(); }
  static void writeText(ZnDbTdocFiler& filer, int code, bool v) { filer.writeBool(code, v); }
  static bool readText(ZnDbTdocItems& items, int code, bool& v) {
    const ZnDbTdocItem* item = items.next(code);
    if (item) v = item->integer != 0;
    return item;
  }
};

template<class T, class Stored> struct ZnDbIntegerCodec : ZnDbPlainCodec<T, std::int64_t> {
  template<class F> static void write(F& filer, T v) {
    if constexpr (sizeof(Stored) == sizeof(std::int64_t))
      filer.writeInt64(static_cast<std::int64_t>(v));
    else
      filer.writeInt32(static_cast<std::int32_t>(v));
  }
  template<class F> static void read(F& filer, T& v) {
    if constexpr (sizeof(Stored) == sizeof(std::int64_t))
      v = static_cast<T>(filer.readInt64());
    else
      v = static_cast<T>(filer.readInt32());
  }
  static void writeText(ZnDbTdocFiler& filer, int code, T v) {
    filer.writeInteger(code, static_cast<std::int64_t>(v));
  }
  static bool readText(ZnDbTdocItems& items, int code, T& v) {
    const ZnDbTdocItem* item = items.next(code);
    if (item) v = static_cast<T>(item->integer);
    return item;
  }
};
template<> struct ZnDbFieldCodec<std::int32_t> : ZnDbIntegerCodec<std::int32_t, std::int32_t> {};
template<> struct ZnDbFieldCodec<std::int64_t> : ZnDbIntegerCodec<std::int64_t, std::int64_t> {};
template<> struct ZnDbFieldCodec<std::uint64_t> : ZnDbIntegerCodec<std::uint64_t, std::int64_t> {};

// A number or enumeration in fewer bytes than its type has; the rule judges it before it is narrowed.
template<class Stored, class T> struct ZnDbStoredAs { T& member; };
template<class Stored, class T> ZnDbStoredAs<Stored, T> zndbAs(T& member) { return {member}; }

template<class Stored, class T> struct ZnDbFieldCodec<ZnDbStoredAs<Stored, T>> {
  using Raw = std::int64_t;
  using Shown = std::int64_t;
  static Raw get(const ZnDbStoredAs<Stored, T>& value) { return static_cast<Raw>(value.member); }
  static void set(const ZnDbStoredAs<Stored, T>& value, Raw raw) { value.member = static_cast<T>(raw); }
  static Shown shown(Raw raw) { return raw; }
  static bool take(Shown shown, Raw& raw) {
    raw = shown;
    return static_cast<Stored>(shown) == shown;
  }
  template<class F> static void write(F& filer, Raw v) {
    if constexpr (sizeof(Stored) == 1)
      filer.writeInt8(static_cast<std::int8_t>(v));
    else
      filer.writeInt16(static_cast<std::int16_t>(v));
  }
  template<class F> static void read(F& filer, Raw& v) {
    if constexpr (sizeof(Stored) == 1)
      v = filer.readInt8();
    else
      v = filer.readInt16();
  }
  static void writeText(ZnDbTdocFiler& filer, int code, Raw v) { filer.writeInteger(code, v); }
  static bool readText(ZnDbTdocItems& items, int code, Raw& v) {
    return ZnDbFieldCodec<std::int64_t>::readText(items, code, v);
  }
};

template<> struct ZnDbFieldCodec<double> : ZnDbPlainCodec<double> {
  template<class F> static void write(F& filer, double v) { filer.writeDouble(v); }
  template<class F> static void read(F& filer, double& v) { v = filer.readDouble(); }
  static void writeText(ZnDbTdocFiler& filer, int code, double v) { filer.writeDouble(code, v); }
  static bool readText(ZnDbTdocItems& items, int code, double& v) {
    const ZnDbTdocItem* item = items.next(code);
    if (item) v = item->real;
    return item;
  }
};

template<> struct ZnDbFieldCodec<ZnString> : ZnDbPlainCodec<ZnString> {
  template<class F> static void write(F& filer, const ZnString& v) { filer.writeString(v); }
  template<class F> static void read(F& filer, ZnString& v) { v = filer.readString(); }
  static void writeText(ZnDbTdocFiler& filer, int code, const ZnString& v) { filer.writeString(code, v); }
  static bool readText(ZnDbTdocItems& items, int code, ZnString& v) {
    const ZnDbTdocItem* item = items.next(code);
    if (item) v = item->text;
    return item;
  }
};

// A text that many objects have: written as a name, of which a file holds one.
struct ZnDbSharedText {
  ZnString& member;
};
template<> struct ZnDbFieldCodec<ZnDbSharedText> : ZnDbFieldCodec<ZnString> {
  static const ZnString& get(const ZnDbSharedText& value) { return value.member; }
  static void set(const ZnDbSharedText& value, ZnString&& raw) { value.member = std::move(raw); }
  template<class F> static void write(F& filer, const ZnString& v) { filer.writeAtom(v.atom()); }
  template<class F> static void read(F& filer, ZnString& v) { v = ZnString(filer.readAtom()); }
};

template<> struct ZnDbFieldCodec<ZnGePoint2d> : ZnDbPlainCodec<ZnGePoint2d> {
  using Shown = ZnGePoint3d;
  static Shown shown(const ZnGePoint2d& v) { return ZnGePoint3d(v.x, v.y, 0.0); }
  static bool take(const Shown& shown, ZnGePoint2d& v) {
    v = ZnGePoint2d(shown.x, shown.y);
    return true;
  }
  template<class F> static void write(F& filer, const ZnGePoint2d& v) {
    filer.writeDouble(v.x);
    filer.writeDouble(v.y);
  }
  template<class F> static void read(F& filer, ZnGePoint2d& v) {
    v.x = filer.readDouble();
    v.y = filer.readDouble();
  }
  static void writeText(ZnDbTdocFiler& filer, int code, const ZnGePoint2d& v) {
    filer.writePoint3d(code, shown(v));
  }
  static bool readText(ZnDbTdocItems& items, int code, ZnGePoint2d& v) {
    const ZnDbTdocItem* item = items.next(code);
    return item && take(item->point, v);
  }
};

template<> struct ZnDbFieldCodec<ZnGePoint3d> : ZnDbPlainCodec<ZnGePoint3d> {
  template<class F> static void write(F& filer, const ZnGePoint3d& v) { filer.writePoint3d(v); }
  template<class F> static void read(F& filer, ZnGePoint3d& v) { v = filer.readPoint3d(); }
  static void writeText(ZnDbTdocFiler& filer, int code, const ZnGePoint3d& v) { filer.writePoint3d(code, v); }
  static bool readText(ZnDbTdocItems& items, int code, ZnGePoint3d& v) {
    const ZnDbTdocItem* item = items.next(code);
    if (item) v = item->point;
    return item;
  }
};

template<> struct ZnDbFieldCodec<ZnGeVector3d> : ZnDbPlainCodec<ZnGeVector3d> {
  template<class F> static void write(F& filer, const ZnGeVector3d& v) { filer.writeVector3d(v); }
  template<class F> static void read(F& filer, ZnGeVector3d& v) { v = filer.readVector3d(); }
  static void writeText(ZnDbTdocFiler& filer, int code, const ZnGeVector3d& v) {
    filer.writeVector3d(code, v);
  }
  static bool readText(ZnDbTdocItems& items, int code, ZnGeVector3d& v) {
    const ZnDbTdocItem* item = items.next(code);
    if (item) v = item->point.asVector();
    return item;
  }
};

// Origin and axes; in text under the code and the three after it.
template<> struct ZnDbFieldCodec<ZnGeMatrix3d> : ZnDbPlainCodec<ZnGeMatrix3d> {
  struct Axes {
    ZnGePoint3d origin;
    ZnGeVector3d x, y, z;
    explicit Axes(const ZnGeMatrix3d& matrix) { matrix.getCoordSystem(origin, x, y, z); }
    void put(ZnGeMatrix3d& matrix) const { matrix.setCoordSystem(origin, x, y, z); }
  };
  template<class F> static void write(F& filer, const ZnGeMatrix3d& v) {
    const Axes axes(v);
    filer.writePoint3d(axes.origin);
    for (const ZnGeVector3d* axis : {&axes.x, &axes.y, &axes.z}) filer.writeVector3d(*axis);
  }
  template<class F> static void read(F& filer, ZnGeMatrix3d& v) {
    Axes axes(v);
    axes.origin = filer.readPoint3d();
    for (ZnGeVector3d* axis : {&axes.x, &axes.y, &axes.z}) *axis = filer.readVector3d();
    axes.put(v);
  }
  static void writeText(ZnDbTdocFiler& filer, int code, const ZnGeMatrix3d& v) {
    const Axes axes(v);
    filer.writePoint3d(code, axes.origin);
    for (const ZnGeVector3d* axis : {&axes.x, &axes.y, &axes.z}) filer.writeVector3d(++code, *axis);
  }
  static bool readText(ZnDbTdocItems& items, int code, ZnGeMatrix3d& v) {
    using Vector = ZnDbFieldCodec<ZnGeVector3d>;
    Axes axes(v);
    bool found = ZnDbFieldCodec<ZnGePoint3d>::readText(items, code, axes.origin);
    for (ZnGeVector3d* axis : {&axes.x, &axes.y, &axes.z})
      found = Vector::readText(items, ++code, *axis) || found;
    axes.put(v);
    return found;
  }
};

// Colors and transparencies as the one number that says them all.
template<class T> struct ZnDbPackedCodec : ZnDbPlainCodec<T> {
  template<class F> static void write(F& filer, const T& v) {
    filer.writeInt32(static_cast<std::int32_t>(v.packed()));
  }
  template<class F> static void read(F& filer, T& v) {
    v = T::fromPacked(static_cast<std::uint32_t>(filer.readInt32()));
  }
  static void writeText(ZnDbTdocFiler& filer, int code, const T& v) { filer.writeInteger(code, v.packed()); }
  static bool readText(ZnDbTdocItems& items, int code, T& v) {
    const ZnDbTdocItem* item = items.next(code);
    if (item) v = T::fromPacked(static_cast<std::uint32_t>(item->integer));
    return item;
  }
};
template<> struct ZnDbFieldCodec<ZnCmColor> : ZnDbPackedCodec<ZnCmColor> {};
template<> struct ZnDbFieldCodec<ZnCmTransparency> : ZnDbPackedCodec<ZnCmTransparency> {};

// A value that may be missing: a mark and the value, in text the value alone.
template<class T> struct ZnDbFieldCodec<std::optional<T>> {
  using Raw = std::optional<T>;
  using Inner = ZnDbFieldCodec<T>;
  static const Raw& get(const Raw& value) { return value; }
  static void set(Raw& value, Raw&& raw) { value = std::move(raw); }
  template<class F> static void write(F& filer, const Raw& v) {
    filer.writeBool(v.has_value());
    Inner::write(filer, v.value_or(T{}));
  }
  template<class F> static void read(F& filer, Raw& v) {
    const bool has = filer.readBool();
    T value{};
    Inner::read(filer, value);
    if (has) v = std::move(value);
  }
  static void writeText(ZnDbTdocFiler& filer, int code, const Raw& v) {
    if (v) Inner::writeText(filer, code, *v);
  }
  static bool readText(ZnDbTdocItems& items, int code, Raw& v) {
    T value{};
    if (!Inner::readText(items, code, value)) return false;
    v = std::move(value);
    return true;
  }
  static void show(ZnDbFieldVisitor& visitor, const ZnDbField& field, const Raw& v) {
    if (!v) return;
    typename Inner::Shown shown = Inner::shown(*v);
    visitor.visit(field, shown);
  }
};
