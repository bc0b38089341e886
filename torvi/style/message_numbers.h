// The numbers under which the module's texts stand in its resource library. Formats say what they take.
#pragma once

enum TorviMessage : unsigned {
  kTorviMsgStartPointName = 29,
  kTorviMsgEndPointName = 30,
  kTorviMsgDisplayNameName = 264,

  // Names of properties
  kTorviMsgLeftOvershootName = 1434,
  kTorviMsgRightOvershootName = 1435,
  kTorviMsgBottomOvershootName = 1436,
  kTorviMsgTopOvershootName = 1437,
  kTorviMsgExtensionLinesVisibleName = 1438,
  kTorviMsgAssociativeName = 1439,
  kTorviMsgStartExtensionName = 1440,
  kTorviMsgEndExtensionName = 1441,
  kTorviMsgCrossSizeName = 1442,
  kTorviMsgCrossGapName = 1443,

  // Descriptions of properties
  kTorviMsgMarkAssociativeText = 1444,
  kTorviMsgLineAssociativeText = 1445,
  kTorviMsgStartExtensionText = 1446,
  kTorviMsgEndExtensionText = 1447,
  kTorviMsgLeftOvershootText = 1448,
  kTorviMsgRightOvershootText = 1449,
  kTorviMsgTopOvershootText = 1450,
  kTorviMsgBottomOvershootText = 1451,
  kTorviMsgExtensionLinesVisibleText = 1452,
  kTorviMsgCrossSizeText = 1453,
  kTorviMsgCrossGapText = 1454,
  kTorviMsgDisplayNameText = 1455,
  kTorviMsgStartPointText = 1456,
  kTorviMsgEndPointText = 1457,
  kTorviMsgRotationName = 1458,
  kTorviMsgRotationText = 1459,
  kTorviMsgAnnotativeName = 1460,
  kTorviMsgAnnotativeText = 1461,

  // What kind an object is called
  kTorviMsgMarkTypeName = 2015,
  kTorviMsgLineTypeName = 2016,

  // Refused values of system variables
  kTorviMsgInvalidLength = 2017,
  kTorviMsgInvalidLinetypeScale = 2018,
  kTorviMsgInvalidLinetype = 2019,
  kTorviMsgInvalidLineWeight = 2020,
  kTorviMsgInvalidLayerName = 2021,

  // Listing, one line each; lengths are doubles, points three doubles
  kTorviMsgMarkHeading = 2022,
  kTorviMsgLineHeading = 2023,
  kTorviMsgIsAssociative = 2024,
  kTorviMsgIsNotAssociative = 2025,
  kTorviMsgMarkOvershoots = 2026, // bottom, top, right, left
  kTorviMsgLineOvershoots = 2027, // start, end
  kTorviMsgMarkPosition = 2028,   // point
  kTorviMsgLineEnds = 2029,       // start point, end point
  kTorviMsgLineLength = 2030,     // length
  kTorviMsgExtensionLinesShown = 2031,
  kTorviMsgExtensionLinesHidden = 2032,

  // An object has lost its edges
  kTorviMsgMarkDisassociated = 2033,
  kTorviMsgLineDisassociated = 2034,
  kTorviMsgEdgeExtensionDisassociated = 2038,
  kTorviMsgPatternDisassociated = 2039,

  // A cross and its gaps are larger than the circle: the first sentence, then one of the two others
  kTorviMsgCrossDoesNotFit = 2035,
  kTorviMsgLargestThatFits = 2036, // the value's text
  kTorviMsgNoneFits = 2037,        // a variable's name, twice

  kTorviMsgDefaultLinetype = 2040,
};
