// Files on disk: all or nothing, recognised by content, with the events of saving and opening.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include "file/sample_drawing.h"
#include "file/test_classes.h"
#include "quorl/db/core/database_reactor.h"
#include "quorl/db/core/event_reactor.h"
#include "quorl/file/atomic_file.h"
#include "support/file_content.h"

using namespace fileTest;
namespace fs = std::filesystem;

namespace {

// Writes down what it hears.
class Listener : public ZnRxEventReactor {
public:
  Listener() { ZnRxEvent::instance().addReactor(this); }
  ~Listener() override { ZnRxEvent::instance().removeReactor(this); }
  void beginSave(ZnDbDatabase*, const wchar_t* file) override { note("begin", file); }
  void saveComplete(ZnDbDatabase*, const wchar_t* file) override { note("complete", file); }
  void abortSave(ZnDbDatabase*) override { note("abort", L""); }
  void drawingFileOpened(ZnDbDatabase* database, const wchar_t* file) override {
    note("opened", file);
    objects = database->objectCount();
  }
  void firstOpenCompleted(ZnDbDatabase*) override { note("open complete", L""); }

  std::vector<std::string> heard;
  size_t objects = 0;

private:
  void note(const char* event, const wchar_t* file) {
    heard.push_back(event + std::string(" ") + fs::path(file).filename().string());
  }
};

// An object that refuses to be written.
class Stubborn : public Note {
public:
  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override {
    return filer.kind() == ZnDbFiler::kFile ? Quorl::eNotProvided : Note::bdocOutFields(filer);
  }
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler&) const override { return Quorl::eNotProvided; }
};

class Saving : public testing::TestWithParam<const char*> {
protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "quorl-saving-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder = pattern;
    path = (folder / (std::string("drawing") + GetParam())).string();
  }
  void TearDown() override { fs::remove_all(folder); }

  void save(ZnDbDatabase& drawing) {
    ZnFileError error;
    EXPECT_EQ(zndbSaveDrawing(drawing, path, error), Quorl::eOk) << error.text();
  }
  std::string onDisk() const { return contentOf(path); }
  size_t filesInFolder() const {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
  }
  fs::path folder;
  std::string path;
};
INSTANTIATE_TEST_SUITE_P(BothFormats, Saving, testing::Values(".bdoc", ".tdoc", ".BDoc"),
                         [](const auto& format) {
                           return std::string(format.param + 1) + std::to_string(format.index);
                         });

TEST_P(Saving, TheFileIsTheDrawingAndEventsComeInOrder) {
  const auto drawing = sampleDrawing();
  const Listener listener;
  save(*drawing);
  EXPECT_EQ(drawing->fileName().utf8(), path);
  EXPECT_EQ(filesInFolder(), 1u);
  ZnFileError error;
  const auto read = zndbOpenDrawing(path, error);
  ASSERT_NE(read, nullptr) << error.text();
  EXPECT_EQ(read->fileName().utf8(), path);
  EXPECT_EQ(listener.objects, drawing->objectCount()) << "all is in when it is told";
  const std::string name = fs::path(path).filename().string();
  EXPECT_EQ(listener.heard, (std::vector<std::string>{"begin " + name, "complete " + name, "opened " + name,
                                                      "open complete "}));
  const std::string before = onDisk();
  save(*read);
  EXPECT_TRUE(onDisk() == before || std::string(GetParam()) == ".tdoc");
}

TEST_P(Saving, ContentDecidesNotTheEnding) {
  save(*sampleDrawing());
  const std::string other = (folder / "other.dat").string();
  fs::rename(path, other);
  ZnFileError error;
  EXPECT_NE(zndbOpenDrawing(other, error), nullptr) << error.text();
}

TEST_P(Saving, AFailureLeavesTheOldFileAndNothingElse) {
  save(*sampleDrawing());
  const std::string before = onDisk();
  const TestClasses loaded;
  ZnDbDatabase drawing;
  const ZnDbObjectId bad = addNamed(drawing, L"BAD", new Stubborn);
  const Listener listener;
  ZnFileError error;
  EXPECT_EQ(zndbSaveDrawing(drawing, path, error), Quorl::eNotProvided);
  EXPECT_EQ(error.file, path);
  EXPECT_NE(error.text().find("object " + handleText(bad.handle()).utf8() + " (Note)"), std::string::npos)
      << error.text();
  EXPECT_TRUE(onDisk() == before);
  EXPECT_EQ(filesInFolder(), 1u);
  EXPECT_EQ(listener.heard.back(), "abort ");
  EXPECT_TRUE(drawing.fileName().isEmpty());
  erase(bad);
}

