// What TORVI.ANNOTATE is asked for and what it tells.
#pragma once

#include "exchange/drawing_values.h"

namespace exchange {

struct AnnotateWish {
  std::optional<double> minRadius, maxRadius; // drawing units
  double arcs = 180.0;                        // the least span in degrees of an arc that gets a mark
  bool patterns = true;                       // rings and rows of holes become patterns
  bool centerLines = false;                   // slots get center lines
  bool strips = false;                        // and so do long rectangles
  double align = 0.0; // how far a hole may be moved to lie on its ring or row, as a share of its radius
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("minRadius", self.minRadius);
    field("maxRadius", self.maxRadius);
    field("arcs", self.arcs);
    field("patterns", self.patterns);
    field("centerLines", self.centerLines);
    field("strips", self.strips);
    field("align", self.align);
  }
};

// Edges are named by the path of their entity, "2F/1A" for the entity 1A seen through the reference 2F.
struct AnnotatedPattern {
  std::string handle;
  std::string type; // "ring" or "row"
  std::string evidence;
  bool showsCenterMark = false;
  double aligned = 0.0; // the farthest that a hole was moved, drawing units
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("handle", self.handle);
    field("type", self.type);
    field("evidence", self.evidence);
    field("showsCenterMark", self.showsCenterMark);
    field("aligned", self.aligned);
  }
};

struct AnnotatedHole {
  std::string edge, belongsTo;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("edge", self.edge);
    field("belongsTo", self.belongsTo);
  }
};

struct NumberedEdge {
  std::string edge;
  int index = 0;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("edge", self.edge);
    field("index", self.index);
  }
};

struct SlotEnds {
  std::vector<NumberedEdge> ends;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("ends", self.ends);
  }
};

// The center line between the two sides of a slot or strip. One that could not be made has no handle.
struct AnnotatedLine {
  bool isNew = false; // it was not there before
  std::optional<std::string> handle;
  std::vector<NumberedEdge> edges;
  std::optional<SlotEnds> ends; // of a slot
  std::string evidence;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("isNew", self.isNew);
    field("handle", self.handle);
    field("edges", self.edges);
    field.part(self.ends);
    field("evidence", self.evidence);
  }
};

struct AnnotateFailure {
  std::string what, edge, why;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("what", self.what);
    field("edge", self.edge);
    field("why", self.why);
  }
};

struct PassedOverEdge {
  std::string edge, why;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("edge", self.edge);
    field("why", self.why);
  }
};

struct AnnotateOutcome {
  std::vector<std::string> created; // the handles of all that was made
  std::vector<AnnotatedPattern> patterns;
  int inexactPatterns = 0; // rings and rows left alone because their holes do not lie on them exactly
  std::vector<AnnotatedHole> holes;
  std::vector<AnnotatedLine> slots, strips;
  std::vector<PassedOverEdge> passedOver; // arcs that are no feature of the part
  std::vector<AnnotateFailure> failures;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("created", self.created);
    field("patterns", self.patterns);
    field("inexactPatterns", self.inexactPatterns);
    field("holes", self.holes);
    field("slots", self.slots);
    field("strips", self.strips);
    field("passedOver", self.passedOver);
    field("failures", self.failures);
  }
};

} // namespace exchange
