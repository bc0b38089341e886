#include "quorl/base/error_status.h"

namespace Quorl {

const char* errorStatusText(ErrorStatus status) {
  switch (status) {
  case eOk:
    return "ok";
  case eNotProvided:
    return "not provided by this class";
  case eNothingToDo:
    return "nothing to work on";
  case eInvalidInput:
    return "invalid input";
  case eDuplicateKey:
    return "name already taken";
  case eInUse:
    return "in use";
  case eExternalDrawing:
    return "part of an external drawing";
  case eKeyNotFound:
    return "name not found";
  case eNullObjectId:
    return "null object id";
  case eInvalidOwner:
    return "object can't live in that owner";
  case eAlreadyInDatabase:
    return "object is already in a drawing";
  case eNotInDatabase:
    return "object is in no drawing";
  case eDegenerateGeometry:
    return "degenerate geometry";
  case eOutOfRange:
    return "value out of range";
  case eNonUniformScale:
    return "scale differs between axes";
  case eFilerError:
    return "data ended too early";
  case eFileAccess:
    return "file can't be read or written";
  case eNullObjectPointer:
    return "no object";
  case eFileDamaged:
    return "file is damaged";
  case eVetoed:
    return "change refused";
  case eVariableReadOnly:
    return "variable is read only";
  case eCyclicDependency:
    return "actions depend on each other in a circle";
  case eNotFound:
    return "not found";
  case eVersionMismatch:
    return "built for another interface version";
  case eLinetypeNotLoaded:
    return "linetype can't be loaded";
  case eWasErased:
    return "object is erased";
  case ePermanentlyErased:
    return "object is gone";
  case eWasOpenForRead:
    return "object is open for read";
  case eWasOpenForWrite:
    return "object is open for write";
  case eWasOpenForNotify:
    return "object is open for notification";
  case eOnLockedLayer:
    return "object is on a locked layer";
  case eNoTransaction:
    return "no transaction";
  case eNothingToUndo:
    return "nothing to undo";
  case eNotOpenForWrite:
    return "object is not open for write";
  case eInvalidName:
    return "invalid name";
  case eWrongWrapperKind:
    return "center object of another kind";
  case eNotOpenedYet:
    return "object is not opened";
  case eHeldForReadOnly:
    return "object is held for read only";
  case eWrongObjectClass:
    return "object of another class";
  case eUnexpectedGroupCode:
    return "unexpected group code";
  case eNoDatabase:
    return "no working drawing";
  case eNewerVersion:
    return "stored object is newer than this program";
  case eNoInputEdges:
    return "no input edges";
  case eInvalidLinetypeId:
    return "not a linetype";
  }
  return "unknown status";
}

} // namespace Quorl
