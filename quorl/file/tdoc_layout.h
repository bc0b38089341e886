// How a drawing lies in the text format: pairs of lines, group code and value, in four sections.
//
//   1000 "QUORL-TDOC 1"                      the file's mark and version
//   1000 "HEADER"    items named by code 2   values of ZnDrawingHeader, then variables, named by code 3
//   1000 "CLASSES"   1 name, 2 text name, 3 application, 4 parent, 90 version, 91 maintenance, 92 proxy flags
//   1000 "OBJECTS"   0 label of the class, 5 handle, fields; in order of handles
//   1000 "END"
//
// A section ends with code 1001 and the xxHash64 of its lines, from after its name to before that code. Lines
// may end in a carriage return as well, which does not count.
#pragma once

namespace Quorl {

constexpr int kTdocSection = 1000, kTdocChecksum = 1001;
constexpr int kTdocVersion = 1;
constexpr char kTdocMark[] = "QUORL-TDOC ";
constexpr char kTdocStart[] = "1000\nQUORL-TDOC ";

constexpr int kTdocObject = 0, kTdocHandle = 5;
constexpr int kHeaderName = 2, kVariableName = 3;
constexpr int kHeaderInteger = 90, kHeaderCount = 160, kHeaderReal = 40;
// A variable's value has the code of its type, in the order of ZnRxVariableType.
constexpr int kVariableCodes[] = {290, 60, 90, 40, 1};
constexpr int kClassTexts[] = {1, 2, 3, 4};
constexpr int kClassNumbers[] = {90, 91, 92};

} // namespace Quorl
