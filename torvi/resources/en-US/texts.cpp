// The module's texts in English. Formats and their arguments are those of message_numbers.h.
#include "torvi/host/export.h"
#include "torvi/host/runtime.h"
#include "torvi/style/message_numbers.h"

namespace {

constexpr ZnRxResourceText kTexts[] = {
    {kTorviMsgStartPointName, L"Start point"},
    {kTorviMsgEndPointName, L"End point"},
    {kTorviMsgDisplayNameName, L"Name"},
    {kTorviMsgLeftOvershootName, L"Left overshoot"},
    {kTorviMsgRightOvershootName, L"Right overshoot"},
    {kTorviMsgBottomOvershootName, L"Bottom overshoot"},
    {kTorviMsgTopOvershootName, L"Top overshoot"},
    {kTorviMsgExtensionLinesVisibleName, L"Show extension lines"},
    {kTorviMsgAssociativeName, L"Associative"},
    {kTorviMsgStartExtensionName, L"Start extension"},
    {kTorviMsgEndExtensionName, L"End extension"},
    {kTorviMsgCrossSizeName, L"Cross size"},
    {kTorviMsgCrossGapName, L"Cross gap"},
    {kTorviMsgMarkAssociativeText, L"Whether the center mark follows its circle or arc"},
    {kTorviMsgLineAssociativeText, L"Whether the center line follows its two edges"},
    {kTorviMsgStartExtensionText, L"How far the center line extends beyond its start"},
    {kTorviMsgEndExtensionText, L"How far the center line extends beyond its end"},
    {kTorviMsgLeftOvershootText, L"How far the left extension line passes its end"},
    {kTorviMsgRightOvershootText, L"How far the right extension line passes its end"},
    {kTorviMsgTopOvershootText, L"How far the top extension line passes its end"},
    {kTorviMsgBottomOvershootText, L"How far the bottom extension line passes its end"},
    {kTorviMsgExtensionLinesVisibleText, L"Whether the four extension lines are shown"},
    {kTorviMsgCrossSizeText, L"Length of the cross: a number, a share of the diameter such as 0.1x, or "
                             L"ByLinetype"},
    {kTorviMsgCrossGapText, L"Gap between cross and extension lines: a number, a share of the diameter "
                            L"such as 0.05x, or ByLinetype"},
    {kTorviMsgDisplayNameText, L"Name of the object"},
    {kTorviMsgStartPointText, L"Point at which the center line starts"},
    {kTorviMsgEndPointText, L"Point at which the center line ends"},
    {kTorviMsgRotationName, L"Rotation"},
    {kTorviMsgRotationText, L"Angle by which the center mark is turned in its plane"},
    {kTorviMsgAnnotativeName, L"Annotative"},
    {kTorviMsgAnnotativeText, L"Whether the object takes its size from the annotation scale"},
    {kTorviMsgMarkTypeName, L"Center Mark"},
    {kTorviMsgLineTypeName, L"Center Line"},
    {kTorviMsgInvalidLength, L"Enter a number, a share of the diameter such as 0.1x, or ByLinetype."},
    {kTorviMsgInvalidLinetypeScale, L"The linetype scale must be above zero."},
    {kTorviMsgInvalidLinetype, L"There is no such linetype in the drawing or in the linetype file."},
    {kTorviMsgInvalidLineWeight, L"That is no lineweight."},
    {kTorviMsgInvalidLayerName, L"That is no valid layer name."},
    {kTorviMsgMarkHeading, L"Center mark\n"},
    {kTorviMsgLineHeading, L"Center line\n"},
    {kTorviMsgIsAssociative, L"  Associative: yes\n"},
    {kTorviMsgIsNotAssociative, L"  Associative: no\n"},
    {kTorviMsgMarkOvershoots, L"  Overshoots: bottom %.8g, top %.8g, right %.8g, left %.8g\n"},
    {kTorviMsgLineOvershoots, L"  Overshoots: start %.8g, end %.8g\n"},
    {kTorviMsgMarkPosition, L"  Position: %.8g, %.8g, %.8g\n"},
    {kTorviMsgLineEnds, L"  From %.8g, %.8g, %.8g to %.8g, %.8g, %.8g\n"},
    {kTorviMsgLineLength, L"  Length: %.8g\n"},
    {kTorviMsgExtensionLinesShown, L"  Extension lines: shown\n"},
    {kTorviMsgExtensionLinesHidden, L"  Extension lines: hidden\n"},
    {kTorviMsgMarkDisassociated, L"A center mark no longer follows its circle or arc."},
    {kTorviMsgLineDisassociated, L"A center line no longer follows its edges."},
    {kTorviMsgCrossDoesNotFit, L"The cross and its two gaps would be larger than the circle. "},
    {kTorviMsgLargestThatFits, L"The largest value that fits is %s."},
    {kTorviMsgNoneFits, L"%s alone leaves no room: make %s smaller first."},
    {kTorviMsgEdgeExtensionDisassociated, L"Extension lines no longer follow their edges."},
    {kTorviMsgPatternDisassociated, L"A center mark pattern no longer follows its circles."},
    {kTorviMsgDefaultLinetype, L"CENTER"},
    {0, nullptr},
};

} // namespace

extern "C" TORVI_EXPORT const ZnRxResourceText* znrxResourceTable() { return kTexts; }
