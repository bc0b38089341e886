// What the container and the reader of the binary format do with a damaged file.
#include <algorithm>
#include <xxhash.h>
#include <zstd.h>

#include "quorl/file/bdoc_reader.h"
#include "quorl/file/salvage.h"

namespace {

constexpr std::uint64_t kEntrySize = 40, kHashSize = 8;
constexpr std::string_view kEndMark("QBDOCEND", 8);

std::uint64_t valueAt(std::string_view bytes, size_t at) {
  return ZnByteReader(bytes.substr(at)).take<std::uint64_t>();
}

} // namespace

// From the end mark backwards: as many entries as give the checksum behind them. Where it is the checksum or
// an entry that is damaged, the table is what begins with the first section's place.
std::string ZnBdocContainerReader::findTable() const {
  constexpr std::uint64_t kLongestTable = 16 << 20, kFirstSection = 40;
  std::string tail, plausible;
  const std::uint64_t size = source_.size(), look = std::min(size, kLongestTable);
  if (!source_.read(size - look, look, tail)) return {};
  const size_t end = tail.rfind(kEndMark);
  if (end == std::string::npos || end < kHashSize) return {};
  const std::string_view before = std::string_view(tail).substr(0, end - kHashSize);
  const std::uint64_t said = valueAt(tail, end - kHashSize);
  for (std::uint64_t length = kEntrySize; length <= before.size(); length += kEntrySize) {
    const std::string_view entries = before.substr(before.size() - length);
    if (valueAt(entries, 8) != kFirstSection)
      continue; // hashing every length would take the square of the size
    if (XXH64(entries.data(), entries.size(), 0) == said) return std::string(entries);
    plausible = entries;
  }
  return plausible;
}

bool ZnBdocContainerReader::salvage(ZnSalvage& salvage, ZnFileError& error) {
  if (open(error)) return true;
  if (error.status == Quorl::eNewerVersion) return false;
  salvage.note(error);
  sections_.clear();
  const std::string table = findTable();
  if (table.empty())
    return error.fail(Quorl::eFileDamaged, Quorl::bytePlace(source_.size()),
                      "the table of sections is lost, and nothing else tells where they are",
                      "it at the end");
  for (size_t at = 0; at + kEntrySize <= table.size(); at += kEntrySize) {
    ZnFileError bad;
    const std::string_view entry = std::string_view(table).substr(at, kEntrySize);
    if (openSection(entry, source_.size(), bad)) continue;
    salvage.note(bad);
    salvageSection(entry);
  }
  error = {};
  return true;
}

// One that does not lie where the one before ends may still be what it says: its checksum will tell.
void ZnBdocContainerReader::salvageSection(std::string_view entry) {
  ZnByteReader reader(entry);
  Section section;
  section.type = static_cast<ZnSectionType>(reader.take<std::uint32_t>());
  section.compressed = reader.take<std::uint32_t>() != 0;
  for (std::uint64_t* value : {&section.offset, &section.storedSize, &section.rawSize, &section.hash})
    *value = reader.take<std::uint64_t>();
  if (section.type < ZnSectionType::kHeader || section.type > ZnSectionType::kObjects ||
      section.offset > source_.size() || section.storedSize > source_.size() - section.offset ||
      section.rawSize > Quorl::kLargestSection || !isWithinMeasure(section))
    return;
  append(section);
}

bool ZnBdocContainerReader::salvage(const Section& section, std::string& raw, ZnSalvage& salvage) {
  ZnFileError error;
  if (read(section, raw, error)) return true;
  if (section.compressed) {
    expandStart(raw, section.rawSize);
    error.what += "; " + std::to_string(raw.size()) + " of " + std::to_string(section.rawSize) +
                  " bytes could be expanded, and may be wrong";
  }
  salvage.note(error);
  return false;
}

// Block by block, until one can't be expanded.
void ZnBdocContainerReader::expandStart(std::string& raw, std::uint64_t most) {
  raw.clear();
  const std::unique_ptr<ZSTD_DStream, size_t (*)(ZSTD_DStream*)> stream(ZSTD_createDStream(),
                                                                        ZSTD_freeDStream);
  if (!stream) throw std::bad_alloc();
  std::string piece(ZSTD_DStreamOutSize(), '\0');
  ZSTD_inBuffer in{stored_.data(), stored_.size(), 0};
  for (size_t left = 1; left != 0 && raw.size() < most;) {
    ZSTD_outBuffer out{piece.data(), piece.size(), 0};
    left = ZSTD_decompressStream(stream.get(), &out, &in);
    if (ZSTD_isError(left)) return;
    raw.append(piece, 0, out.pos);
    if (out.pos == 0 && in.pos == in.size) return;
  }
  raw.resize(std::min<std::uint64_t>(raw.size(), most));
}

bool ZnBdocReader::passesOver(ZnFileError& error) const {
  if (!salvage_) return false;
  salvage_->note(error);
  error = {};
  return true;
}

bool ZnBdocReader::loses(ZnDbObjectId id, ZnFileError& error) const {
  if (!salvage_) return false;
  salvage_->lose(id.handle(), error);
  error = {};
  return true;
}

bool ZnBdocReader::openContainer(ZnFileError& error) {
  return salvage_ ? container_.salvage(*salvage_, error) : container_.open(error);
}

// Records say their length but not whose they are: that follows from how many stand before them. Behind a
// damaged section it follows from how many stand after, where all of those are whole.
bool ZnBdocReader::salvageObjects() {
  std::vector<const Section*> sections;
  std::vector<size_t> counts;
  size_t firstDamaged = 0, behindLast = 0;
  for (const Section& section : container_.sections()) {
    if (section.type != ZnSectionType::kObjects) continue;
    bool whole = true;
    sections.push_back(&section);
    counts.push_back(countRecords(section, whole));
    if (!whole) behindLast = sections.size();
    if (whole && behindLast == 0) firstDamaged = sections.size();
  }
  const bool areAllHandlesThere = hasHeader_ && index_.size() == header_.objectCount;
  ZnFileError error;
  for (size_t i = 0; i < sections.size(); ++i) {
    if (i > firstDamaged && (i < behindLast || !areAllHandlesThere)) continue;
    if (i == behindLast && i > 0) {
      size_t after = 0;
      for (size_t j = i; j < counts.size(); ++j) after += counts[j];
      if (after > index_.size() || index_.size() - after < objectsRead_) break;
      objectsRead_ = index_.size() - after;
    }
    if (!readPart(*sections[i], &ZnBdocReader::readObjects, error)) passesOver(error);
  }
  loseWhatIsMissing();
  return true;
}

size_t ZnBdocReader::countRecords(const Section& section, bool& whole) {
  ZnSalvage unheard;
  whole = container_.salvage(section, raw_, unheard);
  ZnByteReader in(raw_);
  size_t count = 0;
  std::string fault;
  std::string_view text;
  for (bool isText = false; in.isGood() && !in.atEnd(); ++count) readRecord(in, 0, text, isText, fault);
  whole = whole && in.isGood();
  return count;
}

void ZnBdocReader::loseWhatIsMissing() {
  for (size_t i = 0; i < index_.size(); ++i) {
    const ZnDbObjectId id = index_.at(i);
    if (id.isNull() || id.isValid()) continue;
    ZnFileError error;
    error.fail(Quorl::eFileDamaged,
               Quorl::objectPlace(id.handle(), classes_.record(static_cast<int>(classOf_[i])).name.utf8()),
               "its record is lost");
    salvage_->lose(id.handle(), error);
  }
}
