// The status of every fallible operation of the host and of the modules above it.
// Statuses cross every interface; nothing throws across one.
#pragma once

namespace Quorl {

// Numbers are part of the interface: modules and scripts see them. 0 is success.
enum ErrorStatus : int {
  eOk = 0,
  eNotProvided = 1,  // the operation is not provided by this class
  eNothingToDo = 2,  // nothing to work on, or no meaning for this object
  eInvalidInput = 3, // bad input or failed lookup, the general failure
  eDuplicateKey = 4, // a record or dictionary entry of that name exists
  eKeyNotFound = 5,  // no record or dictionary entry of that name
  eNullObjectId = 6,
  eInvalidOwner = 7, // the object can't live in that owner
  eAlreadyInDatabase = 8,
  eNotInDatabase = 9,
  eDegenerateGeometry = 10, // a shape without extent where one is needed
  eOutOfRange = 11,         // an index or value outside the allowed range
  eNonUniformScale = 12,    // the transform would leave the class's shapes
  eFilerError = 13,         // reading past the end, or a sink that takes no more
  eFileAccess = 14,         // the file can't be opened, read or written
  eNullObjectPointer = 15,  // a holder without object
  eFileDamaged = 16,        // a checksum or structure that does not hold
  eVetoed = 17,             // a reactor refused the change
  eVariableReadOnly = 18,
  eCyclicDependency = 19, // actions that wait for each other
  eNotFound = 20,         // a file, linetype or module that isn't there
  eVersionMismatch = 21,  // a module built for another interface version
  eLinetypeNotLoaded = 22,
  eWasErased = 23,
  ePermanentlyErased = 24,
  eWasOpenForRead = 25,
  eWasOpenForWrite = 26,
  eWasOpenForNotify = 27,
  eOnLockedLayer = 28,
  eNoTransaction = 29,
  eNothingToUndo = 30,
  eNotOpenForWrite = 31,
  eInvalidName = 32,      // a symbol name with characters that are not allowed
  eInUse = 33,            // what others, or every drawing, can't do without is not erased or renamed
  eWrongWrapperKind = 34, // a wrapper of the wrong kind for this object
  eExternalDrawing = 35,  // what belongs to an external drawing is changed there
  eNotOpenedYet = 44,     // start state of a holder
  eHeldForReadOnly = 45,  // the holder has the object for read only
  eWrongObjectClass = 46,
  eUnexpectedGroupCode = 50,
  eNoDatabase = 124,   // no working database
  eNewerVersion = 301, // the stored object is newer than this code
  eNoInputEdges = 335,
  eInvalidLinetypeId = 600,
};

// The enumerator's name without its prefix, for messages; never null.
const char* errorStatusText(ErrorStatus status);

} // namespace Quorl
