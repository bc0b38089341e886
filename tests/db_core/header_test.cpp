#include <cmath>

#include "db_core/small_drawing.h"
#include "quorl/db/core/database_reactor.h"
#include "quorl/db/core/database_version.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/table/linetype_table.h"
#include "quorl/rx/variables_dictionary.h"

namespace {

class Header : public SmallDrawing {};

struct HeaderListener : ZnDbDatabaseReactor {
  void headerVariableWillChange(ZnDbDatabase*, const ZnString& name) override { told += '<' + name.utf8(); }
  void headerVariableChanged(ZnDbDatabase*, const ZnString& name, bool success) override {
    told += success ? '>' + name.utf8() : "!";
  }
  std::string told;
};

TEST_F(Header, NearestLineWeight) {
  struct Case {
    int asked, expected;
  };
  const Case cases[] = {{25, 25}, {26, 25}, {28, 30}, {0, 0}, {-7, 0}, {211, 211}, {9999, 211}, {119, 120}};
  for (const Case& c : cases) EXPECT_EQ(ZnDbDatabase::getNearestLineWeight(c.asked), c.expected) << c.asked;
}

TEST_F(Header, RemembersTheVersionOfItsFile) {
  EXPECT_EQ(db.originalFileSavedByVersion(), Quorl::kFileVersion);
  db.setOriginalFileSavedBy(31, 125);
  EXPECT_EQ(db.originalFileSavedByVersion(), 31);
  EXPECT_EQ(db.originalFileSavedByMaintenanceVersion(), 125);
}

TEST_F(Header, LtscaleIsAVariableOfTheDrawing) {
  HeaderListener listener;
  db.addReactor(&listener);
  ZnDbDatabase other;
  zndbHostApplicationServices()->setWorkingDatabase(&db);
  ZnString error;
  EXPECT_EQ(ZnRxVariablesDictionary::get()->set(L"ltscale", ZnString(L"2.5"), error), Quorl::eOk)
      << error.utf8();
  EXPECT_EQ(db.ltscale(), 2.5);
  EXPECT_EQ(other.ltscale(), 1.0);
  EXPECT_EQ(listener.told, "<LTSCALE>LTSCALE");
  zndbHostApplicationServices()->setWorkingDatabase(&other);
  EXPECT_EQ(ZnRxVariablesDictionary::get()->getDouble(L"LTSCALE", 0.0), 1.0);
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(db.undoRecorder().undo(), Quorl::eOk);
  EXPECT_EQ(db.ltscale(), 1.0);
  EXPECT_EQ(db.undoRecorder().redo(), Quorl::eOk);
  EXPECT_EQ(db.ltscale(), 2.5);
  for (const double refused : {0.0, -1.0, std::nan("")})
    EXPECT_EQ(db.setLtscale(refused), Quorl::eOutOfRange);
  db.removeReactor(&listener);
}

TEST_F(Header, CurrentRecordsMustBeOfTheirKind) {
  EXPECT_EQ(db.setCurrentLayer(db.celtype()), Quorl::eInvalidInput);
  EXPECT_EQ(db.setCurrentLinetype(ZnDbObjectId()), Quorl::eInvalidInput);
  EXPECT_EQ(db.setCurrentSpaceId(db.paperSpaceId()), Quorl::eOk);
  EXPECT_EQ(db.currentSpaceId(), db.paperSpaceId());
  EXPECT_EQ(db.undoRecorder().undo(), Quorl::eOk);
  EXPECT_EQ(db.currentSpaceId(), db.modelSpaceId());
}

TEST_F(Header, LinetypesComeFromTheFile) {
  const auto has = [&](const wchar_t* name) {
    return ZnDbHolder<ZnDbLinetypeTable>(db.linetypeTableId())->has(name);
  };
  ASSERT_FALSE(has(L"CENTER"));
  EXPECT_EQ(db.loadLineTypeFile(L"center", L"quorl.lin"), Quorl::eOk);
  ZnDbObjectId center;
  ASSERT_EQ(ZnDbHolder<ZnDbLinetypeTable>(db.linetypeTableId())->getIdAt(L"CENTER", center), Quorl::eOk);
  EXPECT_EQ(ZnDbHolder<ZnDbLinetypeTableRecord>(center)->dashLengthAt(3), -2.0);
  EXPECT_EQ(db.loadLineTypeFile(L"CENTER", L"quorl.lin"), Quorl::eDuplicateKey);
  EXPECT_EQ(db.loadLineTypeFile(L"NO SUCH", L"quorl.lin"), Quorl::eKeyNotFound);
  EXPECT_EQ(db.loadLineTypeFile(L"CENTER2", L"no such.lin"), Quorl::eNotFound);
  EXPECT_EQ(db.loadLineTypeFile(L"*", L"quorl.lin"), Quorl::eOk);
  EXPECT_TRUE(has(L"CENTER2"));
}

} // namespace
