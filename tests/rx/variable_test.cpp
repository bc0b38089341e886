#include "quorl/rx/variable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

#include "quorl/rx/variable_reactor.h"
#include "quorl/rx/variables_dictionary.h"
#include "rx/allocation_count.h"

namespace {

using Value = ZnRxVariableValue;

struct Store : ZnRxVariableStore {
  const Value* find(ZnAtom name) const override {
    const auto found = values.find(name);
    return found == values.end() ? nullptr : &found->second;
  }
  void put(ZnAtom name, const Value& value) override { values[name] = value; }
  std::map<ZnAtom, Value> values;
};

struct Reactor : ZnRxVariableReactor {
  std::function<void(ZnRxVariable&, ZnRxVariableChangingEventArgs&)> before;
  std::function<void(ZnRxVariable&, ZnRxVariableChangedEventArgs&)> after;
  void changing(ZnRxVariable& variable, ZnRxVariableChangingEventArgs& args) override {
    if (before) before(variable, args);
  }
  void changed(ZnRxVariable& variable, ZnRxVariableChangedEventArgs& args) override {
    if (after) after(variable, args);
  }
};

struct Variables : testing::Test {
  void SetUp() override {
    add(L"TTEXT", Value::ofString(L"start"), ZnRxVariableScope::kSession);
    add(L"TREAL", Value::ofDouble(1.0), ZnRxVariableScope::kDrawing,
        {.low = 0.0, .high = 10.0, .aboveLow = true});
    add(L"TSHORT", Value::ofInt16(2), ZnRxVariableScope::kSession, {.low = -2.0});
  }
  void TearDown() override {
    dictionary.setCurrentStore(nullptr);
    for (const wchar_t* name : {L"TTEXT", L"TREAL", L"TSHORT"})
      EXPECT_EQ(dictionary.removeVariable(name), Quorl::eOk);
  }
  void add(const wchar_t* name, const Value& value, ZnRxVariableScope scope,
           const ZnRxVariableRange& range = {}) {
    ASSERT_EQ(dictionary.addVariable(std::make_unique<ZnRxVariable>(name, value, scope, range)), Quorl::eOk);
  }
  Quorl::ErrorStatus set(const wchar_t* name, const wchar_t* text) {
    return dictionary.set(name, ZnString(text), error);
  }
  ZnRxVariablesDictionary& dictionary = *ZnRxVariablesDictionary::get();
  ZnString error;
};

TEST_F(Variables, TypesAndLimitsAreChecked) {
  Store store;
  dictionary.setCurrentStore(&store);
  struct Case {
    const wchar_t* name;
    const wchar_t* typed;
    Quorl::ErrorStatus status;
    const wchar_t* holds;
    const wchar_t* error;
  };
  const Case cases[] = {
      {L"treal", L"2.5", Quorl::eOk, L"2.5", L""},
      {L"TREAL", L"0", Quorl::eOutOfRange, L"2.5", L"TREAL must be above 0 and at most 10."},
      {L"TREAL", L"10.5", Quorl::eOutOfRange, L"2.5", L"TREAL must be above 0 and at most 10."},
      {L"TREAL", L"10", Quorl::eOk, L"10", L""},
      {L"TREAL", L"wide", Quorl::eInvalidInput, L"10", L"TREAL takes a number."},
      {L"TShort", L"-2", Quorl::eOk, L"-2", L""},
      {L"TSHORT", L"-3", Quorl::eOutOfRange, L"-2", L"TSHORT must be at least -2."},
      {L"TSHORT", L"1.5", Quorl::eInvalidInput, L"-2", L"TSHORT takes a whole number of 16 bits."},
      {L"TTEXT", L"", Quorl::eOk, L"", L""},
      {L"TNONE", L"1", Quorl::eKeyNotFound, L"", L"There is no variable TNONE."},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(set(c.name, c.typed), c.status) << ZnString(c.typed).utf8();
    EXPECT_EQ(error.utf8(), ZnString(c.error).utf8());
    EXPECT_EQ(dictionary.getString(c.name).utf8(), ZnString(c.holds).utf8());
  }
  dictionary.getVariable(L"TTEXT")->setReadOnly(true);
  EXPECT_EQ(set(L"TTEXT", L"x"), Quorl::eVariableReadOnly);
  EXPECT_EQ(error, L"TTEXT is read only.");
}

TEST_F(Variables, ReadingAcrossTypes) {
  EXPECT_EQ(dictionary.getDouble(L"tshort", 9.0), 2.0);
  EXPECT_EQ(dictionary.getInt16(L"TREAL"), 1);
  EXPECT_TRUE(dictionary.getBool(L"TSHORT"));
  EXPECT_EQ(dictionary.getDouble(L"TTEXT", 9.0), 9.0);
  EXPECT_EQ(dictionary.getInt16(L"absent", 5), 5);
  EXPECT_TRUE(dictionary.getBool(L"absent", true));
  EXPECT_EQ(dictionary.getString(L"absent", L"none"), L"none");
  EXPECT_EQ(dictionary.getVariable(L"absent"), nullptr);
}

TEST_F(Variables, ReactorsSeeEarlierReplacementsAndAreToldAfterwards) {
  ZnRxVariable& variable = *dictionary.getVariable(L"TTEXT");
  std::string log;
  Reactor trims, marks, listens;
  trims.before = [&](ZnRxVariable&, ZnRxVariableChangingEventArgs& args) {
    ZnString text = args.newValue()->text;
    EXPECT_EQ(args.setNewValue(resbuf::ofString(text.trimLeft(L"\"").trimRight(L"\""))), Quorl::eOk);
  };
  marks.before = [&](ZnRxVariable& held, ZnRxVariableChangingEventArgs& args) {
    log += "sees " + args.newValue()->text.utf8() + " over " + held.value().string().utf8() + ";";
    // What the variable can't hold never replaces.
    EXPECT_EQ(args.setNewValue(resbuf::ofReal(1.0)), Quorl::eInvalidInput);
    args.setNewValue(resbuf::ofString(args.newValue()->text + L"!"));
  };
  listens.after = [&](ZnRxVariable& held, ZnRxVariableChangedEventArgs& args) {
    log += "told " + args.newValue()->text.utf8() + " holds " + held.value().string().utf8() + ";";
  };
  for (Reactor* reactor : {&trims, &marks, &listens}) EXPECT_EQ(variable.addReactor(reactor), Quorl::eOk);
  EXPECT_EQ(variable.addReactor(&trims), Quorl::eDuplicateKey);
  EXPECT_EQ(variable.addReactor(nullptr), Quorl::eInvalidInput);
  EXPECT_EQ(set(L"TTEXT", L"\"CENTER\""), Quorl::eOk);
  EXPECT_EQ(log, "sees CENTER over start;told CENTER! holds CENTER!;");

  for (Reactor* reactor : {&trims, &marks, &listens}) EXPECT_EQ(variable.removeReactor(reactor), Quorl::eOk);
  EXPECT_EQ(variable.removeReactor(&trims), Quorl::eKeyNotFound);
  EXPECT_EQ(set(L"TTEXT", L"\"q\""), Quorl::eOk);
  EXPECT_EQ(dictionary.getString(L"TTEXT"), L"\"q\"");
}

TEST_F(Variables, AVetoStopsTheChangeWithItsFirstMessage) {
  ZnRxVariable& variable = *dictionary.getVariable(L"TSHORT");
  int asked = 0, told = 0;
  Reactor vetoes, later;
  vetoes.before = [](ZnRxVariable&, ZnRxVariableChangingEventArgs& args) {
    if (args.newValue()->shortInt % 2 == 0) return;
    args.setNewValue(resbuf::ofShort(4));
    args.veto(L"Odd numbers are not wanted.");
    args.veto(L"A second reason.");
  };
  later.before = [&](ZnRxVariable&, ZnRxVariableChangingEventArgs&) { ++asked; };
  later.after = [&](ZnRxVariable&, ZnRxVariableChangedEventArgs&) { ++told; };
  variable.addReactor(&vetoes);
  variable.addReactor(&later);
  EXPECT_EQ(set(L"TSHORT", L"7"), Quorl::eVetoed);
  EXPECT_EQ(error, L"Odd numbers are not wanted.");
  EXPECT_EQ(dictionary.getInt16(L"TSHORT"), 2);
  EXPECT_EQ(asked + told, 0);
  EXPECT_EQ(set(L"TSHORT", L"8"), Quorl::eOk);
  EXPECT_TRUE(error.isEmpty());
  EXPECT_EQ(dictionary.getInt16(L"TSHORT"), 8);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(told, 1);
}

TEST_F(Variables, AReactorMayTakeOthersOff) {
  ZnRxVariable& variable = *dictionary.getVariable(L"TSHORT");
  std::string log;
  Reactor first, second;
  second.before = [&](ZnRxVariable&, ZnRxVariableChangingEventArgs&) { log += "second;"; };
  first.before = [&](ZnRxVariable& held, ZnRxVariableChangingEventArgs&) {
    log += "first;";
    held.removeReactor(&second);
    held.removeReactor(&first);
  };
  variable.addReactor(&first);
  variable.addReactor(&second);
  EXPECT_EQ(set(L"TSHORT", L"3"), Quorl::eOk);
  EXPECT_EQ(set(L"TSHORT", L"4"), Quorl::eOk);
  EXPECT_EQ(log, "first;");
}

TEST_F(Variables, ReadingNumbersAllocatesNothing) {
  Store store;
  dictionary.setCurrentStore(&store);
  EXPECT_EQ(set(L"TREAL", L"4"), Quorl::eOk);
  double sum = dictionary.getDouble(L"TREAL");
  const long before = allocationCount();
  for (const wchar_t* name : {L"TREAL", L"Treal", L"TSHORT", L"NOWHERE"})
    sum += dictionary.getDouble(name, 0.5) + dictionary.getInt16(name) + dictionary.getBool(name);
  EXPECT_EQ(allocationCount(), before);
  EXPECT_EQ(dictionary.getString(L"TREAL"), L"4");
  EXPECT_GT(allocationCount(), before) << "the count does not see the library";
  EXPECT_EQ(sum, 4.0 + 2 * (4 + 4 + 1) + (2 + 2 + 1) + 0.5);
}

TEST_F(Variables, ListedByName) {
  std::vector<std::string> names;
  for (const ZnRxVariable* variable : dictionary.variables()) names.push_back(variable->name().utf8());
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  EXPECT_EQ(std::count(names.begin(), names.end(), "TTEXT"), 1);
  EXPECT_EQ(dictionary.addVariable(nullptr), Quorl::eInvalidInput);
  EXPECT_EQ(
      dictionary.addVariable(std::make_unique<ZnRxVariable>(L"ttext", Value(), ZnRxVariableScope::kSession)),
      Quorl::eDuplicateKey);
  EXPECT_EQ(dictionary.getVariable(L"TTEXT")->type(), ZnRxVariableType::kString);
}

} // namespace
