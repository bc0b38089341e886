// What holds for every center object in every state: scenes drawn at random from kinds, places, sizes, states
// of the edges and what a user does, each checked against the same laws. CASES=100000 looks further than
// every day, CASE=n runs one alone.
#include <fmt/format.h>

#include <cmath>
#include <cstdlib>
#include <random>

#include "quorl/file/drawing_file.h"
#include "quorl/view/point_ref.h"
#include "torvi/core/object_pointer.h"
#include "torvi/core/reference_transform.h"
#include "torvi_lives/lives.h"

namespace {

const char* const kPlaces[] = {"plain",
                               "tilted",
                               "nested",
                               "nested twice",
                               "mirrored and scaled",
                               "through a window",
                               "through a twisted window"};
enum Place { kPlain, kTilted, kNested, kNestedTwice, kMirroredAndScaled, kWindow, kTwistedWindow };
const char* const kSizes[] = {"usual sizes", "own sizes", "sizes by linetype"};
enum Sizes { kUsual, kOwn, kByLinetype };
const char* const kStates[] = {"associated", "one edge erased", "two edges left", "all edges erased",
                               "disassociated"};
enum State { kAssociated, kOneErased, kTwoLeft, kAllErased, kDisassociated };
const char* const kDeeds[] = {"moved", "turned", "mirrored", "scaled", "tilted"};
enum Deed { kMove, kTurn, kMirror, kScale, kTilt };

class Laws : public LivesTest {
protected:
  // One scene from its number alone; what breaks a law is reported with it.
  void live(unsigned number);
  void setUpScene();
  void addInputs();
  ZnDbObjectId nest(ZnDbObjectId block, const ZnGeMatrix3d& transform);
  bool make();
  void giveOwnSizes();
  void loseEdges();
  void deed();
  ZnGeMatrix3d deedMatrix(Deed deed);
  void checkRest(const std::string& before);

  bool followsEdges() const { return ZnDbTorviObjectWrapper(center_).isAssociative(); }
  std::string dump() const { return dumpOf(*db_); }
  static std::string dumpOf(ZnDbDatabase& database) {
    std::string text;
    ZnFileError error;
    EXPECT_EQ(zndbDrawingToBytes(database, ZnDrawingFormat::kText, text, error), Quorl::eOk) << error.text();
    return text;
  }
  void expectSame(const char* law, const std::string& actual, const std::string& expected) {
    if (actual == expected) return;
    std::istringstream one(actual), other(expected);
    std::string is, was;
    int line = 0;
    do ++line;
    while (std::getline(one, is) && std::getline(other, was) && is == was);
    ADD_FAILURE() << law << "\n" << scene_ << "\nline " << line << ": " << is << " instead of " << was;
  }
  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  double between(double low, double high) { return std::uniform_real_distribution<>(low, high)(random_); }
  ZnGeVector3d direction() {
    return ZnGeVector3d(between(-1, 1), between(-1, 1), between(-1, 1) + 2.0).normalize();
  }

