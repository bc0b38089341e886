// The module's texts in German. Formats and their arguments are those of message_numbers.h.
#include "torvi/host/export.h"
#include "torvi/host/runtime.h"
#include "torvi/style/message_numbers.h"

namespace {

constexpr ZnRxResourceText kTexts[] = {
    {kTorviMsgStartPointName, L"Startpunkt"},
    {kTorviMsgEndPointName, L"Endpunkt"},
    {kTorviMsgDisplayNameName, L"Name"},
    {kTorviMsgLeftOvershootName, L"Überstand links"},
    {kTorviMsgRightOvershootName, L"Überstand rechts"},
    {kTorviMsgBottomOvershootName, L"Überstand unten"},
    {kTorviMsgTopOvershootName, L"Überstand oben"},
    {kTorviMsgExtensionLinesVisibleName, L"Verlängerungen zeigen"},
    {kTorviMsgAssociativeName, L"Assoziativ"},
    {kTorviMsgStartExtensionName, L"Verlängerung am Anfang"},
    {kTorviMsgEndExtensionName, L"Verlängerung am Ende"},
    {kTorviMsgCrossSizeName, L"Kreuzgröße"},
    {kTorviMsgCrossGapName, L"Kreuzabstand"},
    {kTorviMsgMarkAssociativeText, L"Ob die Zentrumsmarke ihrem Kreis oder Bogen folgt"},
    {kTorviMsgLineAssociativeText, L"Ob die Mittellinie ihren beiden Kanten folgt"},
    {kTorviMsgStartExtensionText, L"Wie weit die Mittellinie über ihren Anfang hinausgeht"},
    {kTorviMsgEndExtensionText, L"Wie weit die Mittellinie über ihr Ende hinausgeht"},
    {kTorviMsgLeftOvershootText, L"Wie weit die linke Verlängerung über ihr Ende hinausgeht"},
    {kTorviMsgRightOvershootText, L"Wie weit die rechte Verlängerung über ihr Ende hinausgeht"},
    {kTorviMsgTopOvershootText, L"Wie weit die obere Verlängerung über ihr Ende hinausgeht"},
    {kTorviMsgBottomOvershootText, L"Wie weit die untere Verlängerung über ihr Ende hinausgeht"},
    {kTorviMsgExtensionLinesVisibleText, L"Ob die vier Verlängerungen zu sehen sind"},
    {kTorviMsgCrossSizeText, L"Länge des Kreuzes: eine Zahl, ein Anteil des Durchmessers wie 0.1x oder "
                             L"ByLinetype"},
    {kTorviMsgCrossGapText, L"Abstand zwischen Kreuz und Verlängerungen: eine Zahl, ein Anteil des "
                            L"Durchmessers wie 0.05x oder ByLinetype"},
    {kTorviMsgDisplayNameText, L"Name des Objekts"},
    {kTorviMsgStartPointText, L"Punkt, an dem die Mittellinie beginnt"},
    {kTorviMsgEndPointText, L"Punkt, an dem die Mittellinie endet"},
    {kTorviMsgRotationName, L"Drehung"},
    {kTorviMsgRotationText, L"Winkel, um den die Zentrumsmarke in ihrer Ebene gedreht ist"},
    {kTorviMsgAnnotativeName, L"Beschriftend"},
    {kTorviMsgAnnotativeText, L"Ob das Objekt seine Größe aus dem Beschriftungsmaßstab nimmt"},
    {kTorviMsgMarkTypeName, L"Zentrumsmarke"},
    {kTorviMsgLineTypeName, L"Mittellinie"},
    {kTorviMsgInvalidLength, L"Erwartet wird eine Zahl, ein Anteil des Durchmessers wie 0.1x oder "
                             L"ByLinetype."},
    {kTorviMsgInvalidLinetypeScale, L"Der Linientypfaktor muss größer als null sein."},
    {kTorviMsgInvalidLinetype, L"Diesen Linientyp gibt es weder in der Zeichnung noch in der "
                               L"Linientypdatei."},
    {kTorviMsgInvalidLineWeight, L"Das ist keine Linienstärke."},
    {kTorviMsgInvalidLayerName, L"Das ist kein gültiger Layername."},
    {kTorviMsgMarkHeading, L"Zentrumsmarke\n"},
    {kTorviMsgLineHeading, L"Mittellinie\n"},
    {kTorviMsgIsAssociative, L"  Assoziativ: ja\n"},
    {kTorviMsgIsNotAssociative, L"  Assoziativ: nein\n"},
    {kTorviMsgMarkOvershoots, L"  Überstände: unten %.8g, oben %.8g, rechts %.8g, links %.8g\n"},
    {kTorviMsgLineOvershoots, L"  Überstände: Anfang %.8g, Ende %.8g\n"},
    {kTorviMsgMarkPosition, L"  Position: %.8g, %.8g, %.8g\n"},
    {kTorviMsgLineEnds, L"  Von %.8g, %.8g, %.8g bis %.8g, %.8g, %.8g\n"},
    {kTorviMsgLineLength, L"  Länge: %.8g\n"},
    {kTorviMsgExtensionLinesShown, L"  Verlängerungen: sichtbar\n"},
    {kTorviMsgExtensionLinesHidden, L"  Verlängerungen: verborgen\n"},
    {kTorviMsgMarkDisassociated, L"Eine Zentrumsmarke folgt ihrem Kreis oder Bogen nicht mehr."},
    {kTorviMsgLineDisassociated, L"Eine Mittellinie folgt ihren Kanten nicht mehr."},
    {kTorviMsgCrossDoesNotFit, L"Das Kreuz und seine beiden Abstände wären größer als der Kreis. "},
    {kTorviMsgLargestThatFits, L"Der größte passende Wert ist %s."},
    {kTorviMsgNoneFits, L"%s allein lässt keinen Platz: zuerst %s verkleinern."},
    {kTorviMsgEdgeExtensionDisassociated, L"Verlängerungslinien folgen ihren Kanten nicht mehr."},
    {kTorviMsgPatternDisassociated, L"Ein Muster aus Zentrumsmarken folgt seinen Kreisen nicht mehr."},
    {kTorviMsgDefaultLinetype, L"CENTER"},
    {0, nullptr},
};

} // namespace

extern "C" TORVI_EXPORT const ZnRxResourceText* znrxResourceTable() { return kTexts; }
