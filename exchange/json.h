// How what program and companion tell each other becomes JSON and back. A record names its fields once, in
// eachField, and both ways follow from that; so do the names and the order that users see in a report.
//
//   struct Hole {
//     std::string edge;
//     template<class Self, class Field> static void eachField(Self& self, Field& field) {
//       field("edge", self.edge);
//     }
//   };
//
// Texts are UTF-8, objects of a drawing are named by their handles.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace exchange {

using Json = nlohmann::ordered_json;

template<class T> Json toJson(const T& value);
// False for a value of another kind; the target may then be filled in part.
template<class T> bool fromJson(const Json& json, T& value);

// Puts the fields of a record into an object.
class FieldWriter {
public:
  explicit FieldWriter(Json& object)
      : object_(object) {}
  template<class T> void operator()(const char* name, const T& value) { object_[name] = toJson(value); }
  // The fields of a part stand among those of the whole; a part that is not there leaves its fields away.
  template<class T> void part(const T& part) { T::eachField(part, *this); }
  template<class T> void part(const std::optional<T>& part) {
    if (part) T::eachField(*part, *this);
  }

private:
  Json& object_;
};

// Fills a record; what the object does not have stays as it is.
class FieldReader {
public:
  explicit FieldReader(const Json& object)
      : object_(object) {}
  template<class T> void operator()(const char* name, T& value) {
    const auto found = object_.find(name);
    if (found == object_.end()) return;
    hasAny_ = true;
    if (!fromJson(*found, value) && wrong_.empty()) wrong_ = name;
  }
  template<class T> void part(T& part) { T::eachField(part, *this); }
  template<class T> void part(std::optional<T>& part) {
    FieldReader reader(object_);
    T read;
    T::eachField(read, reader);
    if (reader.hasAny_) part = read;
    if (wrong_.empty()) wrong_ = reader.wrong_;
  }
  const std::string& wrong() const { return wrong_; } // the first field of another kind than it should be

private:
  const Json& object_;
  bool hasAny_ = false;
  std::string wrong_;
};

template<class T>
concept Record = requires(const T& value, FieldWriter& writer) {
  T::eachField(value, writer);
};

template<class T> constexpr bool isOptional = false;
template<class T> constexpr bool isOptional<std::optional<T>> = true;
template<class T> constexpr bool isVector = false;
template<class T> constexpr bool isVector<std::vector<T>> = true;
template<class T> constexpr bool isArray = false;
template<class T, size_t count> constexpr bool isArray<std::array<T, count>> = true;

template<class T> Json toJson(const T& value) {
  if constexpr (isOptional<T>) {
    return value ? toJson(*value) : Json();
  } else if constexpr (isVector<T> || isArray<T>) {
    Json list = Json::array();
    for (const auto& item : value) list.push_back(toJson(item));
    return list;
  } else if constexpr (Record<T>) {
    Json object = Json::object();
    FieldWriter writer(object);
    T::eachField(value, writer);
    return object;
  } else if constexpr (std::is_same_v<T, double>) {
    // JSON has no infinity; and no zero is negative.
    return std::isfinite(value) ? Json(value + 0.0) : Json();
  } else {
    return Json(value);
  }
}

// Of a record also says which field is wrong.
template<Record T> bool fromJson(const Json& json, T& record, std::string& wrong) {
  FieldReader reader(json);
  T::eachField(record, reader);
  wrong = reader.wrong();
  return wrong.empty() && (json.is_object() || json.is_null());
}

template<class T> bool fromJson(const Json& json, T& value) {
  if constexpr (isOptional<T>) {
    value.reset();
    return json.is_null() || fromJson(json, value.emplace());
  } else if constexpr (Record<T>) {
    std::string wrong;
    return fromJson(json, value, wrong);
  } else if constexpr (isVector<T>) {
    value.clear();
    return json.is_array() && std::all_of(json.begin(), json.end(), [&value](const Json& item) {
             return fromJson(item, value.emplace_back());
           });
  } else if constexpr (isArray<T>) {
    auto target = value.begin();
    return json.is_array() && json.size() == value.size() &&
           std::all_of(json.begin(), json.end(),
                       [&target](const Json& item) { return fromJson(item, *target++); });
  } else if constexpr (std::is_same_v<T, std::string>) {
    if (json.is_string()) value = json.template get<std::string>();
    return json.is_string();
  } else if constexpr (std::is_same_v<T, bool>) {
    if (json.is_boolean()) value = json.template get<bool>();
    return json.is_boolean();
  } else if constexpr (std::is_floating_point_v<T>) {
    if (json.is_number()) value = json.template get<T>();
    return json.is_number();
  } else {
    static_assert(std::is_integral_v<T>);
    if (json.is_number_integer()) value = json.template get<T>();
    return json.is_number_integer();
  }
}

} // namespace exchange
