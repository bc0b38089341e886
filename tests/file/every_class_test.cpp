// What follows from the one list of fields a class, for every class of which a drawing of the host holds
// objects: both formats, copies, damage, undo, the walk by name, and the audit.
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "file/every_class_drawing.h"
#include "quorl/assoc/network.h"
#include "quorl/db/core/field_visitor.h"
#include "quorl/db/core/field_walks.h"
#include "quorl/db/core/memory_filer.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/entity/line.h"
#include "quorl/file/handle_index.h"
#include "quorl/file/record_filer.h"
#include "quorl/file/text_in_filer.h"
#include "quorl/file/text_out_filer.h"

using namespace fileTest;
using Quorl::ErrorStatus;

namespace {

std::string bytesOf(const ZnDbObject& object) {
  ZnDbMemoryFiler filer(ZnDbFiler::kClone);
  EXPECT_EQ(object.bdocOutFields(filer), Quorl::eOk);
  return filer.takeBytes();
}
std::string linesOf(const ZnDbObject& object) {
  std::string text;
  ZnDbTextOutFiler filer(text);
  EXPECT_EQ(object.tdocOutFields(filer), Quorl::eOk);
  return text;
}
ZnDbObjectRecord recordOf(const ZnDbObject& object) {
  ZnDbObjectRecord record;
  ZnDbRecordFiler filer(record);
  EXPECT_EQ(object.bdocOutFields(filer), Quorl::eOk);
  return record;
}
std::unique_ptr<ZnDbObject> fresh(const ZnDbObject& object) {
  return std::unique_ptr<ZnDbObject>(static_cast<ZnDbObject*>(object.isA()->create()));
}

class EveryClass : public testing::Test {
protected:
  EveryClass() {
    for (const ZnDbObjectId id : drawing->allObjectIds()) {
      index.add(id.handle().value, id);
      // A member of a network is filed as owned by what the network is, which a copy of it is not.
      if (!id.isErased() && !id.isDerivedFrom(ZnDbAssocNetwork::desc())) objects.push_back(id.slot()->object);
    }
    index.finish();
  }
  ErrorStatus readRecord(ZnDbObject& object, ZnDbObjectRecord& record) {
    ZnDbRecordFiler filer(record, drawing.get());
    const ErrorStatus status = object.bdocInFields(filer);
    return status == Quorl::eOk && !filer.atEnd() ? Quorl::eFileDamaged : status;
  }
  ErrorStatus readLines(ZnDbObject& object, const std::string& lines) {
    ZnDbTextInFiler filer(lines, drawing.get(), index, 1);
    const ErrorStatus status = object.tdocInFields(filer);
    return status == Quorl::eOk && !filer.atEndOfObject() ? Quorl::eFileDamaged : status;
  }

