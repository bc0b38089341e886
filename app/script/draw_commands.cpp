// Script commands that draw entities.
#include <cmath>
#include <memory>

#include "app/script/script_command.h"
#include "app/tolerance.h"
#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/text.h"

namespace app {

namespace {

double radians(double degrees) { return degrees / 180.0 * ZnGe::kPi; }

bool append(ScriptSession& session, ScriptArguments& arguments, std::unique_ptr<ZnDbEntity> entity) {
  return arguments.check(session.append(entity.release()));
}

bool line(ScriptSession& session, ScriptArguments& arguments) {
  ZnGePoint3d start, end;
  if (!arguments.point(start) || !arguments.point(end) || !arguments.end()) return false;
  if (start.isEqualTo(end)) return arguments.fail("both ends are one point", "two points");
  return append(session, arguments, std::make_unique<ZnDbLine>(start, end));
}

bool circle(ScriptSession& session, ScriptArguments& arguments) {
  ZnGePoint3d center;
  double radius = 0.0;
  if (!arguments.point(center, "the center x,y") || !arguments.positive(radius, "a radius above 0") ||
      !arguments.end())
    return false;
  return append(session, arguments, std::make_unique<ZnDbCircle>(center, ZnGeVector3d::kZAxis, radius));
}

bool arc(ScriptSession& session, ScriptArguments& arguments) {
  ZnGePoint3d center;
  double radius = 0.0, start = 0.0, end = 0.0;
  if (!arguments.point(center, "the center x,y") || !arguments.positive(radius, "a radius above 0") ||
      !arguments.number(start, "the start angle in degrees") ||
      !arguments.number(end, "the end angle in degrees") || !arguments.end())
    return false;
  constexpr double kTurn = 360.0;
  double span = std::fmod(end - start, kTurn);
  if (span < 0.0) span += kTurn;
  if (radians(std::min(span, kTurn - span)) * radius < kLeastSize)
    return arguments.fail("both angles are one", "an arc that begins and ends at points of its own");
  return append(session, arguments, std::make_unique<ZnDbArc>(center, radius, radians(start), radians(end)));
}

bool polyline(ScriptSession& session, ScriptArguments& arguments) {
  auto chain = std::make_unique<ZnDbPolyline>();
  while (arguments.left() > 0) {
    if (arguments.keyword("CLOSE")) {
      chain->setClosed(true);
      break;
    }
    ZnGePoint3d point;
    double bulge = 0.0;
    if (!arguments.point(point, "a point x,y, BULGE or CLOSE")) return false;
    if (arguments.keyword("BULGE") && !arguments.number(bulge, "the bulge")) return false;
    if (std::abs(bulge) < kLeastSize) bulge = 0.0;
    chain->addVertexAt(chain->vertexCount(), ZnGePoint2d(point.x, point.y), bulge);
  }
  if (!arguments.end()) return false;
  if (chain->vertexCount() < 2) return arguments.fail("the line ends too early", "at least two points");
  return append(session, arguments, std::move(chain));
}

bool rectangle(ScriptSession& session, ScriptArguments& arguments) {
  ZnGePoint3d a, b;
  if (!arguments.point(a, "a corner x,y") || !arguments.point(b, "the opposite corner x,y") ||
      !arguments.end())
    return false;
  auto outline = std::make_unique<ZnDbPolyline>();
  for (const ZnGePoint2d& corner :
       {ZnGePoint2d(a.x, a.y), ZnGePoint2d(b.x, a.y), ZnGePoint2d(b.x, b.y), ZnGePoint2d(a.x, b.y)})
    outline->addVertexAt(outline->vertexCount(), corner);
  outline->setClosed(true);
  return append(session, arguments, std::move(outline));
}

bool text(ScriptSession& session, ScriptArguments& arguments) {
  ZnGePoint3d position;
  double height = 0.0, angle = 0.0;
  std::string words;
  if (!arguments.point(position) || !arguments.positive(height, "a height above 0") ||
      !arguments.text(words, "the text in quotes"))
    return false;
  if (arguments.left() > 0 && !arguments.number(angle, "the angle in degrees")) return false;
  if (!arguments.end()) return false;
  return append(session, arguments,
                std::make_unique<ZnDbText>(position, ZnString::fromUtf8(words), height, radians(angle)));
}

constexpr ScriptCommand kCommands[] = {
    {"LINE", "x,y x,y", line},
    {"CIRCLE", "CENTER RADIUS", circle},
    {"ARC", "CENTER RADIUS START END    angles in degrees, counterclockwise", arc},
    {"POLYLINE", "x,y [BULGE b] x,y ... [CLOSE]", polyline},
    {"RECTANGLE", "CORNER CORNER", rectangle},
    {"TEXT", "x,y HEIGHT \"text\" [ANGLE]", text},
};

} // namespace

std::span<const ScriptCommand> drawCommands() { return kCommands; }

} // namespace app
