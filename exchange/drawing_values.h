// Points, edges and shapes as program and companion name them to each other.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "exchange/json.h"

namespace exchange {

using Point = std::array<double, 3>; // in the coordinates of the world

// An edge of an entity. The path begins with the outermost block reference and ends with the entity.
struct Edge {
  std::vector<std::string> path;
  int index = 0; // of the edge in the entity
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("path", self.path);
    field("index", self.index);
  }
};

// A line or an arc; what it does not have is null, so that readers need not ask what it is.
struct Shape {
  std::string type; // "line" or "arc"
  Point start{}, end{};
  std::optional<Point> center;
  std::optional<double> radius, startAngle, endAngle; // degrees
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("type", self.type);
    field("start", self.start);
    field("end", self.end);
    field("center", self.center);
    field("radius", self.radius);
    field("startAngle", self.startAngle);
    field("endAngle", self.endAngle);
  }
};

} // namespace exchange
