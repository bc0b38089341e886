#include <cmath>
#include <limits>

#include "assoc/assoc_fixture.h"
#include "quorl/assoc/dependency.h"
#include "quorl/assoc/edge_action_param.h"

namespace {

class ValueTest : public AssocTest {};

struct Kinds {
  ZnDbEvalVariant value;
  bool isInt, isDouble, isText, isId, isPoint;
};

} // namespace

TEST_F(ValueTest, a_variant_answers_its_own_kind_and_refuses_others) {
  const ZnDbObjectId space = db.modelSpaceId();
  const Kinds cases[] = {
      {ZnDbEvalVariant(), false, false, false, false, false},
      {ZnDbEvalVariant(7), true, false, false, false, false},
      {ZnDbEvalVariant(2.5), false, true, false, false, false},
      {ZnDbEvalVariant(L"text"), false, false, true, false, false},
      {ZnDbEvalVariant(space), false, false, true, true, false},
      {ZnDbEvalVariant(ZnGePoint3d(1, 2, 3)), false, false, false, false, true},
  };
  for (const Kinds& c : cases) {
    int i = -1;
    double d = -1.0;
    ZnString s(L"untouched");
    ZnDbObjectId id;
    ZnGePoint3d p(9, 9, 9);
    EXPECT_EQ(c.value.getValue(i) == Quorl::eOk, c.isInt);
    EXPECT_EQ(c.value.getValue(d) == Quorl::eOk, c.isDouble);
    EXPECT_EQ(c.value.getValue(s) == Quorl::eOk, c.isText);
    EXPECT_EQ(c.value.getValue(id) == Quorl::eOk, c.isId);
    EXPECT_EQ(c.value.getValue(p) == Quorl::eOk, c.isPoint);
    EXPECT_EQ(i, c.isInt ? 7 : -1);
    EXPECT_EQ(d, c.isDouble ? 2.5 : -1.0);
    EXPECT_EQ(s == L"untouched", !c.isText);
    EXPECT_EQ(p.x, c.isPoint ? 1.0 : 9.0);
    for (const Kinds& other : cases) EXPECT_EQ(c.value == other.value, &c == &other);
  }
  // The text of an id leads back to the object.
  ZnString handle;
  ASSERT_EQ(ZnDbEvalVariant(space).getValue(handle), Quorl::eOk);
  ZnDbObjectId found;
  EXPECT_EQ(db.getZnDbObjectId(found, false, handle.asZnDbHandle(2)), Quorl::eOk);
  EXPECT_EQ(found, space);
}

TEST_F(ValueTest, equality_of_doubles_is_that_of_their_bits) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(ZnDbEvalVariant(nan) == ZnDbEvalVariant(nan));
  EXPECT_FALSE(ZnDbEvalVariant(0.0) == ZnDbEvalVariant(-0.0));
  EXPECT_FALSE(ZnDbEvalVariant(1.0) == ZnDbEvalVariant(std::nextafter(1.0, 2.0)));
  EXPECT_FALSE(ZnDbEvalVariant(1) == ZnDbEvalVariant(1.0));
}

TEST_F(ValueTest, values_by_name_and_index) {
  const ZnDbObjectId bodyId = addBody();
  const ZnDbHolder<ZnDbAssocActionBody> held(bodyId);
  auto& body = *held;
  ZnDbEvalVariant value;
  double number = 0.0;
  EXPECT_EQ(body.getValueParam(L"a", value), Quorl::eKeyNotFound);
  struct Write {
    const wchar_t* name;
    int index;
    double value;
    Quorl::ErrorStatus status;
  };
  const Write writes[] = {
      {L"a", 0, 1.0, Quorl::eOk},          {L"a", 1, 2.0, Quorl::eOk},
      {L"a", 3, 9.0, Quorl::eOutOfRange},  {L"a", -1, 9.0, Quorl::eOutOfRange},
      {L"b", 1, 9.0, Quorl::eOutOfRange},  {L"b", 0, 3.0, Quorl::eOk},
      {L"", 0, 9.0, Quorl::eInvalidInput}, {L"a", 0, 4.0, Quorl::eOk},
  };
  ZnString message(L"old");
  for (const Write& w : writes) {
    EXPECT_EQ(
        body.setValueParam(w.name, ZnDbEvalVariant(w.value), ZnString(), ZnString(), message, true, w.index),
        w.status);
    EXPECT_TRUE(message.isEmpty());
  }
  EXPECT_EQ(body.getValueParam(L"a", value, 1), Quorl::eOk);
  EXPECT_EQ(value.getValue(number), Quorl::eOk);
  EXPECT_EQ(number, 2.0);
  EXPECT_EQ(body.getValueParam(L"a", value, 2), Quorl::eOutOfRange);
  EXPECT_EQ(body.valueOf(L"a", -1.0), 4.0);
  EXPECT_EQ(body.valueOf(L"absent", -1.0), -1.0);
  EXPECT_EQ(body.setValueParam(L"text", ZnDbEvalVariant(L"x")), Quorl::eOk);
  EXPECT_EQ(body.valueOf(L"text", -1.0), -1.0);

  ZnArray<ZnString> names;
  body.ownedValueParamNames(names);
  ASSERT_EQ(names.length(), 3);
  EXPECT_TRUE(names[0] == L"a" && names[1] == L"b" && names[2] == L"text");
  EXPECT_EQ(body.removeValueParam(L"a"), Quorl::eOk);
  EXPECT_EQ(body.removeValueParam(L"a"), Quorl::eKeyNotFound);
  EXPECT_EQ(body.getValueParam(L"a", value), Quorl::eKeyNotFound);
}