TEST_P(Saving, KeepsPermissionsAndLinks) {
  save(*sampleDrawing());
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  const fs::path link = folder / (std::string("link") + GetParam());
  fs::create_symlink(path, link);
  ZnDbDatabase other;
  ZnFileError error;
  ASSERT_EQ(zndbSaveDrawing(other, link.string(), error), Quorl::eOk) << error.text();
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(fs::status(path).permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  const auto read = zndbOpenDrawing(path, error);
  ASSERT_NE(read, nullptr) << error.text();
  EXPECT_EQ(read->objectCount(), other.objectCount());
}

// Calls of the system of which one fails: the one of that kind whose turn comes.
struct Failing {
  enum Kind { kMake, kWrite, kFlush, kRename, kKinds };
  static inline Kind kind;
  static inline int turn;
  static bool isNow(Kind which) { return which == kind && --turn == 0 && (errno = EIO); }
  static constexpr ZnDiskCalls kCalls = {
      [](char* pattern, int suffix, int flags) {
        return isNow(kMake) ? -1 : ZnDiskCalls::kSystem.make(pattern, suffix, flags);
      },
      // Half is written first: a full disk takes what it can.
      [](int file, const void* bytes, size_t count, off_t at) {
        return isNow(kWrite) ? -1 : ZnDiskCalls::kSystem.write(file, bytes, (count + 1) / 2, at);
      },
      [](int file) { return isNow(kFlush) ? -1 : ZnDiskCalls::kSystem.flush(file); },
      [](const char* from, const char* to) {
        return isNow(kRename) ? -1 : ZnDiskCalls::kSystem.rename(from, to);
      }};
};

TEST_P(Saving, WhateverFailsTheOldFileOrTheNewIsThereWhole) {
  ZnDbDatabase old;
  const auto drawing = sampleDrawing();
  save(*drawing);
  const std::string after = onDisk();
  save(old);
  const std::string before = onDisk();
  ZnAtomicFile::useCalls(Failing::kCalls);
  for (int kind = 0; kind < Failing::kKinds; ++kind) {
    int turns = 0;
    for (bool failed = true; failed; ++turns) {
      Failing::kind = static_cast<Failing::Kind>(kind);
      Failing::turn = turns + 1;
      ZnFileError error;
      failed = zndbSaveDrawing(*drawing, path, error) != Quorl::eOk;
      // Only the folder's flush comes when the new one is in place.
      const bool isNew = !failed || (kind == Failing::kFlush && turns == 1);
      EXPECT_TRUE(onDisk() == (isNew ? after : before)) << kind << turns;
      EXPECT_EQ(filesInFolder(), 1u) << kind << turns;
      EXPECT_EQ(failed, error.text().find("Input/output error") != std::string::npos) << error.text();
      Failing::turn = 0;
      save(old);
    }
    EXPECT_GT(turns, kind == Failing::kWrite ? 10 : 1);
  }
  ZnAtomicFile::useCalls(ZnDiskCalls::kSystem);
}

TEST_P(Saving, AReadOnlyFileIsNotReplaced) {
  save(*sampleDrawing());
  const std::string before = onDisk();
  fs::permissions(path, fs::perms::owner_read | fs::perms::group_read);
  ZnDbDatabase other;
  ZnFileError error;
  EXPECT_EQ(zndbSaveDrawing(other, path, error), Quorl::eFileAccess);
  EXPECT_NE(error.text().find("read-only"), std::string::npos) << error.text();
  EXPECT_TRUE(onDisk() == before);
}

TEST_P(Saving, PlacesThatCantBeWrittenOrReadAreErrors) {
  ZnDbDatabase drawing;
  ZnFileError error;
  const std::string nowhere = (folder / "missing" / (std::string("x") + GetParam())).string();
  EXPECT_EQ(zndbSaveDrawing(drawing, nowhere, error), Quorl::eFileAccess);
  EXPECT_TRUE(error.text().starts_with(nowhere)) << error.text();
  EXPECT_EQ(zndbOpenDrawing(nowhere, error), nullptr);
  EXPECT_EQ(error.status, Quorl::eFileAccess);
  fs::create_directory(path);
  EXPECT_EQ(zndbSaveDrawing(drawing, path, error), Quorl::eFileAccess);
  EXPECT_EQ(zndbOpenDrawing(path, error), nullptr);
  EXPECT_EQ(error.status, Quorl::eFileAccess);
  EXPECT_EQ(filesInFolder(), 1u);
}

TEST(SavingNames, TheEndingMustNameAFormat) {
  ZnDbDatabase drawing;
  const Listener listener;
  for (const char* path : {"drawing", "drawing.svg", "bdoc", "drawing.bdoc.bak", ""}) {
    ZnFileError error;
    EXPECT_EQ(zndbSaveDrawing(drawing, path, error), Quorl::eInvalidInput) << path;
    EXPECT_FALSE(fs::exists(fs::path(path))) << path;
  }
  EXPECT_TRUE(listener.heard.empty());
}

TEST(OpeningContents, WhatIsNoDrawingIsSaidToBeNone) {
  for (const char* bytes : {"", "x", "1000\nQUORL", "<svg/>", "QBDOC\n\x1a", "0\nSECTION\n"}) {
    ZnFileError error;
    EXPECT_EQ(zndbDrawingFromBytes(bytes, error), nullptr) << bytes;
    EXPECT_EQ(error.status, Quorl::eFileDamaged) << bytes;
    EXPECT_EQ(error.text(), "byte 0: no drawing file, expected the mark of a drawing") << bytes;
  }
}

} // namespace
