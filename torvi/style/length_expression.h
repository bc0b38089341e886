// The grammar of length expressions: "0.1x" relative to a base, "2.5" in drawing units, or "ByLinetype".
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/runtime.h"

TORVI_EXPORT extern const ZnString kByLinetypeExpression; // "BYLINETYPE", compared without regard to case
TORVI_EXPORT extern const ZnString kDefaultCrossLengthExpression;
TORVI_EXPORT extern const ZnString kDefaultCrossGapExpression;

// Whether the text is valid. normalised gets it without blanks, with a lower-case "x", digits as typed, or as
// "ByLinetype"; number gets its value and stays as it is for "ByLinetype". Both stay on an invalid text.
// std::out_of_range for a valid number that no double holds.
TORVI_EXPORT bool parseLengthExpression(const ZnString& expression, ZnString& normalised, double& number);
// The same for the length of a cross, which can't be 0; a refused text leaves normalised empty.
TORVI_EXPORT bool isValidCrossSizeExpression(const ZnString& expression, ZnString& normalised);
TORVI_EXPORT bool isByLinetypeExpression(const ZnString& expression);
// By its last character alone.
TORVI_EXPORT bool isRelativeLengthExpression(const ZnString& expression);
// The shortest relative expression of that factor.
TORVI_EXPORT ZnString formatRelativeLength(double number);