  // As it is read: a reference to what was erased is null by then.
  std::unique_ptr<ZnDbDatabase> drawing = opened(written(*everyClassDrawing(), ZnDrawingFormat::kBinary));
  ZnHandleIndex index;
  std::vector<ZnDbObject*> objects;
};

TEST_F(EveryClass, IsInTheDrawing) {
  std::set<std::string> missing;
  for (const ZnRxClass* cls : znrxClasses())
    if (cls->isDerivedFrom(ZnDbObject::desc()) && !cls->isAbstract() && cls->appName() == L"Quorl" &&
        !cls->tdocName().isEmpty())
      missing.insert(cls->name().utf8());
  ASSERT_GE(missing.size(), 30u);
  for (const ZnDbObjectId id : drawing->allObjectIds())
    if (!id.isErased()) missing.erase(id.objectClass()->name().utf8());
  EXPECT_EQ(missing, std::set<std::string>());
}

TEST_F(EveryClass, ComesBackThroughEveryFiler) {
  for (const ZnDbObject* object : objects) {
    SCOPED_TRACE(object->isA()->name().utf8());
    const std::string bytes = bytesOf(*object), lines = linesOf(*object);
    const std::unique_ptr<ZnDbObject> fromRecord = fresh(*object), fromLines = fresh(*object);
    ZnDbObjectRecord record = recordOf(*object);
    EXPECT_EQ(readRecord(*fromRecord, record), Quorl::eOk);
    EXPECT_EQ(readLines(*fromLines, lines), Quorl::eOk);
    const std::unique_ptr<ZnRxObject> cloned(object->clone());
    auto* clone = static_cast<ZnDbObject*>(cloned.get());
    EXPECT_TRUE(clone->objectId().isNull() && clone->extensionDictionary().isNull());
    for (const ZnDbObject* copy : {fromRecord.get(), fromLines.get(), clone}) {
      if (copy != clone) EXPECT_EQ(bytesOf(*copy), bytes);
      if (copy != clone || object->extensionDictionary().isNull()) {
        EXPECT_EQ(linesOf(*copy), lines);
        EXPECT_TRUE(copy->hasSameFields(*object));
      }
    }
  }
}

TEST_F(EveryClass, LeavesUnknownItemsOfTextAloneAndKeepsWhatIsMissing) {
  for (const ZnDbObject* object : objects) {
    SCOPED_TRACE(object->isA()->name().utf8());
    const std::string lines = linesOf(*object);
    std::string more, owner;
    for (size_t at = 0; at < lines.size();) {
      const size_t end = lines.find('\n', lines.find('\n', at) + 1) + 1;
      const std::string item = lines.substr(at, end - at);
      if (at == 0) owner = item;
      more += item;
      if (item.starts_with("100\n")) more += "149\n0.5\n";
      at = end;
    }
    const std::unique_ptr<ZnDbObject> withMore = fresh(*object), withLess = fresh(*object);
    EXPECT_EQ(readLines(*withMore, more), Quorl::eOk);
    EXPECT_EQ(linesOf(*withMore), lines);
    EXPECT_EQ(readLines(*withLess, owner), Quorl::eOk);
    withLess->setOwnerId({});
    EXPECT_TRUE(withLess->hasSameFields(*fresh(*object)));
  }
}

TEST_F(EveryClass, RefusesRecordsThatEndTooEarly) {
  size_t refused = 0;
  for (const ZnDbObject* object : objects) {
    SCOPED_TRACE(object->isA()->name().utf8());
    const ZnDbObjectRecord whole = recordOf(*object);
    for (size_t size = 0; size < whole.bytes.size(); ++size, ++refused) {
      ZnDbObjectRecord cut = whole;
      cut.bytes.resize(size);
      EXPECT_NE(readRecord(*fresh(*object), cut), Quorl::eOk) << size;
    }
    for (size_t count = 0; count < whole.references.size(); ++count, ++refused) {
      ZnDbObjectRecord cut = whole;
      cut.references.resize(count);
      EXPECT_NE(readRecord(*fresh(*object), cut), Quorl::eOk) << count;
    }
  }
  EXPECT_GT(refused, 5000u);
}

// Whatever a byte became, what was read is an object like any other.
TEST_F(EveryClass, IsUsableAfterReadingChangedBytes) {
  size_t taken = 0, refused = 0;
  for (const ZnDbObject* object : objects) {
    SCOPED_TRACE(object->isA()->name().utf8());
    const ZnDbObjectRecord whole = recordOf(*object);
    std::set<size_t> versions;
    for (size_t at = 0; at < whole.bytes.size(); ++at)
      for (const int step : {-1, 1, 64, 128}) {
        ZnDbObjectRecord changed = whole;
        changed.bytes[at] = static_cast<char>(changed.bytes[at] + step);
        const std::unique_ptr<ZnDbObject> copy = fresh(*object), again = fresh(*object);
        const ErrorStatus status = readRecord(*copy, changed);
        ++(status == Quorl::eOk ? taken : refused);
        if (status == Quorl::eNewerVersion && step == 1) versions.insert(at);
        ZnDbObjectRecord kept = recordOf(*copy);
        EXPECT_EQ(readRecord(*again, kept), Quorl::eOk) << at << " by " << step;
        EXPECT_TRUE(again->hasSameFields(*copy)) << at << " by " << step;
      }
    // Each section has a version of two bytes, and one above the known one is refused.
    const std::string lines = linesOf(*object);
    size_t sections = 0;
    for (size_t at = 0; (at = lines.find("100\nZnDb", at)) != std::string::npos; ++at) ++sections;
    EXPECT_GE(versions.size(), 2 * sections); // a text that grew may push one more into place
  }
  EXPECT_GT(taken, 10000u);
  EXPECT_GT(refused, 2000u);
}

TEST_F(EveryClass, RefusesNumbersThatAreNone) {
  size_t tried = 0;
  for (const ZnDbObject* object : objects) {
    if (object->isKindOf(ZnDbAssocAction::desc())) continue; // whose values may be anything
    const std::string lines = linesOf(*object);
    for (size_t at = 0, code = 0; at < lines.size(); code = 0) {
      const size_t value = lines.find('\n', at) + 1, end = lines.find('\n', value);
      code = std::stoul(lines.substr(at, value - at));
      if (code >= 10 && code < 60 && code / 10 != 3) { // a point in a plane has no z
        for (const char* bad : {"nan", "inf"}) {
          const std::string changed = lines.substr(0, value) + bad + lines.substr(end);
          EXPECT_EQ(readLines(*fresh(*object), changed), Quorl::eFileDamaged)
              << object->isA()->name().utf8() << " group code " << code;
        }
        ++tried;
      }
      at = end + 1;
    }
  }
  EXPECT_GT(tried, 300u);
}

// Proposes another value for the field of that number.
class Changer : public ZnDbFieldVisitor {
public:
  Changer(const ZnDbDatabase& drawing, int wanted, int step)
      : drawing_(drawing)
      , wanted_(wanted)
      , step_(step) {}
  bool met = false;
  std::string name;
  ErrorStatus status = Quorl::eNothingToDo;

