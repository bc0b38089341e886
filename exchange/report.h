// What TORVI.REPORT tells of a drawing's center objects.
#pragma once

#include "exchange/drawing_values.h"

namespace exchange {

struct ReportedCurve {
  int index = 0;
  std::string key; // of what the curve is a part, in objects that draw several things
  Shape shape;
  bool visible = true;
  std::string linetype;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("index", self.index);
    field("key", self.key);
    field.part(self.shape);
    field("visible", self.visible);
    field("linetype", self.linetype);
  }
};

// Of a center line, in drawing units, as they count now.
struct ReportedLengths {
  double startExtension = 0.0, endExtension = 0.0, startOvershoot = 0.0, endOvershoot = 0.0;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("startExtension", self.startExtension);
    field("endExtension", self.endExtension);
    field("startOvershoot", self.startOvershoot);
    field("endOvershoot", self.endOvershoot);
  }
};

struct PatternMember {
  std::string edge, key;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("edge", self.edge);
    field("key", self.key);
  }
};

// Of the center line with that key.
struct Overshoot {
  std::string key;
  double start = 0.0, end = 0.0;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("key", self.key);
    field("start", self.start);
    field("end", self.end);
  }
};

struct ReportedPattern {
  std::string type; // "polar" or "linear"
  bool fullPCD = false, showCenterMark = false;
  std::vector<PatternMember> members;
  std::optional<std::string> referenceEdge;
  std::vector<Overshoot> overshoots;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("type", self.type);
    field("fullPCD", self.fullPCD);
    field("showCenterMark", self.showCenterMark);
    field("members", self.members);
    field("referenceEdge", self.referenceEdge);
    field("overshoots", self.overshoots);
  }
};

struct ReportedCenter {
  std::string handle, kind;
  bool associative = false;
  std::string layer, linetype;
  std::vector<std::string> edges; // "2F/1A" for the entity 1A seen through the reference 2F
  std::optional<Point> center;    // of a mark's circle or a ring's pitch circle
  std::optional<double> radius;
  std::optional<ReportedLengths> lengths;
  std::optional<ReportedPattern> pattern;
  std::array<std::array<double, 4>, 4> transform{}; // of the block, by rows
  std::vector<ReportedCurve> curves;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("handle", self.handle);
    field("kind", self.kind);
    field("associative", self.associative);
    field("layer", self.layer);
    field("linetype", self.linetype);
    field("edges", self.edges);
    field("center", self.center);
    field("radius", self.radius);
    field.part(self.lengths);
    field.part(self.pattern);
    field("transform", self.transform);
    field("curves", self.curves);
  }
};

struct ReportOutcome {
  std::vector<ReportedCenter> centers; // in the order of their handles
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("centers", self.centers);
  }
};

} // namespace exchange
