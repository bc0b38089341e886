// What a drawn thing is once it has been recognized. Page shapes are in millimetres with y upwards, shapes
// of a block definition in the definition's own units with y upwards; angles in radians, counter-clockwise.
#pragma once

#include "quorl/ge/matrix2d.h"

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace interchange {

// How the drawing spelled a round thing.
enum class RoundSpelling {
  Whole,  // one element or one arc that is the whole turn
  Arcs,   // elliptic arc commands
  Curves, // cubic or quadratic pieces
  Polygon // equal straight sides
};

// How well the drawn curve keeps to the shape that stands for it.
struct Fit {
  RoundSpelling spelling = RoundSpelling::Whole;
  int pieces = 1;       // pieces of the contour that make it up
  double deviation = 0; // largest distance of the drawn curve from the circle, in the shape's units
  double relative = 0;  // the same as a part of the radius
};

struct Line {
  ZnGePoint2d start;
  ZnGePoint2d end;
};

// bulge is the tangent of a quarter of the arc's angle to the next vertex, positive counter-clockwise.
struct Vertex {
  ZnGePoint2d point;
  double bulge = 0;
};

// The last vertex of a closed polyline runs back to the first, by its own bulge.
struct Polyline {
  std::vector<Vertex> vertices;
  bool closed = false;
};

struct Circle {
  ZnGePoint2d center;
  double radius = 0;
  Fit fit;
};

// Counter-clockwise from startAngle to endAngle, whichever way it was drawn; 0 <= startAngle < 2 pi.
struct Arc {
  ZnGePoint2d center;
  double radius = 0;
  double startAngle = 0;
  double endAngle = 0;
  Fit fit;
};

// center + cos(t) major + sin(t) minor, where minor is major turned left by a right angle times ratio.
struct EllipseArc {
  ZnGePoint2d center;
  ZnGeVector2d major;
  double ratio = 1; // 0 < ratio <= 1
  double startParam = 0;
  double endParam = 0; // counter-clockwise; a whole ellipse ends 2 pi after its start
  bool closed = false;
};

// A cubic B-spline; Bezier pieces come with inner knots of multiplicity three.
struct Spline {
  static constexpr int kDegree = 3;
  std::vector<ZnGePoint2d> control;
  std::vector<double> knots; // control.size() + kDegree + 1, ascending
  bool closed = false;
};

enum class TextAnchor { Start, Middle, End };
enum class TextBaseline { Alphabetic, Middle, Hanging };

struct Text {
  ZnGePoint2d position;
  double height = 0;      // the font's size; capital letters are about seven tenths of it
  double rotation = 0;    // of the writing direction
  double widthFactor = 1; // horizontal stretch against the height
  bool mirrored = false;  // letters are seen from behind
  TextAnchor anchor = TextAnchor::Start;
  TextBaseline baseline = TextBaseline::Alphabetic;
  std::string string; // UTF-8
};

// A placed block definition; the matrix maps its coordinates to those of the owner.
struct Insert {
  std::size_t block = 0;
  ZnGeMatrix2d matrix;
};

using Shape = std::variant<Line, Polyline, Circle, Arc, EllipseArc, Spline, Text, Insert>;

} // namespace interchange
