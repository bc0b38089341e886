// Points, vectors and affine maps of the plane, as plain values.
#pragma once

namespace interchange {

// A point or a vector; the context says which.
struct Point2 {
  double x = 0;
  double y = 0;
};

inline Point2 operator+(Point2 p, Point2 q) { return {p.x + q.x, p.y + q.y}; }
inline Point2 operator-(Point2 p, Point2 q) { return {p.x - q.x, p.y - q.y}; }
inline Point2 operator*(double s, Point2 p) { return {s * p.x, s * p.y}; }
inline Point2 midpoint(Point2 p, Point2 q) { return {(p.x + q.x) / 2, (p.y + q.y) / 2}; }
inline double dot(Point2 p, Point2 q) { return p.x * q.x + p.y * q.y; }
// Positive when q lies counter-clockwise of p.
inline double cross(Point2 p, Point2 q) { return p.x * q.y - p.y * q.x; }
double length(Point2 v);
double distance(Point2 p, Point2 q);
// Direction of v against the x axis, -pi..pi; 0 for the zero vector.
double direction(Point2 v);
// Signed angle that turns v into w, -pi..pi.
double angleBetween(Point2 v, Point2 w);
// Neither infinite nor undefined nor beyond what a drawing can mean.
bool isUsable(Point2 p);

// x' = a x + c y + e,  y' = b x + d y + f
struct Affine {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  Point2 apply(Point2 p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
  // Without the translation.
  Point2 applyVector(Point2 v) const { return {a * v.x + c * v.y, b * v.x + d * v.y}; }
  double determinant() const { return a * d - b * c; }
  // Geometric mean of the two principal scales: what a line width is multiplied by.
  double meanScale() const;
  // Rotation, mirror, uniform scale and translation only: circles stay circles.
  bool isSimilarity() const;
  bool isFinite() const;

  static Affine translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
  static Affine scaling(double x, double y) { return {x, 0, 0, y, 0, 0}; }
  static Affine rotation(double radians);
};

// The map that applies `inner` first.
Affine operator*(const Affine& outer, const Affine& inner);

} // namespace interchange
