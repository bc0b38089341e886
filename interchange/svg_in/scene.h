// A drawing as read: layers, block definitions and recognized elements, independent of any database.
#pragma once

#include "interchange/recognize/shape.h"

#include "quorl/base/failure.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace interchange {

// Something that the file holds and the scene does not.
struct Skipped {
  std::string what; // "<image id="logo">"
  int line = 0;
  std::string why;
};

struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Color&, const Color&) = default;
};

struct Style {
  Color color;              // of the stroke, or of the fill when there is no stroke
  bool stroked = false;     // false: only the area is painted
  bool filled = false;      // the area is painted as well
  double width = 0;         // of the stroke on the page, mm; 0 is a hairline
  std::vector<double> dash; // lengths on the page, mm: drawn, empty, drawn ...; empty when continuous
  double opacity = 1;       // of the paint that gives the color, all groups included
};

// Where an element comes from. Subpaths and runs of one path share all but the last two numbers.
struct Source {
  std::string element; // "path", "circle" ...
  std::string id;      // may be empty
  int line = 0;
  int subpath = 0; // counted from 0
  int run = 0;     // part of a subpath that took several shapes
};

struct Element {
  std::size_t layer = 0;
  Style style;
  Source source;
  bool visible = true;
  std::string hiddenReason; // empty when visible
  Shape shape;
};

struct Layer {
  std::string name;
  bool visible = true;
};

struct Block {
  std::string name; // unique in the scene
  int line = 0;
  std::vector<Element> elements;
};

// How lengths of the file became millimetres.
struct DocumentFacts {
  double width = 0; // of the page, mm; 0 when the file does not tell
  double height = 0;
  double millimetresPerUnit = 0; // of one user unit along x on the page
  bool hasPhysicalSize = false;
  double dpi = 96;        // of the pixel, where pixels decide
  std::string unitReason; // one sentence for a person
};

struct Scene {
  DocumentFacts document;
  std::vector<Layer> layers; // the first is "0", for what belongs to no group with a name
  std::vector<Block> blocks;
  std::vector<Element> elements; // in document order
  std::vector<Skipped> skipped;
  std::vector<Quorl::Failure> problems; // what was wrong and could be read around
};

} // namespace interchange
