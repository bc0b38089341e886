// Reduces the segments of a contour to pieces: neighbours that lie on one circle or one ellipse become one.
#pragma once

#include "interchange/recognize/circle_fit.h"
#include "interchange/recognize/contour.h"
#include "interchange/recognize/fit_options.h"
#include "interchange/recognize/shape.h"

#include <cstddef>
#include <vector>

namespace interchange {

enum class PieceKind { Line, Arc, Cubic, Ellipse };

struct Piece {
  PieceKind kind = PieceKind::Line;
  ZnGePoint2d start;
  ZnGePoint2d end;
  CenterRadius circle; // arc only
  double sweep = 0;    // arc only, signed
  Fit fit;             // arc only
  EllipticArc ellipse; // ellipse only
  Segment cubic;       // cubic only
};

// The pieces in drawing order. An arc that a closed contour starts in the middle of is one piece; the list
// then starts with what follows it. Free curves stay cubics. Time grows with n log n at worst.
std::vector<Piece> reduceToPieces(const Contour& contour, const FitOptions& options);

} // namespace interchange
