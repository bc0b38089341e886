#include "interchange/svg_in/path_data.h"

#include "interchange/svg_in/number_scanner.h"

#include "quorl/ge/angles.h"

#include <array>
#include <cmath>

namespace interchange {

namespace {

bool isCommand(char c) { return std::string_view("MmLlHhVvCcSsQqTtAaZz").find(c) != std::string_view::npos; }
char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

class PathReader {
public:
  explicit PathReader(std::string_view text)
      : text_(text)
      , scanner_(text) {}

  PathData read() {
    scanner_.skipSpaces();
    while (!scanner_.atEnd() && readCommand()) scanner_.skipSpaces();
    endSubpath(false);
    return std::move(data_);
  }

private:
  bool fail(std::string expected) {
    if (!data_.error) {
      const std::string found = scanner_.atEnd() ? "the end" : "\"" + std::string(scanner_.rest()) + "\"";
      data_.error = PathError{scanner_.position(), "path data has " + found, std::move(expected)};
    }
    return false;
  }

  bool readCommand() {
    const char command = scanner_.peek();
    if (!isCommand(command)) return fail(began_ ? "a path command letter or a number" : "M or m");
    if (!began_ && lowered(command) != 'm') return fail("M or m as the first command");
    scanner_.skip();
    scanner_.skipSpaces();
    began_ = true;
    relative_ = command >= 'a';
    if (lowered(command) == 'z') {
      endSubpath(true);
      lastKind_ = 'z';
      return true;
    }
    kind_ = lowered(command);
    if (!readArguments()) return false;
    return readRepeats();
  }

  // Further numbers repeat the command; after a move they are lines.
  bool readRepeats() {
    if (kind_ == 'm') kind_ = 'l';
    for (;;) {
      const bool comma = scanner_.skipSeparator();
      const char next = scanner_.peek();
      const bool number = (next >= '0' && next <= '9') || next == '.' || next == '-' || next == '+';
      if (!number) return comma ? fail("a number after the comma") : true;
      if (!readArguments()) return false;
    }
  }

  bool number(double& value) {
    if (!first_) scanner_.skipSeparator();
    first_ = false;
    const std::optional<double> read = scanner_.number();
    if (!read) return fail("a number");
    value = *read;
    return true;
  }

  bool point(ZnGePoint2d& p) {
    if (!number(p.x) || !number(p.y)) return false;
    if (relative_) p = current_ + p.asVector();
    return true;
  }

  bool flag(bool& value) {
    scanner_.skipSeparator();
    const std::optional<bool> read = scanner_.flag();
    if (!read) return fail("an arc flag, 0 or 1");
    value = *read;
    return true;
  }

  bool readArguments() {
    first_ = true;
    const char last = lastKind_;
    lastKind_ = kind_;
    switch (kind_) {
    case 'm':
      return readMove();
    case 'l':
      return readLine();
    case 'h':
      return readAlong(true);
    case 'v':
      return readAlong(false);
    case 'c':
    case 's':
      return readCubic(last == 'c' || last == 's');
    case 'q':
    case 't':
      return readQuadratic(last == 'q' || last == 't');
    default:
      return readArc();
    }
  }

  bool readMove() {
    ZnGePoint2d to;
    if (!point(to)) return false;
    endSubpath(false);
    current_ = begin_ = to;
    return true;
  }

  bool readLine() {
    ZnGePoint2d to;
    if (!point(to)) return false;
    append(Segment::line(current_, to));
    return true;
  }

  // The smooth commands go on in the direction of the curve before them.
  ZnGePoint2d reflectedControl() const {
    return ZnGePoint2d::kOrigin + (2.0 * current_.asVector() - control_.asVector());
  }

  bool readAlong(bool x) {
    double value = 0;
    if (!number(value)) return false;
    ZnGePoint2d to = current_;
    double& moved = x ? to.x : to.y;
    moved = relative_ ? moved + value : value;
    append(Segment::line(current_, to));
    return true;
  }

