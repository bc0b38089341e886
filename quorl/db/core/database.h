// A drawing: the door to its objects, tables, header values, variables, undo history and watchers, each of
// which is a part of its own.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "quorl/base/array.h"
#include "quorl/db/core/drawing_variables.h"
#include "quorl/db/core/header_ids.h"
#include "quorl/db/core/line_weight.h"
#include "quorl/db/core/object.h"
#include "quorl/ge/matrix3d.h"
#include "quorl/rx/variable_store.h"
#include "quorl/rx/variable_value.h"

class ZnDbDatabaseReactor;
class ZnDbIdMapping;
class ZnDbSymbolTable;
class ZnDbUndoRecorder;
class ZnDbTransactionManager;

class ZnDbDatabase : public ZnRxObject, public ZnRxVariableStore {
  ZNRX_DECLARE_MEMBERS(ZnDbDatabase)

public:
  // With defaults the drawing has its tables, layer "0", standard linetypes, spaces and layouts; without it
  // is bare, for a reader to fill.
  explicit ZnDbDatabase(bool buildDefaults = true);
  ~ZnDbDatabase() override;

  // Objects. addObject gives the object an id, makes the owner its owner (without telling the owner) and
  // leaves it open for write; the database owns it from then on. eAlreadyInDatabase.
  Quorl::ErrorStatus addObject(ZnDbObject* object, ZnDbObjectId owner, ZnDbObjectId& id);
  // The id of a handle. Without create a handle that names nothing gives eKeyNotFound; with it a slot
  // without object is made, which a reader fills. extra is for the caller's bookkeeping and not looked at.
  Quorl::ErrorStatus getZnDbObjectId(ZnDbObjectId& id, bool create, ZnDbHandle handle,
                                     std::uint32_t extra = 0);
  // For readers: puts an object, read later, into a slot without one; the drawing owns it. eDuplicateKey.
  Quorl::ErrorStatus installObject(ZnDbObjectId id, ZnDbObject* object);
  // Puts another object in the place of a closed one, whose fields the caller has carried over; gives back
  // the one that stood there, in no database any more. Attaching the new one's links is the caller's.
  ZnDbObject* replaceObject(ZnDbObjectId id, ZnDbObject* object);
  // All slots with an object, erased ones too, in order of handles.
  std::vector<ZnDbObjectId> allObjectIds() const;
  size_t objectCount() const; // not erased
  ZnDbHandle nextHandle() const;
  void setNextHandle(ZnDbHandle next);

  // Tables and dictionaries; null in a bare drawing until its reader sets them.
  ZnDbObjectId blockTableId() const { return ids_.blockTable; }
  ZnDbObjectId layerTableId() const { return ids_.layerTable; }
  ZnDbObjectId linetypeTableId() const { return ids_.linetypeTable; }
  ZnDbObjectId dimStyleTableId() const { return ids_.dimStyleTable; }
  ZnDbObjectId namedObjectsDictionaryId() const { return ids_.namedObjects; }
  // The table whose records are of that class, opened; the caller closes it.
  Quorl::ErrorStatus getSymbolTable(ZnDbSymbolTable*& table, const ZnRxClass* recordClass, ZnDbOpenMode mode);
  ZnDbObjectId getLayoutDictionary() const;

  // Header values
  ZnDbObjectId modelSpaceId() const { return ids_.modelSpace; }
  ZnDbObjectId paperSpaceId() const { return ids_.paperSpace; }
  ZnDbObjectId currentSpaceId() const { return ids_.currentSpace; }
  Quorl::ErrorStatus setCurrentSpaceId(ZnDbObjectId blockRecord);
  ZnDbObjectId clayer() const { return ids_.clayer; }
  Quorl::ErrorStatus setCurrentLayer(ZnDbObjectId layer);
  ZnDbObjectId celtype() const { return ids_.celtype; }
  Quorl::ErrorStatus setCurrentLinetype(ZnDbObjectId linetype);
  ZnDbObjectId dimstyle() const { return ids_.dimstyle; }
  Quorl::ErrorStatus setCurrentDimensionStyle(ZnDbObjectId style);
  ZnDbObjectId layerZero() const { return ids_.layerZero; }
  ZnDbObjectId byLayerLinetype() const { return ids_.byLayer; }
  ZnDbObjectId byBlockLinetype() const { return ids_.byBlock; }
  ZnDbObjectId continuousLinetype() const { return ids_.continuous; }
  double ltscale() const { return variables_.linetypeScale(); }
  Quorl::ErrorStatus setLtscale(double scale);
  const ZnGeMatrix3d& ucsMatrix() const { return ucsMatrix_; }
  void setUcsMatrix(const ZnGeMatrix3d& ucs) { ucsMatrix_ = ucs; }
  int insertionUnits() const { return insertionUnits_; } // 4 is millimetres, 1 inches, 0 none
  void setInsertionUnits(int units) { insertionUnits_ = units; }