  std::mt19937 random_;
  const Sample* sample_ = nullptr;
  Place place_ = kPlain;
  Sizes sizes_ = kUsual;
  State state_ = kAssociated;
  bool isAmongViews_ = false; // in a document that holds drawing views
  std::string scene_;
  Ids inputs_, path_; // entities, and what leads to them
  ZnGeMatrix3d toPaper_;
  ZnDbObjectId center_;
};

bool isPaper(Place place) { return place >= kWindow; }

void Laws::setUpScene() {
  sample_ = &kSamples[static_cast<size_t>(pick(std::size(kSamples)))];
  place_ = static_cast<Place>(pick(std::size(kPlaces)));
  sizes_ = static_cast<Sizes>(pick(std::size(kSizes)));
  state_ = static_cast<State>(pick(std::size(kStates)));
  isAmongViews_ = sample_->kind == kCenterMark && place_ == kPlain && pick(2);
  // An edge extension that has lost one edge remembers where that was, and can't go with the other.
  if (sample_->kind == kEdgeExtension && state_ == kOneErased) state_ = kAllErased;
  if (sample_->kind != kCenterMarkPattern && state_ == kTwoLeft) state_ = kAssociated;
  scene_ = fmt::format("{}{}, {}, {}, {}", sample_->name, isAmongViews_ ? " among views" : "",
                       kPlaces[place_], kSizes[sizes_], kStates[state_]);
}

ZnDbObjectId Laws::nest(ZnDbObjectId block, const ZnGeMatrix3d& transform) {
  auto* reference = new ZnDbBlockReference(ZnGePoint3d(), block);
  EXPECT_EQ(reference->setBlockTransform(transform), Quorl::eOk);
  return add(reference);
}

void Laws::addInputs() {
  ZnDbObjectId space = db_->modelSpaceId();
  const auto inBlock = [&] {
    ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
    record->setName(path_.empty() ? L"part" : L"assembly");
    ZnDbHolder<ZnDbBlockTable> table;
    EXPECT_EQ(table.openForWrite(db_->blockTableId()), Quorl::eOk);
    EXPECT_EQ(table->add(space, record.object()), Quorl::eOk);
  };
  const bool isNested = place_ >= kNested && place_ <= kMirroredAndScaled;
  if (isNested) inBlock();
  for (const char* input : sample_->inputs) inputs_.push_back(addInput(input, space));
  if (place_ == kTilted) {
    const ZnGeMatrix3d tilt = ZnGeMatrix3d::rotation(between(-3, 3), direction(), {1, 2, 3});
    for (const ZnDbObjectId id : inputs_)
      change<ZnDbEntity>(id, [&](ZnDbEntity& entity) { EXPECT_EQ(entity.transformBy(tilt), Quorl::eOk); });
  }
  const auto rigid = [&] {
    return ZnGeMatrix3d::translation({between(-50, 50), between(-50, 50), 0}) *
           ZnGeMatrix3d::rotation(between(-3, 3), {0, 0, 1});
  };
  if (place_ == kNested) path_ = {nest(space, rigid())};
  if (place_ == kNestedTwice) {
    const ZnDbObjectId inner = nest(space, rigid());
    path_ = {inner};
    inBlock();
    ZnDbHolder<ZnDbBlockTableRecord> record;
    EXPECT_EQ(record.openForWrite(space), Quorl::eOk);
    EXPECT_EQ(record->assumeOwnershipOf({inner}), Quorl::eOk);
    record.close();
    path_ = {nest(space, rigid()), inner};
  }
  if (place_ == kMirroredAndScaled)
    path_ = {nest(space, rigid() * ZnGeMatrix3d::mirroring(ZnGePlane({1, 1, 0}, {1, 2, 0})) *
                             ZnGeMatrix3d::scaling(between(0.3, 3.0)))};
  if (isPaper(place_)) {
    path_ = {
        addViewport(between(0.3, 3.0), {100, 50, 0}, {10, 0}, place_ == kTwistedWindow ? between(-3, 3) : 0)};
    EXPECT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
    EXPECT_EQ(ZnDbPointRef::mswcsToPswcs(ZnDbHolder<ZnDbViewport>(path_.front()).object(), toPaper_),
              Quorl::eOk);
  }
}

bool Laws::make() {
  torvi::BuilderInput input{{}, nullptr, db_.get()};
  for (const ZnDbObjectId id : inputs_) {
    ZnArray<ZnDbObjectId> path;
    for (const ZnDbObjectId step : path_) path.append(step);
    path.append(id);
    input.edges.append(edgeAlong(path));
  }
  std::vector<ZnGePoint3d> picks;
  for (const ZnDbEdgeRef& edge : input.edges) {
    const std::unique_ptr<ZnGeCurve3d> curve(ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(edge, true));
    if (!curve) return false;
    ZnGeInterval range;
    curve->getInterval(range);
    picks.push_back(curve->evalPoint(0.3 * range.lowerBound() + 0.7 * range.upperBound()));
  }
  input.pickPoints = picks.data();
  const auto builder = torvi::kindOfType(sample_->kind)->makeBuilder(input);
  EXPECT_EQ(builder->createTorvi(center_), Quorl::eOk) << scene_;
  return !center_.isNull();
}

// Every length a different one.
void Laws::giveOwnSizes() {
  ZnDbHolder<ZnDbTorviActionBody> body;
  ASSERT_EQ(body.openForWrite(bodyOf(center_)), Quorl::eOk);
  ZnArray<ZnString> names;
  body->ownedValueParamNames(names);
  double length = 1.5;
  for (const ZnString& name : names)
    if (name.utf8().find("Extension") != std::string::npos ||
        name.utf8().find("Overshoot") != std::string::npos ||
        name.utf8().find("ExtLength") != std::string::npos) {
      double number = 0.0;
      ZnDbEvalVariant value;
      if (body->getValueParam(name, value) == Quorl::eOk && value.getValue(number) == Quorl::eOk)
        EXPECT_EQ(body->setDoubleParam(name, length += 0.75), Quorl::eOk);
    }
  body.close();
  const ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(center_);
  if (auto* mark = dynamic_cast<ZnDbCenterMarkObjectWrapper*>(wrapper.object());
      mark && sample_->kind == kCenterMark) {
    EXPECT_EQ(mark->setSubEntVisibility(eLeftLine, false), Quorl::eOk);
    EXPECT_EQ(mark->setSubEntVisibility(eCrossHairVerticalLine, false), Quorl::eOk);
  }
}

void Laws::loseEdges() {
  for (size_t i = 0; i < inputs_.size(); ++i)
    if (state_ == kAllErased || (state_ == kOneErased && i == 0) || (state_ == kTwoLeft && i != 0 && i != 2))
      erase(inputs_[i]);
  if (state_ == kDisassociated) {
    ZnDbTorviObjectWrapper wrapper(center_);
    EXPECT_EQ(wrapper.breakAssociativity(), Quorl::eOk);
    EXPECT_EQ(wrapper.setIsExplicitlyDeassociatived(true), Quorl::eOk);
    evaluate(center_);
  }
  evaluateChanges();
}

ZnGeMatrix3d Laws::deedMatrix(Deed deed) {
  const ZnGePoint3d about(between(-20, 20), between(-20, 20), 0.0);
  static constexpr double kAngles[] = {45.0, 90.0, 135.0, 180.0};
  const int which = pick(std::size(kAngles) + 1);
  const double angle = which < 4 ? kAngles[which] * ZnGe::kPi / 180.0 : between(-ZnGe::kPi, ZnGe::kPi);
  switch (deed) {
  case kMove:
    return ZnGeMatrix3d::translation({about.x, about.y, isPaper(place_) ? 0.0 : between(-5, 5)});
  case kTurn:
    return ZnGeMatrix3d::rotation(angle, {0, 0, 1}, about);
  case kMirror:
    return ZnGeMatrix3d::mirroring(ZnGePlane(about, ZnGeVector3d(std::cos(angle), std::sin(angle), 0.0)));
  case kScale:
    return ZnGeMatrix3d::scaling(which < 2 ? 2.0 : between(0.3, 3.0), about);
  case kTilt:
    return ZnGeMatrix3d::rotation(angle, direction(), about);
  }
  return {};
}

// Something is done to the object and to the edges that it has; it goes with them.
void Laws::deed() {
  const Deed deed = static_cast<Deed>(pick(isPaper(place_) || isAmongViews_ ? kTilt : kTilt + 1));
  const ZnGeMatrix3d by = deedMatrix(deed);
  const bool follows = followsEdges();
  const Portrait before = portraitOf(center_);
  const std::string bytes = dump();
  scene_ += fmt::format(", {}", kDeeds[deed]);
  db_->undoRecorder().startStep();
  const auto transform = [](ZnDbObjectId id, const ZnGeMatrix3d& matrix) {
    change<ZnDbEntity>(id, [&](ZnDbEntity& entity) { EXPECT_EQ(entity.transformBy(matrix), Quorl::eOk); });
  };
  if (follows) {
    if (path_.empty() || isPaper(place_))
      for (const ZnDbObjectId id : inputs_) {
        if (!id.isErased()) transform(id, isPaper(place_) ? toPaper_.inverse() * by * toPaper_ : by);
      }
    else
      transform(path_.front(), by);
  }
  transform(center_, by);
  evaluateChanges();
  // Lengths that are given in drawing units stay when a mark or line grows, or its edges do; and a line whose
  // edges turn keeps the direction that is nearest to its last one, with it the sides that its lengths are
  // of.
  const bool keepsLengths = deed == kScale && (follows || sample_->kind != kCenterMarkPattern);
  const bool keepsSides = follows && deed != kMove && sample_->kind == kCenterLine && sizes_ == kOwn;
  const bool keepsLevel = sample_->kind == kCenterMarkPattern && deed != kMove && sizes_ == kByLinetype;
  if (!keepsLengths && !keepsSides && !keepsLevel)
    EXPECT_TRUE(looksLike(center_, before.moved(by))) << "it goes with what is done to it\n" << scene_;
  if (sample_->kind == kCenterMark)
    EXPECT_EQ(torvi::scaleOf(ZnDbTorviObjectWrapper(center_).blockTransform()), 1.0) << scene_;
  checkRest(bytes);
}

void Laws::checkRest(const std::string& before) {
  ZnDbUndoRecorder& history = db_->undoRecorder();
  const std::string after = dump();
  EXPECT_TRUE(ZnDbTorviObjectWrapper(center_).doesActionMatchCurrentGeometry()) << "up to date\n" << scene_;
  history.startStep();
  const size_t depth = history.undoDepth();
  evaluateChanges();
  expectSame("evaluating again changes nothing", dump(), after);
  evaluate(center_);
  expectSame("evaluating it by itself changes nothing", dump(), after);
  history.startStep();
  EXPECT_EQ(history.undoDepth(), depth) << "and is no step\n" << scene_;
  ASSERT_EQ(history.undo(), Quorl::eOk);
  expectSame("undo gives back what was", dump(), before);
  evaluateChanges();
  evaluate(center_);
  ASSERT_TRUE(history.canRedo()) << "evaluating loses no redo\n" << scene_;
  ASSERT_EQ(history.redo(), Quorl::eOk);
  expectSame("redo gives back what had become", dump(), after);
  std::string saved;
  ZnFileError error;
  ASSERT_EQ(zndbDrawingToBytes(*db_, ZnDrawingFormat::kBinary, saved, error), Quorl::eOk) << error.text();
  const auto opened = zndbDrawingFromBytes(saved, error);
  ASSERT_TRUE(opened) << error.text();
  expectSame("saved and opened", dumpOf(*opened), after);
  ZnDbObjectId again;
  ASSERT_EQ(opened->getZnDbObjectId(again, false, center_.handle(), 0), Quorl::eOk);
  zndbHostApplicationServices()->setWorkingDatabase(opened.get());
  evaluate(again);
  zndbHostApplicationServices()->setWorkingDatabase(db_.get());
  expectSame("evaluated after opening", dumpOf(*opened), after);
}

void Laws::live(unsigned number) {
  random_.seed(number);
  setUpScene();
  scene_ = fmt::format("CASE={}: {}", number, scene_);
  setHostDocumentKind(isAmongViews_);
  if (sizes_ == kByLinetype) {
    put(L"CENTERCROSSSIZE", L"ByLinetype");
    put(L"CENTERCROSSGAP", L"ByLinetype");
    if (pick(2)) {
      addLinetype(L"Fitted", {0.5, -0.25, 0.125, -0.25}, true);
      put(L"CENTERLTYPE", L"Fitted");
    }
  }
  addInputs();
  if (!make()) return;
  if (sizes_ == kOwn) giveOwnSizes();
  evaluate(center_);
  loseEdges();
  for (int deeds = 1 + pick(3); deeds > 0 && !HasFailure(); --deeds) deed();
}

TEST_F(Laws, HoldInEveryState) {
  const char* one = std::getenv("CASE");
  const char* many = std::getenv("CASES");
  const unsigned first = one ? static_cast<unsigned>(std::atoi(one)) : 0;
  const unsigned count = one ? 1 : many ? static_cast<unsigned>(std::atoi(many)) : 1000;
  for (unsigned number = first; number < first + count && !HasFailure(); ++number) {
    inputs_.clear();
    path_.clear();
    center_.setNull();
    live(number);
    setHostDocumentKind(false);
    TearDown();
    SetUp();
  }
}

} // namespace