TEST_F(ValueTest, arrays_are_replaced_as_a_whole) {
  const ZnDbHolder<ZnDbAssocActionBody> held(addBody());
  auto& body = *held;
  ZnArray<ZnString> none, texts, errors, evaluators;
  ZnArray<ZnDbEvalVariant> values;
  EXPECT_EQ(body.getValueParamArray(L"n", values, texts, evaluators), Quorl::eKeyNotFound);
  for (const int length : {2, 5, 1, 3}) {
    ZnArray<ZnDbEvalVariant> written;
    ZnArray<ZnString> expressions;
    for (int i = 0; i < length; ++i) {
      written.append(ZnDbEvalVariant(10 * length + i));
      expressions.append(i == 0 ? ZnString(L"w*2") : ZnString());
    }
    EXPECT_EQ(body.setValueParamArray(L"n", written, expressions, none, errors, true), Quorl::eOk);
    EXPECT_EQ(errors.length(), length);
    ASSERT_EQ(body.getValueParamArray(L"n", values, texts, evaluators), Quorl::eOk);
    EXPECT_TRUE(values == written);
    EXPECT_TRUE(texts == expressions);
    EXPECT_EQ(evaluators.length(), length);
  }
  ZnArray<ZnString> wrong;
  wrong.append(L"one");
  EXPECT_EQ(body.setValueParamArray(L"n", values, wrong, none, errors, true), Quorl::eInvalidInput);
  EXPECT_EQ(body.setValueParamArray(L"n", ZnArray<ZnDbEvalVariant>(), none, none, errors, true),
            Quorl::eInvalidInput);
  ASSERT_EQ(body.getValueParamArray(L"n", values, texts, evaluators), Quorl::eOk);
  EXPECT_EQ(values.length(), 3);
}

TEST_F(ValueTest, writing_needs_the_action_only_where_something_changes) {
  const ZnDbObjectId bodyId = addBody();
  const ZnDbHolder<ZnDbAssocActionBody> body(bodyId);
  EXPECT_EQ(body->setValueParam(L"v", ZnDbEvalVariant(1.0)), Quorl::eOk);
  undo().startStep();
  const size_t depth = undo().undoDepth();
  const ZnDbHolder<ZnDbAssocAction> reader(body->parentAction());
  EXPECT_EQ(body->setValueParam(L"v", ZnDbEvalVariant(1.0)), Quorl::eOk);
  EXPECT_EQ(undo().undoDepth(), depth);
  EXPECT_EQ(body->setValueParam(L"v", ZnDbEvalVariant(2.0)), Quorl::eWasOpenForRead);
  EXPECT_EQ(body->valueOf(L"v", 0.0), 1.0);
}

TEST_F(ValueTest, a_body_without_action_has_nothing_and_takes_nothing) {
  SumBody body;
  ZnDbEvalVariant value;
  ZnDbObjectId id;
  int index = 0;
  ZnArray<ZnString> names;
  EXPECT_EQ(body.status(), kUnresolvedAssocStatus);
  EXPECT_EQ(body.getValueParam(L"v", value), Quorl::eNotInDatabase);
  EXPECT_EQ(body.setValueParam(L"v", ZnDbEvalVariant(1)), Quorl::eNotInDatabase);
  EXPECT_EQ(body.addParam(L"p", ZnDbAssocEdgeActionParam::desc(), id, index), Quorl::eNotInDatabase);
  EXPECT_EQ(body.addDependency(nullptr, nullptr, true, false, 0, id), Quorl::eNotInDatabase);
  EXPECT_EQ(body.paramCount(), 0);
  EXPECT_TRUE(body.paramsAtName(L"p").isEmpty());
  EXPECT_FALSE(body.hasAnyErasedOrBrokenDependencies());
}

TEST_F(ValueTest, creating_refuses_what_is_no_body_or_no_owner) {
  ZnDbObjectId actionId, bodyId;
  struct Case {
    const ZnRxClass* cls;
    ZnDbObjectId owner;
    Quorl::ErrorStatus status;
  };
  const Case cases[] = {
      {ZnDbCircle::desc(), db.modelSpaceId(), Quorl::eWrongObjectClass},
      {ZnDbAssocActionBody::desc(), db.modelSpaceId(), Quorl::eWrongObjectClass},
      {nullptr, db.modelSpaceId(), Quorl::eWrongObjectClass},
      {SumBody::desc(), ZnDbObjectId(), Quorl::eInvalidOwner},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(
        ZnDbAssocActionBody::createActionAndActionBodyAndPostToDatabase(c.cls, c.owner, actionId, bodyId),
        c.status);
    EXPECT_TRUE(actionId.isNull() && bodyId.isNull());
  }
}
