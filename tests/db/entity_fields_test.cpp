// Fields of every kind of entity: out and in again by both filers, and what damage does.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "db/entity_samples.h"
#include "db/tdoc_recorder.h"
#include "quorl/db/core/memory_filer.h"

using namespace dbTest;

namespace {

class EntityFields : public testing::TestWithParam<EntitySample> {
protected:
  std::unique_ptr<ZnDbEntity> entity = GetParam().make();
  std::unique_ptr<ZnDbEntity> fresh() const {
    return std::unique_ptr<ZnDbEntity>(static_cast<ZnDbEntity*>(entity->isA()->create()));
  }
};

std::string nameOfSample(const testing::TestParamInfo<EntitySample>& info) {
  std::string name = info.param.name;
  for (char& c : name)
    if (c == ' ') c = '_';
  return name;
}

TEST_P(EntityFields, BinaryRoundTripKeepsEveryField) {
  const std::string bytes = fieldsOf(*entity);
  ASSERT_NE(bytes, fieldsOf(*fresh())) << "a sample must differ from a new entity";
  Quorl::ErrorStatus read = Quorl::eInvalidInput;
  const std::unique_ptr<ZnDbEntity> again = readFrom(*entity, bytes, read);
  EXPECT_EQ(read, Quorl::eOk);
  EXPECT_EQ(fieldsOf(*again), bytes);
  EXPECT_EQ(TdocRecorder::textOf(*again), TdocRecorder::textOf(*entity));
}

TEST_P(EntityFields, CloneIsEqualAndInNoDrawing) {
  const std::unique_ptr<ZnRxObject> copy(entity->clone());
  const auto* clone = ZnDbEntity::cast(copy.get());
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->isA(), entity->isA());
  EXPECT_EQ(fieldsOf(*clone), fieldsOf(*entity));
  EXPECT_TRUE(clone->objectId().isNull());
}

TEST_P(EntityFields, TextRoundTripKeepsEveryFieldAndSkipsUnknownOnes) {
  TdocRecorder filer;
  ASSERT_EQ(entity->tdocOutFields(filer), Quorl::eOk);
  size_t markers = 0;
  std::vector<ZnDbTdocItem> withUnknown;
  ZnDbTdocItem unknown;
  unknown.code = 149;
  for (const ZnDbTdocItem& item : filer.items) {
    withUnknown.push_back(item);
    if (item.code != 100) continue;
    ++markers;
    withUnknown.push_back(unknown);
  }
  ASSERT_GE(markers, 2u);
  for (const auto& items : {filer.items, withUnknown}) {
    TdocRecorder reader;
    reader.items = items;
    const std::unique_ptr<ZnDbEntity> again = fresh();
    EXPECT_EQ(again->tdocInFields(reader), Quorl::eOk);
    EXPECT_EQ(fieldsOf(*again), fieldsOf(*entity));
    EXPECT_EQ(TdocRecorder::textOf(*again), TdocRecorder::textOf(*entity));
    EXPECT_TRUE(reader.atEndOfObject());
  }
}

TEST_P(EntityFields, MissingTextSectionsLeaveDefaults) {
  TdocRecorder filer;
  fresh()->tdocOutFields(filer);
  filer.items.resize(1); // the owner alone
  const std::unique_ptr<ZnDbEntity> again = fresh();
  EXPECT_EQ(again->tdocInFields(filer), Quorl::eOk);
  EXPECT_EQ(fieldsOf(*again), fieldsOf(*fresh()));
}

TEST_P(EntityFields, UnusableNumberInTextIsDamage) {
  TdocRecorder filer;
  entity->tdocOutFields(filer);
  size_t tried = 0;
  for (size_t i = 0; i < filer.items.size(); ++i) {
    const int code = filer.items[i].code;
    if (code < 10 || code >= 60) continue; // coordinates and real numbers
    TdocRecorder reader;
    reader.items = filer.items;
    reader.items[i].real = reader.items[i].point.y = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(fresh()->tdocInFields(reader), Quorl::eFileDamaged) << "group code " << code;
    ++tried;
  }
  EXPECT_GE(tried, 2u);
}

TEST_P(EntityFields, EveryShortenedRecordIsReportedAndLeavesAUsableEntity) {
  const std::string bytes = fieldsOf(*entity);
  ASSERT_FALSE(bytes.empty());
  for (size_t count = 0; count < bytes.size(); ++count) {
    Quorl::ErrorStatus read = Quorl::eOk;
    const std::unique_ptr<ZnDbEntity> cut = readFrom(*entity, bytes.substr(0, count), read);
    ASSERT_NE(read, Quorl::eOk) << count << " of " << bytes.size() << " bytes";
    readFrom(*cut, fieldsOf(*cut), read);
    ASSERT_EQ(read, Quorl::eOk) << "after " << count << " bytes";
  }
}

TEST_P(EntityFields, NewerVersionIsRefused) {
  std::string bytes = fieldsOf(*entity);
  const size_t at = GetParam().baseSize(*entity);
  ASSERT_LT(at + sizeof(std::int16_t), bytes.size() + 1);
  bytes[at] = 2;
  Quorl::ErrorStatus read = Quorl::eOk;
  readFrom(*entity, bytes, read);
  EXPECT_EQ(read, Quorl::eNewerVersion);
}

// Whatever a byte becomes, the entity can be written, and what it writes can be read.
TEST_P(EntityFields, ChangedBytesLeaveAUsableEntity) {
  const std::string bytes = fieldsOf(*entity);
  EXPECT_TRUE(rc::check([&] {
    std::string changed = bytes;
    const size_t at = *rc::gen::inRange<size_t>(0, changed.size());
    changed[at] = *rc::gen::arbitrary<char>();
    Quorl::ErrorStatus read = Quorl::eOk;
    const std::unique_ptr<ZnDbEntity> damaged = readFrom(*entity, changed, read);
    const std::string written = fieldsOf(*damaged);
    const std::unique_ptr<ZnDbEntity> again = readFrom(*damaged, written, read);
    RC_ASSERT(read == Quorl::eOk);
    RC_ASSERT(fieldsOf(*again) == written);
  }));
}

INSTANTIATE_TEST_SUITE_P(Every, EntityFields, testing::ValuesIn(entitySamples()), nameOfSample);

} // namespace