  // Variables of drawing scope, see ZnRxVariableStore. A change is undoable, and reactors are notified.
  const ZnRxVariableValue* find(ZnAtom name) const override { return variables_.find(name); }
  void put(ZnAtom name, const ZnRxVariableValue& value) override;
  // For readers: nobody is told, and there is nothing to undo.
  void installVariable(ZnAtom name, const ZnRxVariableValue& value);
  const std::unordered_map<ZnAtom, ZnRxVariableValue>& variables() const { return variables_.all(); }

  // Linetypes and lineweights
  // Loads a linetype by name ("*" for all) from a linetype file on the resource or file path. eNotFound for
  // the file, eKeyNotFound for the name, eDuplicateKey when it is there already, eInvalidInput for a bad
  // line.
  Quorl::ErrorStatus loadLineTypeFile(const ZnString& name, const ZnString& file);
  static ZnDb::LineWeight getNearestLineWeight(int hundredthsOfMm);

  // The version of the file that the drawing was read from; of this program for a new one.
  int originalFileSavedByVersion() const { return savedByVersion_; }
  int originalFileSavedByMaintenanceVersion() const { return savedByMaintenanceVersion_; }
  void setOriginalFileSavedBy(int version, int maintenance);
  const ZnString& fileName() const { return fileName_; }
  void setFileName(const ZnString& name) { fileName_ = name; }

  // Watchers; not owned.
  void addReactor(ZnDbDatabaseReactor* reactor);
  void removeReactor(ZnDbDatabaseReactor* reactor);
  const std::vector<ZnDbDatabaseReactor*>& reactors() const { return reactors_; }

  // Undo. Steps are begun by startUndoStep; everything until the next begins to one step. Recording starts
  // on.
  ZnDbUndoRecorder& undoRecorder() { return *undo_; }
  ZnDbTransactionManager& transactionManager() { return *transactions_; }
  bool isUndoing() const;

  using HeaderIds = ZnDbHeaderIds;
  const HeaderIds& headerIds() const { return ids_; }
  void setHeaderIds(const HeaderIds& ids) { ids_ = ids; }

  // Clones the objects (all in one database) into the owner, which may be of another database, with what
  // they own; ids among the clones are translated, others stay within one database and become null across.
  // arePrimary is noted in the pairs of the objects that were asked for.
  // Events: begin, translation begins, end, or aborted on failure, when nothing is left behind.
  Quorl::ErrorStatus deepCloneObjects(const ZnArray<ZnDbObjectId>& objects, ZnDbObjectId owner,
                                      ZnDbIdMapping& mapping, bool arePrimary = true);

  // Faults of all objects, links and tables; each is one line.
  std::vector<ZnString> audit(bool fix);

private:
  friend class ZnDbUndoRecorder;
  friend class ZnDbObject;
  friend struct ZnDbObjectAccess;

  void noteHeaderChange(const ZnString& name, bool before);
  void changeHeader(const ZnString& name, std::function<void()> exchange); // which is its own inverse
  Quorl::ErrorStatus changeHeaderId(ZnDbObjectId ZnDbHeaderIds::*place, ZnDbObjectId id, const ZnRxClass* cls,
                                    const wchar_t* name);

  std::unique_ptr<class ZnDbSlotTable> slots_;
  ZnDbHeaderIds ids_;
  ZnGeMatrix3d ucsMatrix_;
  int insertionUnits_ = 4;
  int savedByVersion_, savedByMaintenanceVersion_;
  ZnString fileName_;
  ZnDbDrawingVariables variables_;
  std::vector<ZnDbDatabaseReactor*> reactors_;
  std::unique_ptr<ZnDbUndoRecorder> undo_;
  std::unique_ptr<ZnDbTransactionManager> transactions_;
};

// The user coordinate system of a database, or of the working one when given null; identity without any.
ZnGeMatrix3d zndbUcsMatrix(const ZnDbDatabase* database = nullptr);