  bool readCubic(bool smooth) {
    ZnGePoint2d control1 = smooth ? reflectedControl() : current_;
    ZnGePoint2d control2, to;
    if (kind_ == 'c' && !point(control1)) return false;
    if (!point(control2) || !point(to)) return false;
    append(Segment::cubic(current_, control1, control2, to));
    control_ = control2;
    return true;
  }

  bool readQuadratic(bool smooth) {
    ZnGePoint2d control = smooth ? reflectedControl() : current_;
    ZnGePoint2d to;
    if (kind_ == 'q' && !point(control)) return false;
    if (!point(to)) return false;
    append(Segment::quadratic(current_, control, to));
    control_ = control;
    return true;
  }

  bool readArc() {
    double rx = 0, ry = 0, tilt = 0;
    bool large = false, positive = false;
    ZnGePoint2d to;
    if (!number(rx) || !number(ry) || !number(tilt) || !flag(large) || !flag(positive) || !point(to)) {
      return false;
    }
    if (const auto arc = arcBetween(current_, to, rx, ry, tilt, large, positive)) append(*arc);
    return true;
  }

  void append(const Segment& segment) {
    contour_.segments.push_back(segment);
    current_ = segment.end;
  }

  // What follows a closed subpath without a move starts where that one started.
  void endSubpath(bool closed) {
    contour_.closed = closed;
    if (!contour_.segments.empty()) data_.contours.push_back(std::move(contour_));
    contour_ = {};
    current_ = begin_;
  }

  std::string_view text_;
  NumberScanner scanner_;
  PathData data_;
  Contour contour_;
  ZnGePoint2d begin_;   // of the subpath
  ZnGePoint2d current_; // pen
  ZnGePoint2d control_; // last control point, for the smooth commands
  bool began_ = false;
  bool relative_ = false;
  bool first_ = false; // no separator before the first number of a command
  char kind_ = 0;      // lower case
  char lastKind_ = 0;
};

} // namespace

PathData parsePath(std::string_view text) {
  if (trimmed(text) == "none") return {};
  return PathReader(text).read();
}

// In the frame of the ellipse the two points lie on a unit circle; its center is on their bisector.
std::optional<Segment> arcBetween(ZnGePoint2d start, ZnGePoint2d end, double rx, double ry,
                                  double tiltDegrees, bool large, bool positive) {
  if (start.x == end.x && start.y == end.y) return std::nullopt;
  rx = std::abs(rx);
  ry = std::abs(ry);
  if (rx == 0 || ry == 0) return Segment::line(start, end);
  const double tilt = std::fmod(tiltDegrees, 360.0) * ZnGe::kPi / 180;
  const ZnGeVector2d xAxis{std::cos(tilt), std::sin(tilt)};
  const ZnGeVector2d yAxis = xAxis.perpVector();
  const ZnGeVector2d chord = end - start;
  ZnGeVector2d half{chord.dotProduct(xAxis) / (2 * rx), chord.dotProduct(yAxis) / (2 * ry)};
  const double squared = half.lengthSquared();
  if (squared > 1) {
    const double grow = std::sqrt(squared);
    rx *= grow;
    ry *= grow;
    half = (1 / grow) * half;
  }
  const double size = half.length();
  const double off = std::sqrt(std::fmax(0, 1 - size * size));
  const ZnGeVector2d left = size > 0 ? (off / size) * half.perpVector() : ZnGeVector2d();
  const ZnGeVector2d toCenter = half + (large == positive ? -1.0 : 1.0) * left;
  EllipticArc arc;
  arc.u = rx * xAxis;
  arc.v = ry * yAxis;
  arc.center = start + toCenter.x * arc.u + toCenter.y * arc.v;
  const ZnGeVector2d from = -toCenter;
  const ZnGeVector2d to = 2.0 * half - toCenter;
  arc.start = from.signedAngle();
  arc.sweep = from.signedAngleTo(to);
  if (positive && arc.sweep < 0) arc.sweep += ZnGe::kTwoPi;
  if (!positive && arc.sweep > 0) arc.sweep -= ZnGe::kTwoPi;
  Segment segment = Segment::ellipticArc(arc);
  segment.start = start;
  segment.end = end;
  return segment;
}

} // namespace interchange
