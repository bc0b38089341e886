// What the commands that make and change single center objects are asked for and what they tell.
#pragma once

#include "exchange/report.h"

namespace exchange {

// CENTERMARK, CENTERLINE, EDGEEXTENSION, REASSOCIATE and DISASSOCIATE.
struct CenterWish {
  std::vector<std::string> objects; // handles of center objects
  std::vector<Edge> edges;
  std::vector<std::optional<Point>> picks; // of each edge; its middle counts where there is none
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("objects", self.objects);
    field("edges", self.edges);
    field("picks", self.picks);
  }
};

struct CenterOutcome {
  std::vector<std::string> created; // handles, in the order of the edges
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("created", self.created);
  }
};

// CENTERPATTERN, CENTERPATTERN.EDIT and CENTERPATTERN.PREVIEW. What is absent is left to the edges, or stays.
struct PatternWish {
  std::vector<std::string> objects; // of an edit: one pattern
  std::vector<Edge> edges;          // else
  std::vector<Edge> add, remove;
  bool clear = false;              // takes all edges away first
  std::optional<std::string> type; // "polar" or "linear"; a pattern that is there keeps its type
  std::optional<Edge> reference;
  bool clearReference = false;
  std::optional<Point> referencePick; // on the reference
  std::optional<bool> full, centerMark;
  std::vector<Overshoot> overshoots; // by the keys as they were before the edit
  std::optional<Point> cursor;       // of a preview: where the next pick might be
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("objects", self.objects);
    field("edges", self.edges);
    field("add", self.add);
    field("remove", self.remove);
    field("clear", self.clear);
    field("type", self.type);
    field("reference", self.reference);
    field("clearReference", self.clearReference);
    field("referencePick", self.referencePick);
    field("full", self.full);
    field("centerMark", self.centerMark);
    field("overshoots", self.overshoots);
    field("cursor", self.cursor);
  }
};

struct PatternOutcome {
  std::vector<std::string> created;
  int added = 0;                    // how many edges auto fill gave
  std::vector<std::string> outside; // the edges that stand beside the center line
  bool ring = false;                // whose outsiders have no mark; those of a row have one
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("created", self.created);
    field("added", self.added);
    field("outside", self.outside);
    field("ring", self.ring);
  }
};

struct PreviewCurve {
  Shape shape;
  std::optional<Point> normal; // of an arc
  std::string layer, linetype;
  double linetypeScale = 1.0;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field.part(self.shape);
    field("normal", self.normal);
    field("layer", self.layer);
    field("linetype", self.linetype);
    field("linetypeScale", self.linetypeScale);
  }
};

struct PreviewLinetype {
  std::string name;
  std::vector<double> dashes;
  bool scaledToFit = false;
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field("name", self.name);
    field("dashes", self.dashes);
    field("scaledToFit", self.scaledToFit);
  }
};

struct PreviewOutcome {
  PatternOutcome pattern;
  std::vector<PreviewCurve> curves;       // what would be drawn
  std::vector<PreviewLinetype> linetypes; // of the curves
  template<class Self, class Field> static void eachField(Self& self, Field& field) {
    field.part(self.pattern);
    field("curves", self.curves);
    field("linetypes", self.linetypes);
  }
};

} // namespace exchange