  Wish visit(const ZnDbField& field, bool& v) override {
    return change(field, [&] { v = !v; });
  }
  Wish visit(const ZnDbField& field, std::int64_t& v) override {
    return change(field, [&] { v += step_; });
  }
  Wish visit(const ZnDbField& field, double& v) override {
    return change(field, [&] { v += 0.25 * step_; });
  }
  Wish visit(const ZnDbField& field, ZnString& v) override {
    return change(field, [&] { v = v + L"x"; });
  }
  Wish visit(const ZnDbField& field, ZnGePoint3d& v) override {
    return change(field, [&] { v.x += 1.5; });
  }
  Wish visit(const ZnDbField& field, ZnGeVector3d& v) override {
    return change(field, [&] { v = step_ > 0 ? ZnGeVector3d(0.6, 0.0, 0.8) : v * 2.0; });
  }
  Wish visit(const ZnDbField& field, ZnGeMatrix3d& v) override {
    return change(field, [&] { v.preMultBy(ZnGeMatrix3d::translation({1, 2, 3})); });
  }
  Wish visit(const ZnDbField& field, ZnCmColor& v) override {
    return change(field, [&] { v = ZnCmColor::fromRgb(9, 8, 7); });
  }
  Wish visit(const ZnDbField& field, ZnCmTransparency& v) override {
    return change(field, [&] { v = ZnCmTransparency(77); });
  }
  // Another object of the class; what owns and what may be anything is left alone.
  Wish visit(const ZnDbField& field, ZnDbObjectId& v) override {
    if (!field.targetClass || field.reference >= ZnReferenceKind::kSoftOwner) return any(field);
    return change(field, [&] {
      const ZnDbObjectId before = v;
      for (const ZnDbObjectId id : drawing_.allObjectIds())
        if (!id.isErased() && id != before && id.isDerivedFrom(field.targetClass)) v = id;
    });
  }
  void taken(ErrorStatus given) override { status = given; }

protected:
  Wish any(const ZnDbField&) override {
    met = met || at_ == wanted_;
    ++at_;
    return kKeep;
  }

private:
  template<class Change> Wish change(const ZnDbField& field, Change&& change) {
    if (at_++ != wanted_) return kKeep;
    met = true;
    name = ZnString(field.name).utf8();
    if (name == "next anonymous number") return kKeep; // which no undo takes back
    change();
    return kTake;
  }
  const ZnDbDatabase& drawing_;
  int wanted_, step_, at_ = 0;
};

TEST_F(EveryClass, ChangesFieldByFieldAndUndoGivesTheSameBytes) {
  std::map<std::string, int> changes;
  ZnDbUndoRecorder& undo = drawing->undoRecorder();
  for (ZnDbObject* object : objects) {
    for (int number = 0, step = 1;; step > 0 ? step = -1 : (step = 1, ++number)) {
      const std::string before = bytesOf(*object);
      Changer changer(*drawing, number, step);
      undo.startStep();
      {
        ZnDbHolder<ZnDbObject> open;
        ASSERT_EQ(open.openForWrite(object->objectId(), false, true), Quorl::eOk);
        open->assertWriteEnabled();
        open->detachLinks();
        open->walkFields(changer);
        open->attachLinks();
      }
      if (!changer.met) break;
      SCOPED_TRACE(object->isA()->name().utf8() + ", " + changer.name);
      const std::string after = bytesOf(*object);
      if (changer.status != Quorl::eOk) {
        EXPECT_EQ(after, before);
      } else {
        ++changes[object->isA()->name().utf8()];
      }
      ASSERT_EQ(undo.undo(), Quorl::eOk);
      EXPECT_EQ(bytesOf(*object), before);
      ASSERT_EQ(undo.redo(), Quorl::eOk);
      EXPECT_EQ(bytesOf(*object), after);
      ASSERT_EQ(undo.undo(), Quorl::eOk);
    }
  }
  EXPECT_GE(changes.size(), 25u);
  for (const auto& [cls, count] : changes) EXPECT_GE(count, 1) << cls;
}

TEST_F(EveryClass, HasFieldsThatAreSetByName) {
  const ZnDbObjectId id = append(drawing->modelSpaceId(), new ZnDbLine({1, 2, 3}, {4, 5, 6}));
  ZnDbHolder<ZnDbLine> line;
  ASSERT_EQ(line.openForWrite(id), Quorl::eOk);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(zndbSetField(*line, L"start point", ZnGePoint3d(7, 8, 9)), Quorl::eOk);
  EXPECT_TRUE(line->startPoint().isEqualTo({7, 8, 9}));
  EXPECT_EQ(zndbSetField(*line, L"line weight", std::int64_t{35}), Quorl::eOk);
  EXPECT_EQ(line->lineWeight(), ZnDb::kLineWeight035);
  EXPECT_EQ(zndbSetField(*line, L"line weight", std::int64_t{34}), Quorl::eOutOfRange);
  EXPECT_EQ(zndbSetField(*line, L"linetype scale", nan), Quorl::eInvalidInput);
  EXPECT_EQ(zndbSetField(*line, L"linetype scale", ZnString(L"2")), Quorl::eKeyNotFound);
  EXPECT_EQ(zndbSetField(*line, L"radius", 2.0), Quorl::eKeyNotFound);
  EXPECT_EQ(zndbSetField(*line, L"layer", drawing->byLayerLinetype()), Quorl::eInvalidInput);
  EXPECT_EQ(line->lineWeight(), ZnDb::kLineWeight035);
}

TEST_F(EveryClass, OfNetworksKnowsItsParent) {
  const ZnDbObjectId top = ZnDbAssocNetwork::getInstanceFromDatabase(drawing.get(), false);
  const ZnDbObjectId lower = ZnDbAssocNetwork::getInstanceFromObject(drawing->modelSpaceId(), false, false);
  ASSERT_TRUE(top.isValid() && lower.isValid());
  const auto* network = static_cast<const ZnDbAssocNetwork*>(lower.slot()->object);
  EXPECT_EQ(network->owningNetwork()->objectId(), top);
  EXPECT_EQ(network->getActions().length(), 2);
  EXPECT_TRUE(static_cast<const ZnDbAssocNetwork*>(top.slot()->object)->getActions().contains(lower));
}

// A class of which the second version has a field more.
struct Growing {
  double width = 1.0, height = 5.0;
  template<class Walk> void describe(Walk& walk, std::int16_t version) {
    walk.section(L"Growing", version);
    walk.field(40, L"width", width);
    if (version >= 2 && walk.since(2)) walk.field(41, L"height", height);
  }
};

TEST(FieldVersions, OlderFieldsLeaveNewerOnesAsTheyAre) {
  for (const std::int16_t written : {1, 2})
    for (const std::int16_t read : {1, 2}) {
      ZnDbMemoryFiler filer(ZnDbFiler::kFile);
      ZnDbFieldsOut<ZnDbMemoryFiler> out(filer);
      ZnDbFieldsIn<ZnDbMemoryFiler> in(filer);
      Growing from{2.0, 7.0}, to;
      from.describe(out, written);
      to.describe(in, read);
      EXPECT_EQ(filer.status(), written > read ? Quorl::eNewerVersion : Quorl::eOk);
      EXPECT_EQ(to.width, written > read ? 1.0 : 2.0);
      EXPECT_EQ(to.height, written == 2 && read == 2 ? 7.0 : 5.0);
    }
}

// Each id that an object names, one after the other, becomes null or that of something else.
TEST(Audit, RepairsWhatItFinds) {
  const std::string bytes = written(*everyClassDrawing(), ZnDrawingFormat::kBinary);
  const auto pattern = opened(bytes);
  pattern->audit(true);
  ASSERT_TRUE(pattern->audit(false).empty());
  const std::string sound = written(*pattern, ZnDrawingFormat::kBinary);
  std::set<std::string> told;
  std::set<std::pair<std::string, size_t>> kinds; // one object each will do
  for (const ZnDbObjectId like : pattern->allObjectIds()) {
    if (like.isErased()) continue;
    const size_t count = recordOf(*like.slot()->object).references.size();
    if (!kinds.emplace(like.objectClass()->name().utf8(), count).second) continue;
    for (size_t i = 1; i < count; ++i) // the first is the owner
      for (const bool isNull : {false, true}) {
        SCOPED_TRACE(like.objectClass()->name().utf8() + " " + std::to_string(i));
        const auto drawing = opened(sound);
        ZnDbObjectId id;
        ASSERT_EQ(drawing->getZnDbObjectId(id, false, like.handle()), Quorl::eOk);
        {
          ZnDbHolder<ZnDbObject> open;
          ASSERT_EQ(open.openForWrite(id, false, true), Quorl::eOk);
          ZnDbObjectRecord record = recordOf(*open);
          record.references[i].id = isNull ? ZnDbObjectId() : drawing->namedObjectsDictionaryId();
          ZnDbRecordFiler filer(record, drawing.get());
          open->detachLinks();
          ASSERT_EQ(open->bdocInFields(filer), Quorl::eOk);
          open->attachLinks();
        }
        for (const ZnString& fault : drawing->audit(true)) {
          const std::string text = fault.utf8();
          told.insert(text.substr(text.find(": ") + 2));
        }
        for (const ZnString& fault : drawing->audit(false)) ADD_FAILURE() << fault.utf8();
      }
  }
  for (const char* fault :
       {"its layer is missing", "its linetype is missing", "its dimension style is missing",
        "a frozen layer is missing", "its block is missing", "its body is missing"})
    EXPECT_TRUE(told.contains(fault)) << fault;
}

// Numbers go astray where a change that each setter would refuse is the sum of two that it takes.
TEST(Audit, PutsUsualValuesInThePlaceOfNumbersThatAreNone) {
  ZnDbDatabase drawing;
  const ZnDbObjectId id = append(drawing.modelSpaceId(), new ZnDbLine({1e300, 0, 0}, {1, 2, 3}));
  {
    ZnDbHolder<ZnDbLine> line;
    ASSERT_EQ(line.openForWrite(id), Quorl::eOk);
    ASSERT_EQ(line->transformBy(ZnGeMatrix3d::scaling(1e200)), Quorl::eOk);
    ASSERT_FALSE(std::isfinite(line->startPoint().x));
  }
  drawing.undoRecorder().startStep();
  for (const bool fix : {false, true}) {
    const std::vector<ZnString> faults = drawing.audit(fix);
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_GE(faults[0].find(L"its start point is out of range"), 0) << faults[0].utf8();
  }
  EXPECT_TRUE(drawing.audit(false).empty());
  EXPECT_TRUE(ZnDbHolder<ZnDbLine>(id)->startPoint().isEqualTo({}));
  // Undo gives back what stood there, sound or not.
  ASSERT_EQ(drawing.undoRecorder().undo(), Quorl::eOk);
  EXPECT_FALSE(std::isfinite(ZnDbHolder<ZnDbLine>(id)->startPoint().x));
}

} // namespace
